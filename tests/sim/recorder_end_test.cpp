// What ends a recording before its time, and what is left of it.
#include <gtest/gtest.h>

#include "sim/recorder_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::seconds;
using namespace recorder;

TEST(Recorder, AStopKeepsTheRowsThatAreThere) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kCount, 1000);
    bench.feed(kNumber, same, 123);
    EXPECT_EQ(bench.state(), 3);
    bench.drive().set_value(kCommand, 0);
    EXPECT_EQ(bench.state(), 0);
    EXPECT_EQ(only_column(bench, -4), counted(1, 1, 123));
    EXPECT_EQ(bench.read(kTaken), 123U);
    bench.run(seconds(1));
    EXPECT_EQ(bench.read(kTaken), 123U);
}

TEST(Recorder, AStopBeforeTheFirstRowLeavesAnEmptyBuffer) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.drive().set_value(kCommand, 1);
    bench.drive().set_value(kCommand, 0);
    EXPECT_EQ(bench.read_text(kBuffer), "");
}

TEST(Recorder, AStopWhenItIsDoneChangesNothing) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kCount, 20);
    bench.feed(kNumber, same);
    bench.set(kCommand, 0);
    EXPECT_EQ(only_column(bench, -4), counted(1, 1, 20));
    bench.set(kCommand, 0);
    EXPECT_EQ(only_column(bench, -4), counted(1, 1, 20));
}

TEST(Recorder, AStartWhileItRunsBeginsAnew) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kCount, 50);
    bench.feed(kNumber, same, 30);
    bench.feed(kNumber, [](std::int64_t n) { return 1000 + n; });
    EXPECT_EQ(only_column(bench, -4), counted(1001, 1, 50));
}

TEST(Recorder, ASetUpWrittenWhileItRunsIsForTheNextRecording) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kCount, 50);
    bench.feed(kNumber, same, 10);
    bench.drive().set_value(kCount, 5);
    bench.drive().set_value(kPeriod, 3);
    bench.drive().set_value(kWide12, kU32);
    for (int i = 11; bench.state() != 0; ++i) {
        bench.drive().set_value(kNumber, i);
        bench.run_to_step(bench.step() + 1);
    }
    EXPECT_EQ(only_column(bench, -4), counted(1, 1, 50));
    bench.feed(0x200005, same);
    EXPECT_EQ(only_column(bench, 4), counted(1, 3, 5));
}

TEST(Recorder, AFaultStopsItWhereThatIsWished) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kSlotB, source(0x260100, 16));
    bench.set(kCount, 1000);
    bench.set(kStopAtFault, 1);
    bench.feed(kNumber, same, 40);
    bench.drive().provoke_fault(0x0004);
    bench.run_to_step(bench.step() + 1);
    EXPECT_EQ(bench.state(), 0);
    const auto rows = columns(bench.read_text(kBuffer).value_or(""), {-4, 2});
    ASSERT_EQ(rows[0].size(), 41U);
    // The last row is that of the step at which the fault was there.
    EXPECT_EQ(rows[1][39], 0);
    EXPECT_EQ(rows[1][40], 4);
}

TEST(Recorder, AFaultThatTheDriveFindsItselfIsInTheLastRow) {
    RecorderBench bench;
    bench.drive().set_value(0x213009, 300000);
    bench.set(kSlotA, source(0x260100, 16));
    bench.set(kWide34, source(0x60F916, 32));
    bench.set(kCount, 1000);
    bench.set(kStopAtFault, 1);
    bench.enable(-3);
    bench.start();
    bench.drive().set_value(0x60FF00, 500000);
    bench.wait();
    const auto rows = columns(bench.read_text(kBuffer).value_or(""), {2, -4});
    ASSERT_GT(rows[0].size(), 2U);
    ASSERT_LT(rows[0].size(), 1000U);
    EXPECT_EQ(rows[0].back(), 1);
    EXPECT_EQ(rows[0][rows[0].size() - 2], 0);
    EXPECT_GT(rows[1].back(), 300000);
}

// The rows are a millisecond apart; the last one is the last before the fault.
TEST(Recorder, AFaultBetweenTwoRowsEndsItWithTheOneBefore) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kPeriod, 16);
    bench.set(kStopAtFault, 1);
    bench.feed(kNumber, same, 40);
    bench.drive().provoke_fault(0x0004);
    bench.run_to_step(bench.step() + 1);
    EXPECT_EQ(bench.state(), 0);
    EXPECT_EQ(only_column(bench, -4), counted(1, 16, 3));
}

// Before the trigger the buffer holds the newest rows, as many as it has room for.
TEST(Recorder, AFaultWhileItWaitsKeepsTheNewestRows) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kCount, 100);
    bench.set(kOffset, 20);
    bench.set(kTrigger, kI16);
    bench.set(kLevel, 30000);
    bench.set(kStopAtFault, 1);
    bench.feed(kNumber, same, 500);
    EXPECT_EQ(bench.state(), 2);
    bench.drive().provoke_fault(0x0004);
    bench.run_to_step(bench.step() + 1);
    EXPECT_EQ(bench.state(), 0);
    Column wanted = counted(402, 1, 99);
    wanted.push_back(500);
    EXPECT_EQ(only_column(bench, -4), wanted);
    EXPECT_EQ(bench.read(kTaken), 100U);
    EXPECT_EQ(bench.read(kTriggerPosition), 0U);
}

TEST(Recorder, AFaultDoesNotStopItOtherwise) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kCount, 100);
    bench.feed(kNumber, same, 40);
    bench.drive().provoke_fault(0x0004);
    bench.run_to_step(bench.step() + 1);
    EXPECT_EQ(bench.state(), 3);
}

TEST(Recorder, AFaultThatStoodAtTheStartIsNoNews) {
    RecorderBench bench;
    bench.drive().provoke_fault(0x0004);
    bench.set(kWide12, kI32);
    bench.set(kCount, 100);
    bench.set(kStopAtFault, 1);
    bench.feed(kNumber, same);
    EXPECT_EQ(only_column(bench, -4), counted(1, 1, 100));
}

TEST(Recorder, APowerCycleForgetsTheRecording) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kCount, 20);
    bench.feed(kNumber, same);
    bench.start();
    bench.drive().power_cycle();
    bench.run(seconds(2));
    EXPECT_EQ(bench.state(), 0);
    EXPECT_EQ(bench.read_text(kBuffer), "");
    EXPECT_EQ(bench.read(kWide12), 0U);
    EXPECT_EQ(bench.read(kCount), 500U);
}

}  // namespace
}  // namespace servo::sim::test
