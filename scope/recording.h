// A recording on its own: what is needed to draw, measure and export it after the screen has gone
// on to the next. Values are in display units.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "link/drive_values.h"
#include "scope/scope_data.h"

namespace servo::scope {

struct RecordedCurve {
    int channel = 0;     // 0 to 3
    std::string object;  // as the list shows it
    std::string unit;    // empty: none is picked, and the values are the raw numbers
    std::vector<double> values;
};

struct Recording {
    double period_us = 0.0;  // between two rows
    std::vector<RecordedCurve> curves;
    double start_us = 0.0;  // time of the first row, as the cursors would tell it
};

// The enabled channels of what the screen holds, hidden ones too, from sample `window.first` to
// `window.last`, inside of the recording. No curve before the first recording.
Recording recording_of(const ScopeData& data, const ZoomWindow& window,
                       const link::FormulaOperands& operands);

// A table of numbers: a header line, then one line for each sample: time in microseconds, then the
// curves. Fields are separated by commas, names quoted where they need it, numbers with a point
// whatever the machine's language, of 15 significant digits; UTF-8 with a byte order mark, CR LF.
std::string csv_text(const Recording& recording, base::Language language);

// Up to four recordings kept to be drawn behind the live one.
struct References {
    static constexpr std::size_t kPlaces = 4;
    struct Kept {
        std::string name;  // "R1 11:02:33" or what the user called it
        Recording recording;
        bool shown = true;
    };
    std::vector<Kept> kept;

    // Puts it behind the others; the oldest goes when all places are taken.
    void keep(std::string name, Recording recording);
    void remove(std::size_t place);
};

}  // namespace servo::scope
