// The refresh as the engine turns it: three passes of thirteen reads, and what the operator does
// in between.
#include <gtest/gtest.h>

#include "scope/acquisition_bench.h"

using namespace servo;
using namespace servo::scope;
using namespace servo::scope::test;

namespace {

using Frames = std::vector<Sent>;

struct PassBench : AcquisitionBench {
    PassBench() { enter_refresh(); }
    void turns(int count, const std::vector<std::uint32_t>& slots) {
        while (count-- > 0)
            refresh_turn(slots);
    }
    // Two turns late, as at a low baud rate: an answer comes when the next request has left.
    void late_turn(const std::vector<std::uint32_t>& slots) {
        const Frames asked = tick();
        if (waiting) feed(*waiting);
        waiting.reset();
        for (const Sent& one : asked) {
            const auto sub = static_cast<std::size_t>(one.object & 0xFF);
            waiting = payload(0x43, one.object, sub <= slots.size() ? slots[sub - 1] : 0);
        }
        tick();
    }
    std::optional<link::Payload> waiting;
};

struct AcquisitionPass : testing::Test, PassBench {};

}  // namespace

TEST_F(AcquisitionPass, ThirteenReadsThreeTimesThenTheLaneIsLeft) {
    for (int pass = 0; pass < 3; ++pass) {
        for (int sub = 1; sub <= 13; ++sub) {
            EXPECT_EQ(engine.state.status_lane, 2);
            const Frames asked = tick();
            ASSERT_EQ(asked, (Frames{read_of(sub)}));
            feed(payload(0x43, asked[0].object, 0));
            tick();
        }
    }
    EXPECT_EQ(engine.state.status_lane, 0);
    EXPECT_EQ(engine.state.Com_Change, 1);
}

TEST_F(AcquisitionPass, ImportModeLeavesTheLaneAtOnce) {
    data.importMode = true;
    EXPECT_EQ(tick(), Frames{});
    EXPECT_EQ(engine.state.status_lane, 0);
}

TEST_F(AcquisitionPass, PickDuringAPassIsNotOverwrittenByThatPass) {
    const std::vector<std::uint32_t> before{kCurrent, 0, 0, 0, 0, 0};
    turns(13, before);
    ASSERT_EQ(recorded(0), 0x607800);
    for (int reads = 0; reads < 13; ++reads) {
        PassBench pass;
        pass.turns(13, before);
        pass.turns(reads, before);
        pass.acquisition.pick_object(0, 2);  // writes sub 1
        const std::vector<std::uint32_t> after{kQCurrent, 0, 0, 0, 0, 0};
        pass.turns(13 - reads, after);
        EXPECT_EQ(pass.recorded(0), 0x60F60C) << reads;
        pass.turns(13, after);
        EXPECT_EQ(pass.recorded(0), 0x60F60C) << reads;
        EXPECT_EQ(pass.data.driveConfigNext, 0) << reads;
    }
}

// Between the request and its answer: the answer tells the object of before the pick.
TEST_F(AcquisitionPass, PickWhileTheReadOfSub1IsUnderWay) {
    turns(13, {kCurrent, 0, 0, 0, 0, 0});
    tick();
    acquisition.pick_object(0, 2);
    feed(payload(0x43, 0x230001, kCurrent));
    tick();
    EXPECT_EQ(data.driveConfigNext, 0);
    turns(25, {kQCurrent, 0, 0, 0, 0, 0});
    EXPECT_EQ(recorded(0), 0x60F60C);
}

// Nothing is written for an unticked channel, so nothing marks the read under way as stale.
TEST_F(AcquisitionPass, PickInAnUntickedChannelWhileTheReadOfSub1IsUnderWay) {
    tick();
    acquisition.pick_object(0, 2);
    feed(payload(0x43, 0x230001, kCurrent));
    tick();
    EXPECT_EQ(data.driveConfigNext, 0);
    turns(12, {kCurrent, 0, 0, 0, 0, 0});
    EXPECT_EQ(channel(0).objectList.ListIndex, 2);  // this pass does not undo it
    EXPECT_FALSE(channel(0).enable);
    turns(13, {kCurrent, 0, 0, 0, 0, 0});
    EXPECT_EQ(recorded(0), 0x607800);  // the next one says what the drive does record
}

TEST_F(AcquisitionPass, UntickedPickStaysWhileTheDriveRecordsNothingThere) {
    acquisition.pick_object(0, 2);
    turns(39, {0, 0, 0, 0, 0, 0});
    EXPECT_EQ(channel(0).objectList.ListIndex, 2);
    EXPECT_FALSE(channel(0).enable);
}

