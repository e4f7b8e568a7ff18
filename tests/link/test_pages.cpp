#include <gtest/gtest.h>

#include "direct_bench.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;

namespace {

struct Pages : testing::Test, DirectBench {
    Pages() { state.Com_Change = 1; }

    template <typename Page>
    Page& show(Page& page) {
        page.set_visible(true);
        EXPECT_TRUE(engine.add_poll_window(page));
        return page;
    }
    std::vector<Identity> turns(int count) {
        std::vector<Identity> asked;
        for (int i = 0; i < count; ++i)
            asked.push_back(answered_turn(1, 0x4B));
        return asked;
    }
    // Turns until a pass has ended; the identities that were asked for, silent ticks left out.
    std::vector<Identity> pass(std::uint32_t value = 1) {
        std::vector<Identity> asked;
        const int rotation = state.rotation;
        for (int i = 0; i < 500 && state.rotation == rotation && state.Com_Change == 1; ++i)
            if (const Identity object = answered_turn(value, 0x4B)) asked.push_back(object);
        return asked;
    }
};

std::vector<Identity> rows(int count) {
    std::vector<Identity> identities;
    for (int i = 0; i < count; ++i)
        identities.push_back(0x300000 + i * 0x100);
    return identities;
}

}  // namespace

TEST_F(Pages, PageOfTenRowsReadsRows1To9ThenRunsToRowsPlus5WithoutTraffic) {
    FakePage page("AN_SPEED");
    show(page.add_rows(9));
    ASSERT_EQ(page.rows(), 10);
    state.sub_Pointer = 1;
    EXPECT_EQ(turns(9), rows(9));
    EXPECT_EQ(state.sub_Pointer, 10);
    for (int position = 11; position <= 16; ++position) {
        EXPECT_EQ(turn(), 0);
        EXPECT_EQ(state.sub_Pointer, position);
    }
    EXPECT_EQ(state.rotation, 0);
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.rotation, 1);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(state.page, 1);
    EXPECT_EQ(turns(9), rows(9)) << "then the same page is read again";
    EXPECT_EQ(state.page, 0);
}

TEST_F(Pages, AfterThreePassesTheStatusLanesRunOnce) {
    FakePage page("AN_SPEED");
    show(page.add_rows(9));
    state.sub_Pointer = 1;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(pass(), rows(9));
    EXPECT_EQ(state.Com_Change, 0);
    EXPECT_EQ(state.rotation, 0);
    EXPECT_EQ(state.status_lane, 0);
    EXPECT_EQ(turn(), 0x260100);
}

TEST_F(Pages, ThreePassesAreEachOnTheNextVisiblePage) {
    FakePage speed("AN_SPEED");
    FakePage basic("Basic");
    FakePage motor("Motor");
    show(speed.add("600001", "uint16"));
    show(basic.add("600002", "uint16"));
    show(motor.add("600003", "uint16"));
    state.sub_Pointer = 1;
    EXPECT_EQ(pass(), std::vector<Identity>{0x600001});
    EXPECT_EQ(pass(), std::vector<Identity>{0x600002});
    EXPECT_EQ(pass(), std::vector<Identity>{0x600003});
    EXPECT_EQ(state.Com_Change, 0);
}

TEST_F(Pages, HeaderRowAsksNothingAndThePositionGoesOn) {
    FakePage page("AN_SPEED");
    show(page.add_rows(2));
    engine.page_opened();
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.sub_Pointer, 1);
    EXPECT_EQ(turn(), 0x300000);
}

TEST_F(Pages, FirstVisiblePageIsFoundCyclically) {
    FakePage page("Auto_Reverse");
    show(page.add_rows(1));
    state.page = 20;
    state.allow_add_pointer = 1;
    state.sub_Pointer = 15;
    EXPECT_EQ(turn(), 0x300000);
    EXPECT_EQ(state.page, 2);
    EXPECT_EQ(state.allow_add_pointer, 0);
}

TEST_F(Pages, NoVisiblePageGoesBackToTheStatusLanes) {
    FakePage page("AN_SPEED");
    engine.add_poll_window(page.add_rows(1));
    state.sub_Pointer = 1;
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.Com_Change, 0);
    EXPECT_EQ(state.status_lane, 0);
    EXPECT_EQ(state.sub_Pointer, 0);
}

