// From sums to gain and phase: the windows, the angle, the arithmetic.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "tuner/analysis.h"

using namespace servo::tuner;

namespace {

struct FirstAnalyseTest : testing::Test {
    FirstAnalyseTest() {
        settings.startFreq = 4;
        settings.stepFreq = 3;
        settings.stopFreq = 1000;
        settings.magCurrent = 60;
        settings.scaleShift = 5;
    }
    bool analyse() { return FirstAnalyse(settings, *buffers, *analysis); }
    void set_point(std::size_t i, int a, int b, std::int32_t x, std::int32_t y) const {
        buffers->commandA[i] = static_cast<std::int16_t>(a);
        buffers->commandB[i] = static_cast<std::int16_t>(b);
        buffers->response[2 * i] = x;
        buffers->response[2 * i + 1] = y;
    }

    ScanSettings settings;
    std::unique_ptr<ScanBuffers> buffers = std::make_unique<ScanBuffers>();
    std::unique_ptr<Analysis> analysis = std::make_unique<Analysis>();
};

// The arithmetic once more, written down by itself: quadrants by atan2, windows by counting.
struct Expected {
    float x = 0, y = 0, mag = 0, commandPhase = 0, phase = 0, magnitude = 0;
    double term = 0;
};

long degrees(double x, double y) {
    if (x == 0) return y > 0 ? 90 : -90;
    double angle = std::atan2(y, x) * 180.0 / 3.14159265358979;
    if (angle > 90) angle -= 360;  // the left side is never folded into the upper half
    return std::lrint(angle);      // halves to even
}

Expected expected(const ScanSettings& s, const ScanBuffers& b, std::size_t i) {
    const int f = s.startFreq + static_cast<int>(i) * s.stepFreq;
    int n = 16000 / f;
    int d = 1;
    for (; n > 300; d += d)
        n >>= 1;
    Expected e;
    const double scale = std::exp2(s.scaleShift) / 512.0 / n / d;
    e.x = static_cast<float>(scale * b.response[2 * i]);
    e.y = static_cast<float>(scale * b.response[2 * i + 1]);
    e.mag = static_cast<float>(std::hypot(b.commandA[i], b.commandB[i]) / s.magCurrent);
    if (e.mag == 0) e.mag = 1;
    double q = std::hypot(static_cast<double>(e.x), static_cast<double>(e.y));
    if (q == 0) q = 1;
    e.commandPhase = static_cast<float>(degrees(b.commandB[i], b.commandA[i]));
    e.phase = static_cast<float>(degrees(e.x, e.y)) - e.commandPhase;
    e.magnitude = static_cast<float>(q * 100 / (static_cast<double>(s.magCurrent) * e.mag) / 576);
    e.term = e.mag * 4.0 * s.magCurrent * 64 / (q / 576 * 4) / f;
    return e;
}

}  // namespace

TEST(PointCount, IsRoundedToTheEvenNeighbour) {
    const auto count = [](int start, int step, int stop) {
        ScanSettings s;
        s.startFreq = static_cast<std::int16_t>(start);
        s.stepFreq = static_cast<std::int16_t>(step);
        s.stopFreq = static_cast<std::int16_t>(stop);
        return point_count(s);
    };
    EXPECT_EQ(count(4, 3, 1000), 333);
    EXPECT_EQ(count(4, 3, 60), 20) << "19.67";
    EXPECT_EQ(count(4, 4, 10), 2) << "2.5";
    EXPECT_EQ(count(4, 4, 14), 4) << "3.5";
    EXPECT_EQ(count(100, 50, 150), 2);
    EXPECT_EQ(count(10, 3, 7), 0);
    EXPECT_EQ(count(10, 3, 1), -2);
    EXPECT_EQ(count(10, 0, 20), 0) << "none without a step";
    EXPECT_EQ(count(-32768, 1, 32767), 0) << "beyond 16 bits";
}

TEST(CorrelationWindow, KeepsAPeriodWithin300Samples) {
    struct Case {
        int frequency, samples, decimation;
    };
    for (const Case& c :
         {Case{4, 250, 16}, Case{5, 200, 16}, Case{6, 166, 16}, Case{7, 285, 8}, Case{13, 153, 8},
          Case{26, 153, 4}, Case{27, 296, 2}, Case{52, 153, 2}, Case{53, 150, 2}, Case{54, 296, 1},
          Case{100, 160, 1}, Case{900, 17, 1}, Case{1000, 16, 1}, Case{16000, 1, 1},
          Case{16001, 0, 1}, Case{-100, -160, 1}}) {
        EXPECT_EQ(correlation_window(c.frequency).samples, c.samples) << c.frequency;
        EXPECT_EQ(correlation_window(c.frequency).decimation, c.decimation) << c.frequency;
    }
}

