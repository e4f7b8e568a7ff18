// A drive on the bench with digital inputs and outputs and a position table.
#pragma once

#include <cmath>

#include "sim/digital_io.h"
#include "sim/digital_outputs.h"
#include "sim/drive_bench.h"
#include "sim/position_table.h"

namespace servo::sim::test {

// Raw speed of one turn a minute, raw acceleration of one turn/s2, counts of a turn.
inline constexpr double kRawRpm = 512.0 * 10000 / 1875;
inline constexpr double kRawTurns = 65536.0 * 10000 / 1000 / 4000;
inline constexpr std::int64_t kTurn = 10000;

inline std::int64_t raw_rpm(double rpm) {
    return std::llround(rpm * kRawRpm);
}
inline std::int64_t raw_turns(double turns_per_second2) {
    return std::llround(turns_per_second2 * kRawTurns);
}

// Control register of a step of the table.
struct Control {
    int next = -1;  // -1: the table is done
    int conditions = 0;
    bool both = false;
    int mode = 0;   // 0 absolute, 1 relative to the demand, 2 to the actual position
    int start = 0;  // 0 at once, 1 waits, 2 interrupts
    std::int64_t bits() const {
        return (next < 0 ? 0 : next | 0x100) | conditions << 9 | (both ? 0x800 : 0) | mode << 12 |
               start << 14;
    }
};

class IoBench : public DriveBench {
  public:
    explicit IoBench(Options options = {});

    std::int64_t get(std::uint32_t key) { return *drive().value(key); }
    void set(std::uint32_t key, std::int64_t value);

    // Inputs 1 to 8, outputs 1 to 7.
    void assign(int input, InputFunction function) {
        assign_value(input, static_cast<std::uint16_t>(function));
    }
    void assign_value(int input, std::uint16_t value);
    void assign_output(int output, std::uint16_t value);
    void assign_output(int output, OutputFunction function) {
        assign_output(output, static_cast<std::uint16_t>(function));
    }
    // The pin's new level, and the time until it counts.
    void pin(int input, bool high);
    void pulse(int input);
    bool output(int number);

    bool status(int mask) { return (get(0x604100) & mask) != 0; }
    int state() { return static_cast<int>(get(0x2FFE00)); }
    double place() { return static_cast<double>(get(0x606300)); }
    double demand() { return static_cast<double>(get(0x60FC00)); }
    double rpm() { return static_cast<double>(get(0x606C00)) / kRawRpm; }

    // A step of the table, with ramps of 1000 turns/s2 unless told otherwise.
    void step(int index, std::int64_t target, double rpm, Control control, int delay = 0,
              int loops = 0, int ramps = 0);
    void start_table() { set(0x311003, 1); }
    PositionTable::State table_state() { return static_cast<PositionTable::State>(get(0x311004)); }
    int index() { return static_cast<int>(get(0x311001)); }
    bool run_until_state(PositionTable::State state, microseconds limit = std::chrono::seconds(5));
};

}  // namespace servo::sim::test
