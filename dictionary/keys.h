// The forms in which one object of the drive is written.
//   identity   24 bits: index, sub-index                      0x60F611
//   wire key   32 bits: index, sub-index, size code           0x60F61102
//   reference  32 bits: index, sub-index, length in bits      0x60F61110
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace servo::dictionary {

using Identity = std::int32_t;
using WireKey = std::uint32_t;

constexpr Identity identity_of(WireKey key) {
    return static_cast<Identity>(key >> 8);
}

// Size code of a wire key for a short type name ("uint8" 01 ... "String" 06); 0 for any other text.
std::uint8_t wire_size(std::string_view type_name);

// Size code of the value decoder: 1, 11, 2, 12, 4, 14; 0 for a string and any other text.
int decoder_size(std::string_view type_name);

// Short type name of a dictionary word such as "Unsigned8" or "Visible String"; empty for any
// other. Blanks and NULs at the right end of the word do not count.
std::string_view short_type(std::string_view dictionary_word);

// Size code of a wire key for a length in bits (0x08 to 01, 0x10 to 02, 0x20 to 04; else 0).
std::uint8_t wire_size_of_bits(std::uint8_t bits);

// The wire key of a grid row: the number read from "&H" and the index text, then the size code. A
// type without a size gives 0.
WireKey read_key(std::string_view index_text, std::string_view type_name);

// As read_key, for a write: a string has no write suffix and gives 0.
WireKey write_key(std::string_view index_text, std::string_view type_name);

// Removes every blank, CR, LF and NUL, wherever it stands.
std::string strip_blanks(std::string_view text);

}  // namespace servo::dictionary
