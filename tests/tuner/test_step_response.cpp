#include "tuner/step_response.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tuner/model_support.h"

namespace servo::tuner {
namespace {

using test::Complex;
using test::simulated;

double radians(double hertz) {
    return 2.0 * std::numbers::pi * hertz;
}

// Closes to second order with a natural frequency of w and a damping of z.
test::Plant second_order(double w, double z) {
    return [=](Complex s) { return w * w / (s * (s + 2 * z * w)); };
}

double second_order_step(double w, double z, double t) {
    const double d = w * std::sqrt(1 - z * z);
    return 1 - std::exp(-z * w * t) * (std::cos(d * t) + z * w / d * std::sin(d * t));
}

double greatest_difference(const StepResponse& r, const std::function<double(double)>& wanted) {
    double difference = 0;
    for (std::size_t i = 0; i < r.values.size(); ++i)
        difference = std::max(difference,
                              std::abs(r.values[i] - wanted(static_cast<double>(i) * r.time_step)));
    return difference;
}

TEST(StepResponse, OfASecondOrderLoopIsItsKnownOne) {
    for (const double z : {0.3, 0.5, 0.7})
        for (const double hertz : {20.0, 60.0, 120.0}) {
            const double w = radians(hertz);
            const StepResponse r =
                step_response(simulated(second_order(w, z)), LoopKind::kVelocity);
            ASSERT_FALSE(r.values.empty());
            EXPECT_LT(greatest_difference(r, [=](double t) { return second_order_step(w, z, t); }),
                      0.01)
                << hertz << " Hz, damping " << z;
            EXPECT_NEAR(r.overshoot, std::exp(-std::numbers::pi * z / std::sqrt(1 - z * z)), 0.01);
            EXPECT_FALSE(r.unstable || r.fast_part_missing || r.slow_part_missing);
        }
}

TEST(StepResponse, OfAFirstOrderLoopRisesAsKnown) {
    const double w = radians(40);
    const StepResponse r =
        step_response(simulated([w](Complex s) { return w / s; }), LoopKind::kVelocity);
    EXPECT_LT(greatest_difference(r, [w](double t) { return 1 - std::exp(-w * t); }), 0.01);
    ASSERT_TRUE(r.rise && r.settling);
    EXPECT_NEAR(*r.rise, std::log(9.0) / w, 0.02 * std::log(9.0) / w);
    EXPECT_NEAR(*r.settling, std::log(50.0) / w, 0.05 * std::log(50.0) / w);
    EXPECT_LT(r.overshoot, 0.01);
}

TEST(StepResponse, OfAPositionLoopIsThatOfItsTwoLags) {
    const double wc = radians(100);
    for (const double hertz : {1.0, 10.0, 30.0}) {
        const double wp = radians(hertz);
        const StepResponse r = step_response(simulated([wc](Complex s) { return wc / s; }, hertz),
                                             LoopKind::kPosition);
        const double w = std::sqrt(wp * wc);
        const double z = std::sqrt(wc / wp) / 2;
        const auto wanted = [=](double t) {
            if (z < 1) return second_order_step(w, z, t);
            const double root = std::sqrt(z * z - 1);
            const double p = w * (z - root);
            const double q = w * (z + root);
            return 1 - (q * std::exp(-p * t) - p * std::exp(-q * t)) / (q - p);
        };
        EXPECT_LT(greatest_difference(r, wanted), 0.01) << hertz;
        EXPECT_FALSE(r.unstable || r.fast_part_missing || r.slow_part_missing) << hertz;
    }
}

TEST(StepResponse, SaysThatAScanEndsTooEarly) {
    const auto plant = second_order(radians(60), 0.5);
    EXPECT_TRUE(
        step_response(simulated(plant, 1, 4, 3, 20), LoopKind::kVelocity).fast_part_missing);
}

TEST(StepResponse, SaysThatAScanBeginsTooLate) {
    const auto plant = second_order(radians(60), 0.5);
    EXPECT_TRUE(
        step_response(simulated(plant, 1, 100, 3, 300), LoopKind::kVelocity).slow_part_missing);
}

TEST(StepResponse, SaysThatTheLoopIsNotStable) {
    const auto plant = [](Complex s) {
        return radians(200) / (s * (1.0 + s / radians(40)) * (1.0 + s / radians(80)));
    };
    for (const LoopKind loop : {LoopKind::kVelocity, LoopKind::kPosition})
        EXPECT_TRUE(step_response(simulated(plant), loop).unstable);
    // A velocity loop that is stable, under a position loop that is not.
    const TunerData data = simulated(second_order(radians(60), 0.5), 100);
    EXPECT_FALSE(step_response(data, LoopKind::kVelocity).unstable);
    EXPECT_TRUE(step_response(data, LoopKind::kPosition).unstable);
}

TEST(StepResponse, WithoutASimulationIsEmpty) {
    EXPECT_TRUE(step_response(TunerData{}, LoopKind::kVelocity).values.empty());
    EXPECT_TRUE(step_response(simulated(second_order(300, 0.5), 1, 4, 3, 4), LoopKind::kPosition)
                    .values.empty());
}

TEST(StepResponse, IsANumberWhateverThePlant) {
    const test::Plant plants[] = {[](Complex) { return Complex{0.0}; },
                                  [](Complex) { return Complex{-1.0}; },
                                  [](Complex) {
                                      return Complex{1e30, -1e30};
                                  },
                                  [](Complex s) { return 1e-20 / s; }};
    for (const test::Plant& plant : plants)
        for (const LoopKind loop : {LoopKind::kVelocity, LoopKind::kPosition})
            for (const double value : step_response(simulated(plant), loop).values)
                ASSERT_TRUE(std::isfinite(value));
}

}  // namespace
}  // namespace servo::tuner
