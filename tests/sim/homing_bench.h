// A drive on an axis with switches, stops and ends, and its homing objects.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sim/drive_bench.h"

namespace servo::sim::test::homing {

inline constexpr double kTurn = 10000.0;              // counts
inline constexpr double kRpm = 512.0 * 10000 / 1875;  // raw speed of one turn a minute

const std::vector<Entry>& homing_entries();

// Factory functions of the inputs: 5 positive limit, 6 negative limit, 7 home.
Options on_axis(const std::optional<RailSetup>& rail);

// Limits at -20 and 20, stops at -22 and 22, and a home switch, if any; all as seen from where the
// motor stands.
RailSetup axis_with_home(std::optional<double> from, std::optional<double> to, double start = 0.0);

struct Outcome {
    bool ended = false;
    bool homed = false;    // bit 12
    bool failed = false;   // bit 13
    bool reached = false;  // bit 10
    std::int64_t state = 0;
    double home = 0.0;   // place of the home point along the shaft's way, turns
    double place = 0.0;  // of the shaft at the end, turns
};

class HomingBench : public DriveBench {
  public:
    explicit HomingBench(const std::optional<RailSetup>& rail);
    explicit HomingBench(Options options);

    // Enables the drive in the homing mode and starts the run.
    void begin(int method);
    Outcome finish(microseconds limit = std::chrono::seconds(120));
    Outcome home(int method) {
        begin(method);
        return finish();
    }

    std::int64_t value(std::uint32_t key) { return *drive().value(key); }
    void set(std::uint32_t key, std::int64_t value) { drive().set_value(key, value); }
    bool status(int mask) { return (value(0x604100) & mask) != 0; }
    double place();  // of the shaft, turns
};

}  // namespace servo::sim::test::homing
