// Receive ticks that find no valid frame.
#include <chrono>

#include "link/engine.h"

namespace servo::link {

namespace {
constexpr std::chrono::milliseconds kBusyDrivePause{150};
}

void Engine::miss() {
    ++counters.misses;
    ++state.miss_count;
    // A drive that is briefly busy, storing its parameters for example, may catch up.
    if (state.miss_count == kMissPause) clock_.sleep(kBusyDrivePause);
    if (state.miss_count >= state.Comm_Over_Time_Cnts) give_up();
}

// The count is not cleared: when the dialog was only shown by this (no known port, dialog hidden),
// the next miss comes here again and closes the link.
void Engine::give_up() {
    pictures.set_button4(kCommerrorpic);
    if (scope_ != nullptr) scope_->link_timed_out(*this);
    state.str_read_step = 0;
    state.scopeState = 0;
    state.sub_Pointer = 0;
    state.Com_Change = 0;
    if (link_control_ != nullptr) link_control_->communication();
    port_.clear_in();
}

}  // namespace servo::link