TEST(Angle, IsInWholeDegreesFromMinus270To90) {
    struct Case {
        float x, y;
        int degrees;
    };
    for (const Case& c :
         {Case{1, 0, 0}, Case{1, 1, 45}, Case{0, 1, 90}, Case{0, -1, -90}, Case{0, 0, -90},
          Case{-0.0F, 0, -90}, Case{1, -1, -45}, Case{1, 1000, 90}, Case{1, -1000, -90},
          Case{-1, 0, -180}, Case{-1, 1, -225}, Case{-1, -1, -135}, Case{-1, 1000, -270},
          Case{-1, -1000, -90}, Case{-1000, 1, -180}, Case{100, 1, 1}, Case{1000, 8, 0},
          Case{1000, 9, 1}})
        EXPECT_EQ(angle(c.x, c.y), c.degrees) << c.x << ' ' << c.y;
}

TEST(Angle, LeftSideIsNotFoldedIntoTheHalfTurn) {
    for (int degree = 91; degree <= 269; ++degree) {
        const double radians = degree * 3.14159265358979 / 180;
        const auto x = static_cast<float>(std::cos(radians));
        const auto y = static_cast<float>(std::sin(radians));
        EXPECT_EQ(angle(x, y), degree - 360);
    }
}

TEST(Angle, HoldsForAnyNumbers) {
    const float most = std::numeric_limits<float>::max();
    const float least = std::numeric_limits<float>::denorm_min();
    EXPECT_EQ(angle(least, most), 90);
    EXPECT_EQ(angle(-least, most), -270);
    EXPECT_EQ(angle(most, least), 0);
    EXPECT_EQ(angle(std::numeric_limits<float>::infinity(), 1), 0);
}

TEST_F(FirstAnalyseTest, FollowsTheArithmeticAtEveryPoint) {
    buffers->pointCount = point_count(settings);
    ASSERT_EQ(buffers->pointCount, 333);
    std::uint32_t random = 12345;
    const auto next = [&random](int shift) {
        random = random * 1664525 + 1013904223;
        return static_cast<std::int32_t>(random) >> shift;
    };
    for (std::size_t i = 0; i < 333; ++i) {
        const int a = next(16);
        const int b = next(16);
        const std::int32_t x = next(static_cast<int>(i % 20));
        set_point(i, a, b, x, next(static_cast<int>(i % 17)));
    }
    ASSERT_TRUE(analyse());
    double sum = 0;
    for (std::size_t i = 0; i < 332; ++i) {
        const Expected e = expected(settings, *buffers, i);
        EXPECT_EQ(analysis->respX[i], e.x) << i;
        EXPECT_EQ(analysis->respY[i], e.y) << i;
        EXPECT_FLOAT_EQ(analysis->commandMag[i], e.mag) << i;
        EXPECT_EQ(analysis->commandPhase[i], e.commandPhase) << i;
        EXPECT_EQ(analysis->phase[i], e.phase) << i;
        EXPECT_FLOAT_EQ(analysis->magnitude[i], e.magnitude) << i;
        if (i < 4) sum = std::trunc(sum + e.term);
    }
    EXPECT_NEAR(analysis->plantEstimate, sum * 16, 16) << "one step of its integer part";
}

TEST_F(FirstAnalyseTest, LastPointIsNotAnalysed) {
    buffers->pointCount = 3;
    for (std::size_t i = 0; i < 4; ++i)
        set_point(i, 60, 0, 1000, 1000);
    ASSERT_TRUE(analyse());
    EXPECT_NE(analysis->magnitude[1], 0);
    EXPECT_EQ(analysis->magnitude[2], 0);
    EXPECT_EQ(analysis->respX[2], 0);
}

TEST_F(FirstAnalyseTest, OfTwoPointsOneIsAnalysed) {
    settings.startFreq = 100;
    settings.stepFreq = 50;
    settings.stopFreq = 150;
    buffers->pointCount = point_count(settings);
    set_point(0, 0, 60, 512 * 160, 0);
    set_point(1, 0, 60, 512 * 160, 0);
    ASSERT_TRUE(analyse());
    EXPECT_EQ(analysis->respX[0], 32.0F);
    EXPECT_EQ(analysis->commandMag[0], 1.0F);
    EXPECT_EQ(analysis->commandPhase[0], 0.0F);
    EXPECT_EQ(analysis->phase[0], 0.0F);
    EXPECT_FLOAT_EQ(analysis->magnitude[0], 32.0F * 100 / 60 / 576);
    EXPECT_EQ(analysis->commandMag[1], 0.0F);
}

TEST_F(FirstAnalyseTest, NothingToAnalyseBelowTwoPoints) {
    for (const int count : {-3, 0, 1}) {
        buffers->pointCount = static_cast<std::int16_t>(count);
        set_point(0, 60, 0, 1000, 1000);
        EXPECT_TRUE(analyse());
        EXPECT_EQ(analysis->magnitude[0], 0);
        EXPECT_EQ(analysis->plantEstimate, 0);
    }
}

