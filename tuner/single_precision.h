// Arithmetic is in double precision; what is kept or handed over is single.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace servo::tuner {

// The nearest single. A number beyond its range becomes the greatest one of its sign; infinities
// and NaN stay what they are.
inline float single(double value) {
    if (!std::isfinite(value)) return static_cast<float>(value);
    constexpr double kMost = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -kMost, kMost));
}

}  // namespace servo::tuner
