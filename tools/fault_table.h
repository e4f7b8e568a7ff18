// The 32 bits of the drive's two fault words: what the window calls them, and what stands behind
// them. The error table document is made from the same list.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::tools {

inline constexpr int kFaultBits = 32;  // bit 0 to 15 of word 1, then those of word 2

struct Fault {
    base::Text caption;  // beside the lamp, as this system has always called it
    base::Text cause;
    base::Text remedy;
};
std::span<const Fault, kFaultBits> fault_table();

// The caption in the product variant.
base::Text fault_caption(int fault, dictionary::Variant variant);
// The same in one line: some have two, and the second may begin with a blank.
std::string fault_caption_line(int fault, dictionary::Variant variant, base::Language language);

// The parts of a bit's place in the table.
constexpr int word_of(int fault) {
    return fault < kFaultBits / 2 ? 1 : 2;
}
constexpr int bit_of(int fault) {
    return fault % (kFaultBits / 2);
}
// The bit in its word, and as four digits: "0400".
constexpr std::uint16_t fault_mask(int fault) {
    return static_cast<std::uint16_t>(1U << static_cast<unsigned>(bit_of(fault)));
}
std::string fault_mask_text(int fault);

}  // namespace servo::tools
