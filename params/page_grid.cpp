#include "params/page_grid.h"

#include <algorithm>

#include "base/gbk.h"
#include "params/codec.h"
#include "params/formula.h"

namespace servo::params {

std::string_view PageGrid::cell(int row_number, int column) const {
    if (column < 0 || column >= kColumns) return {};
    if (row_number == 0) return kHeader.at(static_cast<std::size_t>(column));
    return is_object(row_number) ? std::string_view(row(row_number).cell(column))
                                 : std::string_view{};
}

bool PageGrid::read_only_cell(int row_number, int column) const {
    const int first = whole_row_colour ? kNumber : kIndex;
    return is_object(row_number) && column >= first && column < kColumns &&
           row(row_number).read_only;
}

int PageGrid::find_row(dictionary::Identity key) const {
    for (int i = 1; i < rows(); ++i) {
        if (row(i).identity() == key) return i;
    }
    return 0;
}

void PageGrid::set_rows(std::vector<Row> rows) {
    rows_ = std::move(rows);
    current_ = {rows_.empty() ? 0 : 1, kValue};
    after_row_change();
}

void PageGrid::set_objects(const std::vector<dictionary::Identity>& keys) {
    std::vector<Row> rows;
    rows.reserve(keys.size());
    for (const dictionary::Identity key : keys)
        rows.push_back(build_row(services_.dictionary, key, static_cast<int>(rows.size()),
                                 services_.language));
    set_rows(std::move(rows));
}

void PageGrid::append_row(Row row) {
    rows_.push_back(std::move(row));
    if (rows_.size() == 1) current_.row = 1;
    after_row_change();
}

bool PageGrid::add_row(dictionary::Identity key, int below_row) {
    if (find_row(key) != 0) return false;
    const int position = std::clamp(below_row, 0, rows() - 1);
    rows_.insert(rows_.begin() + position,
                 build_row(services_.dictionary, key, position, services_.language));
    renumber();
    after_row_change();
    return true;
}

void PageGrid::delete_row(int row_number) {
    if (!is_object(row_number)) return;
    rows_.erase(rows_.begin() + row_number - 1);
    renumber();
    after_row_change();
}

void PageGrid::renumber() {
    int number = 0;
    for (Row& row : rows_)
        row.renumber(number++);
}

void PageGrid::after_row_change() {
    current_.row = std::min(current_.row, rows() - 1);
    popup_row_ = std::min(popup_row_, rows() - 1);
    hide_editors();
    if (observer_ != nullptr) observer_->rows_reset();
}

void PageGrid::apply_language() {
    const bool chinese = services_.language == base::Language::kChinese;
    for (int i = 1; i < rows(); ++i) {
        Row& row = at(i);
        row.name = dictionary::trim_tail(chinese ? row.name_ch : row.name_en);
        notify_cell(i, kName);
    }
}

link::PollRow PageGrid::poll_row(int row_number) const {
    return {cell(row_number, kNumber), cell(row_number, kIndex), cell(row_number, kType),
            cell(row_number, kValue)};
}

void PageGrid::set_value(int row_number, double value, int size_code) {
    if (!is_object(row_number)) return;
    Row& row = at(row_number);
    auto text = value_to_text(value, row.unit, row.formula, size_code, services_.operands);
    // A formula text that cannot be read ends the answer's way here: the cell stays as it is.
    if (!text || *text == row.value) return;
    row.value = std::move(*text);
    notify_cell(row_number, kValue);
}

void PageGrid::set_text(int row_number, std::string_view bytes) {
    if (!is_object(row_number)) return;
    std::string text = base::gbk_to_utf8(bytes);
    if (text == at(row_number).value) return;
    at(row_number).value = std::move(text);
    notify_cell(row_number, kValue);
}

void PageGrid::set_current(CellPosition cell) {
    cell.row = std::clamp(cell.row, 0, rows() - 1);
    cell.column = std::clamp(cell.column, 0, kColumns - 1);
    if (cell == current_) return;
    current_ = cell;
    if (observer_ != nullptr) observer_->current_changed();
}

void PageGrid::move_current(int rows_down) {
    if (rows() == 1) return;
    set_current({std::clamp(current_.row + rows_down, 1, rows() - 1), current_.column});
}

void PageGrid::grid_mouse_down(MouseButton button, std::optional<CellPosition> cell) {
    switch (button) {
        case MouseButton::kLeft:
            if (cell) set_current(*cell);
            click_just_happend = open_editor(true, cell.has_value());
            break;
        case MouseButton::kRight:
            static_cast<void>(open_editor(false, cell.has_value()));
            // On the free area below the rows the menu belongs to the last one, so that Add
            // appends.
            popup_row_ = cell ? std::clamp(cell->row, 0, rows() - 1) : rows() - 1;
            set_current({popup_row_, current_.column});
            break;
    }
}

Editor PageGrid::open_editor() {
    return open_editor(true, true);
}

Editor PageGrid::open_editor(bool left_button, bool above_bottom) {
    const Row* row = is_object(current_.row) ? &at(current_.row) : nullptr;
    EditorDecision decision =
        decide_editor(row, current_.column, services_.language, left_button, above_bottom);
    switch (decision.action) {
        case EditorAction::kLeave:
            return Editor::kNone;
        case EditorAction::kHide:
            hide_editors();
            return Editor::kNone;
        case EditorAction::kOpen:
            break;
    }
    editor_ = std::move(decision.state);
    editor_.row = current_.row;
    editor_.column = current_.column;
    if (observer_ != nullptr) observer_->editor_changed();
    return editor_.open;
}

char32_t PageGrid::editor_key(char32_t key, std::string_view text) {
    if (key == kKeyEsc) {
        hide_editors();
        return kKeySwallowed;
    }
    if (key == kKeyEnter) {
        if (editor_.open == Editor::kText) commit(text);
        return kKeySwallowed;
    }
    if (editor_.open == Editor::kNone || !key_passes(key, text, at(editor_.row).unit)) {
        return kKeySwallowed;
    }
    return key;
}

char32_t PageGrid::list_key(char32_t key, std::string_view text) {
    if (editor_.open == Editor::kList && editor_.column == kValue) return editor_key(key, text);
    hide_editors();
    return kKeySwallowed;
}

void PageGrid::commit(std::string_view text) {
    const int row_number = editor_.row;
    Row& row = at(row_number);
    const auto number = text_to_value(text, row.unit, row.formula, services_.operands);
    if (!number) return;  // a text that no evaluation begins with: the editor stays as it is
    const auto value = commit_value(*number);
    if (!value) {
        editor_.text.clear();
        if (observer_ != nullptr) observer_->editor_changed();
        return;
    }
    // A type without a suffix, a string among them, gives the key 0, which no drive answers.
    services_.sendata2(write_key(row.index, row.type), *value);
    row.value = text;
    notify_cell(row_number, kValue);
    hide_editors();
}

void PageGrid::choose(int position) {
    if (editor_.open != Editor::kList || position < 0 ||
        position >= static_cast<int>(editor_.items.size())) {
        return;
    }
    const std::string item = editor_.items.at(static_cast<std::size_t>(position));
    Row& row = at(editor_.row);
    if (editor_.column == kUnit) {
        // Only how the next answer is shown. A static row keeps its text until it is read again.
        row.unit = item;
        notify_cell(editor_.row, kUnit);
    } else {
        const auto value = commit_value(item_value(item, row.unit));
        if (!value) return;
        services_.sendata2(write_key(row.index, row.type), *value);
        // An empty cell stays empty, so that the poller reads the row even if it is static.
        if (!row.value.empty()) {
            row.value = item;
            notify_cell(editor_.row, kValue);
        }
    }
    hide_editors();
}

void PageGrid::editor_lost_focus(Editor editor) {
    if (editor == editor_.open && hides_on_focus_loss(editor, click_just_happend)) hide_editors();
}

void PageGrid::hide_editors() {
    if (editor_.open == Editor::kNone) return;
    editor_ = {};
    if (observer_ != nullptr) observer_->editor_changed();
}

void PageGrid::notify_cell(int row_number, int column) {
    if (observer_ != nullptr) observer_->cell_changed(row_number, column);
}

}  // namespace servo::params
