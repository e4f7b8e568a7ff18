// Strict reading of the short texts in this folder's files and options. They are made by machines
// and developers, so a text that is not wholly a number is an error and not a number's beginning.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "dictionary/keys.h"

namespace servo::sim {

// Decimal with an optional sign, or hexadecimal behind "0x".
std::optional<std::int64_t> parse_integer(std::string_view text);

// A probability, 0 to 1, or any other plain decimal number.
std::optional<double> parse_decimal(std::string_view text);

// Exactly `digits` hexadecimal digits (any number of them from 1 to 8 when 0).
std::optional<std::uint32_t> parse_hex(std::string_view text, std::size_t digits = 0);

// Six hexadecimal digits: index and sub-index.
std::optional<dictionary::Identity> parse_identity(std::string_view text);

// At every separator; always one piece more than there are separators.
std::vector<std::string_view> split(std::string_view text, char separator);

// Without blanks and tabs at both ends.
std::string_view trim(std::string_view text);

}  // namespace servo::sim
