// The 32 bits of the drive's two fault words: what the window calls them, and what stands behind
// them. The error table document is made from the same list.
#pragma once

#include <span>
#include <string_view>

#include "base/language.h"

namespace servo::tools {

inline constexpr int kFaultBits = 32;  // bit 0 to 15 of word 1, then those of word 2

struct Fault {
    base::Text caption;  // beside the lamp, as this system has always called it
    base::Text cause;
    base::Text remedy;
};
std::span<const Fault, kFaultBits> fault_table();

// The parts of a bit's place in the table.
constexpr int word_of(int fault) {
    return fault < kFaultBits / 2 ? 1 : 2;
}
constexpr int bit_of(int fault) {
    return fault % (kFaultBits / 2);
}

}  // namespace servo::tools
