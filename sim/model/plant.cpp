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

// A mass on the shaft, the other end held: what one step of it does, by the stiffness and by the
// damping, so that after a period it is where the swinging mass would be.
struct StepShares {
    double stiffness = 0.0;  // of the twist, taken from the speed by one step, times the step
    double damping = 0.0;    // of the speed, taken from it by one step
    bool swings = false;
};

StepShares shares_of(const PlantSetup& s, double inertia) {
    const double frequency = std::sqrt(s.stiffness / inertia);  // rad/s
    const double ratio = s.damping / (2.0 * std::sqrt(s.stiffness * inertia));
    StepShares shares;
    shares.swings = ratio < 1.0 && frequency * kStepSeconds < 1.0;
    if (!shares.swings) return shares;
    const double decay = ratio * frequency * kStepSeconds;
    const double angle = frequency * std::sqrt(1.0 - ratio * ratio) * kStepSeconds;
    shares.damping = 1.0 - std::exp(-2.0 * decay);
    shares.stiffness = 2.0 - shares.damping - 2.0 * std::exp(-decay) * std::cos(angle);
    return shares;
}

}  // namespace

PlantSetup made_for_steps(const PlantSetup& machine) {
    if (machine.load_inertia <= 0.0 || machine.stiffness <= 0.0) return machine;
    const double sum = machine.motor_inertia + machine.load_inertia;
    // Both ends free: the resonance. The motor held: the anti-resonance.
    const StepShares free = shares_of(machine, machine.motor_inertia * machine.load_inertia / sum);
    const StepShares held = shares_of(machine, machine.load_inertia);
    if (!free.swings || !held.swings) return machine;
    PlantSetup made = machine;
    made.motor_inertia = sum * held.stiffness / free.stiffness;
    made.load_inertia = sum - made.motor_inertia;
    const double both = made.motor_inertia * made.load_inertia / sum;
    made.stiffness = free.stiffness * both / (kStepSeconds * kStepSeconds);
    made.damping = free.damping * both / kStepSeconds;
    return made;
}

void Plant::configure(const PlantSetup& machine) {
    if (machine == machine_) return;
    machine_ = machine;
    setup_ = made_for_steps(machine);
}

// Against the positive direction. A stop can only push.
double Plant::stop_torque() const {
    const double place = load_place();
    const double beyond = place > setup_.highest  ? place - setup_.highest
                          : place < setup_.lowest ? place - setup_.lowest
                                                  : 0.0;
    if (beyond == 0.0) return 0.0;
    const double torque =
        setup_.stop_stiffness * beyond * 2.0 * kPi + setup_.stop_damping * load_speed_;
    return torque * beyond > 0.0 ? torque : 0.0;
}

// Speeds first, then angles with the new speeds: this order keeps the energy of the undamped shaft
// bounded where the other lets it grow.
void Plant::step(double torque, double load_torque) {
    const PlantSetup& s = setup_;
    load_torque += stop_torque();
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
