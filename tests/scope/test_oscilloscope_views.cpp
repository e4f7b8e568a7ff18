// Cases of looking at recordings: languages, hidden curves, odd periods, units, formulas.
#include <gtest/gtest.h>

#include "scope_world.h"

namespace servo::scope {
namespace {

using test::ScopeWorld;

const std::vector<std::pair<int, int>> kRamp{{0, 100}, {10, 90}, {20, 80}, {30, 70},
                                             {40, 60}, {50, 50}, {60, 40}, {70, 30},
                                             {80, 20}, {90, 10}, {100, 0}};

struct OscilloscopeViews : testing::Test {
    void record_once() {
        if (!data.Check5) world.scope.click_single();
        world.record_two_channels(kRamp);
    }
    void speak(base::Language language) {
        world.language = language;
        world.scope.change_scope_language();
    }
    void setting(int sub, std::uint32_t value) {
        const link::Payload payload{0x43,
                                    0x00,
                                    0x23,
                                    static_cast<std::uint8_t>(sub),
                                    static_cast<std::uint8_t>(value),
                                    static_cast<std::uint8_t>(value >> 8),
                                    static_cast<std::uint8_t>(value >> 16),
                                    static_cast<std::uint8_t>(value >> 24)};
        world.scope.acquisition().receive_frame(world.engine, payload);
    }

