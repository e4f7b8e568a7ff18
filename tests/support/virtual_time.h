// One clock and one queue. Nothing here waits: time passes only when somebody asks for it, so every
// run is the same and a minute takes milliseconds.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <queue>
#include <vector>

#include "base/clock.h"
#include "link/timer.h"

namespace servo::test {

using namespace std::chrono_literals;

class VirtualTime {
  public:
    using Duration = std::chrono::nanoseconds;

    Duration now() const { return now_; }

    // Events of the same instant run in the order in which they were made. A point of time that has
    // passed ends the program: it is a mistake of the test.
    void at(Duration when, std::function<void()> event);
    void after(Duration delay, std::function<void()> event) { at(now_ + delay, std::move(event)); }

    // Runs what is due up to and including `until`, and then it is `until`.
    void advance_to(Duration until);
    std::optional<Duration> next_event() const;

  private:
    struct Event {
        Duration when;
        std::uint64_t order;
        std::function<void()> run;
    };
    struct Later {
        bool operator()(const Event& a, const Event& b) const {
            return a.when != b.when ? a.when > b.when : a.order > b.order;
        }
    };

    Duration now_{0};
    std::uint64_t made_ = 0;
    std::priority_queue<Event, std::vector<Event>, Later> events_;
};

// A sleep lets the rest of the world go on: bytes arrive while a tick sleeps.
class VirtualClock final : public base::Clock {
  public:
    explicit VirtualClock(VirtualTime& time) : time_(time) {}

    std::chrono::microseconds now() const override {
        return std::chrono::duration_cast<std::chrono::microseconds>(time_.now());
    }
    void sleep(std::chrono::milliseconds pause) override {
        ++sleeps;
        slept += pause;
        time_.advance_to(time_.now() + pause);
    }

    int sleeps = 0;
    std::chrono::milliseconds slept{0};

  private:
    VirtualTime& time_;
};

// A precise periodic timer of a windowing toolkit. The next point of time is set before the
// callback runs; after a callback that took too long the timer fires at once and goes on from
// there.
class VirtualTimer final : public link::Timer {
  public:
    explicit VirtualTimer(VirtualTime& time) : time_(time) {}

    void set_interval(int milliseconds) override;
    int interval() const override { return interval_; }
    void set_enabled(bool enabled) override;
    bool enabled() const override { return due_.has_value(); }

    std::optional<VirtualTime::Duration> due() const { return due_; }
    // Fires once: it must be due. Whoever turns the world calls this, never an event, so a sleeping
    // tick is not interrupted by the next.
    void fire();

    std::function<void()> tick;
    std::uint64_t ticks = 0;

  private:
    VirtualTime::Duration period() const { return std::chrono::milliseconds(interval_); }

    VirtualTime& time_;
    int interval_ = 3;
    std::optional<VirtualTime::Duration> due_;
};

}  // namespace servo::test
