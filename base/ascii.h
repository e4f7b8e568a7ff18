// Capitals and small letters of ASCII, for names and keys: the same under every locale, and all
// other bytes stay as they are.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace servo::base {

constexpr char ascii_lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool same_name(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, ascii_lower, ascii_lower);
}

inline std::string ascii_lower(std::string_view text) {
    std::string small(text);
    for (char& c : small)
        c = ascii_lower(c);
    return small;
}

}  // namespace servo::base
