// The position table on the whole drive: sequence, modes, ramps, delays, repetitions, its end.
#include <gtest/gtest.h>

#include "sim/io_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using State = PositionTable::State;

class TableRun : public ::testing::Test {
  protected:
    void SetUp() override { bench.enable(1); }

    // What the current index was, one after another, until the table ends.
    std::vector<int> indexes(microseconds limit = seconds(20)) {
        std::vector<int> seen;
        bench.run_until(
            [&] {
                if (seen.empty() || seen.back() != bench.index()) seen.push_back(bench.index());
                const State state = bench.table_state();
                return state == State::kDone || state == State::kAborted;
            },
            limit);
        return seen;
    }

    IoBench bench;
};

TEST_F(TableRun, StepsFollowTheirLinks) {
    bench.step(0, kTurn, 900, {.next = 7});
    bench.step(7, 3 * kTurn, 900, {.next = 31});
    bench.step(31, 2 * kTurn, 900, {.next = 2});
    bench.step(2, -kTurn, 900, {});
    EXPECT_EQ(bench.table_state(), State::kIdle);
    EXPECT_EQ(bench.get(0x31100C), 255);
    bench.start_table();
    EXPECT_EQ(bench.get(0x311003), 1);
    EXPECT_EQ(indexes(), (std::vector<int>{0, 7, 31, 2}));
    EXPECT_EQ(bench.table_state(), State::kDone);
    EXPECT_EQ(bench.get(0x311003), 0);
    EXPECT_EQ(bench.get(0x31100B), 1);
    EXPECT_EQ(bench.demand(), -1.0 * kTurn);
    bench.run(milliseconds(100));
    EXPECT_NEAR(bench.place(), -1.0 * kTurn, 10.0);
}

TEST_F(TableRun, BeginsWithTheStartIndex) {
    bench.step(5, kTurn, 900, {});
    bench.set(0x311002, 5);
    bench.start_table();
    EXPECT_EQ(indexes(), (std::vector<int>{5}));
    EXPECT_EQ(bench.demand(), 1.0 * kTurn);
}

TEST_F(TableRun, ModesCountFromZeroFromTheDemandAndFromWhereTheAxisIs) {
    // A load that the position loop alone does not bear keeps the axis off its demand.
    bench.set(0x60F902, 0);
    bench.drive().set_load_torque(0.3);
    bench.run(milliseconds(500));
    const double off = bench.place() - bench.demand();
    ASSERT_LT(off, -5.0);
    bench.step(0, 2 * kTurn, 900, {.next = 1}, 300);
    bench.step(1, 1000, 900, {.next = 2, .mode = 1}, 300);
    bench.step(2, 1000, 900, {.mode = 2});
    bench.start_table();
    ASSERT_TRUE(bench.run_until(
        [&] { return bench.index() == 1 && bench.table_state() == State::kDelay; }, seconds(3)));
    EXPECT_EQ(bench.demand(), 2.0 * kTurn + 1000);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_NEAR(bench.demand(), 2.0 * kTurn + 2000 + off, 2.0);
}

TEST_F(TableRun, EachStepHasItsSpeedAndItsRamps) {
    bench.set(0x310003, raw_turns(20));
    bench.set(0x310106, raw_turns(40));
    bench.step(0, 20 * kTurn, 600, {}, 0, 0, 0x25);
    bench.start_table();
    // 10 turns/s at 20 and 40 turns/s2: 0.5 s up, 0.25 s down, 3.75 turns on both; 1.625 s between.
    bench.run(milliseconds(250));
    EXPECT_NEAR(bench.rpm(), 300.0, 15.0);
    bench.run(milliseconds(400));
    EXPECT_NEAR(bench.rpm(), 600.0, 3.0);
    const microseconds begun = bench.now();
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    const auto took = static_cast<double>((bench.now() - begun).count()) * 1e-6 + 0.65;
    EXPECT_NEAR(took, 0.75 + (20.0 - 3.75) / 10.0, 0.005);
}

