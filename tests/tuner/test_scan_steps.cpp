// The table of steps: request, accepted answer, effect; and everything that is not accepted.
#include "scan_bench.h"

using namespace servo;
using namespace servo::test;
using link::Payload;

namespace {

struct ScanSteps : testing::Test, ScanBench {
    ScanSteps() { type("10", "20", "300", "99"); }
};

struct Row {
    int step;
    Payload request;
    Payload accepted;
    int next;
};

const std::vector<Row>& table() {
    static const std::vector<Row> rows{
        {3, {0x2B, 0x40, 0x30, 0x02, 10, 0, 0, 0}, ScanBench::accepted(3), 4},
        {4, {0x2B, 0x40, 0x30, 0x03, 0x2C, 0x01, 0, 0}, ScanBench::accepted(4), 5},
        {5, {0x2B, 0x40, 0x30, 0x04, 20, 0, 0, 0}, ScanBench::accepted(5), 6},
        {6, {0x2B, 0xF9, 0x60, 0x10, 99, 0, 0, 0}, ScanBench::accepted(6), 7},
        {7, {0x2F, 0x40, 0x30, 0x01, 14, 0, 0, 0}, ScanBench::accepted(7), 8},
        {8, {0x40, 0x40, 0x30, 0x01, 0, 0, 0, 0}, ScanBench::accepted(8, 0), 9},
        {9, {0x40, 0x40, 0x30, 0x0A, 0, 0, 0, 0}, ScanBench::accepted(9, 5), 10},
        {10, {0x40, 0x10, 0x64, 0x03, 0, 0, 0, 0}, ScanBench::accepted(10, 10000), 11},
        {11, {0x40, 0x10, 0x65, 0x03, 0, 0, 0, 0}, ScanBench::accepted(11, 150), 12},
        {12, {0x40, 0xF9, 0x60, 0x01, 0, 0, 0, 0}, ScanBench::accepted(12, 200), 13},
        {13, {0x40, 0xF9, 0x60, 0x02, 0, 0, 0, 0}, ScanBench::accepted(13, 20), 14},
        {14, {0x23, 0x40, 0x30, 0x05, 0, 0, 0, 0}, ScanBench::accepted(14), 15},
        {15, {0x40, 0x40, 0x30, 0x05, 0, 0, 0, 0}, ScanBench::accepted(15, 1), 14},
    };
    return rows;
}

}  // namespace

TEST_F(ScanSteps, ThreeTicksClearBothBuffersAndSendNothing) {
    ASSERT_TRUE(scan.start());
    for (int step = 1; step <= 3; ++step) {
        port.feed(DirectBench::frame(0x260100, 0, 0x4B));
        const int in = port.in_clears;
        const int out = port.out_clears;
        EXPECT_EQ(tick(), std::nullopt);
        EXPECT_EQ(state.scanStep, step);
        EXPECT_EQ(port.in_clears, in + 1);
        EXPECT_EQ(port.out_clears, out + 1);
        EXPECT_TRUE(port.in.empty());
    }
    EXPECT_NE(tick(), std::nullopt);
}

TEST_F(ScanSteps, EachStepSendsItsRequestAndMovesOnWithItsAnswer) {
    ASSERT_TRUE(scan.start());
    warm_up();
    for (const Row& row : table()) {
        ASSERT_EQ(state.scanStep, row.step);
        EXPECT_EQ(request(), row.request) << row.step;
        receive(row.accepted);
        EXPECT_EQ(state.scanStep, row.next) << row.step;
    }
}

TEST_F(ScanSteps, WritesAreRememberedLikeAnyWrite) {
    go_to(14);
    request();
    EXPECT_EQ(static_cast<std::uint32_t>(state.last_write_key), 0x30400504U);
}

TEST_F(ScanSteps, SilenceSendsTheSameRequestAtEverySendTick) {
    for (const Row& row : table()) {
        ScanBench bench;
        bench.type("10", "20", "300", "99");
        bench.go_to(row.step);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(bench.request(), row.request) << row.step;
            bench.receive_nothing();
            EXPECT_EQ(bench.state.scanStep, row.step);
        }
        EXPECT_EQ(bench.state.miss_count, 3);
    }
}

TEST_F(ScanSteps, AbortIsNoAnswerAndTheRequestRepeats) {
    for (const Row& row : table()) {
        ScanBench bench;
        bench.type("10", "20", "300", "99");
        bench.go_to(row.step);
        bench.request();
        Payload abort = row.request;
        abort[0] = 0x80;
        bench.receive(abort);
        EXPECT_EQ(bench.state.scanStep, row.step);
        EXPECT_EQ(bench.request(), row.request);
    }
}

TEST_F(ScanSteps, EchoOfTheRequestIsNoAnswer) {
    for (const Row& row : table()) {
        ScanBench bench;
        bench.type("10", "20", "300", "99");
        bench.go_to(row.step);
        bench.request();
        bench.receive(row.request);
        EXPECT_EQ(bench.state.scanStep, row.step);
        // The answer behind it is taken, within the same tick when it has come.
        bench.state.sendmod = 1;
        bench.feed(row.request);
        bench.feed(row.accepted);
        bench.tick();
        EXPECT_EQ(bench.state.scanStep, row.next);
    }
}

