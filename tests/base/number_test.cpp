#include "base/number.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace servo::base {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Scan {
    const char* text;
    double value;
};

TEST(LeadingNumber, ReadsAsFarAsTheTextIsANumber) {
    constexpr Scan kCases[] = {
        {"0", 0},
        {"42", 42},
        {"007", 7},
        {"3.25", 3.25},
        {".5", 0.5},
        {"5.", 5},
        {"12abc", 12},
        {"12 34", 12},
        {"1.2.3", 1.2},
        {"1,5", 1},
        {"1-2", 1},
        {"7)", 7},
        {"4294967295", 4294967295.0},
        {"-2147483648", -2147483648.0},
    };
    for (const Scan& scan : kCases)
        EXPECT_EQ(leading_number(scan.text), scan.value) << scan.text;
}

TEST(LeadingNumber, SkipsBlanksBeforeTheNumberAndNoOtherCharacter) {
    EXPECT_EQ(leading_number("   17"), 17);
    EXPECT_EQ(leading_number("   -17"), -17);
    EXPECT_EQ(leading_number("\t17"), 0);
    EXPECT_EQ(leading_number("- 17"), 0);
}

TEST(LeadingNumber, TakesOneSign) {
    EXPECT_EQ(leading_number("+8"), 8);
    EXPECT_EQ(leading_number("-8"), -8);
    EXPECT_EQ(leading_number("--8"), 0);
    EXPECT_EQ(leading_number("+-8"), 0);
}

TEST(LeadingNumber, TextWithoutDigitsIsZero) {
    for (const char* text :
         {"", " ", "-", "+", ".", "-.", "abc", "E5", ".E5", "[64100320]", "?????"}) {
        EXPECT_EQ(leading_number(text), 0) << text;
    }
}

TEST(LeadingNumber, TakesAnExponent) {
    EXPECT_EQ(leading_number("1E3"), 1000);
    EXPECT_EQ(leading_number("1e+3"), 1000);
    EXPECT_EQ(leading_number("25E-1"), 2.5);
    EXPECT_EQ(leading_number("1E+15"), 1e15);
    EXPECT_EQ(leading_number("1.5E2x"), 150);
}

TEST(LeadingNumber, ExponentWithoutDigitsIsLeftAlone) {
    EXPECT_EQ(leading_number("2E"), 2);
    EXPECT_EQ(leading_number("2E+"), 2);
    EXPECT_EQ(leading_number("2Ex"), 2);
    EXPECT_EQ(leading_number("2E-"), 2);
}

TEST(LeadingNumber, ADoublePrecisionLetterIsNoExponent) {
    EXPECT_EQ(leading_number("2D3"), 2);
    EXPECT_EQ(leading_number("2d3"), 2);
}

TEST(LeadingNumber, OverflowGivesInfinity) {
    EXPECT_EQ(leading_number("1E999"), kInfinity);
    EXPECT_EQ(leading_number("-1E999"), -kInfinity);
    EXPECT_EQ(leading_number("1E99999999999999999999"), kInfinity);
    EXPECT_EQ(leading_number(std::string(400, '9')), kInfinity);
    EXPECT_EQ(leading_number("0.0001E400"), kInfinity);
}

