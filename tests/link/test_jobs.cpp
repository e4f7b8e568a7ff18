#include <gtest/gtest.h>

#include "direct_bench.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;

namespace {

using Log = std::vector<std::string>;

struct Jobs : testing::Test, DirectBench {
    Jobs() {
        engine.add_job(JobPlace::kFirmware, firmware);
        engine.add_job(JobPlace::kConfiguration, configuration);
        engine.add_job(JobPlace::kPositionFlow, flow);
        engine.add_job(JobPlace::kScan, scan);
    }
    void start_all(int step = 0) {
        for (FakeJob* job : {&firmware, &configuration, &flow, &scan}) {
            job->running = true;
            job->step = step;
        }
    }
    void receive() {
        state.sendmod = 1;
        tick();
    }
    Log log;
    FakeJob firmware{"firmware", &log};
    FakeJob configuration{"configuration", &log};
    FakeJob flow{"flow", &log};
    FakeJob scan{"scan", &log};
};

}  // namespace

TEST_F(Jobs, WithoutAnActiveJobThePollerRuns) {
    EXPECT_EQ(turn(), 0x260100);
    EXPECT_TRUE(log.empty());
}

TEST_F(Jobs, WarmUpTakesThreeTicksAndClearsBothQueues) {
    configuration.running = true;
    configuration.key = 0x60630004;
    for (int i = 1; i <= 3; ++i) {
        port.feed({1, 2, 3});
        EXPECT_FALSE(tick());
        EXPECT_EQ(port.in_clears, i);
        EXPECT_EQ(port.out_clears, i);
        EXPECT_TRUE(port.in.empty());
    }
    EXPECT_EQ(configuration.step, 3);
    EXPECT_TRUE(tick());
    EXPECT_EQ(log, (Log{"configuration warm", "configuration warm", "configuration warm",
                        "configuration send"}));
}

TEST_F(Jobs, BatchStartedWhileThePollerWaitsLosesThatReply) {
    tick();  // the poller has asked for 260100
    feed(answer(0x260100, 5, 0x4B));
    configuration.running = true;
    for (int i = 0; i < 3; ++i)
        tick();
    EXPECT_TRUE(port.in.empty());
    EXPECT_EQ(values.fault_word1, 0);
    tick();
    EXPECT_EQ(state.miss_count, 1) << "the receive tick that was due finds nothing";
    tick();
    EXPECT_EQ(log.back(), "configuration send");
}

TEST_F(Jobs, WarmUpAsksFirmwareThenBatchesThenScan) {
    start_all();
    for (int i = 0; i < 12; ++i)
        tick();
    Log expected;
    for (const char* name : {"firmware warm", "configuration warm", "flow warm", "scan warm"})
        expected.insert(expected.end(), 3, name);
    EXPECT_EQ(log, expected);
}

TEST_F(Jobs, SendAsksBatchesThenScanThenFirmware) {
    start_all(3);
    Log order;
    for (FakeJob* job : {&configuration, &flow, &scan, &firmware}) {
        log.clear();
        state.sendmod = 0;
        tick();
        order.insert(order.end(), log.begin(), log.end());
        job->running = false;
    }
    EXPECT_EQ(order, (Log{"configuration send", "flow send", "scan send", "firmware send"}));
}

TEST_F(Jobs, FrameGoesToFirmwareThenScanThenBatches) {
    start_all(3);
    Log order;
    for (FakeJob* job : {&firmware, &scan, &configuration, &flow}) {
        log.clear();
        feed(answer(0x260100, 5, 0x4B));
        receive();
        order.insert(order.end(), log.begin(), log.end());
        job->running = false;
    }
    EXPECT_EQ(order, (Log{"firmware frame", "scan frame", "configuration frame", "flow frame"}));
    EXPECT_EQ(values.fault_text1, "0000") << "the monitor has seen none of them";
}

