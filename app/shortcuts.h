// The keys of frequent commands as a table. Menus, toolbar and the list of keys in Help are made
// from here, so that what is listed is what works.
//
// Left alone: keys of grids and editors (Enter, Esc, F2, F4, Ctrl+A, C, V, X, Y, Z, and the letters
// that a grid's editor takes as Enter, Tab and Backspace: Ctrl+H, I, J, M), Alt with a letter,
// which opens menus in both languages, and F10.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::app {

enum class ShortcutKind : std::uint8_t {
    kMenuItem,       // `name` is an item of the menu table
    kTool,           // `name` is a toolbar key
    kOtherLanguage,  // the language item that is not marked
    kJournal,        // the journal of writes
    kKeyList,        // the window that lists all this
    kNextWindow,
    kPreviousWindow,
    kCloseWindow,
};

struct Shortcut {
    ShortcutKind kind = ShortcutKind::kMenuItem;
    std::string_view name = {};  // for kMenuItem and kTool
    // One or two keys in the portable writing ("Ctrl+Shift+F6"); the first is shown in menus.
    std::array<std::string_view, 2> keys = {};
};

std::span<const Shortcut> shortcut_table();

// nullptr where there is none.
const Shortcut* shortcut_of(ShortcutKind kind, std::string_view name = {});

// The key of the n-th open window, from 0, for the first nine of them ("Alt+1"); empty for others.
std::string window_key(int position);

// Texts of the items that are no part of the told menu table.
inline constexpr base::Text kKeyListCaption{"键盘快捷键", "Keyboard Shortcuts"};
inline constexpr base::Text kNextWindowCaption{"下一个窗口", "Next Window"};
inline constexpr base::Text kPreviousWindowCaption{"上一个窗口", "Previous Window"};
inline constexpr base::Text kCloseWindowCaption{"关闭窗口", "Close Window"};
inline constexpr base::Text kCascadeCaption{"层叠窗口", "Cascade"};
inline constexpr base::Text kTileCaption{"平铺窗口", "Tile"};

// A line of the list in Help.
struct ShortcutLine {
    std::string command;
    std::string keys;  // several separated by ", "
};
struct ShortcutGroup {
    std::string title;  // the menu's caption, or what the keys are for
    std::vector<ShortcutLine> lines;
};

// Grouped by menu in the order of the menu bar, then toolbar, windows, grids, plot. Items that the
// variant leaves out are left out here too.
std::vector<ShortcutGroup> shortcut_list(base::Language language, dictionary::Variant variant);

}  // namespace servo::app
