// Digital outputs: from what the drive is doing to the levels at the pins.
//
//   functions -> bits that the bus drives (60FE) -> least time (2011:0E) -> state (2010:15)
//     -> polarity (2010:0E) -> simulation (2010:0D) -> pin (2010:14)
//
// A pin carries the functions of its function object like an input's pin, and acts when any of them
// does. Looked at once a millisecond.
#pragma once

#include <array>
#include <cstdint>
#include <limits>

#include "sim/digital_io.h"
#include "sim/object_table.h"
#include "sim/subsystem.h"

namespace servo::sim {

// Codes of the output functions, as they stand in the function objects.
enum class OutputFunction : std::uint16_t {
    kReady = 0x0001,
    kError = 0x0002,
    kPositionReached = 0x0004,
    kZeroSpeed = 0x0008,
    kMotorBrake = 0x0010,  // active: the brake is open
    kSpeedReached = 0x0020,
    kEncoderIndex = 0x0040,
    kSpeedLimit = 0x0080,
    kDriverEnabled = 0x0100,
    kPositionLimit = 0x0200,
    kHomeFound = 0x0400,
    kCurrentLimit = 0x0800,
    kMulti0 = 0x1000,
    kMulti1 = 0x2000,
    kMulti2 = 0x4000,
    kTableActive = 0x8001,
    kTorqueOff = 0x8002,
    kEncoderWarning = 0x8004,
};

// Which functions are active: the first group's bits, and those of the group from 0x8000.
class OutputFunctions {
  public:
    void set(OutputFunction function, bool active) {
        const auto code = static_cast<unsigned>(function);
        if (active) bits_ |= code < 0x8000U ? code : (code & 0xFFFU) << 16U;
    }
    bool any_of(std::uint16_t value) const {
        if (value <= 0x8000U) return (bits_ & value & 0x7FFFU) != 0;
        return value >> 12U == 8U && (bits_ >> 16U & value & 0xFFFU) != 0;
    }

  private:
    std::uint32_t bits_ = 0;
};

class DigitalOutputs : public Subsystem {
  public:
    explicit DigitalOutputs(ObjectTable& table);

    // All functions are off. No change is counted.
    void power_up();

    // The state of the functions as of this step of the model. The three that compare an object
    // are found here.
    void look(OutputFunctions active, std::int64_t step);

    // By then a look is due although nothing happens: a level stands for its least time, or an
    // object is compared.
    std::int64_t due() const { return due_; }

    // Bit i for pin i, 1: it conducts.
    std::uint8_t pins() const;
    // Before polarity and simulation.
    std::uint8_t state() const { return state_; }

    void refresh(Object& object) override;

  private:
    static constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

    struct Comparison {
        Object& source;  // index and sub-index in the high 24 bits, length in bits in the low 8
        Object& low;
        Object& high;
        Object& style;  // 1: the absolute value
    };

    Comparison comparison(int number);
    bool compare(const Comparison& comparison);

    ObjectTable& table_;
    Object& simulate_;
    Object& polarity_;
    Object& by_bus_;
    Object& bus_mask_;
    Object& hold_;
    Object& last_changed_;
    std::array<Object*, kOutputPins> functions_{};
    std::array<Comparison, 3> comparisons_;

    std::uint8_t state_ = 0;
    std::array<std::int64_t, kOutputPins> held_until_{};
    std::int64_t due_ = 0;
};

// The signal that opens the motor's brake: some time after power comes on, and until the motor,
// without power, is slow enough or has turned for too long.
class BrakeSignal {
  public:
    explicit BrakeSignal(ObjectTable& table);

    void power_up() { open_ = false; }
    void look(bool powered, double rpm, std::int64_t step);
    bool open() const { return open_; }
    // It will change by itself.
    bool waits() const { return open_ != wanted_; }

  private:
    Object& release_;
    Object& speed_;
    Object& longest_;
    Object& by_hand_;
    bool open_ = false;
    bool wanted_ = false;
    std::int64_t since_ = 0;
};

}  // namespace servo::sim
