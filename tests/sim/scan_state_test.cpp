// The frequency scan and the rest of the drive: who may start it, what ends it, what it leaves
// behind.
#include <gtest/gtest.h>

#include <cmath>

#include "sim/scan_bench.h"

namespace servo::sim::test {
namespace {

using namespace scan;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::uint32_t kTooManyPoints = 0x06040042;
constexpr std::uint32_t kNoPlan = 0x06040043;
constexpr std::uint32_t kUnknownValue = 0x06090030;
constexpr std::uint32_t kReadOnly = 0x06010002;
constexpr double kRpm = 512.0 * 10000 / 1875;
constexpr std::int64_t kTurn = 10000;

constexpr Plan kShort{50, 80, 10, 60};

std::int64_t state_of(ScanBench& bench) {
    return *bench.drive().value(0x604100) & 0x6F;
}

double speed_of(ScanBench& bench) {
    return std::abs(static_cast<double>(*bench.drive().value(0x606C00))) / kRpm;
}

bool started(ScanBench& bench, const Plan& plan = kShort) {
    return bench.write_plan(plan) && bench.start();
}

void expect_empty(ScanBench& bench, int points) {
    const Blocks blocks = bench.fetch(points);
    for (const int word : blocks.command_b)
        EXPECT_EQ(word, 0);
    for (const int value : blocks.response)
        EXPECT_EQ(value, 0);
}

TEST(ScanState, ADriveThatWasNotEnabledPowersItselfAndGoesBack) {
    for (const int word : {-1, 0x06, 0x07}) {
        ScanBench bench;
        if (word >= 0) bench.control(0x06);
        if (word >= 0) bench.control(static_cast<std::uint16_t>(word));
        const auto before = state_of(bench);
        EXPECT_EQ(bench.result(), 0);
        ASSERT_TRUE(started(bench));
        bench.run(milliseconds(100));
        EXPECT_EQ(state_of(bench), 0x27) << "power is on, and it says so";
        EXPECT_EQ(bench.read(0x304001), 14U);
        EXPECT_EQ(bench.result(), 0);
        ASSERT_TRUE(bench.wait());
        EXPECT_EQ(bench.result(), 1);
        EXPECT_EQ(state_of(bench), before);
        EXPECT_LT(speed_of(bench), 3.0);
    }
}

TEST(ScanState, AnEnabledDriveStaysEnabledAndHoldsItsPlace) {
    ScanBench bench;
    bench.enable(1);
    ASSERT_TRUE(started(bench));
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 1);
    EXPECT_EQ(state_of(bench), 0x27);
    const auto place = *bench.drive().value(0x606300);
    bench.run(seconds(1));
    EXPECT_NEAR(static_cast<double>(*bench.drive().value(0x606300)), static_cast<double>(place),
                20.0);
}

TEST(ScanState, AMotorThatTurnedTurnsOn) {
    ScanBench bench;
    bench.drive().set_value(0x60FF00, std::llround(300 * kRpm));
    bench.enable(3);
    bench.run(seconds(1));
    ASSERT_TRUE(started(bench));
    bench.run(milliseconds(400));
    EXPECT_NEAR(speed_of(bench), 100.0, 30.0) << "at the bias speed";
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 1);
    bench.run(seconds(1));
    EXPECT_NEAR(speed_of(bench), 300.0, 2.0);
}

TEST(ScanState, AFaultBeforeRefusesItAndClearsTheBlocks) {
    ScanBench bench;
    Blocks blocks;
    ASSERT_TRUE(bench.scan(kShort, blocks));
    bench.drive().provoke_fault(0x0800);
    ASSERT_TRUE(bench.start()) << "the write itself is taken";
    EXPECT_EQ(bench.read(0x304001), 0U);
    EXPECT_EQ(bench.result(), 2);
    EXPECT_EQ(bench.drive().value(0x304008), 0);
    expect_empty(bench, 4);
    EXPECT_EQ(state_of(bench), 0x08);
}

