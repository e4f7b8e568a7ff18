#include "params/expression.h"

#include "base/number.h"
#include "params/expression_arithmetic.h"
#include "params/expression_walk.h"

namespace servo::params {

namespace {

constexpr Did done_if(bool good) {
    return good ? Did::kDone : Did::kFailed;
}

// Computes at once.
struct NumberMachine {
    using Value = double;

    static double zero() { return 0; }

    static Did number(std::string_view text, double& value) {
        value = base::leading_number(text);
        return done_if(is_number(value));
    }

    static Did factorial(std::string_view text, double& value) {
        return done_if(factorial_of(base::leading_number(text), value));
    }

    static Did function(Function wanted, double& value) {
        return done_if(function_of(wanted, value, value));
    }

    static Did logarithm(Logarithm wanted, double& value) {
        return done_if(logarithm_of(wanted, value, value));
    }

    static Did level_name(std::string_view behind_marker, std::size_t& level) {
        level = level_named(behind_marker);
        return Did::kDone;
    }

    static Did negate(double& value) {
        value *= -1;
        return Did::kDone;
    }

    static Did combine(double& accumulator, char op, double value) {
        return done_if(params::combine(accumulator, op, value));
    }

    static Did add(double& sum, double term) {
        sum += term;
        return done_if(is_number(sum));
    }
};

}  // namespace

std::optional<double> eval_expression(std::string_view text) {
    const std::optional<LevelTexts> levels = LevelTexts::strip(text);
    if (!levels) return std::nullopt;
    NumberMachine machine;
    double result = 0;
    switch (ExpressionWalk<NumberMachine>(*levels, machine).run(result)) {
        case WalkEnd::kValue:
            return result;
        case WalkEnd::kFailed:
        case WalkEnd::kRefused:
            return 0;
        case WalkEnd::kToCaller:
            return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace servo::params
