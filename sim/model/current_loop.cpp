#include "sim/model/current_loop.h"

#include <algorithm>
#include <cmath>

#include "sim/model/plant.h"

namespace servo::sim {

namespace {

constexpr double kRootThree = 1.7320508075688772;

}  // namespace

void CurrentLoop::configure(const CurrentSetup& setup) {
    setup_ = setup;
    // The voltage is constant within a step, so the winding is solved exactly.
    decay_ = std::exp(-setup.resistance * kStepSeconds / setup.inductance);
    gain_ = (1.0 - decay_) / setup.resistance;
}

void CurrentLoop::step(double reference, double speed, double bus_voltage) {
    const double emf = setup_.emf * speed;
    const double limit = bus_voltage / kRootThree;
    const double error = reference - current_;
    const double integral = integral_ + setup_.ki * kStepSeconds * error;
    const double wanted = setup_.kp * error + integral + emf;
    voltage_ = std::clamp(wanted, -limit, limit);
    saturated_ = voltage_ != wanted;
    // The integral only goes on where that doesn't lead further beyond the inverter's reach.
    if (!saturated_ || (wanted > voltage_) != (error > 0.0)) integral_ = integral;
    current_ = decay_ * current_ + gain_ * (voltage_ - emf);
}

void CurrentLoop::off() {
    integral_ = 0.0;
    current_ = 0.0;
    voltage_ = 0.0;
    saturated_ = false;
}

}  // namespace servo::sim