TEST(ScanState, AStopUnderWayOrAHaltRefusesIt) {
    ScanBench halted;
    halted.enable(1);
    halted.control(0x010F);
    ASSERT_TRUE(started(halted));
    EXPECT_EQ(halted.result(), 2);
    ScanBench stopped;
    stopped.drive().set_value(0x605A00, 6);  // stays in quick stop
    stopped.enable(1);
    stopped.control(0x000B);
    ASSERT_TRUE(started(stopped));
    EXPECT_EQ(stopped.result(), 2);
    EXPECT_EQ(state_of(stopped), 0x07);
}

TEST(ScanState, AFaultMeanwhileEndsIt) {
    ScanBench bench;
    ASSERT_TRUE(started(bench));
    ASSERT_TRUE(bench.run_until([&] { return *bench.drive().value(0x304008) == 2; }, seconds(5)));
    bench.drive().provoke_fault(0x0800);
    EXPECT_EQ(bench.result(), 4);
    EXPECT_EQ(bench.read(0x304001), 0U);
    EXPECT_EQ(state_of(bench), 0x08);
    const Blocks blocks = bench.fetch(4);
    EXPECT_NE(blocks.command_b[1], 0) << "what was measured can be read";
    EXPECT_EQ(blocks.command_b[2], 0);
    bench.run(seconds(2));
    EXPECT_EQ(*bench.drive().value(0x60F60C), 0);
}

TEST(ScanState, TravelBeyondTheLimitEndsIt) {
    ScanBench bench;
    bench.drive().set_value(0x30400D, kTurn / 2);
    ASSERT_TRUE(started(bench, {4, 60, 4, 60}));
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 3);
    EXPECT_LT(std::abs(*bench.drive().value(0x606300)), kTurn);
    EXPECT_EQ(state_of(bench), 0x40);
}

TEST(ScanState, ALongScanStaysWhereItBegan) {
    ScanBench bench;
    ASSERT_TRUE(started(bench, {4, 1000, 30, 60}));
    std::int64_t most = 0;
    ASSERT_TRUE(bench.run_until(
        [&] {
            most = std::max(most, std::abs(*bench.drive().value(0x606300)));
            return *bench.drive().value(0x304001) == 0;
        },
        seconds(60)));
    EXPECT_EQ(bench.result(), 1);
    EXPECT_GT(most, kTurn);
    EXPECT_LT(most, 4 * kTurn);
}

TEST(ScanState, ALimitSwitchEndsIt) {
    ScanBench bench;
    bench.drive().set_value(0x201003, 0x10);  // input 1 is the positive limit
    ASSERT_TRUE(started(bench));
    bench.run(milliseconds(300));
    bench.drive().set_pin(0, true);
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 3);
    EXPECT_EQ(state_of(bench), 0x40);
}

TEST(ScanState, WritingZeroStopsIt) {
    ScanBench bench;
    ASSERT_TRUE(started(bench));
    bench.run(milliseconds(300));
    ASSERT_TRUE(bench.write(0x304001, 0, 1));
    EXPECT_EQ(bench.result(), 5);
    EXPECT_EQ(bench.read(0x304006), 0U);
    // The command goes back to 0 with the motor at rest.
    ASSERT_TRUE(bench.run_until([&] { return *bench.drive().value(0x304001) == 0; }, seconds(1)));
    EXPECT_LT(speed_of(bench), 3.0);
    EXPECT_EQ(state_of(bench), 0x40);
    // A stop without a scan is nothing.
    ASSERT_TRUE(bench.write(0x304001, 0, 1));
    EXPECT_EQ(bench.result(), 5);
}

TEST(ScanState, TakingThePowerAwayStopsIt) {
    for (const std::uint16_t word : {0x00, 0x06, 0x07, 0x0B, 0x010F}) {
        ScanBench bench;
        bench.enable(1);
        ASSERT_TRUE(started(bench));
        bench.run(milliseconds(300));
        bench.control(word);
        bench.run(milliseconds(1));
        EXPECT_EQ(bench.result(), 5) << word;
        bench.run(seconds(2));
        EXPECT_EQ(bench.drive().value(0x304001), 0) << word;
        EXPECT_LT(speed_of(bench), 3.0) << word;
        EXPECT_EQ(state_of(bench) == 0x27, word == 0x010F) << word;
    }
}

