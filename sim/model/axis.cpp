#include "sim/model/axis.h"

#include <algorithm>
#include <cmath>

namespace servo::sim {

namespace {

// Time constant of the speed that is shown.
constexpr double kShownSeconds = 0.01;

// Below this a filter's tail, which would never quite end, counts as ended, counts/s.
constexpr double kNoSpeed = 0.05;

}  // namespace

void Axis::configure(const AxisSetup& setup) {
    const bool other_encoder = setup.resolution != setup_.resolution;
    setup_ = setup;
    plant_.configure(setup.plant);
    current_.configure(setup.current);
    supply_.configure(setup.supply);
    speed_filter_.configure(setup.speed_filter);
    torque_filter_.configure(setup.torque_filter);
    if (!other_encoder) return;
    define_position(0);
    past_.fill(plant_.counts(setup.resolution * kFiner));
}

void Axis::define_position(std::int64_t position) {
    position_ = position;
    offset_ = position - plant_.counts(setup_.resolution);
}

void Axis::shift_position(std::int64_t counts) {
    position_ += counts;
    offset_ += counts;
}

void Axis::start() {
    current_.off();
    supply_.start();
    speed_filter_.set(0.0);
    torque_filter_.set(0.0);
    define_position(0);
    past_.fill(plant_.counts(setup_.resolution * kFiner));
    raw_speed_ = 0.0;
    shown_speed_ = 0.0;
    integral_ = 0.0;
    fed_forward_ = 0.0;
    current_demand_ = 0.0;
    speed_demand_ = 0.0;
    position_demand_ = 0.0;
    following_error_ = 0.0;
    injected_ = 0.0;
    limited_ = false;
    loop_ = Loop::kOff;
}

double Axis::true_speed() const {
    return plant_.motor_speed() / (2.0 * kPi) * static_cast<double>(setup_.resolution);
}

bool Axis::still() const {
    return loop_ == Loop::kOff && plant_.at_rest() && supply_.settled() && speed() == 0.0 &&
           shown_speed_ == 0.0;
}

void Axis::measure() {
    position_ = plant_.counts(setup_.resolution) + offset_;
    const std::int64_t fine = plant_.counts(setup_.resolution * kFiner);
    const std::int64_t moved = fine - past_[past_next_];
    past_[past_next_] = fine;
    past_next_ = (past_next_ + 1) % kSpan;
    raw_speed_ = static_cast<double>(moved) * kSpeedUnit;
    const double speed = speed_filter_.step(raw_speed_);
    shown_speed_ += kStepSeconds / kShownSeconds * (speed - shown_speed_);
    if (moved != 0 || std::abs(speed) > kNoSpeed || !plant_.at_rest()) return;
    speed_filter_.set(0.0);
    if (std::abs(shown_speed_) < kNoSpeed) shown_speed_ = 0.0;
}

double Axis::bounded(double current) const {
    return std::clamp(current, setup_.current_low, setup_.current_high);
}

double Axis::velocity_loop() {
    const double error = speed_demand_ - speed();
    const double proportional =
        setup_.velocity_kp * (setup_.reference_share * speed_demand_ - speed());
    const double limit = setup_.integral_limit;
    const double integral =
        std::clamp(integral_ + setup_.velocity_ki * kStepSeconds * error, -limit, limit);
    const double sum = proportional + integral + fed_forward_;
    // At the limit of the current the integral only moves back.
    const double held = bounded(sum);
    if (held == sum || (sum > held) != (error > 0.0)) integral_ = integral;
    return sum;
}

double Axis::demand(const SetPoint& set_point) {
    following_error_ = 0.0;
    position_demand_ = static_cast<double>(position_);
    speed_demand_ = 0.0;
    fed_forward_ = 0.0;
    switch (set_point.loop) {
        case Loop::kOff:
            integral_ = 0.0;
            return 0.0;
        case Loop::kCurrent:
            // Whoever takes over from here goes on with the torque that is there.
            integral_ = set_point.current;
            return set_point.current;
        case Loop::kVelocity:
            speed_demand_ = set_point.speed;
            break;
        case Loop::kPosition:
            position_demand_ = set_point.position;
            following_error_ = set_point.position - static_cast<double>(position_);
            speed_demand_ = std::clamp(
                setup_.position_kp * following_error_ + setup_.speed_feed_forward * set_point.speed,
                -setup_.position_limit, setup_.position_limit);
            break;
    }
    fed_forward_ = set_point.current;
    return velocity_loop();
}

void Axis::step(const SetPoint& set_point, double load_torque) {
    measure();
    loop_ = set_point.loop;
    const double wanted = demand(set_point);
    if (loop_ == Loop::kOff) {
        limited_ = false;
        current_demand_ = 0.0;
        torque_filter_.set(0.0);
        current_.off();
    } else {
        const double total = wanted + injected_;
        current_demand_ = bounded(total);
        limited_ = current_demand_ != total;
        current_.step(torque_filter_.step(current_demand_), plant_.motor_speed(),
                      supply_.voltage());
    }
    supply_.step(current_.power());
    plant_.step(setup_.torque_constant * current_.current(), load_torque);
}

}  // namespace servo::sim
