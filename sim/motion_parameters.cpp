#include "sim/motion_parameters.h"

#include <algorithm>
#include <cmath>

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// One unit of the velocity gain asks for this current at a speed error of 1 rad/s. The integral
// gain's unit is the same current added every millisecond; a 32nd of it is the fraction's unit.
constexpr double kVelocityUnit = 4.5403e-4;
constexpr double kIntegralRate = 1000.0;
constexpr double kFractions = 32.0;

// Units of the current loop's gains when they are set by hand: 420 and 130 are what the motor data
// give for the standard motor.
constexpr double kCurrentKpUnit = 0.09649;  // V/A
constexpr double kCurrentKiUnit = 123.25;   // V/(A s)

// In force where an acceleration is 0 and its counterpart too: the axis must still be able to stop.
constexpr double kFallbackTurns = 1000.0;  // turns/s2

double plain(const Object& object) {
    return static_cast<double>(object.value);
}

double at_least(double value, double least) {
    return std::max(value, least);
}

}  // namespace

MotionParameters::MotionParameters(ObjectTable& t)
    : quick_stop_option(t.bind(ids::kQuickStopOption, Type::kInt16, 2)),
      shutdown_option(t.bind(ids::kShutdownOption, Type::kInt16, 0)),
      disable_option(t.bind(ids::kDisableOption, Type::kInt16, 1)),
      halt_option(t.bind(ids::kHaltOption, Type::kInt16, 1)),
      fault_option(t.bind(ids::kFaultOption, Type::kInt16, 2)),
      enable_at_power_up(t.bind(ids::kEnableAtPowerUp, Type::kUint8)),
      mode(t.bind(ids::kMode, Type::kInt8, 1)),
      control_word(t.bind(ids::kControlWord, Type::kUint16)),
      following_window(t.bind(ids::kFollowingWindow, Type::kUint32, 10000)),
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
      cycle_exponent(t.bind(ids::kCycleExponent, Type::kInt8, -3)),
      max_profile_speed(t.bind(ids::kMaxProfileSpeed, Type::kUint32, 8738133)),
      profile_speed(t.bind(ids::kProfileSpeed, Type::kUint32, 2730667)),
      acceleration(t.bind(ids::kAcceleration, Type::kUint32, 16384)),
      deceleration(t.bind(ids::kDeceleration, Type::kUint32, 16384)),
      quick_stop_deceleration(t.bind(ids::kQuickStopDeceleration, Type::kUint32, 81920)),
      target_speed(t.bind(ids::kTargetSpeed, Type::kInt32)),
      speed_window(t.bind(ids::kSpeedWindow, Type::kUint16, 30)),
      speed_window_time(t.bind(ids::kSpeedWindowTime, Type::kUint16, 10)),
      speed_threshold(t.bind(ids::kSpeedThreshold, Type::kUint16, 10)),
      speed_threshold_time(t.bind(ids::kSpeedThresholdTime, Type::kUint16, 20)),
      over_speed(t.bind(ids::kOverSpeed, Type::kUint32)),
      target_torque(t.bind(ids::kTargetTorque, Type::kInt16)),
      target_current(t.bind(ids::kTargetCurrent, Type::kInt16)),
      torque_source(t.bind(ids::kTorqueSource, Type::kUint8)),
      torque_slope(t.bind(ids::kTorqueSlope, Type::kUint32, 10000)),
      torque_speed_limit(t.bind(ids::kTorqueSpeedLimit, Type::kUint32, 8192000)),
      max_torque(t.bind(ids::kMaxTorque, Type::kUint16, 3000)),
      max_current(t.bind(ids::kMaxCurrent, Type::kUint16, 1502)),
      positive_torque(t.bind(ids::kPositiveTorque, Type::kUint16, 3000)),
      negative_torque(t.bind(ids::kNegativeTorque, Type::kUint16, 3000)),
      rated_torque(t.bind(ids::kRatedTorque, Type::kUint32, 1270)),
      current_kp(t.bind(ids::kCurrentKp, Type::kUint16, 420)),
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
      position_loop_limit(t.bind(ids::kPositionLoopLimit, Type::kUint32, 8738133)),
      resolution(t.bind(ids::kResolution, Type::kUint32, 10000)),
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

MotorData MotionParameters::motor_data() const {
    MotorData m;
    m.wrong = resolution.value <= 0 || torque_constant.value <= 0 || rotor_inertia.value <= 0 ||
              inductance.value <= 0 || resistance.value <= 0 || motor_rated_current.value <= 0;
    // Where a value can't be, one that keeps the arithmetic alive stands in; the fault tells.
    m.resolution = at_least(plain(resolution), 1.0);
    m.pole_pairs = at_least(plain(pole_pairs), 1.0);
    m.peak_current = at_least(plain(peak_current), 1.0) / 10.0;
    m.max_current = plain(motor_max_current) / kCurrentFullScale * m.peak_current;
    m.rated_current = at_least(plain(motor_rated_current), 1.0) / 10.0 * std::sqrt(2.0);
    m.overload_seconds = at_least(plain(motor_overload_time), 1.0);
    // The plate tells values between two lines; one phase has half of them.
    m.inductance = at_least(plain(inductance), 1.0) * 1e-5 / 2.0;
    m.resistance = at_least(plain(resistance), 1.0) * 1e-2 / 2.0;
    // From effective volts between lines at 1000 rpm.
    m.emf = plain(voltage_constant) / 10.0 * std::sqrt(2.0 / 3.0) / (1000.0 * 2.0 * kPi / 60.0);
    m.torque_constant = at_least(plain(torque_constant), 1.0) / 1000.0;
    m.inertia = at_least(plain(rotor_inertia), 1.0) * 1e-7 * (1.0 + plain(inertia_ratio) / 100.0);
    m.rated_torque = at_least(plain(rated_torque), 1.0) / 1000.0;
    return m;
}

