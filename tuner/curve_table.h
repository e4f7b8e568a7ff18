// All curves as a table, for a spreadsheet.
#pragma once

#include <string>

#include "base/language.h"
#include "tuner/tuner_data.h"

namespace servo::tuner {

// Comma-separated UTF-8 with a byte order mark and lines that end in CR LF: a row for each
// frequency that a curve has a value at, gain in dB and phase in degrees as they were computed
// (not folded). A curve that does not exist yet has no columns; ticks do not matter.
std::string curve_table(const TunerData& data, base::Language language);

}  // namespace servo::tuner
