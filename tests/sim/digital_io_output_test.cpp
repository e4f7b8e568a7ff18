// Digital outputs: from what the drive is doing to the pin.
#include <gtest/gtest.h>

#include "sim/io_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using F = OutputFunction;

TEST(OutputFunctions, EveryValueNamesTheFunctionsOfItsGroup) {
    for (const unsigned code : {0x0001U, 0x0040U, 0x4000U, 0x8001U, 0x8002U, 0x8004U}) {
        OutputFunctions on;
        on.set(static_cast<F>(code), true);
        for (unsigned value = 0; value <= 0xFFFF; ++value) {
            ASSERT_EQ(
                on.any_of(static_cast<std::uint16_t>(value)),
                names_function(static_cast<std::uint16_t>(value), static_cast<std::uint16_t>(code)))
                << value << " " << code;
        }
    }
}

TEST(Outputs, StatePolarityAndSimulationMakeThePin) {
    for (const bool active : {false, true}) {
        for (const bool conducts_active : {false, true}) {
            for (const bool simulated : {false, true}) {
                for (int number = 1; number <= 7; ++number) {
                    IoBench bench;
                    const std::int64_t mask = 1 << (number - 1);
                    bench.set(0x20100E, conducts_active ? 0x7F : 0x7F & ~mask);
                    bench.set(0x20100D, simulated ? mask : 0);
                    bench.assign_output(number, F::kDriverEnabled);
                    if (active) bench.enable(1);
                    bench.run(milliseconds(2));
                    const bool on = simulated || active == conducts_active;
                    EXPECT_EQ(bench.get(0x201014), on ? mask : 0) << number;
                    EXPECT_EQ(bench.get(0x201015), active ? mask : 0) << number;
                    EXPECT_EQ(bench.drive().output_pins(), on ? mask : 0) << number;
                }
            }
        }
    }
}

TEST(Outputs, OneOfSeveralFunctionsIsEnough) {
    IoBench bench;
    bench.assign_output(1, 0x0102);  // error, enabled
    EXPECT_FALSE(bench.output(1));
    bench.enable(1);
    EXPECT_TRUE(bench.output(1));
    bench.drive().provoke_fault(0x0002);
    EXPECT_TRUE(bench.output(1));
    bench.set(0x260600, 1);
    EXPECT_FALSE(bench.output(1));
}

TEST(Outputs, ReadyHasItsConditions) {
    IoBench bench;
    bench.assign_output(1, F::kReady);
    for (const int condition : {0, 1, 2}) {
        bench.set(0x20110A, condition);
        EXPECT_EQ(bench.output(1), condition != 2);
        bench.enable(1);
        EXPECT_TRUE(bench.output(1));
        bench.drive().provoke_fault(0x0002);
        bench.run(milliseconds(5));
        EXPECT_FALSE(bench.output(1)) << condition;
        bench.set(0x260600, 1);
    }
}

TEST(Outputs, PositionReachedFollowsTheMoveAndCanStayLonger) {
    IoBench bench;
    bench.assign_output(3, F::kPositionReached);
    bench.set(0x212009, 400);
    bench.set(0x607A00, kTurn);
    bench.enable(1);
    bench.run(milliseconds(500));
    bench.control(0x1F);
    bench.run(milliseconds(50));
    EXPECT_FALSE(bench.output(3));
    EXPECT_TRUE(bench.run_until([&] { return bench.output(3); }, milliseconds(1000)));
    EXPECT_TRUE(bench.status(0x400));
    bench.set(0x607A00, 0);
    bench.control(0x0F);
    bench.control(0x1F);
    bench.run(milliseconds(100));
    EXPECT_FALSE(bench.status(0x400));
    EXPECT_TRUE(bench.output(3));
    bench.set(0x212009, 0);
}