TEST_F(Pages, HidingThePageInTheMiddleMovesOnToTheNext) {
    FakePage speed("AN_SPEED");
    FakePage basic("Basic");
    show(speed.add_rows(5));
    show(basic.add("600002", "uint16"));
    state.sub_Pointer = 1;
    turns(2);
    speed.set_visible(false);
    EXPECT_EQ(turn(), 0x600002);
}

TEST_F(Pages, EmptyPageIsPassedInSilence) {
    FakePage page("AN_SPEED");
    show(page);
    state.sub_Pointer = 1;
    EXPECT_TRUE(pass().empty());
    EXPECT_EQ(state.rotation, 1);
}

// --- read-once rows
// --------------------------------------------------------------------------------

TEST_F(Pages, ReadOnceRowIsReadWithMustFreshOrWhileEmptyAndNotAfter) {
    FakePage page("AN_SPEED");
    show(page.add("600001", "uint16", false).add("600002", "uint16"));
    state.sub_Pointer = 1;
    EXPECT_EQ(pass(), (std::vector<Identity>{0x600001, 0x600002})) << "must_fresh";
    EXPECT_FALSE(page.must_fresh) << "first place of both lists";
    EXPECT_EQ(pass(), std::vector<Identity>{0x600002});
    page.grid[1].value.clear();
    state.Com_Change = 1;
    EXPECT_EQ(pass(), (std::vector<Identity>{0x600001, 0x600002})) << "empty";
    state.Com_Change = 1;
    EXPECT_EQ(pass(), std::vector<Identity>{0x600002});
    page.must_fresh = true;
    EXPECT_EQ(pass(), (std::vector<Identity>{0x600001, 0x600002}));
}

TEST_F(Pages, ReadOnceRowThatIsNotReadCostsASilentTick) {
    FakePage page("AN_SPEED");
    show(page.add("600001", "uint16", false).add("600002", "uint16"));
    page.must_fresh = false;
    page.grid[1].value = "5";
    state.sub_Pointer = 1;
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(turn(), 0x600002);
}

TEST_F(Pages, UnansweredReadOnceRowIsAskedForAgainInTheNextPass) {
    FakePage page("AN_SPEED");
    show(page.add("600001", "uint16", false));
    page.must_fresh = false;
    state.sub_Pointer = 1;
    EXPECT_EQ(turn(), 0x600001);
    EXPECT_EQ(state.sub_Pointer, 2) << "the position goes on all the same";
    while (state.rotation == 0)
        turn();
    EXPECT_EQ(turn(), 0x600001);
}

TEST_F(Pages, EndOfAPassClearsTheMarkAtTheSamePositionOfAllWindows) {
    FakePage driver("Driver_CFG");  // place 6 of the polled windows
    Window io("DigitalIO");         // place 6 of all windows
    show(driver.add("600001", "uint16", false));
    engine.add_window(io);
    state.sub_Pointer = 1;
    EXPECT_EQ(pass(), std::vector<Identity>{0x600001});
    EXPECT_FALSE(io.must_fresh) << "the other window of that position";
    EXPECT_TRUE(driver.must_fresh) << "its own mark stays";
    EXPECT_EQ(pass(), std::vector<Identity>{0x600001}) << "so its read-once row is read again";
}

TEST_F(Pages, PassBehindTheLastEntryWrapsToTheFirst) {
    FakePage page("Download");
    show(page.add_rows(1));
    state.sub_Pointer = 1;
    pass();
    EXPECT_EQ(state.page, 0);
}

// --- answers
// -----------------------------------------------------------------------------------------

TEST_F(Pages, ValueGoesToTheRowByItsType) {
    FakePage page("AN_SPEED");
    show(page.add("600001", "int8").add("600002", "int16").add("600003", "uint32"));
    state.sub_Pointer = 1;
    turn(frame(0x600001, 0xFF, 0x4F));
    turn(frame(0x600002, 0x8000, 0x4B));
    turn(frame(0x600003, 0xFFFFFFFF, 0x43));
    EXPECT_EQ(page.value(1), "-1");
    EXPECT_EQ(page.value(2), "-32768");
    EXPECT_EQ(page.value(3), "4294967295");
    EXPECT_EQ(page.codes, (std::vector{11, 12, 4}));
}

