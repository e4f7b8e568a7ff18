// Runs: start, stop, status, abort, the link.
#include <gtest/gtest.h>

#include "scope/acquisition_bench.h"

using namespace servo;
using namespace servo::scope;
using namespace servo::scope::test;
using link::Received;
using namespace std::chrono_literals;

namespace {

using Frames = std::vector<Sent>;
using Texts = std::vector<std::string>;

struct AcquisitionRun : testing::Test, AcquisitionBench {
    std::int32_t& state = engine.state.scopeState;

    void start() {
        tick_channel(0, 1);
        acquisition.Command6_Click();
        sent();
        events.clear();
    }
    // A send tick and an empty receive tick.
    Frames turn() {
        Frames frames = tick();
        tick();
        return frames;
    }
};

}  // namespace

TEST_F(AcquisitionRun, StartWritesTheCommandAndTakesTheLane) {
    tick_channel(0, 4);
    tick_channel(1, 1);
    data.Text3 = "100.9";
    engine.state.str_read_step = 2;
    engine.state.segment_pace = 2;
    engine.state.sub_Pointer = 5;
    engine.state.rotation = 2;
    data.rawIndex = 9;
    data.ProgressBar1 = 50;
    acquisition.Command6_Click();
    EXPECT_EQ(sent(), (Frames{write1(7, 1)}));
    EXPECT_TRUE(data.sampling);
    EXPECT_TRUE(acquisition.acquiring());
    EXPECT_EQ(state, 1);
    EXPECT_EQ(data.rowBytes, 6);
    EXPECT_EQ(data.sampleCount, 100);
    EXPECT_EQ(engine.state.str_read_step, 0);
    EXPECT_EQ(engine.state.segment_pace, 0);
    EXPECT_EQ(engine.state.status_lane, 2);
    EXPECT_EQ(engine.state.sub_Pointer, 0);
    EXPECT_EQ(engine.state.rotation, 0);
    EXPECT_EQ(data.rawIndex, 0);
    EXPECT_EQ(data.ProgressBar1, 0);
    EXPECT_EQ(clock.sleeps, (std::vector<std::chrono::milliseconds>{3ms}));
    EXPECT_EQ(events, Texts{"Sampling"});
}

TEST_F(AcquisitionRun, StopWritesTheCommandAndForgetsTheUpload) {
    start();
    state = 6;
    engine.state.str_read_step = 2;
    engine.state.str_read_step_bk = 1;
    data.rawIndex = 77;
    data.ProgressBar1 = 12;
    clock.sleeps.clear();
    acquisition.Command6_Click();
    EXPECT_EQ(sent(), (Frames{write1(7, 0)}));
    EXPECT_FALSE(data.sampling);
    EXPECT_EQ(state, 0);
    EXPECT_EQ(engine.state.str_read_step, 0);
    EXPECT_EQ(engine.state.str_read_step_bk, 0);
    EXPECT_EQ(data.rawIndex, 0);
    EXPECT_EQ(data.ProgressBar1, 0);
    EXPECT_TRUE(clock.sleeps.empty());
    EXPECT_EQ(events, Texts{"Start"});
}

TEST_F(AcquisitionRun, StopWorksInEveryState) {
    for (int from = 1; from <= 6; ++from) {
        AcquisitionBench fresh;
        fresh.tick_channel(0, 1);
        fresh.acquisition.Command6_Click();
        fresh.sent();
        fresh.engine.state.scopeState = from;
        fresh.acquisition.Command6_Click();
        EXPECT_EQ(fresh.engine.state.scopeState, 0);
        EXPECT_EQ(fresh.sent(), (Frames{write1(7, 0)}));
    }
}

TEST_F(AcquisitionRun, ClosedLinkIsToldInBothLanguages) {
    tick_channel(0, 1);
    open = false;
    acquisition.Command6_Click();
    language = base::Language::kChinese;
    acquisition.Command6_Click();
    EXPECT_EQ(notice.boxes, (std::vector<std::pair<std::string, std::string>>{
                                {"Notice", "Please Set the Communication first!"},
                                {"提示", "请先打开通信连接!"}}));
    EXPECT_FALSE(data.sampling);
    EXPECT_EQ(data.rowBytes, 0);
    EXPECT_EQ(sent(), Frames{});
}

TEST_F(AcquisitionRun, NothingHappensWithoutAChannel) {
    acquisition.Command6_Click();
    acquisition.pick_object(0, 1);  // not ticked
    acquisition.Command6_Click();
    EXPECT_EQ(sent(), Frames{});
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_FALSE(data.sampling);
    EXPECT_TRUE(clock.sleeps.empty());
}