TEST_F(Jobs, JobThatReadsTextTakesTheReceiveTickBeforeAnyFrame) {
    firmware.running = true;
    firmware.step = 3;
    firmware.text = true;
    state.download_active = 1;
    state.download_step = 3;
    state.InputLen = 60;
    port.feed({'b', 'o', 'o', 't'});
    receive();
    EXPECT_EQ(firmware.received, "boot");
    EXPECT_EQ(state.sendmod, 1) << "going back to sending is the job's";
    EXPECT_EQ(state.miss_count, 0) << "its silence is no miss";
    EXPECT_TRUE(clock.sleeps.empty());
}

TEST_F(Jobs, FrameThatAJobIgnoresIsFollowedByTheNextInTheSameTick) {
    scan.running = true;
    scan.step = 3;
    scan.result = Received::kIgnored;
    feed(answer(0x304001, 1));
    feed(answer(0x304001, 2));
    receive();
    EXPECT_EQ(scan.frames.size(), 2U);
    EXPECT_EQ(state.miss_count, 1) << "until nothing is there";
}

TEST_F(Jobs, FrameThatAJobTookIsFollowedByTheDrainRule) {
    scan.running = true;
    scan.step = 3;
    feed(answer(0x304001, 1));
    feed(answer(0x304001, 2));
    receive();
    EXPECT_EQ(scan.frames.size(), 2U);
    EXPECT_EQ(state.miss_count, 0);
}

TEST_F(Jobs, JobCanEndTheTick) {
    scan.running = true;
    scan.step = 3;
    scan.result = Received::kEndTick;
    feed(answer(0x304001, 1));
    feed(answer(0x304001, 2));
    receive();
    EXPECT_EQ(scan.frames.size(), 1U);
    EXPECT_EQ(port.in.size(), 10U);
}

TEST_F(Jobs, JobSeesFramesBeforeTheStaleReadRule) {
    configuration.running = true;
    configuration.step = 3;
    engine.sendata2(0x60630004, 1, 0);
    feed(answer(0x606300, 1));
    receive();
    EXPECT_EQ(configuration.frames.size(), 1U);
    EXPECT_EQ(state.last_write_key, 0x60630004);
}

TEST_F(Jobs, MissesCountWhileABatchRuns) {
    configuration.running = true;
    configuration.step = 3;
    receive();
    EXPECT_EQ(state.miss_count, 1);
}

TEST_F(Jobs, PollerGoesOnWhereItStopped) {
    for (int i = 0; i < 3; ++i)
        answered_turn();
    configuration.running = true;
    for (int i = 0; i < 10; ++i)
        tick();
    configuration.running = false;
    EXPECT_EQ(turn(), 0x641003) << "the fourth entry of lane 0";
}

TEST_F(Jobs, JobsLearnOfOpeningAndClosing) {
    engine.link_opened();
    engine.link_closed();
    EXPECT_EQ(log, (Log{"firmware opened", "configuration opened", "flow opened", "scan opened",
                        "firmware closed", "configuration closed", "flow closed", "scan closed"}));
}

TEST_F(Jobs, ClosingTheLinkEndsTransferAndScan) {
    state.download_active = 1;
    state.download_step = 8;
    state.scanRequested = kTrue;
    state.scanStep = 5;
    state.batch_mode = 2;
    engine.link_closed();
    EXPECT_EQ(state.download_active, 0);
    EXPECT_EQ(state.download_step, 0);
    EXPECT_EQ(state.scanRequested, 0);
    EXPECT_EQ(state.scanStep, 0);
    EXPECT_EQ(state.batch_mode, 2) << "a batch waits for the link";
}

TEST_F(Jobs, OpeningTheLinkEndsATransferUnderWay) {
    state.download_active = 1;
    state.download_step = 3;
    engine.link_opened();
    EXPECT_EQ(state.download_active, 0);
    EXPECT_EQ(state.download_step, 0);
}

TEST_F(Jobs, TransferStartedBeforeTheLinkWaitsForIt) {
    state.download_active = 1;
    state.download_step = 0;
    engine.link_opened();
    EXPECT_EQ(state.download_active, 1);
}

TEST_F(Jobs, JobMayChangeTheIntervalWhileTheTimerRuns) {
    engine.timer().set_interval(50);
    EXPECT_EQ(engine.member("Interval"), "50");
}
