#include "params/expression_arithmetic.h"

#include <cstdint>

#include "base/number.h"

namespace servo::params {

bool combine(double& accumulator, char op, double value) {
    switch (op) {
        case '*':
            accumulator *= value;
            break;
        case '/':
            if (value == 0) return false;
            accumulator /= value;
            break;
        case '^':
            // No value for a zero raised to less than zero, or for a root of a negative number.
            accumulator = std::pow(accumulator, value);
            break;
        default:
            return false;
    }
    return is_number(accumulator);
}

double function_value(Function wanted, double x) {
    switch (wanted) {
        case Function::kSin:
            return std::sin(x);
        case Function::kCos:
            return std::cos(x);
        case Function::kTan:
            return std::tan(x);
        case Function::kAbs:
            return std::fabs(x);
        case Function::kAtn:
            return std::atan(x);
        case Function::kInt:
            return std::floor(x);
        case Function::kFix:
            return std::trunc(x);
        case Function::kSgn:
            return x > 0 ? 1 : x < 0 ? -1 : 0;
        case Function::kSqr:
            return std::sqrt(x);
    }
    return 0;
}

bool function_of(Function wanted, double x, double& result) {
    if (x < 0) return false;  // the square root, which is computed whichever function is wanted
    result = function_value(wanted, x);
    return is_number(result);
}

double logarithm_value(Logarithm wanted, double x) {
    const double natural = std::log(x);
    return wanted == Logarithm::kLn ? natural : natural / std::log(10.0);
}

bool logarithm_of(Logarithm wanted, double x, double& result) {
    if (x <= 0) return false;
    result = logarithm_value(wanted, x);
    return true;
}

bool factorial_of(double number, double& result) {
    const std::int64_t whole = base::round_half_even(number);
    if (whole > INT16_MAX || whole < INT16_MIN) return false;
    result = 1;
    for (std::int64_t factor = 2; factor <= whole; ++factor) {
        result *= static_cast<double>(factor);
        if (!is_number(result)) return false;
    }
    return true;
}

}  // namespace servo::params
