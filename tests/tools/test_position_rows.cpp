// Rows as text, pasted and filled.
#include <gtest/gtest.h>

#include "position_grids.h"
#include "tools/position_table_rows.h"

namespace servo::tools {
namespace {

TEST(PositionRows, ACopyHasTabsAndAllColumns) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 1, {.target = -5, .next = 2, .mode = StepMode::kRelativeToDemand});
    EXPECT_EQ(copy_rows(grids.MSHFlexGrid2, 1, 2),
              "0\tA\tIgnore\t0\t0\t0\t0\t0\t0\t0\t0\n"
              "1\tRN\tIgnore\t-5\t600\t0\t0\t0\t1102\t0\t0\n");
    EXPECT_EQ(copy_rows(grids.MSHFlexGrid2, 33, 40), "");
}

TEST(PositionRows, APasteOfACopyGivesTheSameRowsElsewhere) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 0, {.target = 11, .next = 1});
    put_step(grids, 1, {.target = 22, .start = 2, .condition0 = true});
    StepGrid steps = grids.MSHFlexGrid2;
    const PasteResult result = paste_rows(steps, 31, copy_rows(steps, 1, 2), english_items());
    EXPECT_EQ(result.rows, 2);
    for (int column = 1; column < step_column::kCount; ++column) {
        EXPECT_EQ(steps.at(31, column), steps.at(1, column));
        EXPECT_EQ(steps.at(32, column), steps.at(2, column));
    }
    EXPECT_EQ(steps.at(31, 0), "30") << "Idx is not taken over";
}

TEST(PositionRows, AHeadingIsPassedOver) {
    StepGrid steps = cleared_grids().MSHFlexGrid2;
    std::string text = copy_rows(steps, 1, 1);
    text =
        "Idx\tMODE\tStartCond.\tPos inc\tSpeed rpm\tDelay ms\tAcc idx\tDec idx\tCTL "
        "Reg\tLoops\tRest\r\n" +
        text;
    EXPECT_EQ(paste_rows(steps, 1, text, english_items()).rows, 1);
}

TEST(PositionRows, NineCellsAreThoseOfAFile) {
    StepGrid steps = cleared_grids().MSHFlexGrid2;
    EXPECT_EQ(paste_rows(steps, 5, "0\t7\t1.5\t2\t3\t4\t2105\t6\t9\r\n", english_items()).rows, 1);
    EXPECT_EQ(steps.cells[5], (std::array<std::string, 11>{"4", "RA", "Ignore", "7", "1.5", "2",
                                                           "3", "4", "2105", "6", "9"}));
}

TEST(PositionRows, TheRegisterWinsOverTheTwoTexts) {
    StepGrid steps = cleared_grids().MSHFlexGrid2;
    EXPECT_EQ(paste_rows(steps, 1, "0\tRA\tWait\t0\t0\t0\t0\t0\t1000\t0\t0", english_items()).rows,
              1);
    EXPECT_EQ(steps.at(1, step_column::kMode), "RN");
    EXPECT_EQ(steps.at(1, step_column::kStartCond), "Ignore");
}

struct BadPaste {
    const char* name;
    const char* text;
    int line;
    int column;
};

class PositionBadPaste : public testing::TestWithParam<BadPaste> {};

