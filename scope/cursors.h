// Cursors: on which sample one stands, and what it reads.
#pragma once

#include <optional>

#include "link/drive_values.h"
#include "scope/scope_data.h"

namespace servo::scope {

// Sample under an abscissa of the picture; nothing below 0.
std::optional<int> cursor_index(const ZoomWindow& window, double x);

// The abscissa at which cursor_index gives that sample, for moves by the keyboard.
double cursor_abscissa(const ZoomWindow& window, int index);

// Times, values and differences of the cursors that are on, and the value labels of the channels.
void read_cursors(ScopeData& data, const link::FormulaOperands& operands);

}  // namespace servo::scope
