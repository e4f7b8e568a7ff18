// A transfer and its surroundings: the link opened and closed under it, other jobs, windows'
// writes.
#include "support/fake_drive.h"
#include "support/fakes.h"
#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;

namespace {

struct TransferAndLink : testing::Test, TransferBench {
    bool until_step(int step) {
        return run_until(
            [this, step] { return state.download_step == step && state.sendmod == 1; });
    }
};

}  // namespace

TEST_F(TransferAndLink, ClosingTheLinkInAnyStepEndsTheTransferAndSaysWhatIsLeft) {
    for (int step = 1; step <= 9; ++step) {
        TransferBench bench;
        bench.load(4120 * 2);
        bench.drive.in_bootloader = step > 4;
        bench.drive.deaf_to_call = step == 4;
        bench.start();
        ASSERT_TRUE(bench.run_until([&] { return bench.state.download_step == step; })) << step;
        if (step > 2) bench.run_ticks(1);
        bench.communication.Command1_Click();
        EXPECT_FALSE(bench.port.is_open());
        EXPECT_EQ(bench.state.download_active, 0);
        EXPECT_EQ(bench.state.download_step, 0);
        EXPECT_EQ(bench.ended(), TransferEnd::kLinkClosed) << step;
        EXPECT_EQ(bench.download.result()->step, step);
        EXPECT_TRUE(bench.notice.boxes.empty()) << "he has done it himself";
        EXPECT_FALSE(bench.download.advice_text().empty());
        EXPECT_FALSE(bench.data().Command1_enabled) << "nothing is restored";
        EXPECT_FALSE(bench.data().Command4_enabled);
    }
}

TEST_F(TransferAndLink, OpeningTheLinkEndsATransferUnderWay) {
    load(4120);
    start();
    ASSERT_TRUE(until_step(3));
    engine.link_opened();
    EXPECT_EQ(state.download_active, 0);
    EXPECT_EQ(state.download_step, 0);
    EXPECT_EQ(ended(), TransferEnd::kLinkClosed);
}

TEST_F(TransferAndLink, TransferStartedBeforeTheLinkWaitsForIt) {
    load(4120);
    drive.in_bootloader = true;
    download.Command4_Click();
    run_for(10s);
    EXPECT_EQ(state.download_active, 1);
    EXPECT_EQ(state.download_step, 0);
    open_link();
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(4120));
}

TEST_F(TransferAndLink, CutInAnyStepIsRecoveredTheWayTheFormAdvises) {
    for (int step = 3; step <= 9; ++step) {
        TempFolder settings;
        TransferBench bench;
        bench.load(4120 * 2);
        bench.drive.in_bootloader = step > 4;
        bench.start();
        ASSERT_TRUE(bench.run_until(
            [&] { return bench.state.download_step == step && bench.state.sendmod == 1; }));
        bench.line.set_cut(true);
        ASSERT_TRUE(bench.finish());
        // Step 9 hears nothing of a dead line, and silence is what it waits for.
        EXPECT_EQ(bench.ended(), step == 9 ? TransferEnd::kDone : TransferEnd::kFailed) << step;
        if (bench.port.is_open()) bench.communication.Command1_Click();

        // The program is started anew, the drive powered up: it sits in its bootloader.
        TransferBench again;
        again.load(4120 * 2);
        again.drive.in_bootloader = true;
        again.download.Command4_Click();
        again.open_link();
        ASSERT_TRUE(again.finish());
        EXPECT_EQ(again.ended(), TransferEnd::kDone);
        EXPECT_EQ(again.drive.stored, again.payload(4120 * 2));
    }
}

TEST_F(TransferAndLink, DialogueIsNoMissOfTheLink) {
    load(4120);
    drive.silent = true;
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(box().second, "Shake hands with no response!");
    EXPECT_TRUE(port.is_open());
    EXPECT_EQ(engine.counters.misses, 0U) << "600 ticks of silence";
}

