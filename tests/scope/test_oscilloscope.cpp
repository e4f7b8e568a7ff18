#include <gtest/gtest.h>

#include "base/file.h"
#include "base/temp_folder.h"
#include "scope_world.h"

namespace servo::scope {
namespace {

using test::ScopeWorld;

const std::vector<std::pair<int, int>> kRamp{{0, 100}, {10, 90}, {20, 80}, {30, 70},
                                             {40, 60}, {50, 50}, {60, 40}, {70, 30},
                                             {80, 20}, {90, 10}, {100, 0}};

TEST(Oscilloscope, TheScreenBeginsWithItsToldTexts) {
    const ScopeWorld world;
    const ScopeData& data = world.scope.data();
    EXPECT_EQ(data.Text1, "1");
    EXPECT_EQ(data.Label18, "62.5us");
    EXPECT_EQ(data.Text2, "250");
    EXPECT_EQ(data.Text3, "500");
    EXPECT_EQ(data.Text4, "500");
    EXPECT_FALSE(data.Check5);
    EXPECT_EQ(world.scope.Command6_caption(), "Start");
    EXPECT_EQ(world.scope.Label20(), "Scope Mode:Normal");
    EXPECT_EQ(data.Label44, "Zoom Depth:0");
    for (const ScopeChannel& channel : data.channels) {
        EXPECT_EQ(channel.scaleText, "1.0E00");
        EXPECT_EQ(channel.offsetText, "0");
    }
}

TEST(Oscilloscope, SevenObjectsAreOfferedInEveryListInTheirOrder) {
    const ScopeWorld world;
    const std::vector<std::string> told{
        "",         "current",      "q current",       "speed narrow",
        "position", "speed demand", "following error", "position demand"};
    for (const ScopeChannel& channel : world.scope.data().channels) {
        EXPECT_EQ(channel.objectList.items, told);
        EXPECT_EQ(channel.objectList.ListIndex, 0);
    }
}

TEST(Oscilloscope, TextsFollowTheLanguage) {
    ScopeWorld world;
    world.language = base::Language::kChinese;
    world.scope.change_scope_language();
    EXPECT_EQ(world.scope.Command6_caption(), "开始");
    EXPECT_EQ(world.scope.Label20(), "示波器模式:正常");
    EXPECT_EQ(world.scope.data().Label44, "缩放等级:0");
    EXPECT_EQ(world.scope.data().channels[0].objectList.items[1], "中current");
}

TEST(Oscilloscope, TheStartButtonSaysThatItSamples) {
    ScopeWorld world;
    world.scope.pick_object(0, 1);
    world.scope.click_enable(0);
    world.scope.Command6_Click();
    EXPECT_EQ(world.scope.Command6_caption(), "Sampling");
    world.language = base::Language::kChinese;
    EXPECT_EQ(world.scope.Command6_caption(), "正在采集");
    world.scope.Command6_Click();
    EXPECT_EQ(world.scope.Command6_caption(), "开始");
}

TEST(Oscilloscope, ARecordingIsDecodedScaledAndDrawn) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    const ScopeData& data = world.scope.data();
    ASSERT_TRUE(data.dataValid);
    EXPECT_EQ(data.channels[0].samples[10], 100);
    EXPECT_EQ(data.channels[1].samples[0], 100);
    EXPECT_EQ(data.window(), (ZoomWindow{0, 10}));
    // 1.00 A over six divisions: 0.1666 A goes to 2E-01.
    EXPECT_EQ(data.channels[0].scaleText, "2.0E-01");
    EXPECT_EQ(data.channels[0].offsetText, "-0.5");
    EXPECT_GT(world.observed.plots, 0);
    EXPECT_FALSE(data.sampling);
}

TEST(Oscilloscope, ContinuousModeStartsTheNextRunByItself) {
    ScopeWorld world;
    world.record_two_channels(kRamp);
    EXPECT_TRUE(world.scope.data().sampling);
    EXPECT_EQ(world.engine.state.scopeState, 1);
    EXPECT_EQ(world.scope.Command6_caption(), "Sampling");
}

TEST(Oscilloscope, AnotherUnitTurnsAutomaticScalingOn) {
    ScopeWorld world;
    world.scope.pick_object(0, 3);
    world.scope.click_auto_scale(0);
    ASSERT_FALSE(world.scope.data().channels[0].autoScale);
    world.scope.pick_unit(0, 1);
    EXPECT_TRUE(world.scope.data().channels[0].autoScale);
    EXPECT_EQ(world.scope.data().channels[0].unitList.text(), "DEC");
    world.scope.pick_unit(0, 99);  // no such item
    EXPECT_EQ(world.scope.data().channels[0].unitList.ListIndex, 1);
}

TEST(Oscilloscope, ATypedScaleStaysUntilAutomaticScalingIsTickedAgain) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    world.scope.type_scale(0, "5");
    world.scope.enter_scale(0);
    EXPECT_FALSE(world.scope.data().channels[0].autoScale);
    EXPECT_DOUBLE_EQ(world.scope.data().channels[0].scale, 5.0);
    world.scope.type_offset(0, "1.5");
    world.scope.enter_offset(0);
    EXPECT_EQ(world.scope.data().channels[0].offsetText, "1.5");
    world.scope.click_auto_scale(0);
    EXPECT_EQ(world.scope.data().channels[0].scaleText, "2.0E-01");
}

