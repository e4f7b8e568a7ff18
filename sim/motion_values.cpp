// Motion: the objects that show it. Each is computed when it is read.
#include <algorithm>
#include <cmath>

#include "sim/motion.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// Output voltages are shown against the bus.
constexpr double kVoltageFullScale = 32767.0;
constexpr double kElectricalTurn = 65536.0;

}  // namespace

double Motion::speed_raw(double counts_per_second) const {
    return counts_per_second / kCountsPerSpeed;
}

double Motion::current_raw(double amperes) const {
    return amperes / motor_.peak_current * kCurrentFullScale;
}

double Motion::torque_raw(double amperes) const {
    return amperes * motor_.torque_constant / motor_.rated_torque * 1000.0;
}

double Motion::rpm(double counts_per_second) const {
    return counts_per_second * 60.0 / motor_.resolution;
}

void Motion::show(dictionary::Identity id, Type type, Getter getter) {
    table_.bind(id, type).owner = this;
    getters_[id] = getter;
}

void Motion::refresh(Object& object) {
    const auto getter = getters_.find(object.id);
    if (getter == getters_.end()) return;
    const double value = getter->second(*this);
    if (object.type == Type::kInt16 || object.type == Type::kUint16) {
        // Readings stay at the end of their range; a position, being wider, goes round.
        const auto low = static_cast<double>(lowest(object.type));
        const auto high = static_cast<double>(highest(object.type));
        object.value = std::llround(std::clamp(value, low, high));
    } else {
        object.value = cut(object.type, std::llround(value));
    }
}

void Motion::show_position() {
    const auto demand = [](const Motion& m) { return m.axis_.position_demand(); };
    show(ids::kPositionDemandCounts, Type::kInt32, demand);
    show(ids::kPositionDemand, Type::kInt32, [](const Motion& m) {
        return m.parameters_.position_sense() * m.axis_.position_demand();
    });
    show(ids::kPositionCounts, Type::kInt32,
         [](const Motion& m) { return static_cast<double>(m.axis_.position()); });
    show(ids::kPosition, Type::kInt32, [](const Motion& m) {
        return m.parameters_.position_sense() * static_cast<double>(m.axis_.position());
    });
    const auto error = [](const Motion& m) { return m.axis_.following_error(); };
    show(ids::kFollowingError, Type::kInt32, error);
    show(ids::kFollowingError16, Type::kInt16, error);
    show(ids::kControlEffort, Type::kInt32, [](const Motion& m) {
        return m.axis_.loop() == Loop::kPosition ? m.speed_raw(m.axis_.speed_demand()) : 0.0;
    });
    show(ids::kDistanceToGo, Type::kInt32, [](const Motion& m) {
        return m.modes_.arrived() ? 0.0 : m.modes_.target() - m.axis_.position_demand();
    });
    show(ids::kPositionInTurn, Type::kUint32, [](const Motion& m) {
        return std::floor(m.axis_.plant().part() * static_cast<double>(m.axis_.setup().resolution));
    });
    show(ids::kTurns, Type::kInt32,
         [](const Motion& m) { return static_cast<double>(m.axis_.plant().turns()); });
}

void Motion::show_speed() {
    show(ids::kSpeed, Type::kInt32, [](const Motion& m) {
        return m.parameters_.speed_sense() * m.speed_raw(m.axis_.shown_speed());
    });
    show(ids::kSpeedSensor, Type::kInt32,
         [](const Motion& m) { return m.speed_raw(m.axis_.raw_speed()); });
    show(ids::kSpeedUnfiltered, Type::kInt32,
         [](const Motion& m) { return m.speed_raw(m.axis_.raw_speed()); });
    show(ids::kSpeedFiltered, Type::kInt32,
         [](const Motion& m) { return m.speed_raw(m.axis_.speed()); });
    show(ids::kSpeedDemand, Type::kInt32, [](const Motion& m) {
        return m.parameters_.speed_sense() * m.speed_raw(m.axis_.speed_demand());
    });
    show(ids::kSpeedError, Type::kInt32,
         [](const Motion& m) { return m.speed_raw(m.axis_.speed_error()); });
    show(ids::kVelocityGainScale, Type::kUint32, [](const Motion& m) {
        return static_cast<double>(MotionParameters::velocity_gain_scale(m.motor_));
    });
    show(ids::kVelocityBandwidth, Type::kUint16, [](const Motion& m) {
        const auto scale = static_cast<double>(MotionParameters::velocity_gain_scale(m.motor_));
        return static_cast<double>(m.parameters_.velocity_kp.value) * scale / 65536.0;
    });
    show(ids::kVelocityLoopState, Type::kUint8, [](const Motion& m) {
        if (m.axis_.loop() == Loop::kOff) return 0.0;
        return m.axis_.current_limited() ? 2.0 : 1.0;
    });
}

