#include "params/page_editor.h"

#include <algorithm>

#include "params/formula.h"

namespace servo::params {

namespace {

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

template <class Match>
int position_of(const std::vector<std::string>& items, Match match) {
    const auto found = std::find_if(items.begin(), items.end(), match);
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

bool is_digit(char32_t key) {
    return key >= U'0' && key <= U'9';
}

bool is_letter(char32_t key) {
    return (key >= U'A' && key <= U'Z') || (key >= U'a' && key <= U'z');
}

bool is_hex_letter(char32_t key) {
    return (key >= U'A' && key <= U'F') || (key >= U'a' && key <= U'f');
}

// A list of values is told in whole numbers or hexadecimal, so it serves these two units only. The
// synonyms INC and inc get the text editor.
bool unit_takes_list(std::string_view unit) {
    return unit == "HEX" || unit == "DEC";
}

EditorState value_list(const Row& row, base::Language language) {
    EditorState state;
    state.open = Editor::kList;
    state.items = value_items(row, language);
    if (!row.value.empty()) {
        const std::string head = row.value + ':';
        state.selected = position_of(
            state.items, [&](const std::string& item) { return item.starts_with(head); });
    }
    return state;
}

EditorState unit_list(const Row& row) {
    EditorState state;
    state.open = Editor::kList;
    state.items = unit_items(row.formula);
    state.selected =
        position_of(state.items, [&](const std::string& item) { return item == row.unit; });
    return state;
}

EditorState text_box(const Row& row) {
    EditorState state;
    state.open = Editor::kText;
    state.text = row.value;
    return state;
}

}  // namespace

EditorDecision decide_editor(const Row* row, int column, base::Language language, bool left_button,
                             bool above_bottom) {
    if (!left_button || !above_bottom) return {EditorAction::kHide, {}};
    if (row == nullptr) return {EditorAction::kLeave, {}};
    if (column == kValue && !row->read_only) {
        const bool list =
            unit_takes_list(row->unit) && !row->list_en.empty() && !row->list_ch.empty();
        return {EditorAction::kOpen, list ? value_list(*row, language) : text_box(*row)};
    }
    // How a value is shown is the user's business even where the value is not.
    if (column == kUnit) return {EditorAction::kOpen, unit_list(*row)};
    return {EditorAction::kHide, {}};
}

bool key_passes(char32_t key, std::string_view text, std::string_view unit) {
    if (key == U'.') return text.find('.') == std::string_view::npos;
    // A minus passes anywhere and in any number: a typed "1-2" takes part in the row's formula.
    if (key == kKeyCopy || key == kKeyBackspace || key == kKeyPaste || key == U'-') return true;
    if (unit == "ASCII") return is_digit(key) || is_letter(key);
    if (unit == "HEX") return is_digit(key) || is_hex_letter(key);
    return is_digit(key);
}

std::vector<std::string> value_items(const Row& row, base::Language language) {
    std::vector<std::string> items =
        split(language == base::Language::kEnglish ? row.list_en : row.list_ch, '|');
    items.erase(items.begin());  // before the first "|"
    return items;
}

std::vector<std::string> unit_items(std::string_view formula_list) {
    std::vector<std::string> units;
    for (const std::string& line : split(formula_list, '\n')) {
        std::string unit = dictionary::strip_blanks(split_formula(line).unit);
        if (std::find(units.begin(), units.end(), unit) == units.end()) {
            units.push_back(std::move(unit));
        }
    }
    return units;
}

}  // namespace servo::params
