#include <gtest/gtest.h>

#include "direct_bench.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;

namespace {

struct Strings : testing::Test, DirectBench {
    Strings() {
        page.add("100800", "String").add("600002", "uint16");
        page.set_visible(true);
        engine.add_poll_window(page);
        state.Com_Change = 1;
        state.sub_Pointer = 1;
    }
    // A send tick: its command byte, 0 when silent. Then the answer.
    int step(const Payload& said) {
        state.sendmod = 0;
        const auto sent = tick();
        feed(said);
        tick();
        return sent ? (*sent)[0] : 0;
    }
    static Payload segment(std::uint8_t command, std::string_view text) {
        Payload payload{command};
        std::copy(text.begin(), text.end(), payload.begin() + 1);
        return payload;
    }
    const Payload begun = answer(0x100800, 3, 0x41);
    FakePage page{"AN_SPEED"};
};

}  // namespace

TEST_F(Strings, ThreeByteStringComesInOneSegment) {
    EXPECT_EQ(step(begun), 0x40);
    EXPECT_EQ(state.str_read_step, 1);
    EXPECT_EQ(state.is_access_str, 1);
    EXPECT_EQ(step(segment(0x09, "abc")), 0x60);
    EXPECT_EQ(page.value(1), "abc");
    EXPECT_EQ(state.str_read_step, 0);
    EXPECT_EQ(state.is_access_str, 0);
}

TEST_F(Strings, EmptyString) {
    page.grid[1].value = "old";
    step(begun);
    EXPECT_EQ(page.value(1), "") << "the cell is cleared when the string begins";
    step(segment(0x0F, "xxxxxxx"));
    EXPECT_EQ(page.value(1), "");
    EXPECT_EQ(state.is_access_str, 0);
}

TEST_F(Strings, LastSegmentOfSevenCharacters) {
    step(begun);
    step(segment(0x01, "abcdefg"));
    EXPECT_EQ(page.value(1), "abcdefg");
    EXPECT_EQ(state.is_access_str, 0);
}

TEST_F(Strings, TogglesAlternateAndTheCellShowsTheCharactersSoFar) {
    step(begun);
    EXPECT_EQ(step(segment(0x00, "abcdefg")), 0x60);
    EXPECT_EQ(page.value(1), "abcdefg");
    EXPECT_EQ(state.str_read_step, 2);
    EXPECT_EQ(step(segment(0x10, "hijklmn")), 0x70);
    EXPECT_EQ(state.str_read_step, 1);
    EXPECT_EQ(step(segment(0x00, "opqrstu")), 0x60);
    EXPECT_EQ(step(segment(0x1B, "vw")), 0x70);
    EXPECT_EQ(page.value(1), "abcdefghijklmnopqrstuvw");
    EXPECT_EQ(state.str_temp_string, "abcdefghijklmnopqrstuvw");
    EXPECT_EQ(state.str_read_step, 0);
}

TEST_F(Strings, LastSegmentAtStep2CountsFrom11) {
    for (int count = 0; count <= 7; ++count) {
        state = {};
        state.Com_Change = 1;
        state.sub_Pointer = 1;
        step(begun);
        step(segment(0x00, "abcdefg"));
        step(segment(static_cast<std::uint8_t>(0x11 + 2 * (7 - count)), "ABCDEFG"));
        EXPECT_EQ(page.value(1),
                  "abcdefg" + std::string("ABCDEFG").substr(0, static_cast<std::size_t>(count)));
    }
}

TEST_F(Strings, RepeatedAnswerToTheOtherToggleIsTakenAndTheStepStays) {
    step(begun);
    step(segment(0x10, "abcdefg"));
    EXPECT_EQ(state.str_read_step, 1);
    EXPECT_EQ(page.value(1), "abcdefg");
    step(segment(0x00, "hijklmn"));
    EXPECT_EQ(state.str_read_step, 2);
    step(segment(0x00, "hijklmn"));
    EXPECT_EQ(state.str_read_step, 2);
    EXPECT_EQ(page.value(1), "abcdefghijklmnhijklmn");
}

TEST_F(Strings, PaceRestartsWithEachNewSegment) {
    step(begun);
    state.segment_pace = 2;
    step(segment(0x10, "abcdefg"));
    EXPECT_EQ(state.segment_pace, 3) << "a repeat does not restart it";
    step(segment(0x00, "abcdefg"));
    EXPECT_EQ(state.segment_pace, 0);
    state.segment_pace = 2;
    step(segment(0x10, "abcdefg"));
    EXPECT_EQ(state.segment_pace, 0);
}

TEST_F(Strings, PositionMovesOnWhenTheStringEnds) {
    step(begun);
    EXPECT_EQ(state.sub_Pointer, 1);
    step(segment(0x09, "abc"));
    EXPECT_EQ(state.sub_Pointer, 1);
    EXPECT_EQ(state.allow_add_pointer, 1);
    EXPECT_EQ(turn(), 0x600002);
    EXPECT_EQ(state.allow_add_pointer, 0);
}

