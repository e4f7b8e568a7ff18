// Watches the drive and keeps its fault words. A fault is latched until it is reset, and comes back
// at once while its cause stands. A masked one is not seen at all.
#pragma once

#include <cstdint>

#include "sim/object_table.h"
#include "sim/subsystem.h"

namespace servo::sim {

// Bits of fault word 1 and 2 that have a cause in this drive. The others can only be provoked.
namespace fault1 {
inline constexpr std::uint16_t kExtended = 0x0001;
inline constexpr std::uint16_t kDriveTemperature = 0x0010;
inline constexpr std::uint16_t kBusHigh = 0x0020;
inline constexpr std::uint16_t kBusLow = 0x0040;
inline constexpr std::uint16_t kBrakeResistor = 0x0100;
inline constexpr std::uint16_t kFollowingError = 0x0200;
inline constexpr std::uint16_t kOverload = 0x0800;  // I2t
inline constexpr std::uint16_t kMotorTemperature = 0x2000;
inline constexpr std::uint16_t kMemory = 0x8000;
}  // namespace fault1
namespace fault2 {
inline constexpr std::uint16_t kNegativeLimit = 0x0020;
inline constexpr std::uint16_t kPositiveLimit = 0x0040;
inline constexpr std::uint16_t kMotorSetup = 0x0800;
}  // namespace fault2
// What stands behind bit 0 of fault word 1.
namespace extended {
inline constexpr std::uint16_t kOverSpeed = 0x0080;
}  // namespace extended

// What a fault does to a motor under power, the stronger one last.
enum class Reaction : std::uint8_t { kNone, kRamp, kCoast };

// The state of the axis as the watch sees it, once a millisecond.
struct Readings {
    bool powered = false;
    double current = 0.0;           // A, peak of the phase
    double bus_voltage = 0.0;       // V
    double resistance = 0.0;        // of one phase of the winding, ohm
    double rated_current = 1.0;     // A, peak: what the motor bears for ever
    double overload_seconds = 1.0;  // time constant of the motor's winding
    double peak_current = 1.0;      // of the drive, A
    bool braking = false;
    bool following_error = false;  // too large for too long
    bool over_speed = false;
    bool motor_data_wrong = false;
    std::uint16_t causes1 = 0;  // that stand outside the model, such as a digital input's
    std::uint16_t causes2 = 0;
};

class Supervision : public Subsystem {
  public:
    explicit Supervision(ObjectTable& table);

    void power_up();

    // `seconds` since the last look; in between nothing changed.
    Reaction look(const Readings& readings, double seconds);

    // Latches bits that are new and not masked.
    Reaction raise(std::uint16_t word1, std::uint16_t word2);
    // As raise, for bits without a cause in the model: they wait for a reset command, also where
    // the faults are set to reset themselves, or nobody would ever see them.
    Reaction provoke(std::uint16_t word1, std::uint16_t word2);

    // Clears what no longer has a cause, or has one that is masked by now. True when nothing is
    // left.
    bool reset();

    // Between the limits of too little and too much.
    bool bus_right(double volts) const {
        return volts > static_cast<double>(bus_low_.value) &&
               volts < static_cast<double>(bus_high_.value);
    }

    bool faulty() const { return word1_ != 0 || word2_ != 0; }
    // Raised since the last call, for the history.
    bool take_news();
    std::uint16_t word1() const { return word1_; }
    std::uint16_t word2() const { return word2_; }
    std::uint16_t extended_word() const { return extended_; }
    std::uint16_t warnings() const;
    std::uint16_t error_code() const { return error_code_; }

    double motor_temperature() const { return motor_celsius_; }
    double drive_temperature() const { return drive_celsius_; }
    double motor_overload() const { return motor_overload_; }  // of I2t, 1 is the limit
    double drive_overload() const { return drive_overload_; }
    double brake_load() const { return brake_load_; }            // 1 is the limit
    double mean_square_current() const { return mean_square_; }  // A2, over about 10 s

    void refresh(Object& object) override;

  private:
    void warm_up(const Readings& readings, double seconds);
    std::uint16_t causes1(const Readings& readings) const;
    void reset_self();
    // Causes that stand and are seen.
    unsigned seen1() const { return standing1_ & ~static_cast<unsigned>(mask1_.value); }
    unsigned seen2() const { return standing2_ & ~static_cast<unsigned>(mask2_.value); }
    std::uint8_t error_register() const;

    Object& mask1_;
    Object& mask2_;
    Object& ramp1_;
    Object& ramp2_;
    Object& self1_;
    Object& self2_;
    Object& bus_high_;
    Object& bus_low_;
    Object& drive_hot_;
    Object& motor_hot_;
    Object& motor_warm_;
    Object& drive_rated_;
    Object& peak_time_;
    Object& brake_ohm_;
    Object& brake_watt_;
    Object& brake_time_;

    std::uint16_t word1_ = 0;
    std::uint16_t word2_ = 0;
    std::uint16_t extended_ = 0;
    std::uint16_t standing1_ = 0;  // causes as of the last look
    std::uint16_t standing2_ = 0;
    std::uint16_t provoked1_ = 0;  // until the next reset
    std::uint16_t provoked2_ = 0;
    std::uint16_t error_code_ = 0;
    bool news_ = false;
    double motor_overload_ = 0.0;
    double drive_overload_ = 0.0;
    double brake_load_ = 0.0;
    double mean_square_ = 0.0;
    double motor_celsius_ = 0.0;
    double drive_celsius_ = 0.0;
};

}  // namespace servo::sim
