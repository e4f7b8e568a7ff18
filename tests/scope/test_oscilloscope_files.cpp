// Files while something else goes on: a run, a recording of somebody else, another recording shown.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/file.h"
#include "base/temp_folder.h"
#include "scope_world.h"

namespace servo::scope {
namespace {

using test::ScopeWorld;

const std::vector<std::pair<int, int>> kRamp{{0, 100}, {10, 90}, {20, 80}, {30, 70},
                                             {40, 60}, {50, 50}, {60, 40}, {70, 30},
                                             {80, 20}, {90, 10}, {100, 0}};

constexpr std::string_view kHead = "1,3\r\n1,2,3,4,5\r\n";
constexpr std::string_view kCurrentLine = "current,6322176\r\n";
constexpr std::string_view kOff = "NULL,0\r\n";
constexpr std::string_view kThreeRows = "7,0,0,0\r\n8,0,0,0\r\n9,0,0,0\r\n";

class OscilloscopeFiles : public testing::Test {
  protected:
    std::filesystem::path file_of(std::initializer_list<std::string_view> parts) {
        std::string text;
        for (const std::string_view part : parts)
            text += part;
        EXPECT_TRUE(base::write_file(file, text));
        return file;
    }
    std::filesystem::path good_file() {
        return file_of({kHead, kCurrentLine, kOff, kOff, kOff, kThreeRows});
    }
    // Continuous mode, with the next run started behind the first recording.
    void record_on_and_on() {
        world.record_two_channels(kRamp);
        ASSERT_TRUE(data.sampling);
        world.port.take_sent();
    }
    void say(std::uint8_t command, int sub, std::uint8_t value) {
        link::Payload payload{};
        payload = {command, 0x00, 0x23, static_cast<std::uint8_t>(sub), value};
        world.scope.acquisition().receive_frame(world.engine, payload);
    }
    void expect_the_file_is_shown() const {
        EXPECT_TRUE(data.importMode);
        EXPECT_FALSE(data.sampling);
        EXPECT_EQ(world.engine.state.scopeState, 0);
        EXPECT_EQ(data.channels[0].samples[2], 9);
        EXPECT_EQ(data.window(), (ZoomWindow{0, 2}));
    }

