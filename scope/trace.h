// From the recorder's bytes to four traces, and from a window of them to scales, offsets, texts.
// No screen is needed: what is shown is in ScopeData.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/language.h"
#include "link/drive_values.h"
#include "scope/scope_data.h"

namespace servo::scope {

// Decodes rawBytes and resets the view: zoom, time axis, then change_curve_unit and Print_Pic_Line.
// In import mode the arrays are already filled and only walked. False when no channel is enabled:
// nothing was changed but the totals. False as well for a recording that does not fit: a byte or a
// sample beyond 8191, or rows without bytes; what was decoded by then stays, the window does not
// change.
bool Movingdata(ScopeData& data, const link::FormulaOperands& operands, base::Language language);

// Extremes, scale and offset of the window shown, then the cursors' read-outs. Nothing while the
// window's first index is negative or its last one beyond 8191.
void change_curve_unit(ScopeData& data, const link::FormulaOperands& operands);

// The texts of the time axis: Label44 and Label15.
void write_time_texts(ScopeData& data, base::Language language);

// The values at the grid lines of every curve drawn.
void Print_Pic_Line(ScopeData& data);

// A stretch of a channel's samples in its picked unit. Empty without a unit. Samples whose formula
// fails are 0.
std::vector<double> display_values(const ScopeChannel& channel, std::span<const std::int32_t> raw,
                                   const link::FormulaOperands& operands);

// The same for one number; nothing without a unit.
std::optional<double> display_value(const ScopeChannel& channel, std::int32_t raw,
                                    const link::FormulaOperands& operands);

}  // namespace servo::scope
