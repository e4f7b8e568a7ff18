#include "sim/auto_reverse.h"

#include <algorithm>
#include <cmath>

namespace servo::sim {

void AutoReverse::start(double position) {
    phase_ = Phase::kForward;
    start_ = position;
    steps_ = 0;
    cycles_ = 0;
}

// True at the end of the way.
bool AutoReverse::move(Profile& profile, const AutoReverseTargets& t) {
    const bool forward = phase_ == Phase::kForward;
    const double speed = forward ? t.forward_speed : -t.backward_speed;
    const ProfileLimits limits{std::abs(speed), t.acceleration, t.deceleration};
    if (!t.by_time) return profile.step_to(forward ? t.place_b : t.place_a, limits);
    profile.step_speed(speed, limits);
    return steps_ >= (forward ? t.forward_steps : t.backward_steps);
}

// A cycle is there and back.
void AutoReverse::turn(const AutoReverseTargets& t) {
    steps_ = 0;
    next_ = phase_ == Phase::kForward ? Phase::kBackward : Phase::kForward;
    if (phase_ == Phase::kBackward) ++cycles_;
    const bool done = t.cycles > 0 && cycles_ >= t.cycles;
    phase_ = done ? Phase::kStopped : t.pause_steps > 0 ? Phase::kPause : next_;
}

void AutoReverse::step(Profile& profile, const AutoReverseTargets& t, double position) {
    ++steps_;
    if (t.travel > 0.0 && std::abs(position - start_) > t.travel) phase_ = Phase::kStopped;
    switch (phase_) {
        case Phase::kForward:
        case Phase::kBackward:
            if (move(profile, t)) turn(t);
            return;
        case Phase::kPause:
        case Phase::kStopped: {
            const ProfileLimits limits{std::abs(profile.speed()), t.deceleration, t.deceleration};
            const bool rests = profile.step_speed(0.0, limits);
            if (phase_ == Phase::kStopped) return;
            // The pause counts from standing still.
            if (!rests) steps_ = 0;
            if (steps_ < t.pause_steps) return;
            steps_ = 0;
            phase_ = next_;
            return;
        }
    }
}

}  // namespace servo::sim
