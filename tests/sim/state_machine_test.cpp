// The states of CiA 402, as a table and through the control word of a drive.
#include "sim/state_machine.h"

#include <gtest/gtest.h>

#include "sim/drive_bench.h"

namespace servo::sim {
namespace {

using S = DriveState;
using C = Command;

TEST(ControlWord, CommandsByTheirBits) {
    EXPECT_EQ(command_of(0x0006), C::kShutdown);
    EXPECT_EQ(command_of(0x000E), C::kShutdown);
    EXPECT_EQ(command_of(0x0007), C::kSwitchOn);
    EXPECT_EQ(command_of(0x000F), C::kEnableOperation);
    EXPECT_EQ(command_of(0x001F), C::kEnableOperation);
    EXPECT_EQ(command_of(0x0000), C::kDisableVoltage);
    EXPECT_EQ(command_of(0x000D), C::kDisableVoltage);
    EXPECT_EQ(command_of(0x0002), C::kQuickStop);
    EXPECT_EQ(command_of(0x000B), C::kQuickStop);
    EXPECT_EQ(command_of(0x0086), C::kShutdown);
}

struct Row {
    S state;
    // By command: shutdown, switch on, enable operation, disable voltage, quick stop.
    std::array<S, 5> next;
};

TEST(StateMachine, EveryStateAndCommand) {
    constexpr std::array kCommands{C::kShutdown, C::kSwitchOn, C::kEnableOperation,
                                   C::kDisableVoltage, C::kQuickStop};
    const std::array rows{
        Row{S::kNotReady, {S::kNotReady, S::kNotReady, S::kNotReady, S::kNotReady, S::kNotReady}},
        Row{S::kSwitchOnDisabled,
            {S::kReadyToSwitchOn, S::kSwitchOnDisabled, S::kSwitchOnDisabled, S::kSwitchOnDisabled,
             S::kSwitchOnDisabled}},
        Row{S::kReadyToSwitchOn,
            {S::kReadyToSwitchOn, S::kSwitchedOn, S::kOperationEnabled, S::kSwitchOnDisabled,
             S::kSwitchOnDisabled}},
        Row{S::kSwitchedOn,
            {S::kReadyToSwitchOn, S::kSwitchedOn, S::kOperationEnabled, S::kSwitchOnDisabled,
             S::kSwitchOnDisabled}},
        Row{S::kOperationEnabled,
            {S::kReadyToSwitchOn, S::kSwitchedOn, S::kOperationEnabled, S::kSwitchOnDisabled,
             S::kQuickStopActive}},
        Row{S::kQuickStopActive,
            {S::kQuickStopActive, S::kQuickStopActive, S::kOperationEnabled, S::kSwitchOnDisabled,
             S::kQuickStopActive}},
        Row{S::kFaultReactionActive,
            {S::kFaultReactionActive, S::kFaultReactionActive, S::kFaultReactionActive,
             S::kFaultReactionActive, S::kFaultReactionActive}},
        Row{S::kFault, {S::kFault, S::kFault, S::kFault, S::kFault, S::kFault}},
    };
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < kCommands.size(); ++i) {
            EXPECT_EQ(commanded(row.state, kCommands[i]), row.next[i])
                << int(row.state) << " " << i;
        }
        EXPECT_EQ(commanded(row.state, C::kNone), row.state);
    }
}

TEST(StateMachine, StatusBits) {
    EXPECT_EQ(state_bits(S::kNotReady) & 0x4F, 0x00);
    EXPECT_EQ(state_bits(S::kSwitchOnDisabled) & 0x4F, 0x40);
    EXPECT_EQ(state_bits(S::kReadyToSwitchOn) & 0x6F, 0x21);
    EXPECT_EQ(state_bits(S::kSwitchedOn) & 0x6F, 0x23);
    EXPECT_EQ(state_bits(S::kOperationEnabled) & 0x6F, 0x27);
    EXPECT_EQ(state_bits(S::kQuickStopActive) & 0x6F, 0x07);
    EXPECT_EQ(state_bits(S::kFaultReactionActive) & 0x4F, 0x0F);
    EXPECT_EQ(state_bits(S::kFault) & 0x4F, 0x08);
}

}  // namespace
}  // namespace servo::sim

