#include "tuner/resonances.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tuner/filter.h"
#include "tuner/model_support.h"

namespace servo::tuner {
namespace {

using test::Complex;
using test::scan_of;

double radians(double hertz) {
    return 2.0 * std::numbers::pi * hertz;
}

Complex pair(Complex s, double hertz, double damping) {
    const double w = radians(hertz);
    return s * s / (w * w) + 2.0 * damping * s / w + 1.0;
}

// A motor and a load behind a shaft: falls with the frequency, a dip, a tip, and on.
test::Plant two_masses(double dip, double dip_damping, double tip, double tip_damping) {
    return [=](Complex s) {
        return 400.0 / s * pair(s, dip, dip_damping) / pair(s, tip, tip_damping);
    };
}

// The same measured with noise of that relative size, each part.
TunerData noisy(TunerData data, double size) {
    std::mt19937 random(7);
    std::normal_distribution<double> normal(0.0, size);
    for (int i = 0; i < data.analysed_points(); ++i) {
        float& value = data.analysis.magnitude[static_cast<std::size_t>(i)];
        value = static_cast<float>(value * std::abs(Complex{1.0 + normal(random), normal(random)}));
    }
    return data;
}

TEST(Resonances, OfTwoMassesAreADipAndATip) {
    const auto plant = two_masses(450, 0.029, 780, 0.05);
    for (const int step : {2, 3, 8}) {
        const auto found = find_resonances(scan_of(plant, 4, step, 996 / step + 1));
        ASSERT_EQ(found.size(), 2U) << step;
        EXPECT_EQ(found[0].kind, ResonanceKind::kAntiResonance);
        EXPECT_NEAR(found[0].frequency, 450, 4.5);
        EXPECT_LT(found[0].height, -20);
        ASSERT_TRUE(found[0].damping.has_value());
        EXPECT_NEAR(*found[0].damping, 0.029, 0.005);
        EXPECT_EQ(found[1].kind, ResonanceKind::kResonance);
        EXPECT_NEAR(found[1].frequency, 780, 7.8);
        ASSERT_TRUE(found[1].damping.has_value());
        EXPECT_NEAR(*found[1].damping, 0.05, 0.0075);
        // Over the line of a rigid load.
        const Complex s = test::s_at(780);
        EXPECT_NEAR(found[1].height, 20 * std::log10(std::abs(plant(s) * s / 400.0)), 1.5);
        EXPECT_NEAR(20 * std::log10(found[1].gain / 100 * kLoopFactor / std::abs(plant(s))), 0.0,
                    0.5);
    }
}

TEST(Resonances, AreFoundInNoise) {
    const auto found = find_resonances(noisy(scan_of(two_masses(150, 0.05, 260, 0.04)), 0.02));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_NEAR(found[0].frequency, 150, 4);
    EXPECT_NEAR(found[1].frequency, 260, 4);
    EXPECT_NEAR(found[1].damping.value_or(0), 0.04, 0.012);
}

TEST(Resonances, OfARigidLoadAreNone) {
    const auto plant = [](Complex s) { return 400.0 / s / (1.0 + s / radians(500)); };
    EXPECT_TRUE(find_resonances(scan_of(plant)).empty());
    for (const double noise : {0.005, 0.02, 0.05})
        EXPECT_TRUE(find_resonances(noisy(scan_of(plant), noise)).empty()) << noise;
}

TEST(Resonances, OfTwoShaftsAreTwo) {
    const auto plant = [](Complex s) {
        return two_masses(100, 0.04, 160, 0.04)(s) * pair(s, 500, 0.02) / pair(s, 600, 0.02);
    };
    const auto found = find_resonances(scan_of(plant));
    ASSERT_EQ(found.size(), 4U);
    EXPECT_NEAR(found[1].frequency, 160, 2);
    EXPECT_NEAR(found[3].frequency, 600, 6);
    ASSERT_NE(highest(found), nullptr);
    EXPECT_EQ(highest(found)->kind, ResonanceKind::kResonance);
    for (const Resonance& r : found)
        EXPECT_GE(highest(found)->height, r.height);
}

TEST(Resonances, NarrowerThanTheStepsHaveNoDamping) {
    const auto found = find_resonances(scan_of(two_masses(320, 0.001, 510, 0.001), 4, 20, 50));
    ASSERT_NE(highest(found), nullptr);
    EXPECT_NEAR(highest(found)->frequency, 510, 10);
    EXPECT_FALSE(highest(found)->damping.has_value());
}

TEST(Resonances, OfFewPointsOrNoScanAreNone) {
    EXPECT_TRUE(find_resonances(TunerData{}).empty());
    EXPECT_TRUE(find_resonances(scan_of(two_masses(450, 0.03, 780, 0.05), 4, 200, 6)).empty());
    EXPECT_EQ(highest({}), nullptr);
}

TEST(Resonances, AtTheEndOfTheRangeAreNone) {
    // It goes up to the last point: where the tip is nobody knows.
    const auto found = find_resonances(scan_of(two_masses(450, 0.03, 780, 0.05), 4, 2, 385));
    EXPECT_EQ(highest(found), nullptr);
}

TEST(NotchProposal, FlattensTheResonanceItAnswers) {
    const auto plant = two_masses(450, 0.029, 780, 0.05);
    TunerData data = scan_of(plant);
    const auto found = find_resonances(data);
    ASSERT_NE(highest(found), nullptr);
    const auto notch = propose_notch(*highest(found));
    ASSERT_TRUE(notch.has_value());
    EXPECT_NEAR(notch->frequency, 780, 8);
    EXPECT_GT(notch->depth, 15);
    const FilterSlot slot{true,
                          2,
                          {std::to_string(notch->frequency), std::to_string(notch->damping),
                           std::to_string(notch->width), std::to_string(notch->depth)}};
    const auto record = encode(slot);
    ASSERT_TRUE(record.has_value());
    // What is left of the tip stands less than 6 dB over the plant without it.
    for (double f = 600; f <= 1000; f += 5) {
        const Complex s = test::s_at(f);
        const Complex smooth = 400.0 / s * pair(s, 450, 0.029) / pair(s, 780, 0.7);
        const double left = std::abs(plant(s) * filter_response(f, *record) / smooth);
        EXPECT_LT(20 * std::log10(left), 6.0) << f;
    }
    // And the crossover hardly notices.
    EXPECT_GT(std::arg(filter_response(60, *record)) * 180 / std::numbers::pi, -8.0);
}

TEST(NotchProposal, HasValuesThatOneWouldType) {
    Resonance r;
    r.frequency = 779.6;
    r.height = 14.04;
    r.damping = 0.05;
    const auto notch = propose_notch(r);
    ASSERT_TRUE(notch.has_value());
    EXPECT_EQ(notch->frequency, 780);
    EXPECT_DOUBLE_EQ(notch->depth, 14.0);
    // 779.6 times 0.05 times the root of 10^(14.04/20).
    EXPECT_EQ(notch->width, 87);
    EXPECT_DOUBLE_EQ(notch->damping, 0.25);
}

TEST(NotchProposal, StaysWithinBounds) {
    Resonance r;
    r.frequency = 300;
    r.height = 80;
    for (const double damping : {1e-5, 0.05, 0.2, 3.0}) {
        r.damping = damping;
        const auto notch = propose_notch(r);
        ASSERT_TRUE(notch.has_value());
        EXPECT_LE(notch->depth, 30.0);
        EXPECT_LE(notch->damping, 0.7);
        EXPECT_GE(notch->width, 1.0);
    }
}

TEST(NotchProposal, IsNoneForWhatIsNoResonance) {
    Resonance r;
    r.frequency = 300;
    r.height = 20;
    r.kind = ResonanceKind::kAntiResonance;
    EXPECT_FALSE(propose_notch(r).has_value());
    r.kind = ResonanceKind::kResonance;
    r.height = 1;
    EXPECT_FALSE(propose_notch(r).has_value());
}

}  // namespace
}  // namespace servo::tuner
