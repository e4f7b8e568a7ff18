// Grids by the program's own counting, where row 0 is the header: for walkthroughs, the state
// document and tests. For any QTableView; a table without a header line counts its rows from 0.
#pragma once

#include <QColor>
#include <QString>
#include <QTableView>
#include <cstdint>
#include <optional>

namespace servo::params {

int grid_rows(const QTableView& grid);
int grid_columns(const QTableView& grid);  // the hidden ones too

// Text of a cell; empty where there is none.
QString grid_text(const QTableView& grid, int row, int column);

// Background of a cell that is not the grid's own.
std::optional<QColor> grid_color(const QTableView& grid, int row, int column);

int grid_current_row(const QTableView& grid);

enum class GridClick : std::uint8_t { kLeft, kRight, kDouble };

// A click into the middle of a cell, scrolled into sight first. False when there is no such cell or
// its column is hidden.
bool grid_click(QTableView& grid, int row, int column, GridClick click);

}  // namespace servo::params