std::int64_t MotionParameters::velocity_gain_scale(const MotorData& motor) {
    const double hertz = motor.torque_constant * kVelocityUnit / (2.0 * kPi * motor.inertia);
    return std::llround(65536.0 * hertz);
}

double MotionParameters::current_limit(const Object& torque, const MotorData& motor) const {
    const double by_torque = std::min(plain(torque), plain(max_torque)) / 1000.0 *
                             motor.rated_torque / motor.torque_constant;
    const double by_current = plain(max_current) / kCurrentFullScale * motor.peak_current;
    return std::max(0.0, std::min({by_torque, by_current, motor.max_current}));
}

CurrentSetup MotionParameters::current_setup(const MotorData& motor) const {
    CurrentSetup s;  // the winding is what it is
    if (current_gain_source.value == 1) {
        s.kp = plain(current_kp) * kCurrentKpUnit;
        s.ki = plain(current_ki) * kCurrentKiUnit;
    } else {
        const double corner = 2.0 * kPi * plain(current_bandwidth);
        s.kp = motor.inductance * corner;
        s.ki = motor.resistance * corner;
    }
    return s;
}

AxisSetup MotionParameters::axis_setup(const MotorData& motor) const {
    AxisSetup s;
    s.resolution = std::max<std::int64_t>(resolution.factory, 1);
    s.current = current_setup(motor);
    s.supply.brake_resistor = plain(brake_ohm) / 10.0;
    s.supply.brake_on = plain(brake_level);
    const double radians = 2.0 * kPi / motor.resolution;  // of one count
    const double integral = plain(velocity_ki) + plain(velocity_ki_fraction) / kFractions;
    s.velocity_kp = plain(velocity_kp) * kVelocityUnit * radians;
    s.velocity_ki = integral * kVelocityUnit * kIntegralRate * radians;
    s.integral_limit = plain(integral_limit) / 100.0 * motor.rated_torque / motor.torque_constant;
    s.reference_share = plain(reference_share) / 100.0;
    s.speed_filter = speed_filter_type.value == 0 ? plain(speed_filter) : 0.0;
    s.torque_filter = plain(torque_filter);
    s.position_kp = plain(position_kp) / 100.0 * 2.0 * kPi;
    s.position_limit = plain(position_loop_limit) * kCountsPerSpeed;
    s.speed_feed_forward = plain(speed_forward) / 100.0;
    s.current_high = current_limit(positive_torque, motor);
    s.current_low = -current_limit(negative_torque, motor);
    return s;
}

double MotionParameters::position_sense() const {
    return (polarity.value & 0x80) != 0 ? -1.0 : 1.0;
}

double MotionParameters::speed_sense() const {
    return (polarity.value & 0x40) != 0 ? -1.0 : 1.0;
}

Targets MotionParameters::targets(const MotorData& motor) const {
    const double fallback = kFallbackTurns * motor.resolution;
    const auto rate = [&](const Object& object, double other) {
        return object.value > 0 ? plain(object) * kCountsPerAcceleration : other;
    };
    Targets t;
    const double most = plain(max_profile_speed) * kCountsPerSpeed;
    t.profile.speed = std::min(plain(profile_speed) * kCountsPerSpeed, most);
    t.profile.acceleration = rate(acceleration, rate(deceleration, fallback));
    t.profile.deceleration = rate(deceleration, t.profile.acceleration);
    t.speed_profile = t.profile;
    t.speed_profile.speed = most;
    t.quick_deceleration = rate(quick_stop_deceleration, t.profile.deceleration);
    t.speed = speed_sense() * plain(target_speed) * kCountsPerSpeed;
    t.position = position_sense() * plain(target_position);
    t.interpolated = position_sense() * plain(interpolation_position);
    t.cycle = std::max(1e-3, plain(cycle_value) * std::pow(10.0, plain(cycle_exponent)));
    const double amperes_per_torque = motor.rated_torque / motor.torque_constant / 1000.0;
    t.current = torque_source.value == 2
                    ? plain(target_current) / kCurrentFullScale * motor.peak_current
                    : plain(target_torque) * amperes_per_torque;
    t.current_slope = plain(torque_slope) * amperes_per_torque;
    t.current_speed_limit = plain(torque_speed_limit) * kCountsPerSpeed;
    // Current that accelerates motor and load by one count/s2.
    const double forward = motor.inertia / motor.torque_constant * 2.0 * kPi / motor.resolution;
    t.position_forward = forward * plain(acceleration_forward) / 100.0;
    t.speed_forward = forward * plain(inertia_forward) / 100.0;
    if (lowest_position.value != 0 || highest_position.value != 0) {
        t.lowest = plain(lowest_position);
        t.highest = plain(highest_position);
    }
    return t;
}

}  // namespace servo::sim
