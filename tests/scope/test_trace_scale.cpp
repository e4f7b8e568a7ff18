// Scale and offset of the window shown, and the values of samples in units.
#include <gtest/gtest.h>

#include "params/formula.h"
#include "scope/trace.h"
#include "scope/trace_support.h"

namespace servo::scope {
namespace {

using test::bytes_of;
using test::drive_operands;
using test::kSpeedFormula;
using test::upload;
using test::use;

// A recording of one channel of 16 bits.
ScopeData recorded(const std::vector<std::int16_t>& samples, std::string_view formula = "[DEC]N*1",
                   std::string_view unit = "DEC") {
    ScopeData data;
    use(data, 0, "int16", formula, unit);
    upload(data, bytes_of(samples));
    EXPECT_TRUE(Movingdata(data, drive_operands(), base::Language::kEnglish));
    return data;
}

TEST(ChangeCurveUnit, FlatTraceHasSpanOneAndScaleTwoTenths) {
    const ScopeData data = recorded({40, 40, 40});
    const ScopeChannel& channel = data.channels[0];
    EXPECT_EQ(channel.centre, 40.0);
    EXPECT_EQ(channel.span, 1.0);
    EXPECT_EQ(channel.scaleText, "2.0E-01");
    EXPECT_EQ(channel.scale, 0.2);
    EXPECT_EQ(channel.autoScaleValue, 0.2);
    EXPECT_EQ(channel.autoOffset, 40.0);
    EXPECT_EQ(channel.offsetText, "-40.0");
    EXPECT_EQ(offset_of(channel), 40.0) << "which puts the curve in the middle";
}

TEST(ChangeCurveUnit, ExtremesGoThroughTheUnit) {
    // rpm = N * 1875 / 512 / 10000
    const ScopeData data = recorded({-1000, 3000, 500}, kSpeedFormula, "rpm");
    const ScopeChannel& channel = data.channels[0];
    EXPECT_EQ(channel.rawMax, 3000);
    EXPECT_EQ(channel.rawMin, -1000);
    EXPECT_DOUBLE_EQ(channel.span, 4000 * 1875.0 / 512 / 10000);
    EXPECT_DOUBLE_EQ(channel.centre, 1000 * 1875.0 / 512 / 10000);
    // 0.244140625 went down to 2, so the next step of 1, 2, 5.
    EXPECT_EQ(channel.scaleText, "5.0E-01");
    EXPECT_EQ(channel.offsetText, "-0.3662109375");
}

TEST(ChangeCurveUnit, UnitThatTurnsTheCurveOverHasAPositiveSpan) {
    const ScopeData data = recorded({0, 60}, "[DEC down](0-N)/10", "down");
    EXPECT_EQ(data.channels[0].span, 6.0);
    EXPECT_EQ(data.channels[0].centre, -3.0);
    EXPECT_EQ(data.channels[0].scaleText, "1.0E+00");
    EXPECT_EQ(data.channels[0].offsetText, "3.0");
}

TEST(ChangeCurveUnit, OffsetThatRoundsToZeroHasNoSign) {
    EXPECT_EQ(recorded({-5, 5}).channels[0].offsetText, "0.0");
}

TEST(ChangeCurveUnit, AutoScaleOffTakesTheTextsAsTheyStand) {
    ScopeData data = recorded({0, 600});
    ScopeChannel& channel = data.channels[0];
    channel.autoScale = false;
    channel.scaleText = "3.5E+01";
    channel.offsetText = "12";
    channel.samples[1] = 6000;
    change_curve_unit(data, drive_operands());
    EXPECT_EQ(channel.span, 6000.0) << "what was measured is known all the same";
    EXPECT_EQ(channel.centre, 3000.0);
    EXPECT_EQ(channel.scale, 35.0);
    EXPECT_EQ(channel.scaleText, "3.5E+01");
    EXPECT_EQ(channel.offsetText, "12");
    EXPECT_EQ(channel.autoOffset, 300.0) << "that of the last automatic scaling";
    EXPECT_EQ(channel.autoScaleValue, 100.0);

    channel.autoScale = true;
    change_curve_unit(data, drive_operands());
    EXPECT_EQ(channel.scale, 1000.0);
    EXPECT_EQ(channel.scaleText, "1.0E+03");
    EXPECT_EQ(channel.offsetText, "-3000.0");
}

TEST(ChangeCurveUnit, ExtremesAreThoseOfTheWindowShown) {
    ScopeData data = recorded({900, 1, 2, 3, -900});
    data.zoomDepth = 1;
    data.zoomWindow[1] = {1, 3};
    change_curve_unit(data, drive_operands());
    EXPECT_EQ(data.channels[0].rawMax, 3);
    EXPECT_EQ(data.channels[0].rawMin, 1);
    data.zoomDepth = 0;
    change_curve_unit(data, drive_operands());
    EXPECT_EQ(data.channels[0].rawMax, 900);
    EXPECT_EQ(data.channels[0].rawMin, -900);
}

TEST(ChangeCurveUnit, ChannelsNotTickedOrWithoutAUnitKeepTheirScale) {
    ScopeData data = recorded({0, 600});
    use(data, 1, "int16").unitList.ListIndex = -1;
    use(data, 2, "int16").enable = false;
    for (const std::size_t i : {1u, 2u}) {
        data.channels[i].samples[0] = 77;
        data.channels[i].scaleText = "7.0E+00";
    }
    change_curve_unit(data, drive_operands());
    for (const std::size_t i : {1u, 2u}) {
        EXPECT_EQ(data.channels[i].scaleText, "7.0E+00");
        EXPECT_EQ(data.channels[i].scale, 1.0);
        EXPECT_EQ(data.channels[i].rawMax, 77) << "extremes are those of all four";
    }
}

TEST(ChangeCurveUnit, HiddenCurveIsScaledToo) {
    ScopeData data = recorded({0, 600});
    data.channels[0].hide = true;
    data.channels[0].samples[1] = 6000;
    change_curve_unit(data, drive_operands());
    EXPECT_EQ(data.channels[0].scaleText, "1.0E+03");
}

TEST(ChangeCurveUnit, WindowThatBeginsBelowZeroIsLeftUnprocessed) {
    ScopeData data = recorded({0, 600, 0});
    data.zoomDepth = 1;
    data.zoomWindow[1] = {-1, 1};
    data.channels[0].rawMax = 1234;
    data.cursors[0] = {true, 0.0};
    change_curve_unit(data, drive_operands());
    EXPECT_EQ(data.channels[0].rawMax, 1234);
    EXPECT_EQ(data.cursor_texts.Label25, "");
}

TEST(ChangeCurveUnit, IndexBeyond8191EndsTheAction) {
    ScopeData data = recorded({0, 600, 0});
    data.channels[0].rawMax = 1234;
    for (const ZoomWindow window : {ZoomWindow{0, 8192}, ZoomWindow{8192, 8192},
                                    ZoomWindow{32767, 0}, ZoomWindow{0, 32767}}) {
        data.zoomWindow[0] = window;
        change_curve_unit(data, drive_operands());
        EXPECT_EQ(data.channels[0].rawMax, 1234);
    }
    data.zoomWindow[0] = {8191, 8191};
    change_curve_unit(data, drive_operands());
    EXPECT_EQ(data.channels[0].rawMax, 0);
}

TEST(ChangeCurveUnit, FormulaThatFailsScalesLikeAFlatTrace) {
    const ScopeData data = recorded({0, 600}, "[DEC rpm]N/[64100320]/0", "rpm");
    EXPECT_EQ(data.channels[0].scaleText, "2.0E-01");
    EXPECT_EQ(data.channels[0].offsetText, "0.0");
}

TEST(DisplayValues, AreThoseOfTheUnitFormula) {
    ScopeData data;
    const ScopeChannel& channel = use(data, 0, "int16", kSpeedFormula, "rpm");
    const std::vector<std::int32_t> raw{0, 1, -1, 1000000, INT32_MIN, INT32_MAX};
    const auto values = display_values(channel, raw, drive_operands());
    ASSERT_EQ(values.size(), raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        EXPECT_EQ(values[i],
                  params::value_to_unit(raw[i], "rpm", kSpeedFormula, 12, drive_operands()));
        EXPECT_EQ(values[i], display_value(channel, raw[i], drive_operands()));
    }
}

TEST(DisplayValues, WithoutAUnitOrAnObjectThereAreNone) {
    ScopeData data;
    ScopeChannel& channel = use(data, 0, "int16");
    const std::vector<std::int32_t> raw{1, 2};
    EXPECT_EQ(display_values(channel, raw, drive_operands()).size(), 2u);
    channel.unitList.ListIndex = -1;
    EXPECT_TRUE(display_values(channel, raw, drive_operands()).empty());
    EXPECT_FALSE(display_value(channel, 1, drive_operands()));
    channel.unitList.ListIndex = 0;
    channel.objectList.ListIndex = 0;
    EXPECT_TRUE(display_values(channel, raw, drive_operands()).empty());
    EXPECT_FALSE(display_value(channel, 1, drive_operands()));
}

TEST(DisplayValues, SamplesThatFailAreZero) {
    ScopeData data;
    const std::vector<std::int32_t> raw{4, 0, 2};
    // A division by zero fails inside of the formula, a text without an operand reaches the caller.
    const ScopeChannel& inverse = use(data, 0, "int16", "[DEC s]8/N", "s");
    EXPECT_EQ(display_values(inverse, raw, drive_operands()), (std::vector<double>{2, 0, 4}));
    const ScopeChannel& broken = use(data, 1, "int16", "[DEC s]((N", "s");
    EXPECT_EQ(display_values(broken, raw, drive_operands()), (std::vector<double>{0, 0, 0}));
    EXPECT_EQ(display_value(broken, 4, drive_operands()), 0.0);
}

}  // namespace
}  // namespace servo::scope
