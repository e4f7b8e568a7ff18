#include "sim/modes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace servo::sim {

std::optional<Mode> mode_of(std::int64_t number) {
    for (const Mode mode :
         {Mode::kPulse, Mode::kImmediateSpeed, Mode::kAutoReverse, Mode::kNone,
          Mode::kProfilePosition, Mode::kProfileSpeed, Mode::kTorque, Mode::kHoming,
          Mode::kInterpolated, Mode::kCyclicPosition, Mode::kCyclicSpeed, Mode::kCyclicTorque}) {
        if (static_cast<std::int64_t>(mode) == number) return mode;
    }
    return std::nullopt;
}

bool holds_position(Mode mode) {
    switch (mode) {
        case Mode::kPulse:
        case Mode::kAutoReverse:
        case Mode::kNone:
        case Mode::kProfilePosition:
        case Mode::kHoming:
        case Mode::kInterpolated:
        case Mode::kCyclicPosition:
            return true;
        case Mode::kImmediateSpeed:
        case Mode::kProfileSpeed:
        case Mode::kTorque:
        case Mode::kCyclicSpeed:
        case Mode::kCyclicTorque:
            return false;
    }
    return false;
}

bool holds_torque(Mode mode) {
    return mode == Mode::kTorque || mode == Mode::kCyclicTorque;
}

void Modes::configure(const Targets& targets) {
    targets_ = targets;
}

void Modes::start(Mode mode, const Axis& axis) {
    mode_ = mode;
    const auto position = static_cast<double>(axis.position());
    profile_.set(position, axis.speed());
    target_ = position;
    waiting_.reset();
    own_limits_.reset();
    moving_ = false;
    stopped_ = false;
    speed_reached_ = false;
    held_ = false;
    blocked_ = false;
    current_ = axis.current_demand();
    auto_reverse_.start(position);
    cyclic_seen_ = mode == Mode::kInterpolated ? targets_.interpolated : targets_.position;
    cyclic_from_ = position;
    cyclic_to_ = position;
    cyclic_part_ = 1.0;
}

SetPoint Modes::position_set_point(double speed_before) const {
    SetPoint out;
    out.loop = Loop::kPosition;
    out.position = profile_.position();
    out.speed = profile_.speed();
    out.current = targets_.position_forward * (profile_.speed() - speed_before) * kStepsPerSecond;
    return out;
}

SetPoint Modes::speed_set_point(double speed_before) const {
    SetPoint out;
    out.loop = Loop::kVelocity;
    out.speed = profile_.speed();
    out.current = targets_.speed_forward * (profile_.speed() - speed_before) * kStepsPerSecond;
    return out;
}

SetPoint Modes::step(const Axis& axis) {
    stopped_ = false;
    switch (mode_) {
        case Mode::kProfilePosition:
        case Mode::kPulse:
        case Mode::kNone:
        case Mode::kHoming:
            return position_step();
        case Mode::kInterpolated:
            return cyclic_step(targets_.interpolated);
        case Mode::kCyclicPosition:
            return cyclic_step(targets_.position);
        case Mode::kProfileSpeed:
            return speed_step(axis, true);
        case Mode::kImmediateSpeed:
        case Mode::kCyclicSpeed:
            return speed_step(axis, false);
        case Mode::kTorque:
        case Mode::kCyclicTorque:
            return torque_step(axis);
        case Mode::kAutoReverse:
            return to_and_fro_step(axis);
    }
    return {};
}

SetPoint Modes::position_step() {
    const double before = profile_.speed();
    const ProfileLimits limits = own_limits_.value_or(targets_.profile);
    blocked_ = moving_ && blocks(target_ - profile_.position());
    if (blocked_) {
        // What the switch does not let be reached is forgotten: the way back is another target.
        moving_ = false;
        waiting_.reset();
        brake_at_switch();
    } else if (!moving_) {
        blocked_ = blocks(profile_.speed());
        if (blocked_) brake_at_switch();
        if (!blocked_) profile_.step_speed(0.0, limits);
    } else if (profile_.step_to(target_, limits)) {
        moving_ = waiting_.has_value();
        if (moving_) target_ = *std::exchange(waiting_, std::nullopt);
    }
    return position_set_point(before);
}

bool Modes::blocks(double direction) const {
    if (mode_ == Mode::kHoming) return false;
    return (direction > 0.0 && switches_.positive) || (direction < 0.0 && switches_.negative);
}

void Modes::brake_at_switch() {
    const double rate = switches_.deceleration;
    profile_.step_speed(0.0, {std::abs(profile_.speed()), rate, rate});
}

void Modes::move(double target, const ProfileLimits& limits) {
    waiting_.reset();
    target_ = bounded(target);
    own_limits_ = limits;
    moving_ = true;
}

void Modes::end_move(double deceleration) {
    waiting_.reset();
    moving_ = false;
    const double rate = deceleration > 0.0 ? deceleration : targets_.profile.deceleration;
    own_limits_ = ProfileLimits{std::abs(profile_.speed()), rate, rate};
}