TEST_F(Strings, UnansweredRequestIsSentAgain) {
    EXPECT_EQ(turn(), 0x100800);
    EXPECT_EQ(turn(), 0x100800);
    EXPECT_EQ(state.sub_Pointer, 1);
    step(begun);
    std::string pattern;
    for (int i = 0; i < 8; ++i)
        pattern += turn() == 0x100800 ? 'S' : '-';
    EXPECT_EQ(pattern, "S--SS--S") << "segments at their pace";
    step(segment(0x09, "abc"));
    EXPECT_EQ(page.value(1), "abc");
}

TEST_F(Strings, RefusedStringShowsQuestionMarksAndThePositionMovesOn) {
    step(answer(0x100800, 0x06020000, 0x80));
    EXPECT_EQ(page.value(1), "?????");
    EXPECT_EQ(turn(), 0x600002);
}

TEST_F(Strings, AbortInTheMiddleEndsTheString) {
    step(begun);
    step(segment(0x00, "abcdefg"));
    step(answer(0x100800, 0x05030000, 0x80));
    EXPECT_EQ(page.value(1), "?????");
    EXPECT_EQ(state.str_read_step, 0);
    EXPECT_EQ(turn(), 0x600002);
}

TEST_F(Strings, ShortTextInOneAnswerIsTaken) {
    step(Payload{0x43, 0x08, 0x10, 0x00, 'd', 'r', 'i', 'v'});
    EXPECT_EQ(page.value(1), "driv");
    EXPECT_EQ(turn(), 0x600002);
}

TEST_F(Strings, EchoOfASegmentRequestIsNoPartOfTheString) {
    step(begun);
    step(answer(0x100800, 0, 0x60));
    EXPECT_EQ(page.value(1), "");
    EXPECT_EQ(state.str_read_step, 1);
}

TEST_F(Strings, OtherAnswersInTheMiddleGoToTheirRows) {
    step(begun);
    step(answer(0x600002, 7, 0x4B));
    EXPECT_EQ(page.value(2), "7");
    EXPECT_EQ(state.str_read_step, 1);
    step(segment(0x09, "abc"));
    EXPECT_EQ(page.value(1), "abc");
}

TEST_F(Strings, SegmentThatNobodyAskedForIsDropped) {
    page.grid[2].index = "636261";  // what its characters would read as
    step(segment(0x00, "abcdefg"));
    step(segment(0x0B, "bac"));
    EXPECT_EQ(page.value(1), "");
    EXPECT_EQ(page.value(2), "");
}

TEST_F(Strings, SegmentsOfAStringReadOnceFillAMustNotBeTakenForAFilledCell) {
    page.grid[1].number = "0*";
    page.must_fresh = false;
    step(begun);
    EXPECT_EQ(step(segment(0x00, "abcdefg")), 0x60);
    EXPECT_EQ(step(segment(0x1D, "h")), 0x70) << "the cell is no longer empty, the string not read";
    EXPECT_EQ(page.value(1), "abcdefgh");
    while (state.rotation == 0)
        turn();
    EXPECT_EQ(turn(), 0) << "now it is, and is not read again";
    EXPECT_EQ(turn(), 0x600002);
}

TEST_F(Strings, AnotherStringRowBeginsWithAFirstRequest) {
    page.grid[2] = {"1", "100900", "String", {}};
    step(begun);
    step(segment(0x00, "abcdefg"));
    ASSERT_EQ(state.str_read_step, 2);
    state.sub_Pointer = 2;  // the user opened the page anew in the middle
    EXPECT_EQ(step(answer(0x100900, 3, 0x41)), 0x40);
    EXPECT_EQ(state.str_temp_string, "");
}

TEST_F(Strings, RowRemovedInTheMiddleSpoilsNoOtherCell) {
    step(begun);
    step(segment(0x00, "abcdefg"));
    page.grid.erase(page.grid.begin() + 1);
    state.sendmod = 1;
    feed(segment(0x19, "xyz"));
    tick();
    EXPECT_EQ(page.value(1), "");
}

TEST_F(Strings, LateBeginningOfAnotherStringChangesNothing) {
    page.grid.push_back({"2", "100900", "String", "kept"});
    step(begun);
    step(answer(0x100900, 3, 0x41));
    EXPECT_EQ(page.value(3), "kept");
    step(segment(0x09, "abc"));
    EXPECT_EQ(page.value(1), "abc");
}

TEST_F(Strings, SegmentedAnswerToANumberRowDoesNotDisturbTheNextString) {
    state.sub_Pointer = 2;
    page.grid.push_back({"2", "100900", "String", {}});
    step(answer(0x600002, 3, 0x41));
    EXPECT_EQ(page.value(2), "");
    EXPECT_EQ(step(answer(0x100900, 3, 0x41)), 0x40);
}

TEST_F(Strings, TwoRowsOfTheSameStringDoNotHoldTheWheelUp) {
    page.grid[2] = {"1", "100800", "String", {}};
    step(begun);
    step(segment(0x09, "abc"));
    EXPECT_EQ(step(begun), 0x40);
    EXPECT_EQ(step(segment(0x09, "abd")), 0x60);
    EXPECT_EQ(page.value(1), "abd") << "the first row that matches";
    turn();
    EXPECT_GT(state.sub_Pointer, 2);
}

TEST_F(Strings, TimeOutForgetsTheString) {
    step(begun);
    state.miss_count = 349;
    turn();
    EXPECT_EQ(state.str_read_step, 0);
}
