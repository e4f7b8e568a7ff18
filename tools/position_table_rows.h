// Addition: rows as text that a spreadsheet takes and gives, cells separated by tabs, one row a
// line.
#pragma once

#include <string>
#include <string_view>

#include "tools/position_table.h"

namespace servo::tools {

// Rows of `MSHFlexGrid2`, both ends included, all eleven columns.
std::string copy_rows(const StepGrid& steps, int first_row, int last_row);

// What became of a paste.
struct PasteResult {
    int rows = 0;           // that were written; 0 when nothing was, the table is then as before
    int bad_line = 0;       // from 1; the first that can't be taken
    int bad_column = 0;     // of `MSHFlexGrid2`; 0 when the line has another number of cells
    bool too_many = false;  // the lines reach beyond the last row
};

// Writes lines into the rows from `row` on. A line has eleven cells, in the order of the grid, or
// nine, in the order of a `.pft` line; Idx is not taken over, and MODE and StartCond. follow from
// the register. Each cell has to be a number within its limits, as if it were typed; a heading as
// the first line is passed over. All or nothing.
PasteResult paste_rows(StepGrid& steps, int row, std::string_view text, const ListItems& combo2);

// Why a paste was refused; empty when it was not.
std::string paste_text(const PasteResult& result, const StepGrid& steps, base::Language language);

// Gives the cell of the first row to the others. MODE and StartCond. carry their bits of the
// register along; Idx is never filled. False when there is nothing to fill.
bool fill_down(StepGrid& steps, int first_row, int last_row, int column, const ListItems& combo2);

}  // namespace servo::tools
