// The form `imexport`: files, messages, the two commands, and what it tells beyond them.
#include <gtest/gtest.h>

#include "configuration_bench.h"
#include "tools/configuration_notes.h"

namespace servo::tools::test {
namespace {

using base::Language;
using link::Payload;

struct FormTest : testing::Test, ConfigurationForm {};
struct LineTest : testing::Test, ConfigurationLine {};

// --- Files

TEST_F(FormTest, BothLabelsSayNoPathUntilAFileIsChosen) {
    EXPECT_EQ(form.Label2(), "No path");
    EXPECT_EQ(form.Label8(), "No path");
    EXPECT_EQ(form.name(), "imexport");
}

TEST_F(FormTest, TheDialogOfTheTemplateOpensOnTheProgramsOwnFile) {
    form.Command8_Click();
    ASSERT_EQ(questions.size(), 1U);
    EXPECT_FALSE(questions[0].save);
    EXPECT_EQ(questions[0].suffix, "cdo");
    EXPECT_EQ(questions[0].suggestion, folder / "Servo_Settings.cdo");
}

TEST_F(FormTest, ACancelledDialogChangesNothing) {
    load("60600008,1,True\n");
    answers = {std::nullopt, std::nullopt, std::nullopt};
    form.Command1_Click();
    form.Command8_Click();
    form.Command6_Click();
    EXPECT_EQ(questions.size(), 3U);
    EXPECT_EQ(form.data().source.size(), 1U);
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(FormTest, ChoosingAFileShowsItsRowsAndItsPath) {
    answers = {put("a.cdi", "60600008,1,True\r\n60810020,7,False\r\n")};
    form.Command1_Click();
    EXPECT_EQ(questions.at(0).suffix, "cdi");
    EXPECT_EQ(form.data().source.size(), 2U);
    EXPECT_EQ(form.Label2(), (folder / "a.cdi").string());
    EXPECT_EQ(form.Label8(), "No path");
}

TEST_F(FormTest, AFileThatCannotBeOpenedLeavesAnEmptyGridAndNoFileWithoutAWord) {
    load("60600008,1,True\n");
    answers = {folder / "missing.cdi", folder / "missing.cdo"};
    form.Command1_Click();
    form.Command8_Click();
    EXPECT_TRUE(form.data().source.empty());
    EXPECT_EQ(form.Label2(), "No path");
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_EQ(configuration_note(form, ConfigurationSide::kWrite).text,
              "The file could not be opened");
    form.Command2_Click();
    EXPECT_FALSE(form.running());
}

TEST_F(FormTest, ExportWritesTheCellsAsTheyStand) {
    load_list("60600008\n20100310,x\n");
    answers = {folder / "out.cdi"};
    form.Command6_Click();
    EXPECT_TRUE(questions.at(0).save);
    EXPECT_EQ(folder.get("out.cdi"), "60600008,,\r\n20100310,,\r\n");
}

TEST_F(FormTest, AnExportThatFailsIsTold) {
    answers = {folder / "no/such/folder/out.cdi"};
    form.Command6_Click();
    ASSERT_EQ(notice.boxes.size(), 1U);
    EXPECT_EQ(notice.boxes[0].second, "The file could not be written.");
}

TEST_F(FormTest, AnExportOfAnEmptyGridIsAnEmptyFile) {
    answers = {folder / "out.cdi"};
    form.Command6_Click();
    EXPECT_TRUE(std::filesystem::exists(folder / "out.cdi"));
    EXPECT_EQ(folder.get("out.cdi"), "");
    EXPECT_TRUE(load(folder.get("out.cdi"))) << "which is a file without rows";
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(FormTest, ASecondFileTakesThePlaceOfTheFirst) {
    load("60600008,1,False\n20100310,2,True\n");
    form.load_source(put("second.cdi", "60810020,3,True\n"));
    ASSERT_EQ(form.data().source.size(), 1U);
    EXPECT_EQ(row(0).Index, "60810020");
    EXPECT_FALSE(row(0).red);
    EXPECT_EQ(form.Label2(), (folder / "second.cdi").string());
    load_list("60600008\n20100310\n");
    form.load_template(put("second.cdo", "60810020\n"));
    ASSERT_EQ(form.data().driver.size(), 1U);
    EXPECT_EQ(form.Label8(), (folder / "second.cdo").string());
}

TEST_F(FormTest, AFileThatBreaksOffIsLoadedUpToThereAndTheNoteSaysWhere) {
    load("60600008,1,True\n20100310,2\n60810020,3,True\n");
    EXPECT_EQ(form.data().source.size(), 2U);
    EXPECT_EQ(form.Label2(), (folder / "values.cdi").string());
    EXPECT_TRUE(notice.boxes.empty());
    const auto note = [this](ConfigurationSide side) { return configuration_note(form, side); };
    EXPECT_EQ(
        note(ConfigurationSide::kWrite).text,
        "The file breaks off at line 2, the rest is not loaded: 2 rows; 1 of them invalid, to "
        "be passed over");
    load_list("60600008\n\n60810020\n");
    EXPECT_EQ(form.data().driver.size(), 1U);
    EXPECT_TRUE(note(ConfigurationSide::kRead).warns);
    language = Language::kChinese;
    EXPECT_EQ(note(ConfigurationSide::kRead).text, "文件在第 2 行中断，其后未载入：1 行");
    load_list("60600008\n60810020\n\n\n");
    EXPECT_EQ(note(ConfigurationSide::kRead).text, "2 行") << "blank lines at the end are no loss";
    EXPECT_FALSE(note(ConfigurationSide::kRead).warns);
}

// --- Messages

TEST_F(FormTest, WriteWithoutAFileIsRefusedInBothLanguages) {
    form.Command2_Click();
    language = Language::kChinese;
    form.Command2_Click();
    ASSERT_EQ(notice.boxes.size(), 2U);
    EXPECT_EQ(notice.boxes[0],
              std::pair(std::string(" Notice"), std::string("Did not chose any cdi file!")));
    EXPECT_EQ(notice.boxes[1], std::pair(std::string(" 提示"), std::string("cdi文件未选择!")));
    EXPECT_FALSE(form.locked());
    EXPECT_EQ(engine.state.batch_mode, 0);
}

TEST_F(FormTest, ReadWithoutATemplateIsRefusedInBothLanguages) {
    form.Command7_Click();
    language = Language::kChinese;
    form.Command7_Click();
    ASSERT_EQ(notice.boxes.size(), 2U);
    EXPECT_EQ(notice.boxes[0].second, "Did not chose any cdo file!");
    EXPECT_EQ(notice.boxes[1].second, "cdo文件未选择!");
    EXPECT_EQ(engine.state.batch_mode, 0);
}

// --- One job at a time

TEST_F(LineTest, ASecondFileAfterAJobBeginsWithAnEmptyBarAndItsPath) {
    load("60600008,1,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    unlock();
    EXPECT_EQ(form.data().ProgressBar1, 100);
    form.load_source(put("second.cdi", "60810020,3,True\n"));
    EXPECT_EQ(form.data().ProgressBar1, 0);
    EXPECT_EQ(form.Label2(), (folder / "second.cdi").string());
    EXPECT_EQ(configuration_note(form, ConfigurationSide::kWrite).text, "1 row");
    load_list("60600008\n");
    form.Command7_Click();
    ASSERT_TRUE(finish());
    unlock();
    EXPECT_EQ(form.data().ProgressBar2, 100);
    form.load_template(put("second.cdo", "60810020\n"));
    EXPECT_EQ(form.data().ProgressBar2, 0);
    EXPECT_EQ(form.Label8(), (folder / "second.cdo").string());
}

TEST_F(LineTest, NoJobBeginsInTheMiddleOfThePositionTables) {
    load("60600008,1,True\n");
    load_list("60600008\n");
    engine.state.batch_mode = 4;
    form.Command2_Click();
    form.Command7_Click();
    form.dry_run();
    EXPECT_EQ(engine.state.batch_mode, 4);
    EXPECT_FALSE(form.locked());
    ASSERT_EQ(notice.boxes.size(), 3U);
    EXPECT_EQ(notice.boxes[0].second, "The position table is being transferred: wait for its end.");
}

TEST_F(LineTest, TheButtonsStayLockedWhileAnyBatchRuns) {
    form.Command3_Click();
    engine.state.batch_mode = 3;
    form.Timer1_Timer();
    EXPECT_TRUE(form.locked());
    engine.state.batch_mode = 0;
    form.Timer1_Timer();
    EXPECT_FALSE(form.locked());
}

// --- Commands

TEST_F(LineTest, StoreIsSentThreeTimesWith200MsBehindEach) {
    const auto begin = time.now();
    form.Command3_Click();
    EXPECT_TRUE(form.locked());
    EXPECT_GE(time.now() - begin, 600ms);
    run_for(20ms);
    std::vector<servo::test::VirtualTime::Duration> at;
    for (const FakeDrive::Request& request : drive.requests)
        if (request.payload == Payload{0x23, 0x10, 0x10, 0x01, 's', 'a', 'v', 'e'})
            at.push_back(request.at - begin);
    ASSERT_EQ(at.size(), 3U);
    EXPECT_NEAR(std::chrono::duration<double>(at[1] - at[0]).count(), 0.2, 0.005);
    EXPECT_NEAR(std::chrono::duration<double>(at[2] - at[1]).count(), 0.2, 0.005);
    form.Timer1_Timer();
    EXPECT_FALSE(form.locked());
}

TEST_F(LineTest, StoreDoesNotLookAtTheReply) {
    drive.add(0x10100104, 0);
    drive.refuse.insert(0x101001);
    form.Command3_Click();
    run_for(20ms);
    EXPECT_EQ(asked(0x101001, true), 3);
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(LineTest, RebootWritesAndForgetsWhatIsKnownOfTheDrive) {
    link::Window window("InitSave");
    engine.add_window(window);
    window.must_fresh = false;
    values.operands.o64100320 = {10000, true};
    form.Command4_Click();
    run_for(20ms);
    EXPECT_TRUE(form.locked());
    ASSERT_EQ(asked(0x2FFF00, true), 1);
    EXPECT_EQ(writes().at(0), (Payload{0x2B, 0xFF, 0x2F, 0x00, 0x55, 0xAA, 0xFF, 0xFF}));
    EXPECT_TRUE(window.must_fresh);
    EXPECT_FALSE(values.operands.o64100320.seen);
    EXPECT_EQ(values.operands.o64100320.value, 10000) << "the value stays in use";
    EXPECT_EQ(engine.state.Com_Change, 0);
    EXPECT_EQ(engine.state.status_lane, 0);
    form.Timer1_Timer();
    EXPECT_FALSE(form.locked());
}

TEST_F(LineTest, WhatWasSentWithoutAnAnswerIsSaid) {
    form.Command3_Click();
    const auto note = [this] { return configuration_note(form, ConfigurationSide::kWrite); };
    EXPECT_EQ(note().text, "Sent three times. Keep the power on until the buttons are back");
    EXPECT_FALSE(note().warns);
    unlock();
    EXPECT_EQ(note().text, "The store command was sent three times; the answer is not looked at");
    form.Command4_Click();
    EXPECT_EQ(note().text, "The restart is sent");
    unlock();
    load("60600008,1,True\n");
    EXPECT_EQ(note().text, "1 row");
}

TEST_F(FormTest, WithoutALinkACommandSendsNothingAndSaysSo) {
    form.Command3_Click();
    EXPECT_TRUE(form.locked());
    const ConfigurationNote note = configuration_note(form, ConfigurationSide::kWrite);
    EXPECT_EQ(note.text, "No link: nothing was sent");
    EXPECT_TRUE(note.warns);
    unlock();
    form.Command4_Click();
    EXPECT_EQ(configuration_note(form, ConfigurationSide::kWrite).text,
              "No link: nothing was sent");
}

// --- Additions

TEST_F(FormTest, ASideIsBroughtToTheFront) {
    int told = 0;
    form.changed = [&told] { ++told; };
    EXPECT_EQ(form.side(), ConfigurationSide::kWrite);
    form.show_side(ConfigurationSide::kRead);
    EXPECT_EQ(form.side(), ConfigurationSide::kRead);
    form.show_side(ConfigurationSide::kRead);
    EXPECT_EQ(told, 1);
}

TEST_F(FormTest, AJobThatIsStartedWithoutALinkWaitsAndCanBeStopped) {
    load("60600008,1,True\n");
    form.Command2_Click();
    const ConfigurationNote note = configuration_note(form, ConfigurationSide::kWrite);
    EXPECT_EQ(note.text, "Waiting: it begins when the link is open");
    EXPECT_TRUE(note.warns);
    form.stop();
    EXPECT_FALSE(form.running());
    EXPECT_EQ(form.Label2(), "Stopped! Fail:0");
}

TEST(ConfigurationWaiting, BeginsWhenTheLinkIsOpened) {
    ConfigurationLine bench(false);
    bench.load("60600008,1,True\n");
    bench.form.Command2_Click();
    bench.open_link();
    ASSERT_TRUE(bench.finish());
    EXPECT_EQ(bench.row(0).Result, "True");
}

TEST_F(LineTest, StopEndsAtTheRowInWork) {
    add_600(false);
    load(file_of_600());
    form.Command2_Click();
    run_until([this] { return engine.state.batch_row == 100; });
    form.stop();
    EXPECT_EQ(form.Label2(), "Stopped! Fail:0");
    EXPECT_EQ(configuration_note(form, ConfigurationSide::kWrite).text,
              "Stopped at row 99 of 600: nothing behind it was written");
    const std::size_t sent = writes().size();
    run_for(1s);
    EXPECT_LE(writes().size(), sent + 1) << "a request may have been on the line";
    EXPECT_EQ(row(98).Result, "True");
    EXPECT_EQ(row(99).Result, "");
}

}  // namespace
}  // namespace servo::tools::test
