#include "params/formula.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

#include "base/gbk.h"
#include "base/number.h"

namespace servo::params {

namespace {

constexpr std::size_t kUnitWidth = 20;
constexpr std::size_t kFormulaWidth = 64;
constexpr std::size_t kLongestEntry = 10;
constexpr std::string_view kUnseenGuard = "[30400710]";

std::string without_padding(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

// The first line of a list that satisfies `wanted`.
template <class Predicate>
std::optional<std::string_view> find_line(std::string_view list, Predicate wanted) {
    for (;;) {
        const std::size_t end = list.find('\n');
        const std::string_view line = list.substr(0, end);
        if (wanted(line)) return line;
        if (end == std::string_view::npos) return std::nullopt;
        list.remove_prefix(end + 1);
    }
}

// True when the line holds `closed_word` with a blank or a "[" before it.
bool heads_with(std::string_view line, std::string_view closed_word) {
    std::size_t at = line.find(closed_word);
    for (; at != std::string_view::npos; at = line.find(closed_word, at + 1)) {
        if (at > 0 && (line[at - 1] == ' ' || line[at - 1] == '[')) return true;
    }
    return false;
}

std::string_view behind_last(std::string_view line, std::string_view closed_word) {
    return line.substr(line.rfind(closed_word) + closed_word.size());
}

void replace_all(std::string& text, std::string_view what, std::string_view by) {
    std::size_t at = text.find(what);
    for (; at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
}

// The expression with `number` for every capital N, and the operands for their references.
std::string pasted(std::string_view expression, std::string_view number,
                   const link::FormulaOperands& operands) {
    std::string text(expression);
    replace_all(text, "N", number);
    paste_operands(text, operands);
    return text;
}

// The low bytes of a number as hexadecimal digits; other sizes than 1, 2, 4 have no text.
std::string hex_digits(double value, int bytes) {
    if (bytes != 1 && bytes != 2 && bytes != 4) return {};
    // All patterns of 32 bits print, so a large unsigned number is brought into the signed range.
    if (bytes == 4 && value >= 2147483648.0) value -= 4294967296.0;
    const auto width = static_cast<std::size_t>(bytes) * 2;
    const std::string digits =
        std::string(width, '0') + base::hex_text(base::round_half_even(value));
    return digits.substr(digits.size() - width);
}

}  // namespace

FormulaHead split_formula(std::string_view line) {
    const std::size_t close = line.find(']');
    if (close == std::string_view::npos || close == 0) return {"DEC", "N*1"};
    const std::string_view head = line.substr(0, close);
    const std::size_t blank = head.find(' ');
    const std::string_view unit = blank == std::string_view::npos
                                      ? head.substr(base::utf8_prefix(head, 1).size())
                                      : head.substr(blank + 1);
    std::string_view formula = line.substr(close + 1);
    if (formula.empty()) formula = "N*1";
    return {without_padding(base::utf8_prefix(unit, kUnitWidth)),
            without_padding(base::utf8_prefix(formula, kFormulaWidth))};
}

std::string_view first_line(std::string_view list) {
    return list.substr(0, list.find('\n'));
}

bool is_decimal_unit(std::string_view unit) {
    return unit == "DEC" || unit == "INC" || unit == "inc";
}

void paste_operands(std::string& expression, const link::FormulaOperands& operands) {
    const std::array<std::pair<std::string_view, std::int32_t>, 5> references = {{
        {"[65100310]", operands.o65100310.value},
        {"[64100320]", operands.o64100320.value},
        {"[30400710]", operands.o30400710.value},
        {"[60F61310]", operands.o60F61310.value},
        {"[60F61110]", operands.o60F61110.value},
    }};
    for (const auto& [reference, value] : references) {
        if (expression.find(reference) == std::string::npos) continue;
        replace_all(expression, reference, std::to_string(value));
    }
}

std::optional<std::string> value_to_text(double value, std::string_view unit, std::string_view list,
                                         int size_code, const link::FormulaOperands& operands) {
    if (is_decimal_unit(unit)) return base::format_whole(value);
    if (unit == "HEX") return hex_digits(value, size_code % 10);
    if (unit == "ASCII") return base::gbk_to_utf8(ascii_bytes(value, size_code));

    const std::string closed_word = std::string(unit) + ']';
    const auto line =
        find_line(list, [&](std::string_view text) { return heads_with(text, closed_word); });
    if (!line) return std::string();
    const std::string_view expression = behind_last(*line, closed_word);
    // The only operand whose absence shows. The others compute with what is cached.
    if (expression.find(kUnseenGuard) != std::string_view::npos && !operands.o30400710.seen) {
        return std::string(kUnknownText);
    }
    const auto result = eval_with_value(expression, value, operands);
    if (!result) return std::nullopt;
    return base::format_fixed(*result, 2);
}

std::optional<std::string_view> unit_expression(std::string_view unit, std::string_view list) {
    const std::string closed_word = std::string(unit) + ']';
    const auto line = find_line(list, [&](std::string_view text) {
        return text.find(closed_word) != std::string_view::npos;
    });
    if (!line) return std::nullopt;
    return behind_last(*line, closed_word);
}

std::optional<double> value_to_unit(double value, std::string_view unit, std::string_view list,
                                    [[maybe_unused]] int size_code,
                                    const link::FormulaOperands& operands) {
    // Adding 0 takes the sign off a zero.
    if (is_decimal_unit(unit) || unit == "HEX") return std::round(value) + 0.0;
    const auto expression = unit_expression(unit, list);
    if (!expression) return 0.0;
    return eval_with_value(*expression, value, operands);
}

std::optional<double> eval_with_value(std::string_view expression, double value,
                                      const link::FormulaOperands& operands) {
    return eval_expression(pasted(expression, base::number_text(value), operands));
}

std::optional<double> text_to_value(std::string_view typed, std::string_view unit,
                                    std::string_view list, const link::FormulaOperands& operands) {
    if (typed.empty()) typed = "0";
    if (base::utf8_length(typed) > kLongestEntry) return kTooLong;
    if (is_decimal_unit(unit)) {
        const double number = base::leading_number(typed);
        if (!std::isfinite(number)) return std::nullopt;
        return number;
    }
    if (unit == "HEX") return base::leading_number("&H" + std::string(typed));
    if (unit == "ASCII") return ascii_value(base::utf8_to_gbk(typed));

    // No "]" behind the word, so a word finds a longer one that begins with it.
    const std::string open_word = '[' + std::string(unit);
    const auto line = find_line(list, [&](std::string_view text) {
        return text.find(open_word) != std::string_view::npos;
    });
    if (!line) return 0.0;
    const std::size_t close = line->find(']');
    if (close == std::string_view::npos || close == 0) return 0.0;  // a line without an expression
    return eval_expression(pasted(line->substr(close + 1), typed, operands));
}

std::string ascii_bytes(double value, int size_code) {
    const int bytes = size_code % 10;
    if (bytes != 1 && bytes != 2 && bytes != 4) return {};
    const auto number = static_cast<std::uint64_t>(base::round_half_even(value));
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(number >> (8 * i) & 0xFF);
    return text;
}

double ascii_value(std::string_view bytes) {
    double sum = 0;
    double weight = 1;
    for (const char c : bytes) {
        sum += static_cast<unsigned char>(c) * weight;
        weight *= 256;
    }
    return sum;
}

}  // namespace servo::params
