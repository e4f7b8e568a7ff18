// Inputs that switch the drive: enable, reset, quick stop, mode, motor error.
#include <gtest/gtest.h>

#include "sim/io_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using F = InputFunction;

// Of the state in words.
constexpr int kDisabled = 1;
constexpr int kReady = 2;
constexpr int kEnabled = 4;
constexpr int kStopping = 5;
constexpr int kFault = 7;

IoBench with_enable(int source, int style) {
    IoBench bench;
    bench.set(0x2FFC00, source);
    bench.set(0x201109, style);
    bench.assign(1, F::kEnable);
    return bench;
}

TEST(EnableInput, ItsEdgesEnableAndRelease) {
    IoBench bench = with_enable(2, 1);
    bench.pin(1, true);
    EXPECT_EQ(bench.state(), kEnabled);
    bench.pin(1, false);
    EXPECT_EQ(bench.state(), kReady);
    bench.pin(1, true);
    EXPECT_EQ(bench.state(), kEnabled);
}

TEST(EnableInput, StopsAsTheShutdownOptionSays) {
    IoBench bench = with_enable(2, 1);
    bench.set(0x605B00, 1);
    bench.set(0x606000, 3);
    bench.set(0x60FF00, raw_rpm(1000));
    bench.pin(1, true);
    bench.run(milliseconds(300));
    bench.pin(1, false);
    EXPECT_EQ(bench.state(), kEnabled);  // on its ramp
    EXPECT_TRUE(bench.run_until([&] { return bench.state() == kReady; }, milliseconds(1000)));
    EXPECT_LT(std::abs(bench.get(0x60F916)), raw_rpm(12));
}

TEST(EnableInput, ByTheControlWordAloneItIsNotLookedAt) {
    IoBench bench = with_enable(0, 1);
    bench.pin(1, true);
    EXPECT_EQ(bench.state(), kDisabled);
    bench.enable(1);
    EXPECT_EQ(bench.state(), kEnabled);
    bench.pin(1, false);
    EXPECT_EQ(bench.state(), kEnabled);
}

TEST(EnableInput, AloneItLetsTheControlWordEnableOnlyWhileItIsActive) {
    IoBench bench = with_enable(1, 1);
    bench.enable(1);
    EXPECT_NE(bench.state(), kEnabled);
    bench.pin(1, true);
    EXPECT_EQ(bench.state(), kEnabled);
    bench.control(0x06);
    EXPECT_EQ(bench.state(), kReady);
    bench.control(0x0F);
    EXPECT_EQ(bench.state(), kEnabled);
}

TEST(EnableInput, WithEitherSourceTheControlWordEnablesToo) {
    IoBench bench = with_enable(2, 1);
    bench.enable(1);
    EXPECT_EQ(bench.state(), kEnabled);
    bench.control(0x06);
    EXPECT_EQ(bench.state(), kReady);
}

TEST(EnableInput, ByEdgesItNeedsANewOneAfterAFault) {
    IoBench bench = with_enable(2, 1);
    bench.pin(1, true);
    bench.drive().provoke_fault(0x0002);
    bench.run(milliseconds(5));
    EXPECT_EQ(bench.state(), kFault);
    bench.set(0x260600, 1);
    bench.run(milliseconds(50));
    EXPECT_EQ(bench.state(), kDisabled);
    bench.pin(1, false);
    bench.pin(1, true);
    EXPECT_EQ(bench.state(), kEnabled);
}

TEST(EnableInput, ByLevelTheDriveComesBackByItself) {
    IoBench bench = with_enable(2, 0);
    bench.pin(1, true);
    EXPECT_EQ(bench.state(), kEnabled);
    bench.drive().provoke_fault(0x0002);
    bench.run(milliseconds(5));
    EXPECT_EQ(bench.state(), kFault);
    bench.set(0x260600, 1);
    bench.run(milliseconds(5));
    EXPECT_EQ(bench.state(), kEnabled);
}

TEST(EnableInput, AFunctionGivenToAnActivePinIsNoEdge) {
    IoBench bench;
    bench.pin(1, true);
    bench.assign(1, F::kEnable);
    EXPECT_EQ(bench.state(), kDisabled);
    bench.enable(1);
    bench.assign_value(1, 0);
    EXPECT_EQ(bench.state(), kEnabled);
}

TEST(EnableInput, AnActivePinAtPowerUpIsNoEdge) {
    Options options;
    options.pins = 1;
    options.values = "key\tdefault\tmin\tmax\tflags\n201003\t1\t\t\ts\n";
    IoBench bench(options);
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.state(), kDisabled);
    bench.drive().power_cycle();
    bench.run(milliseconds(2000));
    EXPECT_EQ(bench.state(), kDisabled);
    EXPECT_EQ(bench.get(0x20100B), 1);
    bench.pin(1, false);
    bench.pin(1, true);
    EXPECT_EQ(bench.state(), kEnabled);
}

TEST(EnableInput, SimulationEnablesLikeThePin) {
    IoBench bench = with_enable(2, 1);
    EXPECT_TRUE(bench.write(0x201001, 1, 2));
    bench.run(milliseconds(1));
    EXPECT_EQ(bench.state(), kEnabled);
    EXPECT_TRUE(bench.write(0x201001, 0, 2));
    bench.run(milliseconds(1));
    EXPECT_EQ(bench.state(), kReady);
}

