#include "sim/model/plant.h"

#include <cmath>

namespace servo::sim {

namespace {

// Dry friction takes speed away but never turns it round: a mass whose speed it could take within
// the step stands still. So standing really is standing, with no creeping.
double after_friction(double speed, double friction, double inertia) {
    const double taken = friction * kStepSeconds / inertia;
    if (std::abs(speed) <= taken) return 0.0;
    return speed > 0.0 ? speed - taken : speed + taken;
}

}  // namespace

// Speeds first, then angles with the new speeds: this order keeps the energy of the undamped shaft
// bounded where the other lets it grow.
void Plant::step(double torque, double load_torque) {
    const PlantSetup& s = setup_;
    if (s.load_inertia <= 0.0) {
        const double push = torque - load_torque - s.viscous * motor_speed_;
        const double speed = motor_speed_ + push * kStepSeconds / s.motor_inertia;
        motor_speed_ = after_friction(speed, s.motor_friction + s.load_friction, s.motor_inertia);
        load_speed_ = motor_speed_;
        twist_ = 0.0;
    } else {
        const double shaft = s.stiffness * twist_ + s.damping * (motor_speed_ - load_speed_);
        const double motor_push = torque - shaft - s.viscous * motor_speed_;
        const double load_push = shaft - load_torque;
        const double motor = motor_speed_ + motor_push * kStepSeconds / s.motor_inertia;
        const double load = load_speed_ + load_push * kStepSeconds / s.load_inertia;
        motor_speed_ = after_friction(motor, s.motor_friction, s.motor_inertia);
        load_speed_ = after_friction(load, s.load_friction, s.load_inertia);
        twist_ += (motor_speed_ - load_speed_) * kStepSeconds;
    }
    at_rest_ = motor_speed_ == 0.0 && load_speed_ == 0.0;
    if (at_rest_) return;
    part_ += motor_speed_ * kStepSeconds / (2.0 * kPi);
    const double whole = std::floor(part_);
    turns_ += static_cast<std::int64_t>(whole);
    part_ -= whole;
}

std::int64_t Plant::counts(std::int64_t resolution) const {
    const double part = part_ * static_cast<double>(resolution);
    return turns_ * resolution + static_cast<std::int64_t>(part);
}

void Plant::stop() {
    motor_speed_ = 0.0;
    load_speed_ = 0.0;
    twist_ = 0.0;
    at_rest_ = true;
}

}  // namespace servo::sim