TEST_F(Pages, AbortShowsQuestionMarksAndTheRowStaysInThePoll) {
    FakePage page("AN_SPEED");
    show(page.add("600001", "uint16"));
    state.sub_Pointer = 1;
    turn(frame(0x600001, 0x06020000, 0x80));
    EXPECT_EQ(page.value(1), "?????");
    while (state.rotation == 0)
        turn();
    EXPECT_EQ(turn(), 0x600001);
}

TEST_F(Pages, FirstRowThatMatchesTakesTheAnswer) {
    FakePage page("AN_SPEED");
    show(page.add("600001", "uint16").add("600001", "int16"));
    state.sub_Pointer = 2;
    turn(frame(0x600001, 7, 0x4B));
    EXPECT_EQ(page.value(1), "7");
    EXPECT_EQ(page.value(2), "");
}

TEST_F(Pages, LateAnswerGoesToItsOwnRow) {
    FakePage page("AN_SPEED");
    show(page.add_rows(3));
    state.sub_Pointer = 1;
    turn();
    turn(frame(0x300000, 5, 0x4B));
    EXPECT_EQ(page.value(1), "5");
    EXPECT_EQ(page.value(2), "");
}

TEST_F(Pages, RowWithoutTypeAsksNothing) {
    FakePage page("AN_SPEED");
    show(page.add("600001", "").add("600002", "uint16"));
    state.sub_Pointer = 1;
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(turn(), 0x600002);
}

TEST_F(Pages, SizeCodeOfTheRequestFollowsTheType) {
    FakePage page("AN_SPEED");
    show(page);
    for (const auto& [type, size] : {std::pair{"uint8", 1},
                                     {"int8", 1},
                                     {"uint16", 2},
                                     {"int16", 2},
                                     {"uint32", 4},
                                     {"int32", 4}}) {
        EXPECT_EQ(dictionary::read_key("600001", type), 0x60000100U + static_cast<unsigned>(size));
    }
}

// --- custom windows
// ------------------------------------------------------------------------------------

TEST_F(Pages, CustomWindowIsReadFromRow0ThroughItsLastPlusFourPositions) {
    FakeCustomWindow window("RS485");
    window.objects = {{0x2FE200, "uint16"}, {0x65100E, "uint16"}, {0x65100C, "uint8"}};
    show(window);
    ASSERT_EQ(window.get_ODS_Num(), 2);
    EXPECT_EQ(turn(frame(0x2FE200, 540, 0x4B)), 0x2FE200);
    EXPECT_EQ(turn(frame(0x65100E, 8, 0x4B)), 0x65100E);
    EXPECT_EQ(turn(frame(0x65100C, 1, 0x4F)), 0x65100C);
    EXPECT_EQ(window.writes, (std::vector<std::pair<int, double>>{{0, 540}, {1, 8}, {2, 1}}));
    EXPECT_EQ(state.sub_Pointer, 3);
    for (int position = 4; position <= 7; ++position) {
        EXPECT_EQ(turn(), 0);
        EXPECT_EQ(state.sub_Pointer, position);
    }
    EXPECT_EQ(state.rotation, 0);
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.rotation, 1);
}

TEST_F(Pages, CustomRowWithoutAnObjectAsksNothingAndThePositionGoesOn) {
    FakeCustomWindow window("RS485");
    window.objects = {{0, ""}, {0x65100E, "uint16"}};
    show(window);
    EXPECT_EQ(turn(), 0);
    EXPECT_EQ(turn(), 0x65100E);
}

TEST_F(Pages, CustomWindowWithoutRowsIsPassed) {
    FakeCustomWindow window("RS485");
    show(window);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(turn(), 0);
    EXPECT_EQ(state.rotation, 1);
}

TEST_F(Pages, RefusedCustomObjectDeliversNothing) {
    FakeCustomWindow window("RS485");
    window.objects = {{0x2FE200, "uint32"}};
    show(window);
    turn(frame(0x2FE200, 0x06020000, 0x80));
    EXPECT_TRUE(window.writes.empty());
}

TEST_F(Pages, CustomValueFollowsItsType) {
    FakeCustomWindow window("Homing2");
    window.objects = {{0x609800, "int8"}};
    show(window);
    turn(frame(0x609800, 0xEE, 0x4F));
    EXPECT_EQ(window.writes, (std::vector<std::pair<int, double>>{{0, -18}}));
}
