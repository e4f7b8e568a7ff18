// The frame of a tick around the jobs: which of them is asked, in which phase, in which order.
#include <array>

#include "link/engine.h"

namespace servo::link {

namespace {

// More than one job can be under way. Each phase has its own order. A firmware transfer that runs
// is asked alone, whatever the order: it talks text to a bootloader, and one frame of another job
// inside a block would spoil the drive's firmware. The other jobs go on, or begin, when it has
// ended.
constexpr std::array kWarmUpOrder{JobPlace::kFirmware, JobPlace::kConfiguration,
                                  JobPlace::kPositionFlow, JobPlace::kScan};
constexpr std::array kSendOrder{JobPlace::kConfiguration, JobPlace::kPositionFlow, JobPlace::kScan,
                                JobPlace::kFirmware};
constexpr std::array kReceiveOrder{JobPlace::kFirmware, JobPlace::kScan, JobPlace::kConfiguration,
                                   JobPlace::kPositionFlow};

// A frame cannot be complete with fewer bytes; the rest of it will come within the next tick.
constexpr std::size_t kDrainBytes = 4;

constexpr std::uint8_t high_nibble(std::uint8_t command) {
    return command >> 4;
}

}  // namespace

Job* Engine::running_transfer() const {
    Job* firmware = jobs_[static_cast<std::size_t>(JobPlace::kFirmware)];
    return state.download_active == 1 && firmware != nullptr && firmware->active() ? firmware
                                                                                   : nullptr;
}

Job* Engine::first_active(std::span<const JobPlace> order) const {
    if (Job* transfer = running_transfer()) return transfer;
    for (const JobPlace place : order) {
        Job* job = jobs_[static_cast<std::size_t>(place)];
        if (job != nullptr && job->active()) return job;
    }
    return nullptr;
}

bool Engine::warm_up() {
    if (state.download_active != 1) {
        state.InputLen = kFrameReadLength;
    } else if (state.download_step <= 2) {
        state.InputLen = kTextReadLength;
    }
    if (Job* transfer = running_transfer()) return transfer->warm_up(*this);
    for (const JobPlace place : kWarmUpOrder) {
        Job* job = jobs_[static_cast<std::size_t>(place)];
        if (job != nullptr && job->active() && job->warm_up(*this)) return true;
    }
    return false;
}

void Engine::send_tick() {
    state.sendmod = 1;
    if (Job* job = first_active(kSendOrder)) {
        job->send_step(*this);
    } else if (state.Com_Change == 0) {
        send_lane();
    } else if (state.Com_Change == 1) {
        send_page_row();
    }
}

void Engine::receive_tick() {
    if (Job* job = first_active(kReceiveOrder)) {
        if (job->receive_text(*this)) return;
    }
    state.sendmod = 0;
    while (true) {
        switch (take_frame()) {
            case Next::kEndTick:
                return;
            case Next::kDrain:
                if (port_.in_buffer_count() < kDrainBytes) return;
                break;
            case Next::kTakeAnother:
                break;
        }
    }
}

Engine::Next Engine::take_frame() {
    if (get_frame() != kFrameAccepted) {
        miss();
        return Next::kEndTick;
    }
    state.miss_count = 0;
    ++counters.frames;
    if (high_nibble(reply_[0]) == 4 && reply_[0] != kRead) ++counters.answers;

    if (Job* job = first_active(kReceiveOrder)) {
        switch (job->receive_frame(*this, reply_)) {
            case Received::kTaken:
                return Next::kDrain;
            case Received::kIgnored:
                return Next::kTakeAnother;
            case Received::kEndTick:
                return Next::kEndTick;
        }
    }

    // A read may have been under way when the user wrote the object: the first answer after the
    // write would show the old value once more.
    const bool write_pending = state.last_write_key != -1;
    const Identity written = dictionary::identity_of(static_cast<WireKey>(state.last_write_key));
    if (write_pending && reply_key() == written && high_nibble(reply_[0]) == 4) {
        state.last_write_key = -1;
        return Next::kEndTick;
    }
    if (reply_[0] == kRead) return Next::kTakeAnother;  // the line's echo of the own request

    if (state.Com_Change == 0) return take_status_answer();
    if (state.Com_Change == 1) take_page_answer();
    return Next::kDrain;
}

}  // namespace servo::link
