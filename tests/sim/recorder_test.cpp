// The recorder: what stands in its rows, and when they are taken.
#include <gtest/gtest.h>

#include "sim/recorder_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using namespace recorder;

// --- Time

class Period : public ::testing::TestWithParam<int> {};

TEST_P(Period, IsExactInStepsOfTheLoop) {
    RecorderBench bench;
    bench.set(kWide12, source(kNumber, 32));
    bench.set(kCount, 40);
    bench.set(kPeriod, GetParam());
    const Column states = bench.feed(kNumber, same, 100000);
    EXPECT_EQ(only_column(bench, -4), counted(1, GetParam(), 40));
    EXPECT_EQ(states.size(), static_cast<std::size_t>(39 * GetParam() + 1));
}

INSTANTIATE_TEST_SUITE_P(Multiples, Period, ::testing::Values(1, 2, 3, 7, 16, 160));

// 200 ms from row to row: the drive at rest makes no steps of its own, and is sampled all the same.
TEST(Recorder, SamplesADriveAtRestAtLongPeriods) {
    RecorderBench bench;
    bench.set(kWide12, source(0x2FF500, 32));  // seconds since power-up
    bench.set(kCount, 30);
    bench.set(kPeriod, 3200);
    const auto from = static_cast<std::int64_t>(bench.step() + 1);
    bench.drive().set_value(kCommand, 1);
    bench.run(seconds(10));
    Column wanted;
    for (std::int64_t row = 0; row < 30; ++row)
        wanted.push_back((from + row * 3200) / 16000);
    EXPECT_EQ(only_column(bench, 4), wanted);
}

TEST(Recorder, TheGreatestPeriodWorks) {
    RecorderBench bench;
    bench.set(kWide12, source(0x2FF500, 32));
    bench.set(kCount, 3);
    bench.set(kPeriod, 65535);
    bench.drive().set_value(kCommand, 1);
    bench.run(seconds(8));
    EXPECT_EQ(bench.state(), 3);
    bench.run(seconds(1));
    EXPECT_EQ(bench.state(), 0);
    EXPECT_EQ(only_column(bench, 4), (Column{0, 4, 8}));
}

// A start over the line counts from the moment at which the drive executes it.
TEST(Recorder, TheFirstRowIsTheFirstStepAfterTheStart) {
    RecorderBench bench;
    bench.set(kWide12, source(kNumber, 32));
    bench.set(kCount, 5);
    const microseconds heard = bench.now() + microseconds(2600);
    bench.drive().receive(frame(127, {0x2F, 0x00, 0x23, 0x07, 1, 0, 0, 0}), heard);
    const auto executed = bench.drive().next_event();
    ASSERT_TRUE(executed);
    std::int64_t step = heard.count() * 2 / 125;
    for (int i = 0; i < 30; ++i) {
        ++step;
        bench.drive().set_value(kNumber, step);
        bench.drive().advance(microseconds((step * 125 + 1) / 2));
    }
    const std::int64_t first = executed->count() * 2 / 125 + 1;
    const auto buffer = bench.drive().text(kBuffer).value_or("");
    EXPECT_EQ(columns(buffer, {-4})[0], counted(first, 1, 5));
}

// --- Rows

struct Row {
    std::string_view what;
    std::vector<std::pair<std::uint32_t, std::int64_t>> slots;
    std::vector<std::uint8_t> bytes;
};

class RowOf : public ::testing::TestWithParam<Row> {};

TEST_P(RowOf, HasTheChannelsInTheirOrder) {
    RecorderBench bench;
    for (const auto& [slot, value] : GetParam().slots)
        bench.set(slot, value);
    bench.set(kCount, 1);
    bench.drive().set_value(0x200001, 0x11);
    bench.drive().set_value(kByte, -2);
    bench.drive().set_value(kWord, 0x3332);
    bench.drive().set_value(0x200004, -3);
    bench.drive().set_value(0x200005, 0x88776655);
    bench.drive().set_value(kNumber, -5);
    const std::string row = bench.record();
    EXPECT_EQ(Bytes(row.begin(), row.end()), GetParam().bytes) << GetParam().what;
    EXPECT_EQ(bench.read(kRowBytes), GetParam().bytes.size());
}

