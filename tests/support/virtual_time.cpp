#include "support/virtual_time.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace servo::test {

void VirtualTime::at(Duration when, std::function<void()> event) {
    if (when < now_) {
        std::fputs("virtual time does not go back\n", stderr);
        std::abort();
    }
    events_.push({when, made_++, std::move(event)});
}

void VirtualTime::advance_to(Duration until) {
    if (until < now_) {
        std::fputs("virtual time does not go back\n", stderr);
        std::abort();
    }
    while (!events_.empty() && events_.top().when <= until) {
        const Event event = events_.top();
        events_.pop();
        now_ = event.when;
        event.run();
    }
    now_ = until;
}

std::optional<VirtualTime::Duration> VirtualTime::next_event() const {
    if (events_.empty()) return std::nullopt;
    return events_.top().when;
}

void VirtualTimer::set_interval(int milliseconds) {
    interval_ = milliseconds;
    if (due_) due_ = time_.now() + period();
}

void VirtualTimer::set_enabled(bool enabled) {
    due_.reset();
    if (enabled) due_ = time_.now() + period();
}

void VirtualTimer::fire() {
    due_ = *due_ + period();
    if (*due_ < time_.now()) due_ = time_.now() + period();
    ++ticks;
    if (tick) tick();
}

}  // namespace servo::test
