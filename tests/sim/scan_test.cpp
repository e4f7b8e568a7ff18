// The frequency scan: what it measures against the machine that is measured, and how the results
// are laid out.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "sim/scan_bench.h"
#include "sim/scan_correlator.h"
#include "sim/scan_results.h"

namespace servo::sim::test {
namespace {

using namespace scan;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr double kRpm = 512.0 * 10000 / 1875;

struct Worst {
    double decibel = 0.0;
    double degrees = 0.0;
    int at_decibel = 0;
    int at_degrees = 0;
};

// Greatest differences between a curve and the machine.
Worst compared(const Plan& plan, const Curve& curve, const Loop& loop = {}) {
    Worst worst;
    for (std::size_t i = 0; i < curve.magnitude.size(); ++i) {
        const int f = plan.first + static_cast<int>(i) * plan.step;
        const std::complex<double> expected = 100.0 * plant_at(f, loop);
        const double db = std::abs(decibels(curve.magnitude[i] / std::abs(expected)));
        const double degrees = std::abs(turned(curve.phase[i] - std::arg(expected) * 180.0 / M_PI));
        if (db > worst.decibel) {
            worst.decibel = db;
            worst.at_decibel = f;
        }
        if (degrees > worst.degrees) {
            worst.degrees = degrees;
            worst.at_degrees = f;
        }
    }
    return worst;
}

Worst measured(ScanBench& bench, const Plan& plan, const Loop& loop = {}) {
    Blocks blocks;
    EXPECT_TRUE(bench.scan(plan, blocks));
    EXPECT_EQ(bench.result(), 1);
    return compared(plan, analysed(plan, blocks), loop);
}

void expect_good(const Worst& worst, const char* what) {
    EXPECT_LT(worst.decibel, 0.5) << what << " at " << worst.at_decibel << " Hz";
    EXPECT_LT(worst.degrees, 3.0) << what << " at " << worst.at_degrees << " Hz";
    if (std::getenv("SCAN_FIGURES") != nullptr) {
        std::printf("%s: %.3f dB at %d Hz, %.2f degrees at %d Hz\n", what, worst.decibel,
                    worst.at_decibel, worst.degrees, worst.at_degrees);
    }
}

TEST(Scan, FourToAThousandHertzIsTheMachineWithinHalfADecibelAndThreeDegrees) {
    ScanBench bench;
    const Plan plan{4, 1000, 3, 60};
    const auto begun = bench.now();
    Blocks blocks;
    ASSERT_TRUE(bench.write_plan(plan));
    ASSERT_TRUE(bench.start());
    ASSERT_TRUE(bench.wait());
    const auto took = bench.now() - begun;
    EXPECT_LT(took, seconds(40));
    if (std::getenv("SCAN_FIGURES") != nullptr) std::printf("took %.1f s\n", took.count() / 1e6);
    blocks = bench.fetch(points_of(plan));
    const Curve curve = analysed(plan, blocks);
    ASSERT_EQ(curve.magnitude.size(), 332U);
    expect_good(compared(plan, curve), "factory");
}

TEST(Scan, EveryAmplitudeMeasuresTheSame) {
    for (const int current : {32, 100, 200, 400, 800}) {
        ScanBench bench;
        expect_good(measured(bench, {4, 1000, 12, current}), std::to_string(current).c_str());
    }
}

TEST(Scan, EveryGainOfTheLoopMeasuresTheSame) {
    for (const int kvp : {20, 60, 400}) {
        ScanBench bench;
        bench.drive().set_value(0x60F901, kvp);
        bench.drive().set_value(0x60F902, kvp / 10);
        expect_good(measured(bench, {4, 1000, 12, 60}), std::to_string(kvp).c_str());
    }
}

TEST(Scan, TheSpeedInjectionMeasuresTheSame) {
    ScanBench bench;
    bench.drive().set_value(0x30400F, 1);
    expect_good(measured(bench, {4, 1000, 12, 60}), "speed");
}

TEST(Scan, OtherFiltersOfTheLoopShowInTheCurve) {
    ScanBench bench;
    bench.drive().set_value(0x60F906, 1);  // none over the speed
    bench.drive().set_value(0x60F605, 600);
    Loop loop;
    loop.speed_filter_hz = 0.0;
    loop.torque_filter_hz = 600.0;
    expect_good(measured(bench, {4, 1000, 12, 60}, loop), "filters");
}

TEST(Scan, AnotherBiasMeasuresTheSame) {
    for (const double speed : {-40.0, 30.0, 500.0}) {
        ScanBench bench;
        bench.drive().set_value(0x30400C, std::llround(speed * kRpm));
        bench.drive().set_value(0x30400D, 0);
        expect_good(measured(bench, {4, 400, 12, 60}), std::to_string(speed).c_str());
    }
}

// The resonance stands where the machine has it.
TEST(Scan, FindsResonanceAndAntiResonance) {
    ScanBench bench;
    const Plan plan{400, 900, 4, 100};
    Blocks blocks;
    ASSERT_TRUE(bench.scan(plan, blocks));
    const Curve curve = analysed(plan, blocks);
    const auto& m = curve.magnitude;
    const auto low = std::min_element(m.begin(), m.end()) - m.begin();
    const auto high = std::max_element(m.begin() + low, m.end()) - m.begin();
    EXPECT_NEAR(400.0 + 4.0 * static_cast<double>(low), 450.0, 6.0);
    EXPECT_NEAR(400.0 + 4.0 * static_cast<double>(high), 780.0, 8.0);
}

// The response alone is the plant as well, which is all that a model of the loops is given.
TEST(Scan, TheResponseBelongsToACommandOfTheSetAmplitude) {
    ScanBench bench;
    const Plan plan{10, 500, 10, 75};
    Blocks blocks;
    ASSERT_TRUE(bench.scan(plan, blocks));
    const Curve curve = analysed(plan, blocks);
    for (std::size_t i = 0; i < curve.plant.size(); ++i) {
        EXPECT_EQ(blocks.command_a[i], 0);
        EXPECT_EQ(blocks.command_b[i], 75);
        EXPECT_NEAR(std::abs(curve.plant[i]) * 100.0, curve.magnitude[i], 1e-9);
    }
}

// The inertia that the tuner estimates is that of the gain scale: 2^28 over it.
TEST(Scan, TheEstimateIsTheGainScaleOfTheMachine) {
    ScanBench bench;
    const Plan plan{4, 60, 3, 60};
    Blocks blocks;
    ASSERT_TRUE(bench.scan(plan, blocks));
    const double scale = 268435456.0 / analysed(plan, blocks).plant_estimate;
    EXPECT_NEAR(scale / 19661.0, 1.0, 0.01);
}

TEST(Scan, SameSeedSameBytes) {
    const Plan plan{4, 200, 7, 60};
    Blocks first;
    Blocks second;
    ScanBench one;
    ScanBench two;
    ASSERT_TRUE(one.scan(plan, first));
    ASSERT_TRUE(two.scan(plan, second));
    EXPECT_EQ(first.response, second.response);
    EXPECT_EQ(first.shift, second.shift);
    EXPECT_EQ(one.now(), two.now());
}

TEST(Scan, TheTunersCountMayBeOnePointMoreThanFits) {
    // 4, 7, ... 58 fit below 60; the tuner rounds to 20 and does not look at the last one.
    ScanBench bench;
    const Plan plan{4, 60, 3, 60};
    ASSERT_EQ(points_of(plan), 20);
    Blocks blocks;
    ASSERT_TRUE(bench.scan(plan, blocks));
    EXPECT_EQ(bench.drive().value(0x304008), 19);
    EXPECT_NE(blocks.command_b[18], 0);
    EXPECT_EQ(blocks.command_b[19], 0);
    EXPECT_EQ(blocks.response[38], 0);
    EXPECT_EQ(blocks.response[39], 0);
}

TEST(ScanWords, TheWindowGivesTwoWordsFromAnyAddress) {
    ScanBench bench;
    Blocks blocks;
    ASSERT_TRUE(bench.scan({4, 20, 4, 60}, blocks));
    const auto at = [&](std::int64_t address) {
        EXPECT_TRUE(bench.write(0x304005, address, 4));
        return *bench.read(0x304005);
    };
    const auto high = [](std::int32_t v) { return static_cast<std::uint32_t>(v) >> 16; };
    const auto low = [](std::int32_t v) { return static_cast<std::uint32_t>(v) & 0xFFFF; };
    const auto& r = blocks.response;
    EXPECT_EQ(at(0), 60U << 16);
    EXPECT_EQ(at(1), 60U);  // and the next point's first word above it
    EXPECT_EQ(at(1024), high(r[0]) | low(r[0]) << 16);
    EXPECT_EQ(at(1025), low(r[0]) | high(r[1]) << 16);
    EXPECT_EQ(at(1026), high(r[1]) | low(r[1]) << 16);
    for (const std::int64_t beyond : {10L, 1023L - 1, 1024L + 20, 4000L, 0xFFFFFFFFL})
        EXPECT_EQ(at(beyond), 0U) << beyond;
    // Reading does not move on.
    const std::uint32_t once = at(1024);
    EXPECT_EQ(*bench.read(0x304005), once);
    EXPECT_EQ(*bench.read(0x304005), once);
}

TEST(ScanWords, TheShiftIsTheLeastWithWhichEverythingFits) {
    ScanResults results;
    results.begin(60);
    results.add(4, {1.0, 0.0});  // 60 * 576 * 512 * 4000 = 7.08e10
    results.finish();
    EXPECT_EQ(results.shift(), 6);
    const auto value = static_cast<std::int32_t>(results.word(1024) << 16 | results.word(1025));
    EXPECT_EQ(value, std::llround(60.0 * 576 * 512 * 4000 / 64));
    results.begin(60);
    results.add(1000, {0.0, -0.001});
    results.finish();
    EXPECT_EQ(results.shift(), 0);
    EXPECT_EQ(results.word(1024), 0);
    const auto part = static_cast<std::int32_t>(
        static_cast<std::uint32_t>(results.word(1026)) << 16 | results.word(1027));
    EXPECT_EQ(part, -std::llround(60.0 * 576 * 512 * 16 / 1000));
}

TEST(ScanWords, NothingIsThereBeforeTheEnd) {
    ScanResults results;
    results.begin(60);
    results.add(4, {1.0, 1.0});
    EXPECT_EQ(results.word(1), 0);
    EXPECT_EQ(results.word(1024), 0);
    results.finish();
    EXPECT_EQ(results.word(1), 60);
    EXPECT_NE(results.word(1024), 0);
}

TEST(ScanDecimation, KeepsAPeriodWithinThreeHundredSamples) {
    EXPECT_EQ(decimation_of(4).samples, 250);
    EXPECT_EQ(decimation_of(4).steps, 16);
    EXPECT_EQ(decimation_of(53).samples, 150);
    EXPECT_EQ(decimation_of(53).steps, 2);
    EXPECT_EQ(decimation_of(54).samples, 296);
    EXPECT_EQ(decimation_of(54).steps, 1);
}

TEST(ScanCorrelator, SeesThroughTheMeanWherePeriodsEndWithinAStep) {
    for (const int f : {4, 7, 53, 331, 997}) {
        ScanCorrelator correlator;
        correlator.begin(f, std::max(4, f / 25));
        for (int k = 0; !correlator.full(); ++k) {
            const double angle = 2.0 * M_PI * f * k / 16000.0;
            correlator.add(3.0 * std::sin(angle) - 7.0, 5.0 * std::sin(angle - 1.0) + 1000.0);
        }
        const auto ratio = correlator.response() / correlator.command();
        EXPECT_NEAR(std::abs(ratio), 5.0 / 3.0, 0.01) << f;
        EXPECT_NEAR(std::arg(ratio), -1.0, 0.006) << f;
    }
}

}  // namespace
}  // namespace servo::sim::test
