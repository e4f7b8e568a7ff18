// The multi-byte code page (GBK) of the data files. Text inside the program is UTF-8; these two
// calls stand at the file's edge.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace servo::base {

// Bytes that are no GBK become U+FFFD, one for each; the call never fails.
std::string gbk_to_utf8(std::string_view bytes);

// The first `width` characters of it, filled up with blanks to that number.
std::string gbk_to_utf8_field(std::string_view bytes, std::size_t width);

// Characters that GBK does not hold become '?'; malformed UTF-8 likewise.
std::string utf8_to_gbk(std::string_view text);

// Position of an ASCII character in code-page bytes, npos when it is not there. Half of the
// letters, the bracket, the backslash and "|" also occur as the second byte of a Chinese character;
// such a byte is not found.
std::size_t gbk_find(std::string_view bytes, char character);

// Number of characters of a UTF-8 text, and its first `count` characters.
std::size_t utf8_length(std::string_view text);
std::string_view utf8_prefix(std::string_view text, std::size_t count);

}  // namespace servo::base
