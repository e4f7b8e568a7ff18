// `.pft` files.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "base/file.h"
#include "base/gbk.h"
#include "base/temp_folder.h"
#include "position_grids.h"
#include "tools/position_table_file.h"

namespace servo::tools {
namespace {

const std::string kZeros = ",0,0,0,0,0,0,0,0\r\n";

std::string cleared_file() {
    std::string text;
    for (int i = 0; i < 32; ++i)
        text += std::to_string(i) + kZeros;
    text += "\r\n";
    for (int i = 0; i < 8; ++i)
        text += std::to_string(i) + ",0,0\r\n";
    return text;
}

PositionGrids taken(std::string_view bytes) {
    PositionGrids grids = cleared_grids();
    take_position_file(bytes, grids, english_items());
    return grids;
}

TEST(PositionFile, AClearedTableHasTheseBytes) {
    EXPECT_EQ(position_file_bytes(cleared_grids()), cleared_file());
}

TEST(PositionFile, ARowIsWrittenInTheOrderOfTheFormat) {
    PositionGrids grids = cleared_grids();
    grids.MSHFlexGrid2.cells[4] = {"3", "RN", "Wait", "-1000", "12.50", "20",
                                   "1", "2",  "5104", "7",     "6"};
    grids.MSHFlexGrid1.cells[2] = {"1", "100.00", "50.25"};
    std::string told = cleared_file();
    const std::string row = "3" + kZeros;
    told.replace(told.find(row), row.size(), "3,-1000,12.50,20,1,2,5104,7,6\r\n");
    told.replace(told.find("\r\n1,0,0\r\n") + 2, 5, "1,100.00,50.25");
    EXPECT_EQ(position_file_bytes(grids), told);
}

TEST(PositionFile, WhatIsWrittenReadsBack) {
    PositionGrids grids = cleared_grids();
    for (int row = 1; row <= kPositionSteps; ++row) {
        for (const int column : {3, 4, 5, 6, 7, 9, 10})
            grids.MSHFlexGrid2.at(row, column) = std::to_string(row * 100 + column);
        const auto control = static_cast<std::uint16_t>(row * 2047);
        grids.MSHFlexGrid2.at(row, step_column::kCtlReg) = register_text(control);
        set_register_texts(grids.MSHFlexGrid2, row, control, english_items());
    }
    for (int row = 1; row <= kPositionRamps; ++row) {
        grids.MSHFlexGrid1.at(row, 1) = std::to_string(row) + ".50";
        grids.MSHFlexGrid1.at(row, 2) = std::to_string(row) + ".25";
    }
    PositionGrids back = cleared_grids();
    const PositionFileRows rows =
        take_position_file(position_file_bytes(grids), back, english_items());
    EXPECT_EQ(back, grids);
    EXPECT_EQ(rows.steps, 32);
    EXPECT_EQ(rows.ramps, 8);
    EXPECT_EQ(rows.skipped, 0);
    EXPECT_TRUE(rows.all_steps);
    EXPECT_TRUE(rows.all_ramps);
}

TEST(PositionFile, Idx31IsTakenAnd32IsSkipped) {
    const StepGrid steps = taken("31,1,2,3,4,5,6,7,8\r\n32,9,9,9,9,9,9,9,9\r\n").MSHFlexGrid2;
    EXPECT_EQ(steps.at(32, step_column::kPos), "1");
    EXPECT_EQ(steps.at(32, step_column::kRest), "8");
    for (int row = 1; row <= kPositionSteps; ++row)
        EXPECT_NE(steps.at(row, step_column::kPos), "9");
}

TEST(PositionFile, AnIndexBelow0NamesNoRow) {
    const PositionGrids grids = taken("-1,9,9,9,9,9,9,9,9\r\n-5,9,9,9,9,9,9,9,9\r\n\r\n-1,9,9\r\n");
    EXPECT_EQ(grids, cleared_grids()) << "the headings neither";
}

TEST(PositionFile, WithoutTheEmptyLineTheAccelerationsStay) {
    PositionGrids grids = cleared_grids();
    put_ramp(grids, 0, "77.00", "66.00");
    const PositionFileRows rows = take_position_file(
        "0,5,0,0,0,0,0,0,0\r\n0,1.00,2.00\r\n1,3.00,4.00\r\n", grids, english_items());
    EXPECT_EQ(grids.MSHFlexGrid1.at(1, 1), "77.00");
    EXPECT_EQ(grids.MSHFlexGrid1.at(1, 2), "66.00");
    EXPECT_EQ(grids.MSHFlexGrid2.at(1, step_column::kPos), "5");
    EXPECT_EQ(rows.skipped, 2);
    EXPECT_FALSE(rows.all_ramps);
}

TEST(PositionFile, TheFirstEmptyLineSwitchesForTheRestOfTheFile) {
    const PositionGrids grids =
        taken("\r\n0,1.00,2.00\r\n\r\n0,9,9,9,9,9,9,9,9\r\n7,3.00,4.00\r\n8,9,9\r\n");
    EXPECT_EQ(grids.MSHFlexGrid1.at(1, 1), "1.00");
    EXPECT_EQ(grids.MSHFlexGrid1.at(8, 2), "4.00");
    EXPECT_EQ(grids.MSHFlexGrid2, cleared_grids().MSHFlexGrid2);
}

TEST(PositionFile, AnotherNumberOfFieldsIsSkipped) {
    const PositionGrids grids = taken(
        "0,9,9,9,9,9,9,9\r\n1,9,9,9,9,9,9,9,9,9\r\n2\r\n \r\n"
        "3,1,1,1,1,1,1,1,1\r\n\r\n0,9\r\n1,9,9,9\r\n");
    EXPECT_EQ(grids.MSHFlexGrid2.at(4, step_column::kPos), "1");
    PositionGrids told = cleared_grids();
    told.MSHFlexGrid2.cells[4] = {"3", "A", "Ignore", "1", "1", "1", "1", "1", "1", "1", "1"};
    EXPECT_EQ(grids, told);
}

TEST(PositionFile, ANegativeRegisterIsBroughtIntoTheUnsignedRange) {
    const StepGrid steps = taken("0,0,0,0,0,0,A105,0,0\r\n1,0,0,0,0,0,FFFF,0,0\r\n").MSHFlexGrid2;
    EXPECT_EQ(steps.at(1, step_column::kCtlReg), "A105");
    EXPECT_EQ(steps.at(1, step_column::kMode), "RA");
    EXPECT_EQ(steps.at(1, step_column::kStartCond), "Interrupt");
    EXPECT_EQ(steps.at(2, step_column::kMode), "");
}

TEST(PositionFile, FieldsAreTakenAsTheyStand) {
    const StepGrid steps = taken("0, 1 ,x,,07,-3,00ff,1E3,rest\r\n").MSHFlexGrid2;
    EXPECT_EQ(steps.cells[1], (std::array<std::string, 11>{"0", "A", "Ignore", " 1 ", "x", "", "07",
                                                           "-3", "00ff", "1E3", "rest"}));
}

TEST(PositionFile, RestSurvivesExportAndImport) {
    PositionGrids grids = cleared_grids();
    grids.MSHFlexGrid2.at(9, step_column::kRest) = "123";
    EXPECT_EQ(taken(position_file_bytes(grids)).MSHFlexGrid2.at(9, step_column::kRest), "123");
}

TEST(PositionFile, LinesWithoutCrAndAFileWithoutAnEndAreTakenToo) {
    const PositionGrids grids = taken("0,5,0,0,0,0,0,0,0\n\n0,1.00,2.00");
    EXPECT_EQ(grids.MSHFlexGrid2.at(1, step_column::kPos), "5");
    EXPECT_EQ(grids.MSHFlexGrid1.at(1, 2), "2.00");
}

TEST(PositionFile, TheBytesAreOfTheCodePage) {
    PositionGrids grids = cleared_grids();
    grids.MSHFlexGrid2.at(1, step_column::kRest) = "位";
    const std::string bytes = position_file_bytes(grids);
    EXPECT_NE(bytes.find("0,0,0,0,0,0,0,0,\xCE\xBB\r\n"), std::string::npos);
    EXPECT_EQ(taken(bytes), grids);
}

TEST(PositionFile, AFailedWriteLeavesWhatWasThere) {
    const TempFolder folder;
    EXPECT_TRUE(write_position_file(folder / "a.pft", cleared_grids()));
    EXPECT_EQ(folder.get("a.pft"), cleared_file());
    EXPECT_FALSE(write_position_file(folder / "none" / "a.pft", cleared_grids()));
    EXPECT_EQ(folder.entries(), 1U);
}

TEST(PositionFile, AnyTableOfTheRightCharactersSurvives) {
    EXPECT_TRUE(rc::check([] {
        PositionGrids grids = cleared_grids();
        const auto cell = rc::gen::container<std::string>(
            rc::gen::elementOf(std::string("0123456789.-ABCxyz +E")));
        for (int row = 1; row <= kPositionSteps; ++row) {
            for (const int column : {3, 4, 5, 6, 7, 8, 9, 10})
                grids.MSHFlexGrid2.at(row, column) = *cell;
            set_register_texts(grids.MSHFlexGrid2, row,
                               register_of_text(grids.MSHFlexGrid2.at(row, step_column::kCtlReg)),
                               english_items());
        }
        RC_ASSERT(taken(position_file_bytes(grids)) == grids);
    }));
}

}  // namespace
}  // namespace servo::tools
