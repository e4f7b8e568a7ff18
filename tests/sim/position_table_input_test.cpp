// The position table and the digital inputs: start and abort, index, conditions; and what it cannot
// run.
#include <gtest/gtest.h>

#include "sim/io_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using F = InputFunction;
using State = PositionTable::State;

constexpr int kStart = 1;
constexpr int kAbort = 2;
constexpr int kCondition0 = 3;
constexpr int kCondition1 = 4;

class TableInputs : public ::testing::Test {
  protected:
    void SetUp() override {
        bench.assign(kStart, F::kStartTable);
        bench.assign(kAbort, F::kAbortTable);
        bench.assign(kCondition0, F::kTableCondition0);
        bench.assign(kCondition1, F::kTableCondition1);
        bench.enable(1);
    }
    IoBench bench;
};

TEST_F(TableInputs, AnEdgeStartsAndAnEdgeAborts) {
    bench.step(0, 10 * kTurn, 600, {});
    bench.pin(kStart, true);
    EXPECT_EQ(bench.table_state(), State::kRunning);
    bench.run(milliseconds(200));
    bench.pin(kAbort, true);
    EXPECT_EQ(bench.table_state(), State::kAborted);
    bench.run(milliseconds(500));
    bench.pulse(kStart);  // not while the abort stands
    EXPECT_EQ(bench.table_state(), State::kAborted);
    EXPECT_FALSE(bench.write(0x311003, 1, 1));
    bench.pin(kAbort, false);
    bench.run(milliseconds(50));
    EXPECT_EQ(bench.table_state(), State::kAborted);
    bench.pulse(kStart);
    EXPECT_EQ(bench.table_state(), State::kRunning);
}

TEST_F(TableInputs, AStartDuringTheRunIsNotLookedAt) {
    bench.step(0, kTurn, 600, {.next = 1});
    bench.step(1, 3 * kTurn, 600, {});
    bench.pulse(kStart);
    ASSERT_TRUE(bench.run_until([&] { return bench.index() == 1; }, seconds(2)));
    bench.pulse(kStart);
    EXPECT_EQ(bench.index(), 1);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.get(0x31100B), 1);
}

TEST_F(TableInputs, IndexInputsChooseTheStartBeforeTheObject) {
    bench.set(0x311002, 9);
    bench.step(9, 900, 600, {});
    for (int i = 0; i < 8; ++i)
        bench.step(i, 1000 * i, 600, {});
    bench.pulse(kStart);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.index(), 9);
    bench.assign(5, F::kTableIndex0);
    bench.assign(6, F::kTableIndex1);
    bench.assign(7, F::kTableIndex2);
    for (const int index : {0, 5, 2, 7, 4}) {
        for (int bit = 0; bit < 3; ++bit)
            bench.pin(5 + bit, (index >> bit & 1) != 0);
        EXPECT_EQ(bench.get(0x311007), index);
        bench.pulse(kStart);
        ASSERT_TRUE(bench.run_until_state(State::kDone));
        EXPECT_EQ(bench.index(), index);
        EXPECT_EQ(bench.demand(), 1000.0 * index);
    }
}

TEST_F(TableInputs, ConditionsAreShown) {
    EXPECT_EQ(bench.get(0x311006), 0);
    bench.pin(kCondition0, true);
    EXPECT_EQ(bench.get(0x311006), 1);
    bench.pin(kCondition1, true);
    EXPECT_EQ(bench.get(0x311006), 3);
    bench.pin(kCondition0, false);
    EXPECT_EQ(bench.get(0x311006), 2);
}

// Which conditions take part, how they join, which inputs are on: does a waiting step begin?
TEST_F(TableInputs, AWaitingStepBeginsByItsConditions) {
    for (int chosen = 0; chosen < 4; ++chosen) {
        for (const bool both : {false, true}) {
            for (int on = 0; on < 4; ++on) {
                bench.pin(kCondition0, (on & 1) != 0);
                bench.pin(kCondition1, (on & 2) != 0);
                bench.step(0, 100, 900,
                           {.conditions = chosen, .both = both, .mode = 1, .start = 1});
                bench.set(0x311003, 1);
                bench.run(milliseconds(100));
                const int met = chosen & on;
                const bool begins = chosen == 0 || (both ? met == chosen : met != 0);
                EXPECT_EQ(bench.table_state(), begins ? State::kDone : State::kWaiting)
                    << chosen << both << on;
                bench.set(0x311003, 0);
            }
        }
    }
}

