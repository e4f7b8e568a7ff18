// Whole scans over a line of 38400 baud in virtual time.
#include <algorithm>

#include "scan_drive.h"
#include "support/virtual_bench.h"
#include "tuner/scan.h"

using namespace servo;
using namespace servo::test;

namespace {

struct Watcher final : tuner::ScanObserver {
    void scan_moved() override {}
    void scan_ended(bool finished) override { ends.push_back(finished); }
    std::vector<bool> ends;
};

struct RunBench : VirtualBench {
    RunBench() {
        drive.fill();
        engine.add_job(link::JobPlace::kScan, scan);
        data.Text3 = "100";  // 33 points
        open_link();
    }
    bool start() {
        started = time.now();
        return scan.start();
    }
    bool finish(std::chrono::microseconds limit = 120s) {
        return run_until([this] { return !scan.active(); }, limit);
    }
    bool state_is(int step) const { return engine.state.scanStep == step; }
    double seconds() const { return std::chrono::duration<double>(time.now() - started).count(); }
    // Whether the data are the drive's, entry by entry.
    void expect_whole() const {
        const auto points = static_cast<std::size_t>(data.buffers.pointCount);
        for (std::size_t i = 0; i < points; ++i) {
            ASSERT_EQ(data.buffers.commandA[i], drive.blocks.commandA[i]) << i;
            ASSERT_EQ(data.buffers.commandB[i], drive.blocks.commandB[i]) << i;
            ASSERT_EQ(data.buffers.response[2 * i], drive.blocks.response[2 * i]) << i;
            ASSERT_EQ(data.buffers.response[2 * i + 1], drive.blocks.response[2 * i + 1]) << i;
        }
    }

    tuner::TunerData data;
    base::Language language = base::Language::kEnglish;
    tuner::TunerServices services{
        .engine = engine, .notice = notice, .language = language, .link_open = [this] {
            return port.is_open();
        }};
    Watcher watcher;
    tuner::FrequencyScan scan{data, services, watcher};
    ScanDrive drive{time, line};
    VirtualTime::Duration started{0};
};

struct ScanRuns : testing::Test, RunBench {};

}  // namespace

TEST_F(ScanRuns, ScanBringsWhatTheDriveHolds) {
    ASSERT_TRUE(start());
    ASSERT_TRUE(finish());
    EXPECT_EQ(watcher.ends, std::vector{true});
    EXPECT_EQ(data.buffers.pointCount, 33);
    expect_whole();
    EXPECT_EQ(drive.value(0x304002), 4);
    EXPECT_EQ(drive.value(0x304003), 100);
    EXPECT_EQ(drive.value(0x304004), 3);
    EXPECT_EQ(drive.value(0x60F910), 60);
    EXPECT_EQ(data.settings.scaleShift, 6);
    EXPECT_EQ(data.settings.encoderCounts, 131072);
    EXPECT_EQ(data.settings.feedbackConstant, 240);
    EXPECT_EQ(data.settings.velocityGain1, 300.0F);
    EXPECT_EQ(data.settings.velocityGain2, 40.0F);
    EXPECT_EQ(values.operands.o64100320.value, 131072);
}

TEST_F(ScanRuns, AddressesAreThoseOfTheTwoBlocksThenZero) {
    ASSERT_TRUE(start());
    ASSERT_TRUE(finish());
    std::vector<std::int64_t> told;
    for (int i = 0; i < 33; ++i)
        told.push_back(2 * i);
    for (int i = 0; i < 66; ++i)
        told.push_back(1024 + 2 * i);
    told.push_back(0);
    // The same request may leave twice while its answer is under way.
    auto asked = drive.addresses;
    asked.erase(std::unique(asked.begin(), asked.end()), asked.end());
    EXPECT_EQ(asked, told);
}

TEST_F(ScanRuns, WidestPlanOf333PointsTakesTwoCyclesAnExchangeAtTheMost) {
    data.Text3 = "1000";
    ASSERT_TRUE(start());
    ASSERT_TRUE(finish());
    EXPECT_EQ(data.buffers.pointCount, 333);
    expect_whole();
    // At 38400 baud an answer just misses the receive tick of its request, so an exchange takes two
    // cycles of 6 ms: eleven of the set-up, two of each entry and of the last answer.
    RecordProperty("seconds", std::to_string(seconds()));
    EXPECT_LT(seconds(), (11 + 2 * (999 + 1)) * 0.012 + 0.1);
}

TEST_F(ScanRuns, ScanWaitsForTheDriveHoweverLongItMeasures) {
    drive.polls = 20000;
    ASSERT_TRUE(start());
    run_for(60s);
    EXPECT_TRUE(scan.measuring());
    EXPECT_EQ(scan.progress(), 20);
    EXPECT_TRUE(port.is_open());
    drive.polls_left = 0;
    ASSERT_TRUE(finish());
    expect_whole();
}

TEST_F(ScanRuns, FormerAnswersOfThePollerAreClearedBeforehand) {
    run_for(100ms);
    drive.turnaround = 8ms;  // an answer is always under way
    run_for(100ms);
    ASSERT_TRUE(start());
    ASSERT_TRUE(finish());
    expect_whole();
}

