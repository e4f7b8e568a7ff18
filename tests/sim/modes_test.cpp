// Torque, cyclic and other modes of operation on the whole drive; places, time and noise.
#include <gtest/gtest.h>

#include <cmath>

#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr double kRpm = 512.0 * 10000 / 1875;  // raw speed of one turn a minute

std::int64_t rpm(double speed) {
    return std::llround(speed * kRpm);
}

bool bit(DriveBench& bench, int mask) {
    return (*bench.drive().value(0x604100) & mask) != 0;
}

double shown_rpm(DriveBench& bench) {
    return static_cast<double>(*bench.drive().value(0x606C00)) / kRpm;
}

TEST(Torque, GoesUpItsSlope) {
    DriveBench bench;
    bench.drive().hold_load(true);
    bench.drive().set_value(0x608700, 1000);
    bench.enable(4);
    bench.drive().set_value(0x607100, 500);
    bench.run(milliseconds(250));
    EXPECT_NEAR(static_cast<double>(*bench.drive().value(0x607700)), 250.0, 10.0);
    EXPECT_FALSE(bit(bench, 0x400));
    bench.run(milliseconds(300));
    EXPECT_NEAR(static_cast<double>(*bench.drive().value(0x607700)), 500.0, 5.0);
    EXPECT_TRUE(bit(bench, 0x400));
}

TEST(Torque, SpeedStaysWithinItsLimit) {
    DriveBench bench;
    bench.drive().set_value(0x214004, rpm(800));
    bench.enable(4);
    bench.drive().set_value(0x607100, 300);
    bench.run(seconds(2));
    EXPECT_NEAR(shown_rpm(bench), 800.0, 60.0);
}

TEST(Torque, CanBeGivenAsACurrent) {
    DriveBench bench;
    bench.drive().hold_load(true);
    bench.drive().set_value(0x214001, 2);
    bench.drive().set_value(0x60F608, 400);
    bench.enable(4);
    bench.run(seconds(1));
    EXPECT_NEAR(static_cast<double>(*bench.drive().value(0x607800)), 400.0, 3.0);
}

TEST(Current, NeverGoesBeyondItsLimit) {
    DriveBench bench;
    bench.drive().set_value(0x607300, 300);
    bench.enable(-3);
    bench.drive().set_value(0x60FF00, rpm(3000));
    bench.run(microseconds(5000));
    EXPECT_TRUE(bit(bench, 0x800));
    for (int i = 0; i < 200; ++i) {
        bench.run(microseconds(500));
        EXPECT_LE(std::abs(*bench.drive().value(0x60F60C)), 300);
    }
}

TEST(CyclicPosition, FollowsTheTargetsThatComeIn) {
    DriveBench bench;
    bench.drive().set_value(0x60C201, 4);
    bench.enable(8);
    for (int i = 1; i <= 250; ++i) {
        bench.drive().set_value(0x607A00, i * 200);
        bench.run(milliseconds(4));
    }
    bench.run(milliseconds(100));
    EXPECT_NEAR(static_cast<double>(*bench.drive().value(0x606300)), 50000.0, 10.0);
    EXPECT_EQ(bench.drive().value(0x260100), 0);
}

TEST(CyclicPosition, WhatStoodInTheTargetBeforeIsNotTaken) {
    DriveBench bench;
    bench.drive().set_value(0x607A00, 70000);
    bench.enable(8);
    bench.run(milliseconds(200));
    EXPECT_NEAR(static_cast<double>(*bench.drive().value(0x606300)), 0.0, 10.0);
}

TEST(AutoReverse, TurnsBetweenTwoPlacesAndStopsAfterItsCycles) {
    DriveBench bench;
    bench.drive().set_value(0x20500A, 50);
    bench.drive().set_value(0x20500B, 2);
    bench.enable(-1);
    std::int64_t low = 0;
    std::int64_t high = 0;
    std::vector<std::int64_t> phases;
    ASSERT_TRUE(bench.run_until(
        [&] {
            low = std::min(low, *bench.drive().value(0x606300));
            high = std::max(high, *bench.drive().value(0x606300));
            const auto phase = *bench.drive().value(0x20500D);
            if (phases.empty() || phases.back() != phase) phases.push_back(phase);
            return phase == 0;
        },
        seconds(10)));
    EXPECT_EQ(phases, (std::vector<std::int64_t>{1, 3, 2, 3, 1, 3, 2, 0}));
    EXPECT_EQ(bench.drive().value(0x20500C), 2);
    EXPECT_NEAR(static_cast<double>(high), 50000.0, 20.0);
    EXPECT_NEAR(static_cast<double>(low), 0.0, 20.0);
}

TEST(AutoReverse, ByTimeReversesItsSpeed) {
    DriveBench bench;
    bench.drive().set_value(0x205001, 1);
    bench.drive().set_value(0x20500E, 0);
    bench.enable(-1);
    bench.run(milliseconds(900));
    EXPECT_NEAR(shown_rpm(bench), 500.0, 2.0);
    bench.run(milliseconds(1000));
    EXPECT_NEAR(shown_rpm(bench), -500.0, 2.0);
    EXPECT_EQ(bench.drive().value(0x20500D), 2);
}

