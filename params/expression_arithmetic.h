// The arithmetic of expressions. Every operation says whether it came out; a false leaves the
// result without a meaning.
#pragma once

#include <cmath>
#include <limits>

#include "params/expression_text.h"

namespace servo::params {

// Neither an overflow nor without a value.
inline bool is_number(double value) {
    return std::fabs(value) <= std::numeric_limits<double>::max();
}

// accumulator = accumulator `op` value, with `op` one of * / ^.
bool combine(double& accumulator, char op, double value);

// All nine functions of x are computed before one is chosen, so a negative x makes each of them
// fail through its square root. Angles are in radians.
bool function_of(Function wanted, double x, double& result);

// As above, for zero and less. The decimal logarithm is the natural one over that of 10.
bool logarithm_of(Logarithm wanted, double x, double& result);

// Of the number rounded to 16 bits, which fails when it does not fit; 1 for numbers below 1.
bool factorial_of(double number, double& result);

// The bare functions, without the failures that come from their neighbours.
double function_value(Function wanted, double x);
double logarithm_value(Logarithm wanted, double x);

}  // namespace servo::params
