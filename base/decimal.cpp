#include "base/decimal.h"

#include <algorithm>
#include <cmath>

#include "base/number.h"

namespace servo::base {

namespace {

std::size_t skip_digits(std::string_view text, std::size_t at) {
    return std::min(text.find_first_not_of("0123456789", at), text.size());
}

bool is_decimal(std::string_view text) {
    std::size_t at = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
    const std::size_t first = at;
    at = skip_digits(text, at);
    bool digits = at > first;
    if (at < text.size() && text[at] == '.') {
        const std::size_t point = at++;
        at = skip_digits(text, at);
        digits = digits || at > point + 1;
    }
    if (!digits) return false;
    if (at < text.size() && (text[at] == 'E' || text[at] == 'e')) {
        ++at;
        if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
        const std::size_t exponent = at;
        at = skip_digits(text, at);
        if (at == exponent) return false;
    }
    return at == text.size();
}

}  // namespace

std::optional<double> decimal_number(std::string_view text) {
    if (!is_decimal(text)) return std::nullopt;
    const double value = leading_number(text);
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

}  // namespace servo::base
