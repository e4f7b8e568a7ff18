#include <gtest/gtest.h>

#include "direct_bench.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;

namespace {

struct Lanes : testing::Test, DirectBench {
    // Everything that lane 0 waits for.
    void know_all() {
        for (Operand* operand : {&values.operands.o64100320, &values.operands.o65100310,
                                 &values.operands.o60F61310, &values.operands.o60F61110})
            operand->seen = true;
        values.firmware_check_known = true;
    }
    // Identities asked for in so many send ticks, 0 for a silent one.
    std::vector<Identity> turns(int count) {
        std::vector<Identity> asked;
        for (int i = 0; i < count; ++i)
            asked.push_back(turn());
        return asked;
    }
    std::vector<Identity> list(int lane) {
        std::vector<Identity> identities;
        for (const WireKey key : Engine::status_list(lane))
            identities.push_back(dictionary::identity_of(key));
        return identities;
    }
};

}  // namespace

TEST_F(Lanes, ListsAreAsTold) {
    EXPECT_EQ(list(0), (std::vector<Identity>{0x260100, 0x260200, 0x651003, 0x641003, 0x304007,
                                              0x60F613, 0x60F611, 0x1F5601}));
    const auto lane1 = Engine::status_list(1);
    ASSERT_EQ(lane1.size(), 26U);
    EXPECT_EQ(lane1[0], 0x26050102U);
    EXPECT_EQ(lane1[1], 0x26050402U);
    for (std::size_t n = 1; n <= 0x15; ++n)
        EXPECT_EQ(lane1[1 + n], 0x20100002U + (n << 8));
    EXPECT_EQ(lane1[23], 0x20101D02U);
    EXPECT_EQ(lane1[24], 0x20101E02U);
    EXPECT_EQ(lane1[25], 0x20101F02U);
    const auto lane2 = Engine::status_list(2);
    ASSERT_EQ(lane2.size(), 13U);
    for (std::size_t n = 1; n <= 13; ++n)
        EXPECT_EQ(lane2[n - 1], 0x23000004U + (n << 8));
    EXPECT_TRUE(Engine::status_list(3).empty());
}

TEST_F(Lanes, Lane0SendsItsEntriesInOrderOnePerTick) {
    EXPECT_EQ(turns(8), list(0));
}

TEST_F(Lanes, Lane0PassesWhenTheFiveFlagsAreSet) {
    know_all();
    turns(8);
    EXPECT_EQ(state.status_lane, 1);
    EXPECT_EQ(state.sub_Pointer, 0);
}

TEST_F(Lanes, FlagOf304007IsNotPartOfTheTest) {
    know_all();
    ASSERT_FALSE(values.operands.o30400710.seen);
    turns(8);
    EXPECT_EQ(state.status_lane, 1);
}

TEST_F(Lanes, AnyOtherMissingFlagRepeatsTheLane) {
    for (Operand* operand : {&values.operands.o64100320, &values.operands.o65100310,
                             &values.operands.o60F61310, &values.operands.o60F61110}) {
        know_all();
        operand->seen = false;
        for (int round = 0; round < 4; ++round)
            turns(8);
        EXPECT_EQ(state.status_lane, 0);
        EXPECT_EQ(state.sub_Pointer, 0);
        EXPECT_EQ(state.g_FW_CRC_OK_overtimes, 0);
    }
}

TEST_F(Lanes, FirmwareWithout1F5601IsPassedAfterTwoRoundsWithAnEmptyLabel) {
    RecordingListener listener;
    engine.add_listener(listener);
    know_all();
    values.firmware_check_known = false;
    values.firmware_check_text = "AB";
    turns(8);
    EXPECT_EQ(state.status_lane, 0);
    EXPECT_EQ(state.g_FW_CRC_OK_overtimes, 1);
    turns(8);
    EXPECT_EQ(state.status_lane, 1);
    EXPECT_EQ(state.g_FW_CRC_OK_overtimes, 0);
    EXPECT_TRUE(values.firmware_check_known);
    EXPECT_EQ(values.firmware_check_text, "");
    EXPECT_EQ(listener.checks, std::vector<std::string>{""});
}