namespace servo::sim::test {
namespace {

constexpr double kRpm = 512.0 * 10000 / 1875;  // raw speed of one turn a minute

std::int64_t status(DriveBench& bench) {
    return *bench.drive().value(0x604100);
}

std::int64_t speed(DriveBench& bench) {
    return *bench.drive().value(0x606C00);
}

// Turning at 1000 rpm in the speed mode.
void spin(DriveBench& bench) {
    bench.drive().set_value(0x60FF00, static_cast<std::int64_t>(1000 * kRpm));
    bench.enable(3);
    ASSERT_TRUE(
        bench.run_until([&] { return (status(bench) & 0x400) != 0; }, std::chrono::seconds(2)));
}

TEST(DriveState, TheUsualWayUpAndDown) {
    DriveBench bench;
    EXPECT_EQ(status(bench), 0x0250);
    EXPECT_EQ(bench.drive().value(0x2FFE00), 1);
    bench.control(0x06);
    EXPECT_EQ(status(bench), 0x0231);
    bench.control(0x07);
    EXPECT_EQ(status(bench), 0x0233);
    bench.control(0x0F);
    EXPECT_EQ(status(bench) & 0x3FF, 0x0237);
    bench.control(0x06);
    EXPECT_EQ(status(bench), 0x0231);
    bench.control(0x00);
    EXPECT_EQ(status(bench), 0x0250);
}

TEST(DriveState, EnableFromSwitchOnDisabledDoesNothing) {
    DriveBench bench;
    bench.control(0x0F);
    EXPECT_EQ(status(bench), 0x0250);
}

TEST(DriveState, DisableOperationRampsDownAndThenReleases) {
    DriveBench bench;
    spin(bench);
    bench.control(0x07);
    EXPECT_EQ(status(bench) & 0x6F, 0x27);
    ASSERT_TRUE(
        bench.run_until([&] { return (status(bench) & 0x6F) == 0x23; }, std::chrono::seconds(1)));
    EXPECT_LT(std::abs(speed(bench)), 100 * kRpm);
}

TEST(DriveState, EnableDuringThatRampCallsItOff) {
    DriveBench bench;
    spin(bench);
    bench.control(0x07);
    bench.run(std::chrono::milliseconds(30));
    bench.control(0x0F);
    bench.run(std::chrono::seconds(1));
    EXPECT_NEAR(static_cast<double>(speed(bench)), 1000 * kRpm, 5 * kRpm);
}

TEST(DriveState, DisableVoltageCoasts) {
    DriveBench bench;
    spin(bench);
    bench.control(0x00);
    EXPECT_EQ(status(bench) & 0x4F, 0x40);
    bench.run(std::chrono::milliseconds(20));
    EXPECT_GT(speed(bench), 800 * kRpm);
    EXPECT_EQ(bench.drive().value(0x607800), 0);
    bench.run(std::chrono::seconds(3));
    EXPECT_EQ(speed(bench), 0);
}

class QuickStop : public ::testing::TestWithParam<int> {};

TEST_P(QuickStop, EndsAsItsOptionSays) {
    const int option = GetParam();
    DriveBench bench;
    bench.drive().set_value(0x605A00, option);
    spin(bench);
    bench.control(0x0B);
    EXPECT_EQ(status(bench) & 0x6F, 0x07);
    const auto start = bench.now();
    ASSERT_TRUE(bench.run_until([&] { return std::abs(speed(bench)) < 20 * kRpm; },
                                std::chrono::seconds(2)));
    // 1000 rpm are 16.7 turns a second; the ramps are 100 and 500 turns/s2.
    const double took = static_cast<double>((bench.now() - start).count()) / 1e6;
    const bool slow = option == 1 || option == 5;
    EXPECT_NEAR(took, slow ? 0.167 : 0.033, 0.04);
    bench.run(std::chrono::seconds(1));
    const bool holds = option >= 5;
    EXPECT_EQ(status(bench) & 0x6F, holds ? 0x07 : 0x40);
    bench.control(0x0F);
    EXPECT_EQ(status(bench) & 0x6F, holds ? 0x27 : 0x40);
}

INSTANTIATE_TEST_SUITE_P(Options, QuickStop, ::testing::Values(1, 2, 5, 6));

TEST(DriveState, QuickStopOptionZeroCoasts) {
    DriveBench bench;
    bench.drive().set_value(0x605A00, 0);
    spin(bench);
    bench.control(0x0B);
    EXPECT_EQ(status(bench) & 0x4F, 0x40);
}

TEST(DriveState, HaltStopsAndLetsGoOn) {
    DriveBench bench;
    spin(bench);
    bench.control(0x10F);
    bench.run(std::chrono::milliseconds(500));
    EXPECT_LT(std::abs(speed(bench)), 5 * kRpm);
    EXPECT_EQ(status(bench) & 0x46F, 0x427);
    bench.control(0x00F);
    bench.run(std::chrono::milliseconds(500));
    EXPECT_NEAR(static_cast<double>(speed(bench)), 1000 * kRpm, 5 * kRpm);
}

TEST(DriveState, EnableAtPowerUp) {
    Options options;
    ASSERT_FALSE(add_setting(options, "2FFB00=1"));
    DriveBench bench(options);
    EXPECT_EQ(status(bench) & 0x6F, 0x27);
    EXPECT_EQ(bench.drive().value(0x604000), 0x0F);
}

}  // namespace
}  // namespace servo::sim::test
