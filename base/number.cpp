#include "base/number.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace servo::base {

namespace {

// Shown for a value that has no digits. It reads back as 0.
constexpr std::string_view kUntellable = "?????";

// All rounding is judged on this many significant digits, so that 1.005 counts as a half although
// the nearest binary number lies below it.
constexpr int kSignificant = 15;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

int hex_digit(char c) {
    if (is_digit(c)) return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// Length of the unsigned decimal number at the start of `text`, 0 when it has no digits. An "E"
// without digits behind it belongs to what follows the number.
std::size_t decimal_length(std::string_view text) {
    std::size_t end = 0;
    std::size_t digits = 0;
    bool point = false;
    for (; end < text.size(); ++end) {
        if (is_digit(text[end])) {
            ++digits;
        } else if (text[end] == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (digits == 0) return 0;
    if (end < text.size() && (text[end] == 'E' || text[end] == 'e')) {
        std::size_t exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
        if (exponent < text.size() && is_digit(text[exponent])) {
            end = exponent;
            while (end < text.size() && is_digit(text[end]))
                ++end;
        }
    }
    return end;
}

// True when a number that does not fit is too large, false when it is too small.
bool overflows(std::string_view number) {
    const std::size_t e = number.find_first_of("Ee");
    const std::string_view mantissa = number.substr(0, e);
    const std::size_t first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos) return false;
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    // Decimal place of the first digit that counts: positive left of the point.
    const auto place = static_cast<double>(point) - static_cast<double>(first);
    double exponent = 0;
    if (e != std::string_view::npos) {
        std::string_view digits = number.substr(e + 1);
        const bool negative = digits.front() == '-';
        if (negative || digits.front() == '+') digits.remove_prefix(1);
        for (const char c : digits)
            exponent = exponent * 10 + (c - '0');
        if (negative) exponent = -exponent;
    }
    return place + exponent > 0;
}

double decimal_value(std::string_view number) {
    double value = 0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
        return overflows(number) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return value;
}

// The decimal digits of a finite number: 0.d1 d2 ... times ten to the power of `point`.
struct Decimal {
    bool negative = false;
    std::string digits;
    int point = 0;
};

Decimal to_decimal(double value) {
    const std::string text = fmt::format("{:.{}e}", std::fabs(value), kSignificant - 1);
    const std::size_t e = text.find('e');
    Decimal decimal;
    decimal.negative = std::signbit(value);
    decimal.digits = text.substr(0, 1) + text.substr(2, e - 2);
    int exponent = 0;
    // from_chars takes no plus sign.
    const char* begin = text.data() + e + (text[e + 1] == '+' ? 2 : 1);
    std::from_chars(begin, text.data() + text.size(), exponent);
    decimal.point = exponent + 1;
    return decimal;
}

// Rounds to `decimals` places behind the point, halves away from zero.
void round_decimal(Decimal& decimal, int decimals) {
    const int keep = decimal.point + decimals;
    if (keep >= static_cast<int>(decimal.digits.size())) return;
    if (keep < 0) {
        decimal.digits.clear();
        return;
    }
    const bool up = decimal.digits[static_cast<std::size_t>(keep)] >= '5';
    decimal.digits.resize(static_cast<std::size_t>(keep));
    if (!up) return;
    for (std::size_t i = decimal.digits.size(); i-- > 0;) {
        if (decimal.digits[i] != '9') {
            ++decimal.digits[i];
            return;
        }
        decimal.digits[i] = '0';
    }
    decimal.digits.insert(decimal.digits.begin(), '1');
    ++decimal.point;
}

}  // namespace

double scan_hex(std::string_view digits) {
    double value = 0;
    std::uint32_t low = 0;
    int significant = 0;
    for (const char c : digits) {
        const int digit = hex_digit(c);
        if (digit < 0) break;
        if (digit != 0 || significant != 0) significant = std::min(significant + 1, 9);
        low = low << 4 | static_cast<std::uint32_t>(digit);
        value = value * 16 + digit;
    }
    if (significant <= 4) return static_cast<std::int16_t>(low);
    if (significant <= 8) return static_cast<std::int32_t>(low);
    return value;
}

double leading_number(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    if (text.empty()) return 0;
    // A sign in front of "&H" makes it no number: the prefix carries its own sign rule, and the
    // scanner knows a sign only before decimal digits.
    if (text.size() >= 2 && text[0] == '&' && (text[1] == 'H' || text[1] == 'h')) {
        return scan_hex(text.substr(2));
    }
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') text.remove_prefix(1);
    const std::size_t length = decimal_length(text);
    if (length == 0) return 0;
    const double value = decimal_value(text.substr(0, length));
    return negative ? -value : value;
}

std::int64_t round_half_even(double value) {
    if (std::isnan(value)) return 0;
    // 2^63 itself is a double, the largest result is not.
    constexpr double kLimit = 9223372036854775808.0;
    if (value >= kLimit) return std::numeric_limits<std::int64_t>::max();
    if (value < -kLimit) return std::numeric_limits<std::int64_t>::min();
    const double below = std::floor(value);
    const double rest = value - below;
    auto whole = static_cast<std::int64_t>(below);
    if (rest > 0.5 || (rest == 0.5 && whole % 2 != 0)) ++whole;
    return whole;
}

std::string format_whole(double value) {
    return format_fixed(value, 0);
}

std::string format_fixed(double value, int decimals) {
    if (!std::isfinite(value)) return std::string(kUntellable);
    decimals = std::clamp(decimals, 0, kSignificant);
    Decimal decimal = to_decimal(value);
    round_decimal(decimal, decimals);
    const auto places = static_cast<std::size_t>(decimals);
    // Digits of the whole part and of the places, the point left out.
    std::string all;
    if (decimal.point < 0) all.assign(static_cast<std::size_t>(-decimal.point), '0');
    all += decimal.digits;
    const std::size_t whole = decimal.point > 0 ? static_cast<std::size_t>(decimal.point) : 0;
    all.resize(whole + places, '0');

    std::string text;
    if (decimal.negative && all.find_first_not_of('0') != std::string::npos) text += '-';
    const std::size_t first = std::min(all.find_first_not_of('0'), whole);
    text += first == whole ? "0" : all.substr(first, whole - first);
    if (places > 0) {
        text += '.';
        text += all.substr(whole);
    }
    return text;
}

std::string format_up_to(double value, int decimals) {
    std::string text = format_fixed(value, decimals);
    if (text.find('.') == std::string::npos) return text;
    text.resize(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string number_text(double value) {
    if (!std::isfinite(value)) return std::string(kUntellable);
    if (value == 0) return "0";  // a negative zero has no sign either
    return fmt::format("{:.{}G}", value, kSignificant);
}

std::string hex_text(std::int64_t value) {
    if (value < 0) return fmt::format("{:X}", static_cast<std::uint32_t>(value));
    return fmt::format("{:X}", value);
}

}  // namespace servo::base