TEST_F(TableRun, ANegativeSpeedIsItsMagnitude) {
    bench.step(0, kTurn, -600, {});
    bench.start_table();
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.demand(), 1.0 * kTurn);
}

TEST_F(TableRun, NoStepIsFasterThanTheDriveMay) {
    bench.set(0x607F00, raw_rpm(300));
    bench.step(0, 5 * kTurn, 3000, {});
    bench.start_table();
    bench.run(milliseconds(500));
    EXPECT_NEAR(bench.rpm(), 300.0, 2.0);
}

TEST_F(TableRun, ADelayComesBehindItsStep) {
    bench.step(0, kTurn, 900, {.next = 1}, 250);
    bench.step(1, 0, 900, {});
    bench.start_table();
    ASSERT_TRUE(bench.run_until_state(State::kDelay));
    const microseconds begun = bench.now();
    EXPECT_EQ(bench.index(), 0);
    EXPECT_EQ(bench.demand(), 1.0 * kTurn);
    ASSERT_TRUE(bench.run_until_state(State::kRunning));
    EXPECT_NEAR(static_cast<double>((bench.now() - begun).count()), 250e3, 1000.0);
    EXPECT_EQ(bench.index(), 1);
}

TEST_F(TableRun, LoopsSayHowOftenAStepIsMade) {
    const std::pair<int, double> cases[] = {{0, 1.0}, {1, 1.0}, {2, 2.0}, {5, 5.0}};
    for (const auto& [loops, runs] : cases) {
        const double from = bench.demand();
        bench.step(0, 500, 900, {.mode = 1}, 10, loops);
        bench.start_table();
        std::vector<std::int64_t> left;
        bench.run_until(
            [&] {
                const std::int64_t now = bench.get(0x311005);
                if (bench.table_state() == State::kDelay && (left.empty() || left.back() != now)) {
                    left.push_back(now);
                }
                return bench.table_state() == State::kDone;
            },
            seconds(5));
        EXPECT_EQ(bench.demand() - from, 500.0 * runs) << loops;
        ASSERT_EQ(left.size(), static_cast<std::size_t>(runs));
        EXPECT_EQ(left.front(), static_cast<std::int64_t>(runs) - 1);
        EXPECT_EQ(left.back(), 0);
    }
    EXPECT_EQ(bench.get(0x31100B), 4);
    bench.set(0x31100B, 0);
    EXPECT_EQ(bench.get(0x31100B), 0);
}

TEST_F(TableRun, AStepThatLeadsToItselfRunsUntilItIsAborted) {
    bench.step(3, 100, 900, {.next = 3, .mode = 1});
    bench.set(0x311002, 3);
    bench.start_table();
    bench.run(seconds(2));
    EXPECT_EQ(bench.table_state(), State::kRunning);
    EXPECT_GT(bench.demand(), 1000.0);
    bench.set(0x311003, 0);
    EXPECT_EQ(bench.table_state(), State::kAborted);
}

TEST_F(TableRun, AnAbortStopsWithItsOwnRamp) {
    bench.set(0x311008, raw_turns(50));
    bench.step(0, 100 * kTurn, 1200, {.next = 1});
    bench.start_table();
    bench.run(milliseconds(500));
    const double from = bench.demand();
    bench.set(0x311003, 0);
    bench.run(seconds(1));
    // 20 turns/s at 50 turns/s2.
    EXPECT_NEAR(bench.demand() - from, 4.0 * kTurn, 0.02 * kTurn);
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
    EXPECT_EQ(bench.table_state(), State::kAborted);
    EXPECT_EQ(bench.get(0x31100B), 0);
    EXPECT_EQ(bench.get(0x31100C), 255);
}

