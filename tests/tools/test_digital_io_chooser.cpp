// The function chooser: opening, ticks, OK, X, blinking.
#include <gtest/gtest.h>

#include "digital_io_bench.h"

namespace servo::tools::test {
namespace {

using base::Language;
using Boxes = std::vector<std::pair<std::string, std::string>>;

struct DigitalIOChooser : testing::Test, DirectIO {};

TEST_F(DigitalIOChooser, OpensOnARowWithItsValueAsTicks) {
    set_row(2, 0x8003);
    form.Command1_Click(2);
    EXPECT_EQ(form.data().open_row, 2);
    EXPECT_TRUE(form.data().checkboxdin[15]);
    EXPECT_TRUE(form.data().checkboxdin[16]);
    EXPECT_EQ(row_ticks(), 2);
}

TEST_F(DigitalIOChooser, TheSameButtonClosesItWithoutAWrite) {
    form.Command1_Click(2);
    form.Command1_Click(2);
    EXPECT_FALSE(form.data().open_row);
    EXPECT_TRUE(writes().empty());
    EXPECT_EQ(engine.state.io_refresh, 0);
}

TEST_F(DigitalIOChooser, AnotherRowTakesOverAndTheTicksAreItsOwn) {
    set_row(2, 0x0001);
    set_row(3, 0x0006);
    form.Command1_Click(2);
    form.checkboxdin_Click(9);
    form.Command1_Click(3);
    EXPECT_EQ(form.data().open_row, 3);
    EXPECT_FALSE(form.data().checkboxdin[0]);
    EXPECT_FALSE(form.data().checkboxdin[9]);
    EXPECT_TRUE(form.data().checkboxdin[1]);
    EXPECT_TRUE(form.data().checkboxdin[2]);
    EXPECT_EQ(row_ticks(), 2);
}

TEST_F(DigitalIOChooser, AnOutputHasTheOtherListAndTheOthersButtonsAreDead) {
    form.Command1_Click(2);
    form.Command1_Click(9);
    EXPECT_EQ(form.data().open_row, 9);
    form.checkboxdout_Click(0);
    form.Command2_Click();
    form.Command3_Click();
    EXPECT_EQ(form.data().open_row, 9) << "OK and X of the inputs belong to no open chooser";
    EXPECT_TRUE(writes().empty());
    form.Command5_Click();
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201010, 1)}));
    form.Command1_Click(2);
    form.Command4_Click();
    form.Command5_Click();
    EXPECT_EQ(form.data().open_row, 2);
}

TEST_F(DigitalIOChooser, OkWritesTheTicksOfOneGroupAsOneValue) {
    form.Command1_Click(0);
    form.checkboxdin_Click(0);
    form.checkboxdin_Click(14);
    form.Command2_Click();
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201003, 0x4001)}));
    EXPECT_FALSE(form.data().open_row);
    form.Command1_Click(7);
    form.checkboxdin_Click(27);
    form.checkboxdin_Click(33);
    form.Command2_Click();
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x20101D, 0x9041)}));
}

TEST_F(DigitalIOChooser, OkWithNothingTickedWritesZero) {
    set_row(0, 0x0001);
    form.Command1_Click(0);
    form.checkboxdin_Click(0);
    form.Command2_Click();
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201003, 0)}));
}

TEST_F(DigitalIOChooser, TicksInTwoGroupsAreRefusedAndTheChooserStays) {
    form.Command1_Click(0);
    form.checkboxdin_Click(0);
    form.checkboxdin_Click(15);
    form.Command2_Click();
    EXPECT_EQ(notice.boxes, (Boxes{{"Notice", "Can't configure like this!"}}));
    EXPECT_EQ(form.data().open_row, 0);
    EXPECT_TRUE(form.data().checkboxdin[15]);
    EXPECT_TRUE(writes().empty());
    EXPECT_EQ(engine.state.io_refresh, 0);
    language = Language::kChinese;
    form.Command2_Click();
    EXPECT_EQ(notice.boxes.back(), (std::pair<std::string, std::string>("提示", "错误的设置!")));
    form.checkboxdin_Click(0);
    form.Command2_Click();
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201003, 0x8001)}));
}

TEST_F(DigitalIOChooser, TicksInTwoGroupsOfTheOutputsAreRefused) {
    form.Command1_Click(8);
    form.checkboxdout_Click(0);
    form.checkboxdout_Click(17);
    form.Command5_Click();
    EXPECT_EQ(notice.boxes.size(), 1U);
    EXPECT_EQ(form.data().open_row, 8);
}

