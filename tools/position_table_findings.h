// Addition: what an engineer should look at before the machine does, in words. Nothing here keeps a
// table from being written.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/language.h"
#include "tools/position_table_flow.h"

namespace servo::tools {

enum class Severity : std::uint8_t {
    kFault,    // it will not do what the row says
    kWarning,  // it is likely not meant
    kNote,     // worth knowing
};

struct Finding {
    Severity severity = Severity::kNote;
    int step = -1;  // 0 to 31; -1 for the acceleration table
    int ramp = -1;  // 0 to 7
    base::Text pattern;
    std::string first;  // what stands for {0} and {1}
    std::string second;
};

// By severity, then by step. `resolution` 0: not known, and what hangs on it is not looked at.
std::vector<Finding> find_faults(const PositionGrids& grids, const PositionProgram& program,
                                 const Flow& flow, double resolution);

std::string finding_text(const Finding& finding, base::Language language);
// "Fault", with the shape that stands before it in lists.
std::string_view severity_word(Severity severity, base::Language language);

}  // namespace servo::tools
