// Names of keys in a walkthrough: "Enter", "Ctrl+V", "F2", or one character.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace servo::app {

enum class NamedKey : std::uint8_t {
    kNone,  // the stroke is a character
    kEnter,
    kEscape,
    kTab,
    kBackspace,
    kDelete,
    kInsert,
    kHome,
    kEnd,
    kPageUp,
    kPageDown,
    kUp,
    kDown,
    kLeft,
    kRight,
    kSpace,
    kFunction,  // F1 to F12, see KeyStroke::function
};

struct KeyStroke {
    bool ctrl = false;
    bool shift = false;
    bool alt = false;
    NamedKey key = NamedKey::kNone;
    int function = 0;        // 1 to 12
    char32_t character = 0;  // for kNone: one ASCII character that prints
    bool operator==(const KeyStroke&) const = default;
};

// One stroke; names without regard to case. Nothing when the text names no key.
std::optional<KeyStroke> parse_key(std::string_view text);

}  // namespace servo::app
