// Places on the plot, the points of curves, the raster, the scene.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "scope/plot_geometry.h"
#include "scope/plot_raster.h"
#include "scope/plot_scene.h"
#include "scope/trace.h"

namespace servo::scope {
namespace {

constexpr PlotArea kArea{0, 0, 1000, 500};

// --- Heights and abscissas

TEST(PlotGeometry, OneDivisionIsATenthOfTheHeight) {
    const CurveTransform transform{.offset = 0, .scale = 2, .window = {0, 100}};
    EXPECT_DOUBLE_EQ(transform.y(0, kArea), 250);
    EXPECT_DOUBLE_EQ(transform.y(2, kArea), 200);  // positive values go up
    EXPECT_DOUBLE_EQ(transform.y(-6, kArea), 400);
}

TEST(PlotGeometry, OffsetIsTheValueAtMidHeight) {
    const CurveTransform transform{.offset = 30, .scale = 10, .window = {0, 100}};
    EXPECT_DOUBLE_EQ(transform.y(30, kArea), 250);
    EXPECT_DOUBLE_EQ(marker_height(transform, kArea), 400);  // zero is three divisions below
}

TEST(PlotGeometry, WindowFillsTheWidth) {
    const CurveTransform transform{.window = {20, 120}};
    EXPECT_DOUBLE_EQ(transform.x(20, kArea), 0);
    EXPECT_DOUBLE_EQ(transform.x(70, kArea), 500);
    EXPECT_DOUBLE_EQ(transform.x(120, kArea), 1000);
    EXPECT_DOUBLE_EQ(transform.x(20.5, kArea), 5);
}

TEST(PlotGeometry, WindowOfOneSampleStandsAtTheLeftEdge) {
    const CurveTransform transform{.window = {7, 7}};
    EXPECT_EQ(transform.x(7, kArea), 0);
    EXPECT_EQ(sample_abscissa({7, 7}, 7), 0);
    EXPECT_EQ(nearest_sample({7, 7}, 9000), 7);
    EXPECT_EQ(nearest_sample({0, -1}, 9000), -1);
    const std::vector<double> one{3};
    EXPECT_EQ(curve_points(one, transform, kArea).size(), 1U);
}

TEST(PlotGeometry, HugeScaleGivesAStraightLineAtTheZero) {
    const std::vector<double> values{-1e6, 5, 1e6};
    const CurveTransform transform{.scale = 1e300, .window = {0, 2}};
    for (const PlotPoint& point : curve_points(values, transform, kArea))
        EXPECT_DOUBLE_EQ(point.y, 250);
    const CurveTransform endless{.scale = std::numeric_limits<double>::infinity(),
                                 .window = {0, 2}};
    for (const PlotPoint& point : curve_points(values, endless, kArea))
        EXPECT_DOUBLE_EQ(point.y, 250);
}

TEST(PlotGeometry, ScaleOfZeroFailsNowhere) {
    const CurveTransform transform{.scale = 0, .window = {0, 2}};
    EXPECT_EQ(transform.y(0, kArea), 250);
    EXPECT_EQ(transform.y(1, kArea), 250 - kFarAway);
    EXPECT_EQ(marker_height(transform, kArea), 250);
    const std::vector<double> values{-1, 0, 1, std::nan("")};
    for (const PlotPoint& point : curve_points(values, transform, kArea)) {
        EXPECT_TRUE(std::isfinite(point.x));
        EXPECT_TRUE(std::isfinite(point.y));
    }
    std::vector<float> heights;
    curve_heights(values, transform, kArea, heights);
    for (const float height : heights)
        EXPECT_TRUE(std::isfinite(height));
}

TEST(PlotGeometry, HeightsForTheRasterAreThoseOfTheTransform) {
    const CurveTransform transform{.offset = 3.25, .scale = 0.7, .window = {0, 4}};
    const std::vector<double> values{-4, 0, 3.25, 1e9, -1e300};
    std::vector<float> heights;
    curve_heights(values, transform, kArea, heights);
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_FLOAT_EQ(heights[i], static_cast<float>(transform.y(values[i], kArea)));
}

TEST(PlotGeometry, NearestSampleAndItsAbscissaAgree) {
    for (const ZoomWindow& window : {ZoomWindow{0, 8191}, {5, 6}, {-20, 80}, {100, 377}})
        for (int index = window.first; index <= window.last; ++index)
            ASSERT_EQ(nearest_sample(window, sample_abscissa(window, index)), index);
    EXPECT_EQ(nearest_sample({10, 20}, -500), 10);
    EXPECT_EQ(nearest_sample({10, 20}, 20000), 20);
}

// --- Points of a polyline

TEST(CurvePoints, FewSamplesAreAllThere) {
    const std::vector<double> values{0, 1, 0, -1};
    const CurveTransform transform{.window = {0, 3}};
    const auto points = curve_points(values, transform, kArea);
    ASSERT_EQ(points.size(), 4U);
    EXPECT_DOUBLE_EQ(points[1].x, 1000.0 / 3);
    EXPECT_DOUBLE_EQ(points[1].y, 200);
}

TEST(CurvePoints, ManySamplesKeepFirstLowestHighestAndLastOfEachColumn) {
    std::mt19937 random(3);
    std::vector<double> values(8192);
    for (double& value : values)
        value = static_cast<double>(random() % 1000) / 100 - 5;
    const PlotArea narrow{0, 0, 100, 500};
    const CurveTransform transform{.window = {0, 8191}};
    const auto points = curve_points(values, transform, narrow);
    EXPECT_LE(points.size(), 4U * 101);
    EXPECT_TRUE(std::is_sorted(points.begin(), points.end(),
                               [](const auto& a, const auto& b) { return a.x < b.x; }));
    for (int column = 0; column < 100; ++column) {
        double top = 1e9;
        double bottom = -1e9;
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (std::floor(transform.x(static_cast<int>(i), narrow)) != column) continue;
            top = std::min(top, transform.y(values[i], narrow));
            bottom = std::max(bottom, transform.y(values[i], narrow));
        }
        double kept_top = 1e9;
        double kept_bottom = -1e9;
        for (const PlotPoint& point : points) {
            if (std::floor(point.x) != column) continue;
            kept_top = std::min(kept_top, point.y);
            kept_bottom = std::max(kept_bottom, point.y);
        }
        ASSERT_NEAR(kept_top, top, 1e-9);
        ASSERT_NEAR(kept_bottom, bottom, 1e-9);
    }
}

TEST(CurvePoints, LineToFarOutsideKeepsItsSlopeInside) {
    const std::vector<double> values{0, 1e6, 0};
    const CurveTransform transform{.window = {0, 2}};
    const auto points = curve_points(values, transform, kArea);
    // To 50 million pixels above, half a window away: it leaves within a thousandth of a pixel.
    ASSERT_GE(points.size(), 4U);
    EXPECT_LT(points[1].x, 0.1);
    for (const PlotPoint& point : points) {
        EXPECT_GE(point.y, -100);
        EXPECT_LE(point.y, 600);
    }
}

TEST(CurvePoints, ValuesWithTheirOwnTimes) {
    const std::vector<double> values{0, 1, 2};
    const CurveTransform transform{.window = {0, 10}};
    const auto points = curve_points(values, {.first_at = 2, .step = 2.5}, transform, kArea, 1);
    ASSERT_EQ(points.size(), 3U);
    EXPECT_DOUBLE_EQ(points[0].x, 200);
    EXPECT_DOUBLE_EQ(points[1].x, 450);
    EXPECT_DOUBLE_EQ(points[2].x, 700);
}

// --- Raster

class RasterTest : public testing::Test {
  protected:
    static constexpr int kWidth = 21;
    static constexpr int kHeight = 40;

