#include "sim/model/supply.h"

#include <algorithm>
#include <cmath>

#include "sim/model/plant.h"

namespace servo::sim {

void Supply::step(double power) {
    if (voltage_ >= setup_.brake_on && setup_.brake_resistor > 0.0) braking_ = true;
    if (voltage_ <= setup_.brake_on - kBrakeBand) braking_ = false;
    const double source = std::max(0.0, (setup_.voltage - voltage_) / setup_.source_resistance);
    const double brake = braking_ ? voltage_ / setup_.brake_resistor : 0.0;
    // Below one volt there is no inverter to speak of; the bound only keeps the division sane.
    const double taken = power / std::max(voltage_, 1.0);
    const double bleed = voltage_ / setup_.bleeder;
    voltage_ += (source - bleed - brake - taken) * kStepSeconds / setup_.capacitance;
    voltage_ = std::max(voltage_, 0.0);
}

bool Supply::settled() const {
    return !braking_ && std::abs(voltage_ - setup_.voltage) < 0.2;
}

}  // namespace servo::sim
