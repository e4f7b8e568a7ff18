#include "sim/model/profile.h"

#include <algorithm>
#include <cmath>

#include "sim/model/plant.h"

namespace servo::sim {

namespace {

// The highest speed of the next step from which the axis, losing `drop` with every step, can still
// stop within `distance`.
double stoppable(double distance, double drop) {
    const double steps = distance / (kStepSeconds * drop);
    const double speed = drop * (std::sqrt(0.25 + 2.0 * steps) - 0.5);
    return std::min(speed, distance / kStepSeconds);
}

}  // namespace

// Moves the speed towards `wanted`. Through zero it first falls, then grows.
void Profile::approach(double wanted, const ProfileLimits& limits) {
    const bool falls =
        speed_ != 0.0 && (wanted * speed_ <= 0.0 || std::abs(wanted) < std::abs(speed_));
    const double most = (falls ? limits.deceleration : limits.acceleration) * kStepSeconds;
    const double goal = falls && wanted * speed_ < 0.0 ? 0.0 : wanted;
    speed_ += std::clamp(goal - speed_, -most, most);
}

bool Profile::step_to(double target, const ProfileLimits& limits) {
    const double distance = target - position_;
    const double drop = limits.deceleration * kStepSeconds;
    if (drop <= 0.0) return false;
    // Within the last step of the way down, what is left is done in one.
    if (std::abs(speed_) <= 2.0 * drop && std::abs(distance) <= 2.0 * drop * kStepSeconds) {
        position_ = target;
        speed_ = 0.0;
        return true;
    }
    const double most = std::min(limits.speed, stoppable(std::abs(distance), drop));
    approach(distance < 0.0 ? -most : most, limits);
    position_ += speed_ * kStepSeconds;
    return false;
}

bool Profile::step_speed(double target, const ProfileLimits& limits) {
    approach(std::clamp(target, -limits.speed, limits.speed), limits);
    position_ += speed_ * kStepSeconds;
    return speed_ == target;
}

}  // namespace servo::sim
