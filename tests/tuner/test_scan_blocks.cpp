// The two blocks of data, and the end of a scan.
#include "scan_bench.h"

using namespace servo;
using namespace servo::test;

namespace {

struct ScanBlocks : testing::Test, ScanBench {
    ScanBlocks() { type("10", "20", "50"); }  // three points
    // From step 14 to its end: words that tell their place.
    void read_all() {
        for (std::uint32_t i = 0; i < 3; ++i)
            give((i + 1) | (i + 11) << 16);
        for (std::uint32_t i = 0; i < 6; ++i)
            give((i + 21) << 16);
        give(0xDEADBEEF);
    }
};

constexpr std::uint32_t kMinus2AndMinus3 = 0xFFFDFFFE;

}  // namespace

TEST_F(ScanBlocks, FirstBlockIsReadTwoWordsAtATimeFromAddressZero) {
    go_to(14);
    EXPECT_EQ(give(0), 0);
    EXPECT_EQ(give(0), 2);
    EXPECT_EQ(data.scanMode, 0);
    EXPECT_EQ(data.scanIndex, 2);
    EXPECT_EQ(data.readOffset, 4);
}

TEST_F(ScanBlocks, FirstBlockEndsAtItsPoints) {
    go_to(14);
    for (int i = 0; i < 3; ++i)
        give(0);
    EXPECT_EQ(data.scanMode, 1);
    EXPECT_EQ(data.scanIndex, 0);
    EXPECT_EQ(data.readBase, 1024);
    EXPECT_EQ(data.readOffset, 0);
    EXPECT_EQ(give(0), 1024) << "the second block stands at word 1024";
    EXPECT_EQ(give(0), 1026);
}

TEST_F(ScanBlocks, SecondBlockEndsAtTwiceItsPointsAndOneMoreAnswerEndsTheScan) {
    go_to(14);
    for (int i = 0; i < 9; ++i)
        give(0);
    EXPECT_EQ(data.scanMode, 2);
    EXPECT_EQ(data.scanIndex, 0);
    EXPECT_EQ(data.readBase, 0);
    EXPECT_EQ(data.readOffset, 0);
    EXPECT_TRUE(scan.active());
    EXPECT_TRUE(watcher.ends.empty());
    EXPECT_EQ(give(0), 0) << "address 0 once more";
    EXPECT_FALSE(scan.active());
    EXPECT_EQ(state.scanStep, 0);
    EXPECT_EQ(data.scanMode, 0);
    EXPECT_EQ(data.Label36, tuner::ScanLabel::kFinished);
    EXPECT_EQ(watcher.ends, std::vector{true});
}

TEST_F(ScanBlocks, PollerGoesOnWhenTheScanHasEnded) {
    go_to(14);
    read_all();
    EXPECT_EQ(request(), (link::Payload{0x40, 0x01, 0x26, 0x00, 0, 0, 0, 0}));
}

TEST_F(ScanBlocks, UpperWordIsCommandBAndLowerWordCommandA) {
    go_to(14);
    give(kMinus2AndMinus3);
    give(0x80007FFF);
    give(0);
    for (int i = 0; i < 7; ++i)
        give(0);
    EXPECT_EQ(data.buffers.commandA[0], -2);
    EXPECT_EQ(data.buffers.commandB[0], -3);
    EXPECT_EQ(data.buffers.commandA[1], 32767);
    EXPECT_EQ(data.buffers.commandB[1], -32768);
}

TEST_F(ScanBlocks, SumsComeWithTheirHalvesSwapped) {
    go_to(14);
    for (int i = 0; i < 3; ++i)
        give(0);
    for (const std::uint32_t words :
         {0x00010000U, 0x00000001U, 0xFFFFFFFFU, 0x00008000U, 0xFFFF7FFFU, 0x56781234U})
        give(words);
    give(0);
    const std::vector<std::int32_t> told{1, 65536, -1, -2147483648, 2147483647, 0x12345678};
    EXPECT_EQ(std::vector(data.buffers.response.begin(), data.buffers.response.begin() + 6), told);
}

TEST_F(ScanBlocks, FinishedScanReplacesTheOneBeforeAndNothingIsLeftOfIt) {
    data.buffers.pointCount = 400;
    data.buffers.commandA.fill(77);
    data.buffers.response.fill(78);
    go_to(14);
    read_all();
    EXPECT_EQ(data.buffers.pointCount, 3);
    EXPECT_EQ(data.buffers.commandA[2], 3);
    EXPECT_EQ(data.buffers.commandB[2], 13);
    EXPECT_EQ(data.buffers.response[5], 26);
    EXPECT_EQ(data.buffers.commandA[3], 0);
    EXPECT_EQ(data.buffers.response[6], 0);
    EXPECT_EQ(data.settings, scan.settings());
    EXPECT_EQ(data.settings.stopFreq, 50);
}

