// Texts that change with the language by a rule of their own, in place of a tag: entries of lists
// that are kept by their position, headings that a number follows, two buttons whose wording hangs
// on the product.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::app {

// An entry of a drop-down. Its place in the list is what counts; the text may change under it.
struct FixedItem {
    std::string_view window;
    std::string_view control;
    int position = 0;
    base::Text text;
};

std::span<const FixedItem> fixed_items();

// Codes of the digital inputs and outputs that have no function.
inline constexpr base::Text kReservedFunction{"保留", "Reserved"};

// The heading of the position table's register; the row's index follows it.
inline constexpr base::Text kRegisterHeading{"控制寄存器:", "CTL Reg of index:"};

// The caption of a button that takes fixed texts: the two of the configuration window that write to
// and read from the drive. Nothing for any other.
std::optional<std::string_view> fixed_button_text(std::string_view window, std::string_view control,
                                                  base::Language language,
                                                  dictionary::Variant variant);

}  // namespace servo::app
