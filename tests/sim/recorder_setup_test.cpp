// The recorder's set-up: what is refused at the start and why, and the objects that tell of it.
#include <gtest/gtest.h>

#include "sim/recorder_bench.h"

namespace servo::sim::test {
namespace {

using namespace recorder;

constexpr std::uint32_t kNotMappable = 0x06040041;
constexpr std::uint32_t kMappedTooLong = 0x06040042;
constexpr std::uint32_t kIncompatible = 0x06040043;

using Writes = std::vector<std::pair<std::uint32_t, std::int64_t>>;

struct Wrong {
    std::string_view what;
    Writes writes;
    std::uint32_t code;
};

class WrongSetUp : public ::testing::TestWithParam<Wrong> {};

TEST_P(WrongSetUp, IsRefusedAtTheStart) {
    RecorderBench bench;
    for (const auto& [key, value] : GetParam().writes)
        bench.set(key, value);
    EXPECT_FALSE(bench.write(kCommand, 1, 1));
    EXPECT_EQ(bench.refusal(), GetParam().code) << GetParam().what;
    EXPECT_EQ(bench.read(kCommand), 0U);
    EXPECT_EQ(bench.read_text(kBuffer), "");
}

INSTANTIATE_TEST_SUITE_P(
    Refusals, WrongSetUp,
    ::testing::Values(
        Wrong{"no source", {}, kIncompatible},
        Wrong{"no rows", {{kSlotA, kI16}, {kCount, 0}}, kIncompatible},
        Wrong{"no period", {{kSlotA, kI16}, {kPeriod, 0}}, kIncompatible},
        Wrong{"8194 bytes", {{kSlotA, kI16}, {kCount, 4097}}, kMappedTooLong},
        Wrong{"8196 bytes",
              {{kWide12, kI32}, {kSlotB, kI16}, {kWide34, kU32}, {kSlotD, kU16}, {kCount, 683}},
              kMappedTooLong},
        Wrong{"the greatest count", {{kSlotA, kI8}, {kCount, 65535}}, kMappedTooLong},
        Wrong{"no such index", {{kSlotA, source(0x123456, 16)}}, kNotMappable},
        Wrong{"no such sub", {{kSlotA, source(0x2000EE, 16)}}, kNotMappable},
        Wrong{"no object at all", {{kSlotA, 16}}, kNotMappable},
        Wrong{"the greatest value", {{kSlotA, 0xFFFFFFFF}}, kNotMappable},
        Wrong{"a string", {{kSlotA, source(0x200007, 8)}}, kNotMappable},
        Wrong{"bytes", {{kSlotA, source(0x20000F, 0)}}, kNotMappable},
        Wrong{"an object that cannot be read", {{kSlotA, source(0x20000B, 16)}}, kNotMappable},
        Wrong{"too small a width", {{kSlotA, source(0x200004, 8)}}, kNotMappable},
        Wrong{"too great a width", {{kSlotA, source(0x200001, 16)}}, kNotMappable},
        Wrong{"no width", {{kSlotA, source(0x200001, 0)}}, kNotMappable},
        Wrong{"wide in a narrow slot", {{kSlotA, kI32}}, kNotMappable},
        Wrong{"narrow in a wide slot", {{kWide12, kI16}}, kNotMappable},
        Wrong{"one of two is wrong", {{kSlotA, kI16}, {kSlotD, kI32}}, kNotMappable},
        Wrong{"an unknown trigger",
              {{kSlotA, kI16}, {kOffset, 10}, {kTrigger, source(0x123456, 16)}},
              kNotMappable},
        Wrong{"a trigger of another width",
              {{kSlotA, kI16}, {kOffset, 10}, {kTrigger, source(0x200006, 16)}},
              kNotMappable},
        Wrong{"an offset as great as the count",
              {{kSlotA, kI16}, {kOffset, 100}, {kCount, 100}, {kTrigger, kI16}},
              kIncompatible}));

class RightSetUp : public ::testing::TestWithParam<Wrong> {};

TEST_P(RightSetUp, IsTaken) {
    RecorderBench bench;
    bench.set(kPeriod, 100);
    for (const auto& [key, value] : GetParam().writes)
        bench.set(key, value);
    bench.start();
    EXPECT_NE(bench.read(kCommand), 0U) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Limits, RightSetUp,
    ::testing::Values(
        Wrong{"8192 bytes", {{kSlotA, kI16}, {kCount, 4096}}, 0},
        Wrong{"8192 rows", {{kSlotA, kI8}, {kCount, 8192}}, 0},
        Wrong{"8184 bytes",
              {{kWide12, kI32}, {kSlotB, kI16}, {kWide34, kU32}, {kSlotD, kU16}, {kCount, 682}},
              0},
        Wrong{"the last row is the trigger", {{kSlotA, kI16}, {kOffset, 499}, {kTrigger, kI16}}, 0},
        Wrong{"no trigger, so the offset does not count",
              {{kSlotA, kI16}, {kOffset, 500}, {kCount, 100}},
              0},
        Wrong{"a wide trigger", {{kSlotA, kI16}, {kTrigger, kU32}}, 0},
        Wrong{"a narrow trigger", {{kWide34, kI32}, {kTrigger, kU8}}, 0},
        Wrong{"what a wide slot stands before is not looked at",
              {{kSlotA, 0xFFFFFFFF}, {kWide12, kI32}},
              0},
        Wrong{"the recorder's own objects", {{kSlotA, source(kTaken, 16)}}, 0}));

TEST(SetUp, ARefusedStartLeavesTheLastRecording) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kCount, 20);
    bench.feed(kNumber, same);
    bench.set(kCount, 3000);
    EXPECT_FALSE(bench.write(kCommand, 1, 1));
    EXPECT_EQ(only_column(bench, -4), counted(1, 1, 20));
}

