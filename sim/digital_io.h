// Digital inputs: from the levels at the pins to the functions that are active.
//
//   level at the pin -> filter (2010:0C) -> polarity (2010:02) -> simulation (2010:01) -> state
//
// A pin carries the functions of its function object (2010:03 to :09 and :1D), a sum of bits of one
// group: 0x0001 to 0x4000 are the first group, 0x8001 to 0x8800 and 0x9001 to 0x9800 have twelve
// bits each. A function is active while any of its pins is. What functions do is not decided here.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <vector>

#include "sim/object_table.h"
#include "sim/subsystem.h"

namespace servo::sim {

inline constexpr int kInputPins = 8;
inline constexpr int kOutputPins = 7;

// Codes of the input functions, as they stand in the function objects.
enum class InputFunction : std::uint16_t {
    kEnable = 0x0001,
    kResetErrors = 0x0002,
    kModeSelect = 0x0004,
    kKviOff = 0x0008,
    kPositiveLimit = 0x0010,
    kNegativeLimit = 0x0020,
    kHomeSignal = 0x0040,
    kInvertDirection = 0x0080,
    kSpeedIndex0 = 0x0100,
    kSpeedIndex1 = 0x0200,
    kPositionIndex0 = 0x0400,
    kPositionIndex1 = 0x0800,
    kQuickStop = 0x1000,
    kStartHoming = 0x2000,
    kActivateCommand = 0x4000,
    kSpeedIndex2 = 0x8001,
    kPositionIndex2 = 0x8002,
    kMultifunction0 = 0x8004,
    kMultifunction1 = 0x8008,
    kMultifunction2 = 0x8010,
    kGainSwitch0 = 0x8020,
    kGainSwitch1 = 0x8040,
    kMaxCurrentSwitch = 0x8080,
    kMotorError = 0x8100,
    kPreEnable = 0x8200,
    kTableCondition0 = 0x8400,
    kStartTable = 0x8800,
    kTableIndex0 = 0x9001,
    kTableIndex1 = 0x9002,
    kTableIndex2 = 0x9004,
    kAbortTable = 0x9008,
    kTableCondition1 = 0x9010,
    kFastCapture1 = 0x9020,
    kFastCapture2 = 0x9040,
};

// The function object's value names the function, alone or among others of its group. Values up to
// 0x8000 belong to the first group, whose mask is 0x7FFF: so 0x8000 itself names nothing.
bool names_function(std::uint16_t value, std::uint16_t code);

class DigitalInputs : public Subsystem {
  public:
    explicit DigitalInputs(ObjectTable& table);

    // The pins keep their levels; they count at once, without the filter. Nothing is an edge.
    void power_up(std::int64_t step);

    // Pins, 0 to 7 for inputs 1 to 8; others do nothing. In force with the next look.
    void set_pin(int pin, bool high);
    // The other level for so many steps of the model, then back.
    void pulse_pin(int pin, std::int64_t steps);
    bool pin(int pin) const { return (levels_ >> pin & 1U) != 0; }
    std::uint8_t pins() const { return levels_; }

    // Bit i for pin i: which pins carry the function.
    std::uint8_t pins_with(InputFunction function) const;
    bool assigned(InputFunction function) const { return pins_with(function) != 0; }
    // Gives every pin that carries the function the level which makes it active, or not: for
    // switches that the machine works.
    void drive_function(InputFunction function, bool active);

    // One look at a step of the model; true when a function became active or no longer is. Steps
    // before due() may be left out.
    bool look(std::int64_t step) { return step >= due_ && look_now(step); }
    std::int64_t due() const { return due_; }

    // As of the last look.
    std::uint8_t state() const { return state_; }
    bool active(InputFunction function) const { return in(now_, function); }
    // Between the last look that returned true and the one before.
    bool rises(InputFunction function) const {
        return in(now_, function) && !in(before_, function);
    }
    bool falls(InputFunction function) const {
        return !in(now_, function) && in(before_, function);
    }
    // The same without the filter, for what captures a position.
    bool active_at_once(InputFunction function) const { return in(at_once_, function); }

    void refresh(Object& object) override;
    void written(Object& object) override;

  private:
    // The bits of each group that are active.
    using Groups = std::array<std::uint16_t, 3>;
    static constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

    struct Pulse {
        std::int64_t steps = 0;  // 0: none
        std::int64_t ends = 0;   // kNever until the first look
    };

    static bool in(const Groups& groups, InputFunction function);
    void put(int pin, bool high);
    void end_pulses(std::int64_t step);
    bool look_now(std::int64_t step);
    void filter(std::int64_t step);
    Groups functions(std::uint8_t state) const;
    std::uint8_t effective(std::uint8_t levels) const;
    void count_edges(std::uint8_t before);
    void wake() { due_ = 0; }

    Object& simulate_;
    Object& polarity_;
    Object& filter_time_;
    Object& standard_;
    Object& last_changed_;
    std::array<Object*, kInputPins> functions_{};
    std::vector<Object*> counters_;

    std::uint8_t levels_ = 0;                       // at the pins
    std::uint8_t seen_ = 0;                         // at the pins, as of the last look
    std::uint8_t accepted_ = 0;                     // after the filter
    std::uint8_t state_ = 0;                        // after polarity and simulation
    bool reassigned_ = false;                       // a function object was written
    std::array<std::int64_t, kInputPins> since_{};  // step from which the level has stood
    std::array<Pulse, kInputPins> pulses_{};
    Groups now_{};
    Groups before_{};
    Groups at_once_{};
    std::int64_t due_ = 0;
};

}  // namespace servo::sim
