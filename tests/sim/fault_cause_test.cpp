// Causes of faults that are given to a running drive and taken away again, masks, and the lines of
// text that do it.
#include <gtest/gtest.h>

#include "sim/drive_bench.h"
#include "sim/input_lines.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int kEnabled = 4;
constexpr int kFault = 7;

class FaultCause : public ::testing::Test {
  protected:
    // Says the line and lets the drive look.
    void say(const char* line) {
        const LineAnswer answer = obey_line(bench.drive(), line);
        EXPECT_TRUE(answer.good) << answer.text;
        bench.run(milliseconds(2));
    }
    void reset() {
        bench.control(0x00);
        bench.control(0x80);
        bench.run(milliseconds(2));
    }
    std::int64_t get(dictionary::Identity id) { return bench.drive().value(id).value_or(-1); }
    std::int64_t word1() { return get(0x260100); }
    std::int64_t word2() { return get(0x260200); }
    std::int64_t state() { return get(0x2FFE00); }

    static std::vector<Entry> entries() {
        std::vector<Entry> all = bench_entries();
        all.push_back({"651006", "Unsigned16", "RW"});
        return all;
    }

    DriveBench bench{{}, entries()};
};

TEST_F(FaultCause, RaisesItsBitAndComesBackAfterEachReset) {
    say("fault 1 0002");
    EXPECT_EQ(word1(), 0x0002);
    EXPECT_EQ(state(), kFault);
    reset();
    EXPECT_EQ(word1(), 0x0002);
    EXPECT_EQ(state(), kFault);
    EXPECT_EQ(get(0x260700), 1) << "one fault, not one for each reset";
}

TEST_F(FaultCause, IsGoneWithTheLineAndItsFaultWithTheReset) {
    say("fault 1 0002");
    say("fault 2 0008");
    say("fault clear");
    EXPECT_EQ(word1(), 0x0002) << "latched";
    EXPECT_EQ(word2(), 0x0008);
    reset();
    EXPECT_EQ(word1(), 0);
    EXPECT_EQ(word2(), 0);
    EXPECT_NE(state(), kFault);
}

TEST_F(FaultCause, OneOfSeveralIsTakenAway) {
    say("fault 1 0006");
    say("fault clear 1 0002");
    reset();
    EXPECT_EQ(word1(), 0x0004);
    EXPECT_EQ(bench.drive().fault_causes1(), 0x0004);
}

TEST_F(FaultCause, ThatComesAndGoesIsResetAtOnce) {
    say("fault 1 0002 once");
    EXPECT_EQ(word1(), 0x0002);
    EXPECT_EQ(bench.drive().fault_causes1(), 0);
    reset();
    EXPECT_EQ(word1(), 0);
}

TEST_F(FaultCause, OfABitThatResetsItselfTakesItsFaultAlong) {
    bench.drive().set_value(0x260503, 0x0040);
    say("fault 1 0040");
    EXPECT_EQ(word1(), 0x0040);
    say("fault clear");
    EXPECT_EQ(word1(), 0);
    EXPECT_NE(state(), kFault);
}

TEST_F(FaultCause, StopsAMotorThatTurns) {
    bench.drive().set_value(0x60FF00, 2730667);
    bench.enable(3);
    bench.run(milliseconds(400));
    ASSERT_EQ(state(), kEnabled);
    say("fault 1 0002");
    EXPECT_EQ(state(), kFault);
    bench.run(milliseconds(2));
    EXPECT_EQ(get(0x607800), 0) << "no current";
}

TEST_F(FaultCause, KeepsAMotorFromBeingEnabled) {
    say("fault 2 0100");
    bench.enable(3);
    bench.run(milliseconds(5));
    EXPECT_EQ(state(), kFault);
}

TEST_F(FaultCause, ThatIsMaskedIsNotSeen) {
    ASSERT_TRUE(bench.write(0x260501, 0x0002, 2));
    ASSERT_TRUE(bench.write(0x260504, 0x0008, 2));
    say("fault 1 0002");
    say("fault 2 0008");
    EXPECT_EQ(word1(), 0);
    EXPECT_EQ(word2(), 0);
    EXPECT_EQ(get(0x260700), 0) << "nor remembered";
    EXPECT_NE(state(), kFault);
}

TEST_F(FaultCause, MaskTakenAwayShowsItWhileItStands) {
    ASSERT_TRUE(bench.write(0x260501, 0xFFFF, 2));
    say("fault 1 0002");
    EXPECT_EQ(word1(), 0);
    ASSERT_TRUE(bench.write(0x260501, 0, 2));
    bench.run(milliseconds(2));
    EXPECT_EQ(word1(), 0x0002);
}

TEST_F(FaultCause, MaskOfAFaultThatStandsLetsTheResetClearIt) {
    say("fault 1 0002");
    ASSERT_TRUE(bench.write(0x260501, 0x0002, 2));
    bench.run(milliseconds(2));
    EXPECT_EQ(word1(), 0x0002) << "what was latched stays latched";
    reset();
    EXPECT_EQ(word1(), 0);
    EXPECT_NE(state(), kFault);
}

