// What the tests of a homing run share: the usual axis, and what the drive shows of a run.
#pragma once

#include <gtest/gtest.h>

#include "sim/homing_bench.h"
#include "sim/rail.h"

namespace servo::sim::test {

using namespace homing;
using std::chrono::milliseconds;
using std::chrono::seconds;

inline constexpr int kReached = 0x400;
inline constexpr int kAttained = 0x1000;
inline constexpr int kError = 0x2000;
inline constexpr int kBits = kReached | kAttained | kError;

inline RailSetup usual(double start = 0.0) {
    return axis_with_home(3.3, 5.6, start);
}

inline std::int64_t bits(HomingBench& bench) {
    return bench.value(0x604100) & kBits;
}

inline double rpm_of(HomingBench& bench) {
    return static_cast<double>(bench.value(0x606C00)) / kRpm;
}

inline void expect_lost(HomingBench& bench, const char* what) {
    const Outcome out = bench.finish();
    EXPECT_TRUE(out.ended) << what;
    EXPECT_EQ(out.state, 3) << what;
    EXPECT_TRUE(out.failed) << what;
    EXPECT_FALSE(out.homed) << what;
    EXPECT_TRUE(out.reached) << what << ": and stands";
    EXPECT_EQ(bench.value(0x604100) & 0x6F, 0x27) << what << ": and stays enabled";
    bench.run(milliseconds(100));
    EXPECT_NEAR(rpm_of(bench), 0.0, 1.0) << what;
}

}  // namespace servo::sim::test
