// The two jobs of the form `imexport`, step by step.
#include <gtest/gtest.h>

#include "configuration_bench.h"

namespace servo::tools::test {
namespace {

using link::Payload;

struct JobTest : testing::Test, ConfigurationLine {};

// --- Starting

TEST_F(JobTest, WriteSetsTheSelectorsAndLocksTheButtons) {
    load("60600008,1,True\n");
    form.Command2_Click();
    EXPECT_EQ(engine.state.batch_mode, 1);
    EXPECT_EQ(engine.state.batch_row, 1);
    EXPECT_EQ(engine.state.batch_warmup, 0);
    EXPECT_TRUE(form.locked());
    EXPECT_EQ(form.Label2(), "");
    EXPECT_EQ(form.data().ProgressBar1, 0);
}

TEST_F(JobTest, ReadSetsTheSelectorsAndLocksTheButtons) {
    load_list("60600008\n");
    form.Command7_Click();
    EXPECT_EQ(engine.state.batch_mode, 2);
    EXPECT_EQ(engine.state.batch_row, 1);
    EXPECT_EQ(engine.state.batch_warmup, 0);
    EXPECT_TRUE(form.locked());
    EXPECT_EQ(form.Label8(), "");
}

TEST_F(JobTest, AJobBeginsWithThreeTicksThatClearTheQueues) {
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

TEST_F(JobTest, ButtonsComeBackOnTheFirstTimerTickAfterTheEnd) {
    load("60600008,1,True\n");
    form.Command2_Click();
    form.Timer1_Timer();
    EXPECT_TRUE(form.locked()) << "the job runs";
    ASSERT_TRUE(finish());
    EXPECT_TRUE(form.locked()) << "the timer has not seen it";
    form.Timer1_Timer();
    EXPECT_FALSE(form.locked());
}

TEST_F(JobTest, PressingWriteTwiceIsImpossible) {
    load("60600008,1,True\n");
    form.Command2_Click();
    EXPECT_TRUE(form.locked());
    EXPECT_FALSE(form.load_source(folder / "values.cdi")) << "nor is the file exchanged";
    ASSERT_TRUE(finish());
    EXPECT_EQ(asked(0x606000, true), 1);
}

// --- The write job

TEST_F(JobTest, AWriteSendsTheValueInTheRowsSize) {
    load("60600008,-4,True\n20100310,0x8003,True\n60810020,4294967295,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    const std::vector<Payload> told{{0x2F, 0x60, 0x60, 0x00, 0xFC, 0xFF, 0xFF, 0xFF},
                                    {0x2B, 0x10, 0x20, 0x03, 0x03, 0x80, 0xFF, 0xFF},
                                    {0x23, 0x81, 0x60, 0x00, 0xFF, 0xFF, 0xFF, 0xFF}};
    EXPECT_EQ(writes(), told);
}

TEST_F(JobTest, A0x8000In32BitsIsSentAsMinus32768) {
    load("60810020,0x8000,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(writes().at(0), (Payload{0x23, 0x81, 0x60, 0x00, 0x00, 0x80, 0xFF, 0xFF}));
    EXPECT_EQ(drive.value(0x608100), 0xFFFF8000);
}

TEST_F(JobTest, CheckValueIsTheEchoOfTheReplyUnsigned) {
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

TEST_F(JobTest, AnInvalidRowIsSkippedAndDoesNotCount) {
    load("60600008,1,False\n20100310,2,True\n60810020,3,\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
    EXPECT_EQ(row(0).Result, "Invalid");
    EXPECT_EQ(row(2).Result, "Invalid");
    EXPECT_EQ(writes().size(), 1U);
    EXPECT_EQ(drive.value(0x606000), 0);
}

TEST_F(JobTest, AFileWhoseRowsAreAllInvalidFinishesAtOnce) {
    load("60600008,1,False\n20100310,2,False\n60810020,3,False\n");
    form.Command2_Click();
    run_ticks(5);  // the warm-up, a receive tick that may stand first, and one send tick
    EXPECT_FALSE(form.running());
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
    EXPECT_TRUE(writes().empty());
}

TEST_F(JobTest, AnEmptyFileFinishesAtOnce) {
    load("");
    form.Command2_Click();
    ASSERT_TRUE(finish(1s));
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
}

TEST_F(JobTest, AKeyWithoutASizeSendsNothingAndFails) {
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

TEST_F(JobTest, AValueOfMoreThan32BitsSendsNothingAndFails) {
    load("60810020,99999999999,True\n");
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Result, "False");
    EXPECT_TRUE(writes().empty());
}

TEST_F(JobTest, ARefusedWriteIsRedAndCountedAndTheJobGoesOn) {
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

TEST_F(JobTest, ASecondWriteBeginsWithCleanRows) {
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

TEST_F(JobTest, AnEchoOfTheOwnRequestIsNoAnswer) {
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

TEST_F(JobTest, AnAnswerOfAnotherObjectIsIgnored) {
    drive.mute.insert(0x606000);
    load("60600008,1,True\n");
    form.Command2_Click();
    run_for(50ms);
    drive.send_payload({0x60, 0x10, 0x20, 0x03, 0, 0, 0, 0});
    run_for(50ms);
    EXPECT_EQ(row(0).Result, "");
    EXPECT_EQ(engine.state.batch_row, 1);
}

TEST_F(JobTest, AnyOtherAnswerToAWriteIsAFailure) {
    drive.mute.insert(0x606000);
    load("60600008,1,True\n");
    form.Command2_Click();
    run_for(50ms);
    drive.send_payload({0x4F, 0x60, 0x60, 0x00, 1, 0, 0, 0});
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(0).Result, "False");
    EXPECT_EQ(row(0).refusal, 0U);
}

TEST_F(JobTest, ALostAnswerIsAskedForAgain) {
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
TEST_F(JobTest, NothingIsWrittenTwiceWhileItsAnswerIsOnTheLine) {
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

TEST_F(JobTest, APartOfAFrameThatDoesNotGrowHoldsNothingUp) {
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
TEST_F(JobTest, TheSecondAnswerOfOneRowIsNotTakenForTheNextRowOfTheSameObject) {
    drive.turnaround = 5ms;  // so each request is made twice
    load("20100310,1,True\n20100310,2,True\n60600008,3,True\n");
    form.Command2_Click();
    ASSERT_TRUE(run_until([this] { return row(0).Result == "True"; }));
    drive.refuse.insert(0x201003);
    ASSERT_TRUE(finish());
    EXPECT_EQ(row(1).Result, "False") << "it was refused, and the late word on row 0 is not its";
    EXPECT_EQ(row(2).Result, "True");
}

TEST_F(JobTest, TheBarIsRowTimesHundredByRowsOfTheGrid) {
    load("60600008,1,True\n20100310,2,True\n60810020,3,True\n");
    std::vector<int> seen;
    form.row_changed = [&](std::size_t) { seen.push_back(form.data().ProgressBar1); };
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(seen, (std::vector<int>{50, 75, 100}));
}

// --- The read job

TEST_F(JobTest, AReadShowsTheDrivesValuesUnsigned) {
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

TEST_F(JobTest, ARefusedReadIsFalseAndCounted) {
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

TEST_F(JobTest, TheValueIsDecodedByTheRowsSize) {
    drive.mute.insert(0x201003);
    load_list("20100310\n");
    form.Command7_Click();
    run_for(50ms);
    drive.send_payload({0x43, 0x10, 0x20, 0x03, 0x01, 0x02, 0x03, 0x04});
    ASSERT_TRUE(finish());
    EXPECT_EQ(driver(0).Driver_Value, "513");
}

TEST_F(JobTest, AWriteAcknowledgementIsNoAnswerToARead) {
    drive.mute.insert(0x606000);
    load_list("60600008\n");
    form.Command7_Click();
    run_for(50ms);
    drive.send_payload({0x60, 0x60, 0x60, 0x00, 0, 0, 0, 0});
    ASSERT_TRUE(finish());
    EXPECT_EQ(driver(0).Result, "False");
}

TEST_F(JobTest, WhatWasReadAndExportedIsWrittenBackAsItWas) {
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

}  // namespace
}  // namespace servo::tools::test