TEST_F(TableInputs, AStepWaitsAtEachOfItsRepetitions) {
    bench.step(0, 1000, 900, {.conditions = 1, .mode = 1, .start = 1}, 0, 3);
    bench.pulse(kStart);
    for (int run = 1; run <= 3; ++run) {
        bench.run(milliseconds(200));
        EXPECT_EQ(bench.table_state(), State::kWaiting);
        EXPECT_EQ(bench.demand(), 1000.0 * (run - 1));
        bench.pulse(kCondition0);
    }
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.demand(), 3000.0);
}

TEST_F(TableInputs, WithoutAConditionOrWithIgnoreAStepBeginsAtOnce) {
    for (const int start : {0, 1, 2}) {
        const int chosen = start == 0 ? 3 : 0;
        bench.step(0, 100, 900, {.conditions = chosen, .mode = 1, .start = start});
        bench.pulse(kStart);
        bench.run(milliseconds(100));
        EXPECT_EQ(bench.table_state(), State::kDone) << start;
    }
}

TEST_F(TableInputs, AnInterruptingStepBeginsInTheMiddleOfTheOneBefore) {
    bench.step(0, 50 * kTurn, 600, {.next = 1});
    bench.step(1, kTurn, 600, {.conditions = 1, .mode = 1, .start = 2});
    bench.pulse(kStart);
    bench.run(milliseconds(500));
    EXPECT_EQ(bench.index(), 0);
    const double at = bench.demand();
    bench.pin(kCondition0, true);
    EXPECT_EQ(bench.index(), 1);
    EXPECT_GT(bench.rpm(), 550.0);  // no stop between the two
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_NEAR(bench.demand(), at + kTurn, 110.0);  // 100 counts in a millisecond
}

TEST_F(TableInputs, AnInterruptCanTurnTheMotionRound) {
    bench.step(0, 50 * kTurn, 900, {.next = 1});
    bench.step(1, 0, 600, {.conditions = 2, .start = 2});
    bench.pulse(kStart);
    bench.run(milliseconds(300));
    bench.pin(kCondition1, true);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.demand(), 0.0);
}

TEST_F(TableInputs, AnInterruptEndsDelayAndRepetitionsToo) {
    bench.step(0, 1000, 900, {.next = 1, .mode = 1}, 5000, 9);
    bench.step(1, 500, 900, {.conditions = 3, .both = true, .mode = 1, .start = 2});
    bench.pulse(kStart);
    bench.run(milliseconds(500));
    EXPECT_EQ(bench.table_state(), State::kDelay);
    EXPECT_EQ(bench.get(0x311005), 8);
    bench.pin(kCondition0, true);
    EXPECT_EQ(bench.table_state(), State::kDelay);
    bench.pin(kCondition1, true);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.demand(), 1500.0);
}

TEST_F(TableInputs, AnInterruptThatDoesNotComeWaitsBehindTheStep) {
    bench.step(0, 1000, 900, {.next = 1});
    bench.step(1, 2000, 900, {.conditions = 1, .start = 2});
    bench.pulse(kStart);
    bench.run(milliseconds(500));
    EXPECT_EQ(bench.index(), 1);
    EXPECT_EQ(bench.table_state(), State::kWaiting);
    EXPECT_EQ(bench.demand(), 1000.0);
    bench.pin(kCondition0, true);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.demand(), 2000.0);
}

TEST_F(TableInputs, AWaitingStepAbortsAndPauses) {
    bench.step(0, 1000, 900, {.conditions = 1, .start = 1});
    bench.pulse(kStart);
    EXPECT_EQ(bench.table_state(), State::kWaiting);
    bench.set(0x311003, 2);
    bench.pin(kCondition0, true);
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.table_state(), State::kWaiting);
    bench.pin(kCondition0, false);
    bench.set(0x311003, 3);
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.table_state(), State::kWaiting);
    bench.pulse(kAbort);
    EXPECT_EQ(bench.table_state(), State::kAborted);
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.demand(), 0.0);
}