TEST_F(ScanBlocks, ScanThatIsCutOffLeavesTheOneBeforeWhole) {
    go_to(14);
    read_all();
    const auto settings = data.settings;
    const auto buffers = data.buffers;
    type("4", "3", "60", "200");
    go_to(14);
    give(5);
    engine.link_closed();
    EXPECT_EQ(data.settings, settings);
    EXPECT_EQ(data.buffers, buffers);
    EXPECT_EQ(data.Label36, tuner::ScanLabel::kFinished);
}

TEST_F(ScanBlocks, CopyOfAnAnswerIsNeverTakenTwice) {
    go_to(14);
    for (std::uint32_t i = 0; i < 10; ++i) {
        for (const int step : {14, 15}) {
            // The request went out twice, so it is answered twice.
            request();
            receive_nothing();
            request();
            state.sendmod = 1;
            feed(accepted(step, i + 1));
            feed(accepted(step, i + 1));
            tick();
        }
    }
    EXPECT_FALSE(scan.active());
    EXPECT_EQ(data.buffers.commandA[0], 1);
    EXPECT_EQ(data.buffers.commandA[2], 3);
    EXPECT_EQ(data.buffers.response[0], 4 << 16);
    EXPECT_EQ(data.buffers.response[5], 9 << 16);
}

// In the steps that move data the tick looks on behind a frame that it can't use.
TEST_F(ScanBlocks, DataStepsLookIntoTheBufferThreeTimesInATickAtTheMost) {
    for (const int step : {14, 15}) {
        for (int foreign = 0; foreign <= 3; ++foreign) {
            ScanBench bench;
            bench.go_to(step);
            bench.request();
            bench.state.sendmod = 1;
            for (int i = 0; i < foreign; ++i)
                bench.feed(answer(0x260100, 0, 0x4B));
            bench.feed(accepted(step));
            bench.tick();
            const bool taken = bench.state.scanStep != step;
            EXPECT_EQ(taken, foreign < 3) << step << ' ' << foreign;
            EXPECT_EQ(bench.port.in.size(), taken ? 0U : link::kFrameSize);
        }
    }
}

TEST_F(ScanBlocks, LookBehindAFrameThatCantBeUsedWaitsForOneThatIsJustComing) {
    go_to(15);
    request();
    state.sendmod = 1;
    feed(accepted(14));
    // The rest of the answer arrives while the tick waits for it.
    const std::vector<std::uint8_t> late = FakeDrive::frame_of(accepted(15, 7));
    port.feed({late.begin(), late.begin() + 3});
    clock.while_sleeping = [&] { port.feed({late.begin() + 3, late.end()}); };
    tick();
    EXPECT_EQ(state.scanStep, 14);
    EXPECT_EQ(data.scanIndex, 1);
}

TEST_F(ScanBlocks, OtherStepsFollowTheDrainRuleAlone) {
    go_to(3);
    request();
    state.sendmod = 1;
    for (int i = 0; i < 8; ++i)
        feed(answer(0x260100, 0, 0x4B));
    feed(accepted(3));
    tick();
    EXPECT_EQ(state.scanStep, 4);
    EXPECT_TRUE(port.in.empty());
}

TEST_F(ScanBlocks, ProgressRisesToItsEnd) {
    ASSERT_TRUE(scan.start());
    EXPECT_EQ(scan.progress(), 0);
    warm_up();
    int before = scan.progress();
    for (int step = 3; step < 14; ++step) {
        request();
        receive(accepted(step));
        EXPECT_GT(scan.progress(), before) << step;
        before = scan.progress();
    }
    for (int i = 0; i < 9; ++i) {
        give(0);
        EXPECT_GT(scan.progress(), before) << i;
        before = scan.progress();
    }
    EXPECT_EQ(before, 1000);
    give(0);
    EXPECT_EQ(scan.progress(), 0) << "idle again";
}

TEST_F(ScanBlocks, ObserverHearsOfEveryStepAndEntry) {
    go_to(14);
    EXPECT_EQ(watcher.moved, 1 + 11) << "the start, then steps 4 to 14";
    give(0);
    EXPECT_EQ(watcher.moved, 1 + 11 + 2);
}