INSTANTIATE_TEST_SUITE_P(
    Slots, RowOf,
    ::testing::Values(
        Row{"one narrow", {{kSlotA, kU8}}, {0x11}},
        Row{"four narrow",
            {{kSlotA, kU8}, {kSlotB, kI8}, {kSlotC, kU16}, {kSlotD, kI16}},
            {0x11, 0xFE, 0x32, 0x33, 0xFD, 0xFF}},
        Row{"written from behind", {{kSlotD, kI16}, {kSlotA, kU8}}, {0x11, 0xFD, 0xFF}},
        Row{"gaps are left out", {{kSlotB, kI8}, {kSlotD, kI16}}, {0xFE, 0xFD, 0xFF}},
        Row{"one wide", {{kWide12, kU32}}, {0x55, 0x66, 0x77, 0x88}},
        Row{"the other wide", {{kWide34, kI32}}, {0xFB, 0xFF, 0xFF, 0xFF}},
        Row{"two wide",
            {{kWide12, kU32}, {kWide34, kI32}},
            {0x55, 0x66, 0x77, 0x88, 0xFB, 0xFF, 0xFF, 0xFF}},
        Row{"wide 1, narrow 2", {{kWide12, kU32}, {kSlotB, kI8}}, {0x55, 0x66, 0x77, 0x88, 0xFE}},
        Row{"the same, narrow first",
            {{kSlotB, kI8}, {kWide12, kU32}},
            {0x55, 0x66, 0x77, 0x88, 0xFE}},
        Row{"two wide and two narrow",
            {{kWide12, kU32}, {kSlotB, kI8}, {kWide34, kI32}, {kSlotD, kU16}},
            {0x55, 0x66, 0x77, 0x88, 0xFE, 0xFB, 0xFF, 0xFF, 0xFF, 0x32, 0x33}},
        Row{"narrow 1 and 2, wide 3",
            {{kSlotA, kU8}, {kSlotB, kI8}, {kWide34, kU32}},
            {0x11, 0xFE, 0x55, 0x66, 0x77, 0x88}},
        // Channel 1 went from a narrow object to a wide one; its narrow slot was left as it was.
        Row{"left in A", {{kSlotA, kU8}, {kWide12, kU32}}, {0x55, 0x66, 0x77, 0x88}},
        Row{"left in A beside B",
            {{kSlotA, kU8}, {kSlotB, kI8}, {kWide12, kU32}},
            {0x55, 0x66, 0x77, 0x88, 0xFE}},
        Row{"left in C", {{kSlotC, kU8}, {kWide34, kU32}}, {0x55, 0x66, 0x77, 0x88}},
        Row{"left in C beside D",
            {{kSlotC, kU8}, {kSlotD, kI8}, {kWide34, kU32}},
            {0x55, 0x66, 0x77, 0x88, 0xFE}},
        Row{"the same object twice", {{kSlotA, kI8}, {kSlotB, kI8}}, {0xFE, 0xFE}}));

TEST(Recorder, ARowIsWhatTheModelShowsAtThatStep) {
    RecorderBench bench;
    bench.set(kSlotA, source(0x607800, 16));
    bench.set(kSlotB, source(0x60F60C, 16));
    bench.set(kWide34, source(0x60F916, 32));
    bench.set(kSlotD, source(0x60FB08, 16));
    bench.set(kCount, 400);
    bench.enable(-3);
    bench.drive().set_value(0x60FF00, 500000);
    bench.drive().set_value(kCommand, 1);
    std::vector<Column> seen(4);
    while (bench.state() != 0) {
        bench.run_to_step(bench.step() + 1);
        seen[0].push_back(*bench.drive().value(0x607800));
        seen[1].push_back(*bench.drive().value(0x60F60C));
        seen[2].push_back(*bench.drive().value(0x60F916));
        seen[3].push_back(*bench.drive().value(0x60FB08));
    }
    const std::string buffer = bench.read_text(kBuffer).value_or("");
    EXPECT_EQ(columns(buffer, {-2, -2, -4, -2}), seen);
    EXPECT_EQ(seen[0].size(), 400U);
    EXPECT_GT(seen[2].back(), 400000);
}

// Positions, demands and the following error of one move, each against what must hold between them.
TEST(Recorder, AMovesPositionDemandAndFollowingErrorAgree) {
    RecorderBench bench;
    bench.set(kWide12, source(0x606300, 32));
    bench.set(kSlotB, source(0x60FB08, 16));
    bench.set(kWide34, source(0x60FC00, 32));
    bench.set(kCount, 800);
    bench.set(kPeriod, 16);
    bench.enable(1);
    bench.drive().set_value(0x607A00, 100000);
    bench.control(0x0F);
    bench.control(0x1F);
    bench.run(milliseconds(10));
    const auto rows = columns(bench.record(), {-4, -2, -4});
    ASSERT_EQ(rows[0].size(), 800U);
    for (std::size_t i = 0; i < 800; ++i) {
        // The demand is finer than the counts that it is shown in.
        EXPECT_NEAR(static_cast<double>(rows[2][i] - rows[0][i]), static_cast<double>(rows[1][i]),
                    1.0);
    }
    EXPECT_GT(rows[2].back() - rows[2].front(), 90000);
}

}  // namespace
}  // namespace servo::sim::test