TEST_F(ScanRuns, EchoingLineDoesNoHarm) {
    line.to_drive.deliver = [this, hear = line.to_drive.deliver](std::uint8_t byte) {
        line.to_pc.send({&byte, 1});
        hear(byte);
    };
    ASSERT_TRUE(start());
    ASSERT_TRUE(finish());
    expect_whole();
}

TEST_F(ScanRuns, LostAndDoubledAnswersDoNoHarm) {
    drive.mangle = [n = 0](std::vector<std::uint8_t> frame) mutable {
        ++n;
        if (n % 7 == 0) return std::vector<std::uint8_t>();
        if (n % 5 == 0) {
            const std::vector<std::uint8_t> copy = frame;
            frame.insert(frame.end(), copy.begin(), copy.end());
        }
        return frame;
    };
    ASSERT_TRUE(start());
    ASSERT_TRUE(finish());
    expect_whole();
}

TEST_F(ScanRuns, CorruptedAnswersDoNoHarm) {
    drive.mangle = [n = 0](std::vector<std::uint8_t> frame) mutable {
        ++n;
        if (n % 4 == 0) frame[static_cast<std::size_t>(1 + n / 4 % 9)] ^= 0x41;
        return frame;
    };
    ASSERT_TRUE(start());
    ASSERT_TRUE(finish());
    expect_whole();
}

TEST_F(ScanRuns, LateDriveIsWaitedForInEveryStep) {
    for (const auto turnaround : {0ms, 3ms, 7ms, 20ms, 50ms}) {
        RunBench bench;
        bench.data.Text3 = "10";  // 3 points
        bench.drive.turnaround = turnaround;
        ASSERT_TRUE(bench.start());
        ASSERT_TRUE(bench.finish()) << turnaround.count();
        bench.expect_whole();
    }
}

TEST_F(ScanRuns, SilenceInAnyStepEndsByTheLinksOwnTimeOut) {
    for (int step = 3; step <= 15; ++step) {
        RunBench bench;
        bench.drive.polls = 0;
        ASSERT_TRUE(bench.start());
        ASSERT_TRUE(bench.run_until([&] { return bench.state_is(step); })) << step;
        bench.drive.silent = true;
        ASSERT_TRUE(bench.run_until([&] { return bench.watcher.ends.size() == 1; }, 10s)) << step;
        EXPECT_FALSE(bench.scan.active());
        EXPECT_FALSE(bench.port.is_open());
        EXPECT_EQ(bench.engine.pictures.button4(), "Commerrorpic");
        EXPECT_EQ(bench.watcher.ends, std::vector{false});
        EXPECT_EQ(bench.data.Label36, tuner::ScanLabel::kFinished);
    }
}

TEST_F(ScanRuns, AbortsInAnyStepKeepItAskingUntilTheDriveGivesIn) {
    const std::vector<link::Identity> objects{0x304002, 0x304003, 0x304004, 0x60F910,
                                              0x304001, 0x30400A, 0x641003, 0x651003,
                                              0x60F901, 0x60F902, 0x304005};
    for (const link::Identity object : objects) {
        RunBench bench;
        bench.drive.refuse.insert(object);
        ASSERT_TRUE(bench.start());
        bench.run_for(10s);
        EXPECT_TRUE(bench.scan.active()) << "an abort is an answer: the link holds";
        EXPECT_TRUE(bench.port.is_open());
        const std::uint8_t step = bench.engine.state.scanStep;
        bench.run_for(1s);
        EXPECT_EQ(bench.engine.state.scanStep, step);
        bench.drive.refuse.clear();
        ASSERT_TRUE(bench.finish()) << object;
        bench.expect_whole();
    }
}

TEST_F(ScanRuns, LinkClosedByTheUserInAnyStep) {
    for (int step = 0; step <= 15; ++step) {
        RunBench bench;
        ASSERT_TRUE(bench.start());
        ASSERT_TRUE(bench.run_until([&] { return bench.state_is(step); })) << step;
        bench.communication.Command1_Click();
        EXPECT_FALSE(bench.port.is_open());
        EXPECT_FALSE(bench.scan.active());
        EXPECT_EQ(bench.engine.state.scanStep, 0);
        EXPECT_EQ(bench.watcher.ends, std::vector{false});
        // The next one begins from its start.
        bench.open_link();
        ASSERT_TRUE(bench.start());
        ASSERT_TRUE(bench.finish());
        bench.expect_whole();
    }
}

TEST_F(ScanRuns, CancelStopsADriveThatMeasures) {
    drive.polls = 1000000;
    ASSERT_TRUE(start());
    ASSERT_TRUE(run_until([this] { return scan.measuring(); }));
    run_for(500ms);
    scan.cancel();
    ASSERT_TRUE(run_until([this] { return drive.commands.back() == 0; }, 100ms));
    drive.polls_left = 0;
    ASSERT_TRUE(finish(1s));
    EXPECT_EQ(watcher.ends, std::vector{false});
    EXPECT_EQ(drive.commands.front(), 14);
}
