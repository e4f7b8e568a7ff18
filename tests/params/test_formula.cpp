#include "params/formula.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "params/random_formula.h"

namespace servo::params {
namespace {

constexpr std::string_view kSpeed =
    "[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]";

link::FormulaOperands operands() {
    link::FormulaOperands all;
    all.o64100320 = {10000, true};
    all.o65100310 = {480, true};
    all.o30400710 = {250, true};
    all.o60F61310 = {3, true};
    all.o60F61110 = {7, true};
    return all;
}

std::string text_of(double value, std::string_view unit, std::string_view list, int size = 4) {
    return value_to_text(value, unit, list, size, operands()).value_or("error");
}

double unit_of(double value, std::string_view unit, std::string_view list) {
    return value_to_unit(value, unit, list, 4, operands()).value_or(NAN);
}

double raw_of(std::string_view typed, std::string_view unit, std::string_view list) {
    return text_to_value(typed, unit, list, operands()).value_or(NAN);
}

void expect_split(std::string_view line, std::string_view unit, std::string_view formula) {
    const FormulaHead head = split_formula(line);
    EXPECT_EQ(head.unit, unit) << line;
    EXPECT_EQ(head.formula, formula) << line;
}

// --- split_formula ------------------------------------------------------------------------------

TEST(SplitFormula, EmptyLineIsRawDecimal) {
    expect_split("", "DEC", "N*1");
}
TEST(SplitFormula, LineWithoutABracketIsRawDecimal) {
    expect_split("N*5", "DEC", "N*1");
}
TEST(SplitFormula, BracketAsFirstCharacterIsRawDecimal) {
    expect_split("]N*5", "DEC", "N*1");
}
TEST(SplitFormula, NothingBehindTheBracketIsTimesOne) {
    expect_split("[DEC rpm]", "rpm", "N*1");
}
TEST(SplitFormula, UnitIsTheTarget) {
    expect_split("[DEC rpm]N*1875/512/[64100320]", "rpm", "N*1875/512/[64100320]");
    expect_split("[rpm DEC]N/1875*512*[64100320]", "DEC", "N/1875*512*[64100320]");
}
TEST(SplitFormula, HeadOfOneWord) {
    expect_split("[HEX]N*1", "HEX", "N*1");
}
TEST(SplitFormula, UnitIsAllBehindTheFirstBlank) {
    expect_split("[DEC deg C]N", "deg C", "N");
}
TEST(SplitFormula, FirstCharacterOfAHeadWithoutBlankIsDropped) {
    expect_split("DEC]N", "EC", "N");
}
TEST(SplitFormula, EmptyHeadHasAnEmptyUnit) {
    expect_split("[]N*2", "", "N*2");
}
TEST(SplitFormula, WidthsCut) {
    expect_split("[DEC 1234567890123456789012]N", "12345678901234567890", "N");
    expect_split("[x]" + std::string(70, '1'), "x", std::string(64, '1'));
}
TEST(SplitFormula, WidthsCountCharacters) {
    expect_split("[DEC 度度度度度度度度度度度度度度度度度度度度度]N",
                 "度度度度度度度度度度度度度度度度度度度度", "N");
}
TEST(SplitFormula, PaddingIsNoPartOfTheFields) {
    expect_split("[DEC rpm]N*2    ", "rpm", "N*2");
}
TEST(SplitFormula, FirstLineOfAList) {
    EXPECT_EQ(first_line(kSpeed), "[DEC rpm]N*1875/512/[64100320]");
    EXPECT_EQ(first_line("[DEC]N*1"), "[DEC]N*1");
    EXPECT_EQ(first_line(""), "");
}

// --- value_to_text ------------------------------------------------------------------------------

TEST(ValueToText, DecimalRoundsHalvesAwayFromZero) {
    for (const char* unit : {"DEC", "INC", "inc"}) {
        EXPECT_EQ(text_of(2.5, unit, ""), "3");
        EXPECT_EQ(text_of(-2.5, unit, ""), "-3");
        EXPECT_EQ(text_of(-0.2, unit, ""), "0");
        EXPECT_EQ(text_of(4294967295.0, unit, ""), "4294967295");
    }
}
TEST(ValueToText, SpeedInRpm) {
    EXPECT_EQ(text_of(1000000, "rpm", kSpeed), "366.21");
}
TEST(ValueToText, ResolutionOfZeroShowsZero) {
    EXPECT_EQ(value_to_text(1000000, "rpm", kSpeed, 4, {}), "0.00");
}
TEST(ValueToText, NegativeSpeedIsSafeAtTheStartOfATerm) {
    EXPECT_EQ(text_of(-1000000, "rpm", kSpeed), "-366.21");
}
TEST(ValueToText, UnitMustCloseTheHeadBehindABlankOrABracket) {
    EXPECT_EQ(text_of(5, "rpm", "[Xrpm]N*2\n[rpm]N*3"), "15.00");
    EXPECT_EQ(text_of(5, "rpm", "[rpm DEC]N*2\n[DEC rpm]N*4"), "20.00");
    EXPECT_EQ(text_of(5, "rpm", "[rpm DEC]N*2"), "");
    EXPECT_EQ(text_of(5, "rpm", "[Xrpm]N*2"), "");
}
TEST(ValueToText, FirstLineThatGivesTheUnitWins) {
    EXPECT_EQ(text_of(5, "rpm", "[DEC rpm]N*2\n[rpm]N*3"), "10.00");
}
TEST(ValueToText, ExpressionIsBehindTheLastOccurrenceOfTheWord) {
    EXPECT_EQ(text_of(5, "rpm", "[DEC rpm]N*2[Xrpm]N*7"), "35.00");
}
TEST(ValueToText, UnitWithoutALineIsEmpty) {
    EXPECT_EQ(text_of(5, "rpm", "[DEC]N*1"), "");
    EXPECT_EQ(text_of(5, "rpm", ""), "");
}
TEST(ValueToText, WordsAreCaseSensitive) {
    EXPECT_EQ(text_of(5, "RPM", kSpeed), "");
    EXPECT_EQ(text_of(5, "Inc", "[Inc]N*2"), "10.00");
    EXPECT_EQ(text_of(5, "Inc", ""), "");
}
TEST(ValueToText, EmptyExpressionShowsZero) {
    EXPECT_EQ(text_of(5, "rpm", "[DEC rpm]"), "0.00");
}
TEST(ValueToText, HalvesOfTheSecondPlaceGoAwayFromZero) {
    EXPECT_EQ(text_of(1005, "k", "[k]N/1000"), "1.01");
    EXPECT_EQ(text_of(-1005, "k", "[k]N/1000"), "-1.01");
    EXPECT_EQ(text_of(-4, "k", "[k]N/1000"), "0.00");
}
TEST(ValueToText, UnseenObjectShowsQuestionMarks) {
    link::FormulaOperands unseen = operands();
    unseen.o30400710.seen = false;
    EXPECT_EQ(value_to_text(5, "x", "[x]N*[30400710]", 4, unseen), "?????");
    EXPECT_EQ(value_to_text(0, "x", "[x]N/0*[30400710]", 4, unseen), "?????");
    EXPECT_EQ(text_of(5, "x", "[x]N*[30400710]"), "1250.00");
}
TEST(ValueToText, OtherUnseenObjectsComputeWithTheCachedValue) {
    link::FormulaOperands unseen = operands();
    unseen.clear_seen();
    EXPECT_EQ(value_to_text(1000000, "rpm", kSpeed, 4, unseen), "366.21");
    EXPECT_EQ(value_to_text(1, "x", "[x]N*[65100310]*[60F61310]*[60F61110]", 4, unseen),
              "10080.00");
}
TEST(ValueToText, EveryReferenceIsPasted) {
    EXPECT_EQ(text_of(1, "x", "[x][64100320]+[65100310]+[30400710]+[60F61310]+[60F61110]"),
              "10740.00");
    EXPECT_EQ(text_of(1, "x", "[x][60F61110]*[60F61110]"), "49.00");
}
TEST(ValueToText, ReferencesAreCaseSensitive) {
    EXPECT_EQ(text_of(1, "x", "[x]N+[60f61110]"), "1.00");
}
TEST(ValueToText, UnknownReferenceReadsAsZero) {
    EXPECT_EQ(text_of(5, "x", "[x]N+[60FF0010]"), "5.00");
    EXPECT_EQ(text_of(5, "x", "[x]N*[60FF0010]"), "0.00");
}
TEST(ValueToText, NegativeValueBehindAnOperatorIsCutOff) {
    EXPECT_EQ(text_of(-2, "x", "[x]5*N"), "3.00");
    EXPECT_EQ(text_of(2, "x", "[x]5*N"), "10.00");
}
TEST(ValueToText, NegativeObjectBehindAnOperatorIsCutOff) {
    link::FormulaOperands negative = operands();
    negative.o60F61110.value = -7;
    EXPECT_EQ(value_to_text(5, "x", "[x]N*[60F61110]", 4, negative), "-2.00");
    EXPECT_EQ(value_to_text(5, "x", "[x][60F61110]*N", 4, negative), "-35.00");
}
TEST(ValueToText, EveryCapitalNIsReplaced) {
    EXPECT_EQ(text_of(3, "x", "[x]N*N+N"), "12.00");
    EXPECT_EQ(text_of(3, "x", "[x]1N"), "13.00");
    EXPECT_EQ(text_of(3, "x", "[x]n+1"), "1.00");
}
TEST(ValueToText, DigitsMayCompleteAReference) {
    EXPECT_EQ(text_of(320, "x", "[x][64100N]+1"), "10001.00");
}
TEST(ValueToText, MalformedExpressionGoesToTheCaller) {
    EXPECT_FALSE(value_to_text(5, "x", "[x](N", 4, {}).has_value());
    EXPECT_FALSE(value_to_text(5, "x", "[x]lg()*N", 4, {}).has_value());
    EXPECT_FALSE(value_to_unit(5, "x", "[x](N", 4, {}).has_value());
    EXPECT_FALSE(text_to_value("5", "x", "[x DEC](N", {}).has_value());
}

TEST(ValueToText, HexOfMinusOne) {
    EXPECT_EQ(text_of(-1, "HEX", "", 1), "FF");
    EXPECT_EQ(text_of(-1, "HEX", "", 2), "FFFF");
    EXPECT_EQ(text_of(-1, "HEX", "", 4), "FFFFFFFF");
}
TEST(ValueToText, HexOfTheLargestUnsignedNumber) {
    EXPECT_EQ(text_of(4294967295.0, "HEX", "", 4), "FFFFFFFF");
    EXPECT_EQ(text_of(2147483648.0, "HEX", "", 4), "80000000");
}
TEST(ValueToText, HexIsPrefixedByZeros) {
    EXPECT_EQ(text_of(10, "HEX", "", 1), "0A");
    EXPECT_EQ(text_of(10, "HEX", "", 2), "000A");
    EXPECT_EQ(text_of(10, "HEX", "", 4), "0000000A");
}
TEST(ValueToText, HexKeepsTheLastDigits) {
    EXPECT_EQ(text_of(0x1234, "HEX", "", 1), "34");
    EXPECT_EQ(text_of(0x12345678, "HEX", "", 2), "5678");
}
TEST(ValueToText, HexTakesSignedSizeCodes) {
    EXPECT_EQ(text_of(-2, "HEX", "", 11), "FE");
    EXPECT_EQ(text_of(-2, "HEX", "", 12), "FFFE");
    EXPECT_EQ(text_of(-2, "HEX", "", 14), "FFFFFFFE");
}
TEST(ValueToText, HexOfAnotherSizeIsEmpty) {
    EXPECT_EQ(text_of(5, "HEX", "", 0), "");
    EXPECT_EQ(text_of(5, "HEX", "", 3), "");
    EXPECT_EQ(text_of(5, "HEX", "", 6), "");
    EXPECT_EQ(text_of(5, "HEX", "", -4), "");
}
TEST(ValueToText, AsciiBeginsWithTheLowestByte) {
    EXPECT_EQ(text_of(0x4142, "ASCII", "", 2), "BA");
    EXPECT_EQ(text_of(0x41, "ASCII", "", 1), "A");
    EXPECT_EQ(text_of(0x44434241, "ASCII", "", 14), "ABCD");
    EXPECT_EQ(text_of(0x41, "ASCII", "", 2), std::string("A\0", 2));
    EXPECT_EQ(text_of(-1, "ASCII", "", 6), "");
}
TEST(ValueToText, AsciiBytesAreThoseOfTheCodePage) {
    EXPECT_EQ(ascii_bytes(0xD0D6, 2), "\xD6\xD0");
    EXPECT_EQ(text_of(0xD0D6, "ASCII", "", 2), "中");
}

// --- value_to_unit ------------------------------------------------------------------------------

TEST(ValueToUnit, IsNotRounded) {
    EXPECT_EQ(unit_of(1000000, "rpm", kSpeed), 1000000.0 * 1875 / 512 / 10000);
}
TEST(ValueToUnit, TakesAnyLineThatHoldsTheClosedWord) {
    EXPECT_EQ(unit_of(5, "rpm", "[Xrpm]N*2\n[rpm]N*3"), 10);
    EXPECT_EQ(unit_of(5, "rpm", "[rpm]N*3\n[DEC rpm]N*2"), 15);
    EXPECT_EQ(unit_of(5, "rpm", "[rpm DEC]N*2\n[DEC rpm]N*4"), 20);
}
TEST(ValueToUnit, WholeNumbersInRawUnits) {
    for (const char* unit : {"DEC", "INC", "inc", "HEX"}) {
        EXPECT_EQ(unit_of(2.5, unit, ""), 3);
        EXPECT_EQ(unit_of(-2.5, unit, ""), -3);
        EXPECT_FALSE(std::signbit(unit_of(-0.2, unit, "")));
    }
}
TEST(ValueToUnit, UnitWithoutALineIsZero) {
    EXPECT_EQ(unit_of(5, "rpm", "[DEC]N*1"), 0);
}
TEST(ValueToUnit, AsciiIsAUnitLikeAnyOther) {
    EXPECT_EQ(unit_of(65, "ASCII", ""), 0);
    EXPECT_EQ(unit_of(65, "ASCII", "[ASCII]N*2"), 130);
}
TEST(ValueToUnit, UnseenObjectComputesWithTheCachedValue) {
    link::FormulaOperands unseen;
    unseen.o30400710.value = 4;
    EXPECT_EQ(value_to_unit(5, "x", "[x]N*[30400710]", 4, unseen), 20);
}
TEST(ValueToUnit, ValuesArePastedWithFifteenDigits) {
    EXPECT_EQ(unit_of(0.1234567890123456789, "x", "[x]N"), 0.123456789012346);
    EXPECT_EQ(unit_of(2.5, "x", "[x]N*2"), 5);
}
TEST(ValueToUnit, ExponentOfAPastedValueSplitsAtItsSign) {
    EXPECT_EQ(unit_of(1E15, "x", "[x]N"), 16);
    EXPECT_EQ(unit_of(999999999999999.0, "x", "[x]N"), 999999999999999.0);
    EXPECT_EQ(unit_of(0.00001, "x", "[x]N"), -4);
}

// --- text_to_value ------------------------------------------------------------------------------

TEST(TextToValue, EmptyTextIsZero) {
    EXPECT_EQ(raw_of("", "DEC", ""), 0);
    EXPECT_EQ(raw_of("", "HEX", ""), 0);
    EXPECT_EQ(raw_of("", "rpm", kSpeed), 0);
}
TEST(TextToValue, EmptyTextInAsciiIsTheCodeOfTheDigitZero) {
    EXPECT_EQ(raw_of("", "ASCII", ""), 48);
}
TEST(TextToValue, ElevenCharactersAreOutOfRangeInEveryUnit) {
    for (const char* unit : {"DEC", "INC", "inc", "HEX", "ASCII", "rpm", "none"}) {
        EXPECT_EQ(raw_of("12345678901", unit, kSpeed), 4294967296.0) << unit;
    }
}
TEST(TextToValue, TenCharactersAreRead) {
    EXPECT_EQ(raw_of("9999999999", "DEC", ""), 9999999999.0);
    EXPECT_EQ(raw_of("中中中中中中中中中中", "DEC", ""), 0);
    EXPECT_EQ(raw_of("中中中中中中中中中中中", "DEC", ""), kTooLong);
}
TEST(TextToValue, DecimalIsTheLeadingNumber) {
    EXPECT_EQ(raw_of("12.5abc", "DEC", ""), 12.5);
    EXPECT_EQ(raw_of("-12", "INC", ""), -12);
    EXPECT_EQ(raw_of("1-2", "inc", ""), 1);
    EXPECT_EQ(raw_of("abc", "DEC", ""), 0);
}
TEST(TextToValue, NumberThatOverflowsTheScannerGoesToTheCaller) {
    EXPECT_FALSE(text_to_value("1E999", "DEC", "", {}).has_value());
    EXPECT_EQ(raw_of("1E999", "x", "[x DEC]N*1"), 0);
}
TEST(TextToValue, HexFollowsTheSignRule) {
    EXPECT_EQ(raw_of("FFFF", "HEX", ""), -1);
    EXPECT_EQ(raw_of("0000FFFF", "HEX", ""), -1);
    EXPECT_EQ(raw_of("8000", "HEX", ""), -32768);
    EXPECT_EQ(raw_of("00010000", "HEX", ""), 65536);
    EXPECT_EQ(raw_of("FFFFFFFF", "HEX", ""), -1);
    EXPECT_EQ(raw_of("7fffffff", "HEX", ""), 2147483647);
}
TEST(TextToValue, HexOfMoreThanEightDigitsIsPositive) {
    EXPECT_EQ(raw_of("123456789", "HEX", ""), 4886718345.0);
}
TEST(TextToValue, SignedHexReadsAsZero) {
    EXPECT_EQ(raw_of("-1", "HEX", ""), 0);
}
TEST(TextToValue, AsciiSumsItsBytes) {
    EXPECT_EQ(raw_of("BA", "ASCII", ""), 0x4142);
    EXPECT_EQ(raw_of("中", "ASCII", ""), 0xD0D6);
    EXPECT_EQ(raw_of("ABCDE", "ASCII", ""), 0x4544434241);
}
TEST(TextToValue, LineBackToTheRawValue) {
    EXPECT_EQ(raw_of("3000", "rpm", kSpeed), 3000.0 / 1875 * 512 * 10000);
    EXPECT_EQ(raw_of("10", "Ap", "[Ap DEC]N*2048/[65100310]*10"), 10.0 * 2048 / 480 * 10);
    EXPECT_EQ(raw_of("2", "rps/s", "[rps/s DEC]N/1000/4000*65536*[64100320]"),
              2.0 / 1000 / 4000 * 65536 * 10000);
}
TEST(TextToValue, UnitWithoutALineBackIsZero) {
    EXPECT_EQ(raw_of("5", "rpm", "[DEC rpm]N*2"), 0);
}
TEST(TextToValue, WordFindsALongerOneThatBeginsWithIt) {
    EXPECT_EQ(raw_of("5", "rps", "[rps/s DEC]N*2\n[rps DEC]N*3"), 10);
}
TEST(TextToValue, ExpressionIsBehindTheFirstBracket) {
    EXPECT_EQ(raw_of("5", "x", "[x DEC]N*[64100320]"), 50000);
    EXPECT_EQ(raw_of("5", "x", "][x DEC]N*2"), 0);
    EXPECT_EQ(raw_of("5", "x", "[x N*2"), 0);
}
TEST(TextToValue, TypedTextTakesPartInTheExpression) {
    EXPECT_EQ(raw_of("1-2", "rpm", kSpeed), 1 - 2.0 / 1875 * 512 * 10000);
    EXPECT_EQ(raw_of("2*3", "x", "[x DEC]N*10"), 60);
    EXPECT_EQ(raw_of("(1+1)", "x", "[x DEC]N*10"), 20);
}
TEST(TextToValue, UnseenObjectComputesWithTheCachedValue) {
    link::FormulaOperands unseen;
    unseen.o30400710.value = 4;
    EXPECT_EQ(text_to_value("5", "x", "[x DEC]N*[30400710]", unseen), 20);
}

// --- properties ---------------------------------------------------------------------------------

// What a 32-bit cell shows in HEX, committed unchanged, is the same number again, except that up to
// four significant digits with the high bit set read as negative.
TEST(FormulaProperty, HexTextReadsBack) {
    Random random(3);
    for (int i = 0; i < 20000; ++i) {
        const std::uint32_t bits = random.bits() >> random.below(32);
        const double back = raw_of(text_of(bits, "HEX", ""), "HEX", "");
        const std::uint32_t read = static_cast<std::uint32_t>(static_cast<std::int64_t>(back));
        const bool short_negative = bits >= 0x8000 && bits <= 0xFFFF;
        ASSERT_EQ(read, short_negative ? bits | 0xFFFF0000 : bits);
    }
}

TEST(FormulaProperty, AsciiTextReadsBack) {
    Random random(4);
    for (int i = 0; i < 20000; ++i) {
        const std::uint32_t bits = random.bits();
        ASSERT_EQ(ascii_value(ascii_bytes(bits, 4)), bits);
    }
}

TEST(FormulaProperty, DecimalTextReadsBack) {
    Random random(5);
    for (int i = 0; i < 20000; ++i) {
        const auto value = static_cast<std::int32_t>(random.bits());
        if (value < -999999999) continue;  // eleven characters
        ASSERT_EQ(raw_of(text_of(value, "DEC", ""), "DEC", ""), value);
    }
}

TEST(FormulaProperty, SpeedTypedAndShownAgree) {
    Random random(6);
    for (int i = 0; i < 5000; ++i) {
        const std::string typed = std::to_string(random.below(6000)) + ".25";
        const double raw = raw_of(typed, "rpm", kSpeed);
        ASSERT_EQ(text_of(std::nearbyint(raw), "rpm", kSpeed), typed);
    }
}

}  // namespace
}  // namespace servo::params
