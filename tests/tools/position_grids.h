// Tables for tests, filled by a few words.
#pragma once

#include <string>
#include <vector>

#include "tools/position_table.h"
#include "tools/position_table_register.h"
#include "tools/position_table_steps.h"

namespace servo::tools {

inline ListItems english_items() {
    return combo2_items(base::Language::kEnglish);
}

inline PositionGrids cleared_grids() {
    return make_grids(base::Language::kEnglish, english_items());
}

// A step by its parts; `next` below 0 stops.
struct StepOf {
    int target = 1000;
    int next = -1;
    StepMode mode = StepMode::kAbsolute;
    std::string speed = "600";
    int delay = 0;
    int loops = 0;
    int start = 0;
    bool condition0 = false;
    bool condition1 = false;
    int ramp = 0;
};

inline void put_step(PositionGrids& grids, int index, const StepOf& step) {
    RegisterValues fields{};
    fields[register_field::kNext] = step.next < 0 ? 0 : step.next;
    fields[register_field::kGoOn] = step.next < 0 ? 0 : 1;
    fields[register_field::kCondition0] = step.condition0 ? 1 : 0;
    fields[register_field::kCondition1] = step.condition1 ? 1 : 0;
    fields[register_field::kMode] = static_cast<int>(step.mode);
    fields[register_field::kStartCond] = step.start;
    StepGrid& cells = grids.MSHFlexGrid2;
    const int row = index + 1;
    cells.at(row, step_column::kPos) = std::to_string(step.target);
    cells.at(row, step_column::kSpeed) = step.speed;
    cells.at(row, step_column::kDelay) = std::to_string(step.delay);
    cells.at(row, step_column::kLoops) = std::to_string(step.loops);
    cells.at(row, step_column::kAccIdx) = std::to_string(step.ramp);
    cells.at(row, step_column::kDecIdx) = std::to_string(step.ramp);
    const std::uint16_t value = compose_register(fields);
    cells.at(row, step_column::kCtlReg) = register_text(value);
    set_register_texts(cells, row, value, english_items());
}

inline void put_ramp(PositionGrids& grids, int index, const std::string& acc,
                     const std::string& dec) {
    grids.MSHFlexGrid1.at(index + 1, ramp_column::kAcc) = acc;
    grids.MSHFlexGrid1.at(index + 1, ramp_column::kDec) = dec;
}

}  // namespace servo::tools