TEST_F(AcquisitionPass, WidePickIsNotOverwrittenWhicheverReadIsUnderWay) {
    const std::vector<std::uint32_t> before{0, 0, 0, 0, kPosition, 0};
    const std::vector<std::uint32_t> after{0, 0, 0, 0, kFollowingError, 0};
    for (int reads = 0; reads < 13; ++reads) {
        PassBench pass;
        pass.turns(13, before);
        ASSERT_EQ(pass.recorded(0), 0x606300);
        pass.turns(reads, before);
        const Frames asked = pass.tick();
        pass.acquisition.pick_object(0, 6);
        const auto sub = static_cast<std::size_t>(asked[0].object & 0xFF);
        pass.feed(payload(0x43, asked[0].object, sub <= 6 ? before[sub - 1] : 0));
        pass.tick();
        for (int turn = reads + 1; turn < 26; ++turn) {
            pass.refresh_turn(after);
            EXPECT_EQ(pass.recorded(0), 0x60FB08) << reads << ' ' << turn;
        }
    }
}

// Two slots are written; the engine remembers the last write only.
TEST_F(AcquisitionPass, EmptyPickIsNotOverwrittenByTheReadOfTheOtherSlot) {
    turns(13, {kCurrent, 0, 0, 0, 0, 0});
    tick();
    acquisition.pick_object(0, 0);
    feed(payload(0x43, 0x230001, kCurrent));
    tick();
    turns(25, {0, 0, 0, 0, 0, 0});
    EXPECT_EQ(channel(0).objectList.ListIndex, 0);
    EXPECT_FALSE(channel(0).enable);
}

TEST_F(AcquisitionPass, TickDuringAPassIsNotUndoneByThatPass) {
    acquisition.pick_object(1, 2);
    for (int reads = 0; reads < 13; ++reads) {
        PassBench pass;
        pass.acquisition.pick_object(1, 2);
        pass.turns(reads, {0, 0, 0, 0, 0, 0});
        pass.acquisition.click_enable(1);
        for (int turn = reads; turn < 26; ++turn) {
            pass.refresh_turn({0, kQCurrent, 0, 0, 0, 0});
            EXPECT_TRUE(pass.channel(1).enable) << reads << ' ' << turn;
        }
    }
}

TEST_F(AcquisitionPass, LateAnswersOfThePassBeforeDoNotHideTheReadUnderWay) {
    const std::vector<std::uint32_t> before{kCurrent, 0, 0, 0, 0, 0};
    for (int turn = 0; turn < 13; ++turn)
        late_turn(before);
    tick();  // sub 1 leaves; the answer of sub 13 has not come yet
    acquisition.pick_object(0, 0);
    feed(*waiting);
    waiting = payload(0x43, 0x230001, kCurrent);
    tick();
    late_turn({0, 0, 0, 0, 0, 0});
    EXPECT_EQ(data.driveConfigNext, 0);
    for (int turn = 0; turn < 24; ++turn)
        late_turn({0, 0, 0, 0, 0, 0});
    EXPECT_EQ(channel(0).objectList.ListIndex, 0);
    EXPECT_FALSE(channel(0).enable);
}

TEST_F(AcquisitionPass, PickBetweenPassesCostsNoPass) {
    turns(13, {0, 0, 0, 0, 0, 0});
    acquisition.pick_object(0, 2);
    turns(6, {kCurrent, 0, 0, 0, 0, 0});
    EXPECT_EQ(recorded(0), 0x607800);
}

TEST_F(AcquisitionPass, TriggerPickIsNotOverwrittenByTheReadUnderWay) {
    turns(13, {});
    turns(11, {});
    ASSERT_EQ(tick(), (Frames{read_of(12)}));
    acquisition.pick_trigger(2);
    feed(payload(0x43, 0x23000C, kCurrent));
    tick();
    EXPECT_EQ(channel(kTrigger).objectList.ListIndex, 2);
}

TEST_F(AcquisitionPass, PickBehindTwoUnansweredReadsIsNotOverwrittenByTheFirst) {
    turns(13, {kCurrent, 0, 0, 0, 0, 0});
    ASSERT_EQ(tick(), (Frames{read_of(1)}));
    tick();
    ASSERT_EQ(tick(), (Frames{read_of(2)}));
    acquisition.pick_object(0, 0);
    feed(payload(0x43, 0x230001, kCurrent));
    feed(payload(0x43, 0x230002, 0));
    tick();
    EXPECT_EQ(data.driveConfigNext, 0);
    turns(24, {0, 0, 0, 0, 0, 0});
    EXPECT_EQ(channel(0).objectList.ListIndex, 0);
    EXPECT_FALSE(channel(0).enable);
}
