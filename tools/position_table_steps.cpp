#include "tools/position_table_steps.h"

#include "base/number.h"
#include "tools/position_table_register.h"
#include "tools/position_table_transfer.h"

namespace servo::tools {

namespace {

// Lines of the transfer list that write a row's cells as they are, without the encoder.
constexpr int kTargetLine = 16;
constexpr int kDelayLine = 80;
constexpr int kLoopLine = 144;
constexpr int kIndexLine = 176;

bool flag(std::uint16_t control, int field) {
    return register_field_of(control, field) != 0;
}

PositionStep read_step(const PositionGrids& grids, int index) {
    // What the drive gets of the cells, cut to the width of its objects.
    const auto sent = [&](int line) { return value_for_drive(grids, line + index, 1.0); };
    const StepGrid& cells = grids.MSHFlexGrid2;
    const int row = index + 1;
    PositionStep step;
    step.target = sent(kTargetLine);
    step.speed = base::leading_number(cells.at(row, step_column::kSpeed));
    step.delay = static_cast<std::uint16_t>(sent(kDelayLine));
    step.loops = static_cast<std::uint16_t>(sent(kLoopLine));
    step.control = register_of_text(cells.at(row, step_column::kCtlReg));
    const auto pair = static_cast<std::uint8_t>(sent(kIndexLine));
    step.acceleration = pair >> 4;
    step.deceleration = pair & 0xF;
    step.empty = step.target == 0 && step.speed == 0 && step.delay == 0 && step.loops == 0 &&
                 step.control == 0 && pair == 0;
    return step;
}

}  // namespace

int PositionStep::next() const {
    return register_field_of(control, register_field::kNext);
}
bool PositionStep::goes_on() const {
    return flag(control, register_field::kGoOn);
}
bool PositionStep::condition0() const {
    return flag(control, register_field::kCondition0);
}
bool PositionStep::condition1() const {
    return flag(control, register_field::kCondition1);
}
bool PositionStep::both_conditions() const {
    return flag(control, register_field::kJoin);
}
StepMode PositionStep::mode() const {
    return static_cast<StepMode>(register_field_of(control, register_field::kMode));
}
StepStart PositionStep::start() const {
    return static_cast<StepStart>(register_field_of(control, register_field::kStartCond));
}

PositionProgram read_program(const PositionGrids& grids) {
    PositionProgram program;
    for (int index = 0; index < kPositionSteps; ++index)
        program.steps[static_cast<std::size_t>(index)] = read_step(grids, index);
    for (int index = 0; index < kPositionRamps; ++index) {
        const auto& cells = grids.MSHFlexGrid1;
        program.ramps[static_cast<std::size_t>(index)] = {
            base::leading_number(cells.at(index + 1, ramp_column::kAcc)),
            base::leading_number(cells.at(index + 1, ramp_column::kDec))};
    }
    return program;
}

}  // namespace servo::tools