TEST_F(FaultCause, MaskOfOneWordLeavesTheOther) {
    ASSERT_TRUE(bench.write(0x260501, 0xFFFF, 2));
    say("fault 2 0002");
    EXPECT_EQ(word2(), 0x0002);
}

TEST_F(FaultCause, StandsOverARestartAndIsRememberedAgain) {
    say("fault 1 0002");
    ASSERT_TRUE(bench.write(0x2FFF00, 0xAA55, 2));
    bench.run(milliseconds(1000));
    EXPECT_EQ(get(0x260700), 1) << "a drive without power sees nothing";
    bench.run(seconds(1));
    EXPECT_EQ(word1(), 0x0002);
    EXPECT_EQ(get(0x260700), 2);
}

TEST_F(FaultCause, HistoryTellsWordAndTimeOfEach) {
    say("fault 1 0200 once");
    reset();
    say("fault 2 0008 once");
    EXPECT_EQ(get(0x260700), 2);
    EXPECT_EQ(get(0x261001), 0x0000);
    EXPECT_EQ(get(0x261002), 0x0008);
    EXPECT_EQ(get(0x261101), 0x0200);
}

TEST_F(FaultCause, IsShownWithWordsAndMasks) {
    ASSERT_TRUE(bench.write(0x260504, 0x0100, 2));
    say("fault 1 0200");
    say("fault 2 0100");
    EXPECT_EQ(obey_line(bench.drive(), "fault").text,
              "faults 0200 0000, masked 0000 0100, causes 0200 0100");
}

TEST_F(FaultCause, LinesThatAreNotUnderstoodDoNothing) {
    for (const char* line : {"fault 1",
                             "fault 3 0001",
                             "fault 1 0",
                             "fault 1 0000",
                             "fault 1 10000",
                             "fault 1 xyz",
                             "fault 0200",
                             "fault 1 0200 twice",
                             "fault 1 0200 once more",
                             "fault clear 1",
                             "fault clear 1 0",
                             "fault clear all",
                             "fault clear 1 0200 0",
                             "Fault 1 0200",
                             "load",
                             "load x",
                             "load 1001",
                             "load nan",
                             "load 1 2",
                             "clamp",
                             "clamp 1",
                             "clamp on off"}) {
        const LineAnswer answer = obey_line(bench.drive(), line);
        EXPECT_FALSE(answer.good) << line;
        EXPECT_FALSE(answer.text.empty()) << line;
    }
    bench.run(milliseconds(2));
    EXPECT_EQ(word1(), 0);
    EXPECT_EQ(bench.drive().fault_causes1(), 0);
}

TEST_F(FaultCause, ClampedLoadMakesAFollowingError) {
    bench.drive().set_value(0x606500, 500);
    bench.drive().set_value(0x606600, 20);
    bench.enable(1);
    say("clamp on");
    bench.drive().set_value(0x607A00, 100000);
    bench.control(0x1F);
    ASSERT_TRUE(bench.run_until([this] { return word1() == 0x0200; }, seconds(2)));
    say("clamp off");
    bench.run(seconds(1));  // it stops by its ramp first
    reset();
    EXPECT_EQ(word1(), 0) << "the cause has gone";
}

TEST_F(FaultCause, LoadBeyondTheRatedTorqueIsAnOverload) {
    bench.enable(1);
    say("load 3");
    ASSERT_TRUE(bench.run_until([this] { return word1() != 0; }, seconds(60)));
    EXPECT_EQ(word1(), 0x0800);
}

TEST_F(FaultCause, LevelAboveTheSupplyIsAnUnderVoltageOnceEnabled) {
    ASSERT_TRUE(bench.write(0x651006, 320, 2));
    bench.run(milliseconds(10));
    EXPECT_EQ(word1(), 0);
    bench.enable(1);
    bench.run(milliseconds(3));
    EXPECT_EQ(get(0x261001), 0x0040) << "seen, and gone by itself with the power";
    EXPECT_EQ(word1(), 0);
    ASSERT_TRUE(bench.write(0x260503, 0, 2));
    bench.enable(1);
    bench.run(milliseconds(3));
    EXPECT_EQ(word1(), 0x0040);
}

TEST_F(FaultCause, LoadPushesAnAxisThatHasNoPower) {
    say("load 2.5");
    bench.run(milliseconds(200));
    EXPECT_LT(get(0x606300), -100);
    say("load 0");
}

TEST_F(FaultCause, HelpTellsOfTheLines) {
    const std::string help = obey_line(bench.drive(), "help").text;
    for (const char* word : {"fault clear", "once", "load", "clamp", "din"})
        EXPECT_NE(help.find(word), std::string::npos) << word;
}

}  // namespace
}  // namespace servo::sim::test
