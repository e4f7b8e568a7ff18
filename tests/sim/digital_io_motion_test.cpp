// Inputs that limit or change the motion: limit switches, direction, gains, captures.
#include <gtest/gtest.h>

#include "sim/io_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using F = InputFunction;

constexpr int kPositive = 5;
constexpr int kNegative = 6;
constexpr int kLimitBit = 0x800;

class LimitSwitch : public ::testing::Test {
  protected:
    void SetUp() override {
        bench.assign(kPositive, F::kPositiveLimit);
        bench.assign(kNegative, F::kNegativeLimit);
    }
    void move(std::int64_t target) {
        bench.set(0x607A00, target);
        bench.control(0x0F);
        bench.control(0x3F);
    }
    IoBench bench;
};

TEST_F(LimitSwitch, EndsAMoveAndForgetsItsTarget) {
    bench.enable(1);
    move(20 * kTurn);
    bench.run(milliseconds(300));
    EXPECT_FALSE(bench.status(kLimitBit));
    bench.pin(kPositive, true);
    EXPECT_TRUE(bench.status(kLimitBit));
    bench.run(milliseconds(300));
    const double place = bench.place();
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
    bench.pin(kPositive, false);
    bench.run(seconds(1));
    EXPECT_NEAR(bench.place(), place, 5.0);
    EXPECT_FALSE(bench.status(kLimitBit));
    EXPECT_EQ(bench.get(0x260100), 0);
}

TEST_F(LimitSwitch, StopsWithItsOwnDeceleration) {
    const auto way_on = [](double turns_per_second2) {
        IoBench other;
        other.set(0x212008, raw_turns(turns_per_second2));
        other.assign(kPositive, F::kPositiveLimit);
        other.set(0x607A00, 50 * kTurn);
        other.enable(1);
        other.control(0x3F);
        other.run(milliseconds(500));
        const double from = other.demand();
        other.pin(kPositive, true);
        other.run(milliseconds(500));
        return other.demand() - from;
    };
    // Speed 1000 rpm, 16.67 turns/s: v2 / 2a.
    EXPECT_NEAR(way_on(100.0), 16.667 * 16.667 / 200.0 * kTurn, 0.02 * kTurn);
    EXPECT_NEAR(way_on(1000.0), 16.667 * 16.667 / 2000.0 * kTurn, 0.02 * kTurn);
}

TEST_F(LimitSwitch, LetsTheAxisGoTheOtherWay) {
    bench.enable(1);
    bench.pin(kPositive, true);
    move(kTurn);
    bench.run(milliseconds(500));
    EXPECT_NEAR(bench.place(), 0.0, 5.0);
    move(-kTurn);
    bench.run(milliseconds(800));
    EXPECT_NEAR(bench.place(), -1.0 * kTurn, 10.0);
    bench.pin(kNegative, true);
    bench.pin(kPositive, false);
    move(-2 * kTurn);
    bench.run(milliseconds(500));
    EXPECT_NEAR(bench.place(), -1.0 * kTurn, 10.0);
}

TEST_F(LimitSwitch, HoldsTheSpeedModes) {
    for (const int mode : {3, -3, 9}) {
        IoBench other;
        other.assign(kNegative, F::kNegativeLimit);
        other.set(0x60FF00, raw_rpm(-600));
        other.enable(mode);
        other.run(milliseconds(500));
        EXPECT_NEAR(other.rpm(), -600.0, 5.0);
        other.pin(kNegative, true);
        other.run(milliseconds(300));
        EXPECT_NEAR(other.rpm(), 0.0, 1.0) << mode;
        EXPECT_TRUE(other.status(kLimitBit));
        other.set(0x60FF00, raw_rpm(300));
        other.run(milliseconds(500));
        EXPECT_NEAR(other.rpm(), 300.0, 5.0) << mode;
        other.set(0x60FF00, raw_rpm(-300));
        other.pin(kNegative, false);
        other.run(milliseconds(500));
        EXPECT_NEAR(other.rpm(), -300.0, 5.0) << mode;
    }
}

TEST_F(LimitSwitch, HoldsTheTorqueMode) {
    bench.set(0x214004, raw_rpm(500));
    bench.set(0x607100, 200);
    bench.enable(4);
    bench.run(milliseconds(500));
    EXPECT_GT(bench.rpm(), 400.0);
    bench.pin(kPositive, true);
    bench.run(milliseconds(500));
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
    bench.set(0x607100, -200);
    bench.run(milliseconds(500));
    EXPECT_LT(bench.rpm(), -400.0);
}

TEST_F(LimitSwitch, HoldsTheCyclicMode) {
    bench.set(0x60C201, 4);
    bench.enable(8);
    for (int i = 1; i <= 250; ++i) {
        bench.set(0x607A00, i * 200);
        bench.run(milliseconds(4));
        if (i == 100) bench.pin(kPositive, true);
    }
    EXPECT_LT(bench.place(), 100 * 200 + 3000.0);
    const double place = bench.place();
    bench.set(0x607A00, 0);
    bench.run(seconds(2));
    EXPECT_LT(bench.place(), place);
    EXPECT_NEAR(bench.place(), 0.0, 10.0);
}

TEST_F(LimitSwitch, EndsTheMotionToAndFro) {
    bench.enable(-1);
    bench.run(milliseconds(200));
    bench.pin(kPositive, true);
    bench.run(milliseconds(500));
    EXPECT_EQ(bench.get(0x20500D), 0);
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
}