    TempFolder folder;
    std::filesystem::path file = folder.path() / "recording.scope";
    ScopeWorld world;
    const ScopeData& data = world.scope.data();
};

// --- Import during a run

TEST_F(OscilloscopeFiles, ImportInTheMiddleOfContinuousModeEndsTheRun) {
    const auto path = good_file();
    for (int state = 1; state <= 6; ++state) {
        ScopeWorld one;
        one.record_two_channels(kRamp);
        ASSERT_TRUE(one.scope.data().sampling);
        one.engine.state.scopeState = state;
        one.port.take_sent();
        ASSERT_EQ(one.scope.Command13_Click(path), Imported::kDone) << state;
        EXPECT_FALSE(one.scope.data().sampling) << state;
        EXPECT_EQ(one.engine.state.scopeState, 0) << state;
        EXPECT_EQ(one.scope.Command6_caption(), "Start") << state;
        const auto sent = one.port.take_sent();
        ASSERT_EQ(sent.size(), link::kFrameSize) << state;  // the recorder is stopped
        EXPECT_EQ(sent[4], 7) << state;
        EXPECT_EQ(sent[5], 0) << state;
    }
}

TEST_F(OscilloscopeFiles, WhatTheRecorderSaysBehindAnImportChangesNothing) {
    record_on_and_on();
    ASSERT_EQ(world.scope.Command13_Click(good_file()), Imported::kDone);
    for (const std::uint8_t status : {1, 2, 3, 0})
        say(0x4F, 7, status);
    say(0x41, 0x13, 44);
    world.upload({1, 2, 3, 4, 5, 6, 7, 8});
    say(0x80, 7, 0);
    expect_the_file_is_shown();
}

TEST_F(OscilloscopeFiles, ImportEndsARunWhoseLastChannelWasUnticked) {
    record_on_and_on();
    world.scope.click_enable(0);
    world.scope.click_enable(1);
    world.scope.Command6_Click();
    ASSERT_TRUE(data.sampling);  // the click does nothing
    ASSERT_EQ(world.scope.Command13_Click(good_file()), Imported::kDone);
    expect_the_file_is_shown();
}

TEST_F(OscilloscopeFiles, ImportForgetsTheRecordingOfSomebodyElse) {
    say(0x4F, 7, 3);
    ASSERT_EQ(world.engine.state.scopeState, 4);
    world.port.take_sent();
    ASSERT_EQ(world.scope.Command13_Click(good_file()), Imported::kDone);
    EXPECT_TRUE(world.port.take_sent().empty());  // it is theirs to stop
    expect_the_file_is_shown();
}

TEST_F(OscilloscopeFiles, AWrongFirstLineLeavesTheRunAlone) {
    record_on_and_on();
    EXPECT_EQ(world.scope.Command13_Click(file_of({"a,b,c\r\n"})), Imported::kRefused);
    EXPECT_EQ(world.scope.Command13_Click(folder.path() / "missing"), Imported::kUnreadable);
    EXPECT_TRUE(data.sampling);
    EXPECT_EQ(world.engine.state.scopeState, 1);
    EXPECT_TRUE(world.port.take_sent().empty());
}

TEST_F(OscilloscopeFiles, AFileThatBreaksOffEndsTheRunAndStaysInNormalMode) {
    record_on_and_on();
    EXPECT_EQ(world.scope.Command13_Click(file_of({kHead, kCurrentLine, kOff})), Imported::kBroken);
    EXPECT_FALSE(data.importMode);
    EXPECT_FALSE(data.sampling);
    EXPECT_EQ(world.engine.state.scopeState, 0);
}

// --- Export during a run

TEST_F(OscilloscopeFiles, ExportWhileSamplingWritesTheRecordingBefore) {
    record_on_and_on();
    std::string first;
    for (int state = 1; state <= 6; ++state) {
        world.engine.state.scopeState = state;
        ASSERT_EQ(world.scope.Command8_Click(file), Exported::kWritten) << state;
        const auto text = base::read_file(file);
        ASSERT_TRUE(text);
        if (first.empty()) first = *text;
        EXPECT_EQ(*text, first) << state;
        EXPECT_TRUE(data.sampling);
        EXPECT_EQ(world.engine.state.scopeState, state);
    }
    EXPECT_NE(first.find("\r\n30,70,0,0\r\n"), std::string::npos);
    EXPECT_TRUE(world.port.take_sent().empty());
}

// --- Sample counts

TEST_F(OscilloscopeFiles, SampleCountBeyond8192StartsButIsNeverExported) {
    world.scope.click_single();
    world.scope.type(Oscilloscope::Box::kText3, "9000");
    world.scope.pick_object(0, 1);
    world.scope.click_enable(0);
    world.scope.Command6_Click();
    EXPECT_TRUE(data.sampling);
    EXPECT_EQ(data.sampleCount, 9000);
    EXPECT_EQ(world.scope.Command8_Click(file), Exported::kFailed);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(OscilloscopeFiles, ImportWithASampleCountBeyond8192IsNotDrawn) {
    world.observed.plots = 0;
    const auto path =
        file_of({"1,9000\r\n1,2,3,4,5\r\n", kCurrentLine, kOff, kOff, kOff, kThreeRows});
    EXPECT_EQ(world.scope.Command13_Click(path), Imported::kDone);
    EXPECT_TRUE(data.importMode);
    EXPECT_EQ(data.channels[0].samples[2], 9);
    EXPECT_EQ(world.observed.plots, 0);
    world.scope.Label22_Click();
    EXPECT_FALSE(data.importMode);
}

// --- What is shown

TEST_F(OscilloscopeFiles, AnImportWithoutARecordedChannelTakesTheOldCurvesAway) {
    world.scope.click_single();
    world.record_two_channels(kRamp);
    world.observed.plots = 0;
    ASSERT_EQ(world.scope.Command13_Click(file_of({kHead, kOff, kOff, kOff, kOff, kThreeRows})),
              Imported::kDone);
    EXPECT_EQ(world.observed.plots, 1);
    EXPECT_FALSE(data.drawn(0));
    EXPECT_EQ(data.y_labels[0][0], "");
}

TEST_F(OscilloscopeFiles, AfterAnImportTheCurveCanBeZoomedAndTheStartIsOffUntilNormalMode) {
    ASSERT_EQ(world.scope.Command13_Click(good_file()), Imported::kDone);
    EXPECT_TRUE(world.scope.mouse().zoom_in(0.5));
    EXPECT_EQ(data.zoomDepth, 1);
    EXPECT_FALSE(world.scope.acquisition_enabled());
    world.scope.Label22_Click();
    EXPECT_TRUE(world.scope.acquisition_enabled());
}

TEST_F(OscilloscopeFiles, LeavingImportModeForgetsWhatStoodAroundTheCurves) {
    ASSERT_EQ(world.scope.Command13_Click(good_file()), Imported::kDone);
    world.scope.click_cursor(Cursor::kX1);
    ASSERT_NE(data.cursor_texts.Label25, "");
    ASSERT_NE(data.y_labels[0][0], "");
    world.scope.Label22_Click();
    EXPECT_EQ(data.cursor_texts.Label25, "");
    EXPECT_EQ(data.channels[0].valueLabel, "");
    EXPECT_EQ(data.y_labels[0][0], "");
    EXPECT_EQ(data.Label15[4], "");
}

TEST_F(OscilloscopeFiles, AnImportOfAnotherObjectBeginsAutomaticScalingAnew) {
    world.scope.pick_object(0, 4);
    world.scope.type_scale(0, "1.0E09");
    world.scope.enter_scale(0);
    ASSERT_FALSE(data.channels[0].autoScale);
    ASSERT_EQ(world.scope.Command13_Click(good_file()), Imported::kDone);
    EXPECT_TRUE(data.channels[0].autoScale);
    EXPECT_EQ(data.channels[0].scaleText, "5.0E-03");  // 0.02 A over six divisions
}

}  // namespace
}  // namespace servo::scope