    void draw(std::vector<float> heights, double first_x, double step, double pen = 1) {
        raster.draw({heights, first_x, step}, pen, 0xff000000, surface);
    }
    int darkness(int x, int y) const {
        return 255 - static_cast<int>(pixels.at(static_cast<std::size_t>(y * kWidth + x)) & 0xff);
    }

    std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(kWidth * kHeight, 0xffffffff);
    PixelSurface surface{pixels.data(), kWidth, kHeight, kWidth};
    CurveRaster raster;
};

TEST_F(RasterTest, FlatLineOnAPixelFillsThatRowAlone) {
    draw({7, 7}, -5, 30);  // its round ends are beside the surface
    for (int x = 0; x < kWidth; ++x) {
        EXPECT_EQ(darkness(x, 7), 255);
        EXPECT_EQ(darkness(x, 6), 0);
        EXPECT_EQ(darkness(x, 8), 0);
    }
}

TEST_F(RasterTest, FlatLineBetweenPixelsIsSharedByBoth) {
    draw({7.25, 7.25}, 0, 20);
    EXPECT_NEAR(darkness(10, 7), 191, 2);
    EXPECT_NEAR(darkness(10, 8), 64, 2);
}

TEST_F(RasterTest, WidePenCoversItsWidth) {
    draw({10, 10}, 0, 20, 3);
    EXPECT_EQ(darkness(10, 9), 255);
    EXPECT_EQ(darkness(10, 11), 255);
    EXPECT_EQ(darkness(10, 8), 0);
    EXPECT_EQ(darkness(10, 12), 0);
}

TEST_F(RasterTest, SlopingLineIsAsDarkAsAFlatOne) {
    draw({5, 25}, 0, 20);  // 45 degrees
    double sum = 0;
    for (int y = 0; y < kHeight; ++y)
        sum += darkness(10, y) / 255.0;
    EXPECT_NEAR(sum, std::sqrt(2.0), 0.1);
}

TEST_F(RasterTest, SpikeOfOneSampleReachesItsHeight) {
    draw({30, 30, 4, 30, 30}, 0, 5);
    EXPECT_GT(darkness(10, 5), 150);
    EXPECT_EQ(darkness(10, 2), 0);
}

TEST_F(RasterTest, CurveFarOutsideTouchesOnlyWhatItCrosses) {
    draw({1e7F, -1e7F}, 0, 20);  // down through the middle
    for (int y = 0; y < kHeight; ++y) {
        EXPECT_EQ(darkness(10, y), 255) << y;
        EXPECT_EQ(darkness(7, y), 0) << y;
        EXPECT_EQ(darkness(13, y), 0) << y;
    }
}

TEST_F(RasterTest, CurveBeginsAndEndsWithItsSamples) {
    draw({10, 10}, 5, 10);
    EXPECT_EQ(darkness(3, 10), 0);
    EXPECT_EQ(darkness(6, 10), 255);
    EXPECT_EQ(darkness(14, 10), 255);
    EXPECT_EQ(darkness(17, 10), 0);
}

TEST_F(RasterTest, SamplesBesideTheSurfaceAreLeftOut) {
    draw({10, 20, 10, 20}, -100, 40);
    draw({10, 10}, 500, 10);
    EXPECT_GT(std::count_if(pixels.begin(), pixels.end(), [](auto p) { return p != 0xffffffff; }),
              0);
}

TEST_F(RasterTest, OneSampleIsADot) {
    draw({10}, 10, 0, 3);
    EXPECT_EQ(darkness(10, 10), 255);
    EXPECT_EQ(darkness(10, 13), 0);
    EXPECT_EQ(darkness(13, 10), 0);
}

TEST_F(RasterTest, NothingForNoSamples) {
    draw({}, 0, 1);
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 0xffffffffU), kWidth * kHeight);
}