TEST_F(LimitSwitch, CanBeAFaultThatCanBeReset) {
    bench.set(0x201106, 1);
    bench.set(0x201107, 1);
    for (const int input : {kPositive, kNegative}) {
        bench.set(0x60FF00, raw_rpm(input == kPositive ? 600 : -600));
        bench.enable(3);
        bench.run(milliseconds(300));
        bench.pin(input, true);
        bench.run(milliseconds(500));
        EXPECT_EQ(bench.state(), 7);
        EXPECT_EQ(bench.get(0x260200), input == kPositive ? 0x40 : 0x20);
        EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
        // On the switch the fault can be reset, and only the way back is free.
        bench.set(0x260600, 1);
        bench.set(0x60FF00, -bench.get(0x60FF00));
        bench.enable(3);
        bench.run(milliseconds(300));
        EXPECT_GT(std::abs(bench.rpm()), 500.0);
        bench.control(0x00);
        bench.pin(input, false);
        bench.run(seconds(1));
    }
}

TEST_F(LimitSwitch, CanBeLeftAlone) {
    bench.set(0x201106, 2);
    bench.pin(kPositive, true);
    bench.enable(1);
    move(kTurn);
    bench.run(milliseconds(800));
    EXPECT_NEAR(bench.place(), 1.0 * kTurn, 10.0);
    EXPECT_FALSE(bench.status(kLimitBit));
}

TEST(DirectionInput, TurnsSpeedAndTorqueRound) {
    IoBench bench;
    bench.assign(1, F::kInvertDirection);
    bench.set(0x60FF00, raw_rpm(400));
    bench.enable(3);
    bench.pin(1, true);
    bench.run(milliseconds(600));
    EXPECT_NEAR(bench.rpm(), -400.0, 3.0);
    bench.pin(1, false);
    bench.run(milliseconds(600));
    EXPECT_NEAR(bench.rpm(), 400.0, 3.0);
    bench.drive().hold_load(true);
    bench.set(0x607100, 100);
    bench.set(0x606000, 4);
    bench.pin(1, true);
    bench.run(seconds(1));
    EXPECT_NEAR(static_cast<double>(bench.get(0x607700)), -100.0, 5.0);
}

TEST(KviInput, TakesTheIntegralAway) {
    IoBench bench;
    bench.assign(1, F::kKviOff);
    bench.drive().set_load_torque(0.4);
    bench.set(0x60FF00, raw_rpm(500));
    bench.enable(3);
    bench.run(seconds(1));
    EXPECT_NEAR(bench.rpm(), 500.0, 2.0);
    bench.pin(1, true);
    bench.run(seconds(1));
    EXPECT_LT(bench.rpm(), 495.0);
    EXPECT_GT(bench.rpm(), 300.0);
    bench.pin(1, false);
    bench.run(seconds(1));
    EXPECT_NEAR(bench.rpm(), 500.0, 2.0);
}

TEST(MaxCurrentInput, SwitchesTheLimit) {
    IoBench bench;
    bench.set(0x214005, 150);
    bench.assign(1, F::kMaxCurrentSwitch);
    bench.drive().hold_load(true);
    bench.set(0x607100, 1000);
    bench.enable(4);
    bench.run(milliseconds(500));
    EXPECT_GT(bench.get(0x60F60C), 400);
    bench.pin(1, true);
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.get(0x60F60C), 150);
    EXPECT_TRUE(bench.status(kLimitBit));
}

TEST(MultiInput, ClearsAndCapturesThePosition) {
    IoBench bench;
    bench.set(0x201401, 1);
    bench.set(0x201402, 5);
    bench.set(0x201403, 6);
    bench.assign(1, F::kMultifunction0);
    bench.assign(2, F::kMultifunction1);
    bench.assign(3, F::kMultifunction2);
    bench.set(0x607A00, kTurn);
    bench.enable(6);
    bench.control(0x1F);
    EXPECT_EQ(bench.get(0x215006), 2);
    bench.set(0x606000, 1);
    bench.control(0x0F);
    bench.control(0x1F);
    bench.run(milliseconds(200));
    bench.pin(2, true);
    const std::int64_t captured = bench.get(0x201404);
    EXPECT_GT(captured, 100);
    bench.pulse(1);  // not while it turns
    bench.run(milliseconds(1000));
    EXPECT_NEAR(bench.place(), 1.0 * kTurn, 10.0);
    EXPECT_EQ(bench.get(0x201404), captured);
    bench.pulse(1);
    EXPECT_NEAR(bench.place(), 0.0, 5.0);
    bench.pulse(3);
    EXPECT_EQ(bench.get(0x215006), 0);
}

TEST(FastCapture, TakesThePlaceAtItsEdgeWithoutTheFilter) {
    IoBench bench;
    bench.set(0x20100C, 1000);
    bench.set(0x201407, 2);  // the second one at the falling edge
    bench.assign(1, F::kFastCapture1);
    bench.assign(2, F::kFastCapture2);
    bench.set(0x60FF00, raw_rpm(600));
    bench.enable(3);
    bench.run(milliseconds(500));
    bench.drive().set_pin(0, true);
    bench.drive().set_pin(1, true);
    const double first = bench.place();
    bench.run(milliseconds(10));
    EXPECT_NEAR(static_cast<double>(bench.get(0x201405)), first, 15.0);  // 100 counts in 1 ms
    EXPECT_EQ(bench.get(0x201406), 0);
    bench.drive().set_pin(0, false);
    bench.drive().set_pin(1, false);
    const double second = bench.place();
    bench.run(milliseconds(10));
    EXPECT_NEAR(static_cast<double>(bench.get(0x201405)), first, 15.0);
    EXPECT_NEAR(static_cast<double>(bench.get(0x201406)), second, 15.0);
}

}  // namespace
}  // namespace servo::sim::test