TEST_F(AcquisitionRun, NothingHappensWithoutSamples) {
    tick_channel(0, 1);
    for (const char* text : {"0", "", "abc", "0.9", "1E99"}) {
        data.Text3 = text;
        acquisition.Command6_Click();
        EXPECT_FALSE(data.sampling) << text;
    }
    EXPECT_EQ(sent(), Frames{});
}

// The click looks at the channels before it looks whether it starts or stops.
TEST_F(AcquisitionRun, RunWhoseLastChannelWasUntickedGoesOnUntilOneIsTicked) {
    start();
    acquisition.click_enable(0);
    sent();
    acquisition.Command6_Click();
    EXPECT_TRUE(data.sampling);
    EXPECT_EQ(sent(), Frames{});
    acquisition.click_enable(0);
    sent();
    acquisition.Command6_Click();
    EXPECT_FALSE(data.sampling);
}

TEST_F(AcquisitionRun, MoreBytesThanTheBufferHoldsAreNotRefused) {
    tick_channel(0, 4);
    data.Text3 = "8192";
    acquisition.Command6_Click();
    EXPECT_TRUE(data.sampling);
}

TEST_F(AcquisitionRun, RereadAsksForTheBufferWithoutAStart) {
    tick_channel(0, 1);
    acquisition.Command7_Click();
    EXPECT_EQ(sent(), Frames{});
    EXPECT_EQ(state, 5);
    EXPECT_TRUE(data.sampling);
    EXPECT_EQ(data.rereadRequested, 0);
    engine.state.sendmod = 0;
    EXPECT_EQ(turn(), (Frames{read_of(0x13)}));
}

TEST_F(AcquisitionRun, RereadDuringARunStopsItAndServesTheNextStart) {
    start();
    acquisition.Command7_Click();
    EXPECT_EQ(sent(), (Frames{write1(7, 0)}));
    EXPECT_EQ(state, 0);
    EXPECT_EQ(data.rereadRequested, 5);
    acquisition.Command6_Click();
    EXPECT_EQ(state, 5);
    EXPECT_EQ(sent(), Frames{});
    EXPECT_EQ(data.rereadRequested, 0);
}

TEST_F(AcquisitionRun, RereadOnAClosedLinkServesTheNextStart) {
    tick_channel(0, 1);
    open = false;
    acquisition.Command7_Click();
    EXPECT_EQ(notice.boxes.size(), 1U);
    open = true;
    acquisition.Command6_Click();
    EXPECT_EQ(state, 5);
}

TEST_F(AcquisitionRun, StatusTable) {
    struct Case {
        int status;
        int from;
        int to;
    };
    const std::vector<Case> cases{
        {1, 0, 0}, {1, 1, 2},   {1, 2, 2}, {1, 3, 2}, {1, 4, 2},             //
        {2, 0, 0}, {2, 1, 1},   {2, 2, 3}, {2, 3, 3}, {2, 4, 3},             //
        {3, 0, 4}, {3, 1, 4},   {3, 2, 4}, {3, 3, 4}, {3, 4, 4},             //
        {0, 0, 0}, {0, 1, 5},   {0, 2, 5}, {0, 3, 5}, {0, 4, 5}, {0, 5, 5},  //
        {4, 1, 1}, {255, 2, 2},
    };
    for (const Case& c : cases) {
        state = c.from;
        status(static_cast<std::uint8_t>(c.status));
        EXPECT_EQ(state, c.to) << "status " << c.status << " in " << c.from;
    }
}

TEST_F(AcquisitionRun, StatusZeroCountsInAOneByteAnswerOnly) {
    for (const int command : {0x4B, 0x43}) {
        state = 2;
        status(0, command);
        EXPECT_EQ(state, 2) << command;
        status(3, command);
        EXPECT_EQ(state, 4) << command;
    }
    state = 2;
    status(0, 0x60);  // the answer to a write
    EXPECT_EQ(state, 2);
    status(0, 0x40);  // an echo
    EXPECT_EQ(state, 2);
}

TEST_F(AcquisitionRun, Status3FromIdlePollsUntilStatus0LeadsToAnUpload) {
    enter_refresh();
    setting(7, 3);
    EXPECT_EQ(state, 4);
    EXPECT_EQ(turn(), (Frames{read_of(7)}));
    EXPECT_EQ(turn(), (Frames{read_of(7)}));
    status(0);
    EXPECT_EQ(turn(), (Frames{read_of(0x13)}));
    EXPECT_FALSE(data.sampling);
}

// Where no run was started here the click at the end of the upload starts one.
TEST_F(AcquisitionRun, UploadOfSomebodyElsesRecordingStartsARunInSingleMode) {
    tick_channel(0, 1);
    data.Check5 = true;
    status(3);
    status(0);
    say(payload(0x41, 0x230013));
    segment(0x0B, {7, 8});
    EXPECT_EQ(raw(), (std::vector<std::uint8_t>{7, 8}));
    EXPECT_EQ(sent(), (Frames{write1(7, 1)}));
    EXPECT_EQ(events, (Texts{"Sampling", "Movingdata", "DrawPicture"}));
    EXPECT_EQ(state, 1);
}

