#include <gtest/gtest.h>

#include "direct_bench.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;

namespace {
struct ObjectAccess : testing::Test, DirectBench {
    bool sends(WireKey key) {
        port.take_sent();
        engine.sendata(key, 0, 1);
        return !port.take_sent().empty();
    }
};
}  // namespace

TEST_F(ObjectAccess, WriteLeavesAtOnceAndIsRemembered) {
    engine.sendata2(0x2FFF0002, 0x55AA, 0);
    EXPECT_EQ(port.take_sent(), FakeDrive::frame_of({0x2B, 0xFF, 0x2F, 0, 0xAA, 0x55, 0, 0}));
    EXPECT_EQ(state.last_write_key, 0x2FFF0002);
}

TEST_F(ObjectAccess, WriteOfASizeWithoutCommandIsRememberedToo) {
    engine.sendata2(0x10080006, 1, 0);
    EXPECT_EQ(state.last_write_key, 0x10080006);
    EXPECT_EQ(port.take_sent()[1], 0);
}

TEST_F(ObjectAccess, ReadIsNotRemembered) {
    engine.sendata2(0x60630004, 0, 1);
    EXPECT_EQ(state.last_write_key, -1);
}

TEST_F(ObjectAccess, SendataDoesNotTouchLastWriteKey) {
    engine.sendata(0x2FFF0002, 0x55AA, 0);
    EXPECT_EQ(state.last_write_key, -1);
    EXPECT_FALSE(port.take_sent().empty());
}

TEST_F(ObjectAccess, FirstStringReadClearsTheStepCopy) {
    state.str_read_step_bk = 5;
    engine.sendata2(0x10080004, 0, 1);
    EXPECT_EQ(state.str_read_step_bk, 5);
    engine.sendata2(0x10080006, 0, 1);
    EXPECT_EQ(state.str_read_step_bk, 0);
}

TEST_F(ObjectAccess, SendataIsSilentWhileInputWaitsAndOutputHasNotLeft) {
    port.out_waiting = 1;
    EXPECT_TRUE(sends(0x60630004)) << "only output";
    port.feed({1});
    EXPECT_FALSE(sends(0x60630004)) << "both";
    port.out_waiting = 0;
    EXPECT_TRUE(sends(0x60630004)) << "only input";
}

TEST_F(ObjectAccess, SegmentRequestLeavesOnTwoOfEveryFourCalls) {
    state.str_read_step = 1;
    std::string pattern;
    for (int i = 0; i < 12; ++i)
        pattern += sends(0x23001306) ? 'S' : '-';
    EXPECT_EQ(pattern, "S--SS--SS--S");
}

TEST_F(ObjectAccess, PaceHoldsForSegmentRequestsOnly) {
    state.segment_pace = 1;
    EXPECT_TRUE(sends(0x23001306)) << "0x40";
    EXPECT_EQ(state.segment_pace, 1);
    state.str_read_step = 2;
    EXPECT_FALSE(sends(0x23001306)) << "0x70";
    EXPECT_EQ(state.segment_pace, 2);
}

TEST_F(ObjectAccess, PaceOfThreeSendsAndRestarts) {
    state.str_read_step = 1;
    state.segment_pace = 3;
    EXPECT_TRUE(sends(0x23001306));
    EXPECT_EQ(state.segment_pace, 0);
}

TEST_F(ObjectAccess, Sendata2IsNotPaced) {
    state.str_read_step = 1;
    state.segment_pace = 1;
    engine.sendata2(0x10080006, 0, 1);
    EXPECT_EQ(port.take_sent()[1], 0x60);
}

TEST_F(ObjectAccess, ClosedPortSendsNothing) {
    port.opened = false;
    engine.sendata2(0x60630004, 0, 1);
    engine.sendata(0x60630004, 0, 1);
    engine.Datawrite_str("hi\r");
    EXPECT_TRUE(port.take_sent().empty());
    EXPECT_EQ(engine.counters.sends, 0U);
}

TEST_F(ObjectAccess, TextTravelsAsItStands) {
    engine.Datawrite_str("hi\r");
    EXPECT_EQ(port.take_sent(), (std::vector<std::uint8_t>{'h', 'i', '\r'}));
}

TEST_F(ObjectAccess, TextIsReadUpToTheReadLength) {
    port.feed(std::vector<std::uint8_t>(100, 'x'));
    EXPECT_EQ(engine.read_text().size(), 10U);
    state.InputLen = 60;
    EXPECT_EQ(engine.read_text().size(), 60U);
    EXPECT_EQ(engine.read_text().size(), 30U);
    EXPECT_EQ(engine.read_text(), "");
}

TEST_F(ObjectAccess, CanChannelCarriesTheSamePayload) {
    state.channel = 1;
    engine.sendata2(0x60630004, 0, 1);
    EXPECT_TRUE(port.take_sent().empty());
    EXPECT_NE(engine.get_frame(), 0);
}

// --- the first answer after a write --------------------------------------------------------------

TEST_F(ObjectAccess, FirstReadAnswerAfterAWriteIsDroppedAsStale) {
    FakePage page("AN_SPEED");
    page.add("606300", "uint32");
    page.set_visible(true);
    engine.add_poll_window(page);
    state.Com_Change = 1;
    state.sub_Pointer = 1;
    engine.sendata2(0x60630004, 7, 0);
    state.sendmod = 1;
    feed(answer(0x606300, 1));
    tick();
    EXPECT_EQ(page.value(1), "");
    EXPECT_EQ(state.last_write_key, -1);
    state.sendmod = 1;
    feed(answer(0x606300, 7));
    tick();
    EXPECT_EQ(page.value(1), "7");
}

TEST_F(ObjectAccess, AcknowledgementIsTakenLikeAnAnswerAndKeepsTheKey) {
    FakePage page("AN_SPEED");
    page.add("606300", "uint32");
    page.set_visible(true);
    engine.add_poll_window(page);
    state.Com_Change = 1;
    engine.sendata2(0x60630004, 7, 0);
    state.sendmod = 1;
    feed(answer(0x606300, 7, 0x60));
    tick();
    EXPECT_EQ(page.value(1), "7");
    EXPECT_EQ(state.last_write_key, 0x60630004);
}

TEST_F(ObjectAccess, StaleAnswerEndsTheTickEvenWithMoreWaiting) {
    engine.sendata2(0x60630004, 7, 0);
    state.sendmod = 1;
    feed(answer(0x606300, 1));
    feed(answer(0x260100, 5, 0x4B));
    tick();
    EXPECT_EQ(port.in.size(), 10U);
}

TEST_F(ObjectAccess, WithoutAWriteNoAnswerIsStale) {
    FakePage page("AN_SPEED");
    page.add("FFFFFF", "uint32");
    page.set_visible(true);
    engine.add_poll_window(page);
    state.Com_Change = 1;
    state.sendmod = 1;
    feed(answer(0xFFFFFF, 3));
    tick();
    EXPECT_EQ(page.value(1), "3");
}

TEST_F(ObjectAccess, KeyAbove8000IsMatchedToo) {
    engine.sendata2(0xF0000102, 7, 0);
    EXPECT_LT(state.last_write_key, -1);
    state.sendmod = 1;
    feed(answer(0xF00001, 1, 0x4B));
    tick();
    EXPECT_EQ(state.last_write_key, -1);
}