TEST_F(TableRun, APauseHoldsMoveAndDelay) {
    bench.step(0, 10 * kTurn, 600, {.next = 1}, 500);
    bench.step(1, 0, 600, {});
    bench.start_table();
    bench.run(milliseconds(300));
    bench.set(0x311003, 2);
    EXPECT_EQ(bench.get(0x311003), 2);
    bench.run(milliseconds(500));
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
    EXPECT_EQ(bench.table_state(), State::kRunning);
    EXPECT_LT(bench.demand(), 5.0 * kTurn);
    bench.set(0x311003, 3);
    ASSERT_TRUE(bench.run_until_state(State::kDelay));
    EXPECT_EQ(bench.demand(), 10.0 * kTurn);
    bench.run(milliseconds(200));
    bench.set(0x311003, 2);
    bench.run(seconds(3));
    EXPECT_EQ(bench.table_state(), State::kDelay);
    bench.set(0x311003, 3);
    bench.run(milliseconds(290));
    EXPECT_EQ(bench.table_state(), State::kDelay);
    bench.run(milliseconds(20));
    EXPECT_EQ(bench.index(), 1);
}

TEST_F(TableRun, APauseOutlivesThatThePlaceIsCalledSomethingElse) {
    bench.step(0, 4 * kTurn, 600, {.mode = 1});
    bench.start_table();
    bench.run(milliseconds(200));
    bench.set(0x311003, 2);
    bench.run(milliseconds(500));
    const double left = 4.0 * kTurn - bench.demand();
    const double off = bench.demand() - bench.place();
    ASSERT_TRUE(bench.write(0x212006, 1, 1));
    bench.set(0x311003, 3);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_NEAR(bench.demand(), left + off, 2.0);
}

TEST_F(TableRun, CommandsThatMeanNothingNowAreRefused) {
    bench.step(0, kTurn, 600, {});
    EXPECT_FALSE(bench.write(0x311003, 2, 1));
    EXPECT_EQ(bench.refusal(), 0x08000022U);
    EXPECT_FALSE(bench.write(0x311003, 3, 1));
    EXPECT_TRUE(bench.write(0x311003, 0, 1));
    EXPECT_TRUE(bench.write(0x311003, 1, 1));
    EXPECT_EQ(bench.read(0x311003), 1U);
    EXPECT_FALSE(bench.write(0x311003, 1, 1));
    EXPECT_FALSE(bench.write(0x311003, 3, 1));
    EXPECT_FALSE(bench.write(0x311003, 7, 1));
    EXPECT_FALSE(bench.write(0x311001, 4, 1));
}

TEST_F(TableRun, NeedsItsModeThePowerAndTheEnable) {
    bench.step(0, kTurn, 600, {});
    bench.set(0x311009, 0);
    EXPECT_FALSE(bench.write(0x311003, 1, 1));
    bench.set(0x311009, 1);
    bench.set(0x606000, 3);
    EXPECT_FALSE(bench.write(0x311003, 1, 1));
    bench.set(0x606000, 1);
    bench.control(0x06);
    EXPECT_FALSE(bench.write(0x311003, 1, 1));
    bench.control(0x0F);
    EXPECT_TRUE(bench.write(0x311003, 1, 1));
}

TEST_F(TableRun, EndsWithPowerModeQuickStopAndFault) {
    const auto ends = [&](const auto& what) {
        bench.enable(1);
        bench.step(0, 10 * kTurn, 600, {.next = 0, .mode = 1});
        bench.start_table();
        bench.run(milliseconds(200));
        EXPECT_EQ(bench.table_state(), State::kRunning);
        what();
        EXPECT_EQ(bench.table_state(), State::kAborted);
        bench.run(seconds(1));
        EXPECT_NEAR(bench.rpm(), 0.0, 2.0);
    };
    ends([&] { bench.control(0x06); });
    ends([&] { bench.control(0x07); });  // on a ramp, still enabled
    ends([&] { bench.control(0x02); });
    ends([&] { bench.set(0x606000, 3); });
    ends([&] { bench.drive().provoke_fault(0x0200); });
}

