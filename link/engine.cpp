#include "link/engine.h"

#include <algorithm>

namespace servo::link {

Engine::Engine(Port& port, base::Clock& clock, Timer& timer, DriveValues& values)
    : serial(port, clock),
      all_windows(kAllWindowNames.size(), nullptr),
      poll_windows(kPollWindowNames.size(), nullptr),
      port_(port),
      clock_(clock),
      timer_(timer),
      values_(values) {}

bool Engine::add_window(Window& window) {
    const auto place = std::find(kAllWindowNames.begin(), kAllWindowNames.end(), window.name());
    if (place == kAllWindowNames.end()) return false;
    window.meindex = static_cast<int>(place - kAllWindowNames.begin());
    window.must_fresh = true;
    all_windows[static_cast<std::size_t>(window.meindex)] = &window;
    return true;
}

bool Engine::add_poll_window(PollWindow& window) {
    const auto place = std::find(kPollWindowNames.begin(), kPollWindowNames.end(), window.name());
    if (place == kPollWindowNames.end() || !add_window(window)) return false;
    poll_windows[static_cast<std::size_t>(place - kPollWindowNames.begin())] = &window;
    return true;
}

void Engine::add_job(JobPlace place, Job& job) {
    jobs_[static_cast<std::size_t>(place)] = &job;
}

void Engine::remove_job(JobPlace place, const Job& job) {
    Job*& held = jobs_[static_cast<std::size_t>(place)];
    if (held == &job) held = nullptr;
}

void Engine::remove_listener(const StatusListener& listener) {
    std::erase(listeners_, &listener);
}

void Engine::cTmr_Timer() {
    // A message box of a job pumps events, and with them ticks, while its own tick is still
    // running.
    if (state.timer1_in != 0) return;
    state.timer1_in = kTrue;
    ++counters.ticks;
    try {
        tick();
    } catch (...) {
        // Whatever fails inside a tick ends that tick and nothing else; the next one goes on from
        // the state as it stands.
    }
    state.timer1_in = 0;
}

void Engine::tick() {
    if (warm_up()) return;
    if (state.sendmod == 0) {
        send_tick();
    } else if (state.sendmod == 1) {
        receive_tick();
    }
}

void Engine::page_opened() {
    const bool acquiring = scope_ != nullptr && scope_->acquiring();
    if (acquiring || state.batch_mode != 0) return;
    state.page = 0;
    state.sub_Pointer = 0;
    state.Com_Change = 1;
}

void Engine::request_io_refresh() {
    if (state.status_lane == 2) return;
    state.sub_Pointer = 0;
    state.Com_Change = 0;
    state.io_refresh = kTrue;
    state.status_lane = 0;
}

void Engine::set_all_must_fresh() {
    for (Window* window : all_windows)
        if (window != nullptr) window->must_fresh = true;
}

void Engine::forget_drive() {
    set_all_must_fresh();
    values_.clear_known();
    state.g_FW_CRC_OK_overtimes = 0;
    state.Com_Change = 0;
    state.status_lane = 0;
    state.sub_Pointer = 0;
    state.rotation = 0;
    state.page = 0;
    state.allow_add_pointer = 0;
    state.is_access_str = 0;
    state.str_read_step = 0;
    state.miss_count = 0;
}

void Engine::reset_polling() {
    state.Comm_Over_Time_Cnts = kMissLimit;
    state.timer1_in = 0;
    state.Com_Change = 0;
    state.sub_Pointer = 0;
    state.status_lane = 0;
    state.rotation = 0;
    values_.clear_known();
}

void Engine::link_opened() {
    reset_polling();
    state.sendmod = 0;
    state.miss_count = 0;
    state.page = 0;
    state.allow_add_pointer = 0;
    state.is_access_str = 0;
    state.str_temp_string.clear();
    state.str_read_step = 0;
    state.segment_pace = 0;
    state.last_write_key = -1;
    state.Form_Now = 0;
    state.Form_Last = 0;
    state.g_FW_CRC_OK_overtimes = 0;
    state.io_refresh = 0;
    read_without_operands_ = false;
    counters = {};
    for (Job* job : jobs_)
        if (job != nullptr) job->link_opened(*this);
    // A transfer that was started while the link was closed waits for the link; one that had begun
    // was cut off.
    if (state.download_step != 0) {
        state.download_active = 0;
        state.download_step = 0;
    }
    for (StatusListener* listener : listeners_)
        listener->link_changed(true);
}

void Engine::link_closed() {
    if (scope_ != nullptr) scope_->link_closed(*this);
    for (Job* job : jobs_)
        if (job != nullptr) job->link_closed(*this);
    state.download_active = 0;
    state.download_step = 0;
    state.scanRequested = 0;
    state.scanStep = 0;
    for (StatusListener* listener : listeners_)
        listener->link_changed(false);
}

}  // namespace servo::link