TEST(AutoReverse, StopsBeyondItsTravel) {
    DriveBench bench;
    bench.drive().set_value(0x20500E, 20000);
    bench.enable(-1);
    bench.run(seconds(3));
    EXPECT_EQ(bench.drive().value(0x20500D), 0);
    EXPECT_NEAR(shown_rpm(bench), 0.0, 2.0);
    EXPECT_LT(*bench.drive().value(0x606300), 25000);
}

TEST(Mode, ChangesUnderPowerWithoutAJerk) {
    DriveBench bench;
    bench.drive().set_value(0x60FF00, rpm(1000));
    bench.enable(3);
    bench.run(milliseconds(500));
    bench.drive().set_value(0x606000, 1);  // comes to rest and holds
    EXPECT_EQ(bench.drive().value(0x606100), 1);
    std::int64_t most = 0;
    for (int i = 0; i < 300; ++i) {
        bench.run(milliseconds(1));
        most = std::max(most, std::abs(*bench.drive().value(0x60F60C)));
    }
    EXPECT_LT(most, 200);  // the ramp alone asks for 20 to 40
    bench.run(milliseconds(300));
    EXPECT_NEAR(shown_rpm(bench), 0.0, 1.0);
}

TEST(Mode, OthersThanTheDriveHasHoldTheirPlace) {
    for (const int mode : {-4, 0, 6, 7}) {
        DriveBench bench;
        bench.enable(mode);
        bench.drive().set_load_torque(0.5);
        bench.run(seconds(1));
        EXPECT_NEAR(static_cast<double>(*bench.drive().value(0x606300)), 0.0, 10.0) << mode;
        EXPECT_EQ(bench.drive().value(0x606100), mode);
    }
}

TEST(Homing, ANumberThatIsNoMethodFails) {
    DriveBench bench;
    bench.drive().set_value(0x609800, 16);
    bench.enable(6);
    bench.control(0x1F);
    EXPECT_TRUE(bit(bench, 0x2000));
    EXPECT_FALSE(bit(bench, 0x1000));
}

TEST(Position, CanBeClearedAtRestOnly) {
    DriveBench bench;
    bench.drive().set_value(0x60FF00, rpm(1000));
    bench.enable(3);
    bench.run(milliseconds(500));
    EXPECT_FALSE(bench.write(0x212006, 1, 1));
    EXPECT_EQ(bench.refusal(), 0x08000022U);
    bench.drive().set_value(0x60FF00, 0);
    bench.run(seconds(1));
    EXPECT_TRUE(bench.write(0x212006, 1, 1));
    EXPECT_EQ(bench.drive().value(0x606300), 0);
    EXPECT_EQ(bench.read(0x212006), 0U);
}

TEST(Position, GoesRoundAtTheEndOfItsRange) {
    DriveBench bench;
    bench.drive().set_value(0x607C00, 2147483000);
    bench.enable(6);
    bench.control(0x1F);
    bench.drive().set_value(0x606000, -3);
    bench.drive().set_value(0x60FF00, rpm(600));
    bench.run(milliseconds(300));
    EXPECT_LT(*bench.drive().value(0x606300), -2147400000);
}

// However time is cut into pieces, the motor does the same.
TEST(Time, TheModelDoesNotDependOnHowItIsAdvanced) {
    const auto run = [](microseconds piece) {
        DriveBench bench;
        bench.drive().set_value(0x60FF00, rpm(777));
        bench.enable(3);
        for (microseconds t{0}; t < milliseconds(600); t += piece)
            bench.run(piece);
        return std::pair(*bench.drive().value(0x606300), *bench.drive().value(0x60F60C));
    };
    const auto fine = run(microseconds(10));
    EXPECT_EQ(fine, run(microseconds(1000)));
    EXPECT_EQ(fine, run(milliseconds(600)));
}

TEST(Time, AMotorAtRestCostsNoSteps) {
    DriveBench bench;
    bench.run(std::chrono::hours(24 * 365));
    EXPECT_EQ(bench.drive().value(0x606300), 0);
    EXPECT_EQ(bench.drive().value(0x2FF500), 24 * 365 * 3600);
}

TEST(Noise, BusVoltageTremblesAroundItsValueBySeed) {
    const auto readings = [](std::uint64_t seed) {
        Options options;
        options.seed = seed;
        DriveBench bench(options);
        std::vector<std::int64_t> all;
        for (int i = 0; i < 50; ++i) {
            bench.run(milliseconds(20));
            all.push_back(*bench.drive().value(0x607900));
        }
        return all;
    };
    const auto first = readings(1);
    EXPECT_EQ(first, readings(1));
    EXPECT_NE(first, readings(2));
    for (const std::int64_t value : first)
        EXPECT_NEAR(static_cast<double>(value), 310000.0, 500.0);
}

}  // namespace
}  // namespace servo::sim::test