TEST(Oscilloscope, AHiddenCurveStaysRecorded) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    world.scope.click_hide(1);
    EXPECT_FALSE(world.scope.data().drawn(1));
    EXPECT_TRUE(world.scope.data().channels[1].enable);
    for (const std::string& label : world.scope.data().y_labels[1])
        EXPECT_EQ(label, "");
}

TEST(Oscilloscope, ScaleStepsWorkOnThePickedCurveAndEndAutomaticScaling) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    world.scope.pick_curve(1);
    world.scope.Command9_Click();
    EXPECT_EQ(world.scope.data().channels[0].scaleText, "2.0E-01");
    EXPECT_EQ(world.scope.data().channels[1].scaleText, "3.0E-01");
    EXPECT_FALSE(world.scope.data().channels[1].autoScale);
    EXPECT_DOUBLE_EQ(world.scope.data().channels[1].scale, 0.3);
    world.scope.click_small_steps();
    world.scope.Command10_Click();
    EXPECT_EQ(world.scope.data().channels[1].scaleText, "2.9E-01");
    world.scope.pick_curve(-1);
    world.scope.Command9_Click();  // on no curve
    EXPECT_EQ(world.scope.data().channels[1].scaleText, "2.9E-01");
}

TEST(Oscilloscope, OffsetStepsAreHalfADivision) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    ASSERT_EQ(world.scope.data().channels[0].offsetText, "-0.5");
    world.scope.Command12_Click();
    EXPECT_EQ(world.scope.data().channels[0].offsetText, "-0.4");
    EXPECT_FALSE(world.scope.data().channels[0].autoScale);  // it would undo the step
    world.scope.Command11_Click();
    world.scope.Command11_Click();
    EXPECT_EQ(world.scope.data().channels[0].offsetText, "-0.6");
}

TEST(Oscilloscope, ACursorThatIsSwitchedOnReadsAtOnce) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    world.scope.click_cursor(Cursor::kX1);
    // Abscissa 3000 of 10000 over ten intervals: sample 3.
    EXPECT_EQ(world.scope.data().cursor_texts.Label25, "187.5");
    EXPECT_EQ(world.scope.data().cursor_texts.Label35, "0.3");
    EXPECT_EQ(world.scope.data().cursor_texts.Label29, "");
    world.scope.click_cursor(Cursor::kX2);
    EXPECT_EQ(world.scope.data().cursor_texts.Label29, "250");
    EXPECT_EQ(world.scope.data().cursor_texts.Label33, "0.400");
    EXPECT_EQ(world.scope.data().channels[1].valueLabel, "0.7");
}

TEST(Oscilloscope, ACursorMovesBySamplesOnTheKeyboardAndStaysInTheWindow) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    world.scope.step_cursor(Cursor::kX1, 1);  // switched off: stays
    world.scope.click_cursor(Cursor::kX1);
    EXPECT_EQ(world.scope.data().cursor_texts.Label25, "187.5");
    world.scope.step_cursor(Cursor::kX1, 1);
    EXPECT_EQ(world.scope.data().cursor_texts.Label25, "250");
    world.scope.step_cursor(Cursor::kX1, -100);
    EXPECT_EQ(world.scope.data().cursor_texts.Label25, "0");
    world.scope.step_cursor(Cursor::kX1, 100);
    EXPECT_EQ(world.scope.data().cursor_texts.Label25, "625");
}

TEST(Oscilloscope, NothingIsMeasuredWithoutARecording) {
    ScopeWorld world;
    world.scope.click_cursor(Cursor::kX1);
    world.scope.step_cursor(Cursor::kX1, 1);
    EXPECT_EQ(world.scope.data().cursor_texts.Label25, "");
    world.scope.keep_reference("nothing");
    EXPECT_TRUE(world.scope.references().kept.empty());
}

