// Homing by every method, from both sides of its switch and from on it.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "sim/homing_bench.h"
#include "sim/homing_methods.h"

namespace servo::sim::test {
namespace {

using namespace homing;
using std::chrono::milliseconds;
using std::chrono::seconds;

// One count and the step that sampling takes at 50 rpm.
constexpr double kClose = 2.0 / kTurn;

// Switches stand at odd places, so that edge and index are never the same.
constexpr double kHomeFrom = 3.3;
constexpr double kHomeTo = 5.6;
constexpr double kEnd = 30.0;  // beyond everything

struct Case {
    int method;
    double start;  // turns
    double home;   // turns
};

// The same axis, its places counted from where the motor stands. Index pulses stand at whole turns
// from there, so a start between two of them moves them against the switches.
RailSetup axis_for(int method, double start) {
    const int kind = method > 16 ? method - 16 : method;
    if (kind == 3 || kind == 4) return axis_with_home(kHomeFrom, kEnd, start);
    if (kind == 5 || kind == 6) return axis_with_home(-kEnd, kHomeTo, start);
    return axis_with_home(kHomeFrom, kHomeTo, start);
}

void expect_home(const Case& c) {
    HomingBench bench(axis_for(c.method, c.start));
    const Outcome out = bench.home(c.method);
    const auto what = testing::Message() << "method " << c.method << " from " << c.start;
    EXPECT_TRUE(out.ended) << what;
    EXPECT_TRUE(out.homed) << what;
    EXPECT_FALSE(out.failed) << what;
    EXPECT_TRUE(out.reached) << what;
    EXPECT_EQ(out.state, 2) << what;
    EXPECT_NEAR(out.home + c.start, c.home, kClose) << what;
    EXPECT_NEAR(out.place, out.home, 11.0 / kTurn) << what << ": within the position window";
    bench.run(seconds(1));
    EXPECT_NEAR(bench.place(), out.home, 3.0 / kTurn) << what << ": it stands there";
    EXPECT_EQ(bench.value(0x215007), 0) << what;
}

TEST(Homing, Method1NegativeLimitAndIndex) {
    expect_home({1, 0.0, -19.0});
    expect_home({1, -20.5, -19.5});  // on the switch; index at half turns
    expect_home({1, -19.75, -19.75});
}

TEST(Homing, Method2PositiveLimitAndIndex) {
    expect_home({2, 0.0, 19.0});
    expect_home({2, 20.5, 19.5});
    expect_home({2, 19.75, 19.75});
}

TEST(Homing, Methods3And4PositiveHomeSwitchAndIndex) {
    for (const double start : {0.0, 4.0}) {
        expect_home({3, start, 3.0});
        expect_home({4, start, 4.0});
    }
}

TEST(Homing, Methods5And6NegativeHomeSwitchAndIndex) {
    for (const double start : {0.0, 8.0}) {
        expect_home({5, start, 6.0});
        expect_home({6, start, 5.0});
    }
}

TEST(Homing, Methods7To10HomeSwitchAndPositiveLimitAndIndex) {
    for (const double start : {0.0, 4.0, 9.0}) {
        expect_home({7, start, 3.0});
        expect_home({8, start, 4.0});
        expect_home({9, start, 5.0});
        expect_home({10, start, 6.0});
    }
}

TEST(Homing, Methods11To14HomeSwitchAndNegativeLimitAndIndex) {
    for (const double start : {0.0, 4.0, 9.0}) {
        expect_home({11, start, 6.0});
        expect_home({12, start, 5.0});
        expect_home({13, start, 4.0});
        expect_home({14, start, 3.0});
    }
}

TEST(Homing, Method17NegativeLimit) {
    for (const double start : {0.0, 15.4, -20.0, -21.3})
        expect_home({17, start, -20.0});
}

TEST(Homing, Method18PositiveLimit) {
    for (const double start : {0.0, -15.4, 20.0, 21.3})
        expect_home({18, start, 20.0});
}

TEST(Homing, Methods19And20PositiveHomeSwitch) {
    for (const double start : {0.0, 3.3, 4.4, 12.0}) {
        expect_home({19, start, kHomeFrom});
        expect_home({20, start, kHomeFrom});
    }
}

TEST(Homing, Methods21And22NegativeHomeSwitch) {
    for (const double start : {-7.2, 0.0, 5.6, 8.8}) {
        expect_home({21, start, kHomeTo});
        expect_home({22, start, kHomeTo});
    }
}

TEST(Homing, Method24HomeSwitchFromTheLeft) {
    for (const double start : {-8.0, 0.0, 3.31, 4.4, 5.59, 9.0, 21.0})
        expect_home({24, start, kHomeFrom});
}

TEST(Homing, Methods23To26HomeSwitchAndPositiveLimit) {
    for (const double start : {0.0, 3.3, 4.4, 5.59, 9.0, 20.5}) {
        expect_home({23, start, kHomeFrom});
        expect_home({24, start, kHomeFrom});
        expect_home({25, start, kHomeTo});
        expect_home({26, start, kHomeTo});
    }
}

TEST(Homing, Methods27To30HomeSwitchAndNegativeLimit) {
    for (const double start : {-20.5, 0.0, 3.3, 4.4, 5.59, 9.0}) {
        expect_home({27, start, kHomeTo});
        expect_home({28, start, kHomeTo});
        expect_home({29, start, kHomeFrom});
        expect_home({30, start, kHomeFrom});
    }
}

TEST(Homing, Method33NextIndexInNegativeDirection) {
    HomingBench bench(axis_with_home({}, {}));
    EXPECT_NEAR(bench.home(33).home, 0.0, kClose) << "it stood on one";
    bench.set(0x606000, 1);
    bench.set(0x607A00, 4200);
    bench.control(0x0F);
    bench.control(0x1F);
    bench.run(seconds(2));
    bench.control(0x0F);
    bench.set(0x606000, 6);
    bench.control(0x1F);
    EXPECT_NEAR(bench.finish().home, 0.0, kClose);
}

TEST(Homing, Method34NextIndexInPositiveDirection) {
    HomingBench bench(axis_with_home({}, {}));
    EXPECT_NEAR(bench.home(34).home, 1.0, kClose);
}

TEST(Homing, IndexMethodsNeedNoAxis) {
    HomingBench bench(std::nullopt);
    EXPECT_NEAR(bench.home(34).home, 1.0, kClose);
}

TEST(Homing, Method35ThePresentPlace) {
    HomingBench bench(axis_with_home({}, {}));
    bench.set(0x607C00, 1234);
    const Outcome out = bench.home(35);
    EXPECT_TRUE(out.homed);
    EXPECT_NEAR(out.place, 0.0, kClose);
    EXPECT_EQ(bench.value(0x606300), 1234);
}

// The motor really runs into the stop. Home is where it stands when it no longer presses, and it
// has nothing to press against afterwards.
TEST(Homing, MethodMinus18PositiveMechanicalStop) {
    HomingBench bench(axis_with_home({}, {}));
    bench.begin(-18);
    double furthest = 0.0;
    std::int64_t most = 0;
    ASSERT_TRUE(bench.run_until(
        [&] {
            furthest = std::max(furthest, bench.place());
            most = std::max(most, bench.value(0x60F60C));
            return bench.value(0x215006) != 1;
        },
        seconds(60)));
    const Outcome out = bench.finish();
    EXPECT_TRUE(out.homed);
    EXPECT_NEAR(out.home, 22.0, 3.0 / kTurn);
    EXPECT_GT(furthest, 22.0 + 3.0 / kTurn) << "pressed into the stop";
    EXPECT_LT(furthest, 22.02);
    EXPECT_EQ(most, 546) << "the homing current";
    bench.run(seconds(1));
    EXPECT_LT(std::abs(bench.value(0x60F60C)), 60);
    EXPECT_EQ(bench.value(0x260100), 0);
}

TEST(Homing, MethodMinus17NegativeMechanicalStop) {
    HomingBench bench(axis_with_home({}, {}, 3.7));
    EXPECT_NEAR(bench.home(-17).home + 3.7, -22.0, 3.0 / kTurn);
}

TEST(Homing, MethodsMinus20AndMinus21GoBackToTheIndex) {
    HomingBench negative(axis_with_home({}, {}, 0.3));
    EXPECT_NEAR(negative.home(-20).home + 0.3, -21.7, kClose);
    HomingBench positive(axis_with_home({}, {}, 0.3));
    EXPECT_NEAR(positive.home(-21).home + 0.3, 21.3, kClose);
    EXPECT_NEAR(static_cast<double>(positive.value(0x215008)), 0.7 * kTurn, 5.0);
}

TEST(Homing, ASwitchThatIsPassedInAMomentIsFoundAllTheSame) {
    // At 200 rpm the motor needs 0.056 turns to stop: this switch is behind it then.
    for (const auto& [method, home] : {std::pair{23, 4.0},
                                       {24, 4.0},
                                       {25, 4.01},
                                       {26, 4.01},
                                       {27, 4.01},
                                       {28, 4.01},
                                       {29, 4.0},
                                       {30, 4.0}}) {
        for (const double start : {0.0, 9.0}) {
            HomingBench bench(axis_with_home(4.0, 4.01, start));
            const Outcome out = bench.home(method);
            EXPECT_TRUE(out.homed) << method << " from " << start;
            EXPECT_NEAR(out.home + start, home, kClose) << method << " from " << start;
        }
    }
}

TEST(HomingMethods, AreThoseOfTheStandardAndTheDrivesOwn) {
    std::set<int> known;
    for (int number = -128; number < 128; ++number) {
        if (homing_method(number)) known.insert(number);
    }
    std::set<int> expected{-21, -20, -18, -17, 33, 34, 35};
    for (int number = 1; number <= 14; ++number) {
        expected.insert(number);
        expected.insert(number + 16);
    }
    EXPECT_EQ(known, expected);
}

}  // namespace
}  // namespace servo::sim::test
