#include "tuner/margins.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tuner/model_support.h"

namespace servo::tuner {
namespace {

using test::Complex;
using test::s_at;
using test::simulated;

constexpr double kTurn = 2.0 * std::numbers::pi;

double radians(double hertz) {
    return kTurn * hertz;
}

struct Arrays {
    std::vector<double> frequency;
    std::vector<float> gain;
    std::vector<float> phase;
    ResponseView view() const { return {frequency, gain, phase}; }
};

Arrays arrays_of(const test::Plant& plant, double start = 4, double step = 2, int points = 499) {
    Arrays a;
    for (int i = 0; i < points; ++i) {
        const double f = start + step * i;
        const Complex value = plant(s_at(f));
        a.frequency.push_back(f);
        a.gain.push_back(static_cast<float>(std::abs(value)));
        a.phase.push_back(static_cast<float>(std::arg(value) * 360 / kTurn));
    }
    return a;
}

// K / (s (1 + s/p) (1 + s/q)): its phase is -180 degrees at the root of p q, with a gain of
// K / (p + q) there.
test::Plant integrator_with_two_lags(double k, double p, double q) {
    return [=](Complex s) { return k / (s * (1.0 + s / p) * (1.0 + s / q)); };
}

// The frequency at which that plant's gain is 1, by halving.
double crossover(double k, double p, double q) {
    double low = 0.01;
    double high = 10000;
    for (int i = 0; i < 200; ++i) {
        const double middle = std::sqrt(low * high);
        (std::abs(integrator_with_two_lags(k, p, q)(s_at(middle))) > 1.0 ? low : high) = middle;
    }
    return low;
}

TEST(Margins, OfAPlantWithKnownOnes) {
    const double p = radians(50);
    const double q = radians(200);
    for (const double k : {0.1 * (p + q), 0.5 * (p + q), 0.9 * (p + q), 2.0 * (p + q)}) {
        const Margins m = margins_of(arrays_of(integrator_with_two_lags(k, p, q)).view());
        const double fc = crossover(k, p, q);
        ASSERT_TRUE(m.crossover && m.phase_margin && m.gain_margin);
        EXPECT_NEAR(*m.crossover, fc, 0.002 * fc);
        EXPECT_NEAR(m.phase_margin->frequency, fc, 0.002 * fc);
        const double wanted = 90 - (std::atan(fc / 50) + std::atan(fc / 200)) * 360 / kTurn;
        EXPECT_NEAR(m.phase_margin->value, wanted, 0.1);
        EXPECT_NEAR(m.gain_margin->frequency, 100.0, 0.1);
        EXPECT_NEAR(m.gain_margin->value, 20 * std::log10((p + q) / k), 0.02);
        EXPECT_EQ(m.stable, k < p + q);
        EXPECT_EQ(m.phase_margin->value > 0, k < p + q);
    }
}

TEST(Margins, OfAnIntegratorAre90DegreesAndNoGainMargin) {
    const Margins m = margins_of(arrays_of([](Complex s) { return radians(60) / s; }).view());
    ASSERT_TRUE(m.crossover && m.phase_margin);
    EXPECT_NEAR(*m.crossover, 60.0, 0.01);
    EXPECT_NEAR(m.phase_margin->value, 90.0, 0.01);
    EXPECT_FALSE(m.gain_margin.has_value());
    EXPECT_TRUE(m.stable);
}

TEST(Margins, LieBetweenPointsThatAreFarApart) {
    const Margins m =
        margins_of(arrays_of([](Complex s) { return radians(60) / s; }, 4, 50, 20).view());
    EXPECT_NEAR(*m.crossover, 60.0, 0.01);
}

TEST(Margins, ListEveryPassageAndCountTheNearest) {
    // A resonance lifts the falling gain over 0 dB once more.
    const double w = radians(500);
    const auto plant = [w](Complex s) {
        return radians(60) / s * w * w / (s * s + 2 * 0.02 * w * s + w * w);
    };
    const Margins m = margins_of(arrays_of(plant).view());
    ASSERT_EQ(m.gain_crossings.size(), 3U);
    EXPECT_NEAR(m.gain_crossings[0].frequency, 60.9, 0.5);
    EXPECT_NEAR(*m.crossover, m.gain_crossings[0].frequency, 1e-9);
    EXPECT_LT(m.gain_crossings[1].frequency, 500);
    EXPECT_GT(m.gain_crossings[2].frequency, 500);
    // Above the resonance the phase is past -180 degrees.
    EXPECT_LT(m.gain_crossings[2].value, 0);
    double least = 1000;
    for (const Reading& crossing : m.gain_crossings)
        least = std::min(least, std::abs(crossing.value));
    EXPECT_DOUBLE_EQ(std::abs(m.phase_margin->value), least);
    EXPECT_FALSE(m.stable);
    // At the resonance: 60/500 over twice the damping.
    ASSERT_TRUE(m.gain_margin.has_value());
    EXPECT_NEAR(m.gain_margin->value, -20 * std::log10(60.0 / 500 / 0.04), 0.1);
}

TEST(Margins, CountTurnsAroundMinusOneAndNotPassages) {
    // Stable only with enough gain: the phase begins at -270 degrees and comes up.
    const double z = radians(20);
    const auto plant = [z](double k) {
        return [=](Complex s) { return k * (s + z) * (s + z) / (s * s * s); };
    };
    EXPECT_TRUE(margins_of(arrays_of(plant(radians(100))).view()).stable);
    EXPECT_FALSE(margins_of(arrays_of(plant(radians(5))).view()).stable);
}

TEST(Margins, OfALoopThatBeginsAndStaysPastMinus180DegreesAreUnstable) {
    const auto plant = [](Complex s) {
        return radians(50) * (s + radians(30)) / (s * s * (1.0 + s / radians(20)));
    };
    EXPECT_FALSE(margins_of(arrays_of(plant).view()).stable);
}

TEST(Margins, DoNotDependOnFolds) {
    Arrays a = arrays_of(integrator_with_two_lags(500, radians(50), radians(200)));
    const Margins folded = margins_of(a.view());
    for (std::size_t i = 0; i < a.phase.size(); ++i)
        a.phase[i] += i % 2 == 0 ? 360.0F : -360.0F;
    const Margins shifted = margins_of(a.view());
    EXPECT_NEAR(folded.phase_margin->value, shifted.phase_margin->value, 1e-3);
    EXPECT_NEAR(folded.gain_margin->value, shifted.gain_margin->value, 1e-3);
    EXPECT_EQ(folded.stable, shifted.stable);
}

TEST(Margins, OfNothingAreNone) {
    const Margins m = margins_of({});
    EXPECT_FALSE(m.crossover || m.phase_margin || m.gain_margin);
    EXPECT_TRUE(m.gain_crossings.empty() && m.phase_crossings.empty());
    const Arrays low = arrays_of([](Complex) { return 0.1; });
    EXPECT_FALSE(margins_of(low.view()).crossover.has_value());
}

TEST(Margins, PassOverPointsThatAreNoNumbers) {
    Arrays a = arrays_of([](Complex s) { return radians(60) / s; });
    a.gain[20] = std::nanf("");
    a.phase[30] = std::numeric_limits<float>::infinity();
    a.frequency[40] = -7;
    a.gain[50] = 0.0F;
    EXPECT_NEAR(*margins_of(a.view()).crossover, 60.0, 0.05);
}

TEST(Bandwidth, IsWhereTheGainFallsToHalfOfThePower) {
    const double w = radians(75);
    const Arrays first = arrays_of([w](Complex s) { return 1.0 / (1.0 + s / w); });
    EXPECT_NEAR(*bandwidth_of(first.view()), 75.0, 0.02);
    // Of second order with the damping z: the root of 1 - 2 z z + root(4 z^4 - 4 z z + 2).
    const double z = 0.4;
    const Arrays second =
        arrays_of([=](Complex s) { return w * w / (s * s + 2 * z * w * s + w * w); });
    EXPECT_NEAR(*bandwidth_of(second.view()),
                75 * std::sqrt(1 - 2 * z * z + std::sqrt(4 * z * z * z * z - 4 * z * z + 2)), 0.05);
}

TEST(Bandwidth, IsNotThereWhenTheGainDoesNotFallInTheRange) {
    EXPECT_FALSE(bandwidth_of(arrays_of([](Complex) { return 1.0; }).view()).has_value());
    EXPECT_FALSE(bandwidth_of(arrays_of([](Complex) { return 0.5; }).view()).has_value());
    EXPECT_FALSE(bandwidth_of({}).has_value());
}

TEST(LoopFigures, OfASimulation) {
    const double w = radians(80);
    const auto figures = figures_of(simulated([w](Complex s) { return w / s; }, 12.0));
    EXPECT_NEAR(*figures.velocity.margins.crossover, 80.0, 0.02);
    EXPECT_NEAR(figures.velocity.margins.phase_margin->value, 90.0, 0.02);
    EXPECT_NEAR(*figures.velocity.bandwidth, 80.0, 0.05);
    EXPECT_FALSE(figures.velocity.peak.has_value());
    // f (1 + (f/80)^2)^(1/2) = 12 at the crossover.
    double f = 12;
    for (int i = 0; i < 100; ++i)
        f = 12 / std::sqrt(1 + f * f / 6400);
    EXPECT_NEAR(*figures.position.margins.crossover, f, 0.02);
    EXPECT_NEAR(figures.position.margins.phase_margin->value, 90 - std::atan(f / 80) * 360 / kTurn,
                0.1);
    EXPECT_TRUE(figures.position.margins.stable);
}

TEST(LoopFigures, OfAPositionLoopBelowTheFirstFrequency) {
    const double w = radians(80);
    const auto figures = figures_of(simulated([w](Complex s) { return w / s; }, 1.0));
    EXPECT_NEAR(*figures.position.margins.crossover, 1.0, 0.002);
    EXPECT_NEAR(*figures.position.bandwidth, 1.0, 0.02);
}

TEST(LoopFigures, NameThePeakOfTheClosedLoop) {
    // An open loop that closes to second order with a damping of 0.3.
    const double w = radians(60);
    const double z = 0.3;
    const auto figures =
        figures_of(simulated([=](Complex s) { return w * w / (s * (s + 2 * z * w)); }));
    ASSERT_TRUE(figures.velocity.peak.has_value());
    EXPECT_NEAR(figures.velocity.peak->value, -20 * std::log10(2 * z * std::sqrt(1 - z * z)), 0.01);
    EXPECT_NEAR(figures.velocity.peak->frequency, 60 * std::sqrt(1 - 2 * z * z), 2.0);
}

TEST(LoopFigures, BeforeASimulationAreEmpty) {
    const SimulationFigures figures = figures_of(TunerData{});
    EXPECT_FALSE(figures.velocity.margins.crossover || figures.position.margins.crossover);
    EXPECT_FALSE(figures.velocity.bandwidth || figures.position.bandwidth);
}

}  // namespace
}  // namespace servo::tuner
