#include "app/walk_keys.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/ascii.h"

namespace servo::app {
namespace {

struct NameEntry {
    std::string_view name;
    NamedKey key;
};

constexpr std::array kNames{
    NameEntry{"enter", NamedKey::kEnter},
    NameEntry{"return", NamedKey::kEnter},
    NameEntry{"esc", NamedKey::kEscape},
    NameEntry{"escape", NamedKey::kEscape},
    NameEntry{"tab", NamedKey::kTab},
    NameEntry{"backspace", NamedKey::kBackspace},
    NameEntry{"delete", NamedKey::kDelete},
    NameEntry{"del", NamedKey::kDelete},
    NameEntry{"insert", NamedKey::kInsert},
    NameEntry{"ins", NamedKey::kInsert},
    NameEntry{"home", NamedKey::kHome},
    NameEntry{"end", NamedKey::kEnd},
    NameEntry{"pageup", NamedKey::kPageUp},
    NameEntry{"pgup", NamedKey::kPageUp},
    NameEntry{"pagedown", NamedKey::kPageDown},
    NameEntry{"pgdown", NamedKey::kPageDown},
    NameEntry{"up", NamedKey::kUp},
    NameEntry{"down", NamedKey::kDown},
    NameEntry{"left", NamedKey::kLeft},
    NameEntry{"right", NamedKey::kRight},
    NameEntry{"space", NamedKey::kSpace},
};

// "F1" to "F12"; 0 for anything else.
int function_number(std::string_view text) {
    if (text.size() < 2 || base::ascii_lower(text[0]) != 'f') return 0;
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + 1, end, number);
    return error == std::errc{} && stop == end && number >= 1 && number <= 12 ? number : 0;
}

// Takes "ctrl+" and its like off the front; false when there is none.
bool take_modifier(std::string_view& text, KeyStroke& stroke) {
    const std::size_t plus = text.find('+');
    // A plus at the very end is the key itself, as in "Ctrl++" and "+".
    if (plus == std::string_view::npos || plus == 0 || plus + 1 == text.size()) return false;
    const std::string_view name = text.substr(0, plus);
    if (base::same_name(name, "ctrl"))
        stroke.ctrl = true;
    else if (base::same_name(name, "shift"))
        stroke.shift = true;
    else if (base::same_name(name, "alt"))
        stroke.alt = true;
    else
        return false;
    text.remove_prefix(plus + 1);
    return true;
}

}  // namespace

std::optional<KeyStroke> parse_key(std::string_view text) {
    KeyStroke stroke;
    while (take_modifier(text, stroke)) {
    }
    if (text.size() == 1 && text[0] > ' ' && text[0] < 0x7F) {
        stroke.character = static_cast<unsigned char>(text[0]);
        return stroke;
    }
    for (const NameEntry& entry : kNames) {
        if (base::same_name(text, entry.name)) {
            stroke.key = entry.key;
            return stroke;
        }
    }
    stroke.function = function_number(text);
    if (stroke.function == 0) return std::nullopt;
    stroke.key = NamedKey::kFunction;
    return stroke;
}

}  // namespace servo::app
