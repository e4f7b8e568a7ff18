// A scan of a plant that is known as a formula.
#pragma once

#include <cmath>
#include <complex>
#include <cstdint>
#include <functional>
#include <numbers>

#include "tuner/loop_model.h"
#include "tuner/simulation.h"
#include "tuner/tuner_data.h"

namespace servo::tuner::test {

using Complex = std::complex<double>;
using Plant = std::function<Complex(Complex s)>;

inline Complex s_at(double frequency) {
    return {0.0, 2.0 * std::numbers::pi * frequency};
}

// As if a scan from `start` on had measured it: with a Kvp of 1 and nothing else, the open velocity
// loop is the plant.
inline TunerData scan_of(const Plant& plant, int start = 4, int step = 2, int points = 499) {
    TunerData data;
    data.settings.startFreq = static_cast<std::int16_t>(start);
    data.settings.stepFreq = static_cast<std::int16_t>(step);
    data.settings.stopFreq = static_cast<std::int16_t>(start + step * (points - 1));
    data.settings.magCurrent = 60;
    data.buffers.pointCount = static_cast<std::int16_t>(points);
    data.analysed = true;
    for (int i = 0; i + 1 < points; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const Complex value = plant(s_at(data.frequency(i))) / kLoopFactor;
        data.analysis.respX[k] = static_cast<float>(value.real() * 60 * 576);
        data.analysis.respY[k] = static_cast<float>(value.imag() * 60 * 576);
        data.analysis.magnitude[k] = static_cast<float>(std::abs(value) * 100);
        data.analysis.phase[k] =
            static_cast<float>(std::round(std::arg(value) * 180 / std::numbers::pi));
    }
    return data;
}

// Simulated without filters and without an integral part.
inline TunerData simulated(const Plant& plant, double position_gain = 1.0, int start = 4,
                           int step = 2, int points = 499) {
    TunerData data = scan_of(plant, start, step, points);
    LoopGains gains;
    gains.loopScale = static_cast<float>(position_gain);
    data.simulation = simulate(data, {}, gains);
    return data;
}

}  // namespace servo::tuner::test
