// Homing and the rest of the drive: what it shows, what limits it, what it leaves behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "sim/homing_runs.h"

namespace servo::sim::test {
namespace {

TEST(HomingStatus, TheThreeBitsTellHowFarItIs) {
    HomingBench bench(usual());
    bench.enable(6);
    EXPECT_EQ(bits(bench), kReached) << "not started";
    bench.set(0x609800, 24);
    bench.set(0x607C00, 50000);
    bench.control(0x1F);
    std::vector<std::int64_t> seen;
    ASSERT_TRUE(bench.run_until(
        [&] {
            if (seen.empty() || seen.back() != bits(bench)) seen.push_back(bits(bench));
            return seen.back() == (kReached | kAttained);
        },
        seconds(60)));
    EXPECT_EQ(seen, (std::vector<std::int64_t>{0, kAttained, kReached | kAttained}));
    EXPECT_EQ(bench.value(0x215006), 2);
}

TEST(HomingStatus, AnErrorShowsWhileItStopsAndAfterwards) {
    HomingBench bench(usual());
    bench.set(0x215005, 1);
    bench.set(0x609A00, 1000);
    bench.begin(24);
    std::vector<std::int64_t> seen;
    ASSERT_TRUE(bench.run_until(
        [&] {
            if (seen.empty() || seen.back() != bits(bench)) seen.push_back(bits(bench));
            return seen.back() == (kReached | kError);
        },
        seconds(60)));
    EXPECT_EQ(seen, (std::vector<std::int64_t>{0, kError, kReached | kError}));
}

TEST(HomingStatus, TheStepsAreShown) {
    const auto steps = [](int method, double start) {
        HomingBench bench(usual(start));
        bench.begin(method);
        std::vector<std::int64_t> seen;
        bench.run_until(
            [&] {
                const auto step = bench.value(0x215007);
                if (seen.empty() || seen.back() != step) seen.push_back(step);
                return step == 0;
            },
            seconds(60));
        return seen;
    };
    using Steps = std::vector<std::int64_t>;
    EXPECT_EQ(steps(1, 0.0), (Steps{1, 2, 3, 5, 0}));
    EXPECT_EQ(steps(24, 0.0), (Steps{1, 2, 1, 5, 0}));
    EXPECT_EQ(steps(23, 4.0), (Steps{2, 5, 0}));
    EXPECT_EQ(steps(8, 0.0), (Steps{1, 3, 5, 0}));
    EXPECT_EQ(steps(33, 0.5), (Steps{3, 5, 0}));
    EXPECT_EQ(steps(-18, 0.0), (Steps{4, 5, 0}));
    EXPECT_EQ(steps(-21, 0.0), (Steps{4, 3, 5, 0}));
}

TEST(HomingSpeed, SearchesWithOneAndComesBackWithTheOther) {
    HomingBench bench(usual());
    bench.set(0x609901, std::llround(300 * kRpm));
    bench.set(0x609902, std::llround(20 * kRpm));
    bench.begin(17);
    bench.run(seconds(1));
    EXPECT_NEAR(rpm_of(bench), -300.0, 3.0);
    ASSERT_TRUE(bench.run_until([&] { return bench.value(0x215007) == 2; }, seconds(60)));
    bench.run(milliseconds(200));
    EXPECT_NEAR(rpm_of(bench), 20.0, 2.0);
    EXPECT_NEAR(bench.finish().home, -20.0, 2.0 / kTurn);
}

TEST(HomingSpeed, TakesItsOwnAcceleration) {
    HomingBench bench(usual());
    bench.set(0x609A00, 164);  // one turn/s2
    bench.begin(17);
    bench.run(seconds(1));
    EXPECT_NEAR(rpm_of(bench), -60.0, 3.0);
}

TEST(HomingSpeed, NoSpeedIsAnErrorAtOnce) {
    for (const std::uint32_t key : {0x609901U, 0x609902U}) {
        HomingBench bench(usual());
        bench.set(key, 0);
        bench.begin(17);
        bench.run(milliseconds(100));
        EXPECT_EQ(bench.value(0x215006), 3);
    }
}

TEST(HomingOffset, RunsToCoordinateZeroOrStaysAtTheTrigger) {
    HomingBench zero(usual());
    zero.set(0x607C00, 15000);
    Outcome out = zero.home(24);
    EXPECT_NEAR(out.home, 3.3, 2.0 / kTurn);
    EXPECT_NEAR(out.place, 3.3 - 1.5, 12.0 / kTurn);
    zero.run(seconds(1));
    EXPECT_NEAR(static_cast<double>(zero.value(0x606300)), 0.0, 3.0);

    HomingBench trigger(usual());
    trigger.set(0x607C00, 15000);
    trigger.set(0x215004, 1);
    out = trigger.home(24);
    EXPECT_NEAR(out.place, 3.3, 12.0 / kTurn);
    trigger.run(seconds(1));
    EXPECT_NEAR(static_cast<double>(trigger.value(0x606300)), 15000.0, 3.0);
}

TEST(HomingOffset, IsACoordinateOfTheUserAlsoWhenThatIsTurnedRound) {
    HomingBench bench(usual());
    bench.set(0x607E00, 0x80);
    bench.set(0x607C00, 15000);
    bench.set(0x215004, 1);
    EXPECT_NEAR(bench.home(24).place, 3.3, 12.0 / kTurn) << "switches stand where they stand";
    bench.run(seconds(1));
    EXPECT_NEAR(static_cast<double>(bench.value(0x606400)), 15000.0, 3.0);
    EXPECT_NEAR(static_cast<double>(bench.value(0x606300)), -15000.0, 3.0);
}

TEST(HomingIndex, TheBlindRangeSkipsAPulseThatIsTooNear) {
    // The edge of the limit switch is at -20; the pulse behind it 0.1, 0.3 or 0.6 turns away.
    struct Row {
        double start;
        int blind;
        double distance;
    };
    for (const Row& row : {Row{0.1, 0, 0.1}, Row{0.1, 1, 1.1}, Row{0.1, 2, 1.1}, Row{0.3, 1, 0.3},
                           Row{0.3, 2, 1.3}, Row{0.6, 2, 0.6}}) {
        HomingBench bench(usual(row.start));
        bench.set(0x215003, row.blind);
        const Outcome out = bench.home(1);
        EXPECT_NEAR(out.home + row.start, -20.0 + row.distance, 2.0 / kTurn) << row.start;
        EXPECT_NEAR(static_cast<double>(bench.value(0x215008)), row.distance * kTurn, 2.0);
    }
}

TEST(HomingLimit, TheTimeOutEndsTheSearch) {
    HomingBench bench(std::nullopt);  // turns for ever
    bench.set(0x215005, 3);
    bench.begin(24);
    bench.run(milliseconds(2900));
    EXPECT_EQ(bench.value(0x215006), 1);
    expect_lost(bench, "time-out");
    EXPECT_NEAR(static_cast<double>(bench.value(0x21500E)), 3000.0, 200.0);
}

TEST(HomingLimit, TheTravelEndsTheSearch) {
    HomingBench bench(std::nullopt);
    bench.set(0x21500C, static_cast<std::int64_t>(5 * kTurn));
    bench.begin(17);
    expect_lost(bench, "travel");
    EXPECT_NEAR(bench.place(), -5.0, 0.2);
}

// No input carries the function, so the axis has no such switch: it runs into its end.
TEST(HomingLimit, AStopThatNobodyExpectedIsAnError) {
    for (const int method : {1, 17, 24, 27}) {
        HomingBench bench(usual(4.0));
        for (const std::uint32_t key : {0x201007U, 0x201008U, 0x201009U})
            bench.set(key, 0);
        bench.begin(method);
        expect_lost(bench, "stop");
        EXPECT_NEAR(std::abs(bench.place() + 4.0), 22.0, 0.01) << method;
        bench.run(seconds(1));
        EXPECT_LT(std::abs(bench.value(0x60F60C)), 60) << "it presses no longer";
    }
}

TEST(HomingLimit, WithoutTheHomeSwitchBothLimitsEndIt) {
    HomingBench bench(axis_with_home({}, {}));
    bench.begin(24);
    expect_lost(bench, "no home switch");
    EXPECT_NEAR(bench.place(), -20.0, 0.1) << "it has turned round once";
}

TEST(HomingLimit, MethodsThatDoNotUseALimitSwitchStopAtIt) {
    for (const auto& [method, end] : {std::pair{19, 20.0},
                                      {20, 20.0},
                                      {3, 20.0},
                                      {4, 20.0},
                                      {21, -20.0},
                                      {22, -20.0},
                                      {5, -20.0},
                                      {6, -20.0}}) {
        HomingBench bench(axis_with_home({}, {}));
        bench.begin(method);
        expect_lost(bench, "limit");
        EXPECT_NEAR(bench.place(), end, 0.1) << method;
    }
}

TEST(HomingLimit, TheCurrentOfARunIsLimitedAndFreeAgainAfterwards) {
    HomingBench bench(usual());
    bench.set(0x215002, 100);
    bench.set(0x609A00, 1000000);
    bench.begin(17);
    std::int64_t most = 0;
    bench.run_until(
        [&] {
            most = std::max(most, std::abs(bench.value(0x60F60C)));
            return bench.value(0x215006) != 1;
        },
        seconds(60));
    EXPECT_EQ(bench.value(0x215006), 2);
    EXPECT_EQ(most, 100);
    bench.set(0x606000, -3);
    bench.set(0x60FF00, std::llround(2000 * kRpm));
    bench.run(milliseconds(2));
    EXPECT_GT(bench.value(0x60F60C), 500);
}

TEST(HomingSwitch, NormallyClosedOnesWork) {
    HomingBench bench(usual());
    bench.set(0x201002, 0xFF & ~0x70);
    EXPECT_NEAR(bench.home(24).home, 3.3, 2.0 / kTurn);
}

TEST(HomingSwitch, ASimulatedInputCounts) {
    HomingBench bench(axis_with_home({}, {}));
    bench.begin(24);
    bench.run(seconds(1));
    bench.set(0x201001, 0x40);  // input 7
    ASSERT_TRUE(bench.run_until([&] { return bench.value(0x215007) == 2; }, milliseconds(2)));
    bench.run(milliseconds(500));
    bench.set(0x201001, 0);
    bench.run(milliseconds(500));
    bench.set(0x201001, 0x40);
    const double here = bench.place();
    EXPECT_NEAR(bench.finish().home, here, 5.0 / kTurn);
}

TEST(HomingSwitch, TheFilterOfTheInputsDoesNotMoveTheHome) {
    HomingBench bench(usual());
    bench.set(0x609902, std::llround(100 * kRpm));
    EXPECT_NEAR(bench.home(23).home, 3.3, 3.0 / kTurn);
}

TEST(HomingSwitch, TheSameRunTwiceGivesTheSameCount) {
    HomingBench one(usual(0.37));
    HomingBench two(usual(0.37));
    const Outcome first = one.home(24);
    const Outcome second = two.home(24);
    EXPECT_EQ(first.home, second.home);
    EXPECT_EQ(one.value(0x21500E), two.value(0x21500E));
}

TEST(Rail, WithoutOneTheAxisTurnsForEver) {
    HomingBench bench(std::nullopt);
    bench.set(0x60FF00, std::llround(3000 * kRpm));
    bench.enable(3);
    bench.run(seconds(2));
    EXPECT_GT(bench.place(), 60.0);
    EXPECT_EQ(bench.drive().input_pins(), 0);
}

TEST(Rail, ItsSwitchesStopTheMotorInEveryMode) {
    HomingBench bench(usual());
    bench.set(0x60FF00, std::llround(300 * kRpm));
    bench.enable(3);
    bench.run(seconds(6));
    EXPECT_GT(bench.place(), 20.0);
    EXPECT_LT(bench.place(), 20.5);
    EXPECT_EQ(bench.drive().input_pins(), 0x10);
}

TEST(Rail, ItsEndHoldsAMotorThatPushes) {
    HomingBench bench(usual());
    for (const std::uint32_t key : {0x201007U, 0x201008U, 0x201009U})
        bench.set(key, 0);
    bench.set(0x60FF00, std::llround(-300 * kRpm));
    bench.set(0x607300, 300);
    bench.enable(3);
    bench.run(seconds(8));
    EXPECT_NEAR(bench.place(), -22.0, 0.01);
    EXPECT_NEAR(rpm_of(bench), 0.0, 1.0);
}

TEST(Rail, ItsTextIsRead) {
    const auto rail = parse_rail("neg=-1.5,pos=20,home=3:5,stop=22");
    ASSERT_TRUE(rail);
    EXPECT_EQ(rail->negative_limit, -1.5);
    EXPECT_EQ(rail->positive_limit, 20.0);
    EXPECT_EQ(rail->home_from, 3.0);
    EXPECT_EQ(rail->home_to, 5.0);
    EXPECT_EQ(rail->lowest, -22.0);
    EXPECT_EQ(rail->highest, 22.0);
    EXPECT_EQ(parse_rail("default"), parse_rail("neg=-20.3,pos=20.3,home=3.4:5.6,stop=22.4"));
    const auto some = parse_rail("stop=-3:8.25");
    ASSERT_TRUE(some);
    EXPECT_EQ(some->lowest, -3.0);
    EXPECT_EQ(some->highest, 8.25);
    EXPECT_FALSE(some->positive_limit);
    EXPECT_FALSE(some->home_from);
}

TEST(Rail, OtherTextsAreNone) {
    for (const char* text : {"",
                             ",",
                             "neg",
                             "neg=",
                             "neg=x",
                             "neg=1:2",
                             "pos=1:2",
                             "home=3",
                             "home=5:3",
                             "home=3:3",
                             "stop=-4",
                             "stop=0",
                             "stop=4:2",
                             "end=3",
                             "neg=5,pos=3",
                             "stop=10,pos=12",
                             "stop=10,neg=-12",
                             "neg=-20,pos=20,",
                             "stop=4,home=5:6",
                             "pos=1 ,",
                             "pos=inf",
                             "neg=-inf",
                             "home=nan:nan",
                             "home=-inf:3",
                             "stop=nan",
                             "NEG=-1"}) {
        EXPECT_FALSE(parse_rail(text)) << text;
    }
}

}  // namespace
}  // namespace servo::sim::test
