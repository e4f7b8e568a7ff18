// The drive's own side of the objects: factory values, limits and what a write does. Text lines
//   key <TAB> default <TAB> min <TAB> max <TAB> flags
// A first line whose key is none is the header; "#" begins a comment line; columns at the end may
// be left out.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/keys.h"

namespace servo::sim {

struct ValueFlags {
    bool read_only = false;   // r
    bool write_only = false;  // w
    bool stored = false;      // s: part of the non-volatile memory
    bool computed = false;  // c: follows from the drive's state, so it is never stored or restored
};

struct ValueLine {
    dictionary::Identity object = 0;
    std::string factory;  // a number, or the text of a string object; empty: zero, or no text
    std::optional<std::int64_t> min;
    std::optional<std::int64_t> max;
    ValueFlags flags;
};

struct ValueTable {
    std::vector<ValueLine> lines;
    std::vector<std::string> complaints;  // "line N: what is wrong"; such a line is left out
};

ValueTable parse_value_table(std::string_view text);

}  // namespace servo::sim
