// A frequency response made ready for looking through: logarithms, and phases without folds.
#pragma once

#include <cstddef>
#include <vector>

#include "tuner/margins.h"

namespace servo::tuner {

struct ResponseCurve {
    std::vector<double> log_frequency;  // log10 of Hz, rising
    std::vector<double> gain;           // dB
    std::vector<double> phase;          // degrees, less than half a turn from point to point
    std::size_t size() const { return log_frequency.size(); }
};

// Leaves out points that have no place on it: a frequency of 0 or below or not above the one
// before, a gain or a phase that is no number. Gains below -240 dB, 0 among them, count as that.
ResponseCurve curve_of(const ResponseView& view);

// In Hz, of the first `points` points of the scan.
std::vector<double> frequencies(const TunerData& data, int points);

double decibels(double gain);
double ratio(double decibels);

// Half of the power, in dB: 10 log10 2.
inline constexpr double kHalfPower = 3.0102999566398120;

}  // namespace servo::tuner
