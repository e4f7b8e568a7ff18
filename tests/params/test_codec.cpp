#include "params/codec.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace servo::params {
namespace {

TEST(Codec, SizeSuffixes) {
    EXPECT_EQ(size_suffix("uint8"), "01");
    EXPECT_EQ(size_suffix("int8"), "01");
    EXPECT_EQ(size_suffix("uint16"), "02");
    EXPECT_EQ(size_suffix("int16"), "02");
    EXPECT_EQ(size_suffix("uint32"), "04");
    EXPECT_EQ(size_suffix("int32"), "04");
    EXPECT_EQ(size_suffix("String"), "");
    EXPECT_EQ(size_suffix(""), "");
}
TEST(Codec, BytesOfBothSignsWriteWithTheSameSuffix) {
    EXPECT_EQ(write_key("606000", "uint8"), 0x60600001U);
    EXPECT_EQ(write_key("606000", "int8"), 0x60600001U);
}
TEST(Codec, StringWritesThroughKeyZero) {
    EXPECT_EQ(write_key("100800", "String"), 0U);
}
TEST(Codec, TypeWithoutASuffixHasKeyZero) {
    EXPECT_EQ(write_key("606000", ""), 0U);
}
TEST(Codec, StripBlanksGivesTheBareTypeName) {
    EXPECT_EQ(strip_blanks(std::string_view("int8  \0", 7)), "int8");
    EXPECT_EQ(strip_blanks(std::string_view(" u i\r\nnt\0008 ", 12)), "uint8");
}

TEST(Codec, CommitTakesBothEndsOfTheRange) {
    EXPECT_EQ(commit_value(2147483647.0), 2147483647);
    EXPECT_EQ(commit_value(-2147483648.0), std::numeric_limits<std::int32_t>::min());
}
TEST(Codec, CommitRefusesWhatLiesOutside) {
    EXPECT_FALSE(commit_value(2147483648.0).has_value());
    EXPECT_FALSE(commit_value(2147483647.25).has_value());
    EXPECT_FALSE(commit_value(-2147483648.25).has_value());
    EXPECT_FALSE(commit_value(4294967296.0).has_value());
    EXPECT_FALSE(commit_value(9999999999.0).has_value());
    EXPECT_FALSE(commit_value(INFINITY).has_value());
    EXPECT_FALSE(commit_value(NAN).has_value());
}
TEST(Codec, CommitRoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(commit_value(0.5), 0);
    EXPECT_EQ(commit_value(1.5), 2);
    EXPECT_EQ(commit_value(2.5), 2);
    EXPECT_EQ(commit_value(-0.5), 0);
    EXPECT_EQ(commit_value(-1.5), -2);
    EXPECT_EQ(commit_value(-2.5), -2);
    EXPECT_EQ(commit_value(2.4999), 2);
}

TEST(Codec, HexOfUpToFourDigitsIsSigned16) {
    EXPECT_EQ(hex_value("FFFF"), -1);
    EXPECT_EQ(hex_value("8000"), -32768);
    EXPECT_EQ(hex_value("7FFF"), 32767);
}
TEST(Codec, LeadingZerosOfHexDoNotCount) {
    EXPECT_EQ(hex_value("0000FFFF"), -1);
    EXPECT_EQ(hex_value("00010000"), 65536);
}
TEST(Codec, HexOfFiveToEightDigitsIsSigned32) {
    EXPECT_EQ(hex_value("FFFFFFFF"), -1);
    EXPECT_EQ(hex_value("80000000"), -2147483648.0);
    EXPECT_EQ(hex_value("18000"), 98304);
}
TEST(Codec, HexWithMoreDigitsIsRefusedByTheCommit) {
    EXPECT_EQ(hex_value("1FFFFFFFF"), 8589934591.0);
    EXPECT_FALSE(commit_value(hex_value("1FFFFFFFF")).has_value());
}
TEST(Codec, WhatIsNoHexIsZero) {
    EXPECT_EQ(hex_value(""), 0);
    EXPECT_EQ(hex_value("-1"), 0);
    EXPECT_EQ(hex_value("12XY"), 18);
}

TEST(Codec, ItemValueIsInFrontOfTheColon) {
    EXPECT_EQ(item_value("12:Twelve", "DEC"), 12);
    EXPECT_EQ(item_value("12:Eighteen", "HEX"), 18);
    EXPECT_EQ(item_value("FFFF:All", "HEX"), -1);
    EXPECT_EQ(item_value("-3:Below", "DEC"), -3);
    EXPECT_EQ(item_value("7", "DEC"), 7);
    EXPECT_EQ(item_value("none", "DEC"), 0);
}

}  // namespace
}  // namespace servo::params
