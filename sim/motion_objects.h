// Objects that steer the motion, by subject.
#pragma once

#include "sim/object_table.h"

namespace servo::sim {

// What each way of stopping does.
struct StopObjects {
    explicit StopObjects(ObjectTable& table);

    Object& quick_stop_option;
    Object& shutdown_option;
    Object& disable_option;
    Object& halt_option;
    Object& fault_option;
    Object& enable_at_power_up;
};

// Targets, windows and limits of position.
struct PositionObjects {
    explicit PositionObjects(ObjectTable& table);

    Object& following_window;
    Object& following_time;
    Object& position_window;
    Object& position_window_time;
    Object& target_position;
    Object& home_offset;
    Object& lowest_position;
    Object& highest_position;
    Object& polarity;
    Object& target_at_once;
    Object& homing_method;
    Object& interpolation_position;
    Object& cycle_value;
    Object& cycle_exponent;
};

// Ways and limits of homing.
struct HomingObjects {
    explicit HomingObjects(ObjectTable& table);

    Object& homing_speed;
    Object& homing_zero_speed;
    Object& homing_acceleration;
    Object& homing_at_power_up;
    Object& homing_current;
    Object& homing_blind;
    Object& home_offset_mode;
    Object& homing_timeout;
    Object& homing_stop_time;
    Object& homing_required;
    Object& homing_travel;
    Object& homing_clear;
    Object& homing_time;
};

// Ramps, targets and windows of speed.
struct SpeedObjects {
    explicit SpeedObjects(ObjectTable& table);

    Object& max_profile_speed;
    Object& profile_speed;
    Object& acceleration;
    Object& deceleration;
    Object& quick_stop_deceleration;
    Object& target_speed;
    Object& speed_window;
    Object& speed_window_time;
    Object& speed_threshold;
    Object& speed_threshold_time;
    Object& over_speed;
};

// Turning to and fro.
struct ReverseObjects {
    explicit ReverseObjects(ObjectTable& table);

    Object& reverse_type;
    Object& reverse_place_a;
    Object& reverse_place_b;
    Object& forward_speed;
    Object& backward_speed;
    Object& forward_time;
    Object& backward_time;
    Object& reverse_acceleration;
    Object& reverse_deceleration;
    Object& reverse_pause;
    Object& reverse_cycles;
    Object& reverse_travel;
};

// Targets and limits of torque and current.
struct TorqueObjects {
    explicit TorqueObjects(ObjectTable& table);

    Object& target_torque;
    Object& target_current;
    Object& torque_source;
    Object& torque_slope;
    Object& torque_speed_limit;
    Object& max_torque;
    Object& max_current;
    Object& positive_torque;
    Object& negative_torque;
    Object& rated_torque;
};

// Gains and filters.
struct LoopObjects {
    explicit LoopObjects(ObjectTable& table);

    Object& current_kp;
    Object& current_ki;
    Object& current_bandwidth;
    Object& current_gain_source;
    Object& torque_filter;
    Object& velocity_kp;
    Object& velocity_ki;
    Object& velocity_ki_fraction;
    Object& integral_limit;
    Object& speed_filter;
    Object& speed_filter_type;
    Object& inertia_forward;
    Object& reference_share;
    Object& position_kp;
    Object& speed_forward;
    Object& acceleration_forward;
    Object& position_loop_limit;
};

// The motor's plate and the drive's.
struct MotorObjects {
    explicit MotorObjects(ObjectTable& table);

    Object& resolution;
    Object& pole_pairs;
    Object& motor_rated_current;
    Object& motor_overload_time;
    Object& motor_max_current;
    Object& inductance;
    Object& resistance;
    Object& voltage_constant;
    Object& torque_constant;
    Object& rotor_inertia;
    Object& inertia_ratio;
    Object& peak_current;
    Object& brake_ohm;
    Object& brake_level;
};

}  // namespace servo::sim
