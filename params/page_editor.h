// The rules of the two editors of a grid, `textbox1` and `Combobox1`, as functions of a row.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "params/row.h"

namespace servo::params {

// What is open, or what the last click opened (the values of `click_just_happend`).
enum class Editor : std::uint8_t { kNone = 0, kText = 1, kList = 2 };

// Keys that the filter knows by name; any other is its character.
inline constexpr char32_t kKeySwallowed = 0;
inline constexpr char32_t kKeyCopy = 3;
inline constexpr char32_t kKeyBackspace = 8;
inline constexpr char32_t kKeyEnter = 13;
inline constexpr char32_t kKeyPaste = 22;
inline constexpr char32_t kKeyEsc = 27;

// An open editor.
struct EditorState {
    Editor open = Editor::kNone;
    int row = 0;  // of the grid, the header being 0
    int column = 0;
    std::string text;                // text editor: what it opens with, all selected
    std::vector<std::string> items;  // drop-down
    int selected = -1;               // position in items; -1 none
};

enum class EditorAction : std::uint8_t {
    kLeave,  // nothing opens, and what is open stays
    kHide,   // nothing opens, both editors go
    kOpen,   // `state` opens in place of whatever was open
};

struct EditorDecision {
    EditorAction action = EditorAction::kHide;
    EditorState state;
};

// Which editor a cell opens. `row` is null for the header. `left_button` is true for Enter in the
// grid too; `above_bottom` is false for a click below the last row.
EditorDecision decide_editor(const Row* row, int column, base::Language language, bool left_button,
                             bool above_bottom);

// Whether a character may be typed into the text editor of a row with that unit. Enter and Esc
// never pass: the caller acts on them.
bool key_passes(char32_t key, std::string_view text, std::string_view unit);

// The items of the drop-down of a Value cell: the list of the language without what stands before
// its first "|".
std::vector<std::string> value_items(const Row& row, base::Language language);

// The units that a formula list offers, each once, in the order of its lines.
std::vector<std::string> unit_items(std::string_view formula_list);

// Whether an editor goes when it loses the focus. `just_clicked` is what the last click in the grid
// opened: a click that opens an editor moves the focus itself, and that must not close it again.
constexpr bool hides_on_focus_loss(Editor editor, Editor just_clicked) {
    return editor != Editor::kNone && editor != just_clicked;
}

}  // namespace servo::params