TEST_F(FirstAnalyseTest, CommandOfZerosDividesByOne) {
    buffers->pointCount = 2;
    set_point(0, 0, 0, 512 * 250 * 16, 0);
    ASSERT_TRUE(analyse());
    EXPECT_EQ(analysis->commandMag[0], 1.0F);
    EXPECT_EQ(analysis->commandPhase[0], -90.0F) << "the angle of nothing";
    EXPECT_EQ(analysis->phase[0], 90.0F);
    EXPECT_FLOAT_EQ(analysis->magnitude[0], 32.0F * 100 / 60 / 576);
}

TEST_F(FirstAnalyseTest, ResponseOfZerosCountsAsOne) {
    buffers->pointCount = 2;
    set_point(0, 0, 60, 0, 0);
    ASSERT_TRUE(analyse());
    EXPECT_EQ(analysis->respX[0], 0.0F);
    EXPECT_EQ(analysis->phase[0], -90.0F);
    EXPECT_FLOAT_EQ(analysis->magnitude[0], 100.0F / 60 / 576);
}

TEST_F(FirstAnalyseTest, CommandsAngleIsOfBAndA) {
    buffers->pointCount = 2;
    set_point(0, 60, 0, 1000, 0);
    ASSERT_TRUE(analyse());
    EXPECT_EQ(analysis->commandPhase[0], 90.0F) << "A is the sine part";
    EXPECT_EQ(analysis->phase[0], -90.0F);
}

TEST_F(FirstAnalyseTest, PhaseIsNotFolded) {
    buffers->pointCount = 2;
    set_point(0, 60, 1, -1000, 1);
    ASSERT_TRUE(analyse());
    EXPECT_EQ(analysis->phase[0], -180.0F - 89.0F);
    set_point(0, 60, -1, 0, 1000);
    ASSERT_TRUE(analyse());
    EXPECT_EQ(analysis->phase[0], 90.0F + 269.0F);
}

TEST_F(FirstAnalyseTest, ShiftScalesByPowersOfTwo) {
    buffers->pointCount = 2;
    set_point(0, 60, 0, 512 * 250 * 16, -512 * 250 * 16);
    for (const int shift : {-3, 0, 1, 7, 100}) {
        settings.scaleShift = static_cast<std::int16_t>(shift);
        ASSERT_TRUE(analyse());
        EXPECT_EQ(analysis->respX[0], std::ldexp(1.0F, shift));
        EXPECT_EQ(analysis->respY[0], -std::ldexp(1.0F, shift));
    }
}

TEST_F(FirstAnalyseTest, EstimateComesFromTheFirstFourPointsWithItsIntegerPartEachTime) {
    settings.startFreq = 100;
    settings.stepFreq = 100;
    settings.scaleShift = 9;
    buffers->pointCount = 7;
    // q = 576: each term is magCurrent * 64 / f = 3840 / f: 38.4, 19.2, 12.8, 9.6.
    const int windows[] = {160, 80, 53, 40, 32, 26};
    for (std::size_t i = 0; i < 6; ++i)
        set_point(i, 0, 60, 576 * windows[i], 0);
    ASSERT_TRUE(analyse());
    EXPECT_EQ(analysis->respX[2], 576.0F);
    EXPECT_EQ(analysis->plantEstimate, (38 + 19 + 12 + 9) * 16);
    buffers->pointCount = 3;
    ASSERT_TRUE(analyse());
    EXPECT_EQ(analysis->plantEstimate, (38 + 19) * 16) << "as many as there are";
}

TEST_F(FirstAnalyseTest, EstimateThatFitsNoIntegerStopsAtItsLimit) {
    settings.scaleShift = 0;
    buffers->pointCount = 5;
    for (std::size_t i = 0; i < 4; ++i)
        set_point(i, 32767, 32767, 1, 0);
    ASSERT_TRUE(analyse());
    EXPECT_EQ(analysis->plantEstimate, std::numeric_limits<std::int32_t>::max());
}

TEST_F(FirstAnalyseTest, WhatCantBeComputedIsToldAndNoFault) {
    buffers->pointCount = 10;
    for (std::size_t i = 0; i < 10; ++i)
        set_point(i, 60, 0, 1000, 1000);
    ASSERT_TRUE(analyse());
    settings.magCurrent = 0;
    EXPECT_FALSE(analyse());
    settings.magCurrent = 60;
    settings.scaleShift = 32767;
    EXPECT_FALSE(analyse()) << "beyond single precision";
    settings.scaleShift = 5;
    settings.startFreq = -3;
    EXPECT_FALSE(analyse()) << "a frequency of 0 on the way";
    settings.startFreq = 15999;
    EXPECT_FALSE(analyse()) << "less than a sample a period";
}

TEST_F(FirstAnalyseTest, FullestBufferIsAnalysedToItsEnd) {
    settings.stepFreq = 1;
    buffers->pointCount = 501;
    for (std::size_t i = 0; i < 500; ++i)
        set_point(i, 60, 0, 1000, 1000);
    ASSERT_TRUE(analyse());
    EXPECT_NE(analysis->magnitude[499], 0);
    buffers->pointCount = 32767;
    EXPECT_TRUE(analyse()) << "no further than the block reaches";
}