TEST(LeadingNumber, UnderflowGivesZero) {
    EXPECT_EQ(leading_number("1E-999"), 0);
    EXPECT_EQ(leading_number("1E-99999999999999999999"), 0);
    EXPECT_EQ(leading_number("0E999"), 0);
    EXPECT_EQ(leading_number("." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(leading_number("12345E-400"), 0);
}

TEST(LeadingNumber, SmallestAndLargestNumbersAreReadExactly) {
    EXPECT_EQ(leading_number("4.9406564584124654E-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(leading_number("1.7976931348623157E+308"), std::numeric_limits<double>::max());
    EXPECT_EQ(leading_number("0." + std::string(300, '0') + "1E301"), 1);
}

TEST(LeadingNumber, HexadecimalPrefixHandsOverToTheHexadecimalRule) {
    EXPECT_EQ(leading_number("&HFF"), 255);
    EXPECT_EQ(leading_number("&hff"), 255);
    EXPECT_EQ(leading_number("  &HFFFF"), -1);
    EXPECT_EQ(leading_number("&H"), 0);
    EXPECT_EQ(leading_number("&"), 0);
    EXPECT_EQ(leading_number("&H 10"), 0);
    EXPECT_EQ(leading_number("&O17"), 0);
}

TEST(LeadingNumber, SignBeforeTheHexadecimalPrefixIsNoNumber) {
    EXPECT_EQ(leading_number("-&H10"), 0);
    EXPECT_EQ(leading_number("+&H10"), 0);
}

TEST(LeadingNumber, DoesNotAskTheLocale) {
    const std::string old = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "zh_CN.UTF-8"}) {
        std::setlocale(LC_NUMERIC, locale);  // may not be installed: then this says nothing more
        EXPECT_EQ(leading_number("1.5"), 1.5);
        EXPECT_EQ(format_fixed(1.5, 2), "1.50");
        EXPECT_EQ(number_text(1.5), "1.5");
    }
    std::setlocale(LC_NUMERIC, old.c_str());
}

TEST(ScanHex, UpToFourSignificantDigitsAreSigned16Bit) {
    EXPECT_EQ(scan_hex("0"), 0);
    EXPECT_EQ(scan_hex("7FFF"), 32767);
    EXPECT_EQ(scan_hex("8000"), -32768);
    EXPECT_EQ(scan_hex("FFFF"), -1);
    EXPECT_EQ(scan_hex("ABC"), 0xABC);
}

TEST(ScanHex, LeadingZerosDoNotCount) {
    EXPECT_EQ(scan_hex("0000FFFF"), -1);
    EXPECT_EQ(scan_hex("000000000000008000"), -32768);
    EXPECT_EQ(scan_hex("00010000"), 65536);
}

TEST(ScanHex, FiveToEightSignificantDigitsAreSigned32Bit) {
    EXPECT_EQ(scan_hex("10000"), 65536);
    EXPECT_EQ(scan_hex("FFFFF"), 1048575);
    EXPECT_EQ(scan_hex("7FFFFFFF"), 2147483647);
    EXPECT_EQ(scan_hex("80000000"), -2147483648.0);
    EXPECT_EQ(scan_hex("FFFFFFFF"), -1);
    EXPECT_EQ(scan_hex("0FFFFFFFF"), -1);
}

TEST(ScanHex, MoreThanEightSignificantDigitsAreThePositiveNumber) {
    EXPECT_EQ(scan_hex("100000000"), 4294967296.0);
    EXPECT_EQ(scan_hex("FFFFFFFFF"), 68719476735.0);
    EXPECT_EQ(scan_hex("FFFFFFFFFFFFFFFFFFFF"), std::ldexp(1.0, 80));
    EXPECT_EQ(scan_hex(std::string(400, 'F')), kInfinity);
}

TEST(ScanHex, StopsAtTheFirstOtherCharacter) {
    EXPECT_EQ(scan_hex("12G4"), 0x12);
    EXPECT_EQ(scan_hex("60F6 1"), 0x60F6);
    EXPECT_EQ(scan_hex("0x12"), 0);
    EXPECT_EQ(scan_hex("xyz"), 0);
    EXPECT_EQ(scan_hex(" 12"), 0);
    EXPECT_EQ(scan_hex(""), 0);
    EXPECT_EQ(scan_hex("abc]"), 0xABC);
}

RC_GTEST_PROP(ScanHex, AllSixteenBitNumbersReadAsSigned, (std::uint16_t number)) {
    const double expected = static_cast<std::int16_t>(number);
    RC_ASSERT(scan_hex(fmt::format("{:X}", number)) == expected);
    RC_ASSERT(scan_hex(fmt::format("{:08x}", number)) == expected);
}

RC_GTEST_PROP(ScanHex, NumbersOfFiveDigitsAndMoreReadAsSigned32Bit, ()) {
    const auto number = *rc::gen::inRange<std::uint32_t>(0x10000U, 0xFFFFFFFFU);
    RC_ASSERT(scan_hex(fmt::format("{:X}", number)) == static_cast<std::int32_t>(number));
}

TEST(RoundHalfEven, HalvesGoToTheEvenNeighbour) {
    EXPECT_EQ(round_half_even(0.5), 0);
    EXPECT_EQ(round_half_even(1.5), 2);
    EXPECT_EQ(round_half_even(2.5), 2);
    EXPECT_EQ(round_half_even(-0.5), 0);
    EXPECT_EQ(round_half_even(-1.5), -2);
    EXPECT_EQ(round_half_even(-2.5), -2);
    EXPECT_EQ(round_half_even(2147483646.5), 2147483646);
}

TEST(RoundHalfEven, OthersGoToTheNearest) {
    EXPECT_EQ(round_half_even(0.49999999999999994), 0);
    EXPECT_EQ(round_half_even(2.5000001), 3);
    EXPECT_EQ(round_half_even(-2.5000001), -3);
    EXPECT_EQ(round_half_even(-7.2), -7);
    EXPECT_EQ(round_half_even(9007199254740993.0), 9007199254740992);
}

TEST(RoundHalfEven, ClampsWhatDoesNotFitAndTakesNoNumberAsZero) {
    EXPECT_EQ(round_half_even(1e30), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(round_half_even(-1e30), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(round_half_even(9223372036854775808.0), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(round_half_even(-9223372036854775808.0), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(round_half_even(kInfinity), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(round_half_even(-kInfinity), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(round_half_even(std::nan("")), 0);
}

RC_GTEST_PROP(RoundHalfEven, IsNeverMoreThanAHalfAway, (std::int32_t whole, std::uint16_t part)) {
    const double value = whole + part / 65536.0;
    const auto rounded = static_cast<double>(round_half_even(value));
    RC_ASSERT(std::fabs(rounded - value) <= 0.5);
    if (std::fabs(rounded - value) == 0.5) RC_ASSERT(std::fmod(rounded, 2.0) == 0.0);
}

}  // namespace
}  // namespace servo::base
