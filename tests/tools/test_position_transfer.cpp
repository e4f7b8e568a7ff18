// Cells and the drive's values: places, conversions, the list of objects.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>

#include "base/file.h"
#include "base/number.h"
#include "position_grids.h"
#include "tools/position_table_transfer.h"

namespace servo::tools {
namespace {

constexpr double kE = 10000;

std::string shipped() {
    return base::read_file(SERVO_SOURCE_DIR "/data/sys/PosFlow.cdo").value_or("");
}

PositionGrids taken(int line, double value, double resolution = kE) {
    PositionGrids grids = cleared_grids();
    put_value(grids, line, value, resolution, english_items());
    return grids;
}

TEST(PositionTransfer, TheShippedListHas208Keys) {
    const auto list = parse_transfer_list(shipped());
    ASSERT_TRUE(list.has_value());
    EXPECT_EQ(list->front(), 0x31000104U);
    EXPECT_EQ((*list)[7], 0x31000804U);
    EXPECT_EQ((*list)[8], 0x31010104U);
    EXPECT_EQ((*list)[80], 0x31040102U);
    EXPECT_EQ((*list)[112], 0x31050102U);
    EXPECT_EQ(list->back(), 0x31072001U);
    EXPECT_EQ(std::set(list->begin(), list->end()).size(), 208U);
}

TEST(PositionTransfer, TheShippedKeysHaveTheWidthsOfTheirLines) {
    const auto list = parse_transfer_list(shipped());
    ASSERT_TRUE(list.has_value());
    for (int line = 0; line < kTransferLines; ++line) {
        const auto size = (*list)[static_cast<std::size_t>(line)] & 0xFF;
        const int decoder = transfer_decoder(line);
        EXPECT_EQ(size, decoder == 14 ? 4U : static_cast<unsigned>(decoder)) << line;
    }
}

TEST(PositionTransfer, BlanksInALineDoNotCount) {
    std::string text = shipped();
    text.replace(0, 8, " 3100 01 20 ");
    const auto list = parse_transfer_list(text);
    ASSERT_TRUE(list.has_value());
    EXPECT_EQ(list->front(), 0x31000104U);
}

TEST(PositionTransfer, CrLfLinesAreTakenToo) {
    std::string text;
    for (const char c : shipped())
        text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(parse_transfer_list(text), parse_transfer_list(shipped()));
}

TEST(PositionTransfer, SizeCodesInPlaceOfBitsAreTakenToo) {
    std::string text = shipped();
    text.replace(0, 8, "31000104");
    EXPECT_EQ(parse_transfer_list(text), parse_transfer_list(shipped()));
}

TEST(PositionTransfer, AListWithAGapIsNone) {
    const std::string good = shipped();
    EXPECT_FALSE(parse_transfer_list("").has_value());
    EXPECT_FALSE(parse_transfer_list(good.substr(0, good.size() - 9)).has_value());
    for (const char* wrong : {"", "3100012", "310001203", "31000121", "3100O120", "0x310001"}) {
        std::string text = good;
        text.replace(9, 8, wrong);
        EXPECT_FALSE(parse_transfer_list(text).has_value()) << wrong;
    }
    EXPECT_TRUE(parse_transfer_list(good + "\nwhatever\n").has_value());
}

// The told table of lines, written out.
TEST(PositionTransfer, EachLineHasItsCell) {
    std::set<std::tuple<bool, int, int>> cells;
    for (int line = 0; line < kTransferLines; ++line) {
        const TransferCell cell = transfer_cell(line);
        const bool ramp = line < 16;
        EXPECT_TRUE(cells.insert({ramp, cell.row, cell.column}).second) << line;
        if (line <= 7) {
            EXPECT_EQ(cell.row, line + 1);
            EXPECT_EQ(cell.column, 1);
        } else if (line <= 15) {
            EXPECT_EQ(cell.row, line - 7);
            EXPECT_EQ(cell.column, 2);
        } else if (line <= 47) {
            EXPECT_EQ(cell.row, line - 15);
            EXPECT_EQ(cell.column, 3);
        } else if (line <= 79) {
            EXPECT_EQ(cell.row, line - 47);
            EXPECT_EQ(cell.column, 4);
        } else if (line <= 111) {
            EXPECT_EQ(cell.row, line - 79);
            EXPECT_EQ(cell.column, 5);
        } else if (line <= 143) {
            EXPECT_EQ(cell.row, line - 111);
            EXPECT_EQ(cell.column, 8);
        } else if (line <= 175) {
            EXPECT_EQ(cell.row, line - 143);
            EXPECT_EQ(cell.column, 9);
        } else {
            EXPECT_EQ(cell.row, line - 175);
            EXPECT_EQ(cell.column, 6);
        }
    }
}

TEST(PositionTransfer, ASpeedOf0IsIn0BothDirections) {
    EXPECT_EQ(taken(48, 0).MSHFlexGrid2.at(1, step_column::kSpeed), "0.00");
    EXPECT_EQ(value_for_drive(taken(48, 0), 48, kE), 0);
    EXPECT_EQ(value_for_drive(cleared_grids(), 48, kE), 0);
}

TEST(PositionTransfer, SpeedsAndAccelerationsAreConvertedByTheEncoder) {
    // 512 * 10000 / 1875 steps for each rpm.
    EXPECT_EQ(taken(48, 2730667).MSHFlexGrid2.at(1, step_column::kSpeed), "1000.00");
    EXPECT_EQ(taken(48, -2730667).MSHFlexGrid2.at(1, step_column::kSpeed), "-1000.00");
    EXPECT_EQ(taken(0, 16384).MSHFlexGrid1.at(1, 1), "100.00");
    EXPECT_EQ(taken(15, 16384, 65536).MSHFlexGrid1.at(8, 2), "15.26");
    PositionGrids grids = cleared_grids();
    grids.MSHFlexGrid2.at(1, step_column::kSpeed) = "1000.00";
    grids.MSHFlexGrid1.at(1, 1) = "100";
    EXPECT_EQ(value_for_drive(grids, 48, kE), 2730667);
    EXPECT_EQ(value_for_drive(grids, 0, kE), 16384);
}

TEST(PositionTransfer, WithoutAnEncoderTheTextIs0) {
    EXPECT_EQ(taken(48, 123, 0).MSHFlexGrid2.at(1, step_column::kSpeed), "0.00");
    EXPECT_EQ(taken(0, 123, 0).MSHFlexGrid1.at(1, 1), "0.00");
}

TEST(PositionTransfer, CountsAndTargetsAreDecimal) {
    EXPECT_EQ(taken(16, -2147483648.0).MSHFlexGrid2.at(1, step_column::kPos), "-2147483648");
    EXPECT_EQ(taken(111, 65535).MSHFlexGrid2.at(32, step_column::kDelay), "65535");
    EXPECT_EQ(taken(144, 7).MSHFlexGrid2.at(1, step_column::kLoops), "7");
}

TEST(PositionTransfer, ARegisterFillsThreeColumns) {
    const StepGrid steps = taken(112, 0xA10A).MSHFlexGrid2;
    EXPECT_EQ(steps.at(1, step_column::kCtlReg), "A10A");
    EXPECT_EQ(steps.at(1, step_column::kMode), "RA");
    EXPECT_EQ(steps.at(1, step_column::kStartCond), "Interrupt");
    EXPECT_EQ(taken(143, 0xFFFF).MSHFlexGrid2.at(32, step_column::kMode), "");
}

TEST(PositionTransfer, WholeNumbersRoundHalvesToEven) {
    PositionGrids grids = cleared_grids();
    const auto target = [&](const char* text) {
        grids.MSHFlexGrid2.at(1, step_column::kPos) = text;
        return value_for_drive(grids, 16, kE);
    };
    EXPECT_EQ(target("0.5"), 0);
    EXPECT_EQ(target("1.5"), 2);
    EXPECT_EQ(target("2.5"), 2);
    EXPECT_EQ(target("-0.5"), 0);
    EXPECT_EQ(target("-1.5"), -2);
    EXPECT_EQ(target("-2.5"), -2);
    EXPECT_EQ(target("2.51"), 3);
}

TEST(PositionTransfer, WhatDoesNotFit32BitsIsTheNearestThatDoes) {
    PositionGrids grids = cleared_grids();
    grids.MSHFlexGrid2.at(1, step_column::kPos) = "2147483648";
    EXPECT_EQ(value_for_drive(grids, 16, kE), 2147483647);
    grids.MSHFlexGrid2.at(1, step_column::kPos) = "-1E300";
    EXPECT_EQ(value_for_drive(grids, 16, kE), -2147483647 - 1);
    grids.MSHFlexGrid2.at(1, step_column::kSpeed) = "2147483648";
    EXPECT_EQ(value_for_drive(grids, 48, kE), 2147483647);
    grids.MSHFlexGrid1.at(1, 1) = "1E999";
    EXPECT_EQ(value_for_drive(grids, 0, kE), 2147483647);
}

TEST(PositionTransfer, ANarrowObjectStillGetsAllOfTheNumber) {
    PositionGrids grids = cleared_grids();
    grids.MSHFlexGrid2.at(1, step_column::kLoops) = "70000";
    EXPECT_EQ(value_for_drive(grids, 144, kE), 70000) << "the drive decides";
}

TEST(PositionTransfer, TheRegisterIsSentUnsigned) {
    PositionGrids grids = cleared_grids();
    grids.MSHFlexGrid2.at(1, step_column::kCtlReg) = "8000";
    EXPECT_EQ(value_for_drive(grids, 112, kE), 0x8000);
}

TEST(PositionTransfer, TwoIndexesShareAByte) {
    for (int acc = 0; acc < 8; ++acc) {
        for (int dec = 0; dec < 8; ++dec) {
            PositionGrids grids = cleared_grids();
            grids.MSHFlexGrid2.at(32, step_column::kAccIdx) = std::to_string(acc);
            grids.MSHFlexGrid2.at(32, step_column::kDecIdx) = std::to_string(dec);
            const std::int32_t value = value_for_drive(grids, 207, kE);
            EXPECT_EQ(value, acc * 16 + dec);
            EXPECT_EQ(taken(207, value).MSHFlexGrid2, grids.MSHFlexGrid2);
        }
    }
}

// The high half is rounded like every number, so a low half of 8 and more lifts it.
TEST(PositionTransfer, ALowIndexOf8AndMoreLiftsTheHighOne) {
    const auto indexes = [](int value) {
        const StepGrid steps = taken(176, value).MSHFlexGrid2;
        return steps.at(1, step_column::kAccIdx) + "," + steps.at(1, step_column::kDecIdx);
    };
    EXPECT_EQ(indexes(0x07), "0,7");
    EXPECT_EQ(indexes(0x08), "0,8") << "a half, to the even neighbour";
    EXPECT_EQ(indexes(0x09), "1,9");
    EXPECT_EQ(indexes(0x18), "2,8");
    EXPECT_EQ(indexes(0x1F), "2,15");
    EXPECT_EQ(indexes(0xFF), "0,15") << "16, masked to four bits";
}

// --- Write, then read

struct Returned {
    double resolution;
    int ramps;   // of 10000 texts 0.01 to 100.00
    int speeds;  // of 10000 texts 0.01 to 100.00
};

// How many texts do not come back; the table of docs/decisions/position-table.md.
class PositionRoundTrip : public testing::TestWithParam<Returned> {};

TEST_P(PositionRoundTrip, LosesAsManyTextsAsTheTableSays) {
    const auto [resolution, ramps, speeds] = GetParam();
    int lost_ramps = 0;
    int lost_speeds = 0;
    double worst_ramp = 0;
    double worst_speed = 0;
    PositionGrids grids = cleared_grids();
    for (int hundredths = 1; hundredths <= 10000; ++hundredths) {
        const std::string text = base::format_fixed(hundredths / 100.0, 2);
        grids.MSHFlexGrid1.at(1, 1) = text;
        grids.MSHFlexGrid2.at(1, step_column::kSpeed) = text;
        put_value(grids, 0, value_for_drive(grids, 0, resolution), resolution, english_items());
        put_value(grids, 48, value_for_drive(grids, 48, resolution), resolution, english_items());
        const std::string& ramp = grids.MSHFlexGrid1.at(1, 1);
        const std::string& speed = grids.MSHFlexGrid2.at(1, step_column::kSpeed);
        lost_ramps += ramp == text ? 0 : 1;
        lost_speeds += speed == text ? 0 : 1;
        const auto off = [&](const std::string& other) {
            return std::abs(base::leading_number(other) - hundredths / 100.0);
        };
        worst_ramp = std::max(worst_ramp, off(ramp));
        worst_speed = std::max(worst_speed, off(speed));
    }
    EXPECT_EQ(lost_ramps, ramps);
    EXPECT_EQ(lost_speeds, speeds);
    // Half a step of the drive's number, and half of the last digit.
    EXPECT_LE(worst_ramp, ramp_from_drive(0.5, resolution) + 0.005 + 1e-9);
    EXPECT_LE(worst_speed, speed_from_drive(0.5, resolution) + 0.005 + 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Resolutions, PositionRoundTrip,
                         testing::Values(Returned{100, 9837, 7270}, Returned{1000, 8362, 0},
                                         Returned{2500, 5904, 0}, Returned{4096, 3289, 0},
                                         Returned{8192, 0, 0}, Returned{10000, 0, 0},
                                         Returned{65536, 0, 0}, Returned{131072, 0, 0}),
                         [](const auto& told) {
                             return "E" + std::to_string(static_cast<int>(told.param.resolution));
                         });

}  // namespace
}  // namespace servo::tools
