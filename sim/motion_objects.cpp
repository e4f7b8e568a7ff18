#include "sim/motion_objects.h"

#include "sim/object_ids.h"

namespace servo::sim {

StopObjects::StopObjects(ObjectTable& t)
    : quick_stop_option(t.bind(ids::kQuickStopOption, Type::kInt16, 2)),
      shutdown_option(t.bind(ids::kShutdownOption, Type::kInt16, 0)),
      disable_option(t.bind(ids::kDisableOption, Type::kInt16, 1)),
      halt_option(t.bind(ids::kHaltOption, Type::kInt16, 1)),
      fault_option(t.bind(ids::kFaultOption, Type::kInt16, 2)),
      enable_at_power_up(t.bind(ids::kEnableAtPowerUp, Type::kUint8)) {}

PositionObjects::PositionObjects(ObjectTable& t)
    : following_window(t.bind(ids::kFollowingWindow, Type::kUint32, 10000)),
      following_time(t.bind(ids::kFollowingTime, Type::kUint16, 10)),
      position_window(t.bind(ids::kPositionWindow, Type::kUint32, 10)),
      position_window_time(t.bind(ids::kPositionWindowTime, Type::kUint16, 10)),
      target_position(t.bind(ids::kTargetPosition, Type::kInt32)),
      home_offset(t.bind(ids::kHomeOffset, Type::kInt32)),
      lowest_position(t.bind(ids::kLowestPosition, Type::kInt32)),
      highest_position(t.bind(ids::kHighestPosition, Type::kInt32)),
      polarity(t.bind(ids::kPolarity, Type::kUint8)),
      target_at_once(t.bind(ids::kTargetAtOnce, Type::kUint8)),
      homing_method(t.bind(ids::kHomingMethod, Type::kInt8, 35)),
      interpolation_position(t.bind(ids::kInterpolationPosition, Type::kInt32)),
      cycle_value(t.bind(ids::kCycleValue, Type::kUint8, 1)),
      cycle_exponent(t.bind(ids::kCycleExponent, Type::kInt8, -3)) {}

HomingObjects::HomingObjects(ObjectTable& t)
    : homing_speed(t.bind(ids::kHomingSpeed, Type::kUint32, 546133)),
      homing_zero_speed(t.bind(ids::kHomingZeroSpeed, Type::kUint32, 136533)),
      homing_acceleration(t.bind(ids::kHomingAcceleration, Type::kUint32, 16384)),
      homing_at_power_up(t.bind(ids::kHomingAtPowerUp, Type::kUint8)),
      homing_current(t.bind(ids::kHomingCurrent, Type::kInt32, 546)),
      homing_blind(t.bind(ids::kHomingBlind, Type::kUint8)),
      home_offset_mode(t.bind(ids::kHomeOffsetMode, Type::kUint8)),
      homing_timeout(t.bind(ids::kHomingTimeout, Type::kUint16)),
      homing_stop_time(t.bind(ids::kHomingStopTime, Type::kUint16, 100)),
      homing_required(t.bind(ids::kHomingRequired, Type::kUint8)),
      homing_travel(t.bind(ids::kHomingTravel, Type::kUint32)),
      homing_clear(t.bind(ids::kHomingClear, Type::kUint8)),
      homing_time(t.bind(ids::kHomingTime, Type::kUint16)) {}

SpeedObjects::SpeedObjects(ObjectTable& t)
    : max_profile_speed(t.bind(ids::kMaxProfileSpeed, Type::kUint32, 8738133)),
      profile_speed(t.bind(ids::kProfileSpeed, Type::kUint32, 2730667)),
      acceleration(t.bind(ids::kAcceleration, Type::kUint32, 16384)),
      deceleration(t.bind(ids::kDeceleration, Type::kUint32, 16384)),
      quick_stop_deceleration(t.bind(ids::kQuickStopDeceleration, Type::kUint32, 81920)),
      target_speed(t.bind(ids::kTargetSpeed, Type::kInt32)),
      speed_window(t.bind(ids::kSpeedWindow, Type::kUint16, 30)),
      speed_window_time(t.bind(ids::kSpeedWindowTime, Type::kUint16, 10)),
      speed_threshold(t.bind(ids::kSpeedThreshold, Type::kUint16, 10)),
      speed_threshold_time(t.bind(ids::kSpeedThresholdTime, Type::kUint16, 20)),
      over_speed(t.bind(ids::kOverSpeed, Type::kUint32)) {}

ReverseObjects::ReverseObjects(ObjectTable& t)
    : reverse_type(t.bind(ids::kReverseType, Type::kUint8)),
      reverse_place_a(t.bind(ids::kReversePlaceA, Type::kInt32)),
      reverse_place_b(t.bind(ids::kReversePlaceB, Type::kInt32, 50000)),
      forward_speed(t.bind(ids::kForwardSpeed, Type::kInt32, 1365333)),
      backward_speed(t.bind(ids::kBackwardSpeed, Type::kInt32, 1365333)),
      forward_time(t.bind(ids::kForwardTime, Type::kUint16, 1000)),
      backward_time(t.bind(ids::kBackwardTime, Type::kUint16, 1000)),
      reverse_acceleration(t.bind(ids::kReverseAcceleration, Type::kUint32, 32768)),
      reverse_deceleration(t.bind(ids::kReverseDeceleration, Type::kUint32, 32768)),
      reverse_pause(t.bind(ids::kReversePause, Type::kUint16)),
      reverse_cycles(t.bind(ids::kReverseCycles, Type::kUint16)),
      reverse_travel(t.bind(ids::kReverseTravel, Type::kInt32, 200000)) {}

TorqueObjects::TorqueObjects(ObjectTable& t)
    : target_torque(t.bind(ids::kTargetTorque, Type::kInt16)),
      target_current(t.bind(ids::kTargetCurrent, Type::kInt16)),
      torque_source(t.bind(ids::kTorqueSource, Type::kUint8)),
      torque_slope(t.bind(ids::kTorqueSlope, Type::kUint32, 10000)),
      torque_speed_limit(t.bind(ids::kTorqueSpeedLimit, Type::kUint32, 8192000)),
      max_torque(t.bind(ids::kMaxTorque, Type::kUint16, 3000)),
      max_current(t.bind(ids::kMaxCurrent, Type::kUint16, 1502)),
      positive_torque(t.bind(ids::kPositiveTorque, Type::kUint16, 3000)),
      negative_torque(t.bind(ids::kNegativeTorque, Type::kUint16, 3000)),
      rated_torque(t.bind(ids::kRatedTorque, Type::kUint32, 1270)) {}

LoopObjects::LoopObjects(ObjectTable& t)
    : current_kp(t.bind(ids::kCurrentKp, Type::kUint16, 420)),
      current_ki(t.bind(ids::kCurrentKi, Type::kUint16, 130)),
      current_bandwidth(t.bind(ids::kCurrentBandwidth, Type::kUint16, 1500)),
      current_gain_source(t.bind(ids::kCurrentGainSource, Type::kUint8)),
      torque_filter(t.bind(ids::kTorqueFilter, Type::kUint16, 1200)),
      velocity_kp(t.bind(ids::kVelocityKp, Type::kUint16, 200)),
      velocity_ki(t.bind(ids::kVelocityKi, Type::kUint16, 20)),
      velocity_ki_fraction(t.bind(ids::kVelocityKiFraction, Type::kUint16)),
      integral_limit(t.bind(ids::kIntegralLimit, Type::kUint16, 300)),
      speed_filter(t.bind(ids::kSpeedFilter, Type::kUint16, 500)),
      speed_filter_type(t.bind(ids::kSpeedFilterType, Type::kUint8)),
      inertia_forward(t.bind(ids::kInertiaForward, Type::kUint16)),
      reference_share(t.bind(ids::kReferenceShare, Type::kUint16, 100)),
      position_kp(t.bind(ids::kPositionKp, Type::kUint16, 1000)),
      speed_forward(t.bind(ids::kSpeedForward, Type::kUint16, 100)),
      acceleration_forward(t.bind(ids::kAccelerationForward, Type::kUint16)),
      position_loop_limit(t.bind(ids::kPositionLoopLimit, Type::kUint32, 8738133)) {}

MotorObjects::MotorObjects(ObjectTable& t)
    : resolution(t.bind(ids::kResolution, Type::kUint32, 10000)),
      pole_pairs(t.bind(ids::kPolePairs, Type::kUint8, 4)),
      motor_rated_current(t.bind(ids::kMotorRatedCurrent, Type::kUint16, 26)),
      motor_overload_time(t.bind(ids::kMotorOverloadTime, Type::kUint16, 45)),
      motor_max_current(t.bind(ids::kMotorMaxCurrent, Type::kInt16, 1502)),
      inductance(t.bind(ids::kInductance, Type::kUint16, 860)),
      resistance(t.bind(ids::kResistance, Type::kUint16, 340)),
      voltage_constant(t.bind(ids::kVoltageConstant, Type::kUint16, 310)),
      torque_constant(t.bind(ids::kTorqueConstant, Type::kUint16, 345)),
      rotor_inertia(t.bind(ids::kRotorInertia, Type::kUint32, 277)),
      inertia_ratio(t.bind(ids::kInertiaRatio, Type::kUint16, 200)),
      peak_current(t.bind(ids::kPeakCurrent, Type::kUint16, 150)),
      brake_ohm(t.bind(ids::kBrakeOhm, Type::kUint16)),
      brake_level(t.bind(ids::kBrakeLevel, Type::kUint16, 380)) {}

}  // namespace servo::sim
