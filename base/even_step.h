// Steps of scales.
#pragma once

#include <cmath>
#include <initializer_list>

namespace servo::base {

// A step of 1, 2 or 5 times a power of ten that divides the range into about so many parts; 1 for a
// range that is none.
inline double even_step(double range, int parts) {
    if (!(range > 0.0)) return 1.0;
    const double wanted = range / parts;
    const double power = std::pow(10.0, std::floor(std::log10(wanted)));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * power >= wanted) return digit * power;
    return 10.0 * power;
}

}  // namespace servo::base
