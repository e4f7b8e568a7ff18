#include "sim/live_values.h"

#include <algorithm>
#include <cmath>

#include "sim/chance.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

constexpr double kTrembleSeconds = 0.02;

// How far the readings tremble.
constexpr double kBusTremble = 0.4;          // V
constexpr double kTemperatureTremble = 0.2;  // K
constexpr double kLogicTremble = 15.0;       // mV
constexpr double kAnalogTremble = 2.5;       // mV
constexpr double kLoadTremble = 8.0;         // tenths of a percent

constexpr double kLogicMillivolts = 24'050.0;
constexpr double kBoardBelowPower = 3.0;  // K
constexpr double kProcessorIdle = 310.0;  // tenths of a percent
constexpr double kProcessorEnabled = 450.0;

constexpr double kBusConverter = 4096.0;  // steps of the converter at full scale
constexpr unsigned kUnsavedWarning = 0x20;

double seconds_of(const Motion& motion) {
    return motion.seconds_running();
}

}  // namespace

LiveValues::LiveValues(ObjectTable& table, const Motion& motion, const Supervision& supervision,
                       std::uint64_t seed)
    : table_(table),
      motion_(motion),
      supervision_(supervision),
      seed_(seed),
      bus_full_scale_(table.bind(ids::kBusFullScale, Type::kUint16, 5000)),
      overload_full_scale_(table.bind(ids::kOverloadFullScale, Type::kUint16, 20000)),
      operating_minutes_(table.bind(ids::kOperatingMinutes, Type::kUint32)),
      enabled_minutes_(table.bind(ids::kEnabledMinutes, Type::kUint32)),
      unsaved_(table.bind(ids::kUnsavedChanges, Type::kUint8)) {
    show_voltages();
    show_loads();
    show_times();
}

void LiveValues::show(dictionary::Identity id, Type type, Getter getter) {
    table_.bind(id, type).owner = this;
    getters_[id] = getter;
}

void LiveValues::refresh(Object& object) {
    const auto getter = getters_.find(object.id);
    if (getter == getters_.end()) return;
    const auto low = static_cast<double>(lowest(object.type));
    const auto high = static_cast<double>(highest(object.type));
    object.value = std::llround(std::clamp(getter->second(*this), low, high));
}

double LiveValues::tremble(dictionary::Identity id) const {
    const auto slot = static_cast<std::uint64_t>(seconds_of(motion_) / kTrembleSeconds);
    return 2.0 * unit(mix(mix(seed_ ^ static_cast<std::uint64_t>(id)) + slot)) - 1.0;
}

double LiveValues::bus() const {
    return motion_.axis().bus_voltage() + kBusTremble * tremble(ids::kBusReading);
}

double LiveValues::bus_raw(double volts) const {
    const auto full = static_cast<double>(std::max<std::int64_t>(bus_full_scale_.value, 1));
    return volts * kBusConverter * 10.0 / full;
}

void LiveValues::show_voltages() {
    show(ids::kBusMillivolts, Type::kUint32, [](LiveValues& l) { return l.bus() * 1000.0; });
    show(ids::kBusReading, Type::kUint16, [](LiveValues& l) { return l.bus_raw(l.bus()); });
    show(ids::kLogicMillivolts, Type::kUint16, [](LiveValues& l) {
        return kLogicMillivolts + kLogicTremble * l.tremble(ids::kLogicMillivolts);
    });
    show(ids::kAnalogVoltage1, Type::kInt16,
         [](LiveValues& l) { return kAnalogTremble * l.tremble(ids::kAnalogVoltage1); });
    show(ids::kAnalogVoltage2, Type::kInt16,
         [](LiveValues& l) { return kAnalogTremble * l.tremble(ids::kAnalogVoltage2); });
    show(ids::kDriveTemperature, Type::kInt16, [](LiveValues& l) {
        return l.supervision_.drive_temperature() +
               kTemperatureTremble * l.tremble(ids::kDriveTemperature);
    });
    show(ids::kBoardTemperature, Type::kInt16, [](LiveValues& l) {
        return l.supervision_.drive_temperature() - kBoardBelowPower +
               kTemperatureTremble * l.tremble(ids::kBoardTemperature);
    });
    show(ids::kMotorTemperature, Type::kInt16, [](LiveValues& l) {
        return l.supervision_.motor_temperature() +
               kTemperatureTremble * l.tremble(ids::kMotorTemperature);
    });
}

void LiveValues::show_loads() {
    show(ids::kMotorOverload, Type::kUint16, [](LiveValues& l) {
        return l.supervision_.motor_overload() * static_cast<double>(l.overload_full_scale_.value);
    });
    show(ids::kDriveOverload, Type::kUint16, [](LiveValues& l) {
        return l.supervision_.drive_overload() * static_cast<double>(l.overload_full_scale_.value);
    });
    show(ids::kBrakeLoad, Type::kUint16,
         [](LiveValues& l) { return l.supervision_.brake_load() * 100.0; });
    show(ids::kBrakeDuty, Type::kUint16,
         [](LiveValues& l) { return l.motion_.brake_duty() * 100.0; });
    show(ids::kOutputPower, Type::kInt16, [](LiveValues& l) {
        const Axis& axis = l.motion_.axis();
        return axis.setup().torque_constant * axis.current() * axis.plant().motor_speed();
    });
    show(ids::kProcessorLoad, Type::kUint16, [](LiveValues& l) {
        const double load = powered(l.motion_.state()) ? kProcessorEnabled : kProcessorIdle;
        return load + kLoadTremble * l.tremble(ids::kProcessorLoad);
    });
    show(ids::kWarnings, Type::kUint16, [](LiveValues& l) {
        const unsigned unsaved = l.table_.read(l.unsaved_) != 0 ? kUnsavedWarning : 0U;
        return static_cast<double>(l.supervision_.warnings() | unsaved);
    });
}

// The hours of the drive's life go on from what stood there at the factory.
void LiveValues::show_times() {
    show(ids::kSecondsSincePowerUp, Type::kUint32,
         [](LiveValues& l) { return std::floor(seconds_of(l.motion_)); });
    show(ids::kOperatingMinutes, Type::kUint32, [](LiveValues& l) {
        const auto before = static_cast<double>(l.operating_minutes_.factory);
        return before + std::floor(seconds_of(l.motion_) / 60.0);
    });
    show(ids::kEnabledMinutes, Type::kUint32, [](LiveValues& l) {
        const auto before = static_cast<double>(l.enabled_minutes_.factory);
        return before + std::floor(l.motion_.seconds_enabled() / 60.0);
    });
}

}  // namespace servo::sim