void Motion::show_torque() {
    const auto current = [](const Motion& m) { return m.current_raw(m.axis_.current()); };
    const auto demand = [](const Motion& m) { return m.current_raw(m.axis_.current_demand()); };
    show(ids::kCurrent, Type::kInt16, current);
    show(ids::kCurrentMeasured, Type::kInt16, current);
    show(ids::kCurrentDemand, Type::kInt16, demand);
    show(ids::kIntegral, Type::kInt16,
         [](const Motion& m) { return m.current_raw(m.axis_.integral()); });
    show(ids::kForwardCurrent, Type::kInt16,
         [](const Motion& m) { return m.current_raw(m.axis_.fed_forward()); });
    show(ids::kCurrentLimit, Type::kUint16,
         [](const Motion& m) { return m.current_raw(m.axis_.setup().current_high); });
    show(ids::kTorque, Type::kInt16,
         [](const Motion& m) { return m.torque_raw(m.axis_.current()); });
    show(ids::kTorqueDemand, Type::kInt16,
         [](const Motion& m) { return m.torque_raw(m.axis_.current_demand()); });
    show(ids::kEffectiveCurrent, Type::kUint16, [](const Motion& m) {
        return m.current_raw(std::sqrt(m.supervision_.mean_square_current()));
    });
    show(ids::kVoltageQ, Type::kInt16, [](const Motion& m) {
        return m.axis_.voltage() / m.axis_.bus_voltage() * kVoltageFullScale;
    });
    // Where the motor's field stands, and with it how the current divides among the phases.
    show(ids::kElectricalAngle, Type::kUint16, [](const Motion& m) {
        const double turns = m.axis_.plant().part() * m.motor_.pole_pairs;
        return std::floor((turns - std::floor(turns)) * kElectricalTurn);
    });
    show(ids::kPhaseU, Type::kInt16, [](const Motion& m) {
        const double angle = 2.0 * kPi * m.axis_.plant().part() * m.motor_.pole_pairs;
        return -m.current_raw(m.axis_.current()) * std::sin(angle);
    });
    show(ids::kPhaseV, Type::kInt16, [](const Motion& m) {
        const double angle = 2.0 * kPi * m.axis_.plant().part() * m.motor_.pole_pairs;
        return -m.current_raw(m.axis_.current()) * std::sin(angle - 2.0 * kPi / 3.0);
    });
}

void Motion::show_state() {
    show(ids::kStatusWord, Type::kUint16,
         [](const Motion& m) { return static_cast<double>(m.status_word()); });
    show(ids::kStateInWords, Type::kUint8,
         [](const Motion& m) { return static_cast<double>(m.state_); });
    show(ids::kReverseCyclesDone, Type::kUint16,
         [](const Motion& m) { return static_cast<double>(m.modes_.auto_reverse().cycles()); });
    show(ids::kReverseState, Type::kUint8, [](const Motion& m) {
        const bool on = powered(m.state_) && m.modes_.mode() == Mode::kAutoReverse;
        return on ? static_cast<double>(m.modes_.auto_reverse().phase()) : 0.0;
    });
    show(ids::kModeDisplay, Type::kInt8, [](const Motion& m) {
        const bool on = powered(m.state_);
        return on ? static_cast<double>(m.modes_.mode())
                  : static_cast<double>(m.parameters_.mode.value);
    });
}

}  // namespace servo::sim
