// Object access over the line: commands, types, refusals, strings in segments.
#include <gtest/gtest.h>

#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

Eight read_of(std::uint8_t sub) {
    return {0x40, 0x00, 0x20, sub, 0, 0, 0, 0};
}

struct ReadCase {
    std::uint8_t sub;
    Eight answer;
};

class ReadAnswer : public ::testing::TestWithParam<ReadCase> {};

TEST_P(ReadAnswer, HasTheCommandOfItsSizeAndZerosAboveIt) {
    DriveBench bench;
    EXPECT_EQ(bench.ask(read_of(GetParam().sub)), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(
    Types, ReadAnswer,
    ::testing::Values(ReadCase{1, {0x4F, 0x00, 0x20, 1, 200, 0, 0, 0}},
                      ReadCase{2, {0x4F, 0x00, 0x20, 2, 0xFB, 0, 0, 0}},
                      ReadCase{3, {0x4B, 0x00, 0x20, 3, 0x40, 0x9C, 0, 0}},
                      ReadCase{4, {0x4B, 0x00, 0x20, 4, 0xD0, 0x8A, 0, 0}},
                      ReadCase{5, {0x43, 0x00, 0x20, 5, 0xFF, 0xFF, 0xFF, 0xFF}},
                      ReadCase{6, {0x43, 0x00, 0x20, 6, 0x00, 0x6C, 0xCA, 0x88}}));

TEST(Write, IsAcknowledgedWithWhatWasTaken) {
    DriveBench bench;
    const Eight told{0x60, 0x00, 0x20, 0x03, 0x39, 0x30, 0, 0};
    EXPECT_EQ(bench.ask({0x2B, 0x00, 0x20, 0x03, 0x39, 0x30, 0, 0}), told);
    EXPECT_EQ(bench.drive().value(0x200003), 0x3039);
}

// The sender leaves the upper bytes of a 32-bit value in place, whatever the object's size.
TEST(Write, BytesAboveTheObjectsSizeDoNotCount) {
    DriveBench bench;
    const Eight told{0x60, 0x00, 0x20, 0x04, 0xFF, 0xFF, 0, 0};
    EXPECT_EQ(bench.ask({0x2B, 0x00, 0x20, 0x04, 0xFF, 0xFF, 0xFF, 0xFF}), told);
    EXPECT_EQ(bench.drive().value(0x200004), -1);
    EXPECT_TRUE(bench.write(0x200002, -1, 1));
    EXPECT_EQ(bench.drive().value(0x200002), -1);
}

TEST(Write, OfUnstatedSizeTakesTheObjectsOwn) {
    DriveBench bench;
    EXPECT_TRUE(bench.ask({0x22, 0x00, 0x20, 0x03, 0x39, 0x30, 0, 0}));
    EXPECT_EQ(bench.drive().value(0x200003), 0x3039);
}

TEST(Write, AllTypesKeepTheirSign) {
    DriveBench bench;
    EXPECT_TRUE(bench.write(0x200001, 255, 1));
    EXPECT_TRUE(bench.write(0x200004, -32768, 2));
    EXPECT_TRUE(bench.write(0x200005, 0xFFFFFFFE, 4));
    EXPECT_TRUE(bench.write(0x200006, -2147483648LL, 4));
    EXPECT_EQ(bench.drive().value(0x200001), 255);
    EXPECT_EQ(bench.drive().value(0x200004), -32768);
    EXPECT_EQ(bench.drive().value(0x200005), 0xFFFFFFFELL);
    EXPECT_EQ(bench.drive().value(0x200006), -2147483648LL);
}

TEST(Refusal, UnknownIndexAndUnknownSub) {
    DriveBench bench;
    const Eight told{0x80, 0x34, 0x12, 0x01, 0x00, 0x00, 0x02, 0x06};
    EXPECT_EQ(bench.ask({0x40, 0x34, 0x12, 0x01, 0, 0, 0, 0}), told);
    EXPECT_FALSE(bench.read(0x2000EE));
    EXPECT_EQ(bench.refusal(), 0x06090011U);
}

TEST(Refusal, AWriteToWhatCanOnlyBeRead) {
    DriveBench bench;
    EXPECT_FALSE(bench.write(0x20000A, 1, 2));  // by its flag
    EXPECT_EQ(bench.refusal(), 0x06010002U);
    EXPECT_FALSE(bench.write(0x20000C, 1, 2));  // by the dictionary, which has no W for it
    EXPECT_EQ(bench.refusal(), 0x06010002U);
    EXPECT_EQ(bench.drive().value(0x20000A), 7);
}

TEST(Refusal, AReadOfWhatCanOnlyBeWritten) {
    DriveBench bench;
    EXPECT_FALSE(bench.read(0x20000B));
    EXPECT_EQ(bench.refusal(), 0x06010001U);
    EXPECT_TRUE(bench.write(0x20000B, 1, 2));
}

TEST(Refusal, AWrongLength) {
    DriveBench bench;
    for (const int size : {1, 4}) {
        EXPECT_FALSE(bench.write(0x200003, 20, size));
        EXPECT_EQ(bench.refusal(), 0x06070010U);
    }
    bench.ask({0x27, 0x00, 0x20, 0x03, 20, 0, 0, 0});
    EXPECT_EQ(bench.refusal(), 0x06070010U);
    EXPECT_EQ(bench.drive().value(0x200003), 40000);
}

TEST(Refusal, BeyondTheLimits) {
    DriveBench bench;
    EXPECT_FALSE(bench.write(0x200003, 50001, 2));
    EXPECT_EQ(bench.refusal(), 0x06090031U);
    EXPECT_FALSE(bench.write(0x200003, 9, 2));
    EXPECT_EQ(bench.refusal(), 0x06090032U);
    EXPECT_FALSE(bench.write(0x200002, -101, 1));
    EXPECT_EQ(bench.refusal(), 0x06090032U);
    EXPECT_TRUE(bench.write(0x200003, 50000, 2));
    EXPECT_TRUE(bench.write(0x200003, 10, 2));
}

TEST(Refusal, AModeThatTheDriveDoesNotKnow) {
    DriveBench bench;
    EXPECT_FALSE(bench.write(0x606000, 2, 1));
    EXPECT_EQ(bench.refusal(), 0x06090030U);
}

TEST(Refusal, AStringCannotBeWrittenInOneFrame) {
    DriveBench bench;
    EXPECT_FALSE(bench.write(0x20000D, 0x41, 1));
    EXPECT_EQ(bench.refusal(), 0x06010000U);
}

TEST(Refusal, AnUnknownCommand) {
    DriveBench bench;
    for (const std::uint8_t command : {0x00, 0x21, 0xA0, 0xFF, 0x4B, 0x43}) {
        bench.ask({command, 0x00, 0x20, 0x03, 0, 0, 0, 0});
        EXPECT_EQ(bench.refusal(), 0x05040001U) << int{command};
    }
}

TEST(Refusal, OfTheOtherSideIsNotAnswered) {
    DriveBench bench;
    EXPECT_FALSE(bench.ask({0x80, 0x00, 0x20, 0x07, 0, 0, 4, 5}));
    EXPECT_EQ(bench.drive().statistics().answers, 0U);
}

TEST(String, ComesInSegmentsOfSeven) {
    DriveBench bench;
    const Eight begin{0x41, 0x00, 0x20, 7, 10, 0, 0, 0};
    const Eight first{0x00, 'a', 'x', 'i', 's', ' ', 't', 'h'};
    const Eight last{0x19, 'r', 'e', 'e', 0, 0, 0, 0};
    EXPECT_EQ(bench.ask(read_of(7)), begin);
    EXPECT_EQ(bench.ask({0x60, 0x00, 0x20, 7, 0, 0, 0, 0}), first);
    EXPECT_EQ(bench.ask({0x70, 0x00, 0x20, 7, 0, 0, 0, 0}), last);
}

TEST(String, OfNothingIsOneEmptySegment) {
    DriveBench bench;
    const Eight begin{0x41, 0x00, 0x20, 8, 0, 0, 0, 0};
    EXPECT_EQ(bench.ask(read_of(8)), begin);
    const auto segment = bench.ask({0x60, 0x00, 0x20, 8, 0, 0, 0, 0});
    EXPECT_EQ(segment, (Eight{0x0F, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(String, OfThreeBytesIsOneSegmentWithFourUnused) {
    DriveBench bench;
    bench.ask(read_of(9));
    EXPECT_EQ(bench.ask({0x60, 0, 0, 0, 0, 0, 0, 0}), (Eight{0x09, 'a', 'b', 'c', 0, 0, 0, 0}));
}

TEST(String, OfSevenBytesIsOneFullSegment) {
    DriveBench bench;
    bench.ask(read_of(0x0D));
    EXPECT_EQ(bench.ask({0x60, 0, 0, 0, 0, 0, 0, 0}),
              (Eight{0x01, 's', 'e', 'v', 'e', 'n', ' ', 'b'}));
}

TEST(String, OfFourteenBytesEndsWithAFullSegmentOfTheOtherToggle) {
    DriveBench bench;
    bench.ask(read_of(0x0E));
    bench.ask({0x60, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(bench.ask({0x70, 0, 0, 0, 0, 0, 0, 0}),
              (Eight{0x11, 'n', ' ', 'b', 'y', 't', 'e', 's'}));
}

// The answer to a segment request may be lost on the line.
TEST(String, ASegmentAskedForAgainComesAgain) {
    DriveBench bench;
    bench.ask(read_of(7));
    const auto first = bench.ask({0x60, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(bench.ask({0x60, 0, 0, 0, 0, 0, 0, 0}), first);
    const auto last = bench.ask({0x70, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(bench.ask({0x70, 0, 0, 0, 0, 0, 0, 0}), last);
}

TEST(String, OtherTrafficMayComeBetweenTheSegments) {
    DriveBench bench;
    bench.ask(read_of(7));
    bench.ask({0x60, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(bench.read(0x200003), 40000U);
    EXPECT_TRUE(bench.write(0x200003, 20, 2));
    EXPECT_EQ(bench.ask({0x70, 0, 0, 0, 0, 0, 0, 0}), (Eight{0x19, 'r', 'e', 'e', 0, 0, 0, 0}));
}

TEST(String, ASegmentWithoutAStringIsRefused) {
    DriveBench bench;
    bench.ask({0x60, 0x00, 0x20, 7, 0, 0, 0, 0});
    EXPECT_EQ(bench.refusal(), 0x05040001U);
}

TEST(String, ASegmentBeyondTheLastIsRefused) {
    DriveBench bench;
    bench.ask(read_of(9));
    bench.ask({0x60, 0, 0, 0, 0, 0, 0, 0});
    bench.ask({0x70, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(bench.refusal(), 0x05040001U);
}

TEST(String, TheFirstSegmentHasToggleZero) {
    DriveBench bench;
    bench.ask(read_of(9));
    bench.ask({0x70, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(bench.refusal(), 0x05040001U);
    EXPECT_TRUE(bench.ask({0x60, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(bench.refusal(), 0U);
}

TEST(String, TheOtherSidesRefusalEndsATransfer) {
    DriveBench bench;
    bench.ask(read_of(7));
    bench.ask({0x80, 0x00, 0x20, 0x07, 0, 0, 4, 5});
    bench.ask({0x60, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(bench.refusal(), 0x05040001U);
}

TEST(String, AnObjectOfAnUnknownTypeIsReadAsBytes) {
    DriveBench bench;
    EXPECT_EQ(bench.read_text(0x20000F), "");
}

TEST(Object, ASettingFromOutsideObeysNoFlagsAndIsCutToTheType) {
    DriveBench bench;
    EXPECT_TRUE(bench.drive().set_value(0x20000A, 0x12345));
    EXPECT_EQ(bench.drive().value(0x20000A), 0x2345);
    EXPECT_TRUE(bench.drive().set_text(0x200008, "new"));
    EXPECT_EQ(bench.read_text(0x200008), "new");
    EXPECT_FALSE(bench.drive().set_value(0x200007, 1));
    EXPECT_FALSE(bench.drive().set_text(0x200003, "x"));
    EXPECT_FALSE(bench.drive().value(0x123456));
    EXPECT_FALSE(bench.drive().text(0x200003));
}

}  // namespace
}  // namespace servo::sim::test