TEST_F(Lanes, FirmwareWithout1F5601IsPassedEvenIfOtherValuesAreMissing) {
    turns(16);
    EXPECT_EQ(state.status_lane, 1);
    EXPECT_FALSE(values.operands.o64100320.seen);
}

TEST_F(Lanes, AbortOnAScalingObjectKeepsLane0Looping) {
    for (int i = 0; i < 80; ++i) {
        state.sendmod = 0;
        const auto sent = tick();
        ASSERT_TRUE(sent);
        const Identity object = reply_key(*sent);
        feed(object == 0x641003 ? answer(object, 0x06020000, 0x80) : answer(object, 1));
        tick();
    }
    EXPECT_EQ(state.status_lane, 0);
    EXPECT_FALSE(values.operands.o64100320.seen);
    EXPECT_TRUE(values.operands.o65100310.seen);
}

TEST_F(Lanes, AnsweringDriveReachesLane1WithinTwoRounds) {
    for (int i = 0; i < 16; ++i)
        answered_turn(1);
    EXPECT_EQ(state.status_lane, 1);
    EXPECT_EQ(values.firmware_check_text, "1");
}

TEST_F(Lanes, LastAnswerOfLane0IsTakenWhenLane1HasBegun) {
    know_all();
    turns(7);
    state.sendmod = 0;
    tick();  // asks for 1F5601, and the lane passes
    ASSERT_EQ(state.status_lane, 1);
    feed(answer(0x1F5601, 0xBEEF));
    tick();
    EXPECT_EQ(values.firmware_check_text, "BEEF");
}

TEST_F(Lanes, Lane0GoesToLane2WhenARecordingHasStarted) {
    state.scopeState = 1;
    state.sub_Pointer = 1;
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.status_lane, 2);
    EXPECT_EQ(state.sub_Pointer, 1);
}

TEST_F(Lanes, Lane1GoesToLane2WhenARecordingHasStarted) {
    state.status_lane = 1;
    state.scopeState = 1;
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.status_lane, 2);
}

TEST_F(Lanes, Lane1EndsWithFourSilentTicks) {
    state.status_lane = 1;
    EXPECT_EQ(turns(26), list(1));
    EXPECT_EQ(turns(3), (std::vector<Identity>{0, 0, 0}));
    EXPECT_EQ(state.Com_Change, 0);
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.Com_Change, 1);
    EXPECT_EQ(state.sub_Pointer, 1);
    EXPECT_EQ(state.status_lane, 0);
}

TEST_F(Lanes, IoRefreshRunsLane1OnceMore) {
    state.status_lane = 1;
    state.io_refresh = kTrue;
    turns(30);
    EXPECT_EQ(state.io_refresh, 0);
    EXPECT_EQ(state.status_lane, 1);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(turns(26), list(1));
    turns(4);
    EXPECT_EQ(state.Com_Change, 1);
}

TEST_F(Lanes, RequestOfAnIoRefreshBeginsTheStatusLanesAnew) {
    state.Com_Change = 1;
    state.sub_Pointer = 5;
    engine.request_io_refresh();
    EXPECT_EQ(state.Com_Change, 0);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(state.status_lane, 0);
    EXPECT_EQ(state.io_refresh, -1);
}

TEST_F(Lanes, RequestOfAnIoRefreshLeavesLane2Alone) {
    state.status_lane = 2;
    state.sub_Pointer = 5;
    engine.request_io_refresh();
    EXPECT_EQ(state.status_lane, 2);
    EXPECT_EQ(state.sub_Pointer, 5);
    EXPECT_EQ(state.io_refresh, 0);
}

TEST_F(Lanes, AnswersOfLane1GoToTheListenersInAnyLane) {
    RecordingListener listener;
    engine.add_listener(listener);
    for (const std::int32_t lane : {0, 1, 2}) {
        state.status_lane = lane;
        state.sendmod = 1;
        feed(answer(0x20101D, 0x8001, 0x4B));
        tick();
    }
    ASSERT_EQ(listener.lane1.size(), 3U);
    EXPECT_EQ(listener.lane1[0].first, 0x20101D);
    EXPECT_EQ(listener.lane1[0].second[4], 0x01);
    EXPECT_EQ(listener.lane1[0].second[5], 0x80);
}