// What cannot be run: the table ends, tells the step, and the drive stays enabled.

class BadStep : public TableInputs {
  protected:
    void expect_error(int index) {
        bench.pulse(kStart);
        bench.run(milliseconds(500));
        EXPECT_EQ(bench.table_state(), State::kAborted);
        EXPECT_EQ(bench.get(0x31100C), index);
        EXPECT_EQ(bench.get(0x31100B), 0);
        EXPECT_EQ(bench.state(), 4);
        EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
    }
};

TEST_F(BadStep, AnEmptyTable) {
    expect_error(0);
}

TEST_F(BadStep, NoSpeedInTheMiddle) {
    bench.step(0, 1000, 900, {.next = 1});
    bench.step(1, 2000, 0, {});
    expect_error(1);
    EXPECT_EQ(bench.demand(), 1000.0);
}

TEST_F(BadStep, RampsThatAreNone) {
    bench.step(0, 1000, 900, {}, 0, 0, 0x80);
    expect_error(0);
    bench.step(0, 1000, 900, {}, 0, 0, 0x0F);
    expect_error(0);
    bench.step(0, 1000, 900, {}, 0, 0, 0x70);
    bench.set(0x310008, 0);
    expect_error(0);
    bench.step(0, 1000, 900, {}, 0, 0, 0x07);
    bench.set(0x310108, -5);
    expect_error(0);
}

TEST_F(BadStep, FieldsWithoutAMeaning) {
    bench.step(0, 1000, 900, {.mode = 3});
    expect_error(0);
    bench.step(0, 1000, 900, {.start = 3});
    expect_error(0);
}

TEST_F(BadStep, AbsoluteWithoutAHome) {
    bench.set(0x31100A, 1);
    bench.step(0, 1000, 900, {.next = 1, .mode = 1});
    bench.step(1, 3000, 900, {});
    expect_error(1);
    EXPECT_EQ(bench.demand(), 1000.0);
    bench.set(0x606000, 6);
    bench.control(0x1F);
    bench.set(0x606000, 1);
    bench.control(0x0F);
    bench.pulse(kStart);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.demand(), 3000.0);
    EXPECT_EQ(bench.get(0x31100C), 255);
}

TEST_F(BadStep, ALimitSwitchInTheWay) {
    bench.assign(8, F::kPositiveLimit);
    bench.step(0, 1000, 900, {.next = 1});
    bench.step(1, 50 * kTurn, 900, {});
    bench.pulse(kStart);
    bench.run(milliseconds(500));
    bench.pin(8, true);
    bench.run(milliseconds(500));
    EXPECT_EQ(bench.table_state(), State::kAborted);
    EXPECT_EQ(bench.get(0x31100C), 1);
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
    bench.step(0, -1000, 900, {.mode = 1});
    bench.pulse(kStart);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
}

TEST_F(BadStep, EveryRegisterEndsSomehow) {
    // Whatever stands in the registers, nothing hangs and nothing crashes.
    std::uint32_t seed = 12345;
    const auto random = [&] { return seed = seed * 1664525U + 1013904223U, seed >> 16U; };
    for (int round = 0; round < 40; ++round) {
        for (std::uint32_t i = 1; i <= 32; ++i) {
            bench.set(0x310200 + i, random() % 2000);
            bench.set(0x310300 + i, random() % 8 == 0 ? 0 : raw_rpm(500));
            bench.set(0x310400 + i, random() % 20);
            bench.set(0x310500 + i, random());
            bench.set(0x310600 + i, random() % 3);
            bench.set(0x310700 + i, random() % 120);
        }
        bench.pulse(kStart);
        for (int i = 0; i < 10; ++i) {
            bench.pin(kCondition0, random() % 2 == 0);
            bench.pin(kCondition1, random() % 2 == 0);
            bench.run(milliseconds(20));
            EXPECT_GE(bench.index(), 0);
            EXPECT_LT(bench.index(), 32);
        }
        bench.pulse(kAbort);
        EXPECT_NE(bench.table_state(), State::kRunning);
    }
}

}  // namespace
}  // namespace servo::sim::test
