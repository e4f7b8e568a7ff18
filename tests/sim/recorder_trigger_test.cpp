// The recorder's trigger: where it lies, what fires it, and the states on the way.
#include <gtest/gtest.h>

#include <algorithm>

#include "sim/recorder_bench.h"

namespace servo::sim::test {
namespace {

using namespace recorder;

// A recorder that waits for `trigger` and records kNumber.
class TriggerBench : public RecorderBench {
  public:
    TriggerBench(std::int64_t trigger, std::int64_t level, int edge, int offset = 0,
                 int count = 10) {
        set(kWide34, kI32);
        set(kTrigger, trigger);
        set(kLevel, level);
        set(kEdge, edge);
        set(kOffset, offset);
        set(kCount, count);
    }
};

struct Offset {
    int offset;
    int count;
};

class OffsetBefore : public ::testing::TestWithParam<Offset> {};

// The source goes through its level with step 200; that row stands behind `offset` others.
TEST_P(OffsetBefore, IsExactToTheSample) {
    const auto [offset, count] = GetParam();
    TriggerBench bench(kI32, 200, 1, offset, count);
    bench.feed(kNumber, same);
    EXPECT_EQ(only_column(bench, -4), counted(200 - offset, 1, static_cast<std::size_t>(count)));
    EXPECT_EQ(bench.read(kTriggerPosition), static_cast<std::uint32_t>(offset));
    EXPECT_EQ(bench.read(kTaken), static_cast<std::uint32_t>(count));
}

INSTANTIATE_TEST_SUITE_P(Offsets, OffsetBefore,
                         ::testing::Values(Offset{0, 10}, Offset{1, 10}, Offset{5, 10},
                                           Offset{9, 10}, Offset{0, 1}, Offset{100, 500},
                                           Offset{199, 200}));

// Of every third step only: 1, 4, 7 ... 199, 202. The level is passed between two rows.
TEST(Trigger, IsLookedForInTheRows) {
    TriggerBench bench(kI32, 200, 1, 4, 9);
    bench.set(kPeriod, 3);
    bench.feed(kNumber, same);
    EXPECT_EQ(only_column(bench, -4), counted(202 - 4 * 3, 3, 9));
}

// What the signal did before the rows that must stand before the trigger is not asked.
TEST(Trigger, IsNotLookedForWhileTheRowsBeforeItAreTaken) {
    TriggerBench bench(kI32, 50, 1, 80, 100);
    // Through the level with step 50, and again with step 150.
    bench.feed(kNumber, [](std::int64_t n) { return n % 100; });
    Column wanted = counted(70, 1, 30);
    for (std::int64_t n = 100; n < 170; ++n)
        wanted.push_back(n % 100);
    EXPECT_EQ(only_column(bench, -4), wanted);
}

// The first row that may be the trigger is compared with the last of those before.
TEST(Trigger, MayBeTheFirstRowBehindTheOffset) {
    TriggerBench bench(kI32, 21, 1, 20, 30);
    bench.feed(kNumber, same);
    EXPECT_EQ(only_column(bench, -4), counted(1, 1, 30));
}

TEST(Trigger, OneStepEarlierIsMissed) {
    TriggerBench bench(kI32, 20, 1, 20, 30);
    bench.feed(kNumber, same, 500);
    EXPECT_EQ(bench.state(), 2);
}

// A source that stands beyond its level from the start has not gone through it.
TEST(Trigger, NeedsAnEdge) {
    TriggerBench bench(kI32, 100, 1);
    bench.feed(
        kNumber, [](std::int64_t) { return 1000; }, 300);
    EXPECT_EQ(bench.state(), 2);
    EXPECT_EQ(bench.read(kTaken), 0U);
}

// Waiting is not recording: how long it takes does not show, and a stop leaves what is there.
TEST(Trigger, AStopWhileItWaitsKeepsTheNewestRows) {
    TriggerBench bench(kI16, 100, 1, 10, 50);
    bench.feed(kNumber, same, 700);
    EXPECT_EQ(bench.state(), 2);
    EXPECT_EQ(bench.read(kTaken), 10U);
    bench.drive().set_value(kCommand, 0);
    EXPECT_EQ(bench.read(kTaken), 50U);
    EXPECT_EQ(bench.read(kTriggerPosition), 0U);
}

// Behind the trigger no more than the offset stands before it, also where it ended early.
TEST(Trigger, AStopBehindItKeepsItsPlace) {
    TriggerBench bench(kI32, 200, 1, 10, 100);
    bench.feed(kNumber, same, 230);
    EXPECT_EQ(bench.state(), 3);
    bench.drive().set_value(kCommand, 0);
    EXPECT_EQ(only_column(bench, -4), counted(190, 1, 41));
    EXPECT_EQ(bench.read(kTriggerPosition), 10U);
}

TEST(Trigger, WithoutASourceIsTheFirstRow) {
    RecorderBench bench;
    bench.set(kWide34, kI32);
    bench.set(kOffset, 250);
    bench.set(kCount, 20);
    const Column states = bench.feed(kNumber, same);
    EXPECT_EQ(only_column(bench, -4), counted(1, 1, 20));
    EXPECT_EQ(bench.read(kTriggerPosition), 0U);
    EXPECT_EQ(states.front(), 3);
}

// --- Levels and edges

struct Edge {
    std::string_view what;
    std::uint32_t object;
    int bits;
    std::int64_t level;
    int edge;
    std::vector<std::int64_t> signal;
    int fires;  // index in the signal; -1: it does not
};

class EdgeOf : public ::testing::TestWithParam<Edge> {};

TEST_P(EdgeOf, FiresWhereTheSourceGoesThroughTheLevel) {
    const Edge& edge = GetParam();
    TriggerBench bench(source(edge.object, edge.bits), edge.level, edge.edge, 0, 1);
    const auto last = static_cast<std::int64_t>(edge.signal.size());
    const auto signal = [&](std::int64_t n) {
        return edge.signal[static_cast<std::size_t>(n - 1)];
    };
    const Column states = bench.feed(edge.object, signal, last);
    const bool fired = bench.state() == 0;
    EXPECT_EQ(fired ? static_cast<int>(states.size()) - 1 : -1, edge.fires) << edge.what;
}

INSTANTIATE_TEST_SUITE_P(
    Levels, EdgeOf,
    ::testing::Values(
        Edge{"rising", 0x200006, 32, 10, 1, {8, 9, 11, 12}, 2},
        Edge{"rising to the level itself", 0x200006, 32, 10, 1, {8, 9, 10, 11}, 2},
        Edge{"rising from the level", 0x200006, 32, 10, 1, {10, 11, 9, 10}, 3},
        Edge{"falling does not rise", 0x200006, 32, 10, 1, {12, 11, 9, 8}, -1},
        Edge{"falling", 0x200006, 32, 10, 0, {12, 11, 9, 8}, 2},
        Edge{"falling to the level itself", 0x200006, 32, 10, 0, {12, 11, 10, 9}, 2},
        Edge{"falling from the level", 0x200006, 32, 10, 0, {10, 9, 11, 10}, 3},
        Edge{"rising does not fall", 0x200006, 32, 10, 0, {8, 9, 11, 12}, -1},
        Edge{"below zero", 0x200006, 32, -500, 1, {-600, -501, -500, 0}, 2},
        Edge{"through zero", 0x200006, 32, 0, 1, {-2, -1, 0, 1}, 2},
        Edge{"int8", 0x200002, 8, -100, 0, {100, -99, -100, -128}, 2},
        Edge{"int16", 0x200004, 16, -30000, 1, {-32768, -30001, 32767}, 2},
        Edge{"uint8 above its half", 0x200001, 8, 200, 1, {100, 199, 255}, 2},
        Edge{"uint16 above its half", 0x200003, 16, 40000, 1, {100, 39999, 65535}, 2},
        Edge{"uint16 never reaches a negative level", 0x200003, 16, -1, 0, {2, 1, 0, 65535}, -1},
        // The level's bytes are the source's own: 0xC0000000.
        Edge{"uint32 above its half",
             0x200005,
             32,
             -0x40000000,
             1,
             {0x10, 0xBFFFFFFF, 0xC0000000, 0xFFFFFFFF},
             2},
        Edge{"uint32 below its half", 0x200005, 32, 5, 1, {4, 0xFFFFFFFF}, 1}));

// --- States

TEST(States, ComeInTheirOrderAndLastAsToldByTheSetUp) {
    TriggerBench bench(kI32, 200, 1, 50, 120);
    const Column states = bench.feed(kNumber, same);
    Column wanted;
    wanted.insert(wanted.end(), 49, 1);   // with row 50 the rows before are there
    wanted.insert(wanted.end(), 150, 2);  // steps 50 to 199
    wanted.insert(wanted.end(), 69, 3);   // 200 to 268, the last row is 269
    wanted.push_back(0);
    EXPECT_EQ(states, wanted);
}

TEST(States, NeverGoBackOverTheLine) {
    TriggerBench bench(source(0x60F916, 32), 300000, 1, 100, 400);
    bench.set(kPeriod, 8);  // 50 ms before the trigger, many times what one read takes
    bench.enable(-3);
    bench.start();
    std::vector<std::uint32_t> seen;
    for (int i = 0; i < 200; ++i) {
        if (i == 10) bench.drive().set_value(0x60FF00, 500000);
        const auto now = bench.read(kCommand);
        ASSERT_TRUE(now);
        if (seen.empty() || seen.back() != *now) seen.push_back(*now);
        if (*now == 0) break;
    }
    EXPECT_EQ(seen, (std::vector<std::uint32_t>{1, 2, 3, 0}));
}

TEST(States, WithoutAnOffsetBeginWithTheWait) {
    TriggerBench bench(kI32, 200, 1);
    bench.drive().set_value(kCommand, 1);
    EXPECT_EQ(bench.state(), 2);
}

// Rows of the recording so far: they rise and never fall.
TEST(States, TheRowsTakenGrowWithThem) {
    TriggerBench bench(kI32, 200, 1, 50, 120);
    bench.drive().set_value(kCommand, 1);
    Column taken;
    for (std::int64_t n = 1; bench.state() != 0; ++n) {
        bench.drive().set_value(kNumber, n);
        bench.run_to_step(bench.step() + 1);
        taken.push_back(*bench.drive().value(kTaken));
    }
    EXPECT_TRUE(std::is_sorted(taken.begin(), taken.end()));
    EXPECT_EQ(taken[29], 30);
    EXPECT_EQ(taken[149], 50);
    EXPECT_EQ(taken[199], 51);
    EXPECT_EQ(taken.back(), 120);
}

}  // namespace
}  // namespace servo::sim::test
