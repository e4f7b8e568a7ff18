// A grid of page rows with its two editors: what `MSHFlexGrid1`, `textbox1` and `Combobox1` of a
// page hold and do. A page has one, a window of tabs has one for each tab. No widget: whoever shows
// it observes it.
//
// Rows are counted as on screen: row 0 is the header, objects stand from row 1 on.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "dictionary/keys.h"
#include "dictionary/store.h"
#include "link/drive_values.h"
#include "link/window.h"
#include "params/page_editor.h"
#include "params/row.h"

namespace servo::params {

// What a grid uses of the workstation. The references outlive it.
struct PageServices {
    const dictionary::Store& dictionary;
    const link::FormulaOperands& operands;
    const base::Language& language;  // the current one, looked at when needed
    std::function<void(dictionary::WireKey key, std::int32_t value)> sendata2;  // a write
};

// Whoever shows a grid. Calls come after the change.
class GridObserver {
  public:
    GridObserver() = default;
    GridObserver(const GridObserver&) = delete;
    GridObserver& operator=(const GridObserver&) = delete;
    virtual ~GridObserver() = default;

    virtual void rows_reset() = 0;  // other rows, or another order
    virtual void cell_changed(int row, int column) = 0;
    virtual void current_changed() = 0;  // the current cell
    virtual void editor_changed() = 0;   // opened, closed, or its text was cleared
};

enum class MouseButton : std::uint8_t { kLeft, kRight };

struct CellPosition {
    int row = 0;
    int column = 0;
    bool operator==(const CellPosition&) const = default;
};

// Which entries of the pop-up menu can be picked on a row.
struct PopupEntries {
    bool adding = true;
    bool deling = false;
    bool helping = false;
    bool operator==(const PopupEntries&) const = default;
};

class PageGrid {
  public:
    explicit PageGrid(PageServices services) : services_(std::move(services)) {}

    void set_observer(GridObserver* observer) { observer_ = observer; }  // not owned; may be null

    base::Language language() const { return services_.language; }

    // --- Rows
    int rows() const { return static_cast<int>(rows_.size()) + 1; }
    const Row& row(int row) const { return rows_.at(static_cast<std::size_t>(row - 1)); }
    // Text of any cell, the header included; empty where there is none.
    std::string_view cell(int row, int column) const;
    // Whether the cell has the read-only colour.
    bool read_only_cell(int row, int column) const;
    // The colour leaves the row number out, but for a grid whose one row is coloured as a whole.
    bool whole_row_colour = false;
    int find_row(dictionary::Identity key) const;  // first row of that object; 0 when there is none

    void set_rows(std::vector<Row> rows);
    void set_objects(const std::vector<dictionary::Identity>& keys);  // new rows, without values
    void append_row(Row row);
    // Puts the object below a row (0: below the header) and renumbers. False, and no change, when
    // the grid has a row of that object already.
    bool add_row(dictionary::Identity key, int below_row);
    // Takes a row out and renumbers; the header stays.
    void delete_row(int row);
    void apply_language();  // column 3 from the name of the language

    // --- What the poller asks and answers
    link::PollRow poll_row(int row) const;
    void set_value(int row, double value, int size_code);
    void set_text(int row, std::string_view text);

    // --- The current cell
    CellPosition current() const { return current_; }
    void set_current(CellPosition cell);  // clamped to the rows; the header is allowed
    void move_current(int rows);          // Up and Down; stays among the objects

    // --- Editing
    const EditorState& editor() const { return editor_; }
    Editor click_just_happend = Editor::kNone;  // what the last mouse click in the grid opened

    // A press of a button. No cell: below the last row. The left button moves the current cell and
    // opens the editor of the cell, if any. The right one moves the current row to popup_row(), and
    // the caller opens the pop-up menu.
    void grid_mouse_down(MouseButton button, std::optional<CellPosition> cell);
    // Enter in the grid: the editor of the current cell.
    Editor open_editor();

    // A character typed into the text editor that holds `text`. What comes back goes into the box:
    // the key, or kKeySwallowed. Enter commits `text`, Esc leaves.
    char32_t editor_key(char32_t key, std::string_view text);
    // A character typed while the drop-down is open. A list of values takes what the text editor
    // would take, to find an item by; Enter there writes nothing. A list of units closes.
    char32_t list_key(char32_t key, std::string_view text);
    // The item at that position of the open drop-down was chosen.
    void choose(int position);
    void editor_lost_focus(Editor editor);
    void hide_editors();

    // --- Pop-up menu
    int popup_row() const { return popup_row_; }
    static PopupEntries popup_entries(int row) { return {true, row > 0, row > 0}; }

  private:
    Editor open_editor(bool left_button, bool above_bottom);
    void commit(std::string_view text);
    void notify_cell(int row, int column);
    void renumber();
    void after_row_change();
    Row& at(int row) { return rows_.at(static_cast<std::size_t>(row - 1)); }
    bool is_object(int row) const { return row > 0 && row < rows(); }

    PageServices services_;
    std::vector<Row> rows_;
    CellPosition current_{0, kValue};
    EditorState editor_;
    int popup_row_ = 0;
    GridObserver* observer_ = nullptr;
};

// The grid's height follows its rows, the header counted, up to this many.
inline constexpr int kMaxShownRows = 29;
constexpr int shown_rows(int rows) {
    return rows < kMaxShownRows ? rows : kMaxShownRows;
}

// The key that one turn of the wheel stands for while the grid has the focus: -1 Up, +1 Down, 0
// none. Only single clean notches count; a wheel that reports other steps, or a key held, moves
// nothing.
constexpr int wheel_rows(int delta, bool key_held) {
    if (key_held) return 0;
    if (delta == 120) return -1;
    return delta == -120 ? 1 : 0;
}

}  // namespace servo::params