TEST_F(RasterTest, EraseBringsTheBackgroundBack) {
    std::vector<std::uint32_t> background(pixels.size(), 0xffffffff);
    const PixelSurface clean{background.data(), kWidth, kHeight, kWidth};
    std::mt19937 random(5);
    for (int curves = 1; curves < 6; ++curves) {
        for (int i = 0; i < curves; ++i) {
            std::vector<float> heights(static_cast<std::size_t>(random() % 200 + 1));
            for (float& height : heights)
                height = static_cast<float>(random() % 600) / 10 - 10;
            draw(heights, static_cast<double>(random() % 10) - 5, 0.5, 1 + random() % 3);
        }
        raster.erase(clean, surface);
        ASSERT_EQ(pixels, background);
    }
}

// --- Scene

ScopeData recorded(int channels) {
    ScopeData data;
    for (int channel = 0; channel < channels; ++channel) {
        ScopeChannel& curve = data.channels.at(static_cast<std::size_t>(channel));
        curve.entries[0].type = "int16 ";
        curve.entries[0].formula = "[DEC rpm]N*2";
        curve.objectList = {{"", "Speed "}, 1};
        curve.unitList = {{"rpm"}, 0};
        curve.enable = true;
        curve.scale = 10;
        for (int i = 0; i < 100; ++i)
            curve.samples[static_cast<std::size_t>(i)] = i * (channel + 1);
    }
    data.dataValid = true;
    data.zoomWindow[0] = {0, 99};
    write_time_texts(data, base::Language::kEnglish);
    Print_Pic_Line(data);
    return data;
}

PlotScene scene_of(const ScopeData& data, const References& references = {}) {
    return plot_scene(data, {}, references, base::Language::kEnglish);
}

TEST(PlotScene, CurvesHaveDisplayValuesAndThePickedOneIsInFront) {
    ScopeData data = recorded(3);
    data.Combo12 = 1;
    data.channels[1].offsetText = "5";
    const PlotScene scene = scene_of(data);
    ASSERT_EQ(scene.curves.size(), 3U);
    EXPECT_EQ(scene.curves.back().channel, 1);
    EXPECT_TRUE(scene.curves.back().picked);
    EXPECT_EQ(scene.curves.back().values[7], 28);
    EXPECT_EQ(scene.curves.back().object, "Speed");
    EXPECT_EQ(scene.curves.back().marker, 4500);  // moved up by 5 of 10 a division
    EXPECT_EQ(scene.labelled, 1);
}

