// The windows of the program as a table: what each is called in both languages, whether it is a
// custom window for the poller, and which font it keeps.
#pragma once

#include <span>
#include <string_view>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::app {

struct WindowDefinition {
    std::string_view name;
    bool page = false;  // one of params::kPageTable, which holds its captions
    // "Chinese/English"; a "\" behind the caption marks a custom window. Empty for pages, and where
    // a half holds a slash of its own, which no tag can carry: `designed` stands there then.
    std::string_view tag = {};
    base::Text designed = {};
    base::Text reduced = {};     // `designed` in the reduced product, empty when it is the same
    bool designed_font = false;  // keeps its font when the language changes
};

// All of them, in the order of link::kAllWindowNames.
std::span<const WindowDefinition> window_table();

// Without regard to case; nullptr for a name that is none.
const WindowDefinition* find_window_definition(std::string_view name);

// The caption in a text slot: 0 Chinese, 1 English, 2 a third that no command chooses and that
// gives the first text where there is none.
std::string_view caption_of(const WindowDefinition& window, unsigned slot,
                            dictionary::Variant variant);
std::string_view caption_of(const WindowDefinition& window, base::Language language,
                            dictionary::Variant variant);

// Whether the poller asks the window by its own operations in place of a grid's rows.
bool is_custom(const WindowDefinition& window);

}  // namespace servo::app
