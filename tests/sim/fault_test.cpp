// Fault words: their causes, what they do to the motor, how they are reset, what is remembered.
#include <gtest/gtest.h>

#include <cmath>

#include "sim/drive_bench.h"
#include "sim/supervision.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr double kRpm = 512.0 * 10000 / 1875;

std::int64_t state(DriveBench& bench) {
    return *bench.drive().value(0x2FFE00);
}
constexpr int kSwitchOnDisabled = 1;
constexpr int kEnabled = 4;
constexpr int kFaultReaction = 6;
constexpr int kFault = 7;

std::int64_t word1(DriveBench& bench) {
    return *bench.drive().value(0x260100);
}

void reset(DriveBench& bench) {
    bench.control(0x00);
    bench.control(0x80);
}

TEST(Fault, IsLatchedAndResetByTheEdge) {
    DriveBench bench;
    bench.drive().provoke_fault(0x0200);
    EXPECT_EQ(word1(bench), 0x0200);
    EXPECT_EQ(state(bench), kFault);
    EXPECT_EQ(*bench.drive().value(0x604100) & 0x4F, 0x08);
    EXPECT_EQ(bench.drive().value(0x603F00), 0x8611);
    bench.control(0x06);
    EXPECT_EQ(state(bench), kFault);
    reset(bench);
    EXPECT_EQ(word1(bench), 0);
    EXPECT_EQ(state(bench), kSwitchOnDisabled);
    EXPECT_EQ(bench.drive().value(0x603F00), 0);
}

TEST(Fault, IsResetByItsCommandToo) {
    DriveBench bench;
    bench.drive().provoke_fault(0x0004, 0x0002);
    EXPECT_EQ(bench.drive().value(0x260200), 0x0002);
    EXPECT_TRUE(bench.write(0x260600, 1, 1));
    EXPECT_EQ(word1(bench), 0);
    EXPECT_EQ(bench.drive().value(0x260200), 0);
    EXPECT_EQ(state(bench), kSwitchOnDisabled);
}

TEST(Fault, TheErrorRegisterSumsUpItsClasses) {
    DriveBench bench;
    EXPECT_EQ(bench.drive().value(0x100100), 0);
    bench.drive().provoke_fault(0x2000);
    EXPECT_EQ(bench.drive().value(0x100100), 0x01 | 0x08);
    bench.drive().provoke_fault(0x0080);
    EXPECT_EQ(bench.drive().value(0x100100), 0x01 | 0x08 | 0x02);
}

TEST(Fault, AMaskedOneIsNotSeen) {
    DriveBench bench;
    ASSERT_TRUE(bench.write(0x260501, 0x0200, 2));
    bench.drive().provoke_fault(0x0200);
    EXPECT_EQ(word1(bench), 0);
    EXPECT_EQ(state(bench), kSwitchOnDisabled);
    bench.drive().provoke_fault(0x0201);
    EXPECT_EQ(word1(bench), 0x0001);
}

TEST(Fault, TheTwoWordsAreApart) {
    DriveBench bench;
    bench.drive().provoke_fault(0, 0x0001);
    EXPECT_EQ(word1(bench), 0);
    EXPECT_EQ(bench.drive().value(0x260200), 1);
    EXPECT_EQ(state(bench), kFault);
}

TEST(Fault, GivenAtStartStandsFromPowerUpAndAfterEachRestart) {
    Options options;
    ASSERT_FALSE(add_fault(options, "fault1:0020"));
    ASSERT_FALSE(add_fault(options, "fault2:0100"));
    DriveBench bench(options);
    EXPECT_EQ(word1(bench), 0x0020);
    EXPECT_EQ(bench.read(0x260200), 0x0100U);
    reset(bench);
    EXPECT_EQ(word1(bench), 0);
    bench.drive().power_cycle();
    bench.run(seconds(2));
    EXPECT_EQ(word1(bench), 0x0020);
}

TEST(Fault, GivenAtStartIsSeenThoughItsBitResetsItself) {
    Options options;
    ASSERT_FALSE(add_fault(options, "fault2:0040"));
    DriveBench bench(options);
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.read(0x260200), 0x0040U);
    reset(bench);
    EXPECT_EQ(bench.read(0x260200), 0U);
}