TEST(Outputs, ZeroSpeedAndSpeedReached) {
    IoBench bench;
    bench.assign_output(4, F::kZeroSpeed);
    bench.assign_output(5, F::kSpeedReached);
    bench.run(milliseconds(30));
    EXPECT_TRUE(bench.output(4));
    bench.set(0x60FF00, raw_rpm(1000));
    bench.enable(3);
    bench.run(milliseconds(20));
    EXPECT_FALSE(bench.output(4));
    EXPECT_FALSE(bench.output(5));
    bench.run(milliseconds(500));
    EXPECT_TRUE(bench.output(5));
    bench.set(0x60FF00, 0);
    bench.run(milliseconds(500));
    EXPECT_TRUE(bench.output(4));
}

TEST(Outputs, ZeroSpeedComesWithoutASingleStepOfTheMotor) {
    IoBench bench;
    bench.set(0x607000, 100);
    bench.assign_output(4, F::kZeroSpeed);
    bench.run(milliseconds(80));
    EXPECT_EQ(bench.drive().output_pins(), 0);
    bench.run(milliseconds(30));
    EXPECT_EQ(bench.drive().output_pins(), 8);
}

TEST(Outputs, TheBrakeOpensAfterItsDelayAndClosesWhenTheMotorIsSlow) {
    IoBench bench;
    bench.set(0x201101, 50);
    bench.set(0x201103, 100);
    bench.set(0x201104, 5000);
    bench.assign_output(5, F::kMotorBrake);
    bench.set(0x60FF00, raw_rpm(1500));
    bench.enable(3);
    bench.run(milliseconds(40));
    EXPECT_FALSE(bench.output(5));
    bench.run(milliseconds(20));
    EXPECT_TRUE(bench.output(5));
    bench.run(milliseconds(500));
    bench.control(0x00);  // runs out
    bench.run(milliseconds(5));
    EXPECT_GT(bench.rpm(), 1000.0);
    EXPECT_TRUE(bench.output(5));
    EXPECT_TRUE(bench.run_until([&] { return !bench.output(5); }, seconds(4)));
    EXPECT_LT(bench.get(0x60F916), raw_rpm(100));
    EXPECT_GT(bench.get(0x60F916), raw_rpm(80));
}

TEST(Outputs, TheBrakeDoesNotWaitForEverAndCanBeWorkedByHand) {
    IoBench bench;
    bench.set(0x201103, 0);
    bench.set(0x201104, 20);
    bench.assign_output(5, F::kMotorBrake);
    bench.set(0x60FF00, raw_rpm(2000));
    bench.enable(3);
    bench.run(milliseconds(500));
    bench.control(0x00);
    bench.run(milliseconds(25));
    EXPECT_GT(bench.rpm(), 500.0);
    EXPECT_FALSE(bench.output(5));
    bench.set(0x201105, 1);
    EXPECT_TRUE(bench.output(5));
    bench.set(0x201105, 2);
    bench.enable(3);
    bench.run(milliseconds(200));
    EXPECT_FALSE(bench.output(5));
}

TEST(Outputs, TheIndexShowsOnceATurn) {
    IoBench bench;
    bench.set(0x20110C, 10);
    bench.assign_output(1, F::kEncoderIndex);
    bench.set(0x60FF00, raw_rpm(300));  // 200 ms a turn
    bench.enable(3);
    bench.run(milliseconds(500));
    int rises = 0;
    int on = 0;
    bool before = bench.output(1);
    for (int i = 0; i < 2000; ++i) {
        const bool now = bench.output(1);
        rises += now && !before ? 1 : 0;
        on += now ? 1 : 0;
        before = now;
    }
    EXPECT_NEAR(rises, 10, 1);
    EXPECT_NEAR(on, 10 * rises, 12);
}

TEST(Outputs, LimitsOfSpeedAndPosition) {
    IoBench bench;
    bench.assign_output(1, F::kSpeedLimit);
    bench.assign_output(2, F::kPositionLimit);
    bench.assign(1, InputFunction::kPositiveLimit);
    bench.set(0x607F00, raw_rpm(500));
    bench.set(0x60FF00, raw_rpm(400));
    bench.enable(3);
    bench.run(milliseconds(500));
    EXPECT_FALSE(bench.output(1));
    bench.set(0x60FF00, raw_rpm(800));
    bench.run(milliseconds(500));
    EXPECT_TRUE(bench.output(1));
    EXPECT_FALSE(bench.output(2));
    bench.pin(1, true);
    EXPECT_TRUE(bench.output(2));
}