TEST_F(DigitalIOChooser, OkAsksForTheBlock) {
    engine.state.Com_Change = 1;
    engine.state.status_lane = 1;
    engine.state.sub_Pointer = 5;
    form.Command1_Click(0);
    form.Command2_Click();
    EXPECT_EQ(engine.state.Com_Change, 0);
    EXPECT_EQ(engine.state.sub_Pointer, 0);
    EXPECT_EQ(engine.state.status_lane, 0);
    EXPECT_EQ(engine.state.io_refresh, -1);
    EXPECT_TRUE(form.data().rows[0].waiting);
}

TEST_F(DigitalIOChooser, WhileTheScopesLaneRunsOkOnlyWrites) {
    engine.state.status_lane = 2;
    engine.state.sub_Pointer = 5;
    form.Command1_Click(0);
    form.Command2_Click();
    EXPECT_EQ(writes().size(), 1U);
    EXPECT_EQ(engine.state.status_lane, 2);
    EXPECT_EQ(engine.state.sub_Pointer, 5);
    EXPECT_EQ(engine.state.io_refresh, 0);
    EXPECT_FALSE(form.data().open_row);
}

TEST_F(DigitalIOChooser, XClosesWithoutAWrite) {
    form.Command1_Click(0);
    form.checkboxdin_Click(3);
    form.Command3_Click();
    EXPECT_FALSE(form.data().open_row);
    form.Command1_Click(8);
    form.checkboxdout_Click(3);
    form.Command4_Click();
    EXPECT_FALSE(form.data().open_row);
    EXPECT_TRUE(writes().empty());
    form.Command1_Click(0);
    EXPECT_FALSE(form.data().checkboxdin[3]) << "what was ticked and not written is forgotten";
}

TEST_F(DigitalIOChooser, OkWithoutAnOpenChooserDoesNothing) {
    form.Command2_Click();
    form.Command5_Click();
    EXPECT_TRUE(writes().empty());
    EXPECT_EQ(engine.state.io_refresh, 0);
}

TEST_F(DigitalIOChooser, AnAnswerThatComesMeanwhileLeavesTheTicksAlone) {
    form.Command1_Click(0);
    form.checkboxdin_Click(1);
    set_row(0, 0x0001);
    EXPECT_FALSE(form.data().checkboxdin[0]);
    EXPECT_TRUE(form.data().checkboxdin[1]);
}

TEST_F(DigitalIOChooser, ClicksOnBoxesThatDoNotExistDoNothing) {
    form.Command1_Click(0);
    form.checkboxdin_Click(-1);
    form.checkboxdin_Click(34);
    form.checkboxdout_Click(18);
    EXPECT_EQ(row_ticks(), 0);
}

TEST_F(DigitalIOChooser, WhatOkWouldWriteIsKnownBefore) {
    EXPECT_EQ(form.chosen().groups, 0);
    form.Command1_Click(0);
    form.checkboxdin_Click(15);
    EXPECT_EQ(form.chosen().value, 0x8001);
    form.checkboxdin_Click(0);
    EXPECT_EQ(form.chosen().groups, 2);
}

TEST_F(DigitalIOChooser, BlinksSixTicksBetweenGreyAndBlueAndStops) {
    EXPECT_FALSE(form.data().Timer1_enabled);
    form.Command1_Click(0);
    EXPECT_TRUE(form.data().Timer1_enabled);
    for (int tick = 1; tick <= 6; ++tick) {
        form.Timer1_Timer();
        const Colour told = tick % 2 == 1 ? Colour{224, 224, 224} : Colour{209, 216, 239};
        EXPECT_EQ(form.data().picture, told) << tick;
        EXPECT_EQ(form.data().Timer1_enabled, tick < 6) << tick;
    }
    form.Timer1_Timer();
    EXPECT_EQ(form.data().picture, (Colour{209, 216, 239})) << "it has stopped";
}

TEST_F(DigitalIOChooser, EachOpeningBlinksAnew) {
    form.Command1_Click(0);
    for (int tick = 0; tick < 3; ++tick)
        form.Timer1_Timer();
    form.Command1_Click(1);
    for (int tick = 0; tick < 5; ++tick)
        form.Timer1_Timer();
    EXPECT_TRUE(form.data().Timer1_enabled);
    form.Timer1_Timer();
    EXPECT_FALSE(form.data().Timer1_enabled);
}

}  // namespace
}  // namespace servo::tools::test
