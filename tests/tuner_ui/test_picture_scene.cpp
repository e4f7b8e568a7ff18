// What stands on the picture, as data.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "measured_scan.h"
#include "tuner/curve_table.h"
#include "tuner/curve_values.h"
#include "tuner/picture_scene.h"
#include "tuner/simulation.h"
#include "tuner/tuner_palette.h"

namespace servo::tuner::test {
namespace {

std::unique_ptr<TunerData> analysed_data(int start = 4, int step = 3, int stop = 1000) {
    auto data = std::make_unique<TunerData>();
    const MeasuredScan scan = measured_scan(start, step, stop);
    data->settings = scan.settings;
    data->buffers = *scan.buffers;
    FirstAnalyse(data->settings, data->buffers, data->analysis);
    data->analysed = true;
    return data;
}

std::unique_ptr<TunerData> simulated_data() {
    auto data = analysed_data();
    std::array<FilterRecord, kSlots> records{};
    for (FilterRecord& record : records)
        record = {.type = 1, .a = 400.0F};
    data->simulation = simulate(*data, records, {100.0F, 1.0F, 1.0F});
    return data;
}

const SceneCurve* find(const PictureScene& scene, Curve curve, bool phase) {
    const auto found = std::ranges::find_if(scene.curves, [&](const SceneCurve& each) {
        return each.curve == curve && each.phase == phase;
    });
    return found == scene.curves.end() ? nullptr : &*found;
}

PictureScene scene_of(const TunerData& data, int width = 800, int height = 400) {
    return picture_scene(data, surface_of(width, height, data.choices), marks_of(data));
}

// --- Areas and grid

TEST(PictureScene, AnEmptyTunerHasItsGridOnly) {
    const TunerData data;
    const PictureScene scene = scene_of(data);
    EXPECT_TRUE(scene.curves.empty());
    EXPECT_TRUE(scene.marks.empty());
    EXPECT_EQ(scene.frequencies.size(), 28U);
    EXPECT_EQ(scene.label_y, 400 * kUnitsPerPixel - 200);
}

TEST(PictureScene, EveryFrequencyLineCarriesItsFrequency) {
    const PictureScene scene = scene_of({});
    std::set<std::string> labels;
    for (const GridLine& line : scene.frequencies) {
        labels.insert(line.label);
        EXPECT_EQ(line.place, frequency_x(scene.surface, std::stod(line.label)));
    }
    EXPECT_EQ(labels.size(), 28U);
    for (const char* label : {"1", "9", "10", "90", "100", "200", "1000"})
        EXPECT_EQ(labels.count(label), 1U) << label;
}

TEST(PictureScene, GainLinesStandTheChosenDecibelsApart) {
    TunerData data;
    const PictureScene fine = scene_of(data);
    std::vector<std::string> labels;
    for (const GridLine& line : fine.gains)
        labels.push_back(line.label);
    EXPECT_EQ(labels, (std::vector<std::string>{"40", "20", "0 dB", "-20", "-40"}));
    EXPECT_EQ(fine.gains[2].place, fine.surface.height / 4);
    data.choices.Combo2 = 1;
    labels.clear();
    for (const GridLine& line : scene_of(data).gains)
        labels.push_back(line.label);
    EXPECT_EQ(labels, (std::vector<std::string>{"80", "40", "0 dB", "-40", "-80"}));
}

TEST(PictureScene, WithoutThePhaseTheGainHasTheWholeHeight) {
    TunerData data;
    EXPECT_EQ(scene_of(data).gain.bottom, scene_of(data).phase.top);
    data.choices.Check16 = false;
    const PictureScene scene = scene_of(data);
    EXPECT_FALSE(scene.phase.shown);
    EXPECT_TRUE(scene.phases.empty());
    EXPECT_EQ(scene.gain.bottom, scene.surface.height);
    EXPECT_EQ(scene.gains.back().label, "-120");
    data.choices.Check15 = false;
    EXPECT_TRUE(scene_of(data).gains.empty());
}

TEST(PictureScene, PhaseLinesStandAQuarterTurnApart) {
    std::vector<std::string> labels;
    for (const GridLine& line : scene_of({}).phases)
        labels.push_back(line.label);
    EXPECT_EQ(labels, (std::vector<std::string>{"180°", "90°", "0°", "-90°", "-180°"}));
}

// --- Curves

TEST(PictureScene, AMeasuredCurveStandsAtItsFrequenciesAndGains) {
    auto data = analysed_data(10, 100, 510);  // six points, five of them analysed
    const PictureScene scene = scene_of(*data);
    const SceneCurve* curve = find(scene, Curve::kPlant, false);
    ASSERT_NE(curve, nullptr);
    ASSERT_EQ(curve->lines.size(), 1U);
    const ScenePolyline& line = curve->lines.front();
    ASSERT_EQ(line.size(), 5U);
    for (std::size_t i = 0; i < line.size(); ++i) {
        EXPECT_EQ(line[i].x, frequency_x(scene.surface, 10.0 + 100.0 * static_cast<double>(i)));
        EXPECT_EQ(line[i].y, gain_y(scene.surface, data->analysis.magnitude[i]));
    }
}

TEST(PictureScene, TheMagnitudeIsTheOpenLoopWithTheDefaultGain) {
    auto data = analysed_data();
    const CurveValues plant = curve_values(*data, Curve::kPlant);
    const double at_crossover = plant.gains[12];  // 40 Hz
    EXPECT_NEAR(*gain_decibels(at_crossover), 20.0 * std::log10(std::abs(two_masses(40.0)) * 100.0),
                0.01);
    EXPECT_NEAR(at_crossover, 1.0, 0.12);
}

TEST(PictureScene, OnlyTickedCurvesAreDrawn) {
    auto data = simulated_data();
    data->choices.curves.fill(false);
    EXPECT_TRUE(scene_of(*data).curves.empty());
    EXPECT_TRUE(scene_of(*data).marks.empty());
    data->choices.curves[static_cast<std::size_t>(Curve::kFilter3)] = true;
    const PictureScene scene = scene_of(*data);
    ASSERT_EQ(scene.curves.size(), 2U);
    EXPECT_EQ(scene.curves[0].curve, Curve::kFilter3);
    EXPECT_EQ(scene.curves[0].lines.front().front().x, kLeftMargin);
    EXPECT_EQ(scene.curves[0].lines.front().back().x, scene.surface.width);
}

TEST(PictureScene, PositionLoopsHaveNoPhase) {
    auto data = simulated_data();
    data->choices.curves.fill(true);
    const PictureScene scene = scene_of(*data);
    EXPECT_NE(find(scene, Curve::kOpenPosition, false), nullptr);
    EXPECT_EQ(find(scene, Curve::kOpenPosition, true), nullptr);
    EXPECT_EQ(find(scene, Curve::kClosedPosition, true), nullptr);
    EXPECT_EQ(scene.curves.size(), 22U);
}

TEST(PictureScene, AGainOfZeroBreaksItsLine) {
    auto data = analysed_data();
    data->analysis.magnitude[10] = 0.0F;
    data->analysis.magnitude[20] = std::numeric_limits<float>::quiet_NaN();
    data->analysis.magnitude[30] = std::numeric_limits<float>::infinity();
    EXPECT_EQ(find(scene_of(*data), Curve::kPlant, false)->lines.size(), 4U);
}

TEST(PictureScene, APhaseThatLeapsOverTheEndOfTheScaleBreaksItsLine) {
    auto data = analysed_data();
    data->analysis.phase.fill(-170.0F);
    data->analysis.phase[50] = -190.0F;
    const PictureScene scene = scene_of(*data);
    const SceneCurve* curve = find(scene, Curve::kPlant, true);
    ASSERT_EQ(curve->lines.size(), 3U);
    EXPECT_EQ(curve->lines[1].front().y, phase_y(scene.surface, 170.0));
    for (const ScenePolyline& line : curve->lines)
        for (const ScenePoint& point : line) {
            EXPECT_GE(point.y, scene.phase.top);
            EXPECT_LE(point.y, scene.phase.bottom);
        }
}

TEST(PictureScene, PointsThatNobodyCouldTellApartAreLeftOut) {
    auto data = simulated_data();
    data->choices.curves.fill(false);
    data->choices.curves[static_cast<std::size_t>(Curve::kFilter1)] = true;
    const PictureScene scene = scene_of(*data, 400, 300);
    const ScenePolyline& line = scene.curves.front().lines.front();
    EXPECT_LT(line.size(), 700U);
    // The polyline stays within a pixel of every value that was left out.
    const CurveValues values = curve_values(*data, Curve::kFilter1);
    for (int i = 0; i < values.size(); ++i) {
        const int x = frequency_x(scene.surface, values.frequency(i));
        const int y = gain_y(scene.surface, values.gains[static_cast<std::size_t>(i)]);
        const auto right = std::ranges::lower_bound(line, x, {}, &ScenePoint::x);
        ASSERT_NE(right, line.end());
        const auto left = right == line.begin() ? right : right - 1;
        const double part =
            right->x == left->x ? 0.0 : static_cast<double>(x - left->x) / (right->x - left->x);
        EXPECT_NEAR(left->y + part * (right->y - left->y), y, kUnitsPerPixel) << i + 1 << " Hz";
    }
}

// --- Marks

TEST(PictureScene, ResonancesAreNamedWithFrequencyAndHeight) {
    auto data = analysed_data();
    const PictureScene scene = scene_of(*data);
    const auto mark = std::ranges::find(scene.marks, MarkKind::kResonance, &SceneMark::kind);
    ASSERT_NE(mark, scene.marks.end());
    EXPECT_NEAR(mark->at.x, frequency_x(scene.surface, kResonance), 4 * kUnitsPerPixel);
    EXPECT_NE(mark->text.find(" Hz +"), std::string::npos) << mark->text;
    EXPECT_NE(mark->text.find(" dB"), std::string::npos);
    data->choices.curves[0] = false;
    const PictureScene without = scene_of(*data);
    EXPECT_TRUE(without.marks.empty());
}

TEST(PictureScene, MarginsStandOnTheirCurves) {
    auto data = analysed_data();
    PictureMarks marks;
    marks.figures.velocity.margins.crossover = 40.0;
    marks.figures.velocity.margins.phase_margin = Reading{40.0, 55.0};
    marks.figures.velocity.margins.gain_margin = Reading{150.0, 12.0};
    marks.figures.velocity.bandwidth = 70.0;
    const Surface surface = surface_of(800, 400, data->choices);
    const PictureScene scene = picture_scene(*data, surface, marks);
    const auto at = [&](MarkKind kind) {
        const auto found = std::ranges::find(scene.marks, kind, &SceneMark::kind);
        return found == scene.marks.end() ? SceneMark{} : *found;
    };
    EXPECT_EQ(at(MarkKind::kCrossover).at,
              (ScenePoint{frequency_x(surface, 40.0), gain_y(surface, 1.0)}));
    EXPECT_EQ(at(MarkKind::kCrossover).text, "40 Hz");
    EXPECT_EQ(at(MarkKind::kPhaseMargin).at.y, phase_y(surface, -125.0));
    EXPECT_EQ(at(MarkKind::kPhaseMargin).to_y, phase_y(surface, -180.0));
    EXPECT_EQ(at(MarkKind::kPhaseMargin).text, "55°");
    EXPECT_EQ(at(MarkKind::kGainMargin).at.y, gain_y(surface, std::pow(10.0, -12.0 / 20.0)));
    EXPECT_EQ(at(MarkKind::kGainMargin).to_y, gain_y(surface, 1.0));
    EXPECT_EQ(at(MarkKind::kGainMargin).text, "12 dB");
    EXPECT_EQ(at(MarkKind::kBandwidth).text, "-3 dB 70 Hz");
}

TEST(PictureScene, ANegativePhaseMarginReachesToTheOtherEndOfTheScale) {
    const auto data = analysed_data();
    PictureMarks marks;
    marks.figures.velocity.margins.phase_margin = Reading{40.0, -20.0};
    const Surface surface = surface_of(800, 400, data->choices);
    const PictureScene scene = picture_scene(*data, surface, marks);
    const auto mark = std::ranges::find(scene.marks, MarkKind::kPhaseMargin, &SceneMark::kind);
    ASSERT_NE(mark, scene.marks.end());
    EXPECT_EQ(mark->at.y, phase_y(surface, 160.0));
    EXPECT_EQ(mark->to_y, phase_y(surface, 180.0));
}

// --- Values

TEST(CurveValues, TheReadingIsThatOfTheNearestPoint) {
    const auto data = analysed_data(10, 10, 100);
    const auto readings = readings_at(*data, 34.0);
    ASSERT_EQ(readings.size(), 1U);
    EXPECT_EQ(readings[0].frequency, 30);
    EXPECT_NEAR(*readings[0].gain, *gain_decibels(data->analysis.magnitude[2]), 1e-9);
    EXPECT_TRUE(readings_at(*data, 4.0).empty()) << "before the first point";
    EXPECT_TRUE(readings_at(*data, 99.0).empty()) << "the last point is not analysed";
    EXPECT_EQ(readings_at(*data, 94.0).size(), 1U);
}

TEST(CurveValues, AScanOfOnePointHasNoCurve) {
    auto data = analysed_data();
    data->buffers.pointCount = 1;
    EXPECT_TRUE(curve_values(*data, Curve::kPlant).empty());
    EXPECT_TRUE(scene_of(*data).curves.empty());
}

TEST(CurveTable, GainsThatHaveNoLogarithmAreEmpty) {
    auto data = analysed_data(10, 10, 50);
    data->analysis.magnitude[1] = 0.0F;
    const std::string table = curve_table(*data, base::Language::kChinese);
    EXPECT_EQ(
        table.substr(0, table.find("\r\n")),
        "\xef\xbb\xbf"
        "频率 [Hz],电机与负载 增益 [dB],电机与负载 相位 [°],电流闭环 增益 [dB],电流闭环 相位 [°]");
    EXPECT_NE(table.find("\r\n20,,"), std::string::npos);
    EXPECT_EQ(std::ranges::count(table, '\n'), 5);
}

TEST(CurveStyles, NoTwoCurvesHaveTheSameDashesOrColour) {
    std::set<std::uint32_t> colours;
    std::set<std::array<std::uint8_t, palette::kMostDashes>> dashes;
    for (const palette::CurveStyle& style : palette::kStyles) {
        colours.insert(style.colour);
        dashes.insert(style.dashes);
    }
    EXPECT_EQ(colours.size(), palette::kStyles.size());
    EXPECT_EQ(dashes.size(), palette::kStyles.size());
}

// Contrast as accessibility guides reckon it.
TEST(CurveStyles, EveryColourIsReadOnWhite) {
    const auto linear = [](std::uint32_t part) {
        const double value = part / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    for (const palette::CurveStyle& style : palette::kStyles) {
        const double light = 0.2126 * linear(style.colour >> 16 & 0xff) +
                             0.7152 * linear(style.colour >> 8 & 0xff) +
                             0.0722 * linear(style.colour & 0xff);
        EXPECT_GE(1.05 / (light + 0.05), 4.5) << std::hex << style.colour;
    }
}

}  // namespace
}  // namespace servo::tuner::test
