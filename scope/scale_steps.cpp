#include "scope/scale_steps.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/number.h"

namespace servo::scope {

namespace {

constexpr double kUsedDivisions = 6.0;  // of ten: a curve leaves two free above and below
constexpr int kStepDecimals = 13;
constexpr int kAutoDecimals = 14;

// The significant digits of a number above 0 and the power of ten of the first one. They are those
// of its text: rounding is judged on 15 decimal digits everywhere, so that what arithmetic in
// binary adds or loses in the last place moves no step.
struct Digits {
    std::string digits;
    int exponent = 0;
};

Digits digits_of(double value) {
    const std::string text = base::number_text(value);
    const std::size_t e = std::min(text.find('E'), text.size());
    Digits result;
    result.digits = text.substr(0, e);
    const std::size_t point = std::min(result.digits.find('.'), result.digits.size());
    if (point < result.digits.size()) result.digits.erase(point, 1);
    const std::size_t first = result.digits.find_first_not_of('0');
    result.digits.erase(0, first);
    result.exponent = static_cast<int>(point) - 1 - static_cast<int>(first);
    if (e < text.size())
        result.exponent += static_cast<int>(base::leading_number(text.substr(e + 1)));
    return result;
}

// A scale's text taken apart: "-2.5E-03".
struct ScaleText {
    bool negative = false;
    int first = 1;
    int second = 0;
    int exponent = 0;

    std::string text() const {
        return fmt::format("{}{}.{}E{:+03d}", negative ? "-" : "", first, second, exponent);
    }
};

ScaleText take_apart(std::string_view text) {
    const double value = base::leading_number(text);
    if (value == 0 || !std::isfinite(value)) return {};
    Digits digits = digits_of(std::fabs(value));
    digits.digits.resize(3, '0');
    int two = (digits.digits[0] - '0') * 10 + (digits.digits[1] - '0');
    if (digits.digits[2] >= '5') ++two;
    if (two == 100) {
        two = 10;
        ++digits.exponent;
    }
    return {value < 0, two / 10, two % 10, digits.exponent};
}

// The text of a step, unless no number is that large or that small.
std::string within_range(const ScaleText& step, std::string_view before) {
    std::string text = step.text();
    const double value = base::leading_number(text);
    return value == 0 || !std::isfinite(value) ? std::string(before) : text;
}

std::string at_least_one_decimal(double value, int decimals) {
    if (!std::isfinite(value)) return "0.0";
    std::string text = base::format_up_to(value, decimals);
    if (text.find('.') == std::string::npos) text += ".0";
    return text;
}

}  // namespace

double ScaleStep::value() const {
    return base::leading_number(text());
}

std::string ScaleStep::text() const {
    return fmt::format("{}.0E{:+03d}", mantissa, exponent);
}

ScaleStep scale_for_span(double span) {
    double wanted = std::fabs(span) / kUsedDivisions;
    if (wanted == 0 || !std::isfinite(wanted)) wanted = 1.0 / kUsedDivisions;
    const Digits digits = digits_of(wanted);
    ScaleStep step{digits.digits.front() - '0', digits.exponent};
    const std::string_view rest = std::string_view(digits.digits).substr(1);
    const auto raise_exponent = [&step] { step = {1, step.exponent + 1}; };
    if (!rest.empty() && rest.front() >= '5') {
        if (++step.mantissa == 10) raise_exponent();
    } else if (rest.find_first_not_of('0') != std::string_view::npos) {
        if (step.mantissa == 1)
            step.mantissa = 2;
        else if (step.mantissa < 5)
            step.mantissa = 5;
        else
            raise_exponent();
    }
    return step;
}

std::string scale_up(std::string_view text, bool small) {
    ScaleText step = take_apart(text);
    if (!small) {
        ++step.first;
    } else if (++step.second > 9) {
        step.second = 0;
        ++step.first;
    }
    if (step.first > 9) {
        step.first = 1;
        ++step.exponent;
    }
    return within_range(step, text);
}

std::string scale_down(std::string_view text, bool small) {
    ScaleText step = take_apart(text);
    if (!small) {
        --step.first;
    } else if (--step.second < 0) {
        step.second = 9;
        --step.first;
    }
    if (step.first < 1) {
        step.first = 9;
        --step.exponent;
    }
    return within_range(step, text);
}

std::string offset_text(double offset) {
    return at_least_one_decimal(offset, kStepDecimals);
}

std::string auto_offset_text(double offset) {
    return at_least_one_decimal(offset, kAutoDecimals);
}

}  // namespace servo::scope
