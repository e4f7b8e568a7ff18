// The upload of the buffer, segment by segment.
#include <gtest/gtest.h>

#include "scope/acquisition_bench.h"

using namespace servo;
using namespace servo::scope;
using namespace servo::scope::test;
using link::Received;

namespace {

using Frames = std::vector<Sent>;
using Texts = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

struct AcquisitionUpload : testing::Test, AcquisitionBench {
    AcquisitionUpload() {
        tick_channel(0, 1);
        data.Check5 = true;
        begin();
    }
    void begin() {
        acquisition.Command6_Click();
        state = 5;
        say(payload(0x41, 0x230013, 1000));
        sent();
        events.clear();
    }
    // Runs through full segments until the toggle is the one wanted.
    void expect_toggle(int wanted) {
        if (wanted == 0x10) segment(0x00);
    }
    std::int32_t& state = engine.state.scopeState;
    std::uint8_t& toggle = engine.state.str_read_step;
};

}  // namespace

TEST_F(AcquisitionUpload, AnswerToTheInitiateBeginsTheSegments) {
    EXPECT_EQ(state, 6);
    EXPECT_EQ(toggle, 1);
    EXPECT_EQ(data.rawIndex, 0);
}

TEST_F(AcquisitionUpload, InitiateAnswerCountsInState5AloneAndForTheBufferAlone) {
    for (int from = 0; from <= 4; ++from) {
        state = from;
        say(payload(0x41, 0x230013));
        EXPECT_EQ(state, from);
    }
    state = 5;
    toggle = 0;
    say(payload(0x41, 0x230012));
    EXPECT_EQ(state, 5);
    say(payload(0x41, 0x220013));
    EXPECT_EQ(state, 5);
    say(payload(0x41, 0x230013));
    EXPECT_EQ(state, 6);
}

TEST_F(AcquisitionUpload, RepeatedInitiateAnswerChangesNothing) {
    segment(0x00);
    say(payload(0x41, 0x230013));
    EXPECT_EQ(state, 6);
    EXPECT_EQ(toggle, 2);
    EXPECT_EQ(data.rawIndex, 7);
}

TEST_F(AcquisitionUpload, TogglesAlternate) {
    engine.state.str_read_step_bk = 3;
    EXPECT_EQ(segment(0x00, {1, 2, 3, 4, 5, 6, 7}), Received::kTaken);
    EXPECT_EQ(toggle, 2);
    EXPECT_EQ(engine.state.str_read_step_bk, 0);
    engine.state.str_read_step_bk = 3;
    EXPECT_EQ(segment(0x10, {8, 9, 10, 11, 12, 13, 14}), Received::kTaken);
    EXPECT_EQ(toggle, 1);
    EXPECT_EQ(engine.state.str_read_step_bk, 0);
    EXPECT_EQ(data.rawIndex, 14);
    for (std::size_t i = 0; i < 14; ++i)
        EXPECT_EQ(data.rawBytes.at(i), i + 1);
}

TEST_F(AcquisitionUpload, RepeatedSegmentIsNotStored) {
    segment(0x10);
    EXPECT_EQ(data.rawIndex, 0);
    EXPECT_EQ(toggle, 1);
    segment(0x00);
    segment(0x00);
    EXPECT_EQ(data.rawIndex, 7);
    EXPECT_EQ(toggle, 2);
}

TEST_F(AcquisitionUpload, SegmentsAreAskedForAtTheToldPace) {
    engine.state.sendmod = 0;
    Frames asked;
    for (int turn = 0; turn < 8; ++turn) {
        engine.state.sendmod = 0;
        for (const Sent& one : tick())
            asked.push_back({one.command, one.object, static_cast<std::uint32_t>(turn)});
    }
    EXPECT_EQ(
        asked,
        (Frames{
            {0x60, 0x230013, 0}, {0x60, 0x230013, 3}, {0x60, 0x230013, 4}, {0x60, 0x230013, 7}}));
    toggle = 2;
    engine.state.sendmod = 0;
    EXPECT_EQ(tick(), (Frames{{0x70, 0x230013, 0}}));
}

TEST_F(AcquisitionUpload, WaitingStateAlwaysAsksForTheWhole) {
    state = 5;
    toggle = 2;  // left over
    engine.state.sendmod = 0;
    EXPECT_EQ(tick(), (Frames{read_of(0x13)}));
}

