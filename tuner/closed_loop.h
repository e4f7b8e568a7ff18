// The simulated closed velocity loop between its points, and what stands on it.
#pragma once

#include <complex>
#include <cstddef>
#include <vector>

#include "tuner/tuner_data.h"

namespace servo::tuner {

// A smooth curve through the points of the closed velocity loop. Towards 0 Hz it goes to 1, since
// the integral part leaves no error there; above the last point it falls with the square of the
// frequency, its phase held.
class ClosedVelocity {
  public:
    explicit ClosedVelocity(const TunerData& data);

    bool empty() const { return frequency_.size() < 2; }
    double first_frequency() const { return frequency_[1]; }
    double last_frequency() const { return frequency_.back(); }

    std::complex<double> at(double frequency) const;
    // The open position loop with a gain of `hertz`.
    std::complex<double> open_position(double frequency, double hertz) const;

    // How far the first point is away from the 1 that it goes to.
    double gap_below() const { return std::abs(value_[1] - 1.0); }

  private:
    std::complex<double> slope(std::size_t point) const;

    // Entry 0 is 0 Hz.
    std::vector<double> frequency_;
    std::vector<std::complex<double>> value_;
    std::vector<std::complex<double>> slope_;  // per Hz
};

}  // namespace servo::tuner