void spin(DriveBench& bench) {
    bench.drive().set_value(0x60FF00, static_cast<std::int64_t>(1000 * kRpm));
    bench.enable(3);
    bench.run(milliseconds(400));
    ASSERT_EQ(state(bench), kEnabled);
}

TEST(Fault, ThatAllowsItStopsByTheRamp) {
    DriveBench bench;
    spin(bench);
    bench.drive().provoke_fault(0x0200);
    EXPECT_EQ(state(bench), kFaultReaction);
    bench.control(0x80);
    EXPECT_EQ(state(bench), kFaultReaction);  // not before it stands
    ASSERT_TRUE(bench.run_until([&] { return state(bench) == kFault; }, seconds(1)));
    EXPECT_LT(static_cast<double>(*bench.drive().value(0x60F916)), 20 * kRpm);
}

TEST(Fault, OfAnEncoderAlwaysCutsTheOutput) {
    DriveBench bench;
    bench.drive().set_value(0x260502, 0xFFFF);
    spin(bench);
    bench.drive().provoke_fault(0x0002);
    EXPECT_EQ(state(bench), kFault);
    bench.run(milliseconds(1));
    EXPECT_EQ(bench.drive().value(0x607800), 0);
}

TEST(Fault, ReactionOptionZeroCutsTheOutput) {
    DriveBench bench;
    bench.drive().set_value(0x605E00, 0);
    spin(bench);
    bench.drive().provoke_fault(0x0200);
    EXPECT_EQ(state(bench), kFault);
}

TEST(FollowingError, ComesAfterItsTimeBeyondItsWindow) {
    DriveBench bench;
    bench.drive().set_value(0x606500, 500);
    bench.drive().set_value(0x606600, 50);
    bench.enable(1);
    bench.run(milliseconds(50));
    bench.drive().hold_load(true);
    bench.drive().set_value(0x607A00, 100000);
    bench.control(0x1F);
    ASSERT_TRUE(bench.run_until([&] { return std::abs(*bench.drive().value(0x60F400)) > 500; },
                                seconds(1)));
    EXPECT_EQ(word1(bench), 0);
    bench.run(milliseconds(48));
    EXPECT_EQ(word1(bench), 0);
    bench.run(milliseconds(4));
    EXPECT_EQ(word1(bench), 0x0200);
    EXPECT_EQ(bench.drive().value(0x603F00), 0x8611);
}

TEST(FollowingError, IsNotWatchedWithTheGreatestWindow) {
    DriveBench bench;
    bench.drive().set_value(0x606500, 0xFFFFFFFF);
    bench.enable(1);
    bench.drive().hold_load(true);
    bench.drive().set_value(0x607A00, 100000);
    bench.control(0x1F);
    bench.run(milliseconds(500));
    EXPECT_GT(*bench.drive().value(0x60F400), 30000);
    EXPECT_EQ(word1(bench), 0);
}

TEST(OverSpeed, IsAnExtendedFault) {
    DriveBench bench;
    bench.drive().set_value(0x213009, static_cast<std::int64_t>(900 * kRpm));
    bench.drive().set_value(0x60FF00, static_cast<std::int64_t>(1000 * kRpm));
    bench.enable(3);
    ASSERT_TRUE(bench.run_until([&] { return word1(bench) != 0; }, seconds(1)));
    EXPECT_EQ(word1(bench), 0x0001);
    EXPECT_EQ(bench.drive().value(0x260300), 0x0080);
}

TEST(MotorData, ThatCannotBeIsAFaultOnceEnabled) {
    Options options;
    ASSERT_FALSE(add_setting(options, "641003=0"));
    DriveBench bench(options);
    EXPECT_EQ(bench.drive().value(0x260200), 0);
    bench.enable(1);
    bench.run(milliseconds(5));
    EXPECT_EQ(bench.drive().value(0x260200), 0x0800);
}

// First order towards the square of the load: at three times the rated current it trips after
// tau ln(9/8).
TEST(Overload, TripsAfterTheTimeOfItsModel) {
    dictionary::Store store;
    ObjectTable table(store, {});
    Supervision supervision(table);
    supervision.power_up();
    Readings readings;
    readings.powered = true;
    readings.bus_voltage = 310.0;
    readings.rated_current = 3.0;
    readings.current = 9.0;
    readings.overload_seconds = 20.0;
    readings.peak_current = 40.0;
    double time = 0.0;
    while (supervision.look(readings, 0.001) == Reaction::kNone)
        time += 0.001;
    EXPECT_NEAR(time, 20.0 * std::log(9.0 / 8.0), 0.01);
    EXPECT_EQ(supervision.word1(), fault1::kOverload);
}

