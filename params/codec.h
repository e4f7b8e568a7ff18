// How a number gets from a row of a page onto the wire: sizes, the range of a write, and the
// reading of hexadecimal text. Keys themselves are built in dictionary/keys.h.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "dictionary/keys.h"

namespace servo::params {

using dictionary::decoder_size;
using dictionary::strip_blanks;
using dictionary::write_key;

// What a write request appends to the index of a row: "01", "02", "04"; empty for `String` and for
// any word that is no type.
std::string_view size_suffix(std::string_view type_name);

// The value of a write. Numbers outside -2147483648 to 2147483647 are refused (no value); what is
// inside is rounded to the nearest whole number, halves to the even neighbour. There is no other
// test of range: a value too wide for its object is sent and loses its high bytes.
std::optional<std::int32_t> commit_value(double value);

// The number of hexadecimal text without a prefix, by the scanner's "&H" rule: up to four
// significant digits are a signed 16-bit number, five to eight a signed 32-bit one.
double hex_value(std::string_view text);

// The number in front of the colon of an item such as "0:Disabled"; hexadecimal when `unit` is
// `HEX`.
double item_value(std::string_view item, std::string_view unit);

}  // namespace servo::params
