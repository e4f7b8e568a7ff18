// Texts that carry both languages in one string: "Chinese/English", the captions of a tab control
// as such pairs separated by "|", a block of text whose halves are separated by CR LF, and a
// window's tag, whose first part (up to "\") is its caption.
//
// A slot is the position of a part: 0 Chinese, 1 English, 2 a third that no command chooses. The
// first part stands in for one that does not exist, so a text with one part is shown in every
// language.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"

namespace servo::app {

constexpr unsigned slot_of(base::Language language) {
    return static_cast<unsigned>(language);
}

// The part of a text at "/".
std::string_view tag_part(std::string_view pair, unsigned slot);
std::string_view tag_part(std::string_view pair, base::Language language);

// The part of a block of text at CR LF. A block may hold "/" in its words.
std::string_view block_part(std::string_view block, unsigned slot);

// The caption in a window's tag; empty for an empty tag.
std::string_view window_caption(std::string_view tag, unsigned slot);
std::string_view window_caption(std::string_view tag, base::Language language);

// A window with a "\" in its tag is a custom window for the poller.
bool tag_is_custom(std::string_view tag);

// One caption for each tab.
std::vector<std::string_view> tab_captions(std::string_view tag, unsigned slot);
std::vector<std::string_view> tab_captions(std::string_view tag, base::Language language);

}  // namespace servo::app
