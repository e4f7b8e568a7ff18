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

// An acceleration, or the other one where none is set.
double rate(const Object& object, double other) {
    return object.value > 0 ? plain(object) * kCountsPerAcceleration : other;
}

double at_least(double value, double least) {
    return std::max(value, least);
}

}  // namespace

MotionParameters::MotionParameters(ObjectTable& table)
    : StopObjects(table),
      PositionObjects(table),
      HomingObjects(table),
      SpeedObjects(table),
      ReverseObjects(table),
      TorqueObjects(table),
      LoopObjects(table),
      MotorObjects(table),
      mode(table.bind(ids::kMode, Type::kInt8, 1)),
      control_word(table.bind(ids::kControlWord, Type::kUint16)) {}

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

double MotionParameters::velocity_unit(const MotorData& motor) {
    return kVelocityUnit * 2.0 * kPi / motor.resolution;
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
    const double integral = plain(velocity_ki) + plain(velocity_ki_fraction) / kFractions;
    s.velocity_kp = plain(velocity_kp) * velocity_unit(motor);
    s.velocity_ki = integral * kIntegralRate * velocity_unit(motor);
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

AutoReverseTargets MotionParameters::to_and_fro(double fallback) const {
    AutoReverseTargets t;
    t.by_time = reverse_type.value == 1;
    t.place_a = plain(reverse_place_a);
    t.place_b = plain(reverse_place_b);
    t.forward_speed = plain(forward_speed) * kCountsPerSpeed;
    t.backward_speed = plain(backward_speed) * kCountsPerSpeed;
    t.forward_steps = forward_time.value * kStepsPerMillisecond;
    t.backward_steps = backward_time.value * kStepsPerMillisecond;
    t.pause_steps = reverse_pause.value * kStepsPerMillisecond;
    t.acceleration = rate(reverse_acceleration, rate(reverse_deceleration, fallback));
    t.deceleration = rate(reverse_deceleration, t.acceleration);
    t.cycles = reverse_cycles.value;
    t.travel = plain(reverse_travel);
    return t;
}

Targets MotionParameters::targets(const MotorData& motor) const {
    const double fallback = kFallbackTurns * motor.resolution;
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
    t.to_and_fro = to_and_fro(fallback);
    if (lowest_position.value != 0 || highest_position.value != 0) {
        t.lowest = plain(lowest_position);
        t.highest = plain(highest_position);
    }
    return t;
}

}  // namespace servo::sim
