#include "params/random_formula.h"

#include <array>
#include <cmath>
#include <string_view>

namespace servo::params {

namespace {

template <std::size_t kCount>
std::string_view pick(Random& random, const std::array<std::string_view, kCount>& from) {
    return from[random.below(kCount)];
}

std::optional<double> finite(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    return value;
}

std::optional<double> applied(char op, std::optional<double> left, std::optional<double> right) {
    if (!left || !right) return std::nullopt;
    switch (op) {
        case '*':
            return finite(*left * *right);
        case '/':
            return finite(*left / *right);
        default:
            return finite(std::pow(*left, *right));
    }
}

Sample number(Random& random) {
    Sample sample;
    const std::uint32_t whole = random.below(random.once_in(4) ? 100000 : 12);
    sample.text = std::to_string(whole);
    sample.value = whole;
    if (random.once_in(3)) {
        const std::uint32_t quarter = random.below(4) * 25;  // exact in binary
        sample.text += '.';
        sample.text += std::to_string(quarter);
        sample.value = whole + (quarter == 0 ? 0.0 : quarter / 100.0);
    }
    return sample;
}

std::string call(std::string_view name, std::string_view argument) {
    std::string text(name);
    text += '(';
    text += argument;
    text += ')';
    return text;
}

Sample called(Random& random, int depth) {
    Sample sample = well_formed(random, depth - 1);
    const bool allowed = sample.value && *sample.value >= 0;
    switch (random.below(5)) {
        case 0:
            sample.text = call("sqr", sample.text);
            sample.value = allowed ? finite(std::sqrt(*sample.value)) : std::nullopt;
            break;
        case 1:
            sample.text = call("abs", sample.text);
            sample.value = allowed ? sample.value : std::nullopt;
            break;
        case 2:
            sample.text = call("int", sample.text);
            sample.value = allowed ? finite(std::floor(*sample.value)) : std::nullopt;
            break;
        case 3:
            sample.text = call("ln", sample.text);
            sample.value =
                allowed && *sample.value > 0 ? finite(std::log(*sample.value)) : std::nullopt;
            break;
        default:
            sample.text = call("", sample.text);
            break;
    }
    return sample;
}

Sample operand(Random& random, int depth) {
    return depth > 0 && random.once_in(3) ? called(random, depth) : number(random);
}

constexpr std::array<std::string_view, 6> kNumbers = {"1000", "3", "7", "1875", "512", "0.1"};

std::string usual_operand(Random& random, int depth) {
    constexpr std::array<std::string_view, 5> kReferences = {
        "[64100320]", "[65100310]", "[30400710]", "[60F61310]", "[60F61110]"};
    constexpr std::array<std::string_view, 12> kCalls = {"",    "sin", "cos", "tan", "abs", "atn",
                                                         "int", "fix", "sgn", "sqr", "lg",  "ln"};
    switch (random.below(depth > 0 ? 8 : 6)) {
        case 0:
        case 1:
        case 2:
            return "N";
        case 3:
            return std::string(pick(random, kReferences));
        case 4:
            return std::to_string(random.below(70000));
        case 5:
            return std::string(pick(random, kNumbers));
        default: {
            std::string text(pick(random, kCalls));
            text += '(';
            for (std::uint32_t i = random.below(3) + 1; i > 0; --i) {
                text += usual_operand(random, depth - 1);
                if (i > 1) text += "+-*/^"[random.below(5)];
            }
            return text + ')';
        }
    }
}

std::string usual_expression(Random& random) {
    std::string text;
    if (random.once_in(8)) text += '-';
    const std::uint32_t operands = random.below(6) + 1;
    for (std::uint32_t i = 0; i < operands; ++i) {
        if (i > 0) text += "**//*/+-^"[random.below(9)];
        text += usual_operand(random, 2);
    }
    if (random.once_in(10)) text += "!*+ 5)"[random.below(6)];
    if (random.once_in(10))
        text.insert(random.below(static_cast<std::uint32_t>(text.size())), 1, 'N');
    return text;
}

}  // namespace

Sample well_formed(Random& random, int depth) {
    Sample sum;
    sum.value = 0;
    const std::uint32_t terms = random.below(3) + 1;
    for (std::uint32_t i = 0; i < terms; ++i) {
        Sample term = operand(random, depth);
        const bool minus = i > 0 && random.once_in(2);
        // The minus of a term belongs to its first operand.
        if (minus && term.value) term.value = -*term.value;
        for (std::uint32_t j = random.below(3); j > 0; --j) {
            const char op = "*/^"[random.below(3)];
            const Sample next = operand(random, depth);
            term.value = applied(op, term.value, next.value);
            term.text += op;
            term.text += next.text;
        }
        if (i > 0) sum.text += minus ? '-' : '+';
        sum.text += term.text;
        sum.value = sum.value && term.value ? finite(*sum.value + *term.value) : std::nullopt;
    }
    return sum;
}

std::string any_text(Random& random, std::uint32_t most) {
    constexpr std::array<std::string_view, 40> kPieces = {
        "0",   "1",   "2",   "9",  "10",  ".",   "E",   "+",   "-",    "*",
        "/",   "^",   "!",   "(",  ")",   "(",   ")",   "N",   "N",    "N",
        " ",   "&H",  "A",   "F",  "sin", "cos", "tan", "abs", "atn",  "int",
        "fix", "sgn", "sqr", "lg", "ln",  "[",   "]",   "x",   "\x80", "[64100320]"};
    std::string text;
    for (std::uint32_t i = random.below(most + 1); i > 0; --i)
        text += pick(random, kPieces);
    return text;
}

std::string random_expression(Random& random) {
    return random.once_in(6) ? any_text(random, 12) : usual_expression(random);
}

}  // namespace servo::params