TEST_F(AcquisitionUpload, LastSegmentCommand01Means7Bytes) {
    segment(0x01, {1, 2, 3, 4, 5, 6, 7});
    EXPECT_EQ(raw(), (Bytes{1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(AcquisitionUpload, LastSegmentCommand0FMeansNone) {
    segment(0x0F);
    EXPECT_EQ(raw(), Bytes{});
    EXPECT_EQ(state, 0);
    EXPECT_EQ(events, (Texts{"Start", "Movingdata", "DrawPicture"}));
}

TEST_F(AcquisitionUpload, CountsOfTheLastSegment) {
    for (const int t : {0x00, 0x10}) {
        for (int unused = 0; unused <= 7; ++unused) {
            if (state == 0) begin();
            expect_toggle(t);
            const std::size_t before = static_cast<std::size_t>(data.rawIndex);
            segment(t | 1 | unused << 1);
            EXPECT_EQ(raw().size(), before + 7 - static_cast<std::size_t>(unused)) << t;
            EXPECT_EQ(state, 0);
        }
    }
}

TEST_F(AcquisitionUpload, NegativeCountIsNone) {
    segment(0x11);  // the last one, but of the other toggle
    EXPECT_EQ(raw(), Bytes{});
    EXPECT_EQ(state, 0);
    begin();
    segment(0x3F);
    EXPECT_EQ(raw(), Bytes{});
    EXPECT_EQ(state, 0);
}

TEST_F(AcquisitionUpload, CountBeyondTheFrameEndsTheTickAndStoresNothing) {
    segment(0x00);
    for (const int command : {0x01, 0x03, 0x0F}) {
        EXPECT_EQ(segment(command), Received::kEndTick) << command;
        EXPECT_EQ(data.rawIndex, 7);
        EXPECT_EQ(toggle, 2);
        EXPECT_EQ(state, 6);
    }
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(segment(0x11), Received::kTaken);  // and the transfer goes on
    EXPECT_EQ(raw().size(), 14U);
}

TEST_F(AcquisitionUpload, FailureInTheTickLeavesTheNextTicksAlive) {
    segment(0x00);
    engine.state.Com_Change = 0;
    engine.state.status_lane = 2;
    engine.state.sendmod = 1;
    link::Payload bad{0x01, 1, 2, 3, 4, 5, 6, 7};
    link::Payload good{0x1D, 9};
    feed(bad);
    feed(good);
    tick();
    EXPECT_EQ(state, 6);  // the second frame waits: the failure ended the tick
    engine.state.sendmod = 1;
    tick();
    EXPECT_EQ(state, 0);
    EXPECT_EQ(raw().size(), 8U);
}

TEST_F(AcquisitionUpload, TransferBeyondTheBufferEndsTheTickInsideOfIt) {
    int command = 0;
    for (int i = 0; i < 1170; ++i, command ^= 0x10)
        ASSERT_EQ(segment(command), Received::kTaken);
    ASSERT_EQ(data.rawIndex, 8190);
    EXPECT_EQ(segment(command), Received::kEndTick);
    EXPECT_EQ(data.rawIndex, 8192);
    EXPECT_EQ(segment(command ^ 0x10), Received::kEndTick);
    EXPECT_EQ(segment(command | 1), Received::kEndTick);  // the last one has no place either
    EXPECT_EQ(state, 6);
    EXPECT_TRUE(events.empty());
    // The operator ends it.
    acquisition.Command6_Click();
    EXPECT_EQ(state, 0);
    EXPECT_EQ(data.rawIndex, 0);
}

TEST_F(AcquisitionUpload, FullBufferIsNoFailure) {
    int command = 0;
    for (int i = 0; i < 1170; ++i, command ^= 0x10)
        segment(command);
    EXPECT_EQ(segment(command | 1 | 5 << 1, {0xAA, 0xBB}), Received::kTaken);
    EXPECT_EQ(data.rawLength, 8192);
    EXPECT_EQ(data.rawBytes.back(), 0xBB);
    EXPECT_EQ(events, (Texts{"Start", "Movingdata", "DrawPicture"}));
}

TEST_F(AcquisitionUpload, ProgressFollowsTheBytesInFloatingPoint) {
    segment(0x00);
    EXPECT_DOUBLE_EQ(data.ProgressBar1, 7 * 100.0 / 2 / 500);
    segment(0x10);
    EXPECT_DOUBLE_EQ(data.ProgressBar1, 1.4);
    data.sampleCount = 6;  // 12 bytes were expected
    segment(0x00);
    EXPECT_EQ(data.ProgressBar1, 100);
}

TEST_F(AcquisitionUpload, ProgressOfAnUnknownLengthIsNone) {
    data.rowBytes = 0;
    EXPECT_EQ(segment(0x00), Received::kTaken);
    EXPECT_EQ(data.ProgressBar1, 0);
    EXPECT_EQ(data.rawIndex, 7);
}

TEST_F(AcquisitionUpload, LastSegmentEndsASingleRunInTheToldOrder) {
    segment(0x00);
    engine.state.sub_Pointer = 4;
    engine.state.str_read_step_bk = 1;
    EXPECT_EQ(segment(0x1D, {42}), Received::kTaken);
    EXPECT_EQ(events, (Texts{"Start", "Movingdata", "DrawPicture"}));
    EXPECT_EQ(sent(), (Frames{write1(7, 0)}));
    EXPECT_EQ(data.rawLength, 8);
    EXPECT_EQ(data.rawIndex, 0);
    EXPECT_EQ(toggle, 0);
    EXPECT_EQ(engine.state.str_read_step_bk, 0);
    EXPECT_EQ(engine.state.sub_Pointer, 0);
    EXPECT_EQ(state, 0);
    EXPECT_EQ(data.ProgressBar1, 0);
}

TEST_F(AcquisitionUpload, ContinuousModeStartsAgainWithinTheSameTick) {
    data.Check5 = false;
    engine.state.Com_Change = 0;
    engine.state.status_lane = 2;
    engine.state.sendmod = 1;
    feed({0x01, 1, 2, 3, 4, 5, 6, 7});
    EXPECT_EQ(tick(), (Frames{write1(7, 0), write1(7, 1)}));
    EXPECT_EQ(events, (Texts{"Start", "Movingdata", "DrawPicture", "Sampling"}));
    EXPECT_EQ(state, 1);
    EXPECT_EQ(raw().size(), 7U);
}

TEST_F(AcquisitionUpload, RereadAfterAFinishedRunEndsWithTheStopAsUsual) {
    segment(0x01);
    sent();
    acquisition.Command7_Click();
    EXPECT_EQ(sent(), Frames{});  // nothing is written at its start
    EXPECT_EQ(state, 5);
    engine.state.sendmod = 0;
    EXPECT_EQ(tick(), (Frames{read_of(0x13)}));
    say(payload(0x41, 0x230013));
    segment(0x01, {7, 6, 5, 4, 3, 2, 1});
    EXPECT_EQ(sent(), (Frames{write1(7, 0)}));
    EXPECT_EQ(raw(), (Bytes{7, 6, 5, 4, 3, 2, 1}));
}

TEST_F(AcquisitionUpload, SegmentsOutsideOfTheUploadAreNone) {
    for (const int from : {0, 1, 2, 3, 4, 5}) {
        state = from;
        segment(0x00);
        segment(0x01);
        EXPECT_EQ(state, from);
        EXPECT_EQ(data.rawIndex, 0);
    }
    EXPECT_TRUE(events.empty());
}

TEST_F(AcquisitionUpload, EchoesAndAnswersToWritesAreNoSegments) {
    for (const int command : {0x40, 0x41, 0x60, 0x70, 0x80}) {
        segment(command);
        EXPECT_EQ(data.rawIndex, 0) << command;
        EXPECT_EQ(state, 6) << command;
    }
}

TEST_F(AcquisitionUpload, SegmentWithoutAnExpectationIsNotStored) {
    toggle = 0;
    EXPECT_EQ(segment(0x00), Received::kTaken);
    EXPECT_EQ(segment(0x01), Received::kTaken);
    EXPECT_EQ(data.rawIndex, 0);
    EXPECT_EQ(state, 6);
}

// A segment's data can look like the identity of a status object: it is none.
TEST_F(AcquisitionUpload, SegmentIsNotTakenForAStatusAnswer) {
    engine.state.Com_Change = 0;
    engine.state.status_lane = 2;
    engine.state.sendmod = 1;
    values.fault_word1 = 0;
    feed({0x00, 0x01, 0x26, 0x00, 0x34, 0x12, 0, 0});
    tick();
    EXPECT_EQ(values.fault_word1, 0);
    EXPECT_EQ(data.rawIndex, 7);
}
