// Addition: the steps as numbers, the way the drive stores what the cells say. Everything that
// explains a table (flow, findings, motion) starts from here.
#pragma once

#include <array>
#include <cstdint>

#include "tools/position_table.h"

namespace servo::tools {

enum class StepMode : std::uint8_t {
    kAbsolute,          // A: to the target
    kRelativeToDemand,  // RN: the target is a distance from where the last step led to
    kRelativeToActual,  // RA: a distance from where the axis is
    kUndefined,
};
enum class StepStart : std::uint8_t {
    kIgnore,     // conditions are not looked at
    kWait,       // waits for them
    kInterrupt,  // begins as soon as they hold, in the middle of the step before too
    kUndefined,
};

struct PositionStep {
    std::int32_t target = 0;  // inc
    double speed = 0;         // rpm
    std::uint16_t delay = 0;  // ms
    std::uint16_t loops = 0;  // 0 and 1 are once
    std::uint16_t control = 0;
    int acceleration = 0;  // indexes 0 to 15, of which 0 to 7 exist
    int deceleration = 0;
    bool empty = true;  // nothing is entered: as Clear leaves it

    int next() const;
    bool goes_on() const;
    bool condition0() const;
    bool condition1() const;
    bool both_conditions() const;  // else one of them is enough
    StepMode mode() const;
    StepStart start() const;
    bool has_condition() const { return condition0() || condition1(); }
};

struct PositionRamp {
    double acceleration = 0;  // turns/s^2
    double deceleration = 0;
};

struct PositionProgram {
    std::array<PositionStep, kPositionSteps> steps;
    std::array<PositionRamp, kPositionRamps> ramps;

    const PositionStep& step(int index) const { return steps.at(static_cast<std::size_t>(index)); }
    // Nothing for an index of 8 or more.
    const PositionRamp* ramp(int index) const {
        return index >= 0 && index < kPositionRamps ? &ramps[static_cast<std::size_t>(index)]
                                                    : nullptr;
    }
};

PositionProgram read_program(const PositionGrids& grids);

}  // namespace servo::tools
