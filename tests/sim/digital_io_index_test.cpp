// Inputs that choose speeds and positions from tables.
#include <gtest/gtest.h>

#include "sim/io_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using F = InputFunction;

class DinSpeed : public ::testing::Test {
  protected:
    void SetUp() override {
        for (int i = 0; i < 8; ++i)
            bench.set(0x202001 + static_cast<std::uint32_t>(i), raw_rpm(100.0 * i));
        bench.assign(1, F::kSpeedIndex0);
        bench.assign(2, F::kSpeedIndex1);
        bench.assign(3, F::kSpeedIndex2);
        bench.assign(4, F::kInvertDirection);
        bench.set(0x213001, 2);
        bench.set(0x202009, raw_turns(200));
        bench.set(0x20200A, raw_turns(200));
    }
    IoBench bench;
};

TEST_F(DinSpeed, EveryIndexHasItsSpeed) {
    bench.enable(3);
    for (int index = 0; index < 8; ++index) {
        for (int bit = 0; bit < 3; ++bit)
            bench.drive().set_pin(bit, (index >> bit & 1) != 0);
        bench.run(milliseconds(400));
        EXPECT_EQ(bench.get(0x20200B), index);
        EXPECT_EQ(bench.get(0x202012), raw_rpm(100.0 * index));
        EXPECT_NEAR(bench.rpm(), 100.0 * index, 2.0);
    }
}

TEST_F(DinSpeed, AnIndexCountsAfterItsDelay) {
    bench.set(0x20200F, 20);
    bench.pin(1, true);
    bench.run(milliseconds(10));
    bench.pin(2, true);
    bench.run(milliseconds(15));
    EXPECT_EQ(bench.get(0x20200B), 0);  // 1 never counted
    bench.run(milliseconds(10));
    EXPECT_EQ(bench.get(0x20200B), 3);
}

TEST_F(DinSpeed, DirectionCanBeTurnedRoundOrNot) {
    bench.pin(1, true);
    bench.pin(4, true);
    bench.run(milliseconds(10));
    EXPECT_EQ(bench.get(0x202012), -raw_rpm(100));
    bench.set(0x202010, 0);
    EXPECT_EQ(bench.get(0x202012), raw_rpm(100));
}

TEST_F(DinSpeed, WithoutIndexInputsItIsTheFirstOrNone) {
    bench.set(0x202001, raw_rpm(50));
    for (int input = 1; input <= 3; ++input)
        bench.assign_value(input, 0);
    EXPECT_EQ(bench.get(0x202012), raw_rpm(50));
    bench.set(0x20200C, 1);
    EXPECT_EQ(bench.get(0x202012), 0);
}

TEST_F(DinSpeed, UsesItsOwnRampsAndCanStopAtOnce) {
    bench.set(0x20200A, raw_turns(2));
    bench.set(0x202004, raw_rpm(600));
    bench.enable(3);
    bench.pin(1, true);
    bench.pin(2, true);
    bench.run(seconds(1));
    ASSERT_NEAR(bench.rpm(), 600.0, 2.0);
    bench.pin(1, false);
    bench.pin(2, false);
    bench.run(milliseconds(500));
    EXPECT_GT(bench.rpm(), 400.0);  // 10 turns/s at 2 turns/s2
    bench.set(0x202011, 1);
    bench.run(milliseconds(200));
    EXPECT_NEAR(bench.rpm(), 0.0, 2.0);
}

class DinPosition : public ::testing::Test {
  protected:
    void SetUp() override {
        for (int i = 0; i < 8; ++i) {
            bench.set(0x202101 + static_cast<std::uint32_t>(i), kTurn * i);
            bench.set(0x202109 + static_cast<std::uint32_t>(i), raw_rpm(600));
        }
        bench.set(0x202111, raw_turns(500));
        bench.set(0x202112, raw_turns(500));
        bench.assign(1, F::kPositionIndex0);
        bench.assign(2, F::kPositionIndex1);
        bench.assign(3, F::kPositionIndex2);
        bench.assign(4, F::kActivateCommand);
        bench.set(0x201408, 1);
        bench.enable(1);
    }
    void choose(int index) {
        for (int bit = 0; bit < 3; ++bit)
            bench.drive().set_pin(bit, (index >> bit & 1) != 0);
        bench.run(milliseconds(5));
    }
    IoBench bench;
};

TEST_F(DinPosition, TheEdgeOfActivateStartsTheMove) {
    for (const int index : {3, 7, 0}) {
        choose(index);
        EXPECT_EQ(bench.get(0x202114), index);
        EXPECT_EQ(bench.get(0x20211A), kTurn * index);
        bench.pulse(4);
        bench.run(milliseconds(1200));
        EXPECT_NEAR(bench.place(), 1.0 * kTurn * index, 10.0);
        EXPECT_TRUE(bench.status(0x400));
    }
}

TEST_F(DinPosition, ANewIndexCanStartItToo) {
    bench.set(0x202115, 1);
    choose(2);
    bench.run(milliseconds(800));
    EXPECT_NEAR(bench.place(), 2.0 * kTurn, 10.0);
}

TEST_F(DinPosition, CanBeADistance) {
    bench.set(0x202113, 1);
    choose(1);
    for (int i = 0; i < 3; ++i) {
        bench.pulse(4);
        bench.run(milliseconds(500));
    }
    EXPECT_NEAR(bench.place(), 3.0 * kTurn, 10.0);
}

TEST_F(DinPosition, ATriggerDuringAMoveDoesWhatItIsTold) {
    const std::pair<int, double> cases[] = {{0, 4.0}, {1, 1.0}, {2, 1.0}};
    for (const auto& [interruption, end] : cases) {
        bench.set(0x202117, interruption);
        choose(4);
        bench.pulse(4);
        bench.run(milliseconds(100));
        choose(1);
        bench.pulse(4);
        double most = 0.0;
        for (int i = 0; i < 150; ++i) {
            bench.run(milliseconds(10));
            most = std::max(most, bench.place());
        }
        EXPECT_NEAR(bench.place(), end * kTurn, 10.0) << interruption;
        if (interruption == 1) {
            EXPECT_LT(most, 3.0 * kTurn);
        }
        if (interruption == 2) {
            EXPECT_NEAR(most, 4.0 * kTurn, 30.0);
        }
        bench.set(0x202117, 1);
        choose(0);
        bench.pulse(4);
        bench.run(milliseconds(1200));
    }
}

TEST_F(DinPosition, AnAbsoluteOneCanNeedAHome) {
    bench.set(0x202119, 1);
    choose(2);
    bench.pulse(4);
    bench.run(milliseconds(800));
    EXPECT_NEAR(bench.place(), 0.0, 10.0);
}

TEST(ActivateInput, CanStartAMoveLikeTheControlWord) {
    IoBench bench;
    bench.set(0x201408, 0);
    bench.assign(4, F::kActivateCommand);
    bench.set(0x607A00, kTurn);
    bench.enable(1);
    bench.pulse(4);
    bench.run(milliseconds(800));
    EXPECT_NEAR(bench.place(), 1.0 * kTurn, 10.0);
}

}  // namespace
}  // namespace servo::sim::test
