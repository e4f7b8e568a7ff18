#include "tuner/picture_geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace servo::tuner {
namespace {

// A thousand units of three decades; a quarter of the height is 100 and a half, which is 100.
constexpr Surface kSurface{1016, 402, 40};

TEST(PictureGeometry, FrequenciesStandOverThreeDecades) {
    const struct {
        double frequency;
        int x;
    } rows[] = {{1, 16},    {2, 116},   {5, 248},    {20, 449},    {50, 582},    {99.9, 682},
                {200, 783}, {500, 915}, {999, 1015}, {1000, 1016}, {2000, 1116}, {0.5, -85}};
    for (const auto& row : rows)
        EXPECT_EQ(frequency_x(kSurface, row.frequency), row.x) << row.frequency;
}

TEST(PictureGeometry, AFrequencyOfZeroOrBelowStandsFarToTheLeft) {
    EXPECT_EQ(frequency_x(kSurface, 0), 16 - 2000);
    EXPECT_EQ(frequency_x(kSurface, -5), 16 - 2000);
    EXPECT_EQ(frequency_x(kSurface, std::nan("")), 16 - 2000);
}

TEST(PictureGeometry, GainsStandAroundAQuarterOfTheHeight) {
    const struct {
        double gain;
        int range;
        int y;
    } rows[] = {{1, 40, 100},
                {10, 40, 50},
                {100, 40, 0},
                {0.1, 40, 150},
                {0.01, 40, 200},
                {10, 80, 75},
                {100, 80, 50},
                {0.1, 80, 125},
                {2, 40, 85},
                // Rounded down, so below 0 dB away from it.
                {0.5, 40, 116},
                {2, 80, 93},
                {0.5, 80, 108},
                {1e-3, 40, 250}};
    for (const auto& row : rows)
        EXPECT_EQ(gain_y({1016, 402, row.range}, row.gain), row.y) << row.gain << ' ' << row.range;
}

TEST(PictureGeometry, AGainOfZeroOrBelowStandsFarDown) {
    for (const double gain : {0.0, -1.0, -std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_GT(gain_y(kSurface, gain), 1000) << gain;
        EXPECT_LT(gain_y(kSurface, gain), 10000) << gain;
    }
    EXPECT_LT(gain_y(kSurface, std::numeric_limits<double>::infinity()), -1000);
}

TEST(PictureGeometry, PhasesStandInTheLowerHalf) {
    const struct {
        double degrees;
        int y;
    } rows[] = {{0, 300},  {180, 200}, {-180, 400}, {90, 250},  {-90, 350},  {45, 275}, {1, 300},
                {-1, 301}, {270, 350}, {-270, 250}, {360, 300}, {-200, 212}, {190, 395}};
    for (const auto& row : rows)
        EXPECT_EQ(phase_y(kSurface, row.degrees), row.y) << row.degrees;
}

TEST(PictureGeometry, PhasesFold) {
    EXPECT_EQ(folded(180), 180);
    EXPECT_EQ(folded(-180), -180);
    EXPECT_EQ(folded(181), -179);
    EXPECT_EQ(folded(-269), 91);
    EXPECT_EQ(folded(std::nan("")), 0);
    EXPECT_TRUE(folds_between(-170, 170));
    EXPECT_TRUE(folds_between(-170, -190));
    EXPECT_FALSE(folds_between(-90, 90));
    EXPECT_FALSE(folds_between(-100, -120));
}

TEST(PictureGeometry, TheGridHas28Lines) {
    const std::vector<int> wanted{1,   2,   3,   4,   5,   6,   7,   8,   9,   10,
                                  20,  30,  40,  50,  60,  70,  80,  90,  100, 200,
                                  300, 400, 500, 600, 700, 800, 900, 1000};
    EXPECT_EQ(grid_frequencies(), wanted);
}

TEST(PictureGeometry, ThePointerReadsWhatIsDrawn) {
    for (const int f : grid_frequencies()) {
        const int x = frequency_x(kSurface, f);
        EXPECT_LE(frequency_at(kSurface, x), f * (1 + 1e-9));
        EXPECT_GT(frequency_at(kSurface, x + 1), f);
    }
    EXPECT_DOUBLE_EQ(gain_at(kSurface, 100), 0.0);
    EXPECT_DOUBLE_EQ(gain_at(kSurface, 50), 20.0);
    EXPECT_DOUBLE_EQ(gain_at(kSurface, 402), -120.8);
    EXPECT_DOUBLE_EQ(gain_at({1016, 402, 80}, 50), 40.0);
    EXPECT_DOUBLE_EQ(phase_at(kSurface, 300), 0.0);
    EXPECT_DOUBLE_EQ(phase_at(kSurface, 200), 180.0);
    EXPECT_DOUBLE_EQ(phase_at(kSurface, 350), -90.0);
}

TEST(PictureGeometry, ThePointerHasTexts) {
    PointerTexts texts = pointer_texts(kSurface, 16, 100);
    EXPECT_EQ(texts.Label15, "1.0 Hz");
    EXPECT_EQ(texts.Label14, "0.0dB");
    EXPECT_EQ(texts.Label37, "360.0°");
    texts = pointer_texts(kSurface, 516, 333);
    EXPECT_EQ(texts.Label15, "31.6 Hz");
    EXPECT_EQ(texts.Label14, "-93.2dB");
    EXPECT_EQ(texts.Label37, "-59.4°");
    EXPECT_EQ(pointer_texts(kSurface, 0, 0).Label15, "0.9 Hz");
}

TEST(PictureGeometry, OfASurfaceWithoutSizeIsDefined) {
    for (const Surface s : {Surface{0, 0, 40}, Surface{16, 3, 40}, Surface{5, 1, 0}}) {
        frequency_x(s, 100);
        gain_y(s, 0.5);
        phase_y(s, 90);
        EXPECT_TRUE(std::isfinite(frequency_at(s, -100000)));
        EXPECT_TRUE(std::isfinite(frequency_at(s, 100000)));
        EXPECT_TRUE(std::isfinite(gain_at(s, 10)));
        EXPECT_TRUE(std::isfinite(phase_at(s, 10)));
    }
}

}  // namespace
}  // namespace servo::tuner
