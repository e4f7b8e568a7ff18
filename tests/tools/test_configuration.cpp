// The form `imexport`: files, messages, the two jobs step by step, the two commands.
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

TEST_F(FormTest, AnExportThatFailsSaysNothing) {
    answers = {folder / "no/such/folder/out.cdi"};
    form.Command6_Click();
    EXPECT_TRUE(notice.boxes.empty());
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

// --- Starting

TEST_F(LineTest, WriteSetsTheSelectorsAndLocksTheButtons) {
    load("60600008,1,True\n");
    form.Command2_Click();
    EXPECT_EQ(engine.state.batch_mode, 1);
    EXPECT_EQ(engine.state.batch_row, 1);
    EXPECT_EQ(engine.state.batch_warmup, 0);
    EXPECT_TRUE(form.locked());
    EXPECT_EQ(form.Label2(), "");
    EXPECT_EQ(form.data().ProgressBar1, 0);
}

TEST_F(LineTest, ReadSetsTheSelectorsAndLocksTheButtons) {
    load_list("60600008\n");
    form.Command7_Click();
    EXPECT_EQ(engine.state.batch_mode, 2);
    EXPECT_EQ(engine.state.batch_row, 1);
    EXPECT_EQ(engine.state.batch_warmup, 0);
    EXPECT_TRUE(form.locked());
    EXPECT_EQ(form.Label8(), "");
}

TEST_F(LineTest, AJobBeginsWithThreeTicksThatClearTheQueues) {
    load("60600008,1,True\n");
    run_for(100ms);
    form.Command2_Click();
    const std::size_t before = drive.requests.size();
    engine.state.sendmod = 0;
    run_ticks(3);
    EXPECT_EQ(engine.state.batch_warmup, 3);
    EXPECT_LE(drive.requests.size(), before + 1) << "what was on the line already";
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Result, "True");
}

TEST_F(LineTest, ButtonsComeBackOnTheFirstTimerTickAfterTheEnd) {
    load("60600008,1,True\n");
    form.Command2_Click();
    form.Timer1_Timer();
    EXPECT_TRUE(form.locked()) << "the job runs";
    ASSERT_TRUE(finish());
    EXPECT_TRUE(form.locked()) << "the timer has not seen it";
    form.Timer1_Timer();
    EXPECT_FALSE(form.locked());
}

TEST_F(LineTest, PressingWriteTwiceIsImpossible) {
    load("60600008,1,True\n");
    form.Command2_Click();
    EXPECT_TRUE(form.locked());
    EXPECT_FALSE(form.load_source(folder / "values.cdi")) << "nor is the file exchanged";
    ASSERT_TRUE(finish());
    EXPECT_EQ(asked(0x606000, true), 1);
}

// --- The write job

TEST_F(LineTest, AWriteSendsTheValueInTheRowsSize) {
    load("60600008,-4,True\n20100310,0x8003,True\n60810020,4294967295,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    const std::vector<Payload> told{{0x2F, 0x60, 0x60, 0x00, 0xFC, 0xFF, 0xFF, 0xFF},
                                    {0x2B, 0x10, 0x20, 0x03, 0x03, 0x80, 0xFF, 0xFF},
                                    {0x23, 0x81, 0x60, 0x00, 0xFF, 0xFF, 0xFF, 0xFF}};
    EXPECT_EQ(writes(), told);
}

TEST_F(LineTest, A0x8000In32BitsIsSentAsMinus32768) {
    load("60810020,0x8000,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(writes().at(0), (Payload{0x23, 0x81, 0x60, 0x00, 0x00, 0x80, 0xFF, 0xFF}));
    EXPECT_EQ(drive.value(0x608100), 0xFFFF8000);
}

TEST_F(LineTest, CheckValueIsTheEchoOfTheReplyUnsigned) {
    load("60600008,-4,True\n20100310,65535,True\n60810020,-1,True\n");
    EXPECT_EQ(row(0).Check_Value, "") << "empty before the write";
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Check_Value, "252");
    EXPECT_EQ(row(1).Check_Value, "65535");
    EXPECT_EQ(row(2).Check_Value, "4294967295");
    for (std::size_t at = 0; at < 3; ++at) {
        EXPECT_EQ(row(at).Result, "True");
        EXPECT_FALSE(row(at).red);
    }
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
    EXPECT_EQ(form.data().ProgressBar1, 100);
}

