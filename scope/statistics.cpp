#include "scope/statistics.h"

#include <algorithm>
#include <cmath>

#include "scope/compensated_sum.h"

namespace servo::scope {

namespace {

// Power of two that brings the largest value near 1, so that no square and no sum leaves the range
// of the numbers. A power of two costs no digits.
int exponent_of(double minimum, double maximum) {
    const double largest = std::max(std::fabs(minimum), std::fabs(maximum));
    int exponent = 0;
    std::frexp(largest, &exponent);
    return exponent;
}

}  // namespace

std::optional<Statistics> statistics_of(std::span<const double> values) {
    if (values.empty()) return std::nullopt;
    Statistics result;
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    result.minimum = *low;
    result.maximum = *high;
    result.peak_to_peak = *high - *low;

    const int exponent = exponent_of(*low, *high);
    CompensatedSum sum;
    CompensatedSum squares;
    for (const double value : values) {
        const double scaled = std::ldexp(value, -exponent);
        sum.add(scaled);
        squares.add(scaled * scaled);
    }
    const auto count = static_cast<double>(values.size());
    result.mean = std::ldexp(sum.value() / count, exponent);
    result.rms = std::ldexp(std::sqrt(squares.value() / count), exponent);
    return result;
}

}  // namespace servo::scope
