// The 1, 2, 5 rule and the steps of scales and offsets.
#include "scope/scale_steps.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "base/number.h"

namespace servo::scope {
namespace {

struct SpanCase {
    double wanted;  // units per division: a sixth of the span
    const char* text;
};

class ScaleForSpan : public testing::TestWithParam<SpanCase> {};

TEST_P(ScaleForSpan, GivesTheStep) {
    EXPECT_EQ(scale_for_span(GetParam().wanted * 6).text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ScaleForSpan,
    testing::Values(
        // Went down: the next of 1, 2, 5.
        SpanCase{0.14, "2.0E-01"}, SpanCase{1.01, "2.0E+00"}, SpanCase{1.49, "2.0E+00"},
        SpanCase{2.1, "5.0E+00"}, SpanCase{3.4, "5.0E+00"}, SpanCase{4.4, "5.0E+00"},
        SpanCase{5.1, "1.0E+01"}, SpanCase{6.2, "1.0E+01"}, SpanCase{8.4, "1.0E+01"},
        SpanCase{9.49, "1.0E+01"},
        // Went up: keeps its digit, whichever it is.
        SpanCase{1.0 / 6, "2.0E-01"}, SpanCase{0.55, "6.0E-01"}, SpanCase{0.96, "1.0E+00"},
        SpanCase{2.5, "3.0E+00"}, SpanCase{3.5, "4.0E+00"}, SpanCase{4.6, "5.0E+00"},
        SpanCase{6.7, "7.0E+00"}, SpanCase{7.8, "8.0E+00"}, SpanCase{8.9, "9.0E+00"},
        SpanCase{9.5, "1.0E+01"}, SpanCase{99.9, "1.0E+02"},
        // Halves go up, judged on the decimal text: 0.15 lies below its half in binary.
        SpanCase{0.15, "2.0E-01"}, SpanCase{1.5, "2.0E+00"}, SpanCase{0.45, "5.0E-01"},
        SpanCase{0.65, "7.0E-01"},
        // Exact steps stay, whatever binary makes of them.
        SpanCase{0.1, "1.0E-01"}, SpanCase{0.2, "2.0E-01"}, SpanCase{0.3, "3.0E-01"},
        SpanCase{0.7, "7.0E-01"}, SpanCase{1, "1.0E+00"}, SpanCase{2, "2.0E+00"},
        SpanCase{5, "5.0E+00"}, SpanCase{100, "1.0E+02"}, SpanCase{1000000, "1.0E+06"},
        // Exponents have a sign and two digits, more where they are needed.
        SpanCase{0.0014, "2.0E-03"}, SpanCase{2e15, "2.0E+15"}, SpanCase{2e-15, "2.0E-15"},
        SpanCase{2e100, "2.0E+100"}, SpanCase{2e-100, "2.0E-100"}));

TEST(ScaleForSpanEdges, FourteenHundredthsWentDownAndRiseToTwoTenths) {
    EXPECT_EQ(scale_for_span(6 * 0.14), (ScaleStep{2, -1}));
}

TEST(ScaleForSpanEdges, NinetySixHundredthsWentUpToOneAndStay) {
    EXPECT_EQ(scale_for_span(6 * 0.96), (ScaleStep{1, 0}));
}

TEST(ScaleForSpanEdges, FiftyFiveHundredthsWentUpAndKeepTheirSix) {
    EXPECT_EQ(scale_for_span(6 * 0.55), (ScaleStep{6, -1}));
}

TEST(ScaleForSpanEdges, FlatTraceGivesTwoTenths) {
    const ScaleStep step = scale_for_span(1.0);
    EXPECT_EQ(step, (ScaleStep{2, -1}));
    EXPECT_EQ(step.text(), "2.0E-01");
    EXPECT_EQ(step.value(), 0.2);
}

TEST(ScaleForSpanEdges, NoNumberCountsAsOne) {
    for (const double span :
         {0.0, -0.0, std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::denorm_min()})
        EXPECT_EQ(scale_for_span(span), (ScaleStep{2, -1}));
    EXPECT_EQ(scale_for_span(-12), scale_for_span(12));
}

RC_GTEST_PROP(ScaleForSpanEdgesProperty, SixDivisionsHoldTheSpanAndNoMoreThanTwoAndAHalfTimesIt,
              ()) {
    const double mantissa = *rc::gen::inRange(1'000'000, 10'000'000) / 1e6;
    const int exponent = *rc::gen::inRange(-200, 200);
    const double span = mantissa * std::pow(10.0, exponent);
    const ScaleStep step = scale_for_span(span);
    RC_ASSERT(step.mantissa >= 1);
    RC_ASSERT(step.mantissa <= 9);
    const double held = 6 * step.value();
    RC_ASSERT(held >= span * (1 - 1e-14));
    RC_ASSERT(held <= 2.5 * span);
    RC_ASSERT(base::leading_number(step.text()) == step.value());
}

struct StepCase {
    const char* below;
    const char* above;
    bool small;
};

class ScaleSteps : public testing::TestWithParam<StepCase> {};

TEST_P(ScaleSteps, UpAndDownMirrorEachOther) {
    const StepCase& one = GetParam();
    EXPECT_EQ(scale_up(one.below, one.small), one.above);
    EXPECT_EQ(scale_down(one.above, one.small), one.below);
}

INSTANTIATE_TEST_SUITE_P(
    Large, ScaleSteps,
    testing::Values(StepCase{"1.0E+00", "2.0E+00", false}, StepCase{"2.0E-03", "3.0E-03", false},
                    StepCase{"8.0E+00", "9.0E+00", false}, StepCase{"9.0E+00", "1.0E+01", false},
                    StepCase{"9.0E-01", "1.0E+00", false}, StepCase{"9.0E-02", "1.0E-01", false},
                    StepCase{"9.0E+09", "1.0E+10", false}, StepCase{"9.0E-10", "1.0E-09", false},
                    // The second digit stays.
                    StepCase{"2.7E+00", "3.7E+00", false}, StepCase{"9.5E+00", "1.5E+01", false}));

INSTANTIATE_TEST_SUITE_P(
    Small, ScaleSteps,
    testing::Values(StepCase{"1.0E+00", "1.1E+00", true}, StepCase{"2.0E-03", "2.1E-03", true},
                    StepCase{"2.8E-03", "2.9E-03", true}, StepCase{"2.9E-03", "3.0E-03", true},
                    StepCase{"9.8E+00", "9.9E+00", true}, StepCase{"9.9E+00", "1.0E+01", true},
                    StepCase{"9.9E-01", "1.0E+00", true}, StepCase{"9.9E+99", "1.0E+100", true}));

TEST(ScaleStepsEdges, FirstTextHasNoSignAndItsSuccessorsHave) {
    EXPECT_EQ(scale_up("1.0E00", false), "2.0E+00");
    EXPECT_EQ(scale_up("1.0E00", true), "1.1E+00");
    EXPECT_EQ(scale_down("1.0E00", false), "9.0E-01");
    EXPECT_EQ(scale_down("1.0E00", true), "9.9E-01");
}

TEST(ScaleStepsEdges, TypedTextsAreBroughtIntoTheFormFirst) {
    EXPECT_EQ(scale_up("100", false), "2.0E+02");
    EXPECT_EQ(scale_up("0.025", true), "2.6E-02");
    EXPECT_EQ(scale_up("2.54", true), "2.6E+00");
    EXPECT_EQ(scale_up("2.55", true), "2.7E+00");
    EXPECT_EQ(scale_up("9.96", true), "1.1E+01");
    EXPECT_EQ(scale_up("0.5E+00", false), "6.0E-01");
    EXPECT_EQ(scale_down("1e3", false), "9.0E+02");
    EXPECT_EQ(scale_up(" 3 rpm", false), "4.0E+00");
}

TEST(ScaleStepsEdges, NoNumberCountsAsOne) {
    for (const char* text : {"", "abc", "0", "0.0E+00", "1E999"}) {
        EXPECT_EQ(scale_up(text, false), "2.0E+00") << text;
        EXPECT_EQ(scale_down(text, false), "9.0E-01") << text;
    }
}

TEST(ScaleStepsEdges, ScaleThatTurnsTheCurveOverKeepsItsSign) {
    EXPECT_EQ(scale_up("-2.0E-03", false), "-3.0E-03");
    EXPECT_EQ(scale_down("-1.0E+00", true), "-9.9E-01");
}

TEST(ScaleStepsEdges, StepsEndWhereNumbersEnd) {
    EXPECT_EQ(scale_up("1.0E+308", true), "1.1E+308");
    EXPECT_EQ(scale_up("1.7E+308", true), "1.7E+308");
    std::string text = "1.0E-320";
    for (int i = 0; i < 200; ++i)
        text = scale_down(text, false);
    EXPECT_GT(base::leading_number(text), 0.0);
}

RC_GTEST_PROP(ScaleStepsEdgesProperty, EveryStepUpIsUndoneByOneDown, ()) {
    const int digits = *rc::gen::inRange(10, 100);
    const ScaleStep exponent{1, *rc::gen::inRange(-99, 99)};
    const std::string tail = exponent.text().substr(3);
    const std::string text = std::to_string(digits / 10) + "." + std::to_string(digits % 10) + tail;
    const bool small = *rc::gen::arbitrary<bool>();
    const std::string up = scale_up(text, small);
    RC_ASSERT(base::leading_number(up) > base::leading_number(text));
    RC_ASSERT(scale_down(up, small) == text);
    RC_ASSERT(scale_up(scale_down(text, small), small) == text);
}

TEST(OffsetText, AlwaysHasOneDecimalAndNoSignAtZero) {
    struct Case {
        double value;
        const char* text;
    };
    for (const Case one :
         {Case{0, "0.0"}, Case{-0.0, "0.0"}, Case{2, "2.0"}, Case{-2, "-2.0"}, Case{0.5, "0.5"},
          Case{-0.25, "-0.25"}, Case{1e14, "100000000000000.0"}, Case{-1e-15, "0.0"},
          Case{0.1 + 0.2, "0.3"}, Case{std::numeric_limits<double>::infinity(), "0.0"}}) {
        EXPECT_EQ(offset_text(one.value), one.text);
        EXPECT_EQ(auto_offset_text(one.value), one.text);
    }
}

TEST(OffsetText, HasThirteenDecimalsAfterAStepAndFourteenFromAutomaticScaling) {
    EXPECT_EQ(offset_text(0.12345678901234), "0.1234567890123");
    EXPECT_EQ(auto_offset_text(0.12345678901234), "0.12345678901234");
    EXPECT_EQ(auto_offset_text(-0.000000000000004), "0.0");
    EXPECT_EQ(auto_offset_text(-0.000000000000005), "-0.00000000000001");
    EXPECT_EQ(offset_text(-0.00000000000004), "0.0");
}

}  // namespace
}  // namespace servo::scope