TEST_F(LineTest, AnInvalidRowIsSkippedAndDoesNotCount) {
    load("60600008,1,False\n20100310,2,True\n60810020,3,\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
    EXPECT_EQ(row(0).Result, "Invalid");
    EXPECT_EQ(row(2).Result, "Invalid");
    EXPECT_EQ(writes().size(), 1U);
    EXPECT_EQ(drive.value(0x606000), 0);
}

TEST_F(LineTest, AFileWhoseRowsAreAllInvalidFinishesAtOnce) {
    load("60600008,1,False\n20100310,2,False\n60810020,3,False\n");
    form.Command2_Click();
    run_ticks(5);  // the warm-up, a receive tick that may stand first, and one send tick
    EXPECT_FALSE(form.running());
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
    EXPECT_TRUE(writes().empty());
}

TEST_F(LineTest, AnEmptyFileFinishesAtOnce) {
    load("");
    form.Command2_Click();
    ASSERT_TRUE(finish(1s));
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
}

TEST_F(LineTest, AKeyWithoutASizeSendsNothingAndFails) {
    load("60600004,1,True\nnonsense,2,True\n20100310,3,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Result, "False");
    EXPECT_TRUE(row(0).red);
    EXPECT_EQ(row(1).Result, "False");
    EXPECT_EQ(row(2).Result, "True");
    EXPECT_EQ(form.Label2(), "Finished! Fail:2");
    EXPECT_EQ(writes().size(), 1U);
}

TEST_F(LineTest, AValueOfMoreThan32BitsSendsNothingAndFails) {
    load("60810020,99999999999,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Result, "False");
    EXPECT_TRUE(writes().empty());
}

TEST_F(LineTest, ARefusedWriteIsRedAndCountedAndTheJobGoesOn) {
    drive.refuse.insert(0x201003);
    load("60600008,1,True\n20100310,2,True\n60810020,3,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(1).Result, "False");
    EXPECT_TRUE(row(1).red);
    EXPECT_EQ(row(1).refusal, 0x06020000U);
    EXPECT_EQ(row(2).Result, "True");
    EXPECT_FALSE(row(2).red);
    EXPECT_EQ(form.Label2(), "Finished! Fail:1");
    EXPECT_EQ(asked(0x201003, true), 1) << "a refusal is an answer";
}

TEST_F(LineTest, ASecondWriteBeginsWithCleanRows) {
    drive.refuse.insert(0x201003);
    load("20100310,2,True\n60810020,3,False\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    unlock();
    drive.refuse.clear();
    form.Command2_Click();
    EXPECT_EQ(row(0).Result, "");
    EXPECT_FALSE(row(0).red);
    EXPECT_TRUE(row(1).red) << "an invalid line stays one";
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Result, "True");
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
}

TEST_F(LineTest, AnEchoOfTheOwnRequestIsNoAnswer) {
    drive.mute.insert(0x606000);
    load("60600008,1,True\n");
    form.Command2_Click();
    run_for(50ms);
    drive.send_payload({0x2F, 0x60, 0x60, 0x00, 1, 0, 0, 0});
    drive.send_payload({0x40, 0x60, 0x60, 0x00, 0, 0, 0, 0});
    run_for(50ms);
    EXPECT_TRUE(form.running());
    EXPECT_EQ(row(0).Result, "");
    drive.mute.clear();
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Result, "True");
}

TEST_F(LineTest, AnAnswerOfAnotherObjectIsIgnored) {
    drive.mute.insert(0x606000);
    load("60600008,1,True\n");
    form.Command2_Click();
    run_for(50ms);
    drive.send_payload({0x60, 0x10, 0x20, 0x03, 0, 0, 0, 0});
    run_for(50ms);
    EXPECT_EQ(row(0).Result, "");
    EXPECT_EQ(engine.state.batch_row, 1);
}

TEST_F(LineTest, AnyOtherAnswerToAWriteIsAFailure) {
    drive.mute.insert(0x606000);
    load("60600008,1,True\n");
    form.Command2_Click();
    run_for(50ms);
    drive.send_payload({0x4F, 0x60, 0x60, 0x00, 1, 0, 0, 0});
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Result, "False");
    EXPECT_EQ(row(0).refusal, 0U);
}

TEST_F(LineTest, ALostAnswerIsAskedForAgain) {
    int calls = 0;
    drive.answers = [&](const Payload& payload) {
        return link::reply_key(payload) != 0x606000 || ++calls > 3;
    };
    load("60600008,1,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Result, "True");
    EXPECT_EQ(asked(0x606000, true), 4);
}

// Two ticks are 6 ms; request and answer take 5.2 ms and the drive's own time.
TEST_F(LineTest, NothingIsWrittenTwiceWhileItsAnswerIsOnTheLine) {
    for (const auto turnaround : {0us, 300us, 700us, 1000us, 2000us, 3000us}) {
        drive.turnaround = turnaround;
        drive.requests.clear();
        load("60600008,1,True\n20100310,2,True\n60810020,3,True\n");
        form.Command2_Click();
        ASSERT_TRUE(finish());
        unlock();
        EXPECT_EQ(writes().size(), 3U) << turnaround.count();
    }
}

TEST_F(LineTest, APartOfAFrameThatDoesNotGrowHoldsNothingUp) {
    drive.mute.insert(0x606000);
    load("60600008,1,True\n");
    form.Command2_Click();
    run_for(50ms);
    const std::vector<std::uint8_t> part{127, 0x60, 0x60};
    drive.send(part);
    run_for(20ms);
    const int before = asked(0x606000, true);
    run_for(60ms);
    EXPECT_GE(asked(0x606000, true), before + 8);
}

// A file may name one object twice, as a lock that is opened and closed again.
TEST_F(LineTest, TheSecondAnswerOfOneRowIsNotTakenForTheNextRowOfTheSameObject) {
    drive.turnaround = 5ms;  // so each request is made twice
    load("20100310,1,True\n20100310,2,True\n60600008,3,True\n");
    form.Command2_Click();
    ASSERT_TRUE(run_until([this] { return row(0).Result == "True"; }));
    drive.refuse.insert(0x201003);
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(1).Result, "False") << "it was refused, and the late word on row 0 is not its";
    EXPECT_EQ(row(2).Result, "True");
}

TEST_F(LineTest, TheBarIsRowTimesHundredByRowsOfTheGrid) {
    load("60600008,1,True\n20100310,2,True\n60810020,3,True\n");
    std::vector<int> seen;
    form.row_changed = [&](std::size_t) { seen.push_back(form.data().ProgressBar1); };
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(seen, (std::vector<int>{50, 75, 100}));
}

// --- The read job

TEST_F(LineTest, AReadShowsTheDrivesValuesUnsigned) {
    drive.objects[0x606000].value = 0xFC;
    drive.objects[0x201003].value = 0x8003;
    drive.objects[0x608100].value = 0xFFFFFFFF;
    load_list("60600008\n20100310\n60810020\n");
    form.Command7_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(driver(0).Driver_Value, "252");
    EXPECT_EQ(driver(1).Driver_Value, "32771");
    EXPECT_EQ(driver(2).Driver_Value, "4294967295");
    EXPECT_EQ(driver(2).Result, "True");
    EXPECT_EQ(form.Label8(), "Finished! Fail:0");
    EXPECT_EQ(form.Label2(), "No path") << "the label of the other tab";
    EXPECT_EQ(form.data().ProgressBar2, 100);
    EXPECT_EQ(form.data().ProgressBar1, 0);
    EXPECT_TRUE(writes().empty());
}

TEST_F(LineTest, ARefusedReadIsFalseAndCounted) {
    load_list("77770008\n60600008\n60600003\n");
    form.Command7_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(driver(0).Result, "False");
    EXPECT_EQ(driver(0).Driver_Value, "");
    EXPECT_EQ(driver(0).refusal, 0x06020000U);
    EXPECT_EQ(driver(1).Result, "True");
    EXPECT_EQ(driver(2).Result, "False") << "no size";
    EXPECT_EQ(form.Label8(), "Finished! Fail:2");
}

TEST_F(LineTest, TheValueIsDecodedByTheRowsSize) {
    drive.mute.insert(0x201003);
    load_list("20100310\n");
    form.Command7_Click();
    run_for(50ms);
    drive.send_payload({0x43, 0x10, 0x20, 0x03, 0x01, 0x02, 0x03, 0x04});
    ASSERT_TRUE(finish());
    EXPECT_EQ(driver(0).Driver_Value, "513");
}

TEST_F(LineTest, AWriteAcknowledgementIsNoAnswerToARead) {
    drive.mute.insert(0x606000);
    load_list("60600008\n");
    form.Command7_Click();
    run_for(50ms);
    drive.send_payload({0x60, 0x60, 0x60, 0x00, 0, 0, 0, 0});
    ASSERT_TRUE(finish());
    EXPECT_EQ(driver(0).Result, "False");
}

TEST_F(LineTest, WhatWasReadAndExportedIsWrittenBackAsItWas) {
    drive.objects[0x606000].value = 0xFC;
    drive.objects[0x201003].value = 0x8003;
    drive.objects[0x608100].value = 0x80000001;
    load_list("60600008\n20100310\n77770008\n60810020\n");
    form.Command7_Click();
    ASSERT_TRUE(finish());
    unlock();
    answers = {folder / "out.cdi", folder / "out.cdi"};
    form.Command6_Click();
    for (const link::Identity object : {0x606000, 0x201003, 0x608100})
        drive.objects[object].value = 0;
    form.Command1_Click();
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(form.Label2(), "Finished! Fail:0") << "the unread row is skipped";
    EXPECT_EQ(drive.value(0x606000), 0xFC);
    EXPECT_EQ(drive.value(0x201003), 0x8003);
    EXPECT_EQ(drive.value(0x608100), 0x80000001);
    EXPECT_EQ(asked(0x777700, true), 0);
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
    form.Timer1_Timer();
    EXPECT_FALSE(form.locked());
}

// --- Additions

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