TEST_F(Lanes, RefusedOrAcknowledgedLane1ObjectsAreNoAnswers) {
    RecordingListener listener;
    engine.add_listener(listener);
    for (const std::uint8_t command : {0x80, 0x60, 0x40}) {
        state.sendmod = 1;
        feed(answer(0x201003, 1, command));
        tick();
    }
    EXPECT_TRUE(listener.lane1.empty());
}

// --- lane 2
// --------------------------------------------------------------------------------------------

TEST_F(Lanes, WithTheScopeOnScreenLane2FollowsLane1) {
    FakeScope scope;
    scope.visible = true;
    engine.set_scope(&scope);
    state.status_lane = 1;
    turns(30);
    EXPECT_EQ(state.status_lane, 2);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(state.Com_Change, 0);
}

TEST_F(Lanes, Lane2ReadsTheSettingsThreeTimes) {
    FakeScope scope;
    engine.set_scope(&scope);
    state.status_lane = 2;
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(state.Com_Change, 0);
        EXPECT_EQ(turns(13), list(2));
    }
    EXPECT_EQ(state.Com_Change, 1);
    EXPECT_EQ(state.status_lane, 0);
    EXPECT_EQ(state.rotation, 0);
    EXPECT_EQ(state.sub_Pointer, 1);
}

TEST_F(Lanes, Lane2IsLeftAtOnceWhenTheSettingsAreKnown) {
    FakeScope scope;
    scope.known = true;
    engine.set_scope(&scope);
    state.status_lane = 2;
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.Com_Change, 1);
    EXPECT_EQ(state.sub_Pointer, 1);
}

TEST_F(Lanes, RunningRecordingHasItsOwnStepsInLane2) {
    FakeScope scope;
    scope.key = 0x23000701;
    engine.set_scope(&scope);
    state.status_lane = 2;
    state.scopeState = 3;
    EXPECT_EQ(turn(), 0x230007);
    EXPECT_EQ(turn(), 0x230007);
    EXPECT_EQ(scope.steps, 2);
    EXPECT_EQ(state.status_lane, 2);
}

TEST_F(Lanes, EveryFrameButAnEchoGoesToTheScopeWhileLane2Runs) {
    FakeScope scope;
    engine.set_scope(&scope);
    state.status_lane = 2;
    for (const std::uint8_t command : {0x00, 0x10, 0x1F, 0x41, 0x4F, 0x80, 0x40}) {
        state.sendmod = 1;
        feed(answer(0x2300AA, 1, command));
        tick();
    }
    EXPECT_EQ(scope.frames.size(), 6U);
}

TEST_F(Lanes, LateAnswersOfTheRecorderReachTheScopeInAnotherLane) {
    FakeScope scope;
    engine.set_scope(&scope);
    const auto receive = [this](std::uint8_t command) {
        state.sendmod = 1;
        feed(answer(0x230007, 2, command));
        tick();
    };
    receive(0x4F);
    receive(0x80);
    EXPECT_EQ(scope.frames.size(), 2U);
    receive(0x60);
    receive(0x00);
    EXPECT_EQ(scope.frames.size(), 2U) << "no answers of an object";
}

TEST_F(Lanes, WithoutAScopeLane2IsLeft) {
    state.status_lane = 2;
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.Com_Change, 1);
}

// --- the wheel
// -----------------------------------------------------------------------------------------

TEST_F(Lanes, WithAllPagesClosedTheWheelStaysInTheStatusLanes) {
    know_all();
    for (int round = 0; round < 5; ++round) {
        EXPECT_EQ(turns(8), list(0));
        EXPECT_EQ(turns(26), list(1));
        EXPECT_EQ(turns(5), std::vector<Identity>(5, 0)) << "four to drain, one to find no page";
    }
}
