// Scan and homing with the factory values that are shipped.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "base/file.h"
#include "sim/homing_bench.h"
#include "sim/rail.h"
#include "sim/scan_bench.h"

namespace servo::sim::test {
namespace {

Options shipped() {
    Options options;
    const std::filesystem::path folder = SERVO_BIN_DIR;
    options.values = base::read_file(folder / "sim" / "values.tsv").value_or(std::string{});
    return options;
}

TEST(ShippedMachine, ItsScanIsTheMachineWithinHalfADecibelAndThreeDegrees) {
    using namespace scan;
    ASSERT_FALSE(shipped().values.empty());
    for (const int current : {32, 60, 400}) {
        ScanBench bench(shipped());
        const Plan plan{4, 1000, 3, current};
        Blocks blocks;
        ASSERT_TRUE(bench.scan(plan, blocks));
        ASSERT_EQ(bench.result(), 1);
        const Curve curve = analysed(plan, blocks);
        ASSERT_EQ(curve.magnitude.size(), 332U);
        for (std::size_t i = 0; i < curve.magnitude.size(); ++i) {
            const double hertz = 4.0 + 3.0 * static_cast<double>(i);
            const std::complex<double> expected = 100.0 * plant_at(hertz);
            EXPECT_NEAR(decibels(curve.magnitude[i] / std::abs(expected)), 0.0, 0.5) << hertz;
            const double degrees = std::arg(expected) * 180.0 / M_PI;
            EXPECT_NEAR(turned(curve.phase[i] - degrees), 0.0, 3.0) << hertz;
        }
    }
}

TEST(ShippedMachine, HomesOnTheDefaultAxis) {
    using namespace homing;
    for (const auto& [method, home] : {std::pair{1, -20.0},
                                       {17, -20.3},
                                       {24, 3.4},
                                       {33, 0.0},
                                       {35, 0.0},
                                       {-18, 22.4},
                                       {-21, 22.0},
                                       {10, 6.0}}) {
        Options options = shipped();
        options.rail = parse_rail("default");
        HomingBench bench(options);
        const Outcome out = bench.home(method);
        EXPECT_TRUE(out.homed) << method;
        EXPECT_EQ(out.state, 2) << method;
        EXPECT_NEAR(out.home, home, 3.0 / kTurn) << method;
    }
}

}  // namespace
}  // namespace servo::sim::test
