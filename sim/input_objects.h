// Objects that say what digital inputs and outputs do.
#pragma once

#include <array>

#include "sim/object_table.h"

namespace servo::sim {

struct InputObjects {
    explicit InputObjects(ObjectTable& table);

    Object& enable_source;  // 0 control word, 1 input, 2 either
    Object& enable_style;   // 0 level, 1 edges
    Object& reset_style;    // 0 edge, 1 level
    Object& positive_action;
    Object& negative_action;
    Object& motor_error_delay;  // ms
    Object& activate_style;
    Object& mode_select0;
    Object& mode_select1;
    Object& limit_deceleration;
    Object& switched_max_current;
    std::array<Object*, 3> multi{};
    Object& captured;
    std::array<Object*, 2> fast_captured{};
    Object& fast_edges;
};

struct OutputObjects {
    explicit OutputObjects(ObjectTable& table);

    Object& ready_condition;
    Object& index_width;      // ms
    Object& reached_hold;     // ms
    Object& current_warning;  // percent of the rated current
    Object& torque_off_state;
};

}  // namespace servo::sim
