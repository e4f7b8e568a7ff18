#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "base/number.h"

namespace servo::base {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(FormatWhole, HalvesGoAwayFromZero) {
    EXPECT_EQ(format_whole(0.5), "1");
    EXPECT_EQ(format_whole(1.5), "2");
    EXPECT_EQ(format_whole(2.5), "3");
    EXPECT_EQ(format_whole(-0.5), "-1");
    EXPECT_EQ(format_whole(-2.5), "-3");
    EXPECT_EQ(format_whole(0.05), "0");
    EXPECT_EQ(format_whole(9.5), "10");
    EXPECT_EQ(format_whole(99.5), "100");
}

TEST(FormatWhole, PrintsAllDigits) {
    EXPECT_EQ(format_whole(0), "0");
    EXPECT_EQ(format_whole(4294967295.0), "4294967295");
    EXPECT_EQ(format_whole(-2147483648.0), "-2147483648");
    EXPECT_EQ(format_whole(123456789012345.0), "123456789012345");
    EXPECT_EQ(format_whole(1e20), "100000000000000000000");
}

TEST(FormatFixed, RoundingIsJudgedOnTheFifteenDigitText) {
    // The nearest binary number lies below each of these.
    EXPECT_EQ(format_fixed(1.005, 2), "1.01");
    EXPECT_EQ(format_fixed(-1.005, 2), "-1.01");
    EXPECT_EQ(format_fixed(8.345, 2), "8.35");
    EXPECT_EQ(format_fixed(0.285, 2), "0.29");
    EXPECT_EQ(format_fixed(1.0049999999, 2), "1.00");
    EXPECT_EQ(format_whole(0.49999999999999994), "1");  // fifteen digits: 0.500000000000000
}

TEST(FormatFixed, KeepsTheAskedNumberOfPlaces) {
    EXPECT_EQ(format_fixed(0, 2), "0.00");
    EXPECT_EQ(format_fixed(366.2109375, 2), "366.21");
    EXPECT_EQ(format_fixed(7, 2), "7.00");
    EXPECT_EQ(format_fixed(1234567.891, 2), "1234567.89");
    EXPECT_EQ(format_fixed(0.0049, 2), "0.00");
    EXPECT_EQ(format_fixed(0.005, 2), "0.01");
    EXPECT_EQ(format_fixed(0.0996, 3), "0.100");
    EXPECT_EQ(format_fixed(99.995, 2), "100.00");
    EXPECT_EQ(format_fixed(1e-300, 2), "0.00");
    EXPECT_EQ(format_fixed(1e22, 2), "10000000000000000000000.00");
}

TEST(FormatFixed, NegativeThatRoundsToZeroHasNoSign) {
    EXPECT_EQ(format_fixed(-0.001, 2), "0.00");
    EXPECT_EQ(format_fixed(-0.0, 2), "0.00");
    EXPECT_EQ(format_whole(-0.4), "0");
    EXPECT_EQ(format_fixed(-0.005, 2), "-0.01");
}

TEST(FormatFixed, PlacesAreTakenFromNoneToFifteen) {
    EXPECT_EQ(format_fixed(1.5, -3), "2");
    EXPECT_EQ(format_fixed(0.1, 15), "0.100000000000000");
    EXPECT_EQ(format_fixed(0.1, 99), "0.100000000000000");
}

TEST(FormatUpTo, LeavesTrailingZerosAndThenThePointOut) {
    EXPECT_EQ(format_up_to(5, 14), "5");
    EXPECT_EQ(format_up_to(0.1, 14), "0.1");
    EXPECT_EQ(format_up_to(1.25, 4), "1.25");
    EXPECT_EQ(format_up_to(1.00004, 4), "1");
    EXPECT_EQ(format_up_to(-1.00005, 4), "-1.0001");
    EXPECT_EQ(format_up_to(100, 4), "100");
    EXPECT_EQ(format_up_to(100, 0), "100");
    EXPECT_EQ(format_up_to(-0.00001, 4), "0");
}

TEST(Format, WhatHasNoDigitsShowsAsUntellable) {
    EXPECT_EQ(format_fixed(kInfinity, 2), "?????");
    EXPECT_EQ(format_whole(std::nan("")), "?????");
    EXPECT_EQ(format_up_to(-kInfinity, 4), "?????");
    EXPECT_EQ(number_text(kInfinity), "?????");
    EXPECT_EQ(leading_number(number_text(kInfinity)), 0);
}

TEST(NumberText, IsPlainDecimalWithUpToFifteenDigits) {
    EXPECT_EQ(number_text(0), "0");
    EXPECT_EQ(number_text(-0.0), "0");
    EXPECT_EQ(number_text(42), "42");
    EXPECT_EQ(number_text(-1.5), "-1.5");
    EXPECT_EQ(number_text(0.1), "0.1");
    EXPECT_EQ(number_text(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(number_text(2147483648.0), "2147483648");
    EXPECT_EQ(number_text(999999999999999.0), "999999999999999");
    EXPECT_EQ(number_text(0.0001), "0.0001");
    EXPECT_EQ(number_text(0.00012345), "0.00012345");
}

TEST(NumberText, ExponentFormFromTenToTheFifteenthUpAndBelowATenThousandth) {
    EXPECT_EQ(number_text(1e15), "1E+15");
    EXPECT_EQ(number_text(-1.25e15), "-1.25E+15");
    EXPECT_EQ(number_text(999999999999999.9), "1E+15");
    EXPECT_EQ(number_text(1e-5), "1E-05");
    EXPECT_EQ(number_text(0.00009999), "9.999E-05");
    EXPECT_EQ(number_text(1e100), "1E+100");
    EXPECT_EQ(number_text(1e-300), "1E-300");
}

TEST(HexText, IsUpperCaseWithoutLeadingZeros) {
    EXPECT_EQ(hex_text(0), "0");
    EXPECT_EQ(hex_text(255), "FF");
    EXPECT_EQ(hex_text(0x60F61102), "60F61102");
    EXPECT_EQ(hex_text(0x1FFFFFFFF), "1FFFFFFFF");
}

TEST(HexText, NegativeShowsTheTwosComplementOf32Bits) {
    EXPECT_EQ(hex_text(-1), "FFFFFFFF");
    EXPECT_EQ(hex_text(-32768), "FFFF8000");
    EXPECT_EQ(hex_text(-2147483648LL), "80000000");
}

RC_GTEST_PROP(NumberText, WholeNumbersReadBackAsThemselves, (std::int32_t number)) {
    RC_ASSERT(leading_number(number_text(number)) == number);
    RC_ASSERT(leading_number(format_whole(number)) == number);
}

RC_GTEST_PROP(NumberText, ReadsBackWithinFifteenDigits, (double number)) {
    RC_PRE(std::isfinite(number));
    const double back = leading_number(number_text(number));
    RC_ASSERT(std::fabs(back - number) <= std::fabs(number) * 1e-14);
}

RC_GTEST_PROP(NumberText, TextOfTextIsTheText, (double number)) {
    RC_PRE(std::isfinite(number));
    const std::string text = number_text(number);
    RC_ASSERT(number_text(leading_number(text)) == text);
}

RC_GTEST_PROP(FormatFixed, DecimalsRoundHalvesAwayFromZero, (std::int32_t thousandths)) {
    // Exact arithmetic on the digits that the number was made from.
    const std::int64_t magnitude = std::llabs(thousandths);
    const std::int64_t hundredths = magnitude / 10 + (magnitude % 10 >= 5 ? 1 : 0);
    std::string expected = std::to_string(hundredths / 100) + '.';
    expected += static_cast<char>('0' + hundredths / 10 % 10);
    expected += static_cast<char>('0' + hundredths % 10);
    if (thousandths < 0 && hundredths != 0) expected.insert(expected.begin(), '-');
    RC_ASSERT(format_fixed(thousandths / 1000.0, 2) == expected);
}

RC_GTEST_PROP(FormatUpTo, IsTheFixedFormWithoutItsZeros, (std::int32_t millionths)) {
    const double value = millionths / 1e6;
    const std::string text = format_up_to(value, 4);
    RC_ASSERT(text.find('.') == std::string::npos || (text.back() != '0' && text.back() != '.'));
    RC_ASSERT(leading_number(text) == leading_number(format_fixed(value, 4)));
}

RC_GTEST_PROP(HexText, ReadsBackThroughTheScanner, (std::int32_t number)) {
    const double back = scan_hex(hex_text(number));
    // Four digits with the high bit set come back negative: that is the scanner's rule.
    const bool flips = number >= 0x8000 && number <= 0xFFFF;
    RC_ASSERT(back == (flips ? number - 65536.0 : number));
}

}  // namespace
}  // namespace servo::base
