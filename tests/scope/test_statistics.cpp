// Figures of a stretch of values.
#include "scope/statistics.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace servo::scope {
namespace {

TEST(Statistics, EmptyStretchHasNone) {
    EXPECT_FALSE(statistics_of({}));
}

TEST(Statistics, OneValue) {
    const std::vector<double> values{-3.5};
    EXPECT_EQ(statistics_of(values), (Statistics{-3.5, -3.5, -3.5, 3.5, 0.0}));
}

TEST(Statistics, ZerosAreZero) {
    EXPECT_EQ(statistics_of(std::vector<double>(10)), (Statistics{0, 0, 0, 0, 0}));
}

TEST(Statistics, FewValues) {
    const std::vector<double> values{1, -7, 5, 5};
    const auto result = statistics_of(values);
    ASSERT_TRUE(result);
    EXPECT_EQ(*result, (Statistics{-7, 5, 1, 5, 12}));
}

TEST(Statistics, ConstantHasItselfAsMeanAndRms) {
    for (const double constant : {0.1, 1e-200, 1e200, -12345.678}) {
        const auto result = statistics_of(std::vector<double>(8191, constant));
        ASSERT_TRUE(result);
        EXPECT_DOUBLE_EQ(result->mean, constant);
        EXPECT_DOUBLE_EQ(result->rms, std::fabs(constant));
        EXPECT_EQ(result->peak_to_peak, 0.0);
    }
}

TEST(Statistics, SineHasItsAmplitudeOverRootTwo) {
    std::vector<double> values;
    values.reserve(8000);
    for (int i = 0; i < 8000; ++i)
        values.push_back(3 * std::sin(2 * std::numbers::pi * i / 80));
    const auto result = statistics_of(values);
    ASSERT_TRUE(result);
    EXPECT_NEAR(result->rms, 3 / std::numbers::sqrt2, 1e-14);
    EXPECT_NEAR(result->mean, 0.0, 1e-15);
    EXPECT_NEAR(result->peak_to_peak, 6.0, 1e-14);
}

TEST(Statistics, SmallRippleOnALargeValueKeepsItsDigits) {
    // A plain sum loses the ripple: 8192 times 1e12 leaves no place for 1e-3 in 53 bits.
    std::vector<double> values;
    values.reserve(8192);
    double plain = 0;
    for (int i = 0; i < 8192; ++i) {
        values.push_back(1e12 + (i % 4 == 0 ? 1.0 / 1024 : 0.0));
        plain += values.back();
    }
    const double expected = 1e12 + 1.0 / 4096;
    const auto result = statistics_of(values);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->mean, expected);
    EXPECT_NE(plain / 8192, expected) << "or this case shows nothing";
}

TEST(Statistics, CancellingSumsKeepWhatIsLeft) {
    EXPECT_EQ(statistics_of(std::vector<double>{1e16, 1, -1e16, 1})->mean, 0.5);
    EXPECT_EQ(statistics_of(std::vector<double>{1, 1e16, 1, -1e16})->mean, 0.5);
}

TEST(Statistics, NeitherSquaresNorSumsLeaveTheRange) {
    const auto large = statistics_of(std::vector<double>{1.5e308, 1.5e308, -1.5e308, 1.5e308});
    EXPECT_DOUBLE_EQ(large->mean, 0.75e308);
    EXPECT_DOUBLE_EQ(large->rms, 1.5e308);
    const auto little = statistics_of(std::vector<double>{3e-300, -3e-300});
    EXPECT_EQ(little->mean, 0.0);
    EXPECT_DOUBLE_EQ(little->rms, 3e-300);
}

RC_GTEST_PROP(StatisticsProperty, OrderOfTheFigures, (const std::vector<std::int32_t>& raw)) {
    RC_PRE(!raw.empty());
    const std::vector<double> values(raw.begin(), raw.end());
    const auto result = statistics_of(values);
    RC_ASSERT(result.has_value());
    long double sum = 0;
    long double squares = 0;
    for (const double value : values) {
        sum += value;
        squares += static_cast<long double>(value) * value;
    }
    const auto count = static_cast<long double>(values.size());
    RC_ASSERT(std::fabs(result->mean - static_cast<double>(sum / count)) <=
              1e-15 * std::fabs(result->mean));
    RC_ASSERT(std::fabs(result->rms - static_cast<double>(std::sqrt(squares / count))) <=
              1e-15 * result->rms);
    RC_ASSERT(result->minimum <= result->maximum);
    RC_ASSERT(result->peak_to_peak == result->maximum - result->minimum);
    RC_ASSERT(result->rms >= std::fabs(result->mean) * (1 - 1e-15));
}

}  // namespace
}  // namespace servo::scope