TEST_F(TransferAndLink, NoOtherJobHasAWordDuringATransfer) {
    std::vector<std::string> log;
    FakeJob configuration("configuration", &log);
    FakeJob flow("flow", &log);
    FakeJob scan("scan", &log);
    engine.add_job(link::JobPlace::kConfiguration, configuration);
    engine.add_job(link::JobPlace::kPositionFlow, flow);
    engine.add_job(link::JobPlace::kScan, scan);
    for (FakeJob* job : {&configuration, &flow, &scan})
        job->key = 0x60630004;
    load(4120 * 2);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(until_step(8));
    for (FakeJob* job : {&configuration, &flow, &scan})
        job->running = true;
    log.clear();
    ASSERT_TRUE(finish());
    EXPECT_EQ(log, std::vector<std::string>{});
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(4120 * 2));
    run_ticks(3);
    EXPECT_EQ(log, (std::vector<std::string>{"configuration warm", "configuration warm",
                                             "configuration warm"}))
        << "they begin when it has ended";
}

TEST_F(TransferAndLink, RecordingUnderWayHasNoWordEither) {
    FakeScope scope;
    scope.visible = scope.sampling = true;
    scope.key = 0x23000704;
    engine.set_scope(&scope);
    load(4120 * 2);
    drive.in_bootloader = true;
    start();
    state.status_lane = 2;
    state.scopeState = 2;
    ASSERT_TRUE(until_step(8));
    ASSERT_TRUE(finish());
    EXPECT_EQ(scope.steps, 0);
    EXPECT_TRUE(scope.frames.empty());
    EXPECT_EQ(drive.stored, payload(4120 * 2));
    EXPECT_EQ(state.scopeState, 2) << "its own business";
    EXPECT_EQ(state.status_lane, 0) << "first the new drive's operands";
}

TEST_F(TransferAndLink, DialogueIsOnTheSerialLineWhateverChannelIsSelected) {
    load(4120);
    drive.in_bootloader = true;
    open_link();
    state.channel = 1;
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(4120));
}

TEST_F(TransferAndLink, PollerIsSilentDuringATransfer) {
    FakePage page("Basic");
    page.add_rows(5);
    page.set_visible(true);
    engine.add_poll_window(page);
    load(4120);
    drive.in_bootloader = true;
    start();
    const auto frames = engine.counters.sends;
    ASSERT_TRUE(finish());
    EXPECT_EQ(engine.counters.sends, frames);
}

TEST_F(TransferAndLink, WriteFromAWindowDoesNotLandInsideABlock) {
    load(4120 * 2);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(until_step(8));
    run_for(100ms);
    engine.sendata2(0x60830004, 1000, 0);
    engine.sendata2(0x60830004, 0, 1);
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(4120 * 2));
    EXPECT_EQ(sent().find('\x60'), std::string::npos) << "neither frame left";
}

TEST_F(TransferAndLink, WritesLeaveAgainAfterIt) {
    load(4120);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(finish());
    port.written.clear();
    engine.sendata2(0x60830004, 1000, 0);
    EXPECT_EQ(port.written.size(), 10U);
}

TEST_F(TransferAndLink, PolledAnswersUnderWayAreFlushedAndNotTakenForReplies) {
    load(4120);
    open_link();
    drive.in_bootloader = true;
    run_for(10ms);
    drive.say(std::string(8, 'p'));
    download.Command4_Click();
    ASSERT_TRUE(run_until([this] { return state.download_step == 3 && state.sendmod == 1; }));
    EXPECT_EQ(data().step3_string, "");
    ASSERT_TRUE(finish());
}

TEST_F(TransferAndLink, DriveThatAnswersAfterTheTransferIsKnownToRun) {
    load(4120);
    drive.in_bootloader = true;
    EXPECT_FALSE(download.drive_answered());
    start();
    ASSERT_TRUE(finish());
    run_for(100ms);
    EXPECT_FALSE(download.drive_answered());
    const auto frame = FakeDrive::frame_of({0x4B, 0x01, 0x26, 0x00, 0, 0, 0, 0});
    line.to_pc.send(frame);
    run_for(100ms);
    EXPECT_TRUE(download.drive_answered());
}
