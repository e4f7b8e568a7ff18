// Figures of the visible window of a curve.
#pragma once

#include <optional>
#include <span>

namespace servo::scope {

struct Statistics {
    double minimum = 0.0;
    double maximum = 0.0;
    double mean = 0.0;
    double rms = 0.0;
    double peak_to_peak = 0.0;
    bool operator==(const Statistics&) const = default;
};

// Nothing for an empty stretch. Sums are compensated, so that a small ripple on a large value
// keeps its digits.
std::optional<Statistics> statistics_of(std::span<const double> values);

}  // namespace servo::scope