TEST(Outputs, HomeFoundAndCurrentLimit) {
    IoBench bench;
    bench.assign_output(1, F::kHomeFound);
    bench.assign_output(2, F::kCurrentLimit);
    bench.enable(6);
    EXPECT_FALSE(bench.output(1));
    bench.control(0x1F);
    EXPECT_TRUE(bench.output(1));
    bench.drive().hold_load(true);
    bench.set(0x21400E, 50);
    bench.set(0x607100, 800);
    bench.set(0x606000, 4);
    bench.run(milliseconds(500));
    EXPECT_FALSE(bench.output(2));
    bench.run(seconds(15));
    EXPECT_TRUE(bench.output(2));
}

TEST(Outputs, MultiOutputsCompareAnObject) {
    IoBench bench;
    bench.assign_output(1, F::kMulti0);
    bench.assign_output(2, F::kMulti2);
    bench.set(0x201301, 0x20000408);  // an Integer16
    bench.set(0x201302, -10);
    bench.set(0x201303, 10);
    bench.set(0x201309, 0x20000410);
    bench.set(0x20130A, 5);
    bench.set(0x20130B, 20);
    bench.set(0x20130C, 1);
    const std::pair<int, int> cases[] = {{-30, 0}, {-20, 2}, {-10, 3}, {-4, 1},
                                         {0, 1},   {10, 3},  {11, 2}};
    for (const auto& [value, pins] : cases) {
        bench.set(0x200004, value);
        bench.run(milliseconds(2));
        EXPECT_EQ(bench.drive().output_pins(), pins) << value;
    }
    bench.set(0x201301, 0x99999908);
    bench.set(0x200004, 0);
    bench.run(milliseconds(2));
    EXPECT_EQ(bench.drive().output_pins(), 0);
}

TEST(Outputs, TheBusDrivesThoseThatItsMaskAllows) {
    IoBench bench;
    bench.assign_output(1, F::kDriverEnabled);
    bench.assign_output(5, F::kMotorBrake);
    bench.set(0x60FE01, 0x007F0001);
    EXPECT_EQ(bench.output(1), false);
    bench.set(0x60FE02, 0x00060000);
    bench.run(milliseconds(2));
    EXPECT_EQ(bench.drive().output_pins(), 0x06);
    bench.set(0x60FE02, 0x00000001);
    bench.run(milliseconds(2));
    EXPECT_EQ(bench.drive().output_pins(), 0x10);
    bench.set(0x60FE01, 0);
    bench.run(milliseconds(2));
    EXPECT_EQ(bench.drive().output_pins(), 0x00);
}

TEST(Outputs, ANewStateIsKeptForItsLeastTime) {
    IoBench bench;
    bench.set(0x20110E, 100);
    bench.assign_output(2, F::kDriverEnabled);
    bench.enable(1);
    EXPECT_TRUE(bench.output(2));
    bench.control(0x00);
    bench.run(milliseconds(80));
    EXPECT_TRUE(bench.output(2));
    bench.run(milliseconds(30));
    EXPECT_FALSE(bench.output(2));
    EXPECT_EQ(bench.get(0x201206), 2);
}

TEST(Outputs, TheTableThatRunsAndTheTorqueThatMayFlow) {
    IoBench bench;
    bench.assign_output(1, F::kTableActive);
    bench.assign_output(2, F::kTorqueOff);
    bench.step(0, kTurn, 600, {});
    bench.enable(1);
    EXPECT_FALSE(bench.output(1));
    bench.start_table();
    EXPECT_TRUE(bench.output(1));
    EXPECT_FALSE(bench.output(2));
    EXPECT_TRUE(bench.run_until_state(PositionTable::State::kDone));
    EXPECT_FALSE(bench.output(1));
    bench.set(0x20110F, 0);
    EXPECT_TRUE(bench.output(2));
}

}  // namespace
}  // namespace servo::sim::test
