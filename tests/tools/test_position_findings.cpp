// What is told of a table before it runs.
#include <gtest/gtest.h>

#include <algorithm>

#include "position_grids.h"
#include "tools/position_table_findings.h"

namespace servo::tools {
namespace {

struct FindingsTest : testing::Test {
    FindingsTest() { put_ramp(grids, 0, "100", "100"); }

    std::vector<Finding> found(int start = 0, double resolution = 10000) const {
        const PositionProgram program = read_program(grids);
        return find_faults(grids, program, analyse_flow(program, start), resolution);
    }
    std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (const Finding& finding : found())
            all.push_back(finding_text(finding, base::Language::kEnglish));
        return all;
    }
    bool told(const std::string& text) const { return std::ranges::count(texts(), text) == 1; }

    PositionGrids grids = cleared_grids();
};

TEST_F(FindingsTest, AGoodTableHasOneNote) {
    put_step(grids, 0, {.next = 1});
    put_step(grids, 1, {.target = 0});
    EXPECT_EQ(texts(), std::vector<std::string>{"Step 1: the table stops here."});
    EXPECT_EQ(found().front().severity, Severity::kNote);
}

TEST_F(FindingsTest, AnEmptyStart) {
    EXPECT_EQ(texts(), std::vector<std::string>{"Step 0: the start step is empty: nothing moves."});
}

TEST_F(FindingsTest, ALinkToAnEmptyStep) {
    put_step(grids, 0, {.next = 7});
    EXPECT_TRUE(told("Step 0: goes on to step 7, which is empty."));
    EXPECT_EQ(found().front().severity, Severity::kFault);
    EXPECT_EQ(found().front().step, 0);
}

TEST_F(FindingsTest, AStepThatLeadsToItself) {
    put_step(grids, 0, {.next = 0});
    EXPECT_TRUE(told("Step 0: goes on to itself: it repeats without end."));
}

TEST_F(FindingsTest, ADeadEnd) {
    put_step(grids, 0, {});
    grids.MSHFlexGrid2.at(1, step_column::kCtlReg) = "4";
    EXPECT_TRUE(told("Step 0: next index 4 is set, but bit 8 is 0: the table stops here."));
}

TEST_F(FindingsTest, StepsThatAreNeverReached) {
    put_step(grids, 0, {});
    put_step(grids, 3, {.next = 0});
    EXPECT_TRUE(told("Step 3: never reached from step 0."));
}

TEST_F(FindingsTest, ALoop) {
    put_step(grids, 0, {.next = 1});
    put_step(grids, 1, {.target = 0, .next = 0});
    EXPECT_EQ(texts(), std::vector<std::string>{"Step 0: loop: 0 → 1 → 0, without an end."});
}

TEST_F(FindingsTest, ALoopThatRunsAway) {
    put_step(grids, 0, {.target = 500, .next = 1, .mode = StepMode::kRelativeToDemand, .loops = 3});
    put_step(grids, 1, {.target = -200, .next = 0, .mode = StepMode::kRelativeToActual});
    EXPECT_TRUE(told("Step 0: each round moves 1300 inc further: the axis runs away."));
    grids.MSHFlexGrid2.at(2, step_column::kPos) = "-1500";
    EXPECT_EQ(texts().size(), 1U) << "comes back";
}

TEST_F(FindingsTest, AStepThatRepeatsItselfRunsAwayToo) {
    put_step(grids, 0, {.target = 500, .next = 0, .mode = StepMode::kRelativeToDemand});
    EXPECT_TRUE(told("Step 0: each round moves 500 inc further: the axis runs away."));
}

TEST_F(FindingsTest, Conditions) {
    put_step(grids, 0, {.next = 1, .start = 1});
    put_step(grids, 1, {.next = 2, .start = 2});
    put_step(grids, 2, {.next = 3, .condition0 = true});
    put_step(grids, 3, {.start = 3});
    EXPECT_TRUE(told("Step 0: waits, but no condition is chosen."));
    EXPECT_TRUE(told("Step 1: starts by interrupt, but no condition is chosen."));
    EXPECT_TRUE(told("Step 2: has a condition, but the start condition is Ignore."));
    EXPECT_TRUE(told("Step 3: bits 14 and 15 are 3: not defined."));
}

TEST_F(FindingsTest, AModeThatIsNone) {
    put_step(grids, 0, {.mode = StepMode::kUndefined});
    EXPECT_TRUE(told("Step 0: bits 12 and 13 are 3: not defined."));
}

TEST_F(FindingsTest, BitsWithoutAMeaning) {
    put_step(grids, 0, {});
    grids.MSHFlexGrid2.at(1, step_column::kCtlReg) = "20";
    EXPECT_TRUE(told("Step 0: bits 5 to 7 are set; what they do is not known here."));
}

TEST_F(FindingsTest, StepsThatCannotRun) {
    put_step(grids, 0, {.next = 1, .speed = "0"});
    put_step(grids, 1, {.next = 2, .ramp = 3});
    put_step(grids, 2, {.ramp = 9});
    EXPECT_TRUE(told("Step 0: speed 0: the step cannot run."));
    EXPECT_TRUE(told("Step 1: acceleration 3 is not above 0."));
    EXPECT_TRUE(told("Step 1: deceleration 3 is not above 0."));
    EXPECT_TRUE(told("Step 2: Acc idx 9 does not exist."));
}

TEST_F(FindingsTest, AStepWithoutAWayNeedsASpeedToo) {
    put_step(grids, 0,
             {.target = 0, .mode = StepMode::kRelativeToDemand, .speed = "0", .delay = 5});
    EXPECT_TRUE(told("Step 0: speed 0: the step cannot run."));
}

TEST_F(FindingsTest, AStepThatInterruptsItself) {
    put_step(grids, 0, {.next = 0, .start = 2, .condition0 = true});
    EXPECT_TRUE(told("Step 0: interrupts itself: it begins anew as long as its condition holds."));
    EXPECT_EQ(found().front().severity, Severity::kFault);
}

TEST_F(FindingsTest, TextsThatAreNoNumbers) {
    put_step(grids, 0, {});
    grids.MSHFlexGrid2.at(1, step_column::kDelay) = "12ms";
    EXPECT_TRUE(told("Step 0: Delay ms is no plain number and reads as 12."));
}

TEST_F(FindingsTest, ValuesThatTheDriveCannotHold) {
    put_step(grids, 0, {});
    grids.MSHFlexGrid2.at(1, step_column::kPos) = "2147483648";
    grids.MSHFlexGrid2.at(1, step_column::kDelay) = "65536";
    grids.MSHFlexGrid2.at(1, step_column::kLoops) = "-1";
    grids.MSHFlexGrid2.at(1, step_column::kSpeed) = "1000000";
    EXPECT_TRUE(told("Step 0: Pos inc is beyond what the drive can hold."));
    EXPECT_TRUE(told("Step 0: Delay ms is beyond what the drive can hold."));
    EXPECT_TRUE(told("Step 0: Loops is beyond what the drive can hold."));
    EXPECT_TRUE(told("Step 0: Speed rpm is beyond what the drive can hold."));
}

TEST_F(FindingsTest, WhatHangsOnTheEncoderIsNotLookedAtWithoutIt) {
    put_step(grids, 0, {.speed = "1000000"});
    put_ramp(grids, 0, "99999999", "1");
    EXPECT_EQ(found(0, 0).size(), 1U);
    const auto all = found();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].ramp, 0);
    EXPECT_EQ(finding_text(all[0], base::Language::kEnglish),
              "entry 0 of the ramps is beyond what the drive can hold.");
}

TEST_F(FindingsTest, TheWorstComesFirst) {
    put_step(grids, 0, {.next = 1, .condition0 = true});
    put_step(grids, 1, {.next = 9});
    const auto all = found();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].severity, Severity::kFault);
    EXPECT_EQ(all[1].severity, Severity::kNote);
}

TEST_F(FindingsTest, AreToldInChineseToo) {
    put_step(grids, 0, {.next = 9});
    EXPECT_EQ(finding_text(found().front(), base::Language::kChinese),
              "第 0 段：转到第 9 段，该段为空。");
    EXPECT_EQ(severity_word(Severity::kFault, base::Language::kChinese), "✖ 错误");
}

}  // namespace
}  // namespace servo::tools
