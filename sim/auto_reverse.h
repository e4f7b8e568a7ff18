// Turning to and fro by itself, between two places or by time: a motion for looking at the loops.
#pragma once

#include <cstdint>

#include "sim/model/profile.h"

namespace servo::sim {

// In counts, counts/s, counts/s2 and steps of the model.
struct AutoReverseTargets {
    bool by_time = false;
    double place_a = 0.0;
    double place_b = 0.0;
    double forward_speed = 0.0;
    double backward_speed = 0.0;  // against the forward direction when positive
    std::int64_t forward_steps = 0;
    std::int64_t backward_steps = 0;
    std::int64_t pause_steps = 0;
    double acceleration = 0.0;
    double deceleration = 0.0;
    std::int64_t cycles = 0;  // 0: without end
    double travel = 0.0;      // from the start; 0: no limit
};

class AutoReverse {
  public:
    // The numbers of the state object.
    enum class Phase : std::uint8_t { kStopped = 0, kForward = 1, kBackward = 2, kPause = 3 };

    void start(double position);
    void stop() { phase_ = Phase::kStopped; }

    // Moves the profile on by one step. `position` is where the axis really is.
    void step(Profile& profile, const AutoReverseTargets& targets, double position);

    Phase phase() const { return phase_; }
    std::int64_t cycles() const { return cycles_; }

  private:
    bool move(Profile& profile, const AutoReverseTargets& targets);
    void turn(const AutoReverseTargets& targets);

    Phase phase_ = Phase::kStopped;
    Phase next_ = Phase::kForward;
    double start_ = 0.0;
    std::int64_t steps_ = 0;  // in this phase
    std::int64_t cycles_ = 0;
};

}  // namespace servo::sim
