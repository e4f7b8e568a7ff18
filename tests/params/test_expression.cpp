#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "params/expression.h"
#include "params/expression_text.h"
#include "params/random_formula.h"

namespace servo::params {
namespace {

double value_of(std::string_view text) {
    const auto value = eval_expression(text);
    EXPECT_TRUE(value.has_value()) << text;
    return value.value_or(NAN);
}

bool goes_to_caller(std::string_view text) {
    return !eval_expression(text).has_value();
}

std::vector<std::string> terms_of(std::string_view text) {
    std::vector<std::string> terms;
    Terms walk(text);
    for (std::string_view term; walk.next(term);)
        terms.emplace_back(term);
    return terms;
}

std::vector<std::string> operands_of(std::string_view term) {
    std::vector<std::string> operands;
    Operands walk(term);
    for (OperandPart part; walk.next(part);) {
        operands.emplace_back(part.text);
        if (part.operator_behind != 0) operands.emplace_back(1, part.operator_behind);
    }
    return operands;
}

using Texts = std::vector<std::string>;

// A repeated text without the cost of a loop in each test.
std::string repeated(std::string_view piece, std::size_t times) {
    std::string text;
    text.reserve(piece.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        text += piece;
    return text;
}

// --- precedence -------------------------------------------------------------------------------

TEST(Expression, ProductBindsCloserThanSum) {
    EXPECT_EQ(value_of("2+3*4"), 14);
}
TEST(Expression, ParenthesesGroup) {
    EXPECT_EQ(value_of("(2+3)*4"), 20);
}
TEST(Expression, NestedParenthesesGroup) {
    EXPECT_EQ(value_of("2*(3+(4-1))"), 12);
}
TEST(Expression, PowerHasThePrecedenceOfAProduct) {
    EXPECT_EQ(value_of("2*3^2"), 36);
}
TEST(Expression, PowerWorksFromLeftToRight) {
    EXPECT_EQ(value_of("2^3^2"), 64);
}
TEST(Expression, DivisionWorksFromLeftToRight) {
    EXPECT_EQ(value_of("7*1000/3/7"), 7.0 * 1000 / 3 / 7);
    EXPECT_EQ(value_of("1/3/7*21"), 1.0 / 3 / 7 * 21);
}
TEST(Expression, DifferencesWorkFromLeftToRight) {
    EXPECT_EQ(value_of("10-3-2"), 5);
}
TEST(Expression, ManyParenthesesKeepTheirNumbers) {
    EXPECT_EQ(value_of("(1)+(2)+(3)+(4)+(5)+(6)+(7)+(8)+(9)+(10)+(11)*(12)"), 55 + 11 * 12);
}

// --- trailing operators and empty pieces --------------------------------------------------------

TEST(Expression, TrailingProductSignDoesNothing) {
    EXPECT_EQ(value_of("3*"), 3);
}
TEST(Expression, TrailingOperatorOfAnyKindDoesNothing) {
    EXPECT_EQ(value_of("3/"), 3);
    EXPECT_EQ(value_of("3^"), 3);
    EXPECT_EQ(value_of("2*3*"), 6);
}
TEST(Expression, TrailingOperatorBehindAParenthesisDoesNothing) {
    EXPECT_EQ(value_of("(2+3)*"), 5);
    EXPECT_EQ(value_of("sqr(16)/"), 4);
}
TEST(Expression, SignAtTheVeryEndIsLost) {
    EXPECT_EQ(value_of("5-"), 5);
    EXPECT_EQ(value_of("5+"), 5);
    EXPECT_EQ(terms_of("5-"), (Texts{"5"}));
}
TEST(Expression, TextWithoutAnythingIsZero) {
    EXPECT_EQ(value_of(""), 0);
    EXPECT_EQ(value_of("-"), 0);
    EXPECT_EQ(value_of("()"), 0);
}
TEST(Expression, LeadingSignMakesAnEmptyFirstTerm) {
    EXPECT_EQ(terms_of("-3"), (Texts{"", "-3"}));
    EXPECT_EQ(terms_of("+3"), (Texts{"", "3"}));
    EXPECT_EQ(value_of("-3"), -3);
    EXPECT_EQ(value_of("+3"), 3);
}
TEST(Expression, EmptyOperandIsZero) {
    EXPECT_EQ(value_of("2**3"), 0);
    EXPECT_EQ(value_of("*5"), 0);
    EXPECT_EQ(operands_of("2**3"), (Texts{"2", "*", "", "*", "3"}));
}
TEST(Expression, LastCharacterBelongsToItsOperand) {
    EXPECT_EQ(operands_of("3*"), (Texts{"3*"}));
    EXPECT_EQ(operands_of("*"), (Texts{"*"}));
    EXPECT_EQ(operands_of("2*/"), (Texts{"2", "*", "/"}));
}

// --- signs cut wherever they stand --------------------------------------------------------------

TEST(Expression, SignBehindAnOperatorCutsTheTerm) {
    EXPECT_EQ(value_of("5*-2"), 3);
    EXPECT_EQ(terms_of("3*-2"), (Texts{"3*", "-2"}));
}
TEST(Expression, SignOfAnExponentCutsTheTerm) {
    EXPECT_EQ(terms_of("1E-05"), (Texts{"1E", "-05"}));
    EXPECT_EQ(value_of("1E-05"), -4);
    EXPECT_EQ(value_of("1E+15"), 16);
    EXPECT_EQ(value_of("1E3"), 1000);
}
TEST(Expression, DoubledMinusIsAnEmptyTermAndANegativeOne) {
    EXPECT_EQ(terms_of("5--3"), (Texts{"5", "-", "-3"}));
    EXPECT_EQ(value_of("5--3"), 2);
}
TEST(Expression, MinusBeforePlusIsLostInAnEmptyTerm) {
    EXPECT_EQ(terms_of("5-+3"), (Texts{"5", "-", "3"}));
    EXPECT_EQ(value_of("5-+3"), 8);
    EXPECT_EQ(value_of("5+-3"), 2);
}
TEST(Expression, NegativeFirstOperandIsSafe) {
    EXPECT_EQ(value_of("-100*1875/512/10000"), -100.0 * 1875 / 512 / 10000);
}
TEST(Expression, MinusBelongsToTheFirstOperandNotToTheTerm) {
    EXPECT_EQ(value_of("-2^2"), 4);
    EXPECT_EQ(value_of("0-2^2"), 4);
}

// --- factorial ----------------------------------------------------------------------------------

TEST(Expression, FactorialOfFive) {
    EXPECT_EQ(value_of("5!"), 120);
}
TEST(Expression, FactorialTakesTheSignLast) {
    EXPECT_EQ(value_of("-3!"), -6);
}
TEST(Expression, FactorialOfZeroIsOne) {
    EXPECT_EQ(value_of("0!"), 1);
}
TEST(Expression, FactorialRoundsHalvesToEven) {
    EXPECT_EQ(value_of("2.5!"), 2);
    EXPECT_EQ(value_of("3.5!"), 24);
    EXPECT_EQ(value_of("0.5!"), 1);
}
TEST(Expression, FactorialWithinAProduct) {
    EXPECT_EQ(value_of("2*3!/4"), 3);
}
TEST(Expression, FactorialSignMustBeTheLastCharacter) {
    EXPECT_EQ(value_of("5!2"), 5);
}
TEST(Expression, FactorialOfANumberBeyond16BitsFails) {
    EXPECT_EQ(value_of("1+32768!"), 0);
    EXPECT_EQ(value_of("1+99999!"), 0);
}
TEST(Expression, FactorialThatOverflowsFails) {
    EXPECT_GT(value_of("170!"), 7e306);
    EXPECT_EQ(value_of("1+171!"), 0);
    EXPECT_EQ(value_of("1+32767!"), 0);
}
TEST(Expression, FactorialOfWordsIsOne) {
    EXPECT_EQ(value_of("x!"), 1);
}

// --- functions ----------------------------------------------------------------------------------

TEST(Expression, Functions) {
    EXPECT_EQ(value_of("sin(1)"), std::sin(1.0));
    EXPECT_EQ(value_of("cos(1)"), std::cos(1.0));
    EXPECT_EQ(value_of("tan(1)"), std::tan(1.0));
    EXPECT_EQ(value_of("abs(2.5)"), 2.5);
    EXPECT_EQ(value_of("atn(1)"), std::atan(1.0));
    EXPECT_EQ(value_of("int(2.7)"), 2);
    EXPECT_EQ(value_of("fix(2.7)"), 2);
    EXPECT_EQ(value_of("sgn(7)"), 1);
    EXPECT_EQ(value_of("sgn(0)"), 0);
    EXPECT_EQ(value_of("sqr(16)"), 4);
}
TEST(Expression, NaturalLogarithmOfE) {
    EXPECT_NEAR(value_of("ln(2.718281828)"), 1, 1e-9);
}
TEST(Expression, DecimalLogarithmOfAHundred) {
    EXPECT_EQ(value_of("lg(100)"), 2);
}
TEST(Expression, DecimalLogarithmIsTheNaturalOneOverThatOfTen) {
    EXPECT_EQ(value_of("lg(7)"), std::log(7.0) / std::log(10.0));
}
TEST(Expression, QuotientByAFunction) {
    EXPECT_EQ(value_of("1/sin(2)"), 1 / std::sin(2.0));
}
TEST(Expression, FunctionTakesASign) {
    EXPECT_EQ(value_of("-sqr(9)+1"), -2);
}
TEST(Expression, FunctionsNest) {
    EXPECT_EQ(value_of("sqr(abs(sqr(256)))"), 4);
}
TEST(Expression, FunctionNamesAreLowerCase) {
    EXPECT_EQ(value_of("Sqr(16)"), 0);
}
TEST(Expression, FunctionNameMustTouchItsParenthesis) {
    EXPECT_EQ(value_of("sqr (16)"), 0);
    EXPECT_EQ(value_of("2+sqr16"), 2);
}

TEST(Expression, AbsoluteValueOfANegativeNumberFailsThroughTheRoot) {
    EXPECT_EQ(value_of("abs(-1)"), 0);
    EXPECT_EQ(value_of("5+abs(-1)"), 0);
}
TEST(Expression, SignOfANegativeNumberFailsThroughTheRoot) {
    EXPECT_EQ(value_of("7+sgn(-3)"), 0);
}
TEST(Expression, EveryFunctionFailsForANegativeNumber) {
    for (const char* name : {"sin", "cos", "tan", "abs", "atn", "int", "fix", "sgn", "sqr"}) {
        EXPECT_EQ(value_of("1+" + std::string(name) + "(0-1)"), 0) << name;
    }
}
TEST(Expression, LogarithmOfZeroOrLessFails) {
    EXPECT_EQ(value_of("1+lg(0)"), 0);
    EXPECT_EQ(value_of("1+ln(0)"), 0);
    EXPECT_EQ(value_of("lg(-5)"), 0);
    EXPECT_EQ(value_of("ln(0-5)"), 0);
}

// --- failures -----------------------------------------------------------------------------------

TEST(Expression, DivisionByZeroGivesZero) {
    EXPECT_EQ(value_of("5/0"), 0);
    EXPECT_EQ(value_of("7+5/0"), 0);
    EXPECT_EQ(value_of("7+0/0"), 0);
}
TEST(Expression, OverflowGivesZero) {
    EXPECT_EQ(value_of("7+1E308*10"), 0);
    EXPECT_EQ(value_of("10^400+7"), 0);
    EXPECT_EQ(value_of("1E308+1E308"), 0);
}
TEST(Expression, UnderflowIsNoFailure) {
    EXPECT_EQ(value_of("7+1/1E300/1E300"), 7);
}
TEST(Expression, InvalidPowerGivesZero) {
    EXPECT_EQ(value_of("7+(0-8)^0.5"), 0);
    EXPECT_EQ(value_of("7+0^(0-1)"), 0);
    EXPECT_EQ(value_of("0^0"), 1);
    EXPECT_EQ(value_of("(0-8)^3"), -512);
}
TEST(Expression, FailureInAnInnerLevelAbandonsTheWhole) {
    EXPECT_EQ(value_of("100+(1/0)*0"), 0);
}
TEST(Expression, FirstOperandThatOverflowsIsAnArithmeticFailure) {
    EXPECT_EQ(value_of("200!"), 0);
    EXPECT_EQ(value_of("1E999"), 0);
    EXPECT_EQ(value_of("40000!+3"), 0);
}
TEST(Expression, MoreOpeningThanClosingParenthesesGoToTheCaller) {
    EXPECT_TRUE(goes_to_caller("(1+2"));
    EXPECT_TRUE(goes_to_caller("((1)"));
    EXPECT_TRUE(goes_to_caller("5*("));
}
TEST(Expression, ParenthesesInTheWrongOrderGoToTheCaller) {
    EXPECT_TRUE(goes_to_caller(")("));
    EXPECT_TRUE(goes_to_caller("5)+(3"));
}
TEST(Expression, MoreClosingThanOpeningParenthesesAreRead) {
    EXPECT_EQ(value_of("5)"), 5);
    EXPECT_EQ(value_of("(2+3))*2"), 0);
    EXPECT_EQ(value_of("2*3)"), 6);
}
TEST(Expression, LogarithmOfNothingGoesToTheCaller) {
    EXPECT_TRUE(goes_to_caller("lg()"));
    EXPECT_TRUE(goes_to_caller("ln()"));
    EXPECT_TRUE(goes_to_caller("ln()+1"));
    EXPECT_TRUE(goes_to_caller("lg(+)"));
}
TEST(Expression, LogarithmOfNothingBehindAnOperandGivesZero) {
    EXPECT_EQ(value_of("1+lg()"), 0);
    EXPECT_EQ(value_of("3*ln()"), 0);
    EXPECT_EQ(value_of("(1)+lg()"), 0);
}
TEST(Expression, LogarithmOfABlankIsAnArithmeticFailure) {
    EXPECT_EQ(value_of("lg( )"), 0);
}
TEST(Expression, RootOfNothingIsZero) {
    EXPECT_EQ(value_of("sqr()+cos()"), 1);
}

// --- 16-bit counters ----------------------------------------------------------------------------

TEST(Expression, AsManyCharactersAsTheCountersCount) {
    EXPECT_EQ(value_of("1+" + std::string(32764, '0') + "2"), 3);
}
TEST(Expression, MoreCharactersThanTheCountersCountGoToTheCaller) {
    EXPECT_TRUE(goes_to_caller("1+" + std::string(32765, '0') + "2"));
}
TEST(Expression, MarkersThatOutgrowTheCountersGoToTheCaller) {
    EXPECT_TRUE(goes_to_caller(repeated("()", 16383)));
    EXPECT_EQ(value_of(repeated("()", 100)), 0);
}
TEST(Expression, DeepParentheses) {
    EXPECT_EQ(value_of(std::string(2000, '(') + "7" + std::string(2000, ')')), 7);
}

// --- markers ------------------------------------------------------------------------------------

TEST(Expression, DigitGluedToAParenthesisNamesALevelThatIsNotThere) {
    EXPECT_EQ(value_of("(7)5"), 0);
    EXPECT_EQ(value_of("1+(7)5"), 1);
    EXPECT_EQ(value_of("(7)0"), 0);
}
TEST(Expression, AnythingGluedToAParenthesisReadsAsZero) {
    EXPECT_EQ(value_of("1+(7)a"), 1);
    EXPECT_EQ(value_of("1+(7)!"), 1);
    EXPECT_EQ(value_of("1+(7).5"), 1);
    EXPECT_EQ(value_of("1+(7)(8)"), 1);
}
TEST(Expression, GluedDigitMayNameALevelThatIsThere) {
    // Twelve parentheses: `(1)2` names level 12.
    EXPECT_EQ(value_of("(1)2+0*(2)*(3)*(4)*(5)*(6)*(7)*(8)*(9)*(10)*(11)*(12)"), 12);
}
TEST(Expression, BlanksBehindAParenthesisDoNotCount) {
    EXPECT_EQ(value_of("(2+3) *4"), 20);
    EXPECT_EQ(value_of("2*(3+4)   "), 14);
}
TEST(Expression, GluedFunctionArgumentIsZero) {
    EXPECT_EQ(value_of("1+cos(7)5"), 2);
    EXPECT_EQ(value_of("1+lg(7)5"), 0);
}
TEST(Expression, WrittenMarkerNamesALevel) {
    EXPECT_EQ(value_of("(4)*\x80"
                       "1"),
              16);
    EXPECT_EQ(value_of("\x80"
                       "1+3"),
              3);
    EXPECT_EQ(value_of("\x80+3"), 3);
    EXPECT_TRUE(
        goes_to_caller("lg\x80"
                       "7"));
}
TEST(Expression, LevelThatIsNotYetDoneIsZero) {
    EXPECT_EQ(value_of("(\x80"
                       "2+1)+(5)"),
              6);
}

// --- leading numbers ----------------------------------------------------------------------------

TEST(Expression, WhatIsNoNumberReadsAsZero) {
    EXPECT_EQ(value_of("abc"), 0);
    EXPECT_EQ(value_of("3+[12345678]"), 3);
    EXPECT_EQ(value_of("3*[12345678]"), 0);
}
TEST(Expression, NumberStopsAtTheFirstOtherCharacter) {
    EXPECT_EQ(value_of("12abc*2"), 24);
    EXPECT_EQ(value_of("1.5.5*2"), 3);
}
TEST(Expression, BlanksBeforeANumberDoNotCount) {
    EXPECT_EQ(value_of("  2* 3"), 6);
}
TEST(Expression, HexadecimalNumbersTakeTheirSignRule) {
    EXPECT_EQ(value_of("&HFF*2"), 510);
    EXPECT_EQ(value_of("&HFFFF"), -1);
    EXPECT_EQ(value_of("-&HFFFF"), 1);
}

TEST(Expression, ResultIsNeverANegativeZero) {
    EXPECT_FALSE(std::signbit(value_of("-0")));
    EXPECT_FALSE(std::signbit(value_of("-0*5")));
    EXPECT_FALSE(std::signbit(value_of("-1/1E300/1E300")));
}

// --- properties ---------------------------------------------------------------------------------

// Well-formed text against a computation that never sees text.
TEST(Expression, AgreesWithATreeForWellFormedText) {
    Random random(20240611);
    int values = 0;
    for (int i = 0; i < 20000; ++i) {
        const Sample sample = well_formed(random, 3);
        const double got = value_of(sample.text);
        if (!sample.value) {
            ASSERT_EQ(got, 0) << sample.text;
            continue;
        }
        ++values;
        ASSERT_EQ(got, *sample.value) << sample.text;
    }
    EXPECT_GT(values, 5000);
}

TEST(Expression, AnyTextEndsInANumberOrWithTheCaller) {
    Random random(7);
    for (int i = 0; i < 50000; ++i) {
        const std::string text = any_text(random, 24);
        const auto value = eval_expression(text);
        ASSERT_TRUE(!value || std::isfinite(*value)) << text;
    }
}

}  // namespace
}  // namespace servo::params
