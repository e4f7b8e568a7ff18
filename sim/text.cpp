#include "sim/text.h"

#include <charconv>
#include <cmath>

namespace servo::sim {

namespace {

template <typename Number, typename... Format>
std::optional<Number> whole(std::string_view text, Format... format) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, format...);
    if (error != std::errc{} || rest != end) return std::nullopt;
    return number;
}

}  // namespace

std::optional<std::int64_t> parse_integer(std::string_view text) {
    if (text.starts_with("0x") || text.starts_with("0X")) {
        const auto number = parse_hex(text.substr(2));
        if (!number) return std::nullopt;
        return std::int64_t{*number};
    }
    if (text.starts_with('+')) text.remove_prefix(1);
    if (text.empty() || text.front() == '+') return std::nullopt;
    return whole<std::int64_t>(text, 10);
}

std::optional<double> parse_decimal(std::string_view text) {
    const auto number = whole<double>(text, std::chars_format::fixed);
    // "inf" and "nan" are read too, and no place or share is either.
    if (!number || !std::isfinite(*number)) return std::nullopt;
    return number;
}

std::optional<std::uint32_t> parse_hex(std::string_view text, std::size_t digits) {
    if (text.empty() || text.size() > 8 || (digits != 0 && text.size() != digits)) {
        return std::nullopt;
    }
    return whole<std::uint32_t>(text, 16);
}

std::optional<dictionary::Identity> parse_identity(std::string_view text) {
    const auto number = parse_hex(text, 6);
    if (!number) return std::nullopt;
    return static_cast<dictionary::Identity>(*number);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    std::size_t from = 0;
    for (std::size_t at = text.find(separator); at != std::string_view::npos;
         at = text.find(separator, from)) {
        pieces.push_back(text.substr(from, at - from));
        from = at + 1;
    }
    pieces.push_back(text.substr(from));
    return pieces;
}

std::string_view trim(std::string_view text) {
    const std::size_t from = text.find_first_not_of(" \t");
    if (from == std::string_view::npos) return {};
    return text.substr(from, text.find_last_not_of(" \t") - from + 1);
}

}  // namespace servo::sim
