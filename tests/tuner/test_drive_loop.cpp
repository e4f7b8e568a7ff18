// The simulated loops against the loop that the drive really has: a scan of the simulated drive,
// the drive's own gains in the boxes, and beside it a step of the speed that its recorder has
// taken.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "sim/recorder_bench.h"
#include "sim/scan_bench.h"
#include "tuner/analysis.h"
#include "tuner/margins.h"
#include "tuner/resonances.h"
#include "tuner/simulation.h"
#include "tuner/step_response.h"

namespace servo::tuner {
namespace {

namespace scan = sim::test::scan;
using std::chrono::milliseconds;

struct Gains {
    int kvp = 200;
    int kvi = 20;
};

// Scanned at the factory gains from 4 to 1000 Hz, simulated with those that are given.
TunerData scanned(const Gains& gains) {
    const scan::Plan plan{4, 1000, 3, 60};
    scan::ScanBench bench;
    scan::Blocks blocks;
    EXPECT_TRUE(bench.scan(plan, blocks));
    TunerData data;
    data.settings = {.startFreq = 4,
                     .stopFreq = 1000,
                     .stepFreq = 3,
                     .velocityGain1 = static_cast<float>(gains.kvp),
                     .magCurrent = 60,
                     .encoderCounts = 10000,
                     .velocityGain2 = static_cast<float>(gains.kvi),
                     .scaleShift = static_cast<std::int16_t>(blocks.shift)};
    data.buffers.pointCount = static_cast<std::int16_t>(scan::points_of(plan));
    std::copy(blocks.command_a.begin(), blocks.command_a.end(), data.buffers.commandA.begin());
    std::copy(blocks.command_b.begin(), blocks.command_b.end(), data.buffers.commandB.begin());
    std::copy(blocks.response.begin(), blocks.response.end(), data.buffers.response.begin());
    FirstAnalyse(data.settings, data.buffers, data.analysis);
    data.analysed = true;
    const auto texts = gains_at_scan(data.settings);
    EXPECT_TRUE(texts.has_value());
    const auto read = read_gains(texts->Text10, texts->Text11, "10");
    EXPECT_TRUE(read.has_value());
    data.simulation = simulate(data, {}, *read);
    return data;
}

// The loop's feedback, every 62.5 us from the step on: 0 before it and 1 after.
std::vector<double> recorded(const Gains& gains) {
    using namespace sim::test::recorder;
    constexpr double kRpm = 512.0 * 10000 / 1875;
    constexpr double kFrom = 300.0 * kRpm;
    constexpr double kTo = 400.0 * kRpm;
    constexpr std::size_t kBefore = 100;
    sim::test::RecorderBench bench;
    bench.drive().set_value(0x60F901, gains.kvp);
    bench.drive().set_value(0x60F902, gains.kvi);
    bench.set(kWide12, sim::test::source(0x60F916, 32));
    bench.set(kTrigger, sim::test::source(0x606B00, 32));
    bench.set(kLevel, std::llround((kFrom + kTo) / 2.0));
    bench.set(kOffset, kBefore);
    bench.set(kCount, 1000);
    bench.enable(-3);
    bench.drive().set_value(0x60FF00, std::llround(kFrom));
    bench.run(milliseconds(600));
    bench.start();
    bench.run(milliseconds(20));
    bench.drive().set_value(0x60FF00, std::llround(kTo));
    bench.wait();
    const auto columns = sim::test::columns(bench.read_text(kBuffer).value_or(""), {-4});
    std::vector<double> rows;
    for (const std::int64_t value : columns[0])
        rows.push_back((static_cast<double>(value) - kFrom) / (kTo - kFrom));
    EXPECT_EQ(rows.size(), 1000U);
    rows.erase(rows.begin(), rows.begin() + kBefore);
    return rows;
}

double at(const StepResponse& response, double seconds) {
    const double place =
        std::min(seconds / response.time_step, static_cast<double>(response.values.size()) - 1.001);
    const auto i = static_cast<std::size_t>(place);
    const double share = place - static_cast<double>(i);
    return response.values[i] + share * (response.values[i + 1] - response.values[i]);
}

TEST(DriveLoop, CrossesWhereTheDriveSaysThatItDoes) {
    const SimulationFigures figures = figures_of(scanned({}));
    ASSERT_TRUE(figures.velocity.margins.crossover && figures.velocity.margins.phase_margin);
    // 3040:07 times the factory gain, over 65536, is 60 Hz.
    EXPECT_NEAR(*figures.velocity.margins.crossover, 60.0, 2.0);
    EXPECT_GT(figures.velocity.margins.phase_margin->value, 50.0);
    EXPECT_TRUE(figures.velocity.margins.stable && figures.position.margins.stable);
    EXPECT_NEAR(*figures.position.margins.crossover, 10.0, 1.0);
}

// The drive is quiet with a Kvp of 400, and its resonance sings with 500.
TEST(DriveLoop, IsStableUpToTheGainThatTheDriveBears) {
    const SimulationFigures factory = figures_of(scanned({}));
    ASSERT_TRUE(factory.velocity.margins.gain_margin.has_value());
    EXPECT_NEAR(factory.velocity.margins.gain_margin->frequency, 780.0, 20.0);
    const double most = 200.0 * std::pow(10.0, factory.velocity.margins.gain_margin->value / 20.0);
    EXPECT_GT(most, 400.0);
    EXPECT_LT(most, 500.0);
    EXPECT_TRUE(figures_of(scanned({400, 20})).velocity.margins.stable);
    EXPECT_FALSE(figures_of(scanned({500, 20})).velocity.margins.stable);
}

TEST(DriveLoop, HasTheStepOfTheDrive) {
    for (const Gains& gains : {Gains{}, Gains{100, 5}, Gains{300, 20}}) {
        const StepResponse response = step_response(scanned(gains), LoopKind::kVelocity);
        ASSERT_FALSE(response.values.empty());
        EXPECT_FALSE(response.unstable || response.fast_part_missing || response.slow_part_missing);
        const std::vector<double> drive = recorded(gains);
        double greatest = 0.0;
        const double length = response.time_step * static_cast<double>(response.values.size() - 1);
        for (std::size_t i = 0; i < drive.size(); ++i) {
            // A number that changes from one step to the next has changed between them.
            const double seconds = (static_cast<double>(i) + 0.5) * 62.5e-6;
            if (seconds < length)
                greatest = std::max(greatest, std::abs(drive[i] - at(response, seconds)));
        }
        EXPECT_LT(greatest, 0.008) << "Kvp " << gains.kvp;
    }
}

TEST(DriveLoop, HasTheResonanceOfTheMachine) {
    const auto found = find_resonances(scanned({}));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].kind, ResonanceKind::kAntiResonance);
    EXPECT_NEAR(found[0].frequency, 450.0, 4.0);
    EXPECT_EQ(found[1].kind, ResonanceKind::kResonance);
    EXPECT_NEAR(found[1].frequency, 780.0, 8.0);
    EXPECT_NEAR(found[1].damping.value_or(0.0), 0.05, 0.005);
}

// What the proposal is for: with it in the loop there is room for more gain.
TEST(DriveLoop, BearsMoreGainBehindTheProposedNotch) {
    TunerData data = scanned({500, 20});
    const auto found = find_resonances(data);
    ASSERT_NE(highest(found), nullptr);
    const auto notch = propose_notch(*highest(found));
    ASSERT_TRUE(notch.has_value());
    const auto record =
        encode(FilterSlot{true,
                          2,
                          {std::to_string(notch->frequency), std::to_string(notch->damping),
                           std::to_string(notch->width), std::to_string(notch->depth)}});
    ASSERT_TRUE(record.has_value());
    ASSERT_FALSE(figures_of(data).velocity.margins.stable);
    data.simulation = simulate(data, {*record}, data.simulation.gains);
    const Margins with = figures_of(data).velocity.margins;
    EXPECT_TRUE(with.stable);
    ASSERT_TRUE(with.gain_margin && with.phase_margin);
    EXPECT_GT(with.gain_margin->value, 3.0);
    EXPECT_GT(with.phase_margin->value, 20.0);
}

}  // namespace
}  // namespace servo::tuner
