// Time for logic that waits or measures. Handed in, so that minutes of line traffic run in virtual
// time in a test.
#pragma once

#include <chrono>

namespace servo::base {

class Clock {
  public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    // Time since some fixed start; never goes back.
    virtual std::chrono::microseconds now() const = 0;

    // Blocks the caller. Only pauses that the system itself tells are made with it.
    virtual void sleep(std::chrono::milliseconds pause) = 0;
};

// The machine's steady clock.
class SteadyClock final : public Clock {
  public:
    std::chrono::microseconds now() const override;
    void sleep(std::chrono::milliseconds pause) override;
};

}  // namespace servo::base
