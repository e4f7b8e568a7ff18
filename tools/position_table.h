// The position table as the form `PosFlow` holds it: three grids whose cells are all text. Row 0 of
// each is its heading. What the texts mean to the drive is in position_table_transfer.h.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/language.h"

namespace servo::tools {

inline constexpr int kPositionSteps = 32;  // Idx 0 to 31 in rows 1 to 32
inline constexpr int kPositionRamps = 8;   // indexes 0 to 7 in rows 1 to 8

// Columns of `MSHFlexGrid2`, the steps.
namespace step_column {
inline constexpr int kIdx = 0;        // row less 1
inline constexpr int kMode = 1;       // text of `Combo1` for bits 12 and 13 of the register
inline constexpr int kStartCond = 2;  // text of `Combo2` for bits 14 and 15
inline constexpr int kPos = 3;        // target in encoder increments
inline constexpr int kSpeed = 4;      // rpm
inline constexpr int kDelay = 5;      // ms
inline constexpr int kAccIdx = 6;
inline constexpr int kDecIdx = 7;
inline constexpr int kCtlReg = 8;  // hexadecimal, no prefix
inline constexpr int kLoops = 9;
inline constexpr int kRest = 10;  // of a file alone, never read from or written to the drive
inline constexpr int kCount = 11;
}  // namespace step_column

// Columns of `MSHFlexGrid1`, the accelerations and decelerations.
namespace ramp_column {
inline constexpr int kIndex = 0;
inline constexpr int kAcc = 1;  // turns/s^2
inline constexpr int kDec = 2;
inline constexpr int kCount = 3;
}  // namespace ramp_column

// Rows of `MSHFlexGrid3`, the register of the selected step: one merged heading, the names of the
// fields, their values. Its columns are the fields (position_table_register.h).
namespace register_row {
inline constexpr int kHeading = 0;
inline constexpr int kNames = 1;
inline constexpr int kValues = 2;
inline constexpr int kCount = 3;
}  // namespace register_row
inline constexpr int kRegisterColumns = 10;

template <int Rows, int Columns>
struct TextGrid {
    static constexpr int kRows = Rows;
    static constexpr int kColumns = Columns;

    static constexpr bool holds(int row, int column) {
        return row >= 0 && row < Rows && column >= 0 && column < Columns;
    }
    std::string& at(int row, int column) {
        return cells.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
    }
    const std::string& at(int row, int column) const {
        return cells.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
    }
    bool operator==(const TextGrid&) const = default;

    std::array<std::array<std::string, static_cast<std::size_t>(Columns)>,
               static_cast<std::size_t>(Rows)>
        cells;
};

using StepGrid = TextGrid<kPositionSteps + 1, step_column::kCount>;
using RampGrid = TextGrid<kPositionRamps + 1, ramp_column::kCount>;
using RegisterGrid = TextGrid<register_row::kCount, kRegisterColumns>;

struct PositionGrids {
    RampGrid MSHFlexGrid1;
    StepGrid MSHFlexGrid2;
    RegisterGrid MSHFlexGrid3;
    bool operator==(const PositionGrids&) const = default;
};

// The lists of the two drop-downs. A field of a register that is 3 has no item.
inline constexpr std::size_t kListItems = 3;
using ListItems = std::array<std::string_view, kListItems>;
inline constexpr ListItems kCombo1Items{"A", "RN", "RA"};
ListItems combo2_items(base::Language language);
// The form as it is stored, until the first switch of the language.
inline constexpr std::string_view kStoredInterrupt = "Interrupt!";
// Text of a field's value; empty for 3.
std::string_view item_text(const ListItems& items, int value);

// Headings and field names of all three grids; `row` is the selected one.
void set_headings(PositionGrids& grids, int row, base::Language language);
// "CTL Reg of index:5": the heading of `MSHFlexGrid3` for a row of `MSHFlexGrid2`.
std::string register_heading(int row, base::Language language);

// What the button Clear does: indexes in column 0, "A" and the first item of `Combo2`, "0"
// everywhere else.
void clear_grids(PositionGrids& grids, const ListItems& combo2);

// Headings and a cleared table.
PositionGrids make_grids(base::Language language, const ListItems& combo2);

}  // namespace servo::tools