TEST(SetUp, ARefusedStartLetsARunningOneGoOn) {
    RecorderBench bench;
    bench.set(kWide12, kI32);
    bench.set(kCount, 2000);
    bench.start();
    bench.set(kCount, 3000);
    EXPECT_FALSE(bench.write(kCommand, 1, 1));
    EXPECT_EQ(bench.read(kCommand), 3U);
    bench.wait();
    EXPECT_EQ(bench.read(kTaken), 2000U);
}

TEST(SetUp, AnUnknownCommandIsRefused) {
    RecorderBench bench;
    bench.set(kSlotA, kI16);
    EXPECT_FALSE(bench.write(kCommand, 2, 1));
    EXPECT_EQ(bench.refusal(), 0x06090030U);
    EXPECT_EQ(bench.read(kCommand), 0U);
}

TEST(SetUp, HasTheFactoryValuesThatTheDriveCarries) {
    RecorderBench bench;
    EXPECT_EQ(bench.read(kPeriod), 1U);
    EXPECT_EQ(bench.read(kOffset), 250U);
    EXPECT_EQ(bench.read(kCount), 500U);
    EXPECT_EQ(bench.read(kEdge), 1U);
    EXPECT_EQ(bench.read(kLevel), 500U);
    EXPECT_EQ(bench.read(kBufferBytes), 8192U);
    EXPECT_EQ(bench.read(kCommand), 0U);
    EXPECT_EQ(bench.read(kTaken), 0U);
    EXPECT_EQ(bench.read(kTrigger), 0U);
}

// They follow from the slots as they stand, before any start.
TEST(SetUp, TheBytesOfARowAreThoseOfTheSlots) {
    RecorderBench bench;
    EXPECT_EQ(bench.read(kRowBytes), 0U);
    bench.set(kSlotA, kI16);
    EXPECT_EQ(bench.read(kRowBytes), 2U);
    bench.set(kWide34, kI32);
    bench.set(kSlotD, kI8);
    EXPECT_EQ(bench.read(kRowBytes), 7U);
    bench.set(kSlotB, source(0x123456, 16));
    EXPECT_EQ(bench.read(kRowBytes), 0U);
}

TEST(SetUp, WhatTheRecorderTellsCannotBeWritten) {
    RecorderBench bench;
    for (const auto& [key, size] : {std::pair{kTaken, 2}, std::pair{kTriggerPosition, 2},
                                    std::pair{kRowBytes, 1}, std::pair{kBufferBytes, 2}}) {
        EXPECT_FALSE(bench.write(key, 1, size));
        EXPECT_EQ(bench.refusal(), 0x06010002U);
    }
}

}  // namespace
}  // namespace servo::sim::test
