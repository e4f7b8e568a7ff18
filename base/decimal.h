// Decimal numbers that are nothing else. (The scanner of base/number.h takes any text.)
#pragma once

#include <optional>
#include <string_view>

namespace servo::base {

// Sign, digits with at most one point, exponent: all of the text. Nothing for another text, and for
// a number beyond a double.
std::optional<double> decimal_number(std::string_view text);

}  // namespace servo::base