TEST(ScanState, AShutdownOfADriveThatPoweredItselfStopsItToo) {
    ScanBench bench;
    bench.control(0x06);
    ASSERT_TRUE(started(bench));
    bench.run(milliseconds(300));
    bench.control(0x06);
    EXPECT_EQ(bench.result(), 5);
    bench.run(seconds(2));
    EXPECT_EQ(state_of(bench), 0x21);
}

TEST(ScanState, AnEnableMeanwhileKeepsThePowerOnAfterwards) {
    ScanBench bench;
    bench.control(0x06);
    bench.control(0x07);
    ASSERT_TRUE(started(bench));
    bench.run(milliseconds(100));
    bench.control(0x0F);
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 1);
    EXPECT_EQ(state_of(bench), 0x27);
}

TEST(ScanState, NoTargetMovesTheMotorMeanwhile) {
    ScanBench bench;
    bench.enable(1);
    ASSERT_TRUE(started(bench));
    bench.run(milliseconds(100));
    bench.drive().set_value(0x607A00, 50 * kTurn);
    bench.control(0x1F);
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 1);
    bench.run(seconds(1));
    EXPECT_LT(std::abs(*bench.drive().value(0x606300)), 3 * kTurn);
}

TEST(ScanState, ARestartForgetsEverything) {
    ScanBench bench;
    Blocks blocks;
    ASSERT_TRUE(bench.scan(kShort, blocks));
    ASSERT_TRUE(started(bench));
    bench.run(milliseconds(300));
    bench.drive().power_cycle();
    bench.run(milliseconds(1));
    EXPECT_EQ(*bench.drive().value(0x60F60C), 0);
    bench.run(seconds(2));
    EXPECT_EQ(bench.result(), 0);
    EXPECT_EQ(bench.drive().value(0x304001), 0);
    expect_empty(bench, 4);
}

TEST(ScanState, ASecondStartGoesOn) {
    ScanBench bench;
    ASSERT_TRUE(started(bench));
    ASSERT_TRUE(bench.run_until([&] { return *bench.drive().value(0x304008) == 2; }, seconds(5)));
    ASSERT_TRUE(bench.start());
    EXPECT_EQ(bench.drive().value(0x304008), 2);
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 1);
}

TEST(ScanState, ASecondStartWithAnotherPlanBeginsAnew) {
    for (const bool enabled : {false, true}) {
        ScanBench bench;
        if (enabled) bench.enable(1);
        const auto before = state_of(bench);
        ASSERT_TRUE(started(bench));
        ASSERT_TRUE(
            bench.run_until([&] { return *bench.drive().value(0x304008) == 2; }, seconds(5)));
        const Plan other{.first = 100, .last = 160, .step = 20, .current = 80};
        ASSERT_TRUE(bench.write_plan(other));
        ASSERT_TRUE(bench.start());
        EXPECT_EQ(bench.drive().value(0x304008), 0);
        ASSERT_TRUE(bench.wait());
        EXPECT_EQ(bench.result(), 1);
        EXPECT_EQ(state_of(bench), before);
        ScanBench alone;
        Blocks wanted;
        ASSERT_TRUE(alone.scan(other, wanted));
        const Curve found = analysed(other, bench.fetch(points_of(other)));
        const Curve same = analysed(other, wanted);
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(found.magnitude[i], same.magnitude[i], 0.03 * same.magnitude[i]) << i;
    }
}

TEST(ScanState, AStartWhileTheMotorRunsDownBeginsAnew) {
    ScanBench bench;
    ASSERT_TRUE(started(bench));
    ASSERT_TRUE(bench.run_until([&] { return *bench.drive().value(0x304008) == 2; }, seconds(5)));
    ASSERT_TRUE(bench.write(0x304001, 0, 1));
    ASSERT_TRUE(bench.start());
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 1) << "and not that it was stopped";
    EXPECT_EQ(bench.drive().value(0x304008), points_of(kShort));
}