// Straight lines between the targets that come in, each in one cycle. What stood in the object
// before the mode began is no target: taking it would make the axis leap.
SetPoint Modes::cyclic_step(double target) {
    const double before = profile_.speed();
    if (target != cyclic_seen_) {
        cyclic_seen_ = target;
        cyclic_from_ = profile_.position();
        cyclic_to_ = bounded(target);
        cyclic_part_ = 0.0;
    }
    cyclic_part_ = std::min(1.0, cyclic_part_ + kStepSeconds / targets_.cycle);
    const double position = cyclic_from_ + (cyclic_to_ - cyclic_from_) * cyclic_part_;
    const double most = targets_.speed_profile.speed * kStepSeconds;
    double moved = std::clamp(position - profile_.position(), -most, most);
    blocked_ = blocks(moved);
    if (blocked_) {
        const double left = std::abs(before) - switches_.deceleration * kStepSeconds;
        const double rest = blocks(before) ? std::max(left, 0.0) * kStepSeconds : 0.0;
        moved = std::clamp(moved, -rest, rest);
    }
    profile_.set(profile_.position() + moved, moved / kStepSeconds);
    return position_set_point(before);
}

SetPoint Modes::speed_step(const Axis& axis, bool ramp) {
    const double before = profile_.speed();
    const auto place = static_cast<double>(axis.position());
    double wanted = targets_.speed;
    held_ = (targets_.highest && place >= *targets_.highest && wanted > 0.0) ||
            (targets_.lowest && place <= *targets_.lowest && wanted < 0.0);
    blocked_ = blocks(wanted);
    if (held_ || blocked_) wanted = 0.0;
    const double most = targets_.speed_profile.speed;
    wanted = std::clamp(wanted, -most, most);
    if (blocked_) {
        brake_at_switch();
    } else if (ramp) {
        profile_.step_speed(wanted, targets_.speed_profile);
    } else {
        profile_.set(place, wanted);
    }
    profile_.set(place, profile_.speed());
    speed_reached_ = profile_.speed() == wanted;
    // A leap has no acceleration that could be fed forward.
    return speed_set_point(ramp ? before : profile_.speed());
}

SetPoint Modes::torque_step(const Axis& axis) {
    const double most = targets_.current_slope * kStepSeconds;
    const double left = targets_.current - current_;
    current_ += most <= 0.0 ? left : std::clamp(left, -most, most);
    speed_reached_ = current_ == targets_.current;
    // Instead of its torque towards the switch the axis gets the one that holds it.
    blocked_ = blocks(current_);
    if (blocked_) {
        const double before = profile_.speed();
        brake_at_switch();
        profile_.set(static_cast<double>(axis.position()), profile_.speed());
        return speed_set_point(before);
    }
    profile_.set(static_cast<double>(axis.position()), axis.speed());
    SetPoint out;
    out.loop = Loop::kCurrent;
    out.current = current_;
    // Near its limit of speed the torque that would go beyond it fades, and turns round.
    if (const double limit = targets_.current_speed_limit; limit > 0.0) {
        const double gain = axis.setup().velocity_kp;
        out.current = std::min(out.current, gain * (limit - axis.speed()));
        out.current = std::max(out.current, gain * (-limit - axis.speed()));
    }
    return out;
}

// By time the axis is steered by speed, so the profile's place follows the axis.
SetPoint Modes::to_and_fro_step(const Axis& axis) {
    const double before = profile_.speed();
    const auto place = static_cast<double>(axis.position());
    blocked_ = blocks(profile_.speed());
    if (blocked_) auto_reverse_.stop();
    auto_reverse_.step(profile_, targets_.to_and_fro, place);
    if (steers_place()) return position_set_point(before);
    profile_.set(place, profile_.speed());
    return speed_set_point(before);
}

bool Modes::steers_place() const {
    return holds_position(mode_) && !(mode_ == Mode::kAutoReverse && targets_.to_and_fro.by_time);
}

SetPoint Modes::stop(const Axis& axis, double deceleration) {
    const double before = profile_.speed();
    ProfileLimits limits;
    limits.speed = std::abs(before);
    limits.acceleration = deceleration;
    limits.deceleration = deceleration;
    stopped_ = profile_.step_speed(0.0, limits);
    if (steers_place()) return position_set_point(before);
    profile_.set(static_cast<double>(axis.position()), profile_.speed());
    current_ = axis.current_demand();
    return speed_set_point(before);
}

double Modes::bounded(double position) {
    double kept = position;
    if (targets_.lowest) kept = std::max(kept, *targets_.lowest);
    if (targets_.highest) kept = std::min(kept, *targets_.highest);
    held_ = kept != position;
    return kept;
}

bool Modes::take_target(double position, bool at_once, bool relative, const Axis& axis) {
    if (waiting_ && !at_once) return false;
    // A relative target counts from the last one, or from where the axis is told to be.
    const double last = waiting_.value_or(moving_ ? target_ : axis.position_demand());
    const double target = bounded(relative ? last + position : position);
    if (moving_ && !at_once) {
        waiting_ = target;
        return true;
    }
    waiting_.reset();
    own_limits_.reset();
    target_ = target;
    moving_ = true;
    return true;
}

void Modes::hold_at(double position) {
    profile_.set(position, 0.0);
    target_ = position;
    cyclic_from_ = position;
    cyclic_to_ = position;
}

void Modes::shift(double counts) {
    profile_.set(profile_.position() + counts, profile_.speed());
    target_ += counts;
    if (waiting_) *waiting_ += counts;
    cyclic_from_ += counts;
    cyclic_to_ += counts;
}

}  // namespace servo::sim