TEST(PlotScene, AllChannelsHiddenLeavesTheGridAloneAndTheTimes) {
    ScopeData data = recorded(4);
    for (ScopeChannel& channel : data.channels)
        channel.hide = true;
    const PlotScene scene = scene_of(data);
    EXPECT_TRUE(scene.valid);
    EXPECT_TRUE(scene.curves.empty());
    EXPECT_EQ(scene.times, data.Label15);
    EXPECT_FALSE(scene.times[0].empty());
    EXPECT_EQ(scene.labelled, -1);
}

TEST(PlotScene, NothingBeforeTheFirstRecording) {
    ScopeData data = recorded(1);
    data.dataValid = false;
    const PlotScene scene = scene_of(data);
    EXPECT_FALSE(scene.valid);
    EXPECT_TRUE(scene.curves.empty());
    EXPECT_FALSE(hover_readout(scene, 100));
    EXPECT_EQ(empty_texts(false, base::Language::kEnglish)[0], "No recording yet");
    EXPECT_EQ(empty_texts(true, base::Language::kEnglish)[0], "Recording");
}

TEST(PlotScene, WindowPulledOverTheBeginningShowsWhatThereIs) {
    ScopeData data = recorded(1);
    data.zoomDepth = 1;
    data.zoomWindow[1] = {-10, 30};
    const PlotScene scene = scene_of(data);
    ASSERT_EQ(scene.curves[0].values.size(), 31U);
    EXPECT_EQ(scene.curves[0].times.first_at, 0);
    EXPECT_FALSE(hover_readout(scene, 1000));
    EXPECT_EQ(hover_readout(scene, 5000)->sample, 10);
    data.zoomWindow[1] = {-100, -60};
    EXPECT_TRUE(scene_of(data).curves[0].values.empty());
}

TEST(PlotScene, ChannelWithoutAUnitShowsItsRawNumbers) {
    ScopeData data = recorded(1);
    data.channels[0].unitList.ListIndex = -1;
    EXPECT_EQ(scene_of(data).curves[0].values[9], 9);
}

TEST(PlotScene, ReferencesKeepTheirTimeAndTakeTheChannelsScale) {
    ScopeData data = recorded(1);
    Recording old{.period_us = 125, .curves = {{0, "Speed", "rpm", {}}}, .start_us = 0};
    for (int i = 0; i < 100; ++i)
        old.curves[0].values.push_back(i);
    References references;
    references.keep("R1", old);
    data.zoomDepth = 1;
    data.zoomWindow[1] = {20, 40};
    data.channels[0].scale = 4;
    const PlotScene scene = scene_of(data, references);
    ASSERT_EQ(scene.references.size(), 1U);
    const SceneReference& reference = scene.references[0];
    EXPECT_EQ(reference.times.step, 2);  // at half the rate
    EXPECT_EQ(reference.times.first_at, 20);
    EXPECT_EQ(reference.values.front(), 10);
    EXPECT_EQ(reference.values.back(), 20);
    EXPECT_EQ(reference.transform.scale, 4);
}

TEST(PlotScene, ReferencesThatDoNotFitAreLeftOut) {
    const ScopeData data = recorded(1);
    References references;
    references.keep("other unit", {.period_us = 62.5, .curves = {{0, "S", "A", {1, 2}}}});
    references.keep("no time", {.period_us = 0, .curves = {{0, "S", "rpm", {1, 2}}}});
    references.keep("later",
                    {.period_us = 62.5, .curves = {{0, "S", "rpm", {1}}}, .start_us = 1e9});
    references.keep("hidden", {.period_us = 62.5, .curves = {{0, "S", "rpm", {1, 2}}}});
    references.kept.back().shown = false;
    EXPECT_TRUE(scene_of(data, references).references.empty());
}

TEST(PlotScene, HoverTellsTheNearestSampleOfEveryCurve) {
    ScopeData data = recorded(2);
    data.Combo12 = 0;
    const auto readout = hover_readout(scene_of(data), 5000.0 / 99 * 20 + 20);
    ASSERT_TRUE(readout);
    EXPECT_EQ(readout->sample, 10);
    EXPECT_EQ(readout->time, "625 us");
    ASSERT_EQ(readout->values.size(), 2U);
    EXPECT_EQ(readout->values[0].channel, 0);
    EXPECT_EQ(readout->values[0].text, "20 rpm");
    EXPECT_EQ(readout->values[0].y, 3000);
    EXPECT_EQ(readout->values[1].text, "40 rpm");
}

TEST(PlotScene, DurationsHaveAUnitThatReadsWell) {
    EXPECT_EQ(duration_text(0), "0 us");
    EXPECT_EQ(duration_text(62.5), "62.5 us");
    EXPECT_EQ(duration_text(14062.5), "14.0625 ms");
    EXPECT_EQ(duration_text(2000000), "2 s");
    EXPECT_EQ(duration_text(1.0 / 3), "0.333333 us");
}

}  // namespace
}  // namespace servo::scope