TEST(ResetInput, ByItsEdge) {
    IoBench bench;
    bench.assign(2, F::kResetErrors);
    bench.pin(2, true);
    bench.drive().provoke_fault(0x0002);
    bench.run(milliseconds(20));
    EXPECT_EQ(bench.state(), kFault);
    bench.pin(2, false);
    EXPECT_EQ(bench.state(), kFault);
    bench.pin(2, true);
    EXPECT_EQ(bench.state(), kDisabled);
}

TEST(ResetInput, ByItsLevel) {
    IoBench bench;
    bench.set(0x201108, 1);
    bench.assign(2, F::kResetErrors);
    bench.pin(2, true);
    bench.drive().provoke_fault(0x0002);
    bench.run(milliseconds(3));
    EXPECT_EQ(bench.state(), kDisabled);
}

TEST(QuickStopInput, StopsAndBarsTheEnable) {
    IoBench bench;
    bench.assign(3, F::kQuickStop);
    bench.set(0x605A00, 6);
    bench.set(0x60FF00, raw_rpm(1000));
    bench.enable(3);
    bench.run(milliseconds(300));
    bench.pin(3, true);
    EXPECT_EQ(bench.state(), kStopping);
    bench.run(milliseconds(300));
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
    bench.control(0x0F);
    EXPECT_EQ(bench.state(), kStopping);
    bench.pin(3, false);
    EXPECT_EQ(bench.state(), kStopping);
    bench.control(0x0F);
    EXPECT_EQ(bench.state(), kEnabled);
}

TEST(QuickStopInput, WithTheFactoryOptionTheDriveIsOffAfterwards) {
    IoBench bench;
    bench.assign(3, F::kQuickStop);
    bench.enable(1);
    bench.pin(3, true);
    EXPECT_TRUE(bench.run_until([&] { return bench.state() == kDisabled; }, milliseconds(600)));
    bench.enable(1);
    EXPECT_NE(bench.state(), kEnabled);
}

TEST(ModeInput, ChoosesAtItsEdges) {
    IoBench bench;
    bench.set(0x20200D, 3);
    bench.set(0x20200E, -3);
    bench.assign(3, F::kModeSelect);
    EXPECT_EQ(bench.get(0x606000), 1);  // nothing has changed yet
    bench.pin(3, true);
    EXPECT_EQ(bench.get(0x606000), -3);
    EXPECT_EQ(bench.get(0x606100), -3);
    bench.pin(3, false);
    EXPECT_EQ(bench.get(0x606000), 3);
    bench.set(0x606000, 1);  // the bus has its word until the next change
    bench.run(milliseconds(50));
    EXPECT_EQ(bench.get(0x606100), 1);
}

TEST(ModeInput, ANumberThatIsNoModeChangesNothing) {
    IoBench bench;
    bench.set(0x20200E, 2);
    bench.assign(3, F::kModeSelect);
    bench.pin(3, true);
    EXPECT_EQ(bench.get(0x606000), 1);
}

TEST(MotorErrorInput, IsAFaultOnceItHasLasted) {
    IoBench bench;
    bench.set(0x20110B, 50);
    bench.assign(4, F::kMotorError);
    bench.enable(1);
    bench.drive().pulse_pin(3, milliseconds(40));
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.get(0x260100), 0);
    bench.pin(4, true);
    bench.run(milliseconds(45));
    EXPECT_EQ(bench.get(0x260100), 0);
    bench.run(milliseconds(10));
    EXPECT_EQ(bench.get(0x260100), 0x2000);
    EXPECT_EQ(bench.state(), kFault);
    bench.set(0x260600, 1);
    EXPECT_EQ(bench.get(0x260100), 0x2000);  // its cause stands
    bench.pin(4, false);
    bench.run(milliseconds(2));
    bench.set(0x260600, 1);
    EXPECT_EQ(bench.get(0x260100), 0);
}

TEST(HaltInput, HoldsTheMoveWhileItIsActive) {
    IoBench bench;
    bench.set(0x201402, 2);
    bench.assign(5, F::kMultifunction1);
    bench.set(0x607A00, 5 * kTurn);
    bench.enable(1);
    bench.control(0x1F);
    bench.run(milliseconds(100));
    bench.pin(5, true);
    bench.run(milliseconds(500));
    const double place = bench.place();
    EXPECT_NEAR(bench.rpm(), 0.0, 1.0);
    EXPECT_LT(place, 4.9 * kTurn);
    bench.pin(5, false);
    bench.run(milliseconds(1500));
    EXPECT_NEAR(bench.place(), 5.0 * kTurn, 10.0);
}

TEST(HomingInput, StartsTheHomingInAnyModeOnceEnabled) {
    for (const int mode : {6, 1}) {
        IoBench bench;
        bench.assign(6, F::kStartHoming);
        bench.pulse(6);
        EXPECT_EQ(bench.get(0x215006), 0);
        bench.enable(mode);
        bench.pulse(6);
        EXPECT_EQ(bench.get(0x215006), 2) << mode;  // method 35 needs no motion
    }
}

TEST(HomingInput, DoesNothingWhileTheTableRuns) {
    IoBench bench;
    bench.assign(6, F::kStartHoming);
    bench.step(0, 5 * kTurn, 600, {});
    bench.enable(1);
    bench.start_table();
    bench.run(milliseconds(100));
    bench.pulse(6);
    EXPECT_EQ(bench.get(0x215006), 0);
    EXPECT_EQ(bench.table_state(), PositionTable::State::kRunning);
}

}  // namespace
}  // namespace servo::sim::test