TEST(ScanState, ShowsHowFarItIs) {
    ScanBench bench;
    EXPECT_EQ(bench.read(0x304006), 0U);
    ASSERT_TRUE(started(bench));
    std::vector<std::int64_t> seen;
    ASSERT_TRUE(bench.run_until(
        [&] {
            const auto f = *bench.drive().value(0x304006);
            if (seen.empty() || seen.back() != f) seen.push_back(f);
            if (f != 0) {
                EXPECT_EQ(*bench.drive().value(0x304008), (f - 50) / 10);
            }
            return *bench.drive().value(0x304001) == 0;
        },
        seconds(10)));
    EXPECT_EQ(seen, (std::vector<std::int64_t>{50, 60, 70, 80, 0}));
    EXPECT_EQ(bench.drive().value(0x304008), 4);
    EXPECT_EQ(bench.read(0x304010), 501U);
}

TEST(ScanState, WhatIsWrittenMeanwhileIsForTheNextOne) {
    ScanBench bench;
    Blocks blocks;
    ASSERT_TRUE(started(bench));
    bench.run(milliseconds(200));
    ASSERT_TRUE(bench.write_plan({4, 1000, 3, 100}));
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.drive().value(0x304008), 4);
    EXPECT_EQ(bench.fetch(4).command_b, (std::vector<std::int16_t>{60, 60, 60, 60}));
}

TEST(ScanRefusal, MorePointsThanItHolds) {
    ScanBench bench;
    ASSERT_TRUE(bench.write_plan({4, 505, 1, 60}));
    EXPECT_FALSE(bench.start());
    EXPECT_EQ(bench.refusal(), kTooManyPoints);
    EXPECT_EQ(bench.drive().value(0x304001), 0);
    EXPECT_EQ(state_of(bench), 0x40);
    ASSERT_TRUE(bench.write_plan({4, 504, 1, 60}));
    EXPECT_TRUE(bench.start());
}

TEST(ScanRefusal, APlanThatCannotBe) {
    ScanBench bench;
    for (const Plan& plan :
         {Plan{60, 4, 3, 60}, Plan{0, 60, 3, 60}, Plan{4, 60, 0, 60}, Plan{4, 5000, 20, 60}}) {
        ASSERT_TRUE(bench.write_plan(plan));
        EXPECT_FALSE(bench.start());
        EXPECT_EQ(bench.refusal(), kNoPlan);
    }
}

TEST(ScanRefusal, OtherCommandsAndWhatCanOnlyBeRead) {
    ScanBench bench;
    for (const int command : {1, 13, 15, 255}) {
        EXPECT_FALSE(bench.write(0x304001, command, 1));
        EXPECT_EQ(bench.refusal(), kUnknownValue);
    }
    EXPECT_FALSE(bench.write(0x30400A, 1, 1));
    EXPECT_EQ(bench.refusal(), kReadOnly);
}

TEST(ScanEdge, WithoutAnAmplitudeThereIsNothingToRead) {
    ScanBench bench;
    ASSERT_TRUE(started(bench, {50, 70, 10, 0}));
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 1);
    expect_empty(bench, 3);
}

// Without a gain a speed makes no current, and there is nothing that could be compared.
TEST(ScanEdge, ASpeedThatMakesNoCurrentMeasuresNothing) {
    ScanBench bench;
    bench.drive().set_value(0x30400F, 1);
    bench.drive().set_value(0x60F901, 0);
    bench.drive().set_value(0x60F902, 0);
    ASSERT_TRUE(started(bench, {50, 70, 10, 60}));
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.result(), 1);
    expect_empty(bench, 3);
}

TEST(ScanEdge, OnePointIsAScanToo) {
    ScanBench bench;
    Blocks blocks;
    ASSERT_TRUE(bench.write_plan({100, 100, 3, 60}));
    ASSERT_TRUE(bench.start());
    ASSERT_TRUE(bench.wait());
    EXPECT_EQ(bench.drive().value(0x304008), 1);
    EXPECT_EQ(bench.fetch(1).command_b[0], 60);
}

}  // namespace
}  // namespace servo::sim::test