TEST_F(ScanSteps, AnswersOfAnotherKindLeaveTheStep) {
    for (const Row& row : table()) {
        ScanBench bench;
        bench.type("10", "20", "300", "99");
        bench.go_to(row.step);
        for (int command = 0; command < 256; ++command) {
            if (command == row.accepted[0]) continue;
            Payload other = row.accepted;
            other[0] = static_cast<std::uint8_t>(command);
            bench.receive(other);
            ASSERT_EQ(bench.state.scanStep, row.step) << command;
        }
        for (const std::size_t place : {1U, 2U, 3U}) {
            Payload other = row.accepted;
            other[place] ^= 0x20;
            bench.receive(other);
            ASSERT_EQ(bench.state.scanStep, row.step) << "another object";
        }
        EXPECT_EQ(bench.request(), row.request) << "the same again";
    }
}

TEST_F(ScanSteps, LateAnswerToAnEarlierStepIsDropped) {
    for (const Row& row : table()) {
        if (row.step == 3) continue;
        ScanBench bench;
        bench.type("10", "20", "300", "99");
        bench.go_to(row.step);
        bench.request();
        for (const Row& earlier : table()) {
            if (earlier.step >= row.step) break;
            bench.receive(earlier.accepted);
            EXPECT_EQ(bench.state.scanStep, row.step) << earlier.step;
        }
    }
}

TEST_F(ScanSteps, NonzeroStateKeepsPolling) {
    go_to(8);
    for (const std::uint32_t running : {14U, 1U, 255U}) {
        EXPECT_EQ(request(), table()[5].request);
        receive(accepted(8, running));
        EXPECT_EQ(state.scanStep, 8);
        EXPECT_TRUE(scan.measuring());
    }
    receive(accepted(8, 0xFFFFFF00U));
    EXPECT_EQ(state.scanStep, 9) << "only the first data byte counts";
    EXPECT_FALSE(scan.measuring());
}

TEST_F(ScanSteps, ValuesAreTakenInTheirWidths) {
    go_to(9);
    receive(accepted(9, 0xFFFFFF85U));
    receive(accepted(10, 0xFFFFFFF0U));
    receive(accepted(11, 0xABCD8001U));
    receive(accepted(12, 0xABCDFFFEU));
    receive(accepted(13, 300));
    EXPECT_EQ(scan.settings().scaleShift, 0x85) << "one byte, never negative";
    EXPECT_EQ(scan.settings().encoderCounts, -16);
    EXPECT_EQ(scan.settings().feedbackConstant, -32767);
    EXPECT_EQ(scan.settings().velocityGain1, 65534.0F) << "a gain is no negative number";
    EXPECT_EQ(scan.settings().velocityGain2, 300.0F);
}

TEST_F(ScanSteps, TwoOfThemAreKeptAsFormulaConstants) {
    go_to(10);
    EXPECT_FALSE(values.operands.o64100320.seen);
    receive(accepted(10, 131072));
    EXPECT_EQ(values.operands.o64100320.value, 131072);
    EXPECT_TRUE(values.operands.o64100320.seen);
    EXPECT_FALSE(values.operands.o65100310.seen);
    receive(accepted(11, 0xFF6A));
    EXPECT_EQ(values.operands.o65100310.value, -150);
    EXPECT_TRUE(values.operands.o65100310.seen);
    EXPECT_FALSE(values.operands.o30400710.seen);
}

TEST_F(ScanSteps, ScanGoesBeforeThePoller) {
    ASSERT_TRUE(scan.start());
    warm_up();
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(request(), table()[0].request);
        receive(answer(0x260100, 0, 0x4B));
    }
    EXPECT_EQ(state.sub_Pointer, 0) << "the wheel stands";
}

TEST_F(ScanSteps, LinkClosedInAnyStepEndsTheScan) {
    for (int step = 0; step <= 15; ++step) {
        ScanBench bench;
        bench.data.Command1_enabled = true;
        if (step < 3) {
            ASSERT_TRUE(bench.scan.start());
            for (int i = 0; i < step; ++i)
                bench.tick();
        } else {
            bench.go_to(step);
        }
        ASSERT_EQ(bench.state.scanStep, step);
        bench.engine.link_closed();
        EXPECT_FALSE(bench.scan.active());
        EXPECT_EQ(bench.state.scanRequested, 0);
        EXPECT_EQ(bench.state.scanStep, 0);
        EXPECT_EQ(bench.watcher.ends, std::vector{false});
        EXPECT_EQ(bench.data.Label36, tuner::ScanLabel::kFinished);
        EXPECT_TRUE(bench.data.Command1_enabled) << "at hand, as long as there is no link";
        EXPECT_EQ(bench.scan.progress(), 0);
    }
}

TEST_F(ScanSteps, LinkOpenedUnderAScanEndsIt) {
    go_to(9);
    engine.link_opened();
    EXPECT_FALSE(scan.active());
    EXPECT_EQ(watcher.ends, std::vector{false});
    engine.link_closed();
    EXPECT_EQ(watcher.ends.size(), 1U) << "once";
}