    ScopeWorld world;
    const ScopeData& data = world.scope.data();
};

// --- Language

TEST_F(OscilloscopeViews, LanguageSwitchWhileSamplingThenALostLinkEndsTheRun) {
    const struct {
        base::Language first, second;
        const char *sampling, *start;
    } ways[] = {{base::Language::kEnglish, base::Language::kChinese, "正在采集", "开始"},
                {base::Language::kChinese, base::Language::kEnglish, "Sampling", "Start"}};
    for (const auto& way : ways) {
        for (int state = 1; state <= 6; ++state) {
            ScopeWorld one;
            one.language = way.first;
            one.record_two_channels(kRamp);
            one.engine.state.scopeState = state;
            one.language = way.second;
            one.scope.change_scope_language();
            EXPECT_EQ(one.scope.Command6_caption(), way.sampling);
            EXPECT_EQ(one.engine.state.scopeState, state);
            one.scope.acquisition().link_timed_out(one.engine);
            EXPECT_EQ(one.scope.Command6_caption(), way.start);
            EXPECT_FALSE(one.scope.data().sampling);
            EXPECT_EQ(one.engine.state.scopeState, 0);
            EXPECT_EQ(one.scope.data().rawIndex, 0);
        }
    }
}

TEST_F(OscilloscopeViews, LanguageSwitchWhileSamplingLeavesTheRunAndItsTexts) {
    world.record_two_channels(kRamp);
    speak(base::Language::kChinese);
    EXPECT_TRUE(data.sampling);
    EXPECT_EQ(data.Label44, "缩放等级:0;时间栅格:62.5uS");
    EXPECT_EQ(data.channels[0].objectList.ListIndex, 1);
    world.scope.Command6_Click();
    EXPECT_FALSE(data.sampling);
}

// --- Hidden curves

TEST_F(OscilloscopeViews, ARecordingWithAllCurvesHiddenLeavesTheTimesAlone) {
    for (int channel = 0; channel < kCurves; ++channel)
        world.scope.click_hide(channel);
    record_once();
    EXPECT_TRUE(data.dataValid);
    EXPECT_EQ(data.Label44, "Zoom Depth:0;Time Grid:62.5uS");
    EXPECT_EQ(data.Label15[3], "500");
    EXPECT_EQ(data.Label15[4], "(us)");
    for (int channel = 0; channel < kCurves; ++channel) {
        EXPECT_FALSE(data.drawn(channel));
        for (const std::string& label : data.y_labels.at(static_cast<std::size_t>(channel)))
            EXPECT_EQ(label, "");
    }
    world.scope.click_hide(0);
    EXPECT_EQ(data.channels[0].samples[10], 100);
    EXPECT_EQ(data.channels[0].scaleText, "2.0E-01");
    EXPECT_EQ(data.y_labels[0][5], "0.5");
}

// --- Periods

TEST_F(OscilloscopeViews, PeriodOfZeroOrNoneGivesAnAxisOfZeros) {
    for (const char* period : {"0", ""}) {
        world.scope.type(Oscilloscope::Box::kText1, period);
        record_once();
        world.scope.click_cursor(Cursor::kX1);
        EXPECT_EQ(data.Label44, "Zoom Depth:0;Time Grid:0uS") << period;
        EXPECT_EQ(data.Label15, (std::array<std::string, 5>{"0", "0", "0", "0", "(s)"})) << period;
        EXPECT_EQ(data.cursor_texts.Label25, "0") << period;
        EXPECT_EQ(data.cursor_texts.Label35, "0.3") << period;
        world.scope.click_cursor(Cursor::kX1);
    }
}

// --- Units and formulas

TEST_F(OscilloscopeViews, ListOfOneUnit) {
    ScopeWorld one({test::record("6078", "00", "current", "Integer16", "[DEC A]N/100")});
    one.scope.pick_object(0, 1);
    const ScopeChannel& channel = one.scope.data().channels[0];
    EXPECT_EQ(channel.unitList.items, std::vector<std::string>{"A"});
    EXPECT_EQ(channel.unitList.ListIndex, 0);
    one.scope.pick_unit(0, 1);  // no such item
    EXPECT_EQ(channel.unitList.ListIndex, 0);
    one.scope.pick_unit(0, 0);
    EXPECT_EQ(channel.unitList.text(), "A");
    // No line leads back: the level is 0, as on a page.
    one.scope.pick_object(kTrigger, 1);
    one.port.take_sent();
    one.scope.type(Oscilloscope::Box::kText4, "5");
    one.scope.enter(Oscilloscope::Box::kText4);
    const auto sent = one.port.take_sent();
    ASSERT_EQ(sent.size(), link::kFrameSize);
    EXPECT_EQ(sent[4], 13);
    EXPECT_EQ(sent[5], 0);
}

// Curves compute with the cached number; only a text says that it is not known.
TEST_F(OscilloscopeViews, FormulaThatNeedsAnUnseen304007ComputesWithTheCachedNumber) {
    const std::string formula = "[DEC m]N*[30400710]\n[m DEC]N/[30400710]";
    ScopeWorld one({test::record("6078", "00", "way", "Integer16", formula),
                    test::record("60F6", "0C", "other", "Integer16", formula)});
    one.scope.click_single();
    one.record_two_channels(kRamp);
    const ScopeData& shown = one.scope.data();
    EXPECT_EQ(shown.channels[0].scaleText, "2.0E-01");  // all 0: a flat curve
    EXPECT_EQ(shown.channels[0].offsetText, "0.0");
    one.values.operands.o64100320 = {};
    one.values.operands.o30400710 = {3, false};
    one.scope.click_auto_scale(0);
    one.scope.click_auto_scale(0);
    EXPECT_EQ(shown.channels[0].offsetText, "-150.0");
    one.scope.pick_object(kTrigger, 1);
    const link::Payload level{0x43, 0x00, 0x23, 13, 50, 0, 0, 0};
    one.scope.acquisition().receive_frame(one.engine, level);
    EXPECT_EQ(shown.Text4, "?????");
    one.values.operands.o30400710.seen = true;
    one.scope.acquisition().receive_frame(one.engine, level);
    EXPECT_EQ(shown.Text4, "150.00");
}

TEST_F(OscilloscopeViews, PickOfAnotherObjectBeginsAutomaticScalingAnew) {
    record_once();
    world.scope.type_scale(0, "7.0E+05");
    world.scope.enter_scale(0);
    world.scope.pick_object(0, 1);  // the same: its units stay
    EXPECT_FALSE(data.channels[0].autoScale);
    world.scope.pick_object(0, 3);
    EXPECT_TRUE(data.channels[0].autoScale);
    EXPECT_EQ(data.channels[0].scaleText, "2.0E+00");  // 10 rpm over six divisions
}

TEST_F(OscilloscopeViews, AScaleTypedBeforeAnObjectIsKnownStays) {
    world.scope.type_scale(0, "7.0E+05");
    world.scope.enter_scale(0);
    world.scope.pick_object(0, 1);
    EXPECT_FALSE(data.channels[0].autoScale);
    EXPECT_EQ(data.channels[0].scaleText, "7.0E+05");
}

// --- What is computed when

TEST_F(OscilloscopeViews, AClickOnACursorComputesTheCurvesAnew) {
    record_once();
    world.scope.click_auto_scale(0);
    world.scope.type_scale(0, "3");  // not entered
    EXPECT_DOUBLE_EQ(data.channels[0].scale, 0.2);
    world.observed.plots = 0;
    world.scope.click_cursor(Cursor::kY1);
    EXPECT_DOUBLE_EQ(data.channels[0].scale, 3.0);
    EXPECT_EQ(world.observed.plots, 1);
    EXPECT_EQ(data.cursor_texts.Label35, "6.50");  // two divisions above 0.5
}

TEST_F(OscilloscopeViews, ATickOfTheRefreshIsComputedOnTheNextDraw) {
    record_once();
    world.observed.plots = 0;
    int sub = 0;
    for (const std::uint32_t slot : {0x60780010U, 0U, 0x60780010U, 0U, 0U, 0U})
        setting(++sub, slot);
    EXPECT_FALSE(data.channels[1].enable);
    EXPECT_TRUE(data.channels[2].enable);
    EXPECT_EQ(world.observed.plots, 0);
    EXPECT_NE(data.y_labels[1][5], "");
    EXPECT_EQ(data.y_labels[2][5], "");
    speak(base::Language::kChinese);  // draws
    EXPECT_EQ(world.observed.plots, 1);
    EXPECT_EQ(data.y_labels[1][5], "");
    EXPECT_EQ(data.y_labels[2][5], "0");
    EXPECT_FALSE(data.curvesChanged);
}

}  // namespace
}  // namespace servo::scope
