#include "tuner/closed_loop.h"

#include <algorithm>

#include "tuner/loop_model.h"

namespace servo::tuner {

ClosedVelocity::ClosedVelocity(const TunerData& data) {
    const Simulation& s = data.simulation;
    frequency_.push_back(0.0);
    value_.emplace_back(1.0);
    for (int point = 0; point < s.points; ++point) {
        const double frequency = data.frequency(point);
        if (frequency <= frequency_.back()) continue;
        const auto i = static_cast<std::size_t>(point);
        frequency_.push_back(frequency);
        value_.push_back(std::polar(double{s.closed_velocity.gain[i]},
                                    double{s.closed_velocity.phase[i]} * kPi / 180.0));
    }
    for (std::size_t i = 0; i < frequency_.size(); ++i)
        slope_.push_back(slope(i));
}

// Of the parabola through a point and its neighbours. The response at negative frequencies is the
// conjugate one, which gives 0 Hz its second neighbour.
std::complex<double> ClosedVelocity::slope(std::size_t i) const {
    const std::size_t last = frequency_.size() - 1;
    if (last == 0) return 0.0;
    if (i == 0) return {0.0, value_[1].imag() / frequency_[1]};
    const auto rise = [this](std::size_t k) {
        return (value_[k] - value_[k - 1]) / (frequency_[k] - frequency_[k - 1]);
    };
    if (i == last) return rise(i);
    const double before = frequency_[i] - frequency_[i - 1];
    const double after = frequency_[i + 1] - frequency_[i];
    return (rise(i) * after + rise(i + 1) * before) / (before + after);
}

std::complex<double> ClosedVelocity::at(double frequency) const {
    if (frequency >= frequency_.back()) {
        const double share = frequency_.back() / frequency;
        return value_.back() * share * share;
    }
    const auto above = std::upper_bound(frequency_.begin(), frequency_.end(), frequency);
    const auto k = static_cast<std::size_t>(above - frequency_.begin());
    const double width = frequency_[k] - frequency_[k - 1];
    const double u = (frequency - frequency_[k - 1]) / width;
    const double v = 1.0 - u;
    // Hermite's cubic.
    return v * v * ((1.0 + 2.0 * u) * value_[k - 1] + u * width * slope_[k - 1]) +
           u * u * ((1.0 + 2.0 * v) * value_[k] - v * width * slope_[k]);
}

std::complex<double> ClosedVelocity::open_position(double frequency, double hertz) const {
    return hertz * position_response(frequency, at(frequency));
}

}  // namespace servo::tuner
