// Texts that carry both languages in one string: "Chinese/English", the captions of a tab control
// as such pairs separated by "|", and a window's tag, whose first part (up to "\") is its caption.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"

namespace servo::app {

// The part of a text at "/" for a position (0 Chinese, 1 English, 2 a third that no command
// chooses). The first part when that position does not exist.
std::string_view tag_part(std::string_view pair, unsigned position);
std::string_view tag_part(std::string_view pair, base::Language language);

// The caption in a window's tag; empty for an empty tag.
std::string_view window_caption(std::string_view tag, base::Language language);

// A window with a "\" in its tag is a custom window for the poller.
bool tag_is_custom(std::string_view tag);

// One caption for each tab.
std::vector<std::string_view> tab_captions(std::string_view tag, base::Language language);

}  // namespace servo::app