TEST_F(TableRun, AStopThatIsCalledOffDoesNotBringItBack) {
    bench.step(0, 10 * kTurn, 600, {.next = 1});
    bench.step(1, 0, 600, {});
    bench.start_table();
    bench.run(milliseconds(200));
    bench.control(0x07);
    bench.run(milliseconds(2));
    bench.control(0x0F);
    bench.run(seconds(1));
    EXPECT_EQ(bench.table_state(), State::kAborted);
    EXPECT_EQ(bench.index(), 0);
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
}

TEST_F(TableRun, AHaltHoldsItAndItsTimes) {
    bench.step(0, 5 * kTurn, 600, {.next = 1}, 300);
    bench.step(1, 0, 600, {});
    bench.start_table();
    bench.run(milliseconds(200));
    bench.control(0x10F);
    bench.run(seconds(2));
    EXPECT_EQ(bench.index(), 0);
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
    bench.control(0x0F);
    ASSERT_TRUE(bench.run_until_state(State::kDelay));
    bench.control(0x10F);
    bench.run(seconds(2));
    EXPECT_EQ(bench.table_state(), State::kDelay);
    bench.control(0x0F);
    ASSERT_TRUE(bench.run_until_state(State::kDone));
}

TEST_F(TableRun, SetPointsOfTheControlWordAreNotTakenMeanwhile) {
    bench.step(0, 2 * kTurn, 600, {});
    bench.start_table();
    bench.run(milliseconds(50));
    bench.set(0x607A00, -5 * kTurn);
    bench.control(0x3F);
    bench.run(milliseconds(2));
    EXPECT_FALSE(bench.status(0x1000));
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.demand(), 2.0 * kTurn);
    bench.control(0x0F);
    bench.control(0x3F);
    bench.run(seconds(1));
    EXPECT_NEAR(bench.place(), -5.0 * kTurn, 10.0);
}

TEST_F(TableRun, TargetsFollowThePolarity) {
    bench.set(0x607E00, 0x80);
    bench.step(0, 2 * kTurn, 600, {.next = 1});
    bench.step(1, 500, 600, {.mode = 1});
    bench.start_table();
    ASSERT_TRUE(bench.run_until_state(State::kDone));
    EXPECT_EQ(bench.demand(), -2.0 * kTurn - 500);
    EXPECT_EQ(bench.get(0x606200), 2 * kTurn + 500);
}

TEST_F(TableRun, AnEntryThatIsChangedMeanwhileCountsAtItsNextBegin) {
    bench.step(0, kTurn, 600, {.next = 1});
    bench.step(1, 2 * kTurn, 600, {});
    bench.start_table();
    bench.run(milliseconds(20));
    bench.set(0x310201, 9 * kTurn);
    bench.set(0x310202, 3 * kTurn);
    EXPECT_EQ(indexes(), (std::vector<int>{0, 1}));
    EXPECT_EQ(bench.demand(), 3.0 * kTurn);
}

TEST(TableTime, TheRunDoesNotDependOnHowTimeIsCut) {
    const auto run = [](microseconds piece) {
        IoBench bench;
        bench.assign(1, InputFunction::kTableCondition0);
        bench.enable(1);
        bench.step(0, 3000, 700, {.next = 1}, 33, 2);
        bench.step(1, 1000, 500, {.next = 0, .conditions = 1, .mode = 2, .start = 2}, 7);
        bench.start_table();
        for (int i = 0; i < 6; ++i) {
            bench.drive().pulse_pin(0, milliseconds(3));
            for (microseconds t{0}; t < milliseconds(120); t += piece)
                bench.run(piece);
        }
        return std::tuple(bench.get(0x60FC00), bench.get(0x606300), bench.index(),
                          bench.get(0x311004));
    };
    const auto fine = run(microseconds(20));
    EXPECT_EQ(fine, run(milliseconds(1)));
    EXPECT_EQ(fine, run(milliseconds(120)));
}

}  // namespace
}  // namespace servo::sim::test