TEST(Overload, RatedCurrentIsBorneForEver) {
    dictionary::Store store;
    ObjectTable table(store, {});
    Supervision supervision(table);
    supervision.power_up();
    Readings readings;
    readings.powered = true;
    readings.bus_voltage = 310.0;
    readings.rated_current = 3.0;
    readings.current = 3.0;
    readings.resistance = 1.7;
    for (int i = 0; i < 100000; ++i) {
        ASSERT_EQ(supervision.look(readings, 0.1), Reaction::kNone);
    }
    EXPECT_GT(supervision.motor_temperature(), 40.0);
}

TEST(Supervision, VoltageAndTemperatureHaveTheirBits) {
    dictionary::Store store;
    ObjectTable table(store, {});
    Supervision supervision(table);
    supervision.power_up();
    Readings readings;
    readings.bus_voltage = 100.0;
    EXPECT_EQ(supervision.look(readings, 0.001), Reaction::kNone);  // not while switched off
    readings.powered = true;
    supervision.look(readings, 0.001);
    EXPECT_EQ(supervision.word1(), fault1::kBusLow);
    EXPECT_FALSE(supervision.reset());  // the cause stands
    // Low voltage is set to reset itself.
    readings.bus_voltage = 310.0;
    supervision.look(readings, 0.001);
    EXPECT_FALSE(supervision.faulty());
    readings.bus_voltage = 401.0;
    EXPECT_EQ(supervision.look(readings, 0.001), Reaction::kCoast);
    EXPECT_EQ(supervision.word1(), fault1::kBusHigh);
    readings.bus_voltage = 310.0;
    supervision.look(readings, 0.001);
    EXPECT_TRUE(supervision.faulty());
    EXPECT_TRUE(supervision.reset());
    readings.current = 10.0;
    readings.resistance = 1.7;
    readings.rated_current = 100.0;
    readings.peak_current = 100.0;
    table.bind(0x651002, Type::kUint16).value = 1000;
    while (supervision.look(readings, 1.0) == Reaction::kNone) {
    }
    EXPECT_EQ(supervision.word1(), fault1::kMotorTemperature);
}

TEST(History, KeepsTheNewestFirstAndSurvivesARestart) {
    DriveBench bench;
    bench.drive().provoke_fault(0x0020);
    reset(bench);
    bench.drive().provoke_fault(0x0000, 0x0004);
    EXPECT_EQ(bench.drive().value(0x260700), 2);
    EXPECT_EQ(bench.drive().value(0x261001), 0x0000);
    EXPECT_EQ(bench.drive().value(0x261002), 0x0004);
    EXPECT_EQ(bench.drive().value(0x261101), 0x0020);
    EXPECT_EQ(bench.drive().value(0x100300), 2);
    EXPECT_EQ(bench.drive().value(0x100301), 0x0004'8612);
    bench.drive().power_cycle();
    bench.run(seconds(2));
    EXPECT_EQ(bench.drive().value(0x260700), 2);
    EXPECT_EQ(bench.drive().value(0x261002), 0x0004);
    EXPECT_EQ(bench.drive().value(0x100300), 0);  // the standard's list is not kept
    EXPECT_TRUE(bench.write(0x260800, 1, 1));
    EXPECT_EQ(bench.drive().value(0x260700), 0);
    EXPECT_EQ(bench.drive().value(0x260900), 2);
}

TEST(History, HoldsEight) {
    DriveBench bench;
    for (int i = 0; i < 11; ++i) {
        bench.drive().provoke_fault(static_cast<std::uint16_t>(1 << i));
        reset(bench);
    }
    EXPECT_EQ(bench.drive().value(0x260700), 8);
    EXPECT_EQ(bench.drive().value(0x261001), 1 << 10);
    EXPECT_EQ(bench.drive().value(0x261101), 1 << 9);
    EXPECT_EQ(bench.drive().value(0x260900), 11);
}

}  // namespace
}  // namespace servo::sim::test
