// The control register: fields, texts, and the grids that show it.
#include <gtest/gtest.h>

#include <set>

#include "position_grids.h"
#include "tools/position_table_register.h"

namespace servo::tools {
namespace {

TEST(PositionRegister, ComposeAndDecodeOfAllValuesAreInverse) {
    std::set<RegisterValues> seen;
    for (int value = 0; value < 0x10000; ++value) {
        const auto control = static_cast<std::uint16_t>(value);
        const RegisterValues fields = decode_register(control);
        ASSERT_EQ(compose_register(fields), control);
        ASSERT_TRUE(seen.insert(fields).second);
    }
}

TEST(PositionRegister, AllValuesSurviveTheGrid) {
    PositionGrids grids = cleared_grids();
    for (int value = 0; value < 0x10000; ++value) {
        const auto control = static_cast<std::uint16_t>(value);
        update_CTL_REG(grids, 7, control, english_items());
        ASSERT_EQ(compose_from_grid(grids.MSHFlexGrid3), control);
        ASSERT_EQ(register_of_text(grids.MSHFlexGrid2.at(7, step_column::kCtlReg)), control);
    }
}

TEST(PositionRegister, EachFieldHasItsBits) {
    struct Told {
        int field;
        int value;
        std::uint16_t control;
    };
    for (const auto& [field, value, control] :
         {Told{0, 31, 0x001F}, Told{1, 1, 0x0020}, Told{2, 1, 0x0040}, Told{3, 1, 0x0080},
          Told{4, 1, 0x0100}, Told{5, 1, 0x0200}, Told{6, 1, 0x0400}, Told{7, 1, 0x0800},
          Told{8, 2, 0x2000}, Told{9, 2, 0x8000}}) {
        RegisterValues fields{};
        fields[static_cast<std::size_t>(field)] = value;
        EXPECT_EQ(compose_register(fields), control) << field;
        EXPECT_EQ(decode_register(control), fields) << field;
    }
}

TEST(PositionRegister, AnEntryOf32ForTheNextStepLandsAs0) {
    RegisterValues fields{};
    fields[register_field::kNext] = 32;
    fields[register_field::kGoOn] = 1;
    EXPECT_EQ(compose_register(fields), 0x0100);
}

TEST(PositionRegister, AFieldOf3HasNoItem) {
    StepGrid steps = cleared_grids().MSHFlexGrid2;
    set_register_texts(steps, 1, 0xF000, english_items());
    EXPECT_EQ(steps.at(1, step_column::kMode), "");
    EXPECT_EQ(steps.at(1, step_column::kStartCond), "");
}

TEST(PositionRegister, ItemsFollowBits12To15) {
    StepGrid steps = cleared_grids().MSHFlexGrid2;
    set_register_texts(steps, 1, 0x1000, english_items());
    EXPECT_EQ(steps.at(1, step_column::kMode), "RN");
    EXPECT_EQ(steps.at(1, step_column::kStartCond), "Ignore");
    set_register_texts(steps, 2, 0x6FFF, combo2_items(base::Language::kChinese));
    EXPECT_EQ(steps.at(2, step_column::kMode), "RA");
    EXPECT_EQ(steps.at(2, step_column::kStartCond), "等待");
    set_register_texts(steps, 3, 0x8000, english_items());
    EXPECT_EQ(steps.at(3, step_column::kMode), "A");
    EXPECT_EQ(steps.at(3, step_column::kStartCond), "Interrupt");
}

TEST(PositionRegister, ANegativeTextIsBroughtIntoTheUnsignedRange) {
    EXPECT_EQ(register_of_text("8000"), 0x8000);
    EXPECT_EQ(register_of_text("FFFF"), 0xFFFF);
    EXPECT_EQ(register_of_text("c1e5"), 0xC1E5);
}

TEST(PositionRegister, TextsOfOtherLengthsGiveTheirLow16Bits) {
    EXPECT_EQ(register_of_text(""), 0);
    EXPECT_EQ(register_of_text("0"), 0);
    EXPECT_EQ(register_of_text("0102"), 0x0102);
    EXPECT_EQ(register_of_text("18000"), 0x8000);
    EXPECT_EQ(register_of_text("FFFFFFFF"), 0xFFFF);
    EXPECT_EQ(register_of_text("80001234"), 0x1234);
    EXPECT_EQ(register_of_text("123456789"), 0x6789);
    EXPECT_EQ(register_of_text("xyz"), 0);
}

TEST(PositionRegister, TheTextIsUpperCaseWithoutPrefixOrZeros) {
    EXPECT_EQ(register_text(0), "0");
    EXPECT_EQ(register_text(0x0a), "A");
    EXPECT_EQ(register_text(0xC1E5), "C1E5");
}

TEST(PositionRegister, UpdateWritesRow2AndThreeColumnsOfTheRow) {
    PositionGrids grids = cleared_grids();
    const PositionGrids before = grids;
    update_CTL_REG(grids, 5, 0x9F05, english_items());
    EXPECT_EQ(grids.MSHFlexGrid2.at(5, step_column::kMode), "RN");
    EXPECT_EQ(grids.MSHFlexGrid2.at(5, step_column::kStartCond), "Interrupt");
    EXPECT_EQ(grids.MSHFlexGrid2.at(5, step_column::kCtlReg), "9F05");
    const std::array<std::string, 10> told{"5", "0", "0", "0", "1", "1", "1", "1", "1", "2"};
    EXPECT_EQ(grids.MSHFlexGrid3.cells[register_row::kValues], told);
    for (int row = 1; row <= kPositionSteps; ++row) {
        const auto at = static_cast<std::size_t>(row);
        if (row == 5) continue;
        EXPECT_EQ(grids.MSHFlexGrid2.cells[at], before.MSHFlexGrid2.cells[at]);
    }
}

TEST(PositionRegister, FractionsInTheGridRoundHalvesToEven) {
    PositionGrids grids = cleared_grids();
    grids.MSHFlexGrid3.at(register_row::kValues, register_field::kNext) = "2.5";
    EXPECT_EQ(compose_from_grid(grids.MSHFlexGrid3), 2);
    grids.MSHFlexGrid3.at(register_row::kValues, register_field::kNext) = "3.5";
    EXPECT_EQ(compose_from_grid(grids.MSHFlexGrid3), 4);
}

TEST(PositionGrids, AreBuiltWithTheirHeadings) {
    const PositionGrids grids = cleared_grids();
    const std::array<std::string, 11> english{"Idx",       "MODE",     "StartCond.", "Pos inc",
                                              "Speed rpm", "Delay ms", "Acc idx",    "Dec idx",
                                              "CTL Reg",   "Loops",    "Rest"};
    EXPECT_EQ(grids.MSHFlexGrid2.cells[0], english);
    EXPECT_EQ(grids.MSHFlexGrid1.cells[0],
              (std::array<std::string, 3>{"Idx", "Acc rps/s", "Dec rps/s"}));
    EXPECT_EQ(grids.MSHFlexGrid3.at(0, 0), "CTL Reg of index:0");
    EXPECT_EQ(grids.MSHFlexGrid3.at(0, 9), "CTL Reg of index:0");
    const std::array<std::string, 10> fields{"Bit0-4:Next Index",
                                             "Bit5",
                                             "Bit6",
                                             "Bit7",
                                             "Bit8:Next/Stop",
                                             "Bit9:Cond 0",
                                             "Bit10:Cond 1",
                                             "Bit11:And/Or",
                                             "Bit12-13:MODE",
                                             "Bit14-15:StartCond."};
    EXPECT_EQ(grids.MSHFlexGrid3.cells[register_row::kNames], fields);
}

TEST(PositionGrids, HaveChineseHeadingsToo) {
    PositionGrids grids = cleared_grids();
    set_headings(grids, 32, base::Language::kChinese);
    const std::array<std::string, 11> chinese{"Idx",        "模式",   "触发",    "位置inc",
                                              "速度rpm",    "延时ms", "Acc索引", "Dec索引",
                                              "控制寄存器", "循环",   "剩余"};
    EXPECT_EQ(grids.MSHFlexGrid2.cells[0], chinese);
    EXPECT_EQ(grids.MSHFlexGrid1.at(0, 1), "加速度rps/s");
    EXPECT_EQ(grids.MSHFlexGrid1.at(0, 2), "减速度rps/s");
    EXPECT_EQ(grids.MSHFlexGrid3.at(0, 3), "控制寄存器:31");
    const std::array<std::string, 10> fields{
        "位0-4:下一个", "位5",        "位6",        "位7",          "位8:继续/停止",
        "位9:条件0",    "位10:条件1", "位11:与/或", "位12-13:模式", "位14-15:触发"};
    EXPECT_EQ(grids.MSHFlexGrid3.cells[register_row::kNames], fields);
}

TEST(PositionGrids, ClearGivesIndexesFirstItemsAndZeros) {
    PositionGrids grids = cleared_grids();
    for (auto& row : grids.MSHFlexGrid2.cells)
        row.fill("x");
    for (auto& row : grids.MSHFlexGrid1.cells)
        row.fill("x");
    clear_grids(grids, combo2_items(base::Language::kChinese));
    EXPECT_EQ(
        grids.MSHFlexGrid2.cells[32],
        (std::array<std::string, 11>{"31", "A", "忽略", "0", "0", "0", "0", "0", "0", "0", "0"}));
    EXPECT_EQ(grids.MSHFlexGrid1.cells[8], (std::array<std::string, 3>{"7", "0", "0"}));
    EXPECT_EQ(grids.MSHFlexGrid3.at(2, 9), "0");
    EXPECT_EQ(grids.MSHFlexGrid2.at(0, 3), "x") << "headings stay";
}

}  // namespace
}  // namespace servo::tools