TEST_F(AcquisitionRun, TwelvePollsThenTheOtherLanesHaveTheirTurn) {
    start();
    state = 2;
    engine.state.rotation = 1;
    for (int poll = 1; poll <= 12; ++poll) {
        EXPECT_EQ(turn(), (Frames{read_of(7)}));
        EXPECT_EQ(data.statusPollCount, poll);
    }
    EXPECT_EQ(turn(), Frames{});
    EXPECT_EQ(data.statusPollCount, 0);
    EXPECT_EQ(engine.state.status_lane, 0);
    EXPECT_EQ(engine.state.rotation, 0);
    EXPECT_EQ(engine.state.sub_Pointer, 1);
    EXPECT_EQ(turn()[0].object, 0x260200);
}

TEST_F(AcquisitionRun, LaneZeroHandsBackAtOnceWhileTheStartIsUnanswered) {
    start();
    for (int poll = 0; poll < 13; ++poll)
        turn();
    ASSERT_EQ(engine.state.status_lane, 0);
    EXPECT_EQ(turn(), Frames{});
    EXPECT_EQ(engine.state.status_lane, 2);
    EXPECT_EQ(turn(), (Frames{read_of(7)}));
}

TEST_F(AcquisitionRun, AbortOfTheCommandEndsTheRunFromEveryState) {
    for (int from = 1; from <= 6; ++from) {
        AcquisitionBench fresh;
        fresh.tick_channel(0, 1);
        fresh.acquisition.Command6_Click();
        fresh.sent();
        fresh.engine.state.scopeState = from;
        fresh.say(payload(0x80, 0x230007, 0x06090030));
        EXPECT_EQ(fresh.engine.state.scopeState, 0) << from;
        EXPECT_FALSE(fresh.data.sampling) << from;
        EXPECT_EQ(fresh.sent(), (Frames{write1(7, 0)})) << from;
        EXPECT_TRUE(fresh.notice.boxes.empty());
    }
}

TEST_F(AcquisitionRun, AbortInIdleIsDropped) {
    tick_channel(0, 1);
    say(payload(0x80, 0x230007));
    EXPECT_EQ(state, 0);
    EXPECT_FALSE(data.sampling);
    EXPECT_EQ(sent(), Frames{});
}

TEST_F(AcquisitionRun, AbortsOfOtherSubsAreDropped) {
    start();
    for (int from = 1; from <= 6; ++from) {
        state = from;
        for (const int sub : {1, 6, 8, 12, 13, 0x13}) {
            say(payload(0x80, 0x230000 + sub));
            EXPECT_EQ(state, from);
        }
    }
    EXPECT_TRUE(data.sampling);
}

TEST_F(AcquisitionRun, WindowSaysWhetherTheLaneIsEntered) {
    EXPECT_FALSE(acquisition.window_visible());
    acquisition.set_visible(true);
    EXPECT_TRUE(acquisition.window_visible());
}

TEST_F(AcquisitionRun, TimedOutLinkResetsTheRunInEveryState) {
    for (int from = 1; from <= 6; ++from) {
        AcquisitionBench fresh;
        fresh.tick_channel(0, 1);
        fresh.acquisition.Command6_Click();
        fresh.sent();
        fresh.engine.state.scopeState = from;
        fresh.engine.state.sub_Pointer = 5;
        fresh.data.rawIndex = 70;
        fresh.data.ProgressBar1 = 30;
        fresh.events.clear();
        fresh.acquisition.link_timed_out(fresh.engine);
        EXPECT_FALSE(fresh.data.sampling);
        EXPECT_EQ(fresh.engine.state.scopeState, 0);
        EXPECT_EQ(fresh.engine.state.sub_Pointer, 0);
        EXPECT_EQ(fresh.data.rawIndex, 0);
        EXPECT_EQ(fresh.data.ProgressBar1, 0);
        EXPECT_EQ(fresh.events, Texts{"Start"});
        EXPECT_EQ(fresh.sent(), Frames{});
    }
}

TEST_F(AcquisitionRun, ClosingTheLinkResetsTheRun) {
    start();
    state = 3;
    data.statusPollCount = 7;
    data.driveConfigNext = 4;
    acquisition.link_closed(engine);
    EXPECT_FALSE(data.sampling);
    EXPECT_EQ(state, 0);
    EXPECT_EQ(data.statusPollCount, 0);
    EXPECT_EQ(data.driveConfigNext, 0);
    EXPECT_EQ(events, Texts{"Start"});
}