TEST(Oscilloscope, AnImportEntersImportModeAndTheWordLeadsBack) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    const TempFolder folder;
    const std::filesystem::path file = folder.path() / "step.scope";
    ASSERT_EQ(world.scope.Command8_Click(file), Exported::kWritten);

    ScopeWorld other;
    ASSERT_EQ(other.scope.Command13_Click(file), Imported::kDone);
    EXPECT_TRUE(other.scope.data().importMode);
    EXPECT_FALSE(other.scope.acquisition_enabled());
    EXPECT_TRUE(other.scope.acquisition().settings_known());
    EXPECT_EQ(other.scope.Label20(), "Scope Mode:Import.Switch to Normal mode press ");
    EXPECT_TRUE(other.scope.data().dataValid);
    EXPECT_EQ(other.scope.data().window(), (ZoomWindow{0, 10}));
    EXPECT_EQ(other.scope.data().channels[0].samples[10], 100);
    EXPECT_EQ(other.scope.data().channels[0].scaleText, "2.0E-01");
    EXPECT_TRUE(other.scope.mouse().zoom_in(0.5));  // the curve can still be zoomed

    other.values.operands.o64100320.seen = true;
    other.engine.state.status_lane = 2;
    other.engine.state.rotation = 2;
    other.scope.Label22_Click();
    EXPECT_FALSE(other.scope.data().importMode);
    EXPECT_FALSE(other.scope.data().dataValid);
    EXPECT_TRUE(other.scope.acquisition_enabled());
    EXPECT_EQ(other.scope.data().Label44, "Zoom Depth:0");
    EXPECT_EQ(other.scope.Label20(), "Scope Mode:Normal");
    EXPECT_EQ(other.engine.state.status_lane, 0);
    EXPECT_EQ(other.engine.state.rotation, 0);
    EXPECT_FALSE(other.values.operands.o64100320.seen);
}

TEST(Oscilloscope, AnImportStopsARunThatNobodyCouldStopAfterIt) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    const TempFolder folder;
    const std::filesystem::path file = folder.path() / "step.scope";
    ASSERT_EQ(world.scope.Command8_Click(file), Exported::kWritten);
    world.scope.Command6_Click();
    ASSERT_TRUE(world.scope.data().sampling);
    ASSERT_EQ(world.scope.Command13_Click(file), Imported::kDone);
    EXPECT_FALSE(world.scope.data().sampling);
    EXPECT_EQ(world.engine.state.scopeState, 0);
}

TEST(Oscilloscope, AFileThatIsNoneLeavesTheModeAlone) {
    ScopeWorld world;
    const TempFolder folder;
    EXPECT_EQ(world.scope.Command13_Click(folder.path() / "missing.scope"), Imported::kUnreadable);
    EXPECT_FALSE(world.scope.data().importMode);
    EXPECT_FALSE(world.scope.data().dataValid);
}

TEST(Oscilloscope, EightThousandRowsOfTwoWideChannelsCanBeLookedAt) {
    std::string text = "1,8192\r\n1,2,3,4,5\r\nposition,6316800\r\nNULL,0\r\n";
    text += "position,6316800\r\nNULL,0\r\n";
    for (int i = 0; i < 8192; ++i)
        text += std::to_string(i) + ",0," + std::to_string(-i) + ",0\r\n";
    const TempFolder folder;
    const std::filesystem::path file = folder.path() / "long.scope";
    ASSERT_TRUE(base::write_file(file, text));
    ScopeWorld world;
    ASSERT_EQ(world.scope.Command13_Click(file), Imported::kDone);
    EXPECT_EQ(world.scope.data().window(), (ZoomWindow{0, 8191}));
    EXPECT_EQ(world.scope.data().channels[0].rawMax, 8191);
    EXPECT_EQ(world.scope.data().channels[2].rawMin, -8191);
}

TEST(Oscilloscope, ThePollerHearsThatTheWindowIsShown) {
    ScopeWorld world;
    EXPECT_FALSE(world.scope.acquisition().window_visible());
    world.scope.set_visible(true);
    EXPECT_TRUE(world.scope.acquisition().window_visible());
    link::Window& window = world.scope;
    window.set_visible(false);
    EXPECT_FALSE(world.scope.acquisition().window_visible());
}

TEST(Oscilloscope, FourReferencesAreKeptTheOldestGoes) {
    ScopeWorld world;
    world.scope.click_single();
    world.record_two_channels(kRamp);
    for (const char* name : {"a", "b", "c", "d", "e"})
        world.scope.keep_reference(name);
    ASSERT_EQ(world.scope.references().kept.size(), 4U);
    EXPECT_EQ(world.scope.references().kept.front().name, "b");
    EXPECT_EQ(world.scope.references().kept.back().name, "e");
    EXPECT_EQ(world.scope.references().kept.back().recording.curves.size(), 2U);
}

}  // namespace
}  // namespace servo::scope
