// What the motion keeps of digital inputs and outputs and of the moves that inputs start.
#pragma once

#include <array>
#include <cstdint>

#include "sim/digital_io.h"
#include "sim/digital_outputs.h"
#include "sim/din_tables.h"
#include "sim/input_objects.h"
#include "sim/object_table.h"
#include "sim/position_table.h"

namespace servo::sim {

struct MotionIo {
    explicit MotionIo(ObjectTable& table);

    DigitalInputs inputs;
    DigitalOutputs outputs;
    BrakeSignal brake;
    InputObjects does;
    OutputObjects tells;
    DinSpeeds speeds;
    DinPositions positions;
    PositionTable table;
    DinIndex table_index{InputFunction::kTableIndex0, InputFunction::kTableIndex1,
                         InputFunction::kTableIndex2};

    std::int64_t motor_error_since = -1;  // step; -1: the input is off
    std::array<bool, 2> fast_seen{};
    // Steps until which signals that have come stay.
    std::int64_t reached_until = 0;
    std::int64_t index_until = 0;
    bool reached_before = false;
    std::int64_t turns_seen = 0;
};

}  // namespace servo::sim
