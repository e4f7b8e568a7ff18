#include "tuner/simulation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tuner/model_support.h"

namespace servo::tuner {
namespace {

using test::Complex;
using test::scan_of;

TEST(Gains, AreReadFromTheirBoxes) {
    const auto gains = read_gains("100", "0.1", "1");
    ASSERT_TRUE(gains.has_value());
    EXPECT_EQ(gains->loopGain, 100.0F);
    EXPECT_NEAR(gains->loopIntegral, 0.1 / 100 * 4000 / 2 / 3.14159265358979, 1e-7);
    EXPECT_EQ(gains->loopScale, 1.0F);
}

TEST(Gains, FailWhereText10IsZeroBeforeTheGuardHelps) {
    for (const char* Text10 : {"0", "", "abc", "-0", "1E-60"})
        EXPECT_FALSE(read_gains(Text10, "0.1", "1").has_value()) << Text10;
    EXPECT_FALSE(read_gains("0", "0", "1").has_value());
}

TEST(Gains, AreGuarded) {
    const struct {
        const char *Text10, *Text11, *Text9;
        double gain, integral, scale;
    } rows[] = {
        {"-5", "0", "1", 1.0, 0.0, 1.0},
        // Divided by the number that was typed: below 0, so there is no integral part.
        {"-5", "2", "1", 1.0, 0.0, 1.0},
        {"-5", "-2", "1", 1.0, 254.6479, 1.0},
        {"50", "-1", "1", 50.0, 0.0, 1.0},
        {"50", "1", "0", 50.0, 12.732395, 1.0},
        {"50", "1", "-3", 50.0, 12.732395, 1.0},
        {"50", "1", "2.5Hz", 50.0, 12.732395, 2.5},
    };
    for (const auto& row : rows) {
        const auto gains = read_gains(row.Text10, row.Text11, row.Text9);
        ASSERT_TRUE(gains.has_value());
        EXPECT_NEAR(gains->loopGain, row.gain, 1e-6);
        EXPECT_NEAR(gains->loopIntegral, row.integral, 1e-4);
        EXPECT_NEAR(gains->loopScale, row.scale, 1e-6);
    }
}

TEST(Gains, FailWhereASingleDoesNotHoldThem) {
    EXPECT_FALSE(read_gains("1E999", "1", "1").has_value());
    EXPECT_FALSE(read_gains("1", "1E999", "1").has_value());
    EXPECT_FALSE(read_gains("1E-30", "1E30", "1").has_value());
    EXPECT_FALSE(read_gains("1", "1", "1E999").has_value());
}

TEST(Gains, OfTheDriveAtTheScanGiveItsOwnCorner) {
    ScanSettings settings;
    settings.velocityGain1 = 200;
    settings.velocityGain2 = 20;
    const auto texts = gains_at_scan(settings);
    ASSERT_TRUE(texts.has_value());
    EXPECT_EQ(texts->Text10, "200");
    EXPECT_EQ(texts->Text11, "5");
    // A Kvi of 20 adds a tenth of a Kvp of 200 a thousand times a second.
    const auto gains = read_gains(texts->Text10, texts->Text11, "1");
    EXPECT_NEAR(gains->loopIntegral, 20.0 * 1000 / 200 / 2 / std::numbers::pi, 1e-4);
    settings.velocityGain1 = 0;
    EXPECT_FALSE(gains_at_scan(settings).has_value());
}

TEST(Simulation, HasAllPointsButTheLast) {
    const TunerData data = scan_of([](Complex s) { return 1.0 / s; }, 4, 3, 333);
    const Simulation s = simulate(data, {}, LoopGains{});
    EXPECT_EQ(s.points, 332);
    EXPECT_GT(s.open_velocity.gain[331], 0.0F);
    EXPECT_EQ(s.open_velocity.gain[332], 0.0F);
}

TEST(Simulation, WithFewerThanTwoPointsHasFilterCurvesOnly) {
    for (const int points : {0, 1}) {
        TunerData data;
        data.analysed = true;
        data.buffers.pointCount = static_cast<std::int16_t>(points);
        std::array<FilterRecord, kSlots> records;
        records[2] = {1, 100, 0, 0, 0};
        const Simulation s = simulate(data, records, LoopGains{});
        EXPECT_EQ(s.points, 0);
        EXPECT_EQ(s.filter_used, (std::array<bool, kSlots>{false, false, true}));
        EXPECT_NEAR(s.filters[2].gain[99], std::sqrt(0.5), 1e-6);
    }
}

TEST(Simulation, KeepsFilterCurvesFrom1To1000Hz) {
    std::array<FilterRecord, kSlots> records;
    records[5] = {2, 1000, 0, 0.5F, 0};
    const Simulation s = simulate(TunerData{}, records, LoopGains{});
    EXPECT_NEAR(s.filters[5].gain[0], 1.0, 1e-5);
    EXPECT_NEAR(s.filters[5].gain[999], 1.0, 1e-6);
    EXPECT_NEAR(s.filters[5].phase[999], -90.0, 1e-4);
}

TEST(Simulation, LeavesSlotsFiveAndSixOutOfTheLoop) {
    const TunerData data = scan_of([](Complex s) { return 300.0 / s; });
    std::array<FilterRecord, kSlots> records;
    records[4] = {1, 20, 0, 0, 0};
    records[5] = {1, 20, 0, 0, 0};
    const Simulation without = simulate(data, {}, LoopGains{});
    EXPECT_EQ(simulate(data, records, LoopGains{}).open_velocity.gain, without.open_velocity.gain);
    for (std::size_t slot = 0; slot < 4; ++slot) {
        std::array<FilterRecord, kSlots> one;
        one[slot] = {1, 20, 0, 0, 0};
        EXPECT_LT(simulate(data, one, LoopGains{}).open_velocity.gain[100],
                  0.5F * without.open_velocity.gain[100]);
    }
}

TEST(Simulation, ReplacesAClosedGainOfExactlyZero) {
    const TunerData data = scan_of([](Complex) { return 0.0; });
    const Simulation s = simulate(data, {}, LoopGains{});
    EXPECT_EQ(s.open_velocity.gain[0], 0.0F);
    EXPECT_EQ(s.closed_velocity.gain[0], 0.01F);
}

TEST(Simulation, HasThePositionGainInHertz) {
    const double wc = 2 * std::numbers::pi * 80;
    const TunerData data = scan_of([wc](Complex s) { return wc / s; });
    LoopGains gains;
    gains.loopScale = 12.0F;
    const Simulation s = simulate(data, {}, gains);
    for (const int i : {0, 5, 100, 400}) {
        const Complex p = test::s_at(data.frequency(i));
        const Complex open = 2 * std::numbers::pi * 12 / p / (1.0 + p / wc);
        const auto k = static_cast<std::size_t>(i);
        EXPECT_NEAR(s.open_position[k], std::abs(open), 1e-5 * std::abs(open));
        EXPECT_NEAR(s.closed_position[k], std::abs(open / (1.0 + open)), 1e-5);
    }
}

TEST(Simulation, OfAScanWithoutExcitationIsNothing) {
    TunerData data = scan_of([](Complex s) { return 1.0 / s; });
    data.settings.magCurrent = 0;
    const Simulation s = simulate(data, {}, LoopGains{});
    EXPECT_EQ(s.open_velocity.gain[10], 0.0F);
    EXPECT_EQ(s.closed_velocity.gain[10], 0.01F);
}

}  // namespace
}  // namespace servo::tuner