TEST_P(PositionBadPaste, ChangesNothingAndSaysWhere) {
    StepGrid steps = cleared_grids().MSHFlexGrid2;
    const StepGrid before = steps;
    const PasteResult result = paste_rows(steps, 1, GetParam().text, english_items());
    EXPECT_EQ(result.rows, 0);
    EXPECT_EQ(result.bad_line, GetParam().line);
    EXPECT_EQ(result.bad_column, GetParam().column);
    EXPECT_EQ(steps, before);
    EXPECT_FALSE(paste_text(result, steps, base::Language::kEnglish).empty());
    EXPECT_FALSE(paste_text(result, steps, base::Language::kChinese).empty());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, PositionBadPaste,
    testing::Values(BadPaste{"Nothing", "", 0, 0}, BadPaste{"BlankLines", "\n \r\n", 0, 0},
                    BadPaste{"Prose", "hello", 1, 0},
                    BadPaste{"TenCells", "0\t0\t0\t0\t0\t0\t0\t0\t0\t0", 1, 0},
                    BadPaste{"DelayTooHigh", "0\t1\t1\t65536\t0\t0\t0\t0\t0", 1, 5},
                    BadPaste{"IndexTooHigh", "0\t1\t1\t0\t8\t0\t0\t0\t0", 1, 6},
                    BadPaste{"Letters", "0\tabc\t1\t0\t0\t0\t0\t0\t0", 1, 3},
                    BadPaste{"RegisterTooLong", "0\t1\t1\t0\t0\t0\t10000\t0\t0", 1, 8},
                    BadPaste{"SecondLine", "0\t1\t1\t0\t0\t0\t0\t0\t0\n1\t\t1\t0\t0\t0\t0\t0\t0", 2,
                             3}),
    [](const auto& bad) { return std::string(bad.param.name); });

TEST(PositionRows, MoreRowsThanThereAreChangeNothing) {
    StepGrid steps = cleared_grids().MSHFlexGrid2;
    const StepGrid before = steps;
    const PasteResult result = paste_rows(steps, 32, copy_rows(steps, 1, 2), english_items());
    EXPECT_TRUE(result.too_many);
    EXPECT_EQ(steps, before);
    EXPECT_NE(paste_text(result, steps, base::Language::kEnglish).find("Line 2"),
              std::string::npos);
}

TEST(PositionRows, FillDownGivesTheFirstCellToTheOthers) {
    StepGrid steps = cleared_grids().MSHFlexGrid2;
    steps.at(3, step_column::kSpeed) = "12.5";
    EXPECT_TRUE(fill_down(steps, 3, 5, step_column::kSpeed, english_items()));
    EXPECT_EQ(steps.at(4, step_column::kSpeed), "12.5");
    EXPECT_EQ(steps.at(5, step_column::kSpeed), "12.5");
    EXPECT_EQ(steps.at(6, step_column::kSpeed), "0");
    EXPECT_EQ(steps.at(2, step_column::kSpeed), "0");
}

TEST(PositionRows, FillDownOfTheModeMovesItsBitsAlone) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 0, {.next = 1, .mode = StepMode::kRelativeToActual});
    put_step(grids, 1, {.next = 5, .start = 1, .condition1 = true});
    StepGrid& steps = grids.MSHFlexGrid2;
    EXPECT_TRUE(fill_down(steps, 1, 2, step_column::kMode, english_items()));
    EXPECT_EQ(steps.at(2, step_column::kMode), "RA");
    EXPECT_EQ(steps.at(2, step_column::kStartCond), "Wait");
    EXPECT_EQ(steps.at(2, step_column::kCtlReg), "6505");
}

TEST(PositionRows, FillDownOfTheRegisterCarriesBothTexts) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 0, {.next = 1, .mode = StepMode::kRelativeToActual, .start = 2});
    EXPECT_TRUE(fill_down(grids.MSHFlexGrid2, 1, 2, step_column::kCtlReg, english_items()));
    EXPECT_EQ(grids.MSHFlexGrid2.at(2, step_column::kMode), "RA");
    EXPECT_EQ(grids.MSHFlexGrid2.at(2, step_column::kStartCond), "Interrupt");
}

TEST(PositionRows, NothingIsFilledFromHeadingsIndexesOrOneRow) {
    StepGrid steps = cleared_grids().MSHFlexGrid2;
    EXPECT_FALSE(fill_down(steps, 0, 4, step_column::kPos, english_items()));
    EXPECT_FALSE(fill_down(steps, 1, 4, step_column::kIdx, english_items()));
    EXPECT_FALSE(fill_down(steps, 2, 2, step_column::kPos, english_items()));
    EXPECT_FALSE(fill_down(steps, 2, 33, step_column::kPos, english_items()));
}

}  // namespace
}  // namespace servo::tools
