// Clicks, keys and entries.
#include <gtest/gtest.h>

#include "pos_flow_bench.h"

namespace servo::tools {
namespace {

using enum PosFlowBox;

TEST(PosFlowEditing, AClickSelectsTheRowAndDecodesItsRegister) {
    PosFlowForm bench;
    bench.form.import_file(bench.put_file("9,0,0,0,0,0,9F05,0,0\r\n"));
    bench.form.MSHFlexGrid2_Click(10, step_column::kIdx);
    EXPECT_EQ(bench.form.data().selected_row, 10);
    EXPECT_EQ(bench.grids().MSHFlexGrid3.at(0, 0), "CTL Reg of index:9");
    EXPECT_EQ(bench.field(0), "5");
    EXPECT_EQ(bench.field(7), "1");
    EXPECT_EQ(bench.field(9), "2");
    EXPECT_EQ(bench.form.editor().box, kNone);
}

TEST(PosFlowEditing, EachColumnOpensItsBox) {
    PosFlowForm bench;
    const std::array told{kNone,  kCombo1, kCombo2, kText2, kText2, kText2,
                          kText2, kText2,  kNone,   kText2, kNone};
    for (int column = 0; column < step_column::kCount; ++column) {
        bench.form.MSHFlexGrid2_Click(2, column);
        EXPECT_EQ(bench.form.editor().box, told[static_cast<std::size_t>(column)]) << column;
    }
    for (int column = 0; column < kRegisterColumns; ++column) {
        bench.form.MSHFlexGrid3_Click(register_row::kValues, column);
        EXPECT_EQ(bench.form.editor().box, kText3);
        bench.form.MSHFlexGrid3_Click(register_row::kNames, column);
        EXPECT_EQ(bench.form.editor().box, kNone);
    }
    bench.form.MSHFlexGrid1_Click(1, 1);
    EXPECT_EQ(bench.form.editor().box, kText4);
    bench.form.MSHFlexGrid1_Click(1, 0);
    EXPECT_EQ(bench.form.editor().box, kNone);
}

TEST(PosFlowEditing, AClickOnAHeadingSelectsNothing) {
    PosFlowForm bench;
    bench.form.MSHFlexGrid2_Click(5, 3);
    bench.form.MSHFlexGrid2_Click(0, 3);
    EXPECT_EQ(bench.form.data().selected_row, 5);
    EXPECT_EQ(bench.form.editor().box, kNone);
    bench.form.MSHFlexGrid2_Click(33, 3);
    EXPECT_EQ(bench.form.data().selected_row, 5);
}

TEST(PosFlowEditing, ABoxOpensWithTheTextOfItsCell) {
    PosFlowForm bench;
    bench.edit(3, step_column::kPos, "-1234");
    bench.form.MSHFlexGrid2_Click(3, step_column::kPos);
    EXPECT_EQ(bench.form.editor().text, "-1234");
    bench.form.MSHFlexGrid2_Click(3, step_column::kMode);
    EXPECT_EQ(bench.form.editor().selected, 0);
    bench.form.update_CTL_REG(3, 0x3000);
    bench.form.MSHFlexGrid2_Click(3, step_column::kMode);
    EXPECT_EQ(bench.form.editor().selected, -1) << "3 has no item";
}

TEST(PosFlowEditing, EnterCommitsAsTyped) {
    PosFlowForm bench;
    bench.edit(3, step_column::kSpeed, "0012.50");
    EXPECT_EQ(bench.cell(3, step_column::kSpeed), "0012.50");
    EXPECT_EQ(bench.form.editor().box, kNone);
}

TEST(PosFlowEditing, EscapeLeavesTheCell) {
    PosFlowForm bench;
    bench.form.MSHFlexGrid2_Click(3, step_column::kPos);
    EXPECT_EQ(bench.form.editor_key(27, "999"), 0U);
    EXPECT_EQ(bench.form.editor().box, kNone);
    EXPECT_EQ(bench.cell(3, step_column::kPos), "0");
}

TEST(PosFlowEditing, OnlyTheToldKeysPass) {
    PosFlowForm bench;
    bench.form.MSHFlexGrid2_Click(3, step_column::kPos);
    EXPECT_EQ(bench.form.editor_key(U'5', ""), U'5');
    EXPECT_EQ(bench.form.editor_key(U'x', ""), U'x');
    EXPECT_EQ(bench.form.editor_key(8, "1"), 8U);
    EXPECT_EQ(bench.form.editor_key(U'-', "1-"), U'-');
    EXPECT_EQ(bench.form.editor_key(U'.', "1"), U'.');
    EXPECT_EQ(bench.form.editor_key(U'.', "1."), 0U);
    EXPECT_EQ(bench.form.editor_key(U',', ""), 0U);
    EXPECT_EQ(bench.form.editor_key(U' ', ""), 0U);
    EXPECT_EQ(bench.form.editor_key(22, ""), 0U);
}

TEST(PosFlowEditing, AWrongEntryEmptiesText2WithoutAMessage) {
    PosFlowForm bench;
    bench.edit(3, step_column::kDelay, "65536");
    EXPECT_EQ(bench.form.editor().box, kText2) << "stays open";
    EXPECT_EQ(bench.form.editor().text, "");
    EXPECT_EQ(bench.cell(3, step_column::kDelay), "0");
    EXPECT_TRUE(bench.notice.boxes.empty());
    bench.enter("65535");
    EXPECT_EQ(bench.cell(3, step_column::kDelay), "65535");
}

TEST(PosFlowEditing, EnterOnTheEmptiedBoxKeepsTheCell) {
    PosFlowForm bench;
    bench.edit(3, step_column::kPos, "1234");
    bench.edit(3, step_column::kPos, "");
    EXPECT_EQ(bench.cell(3, step_column::kPos), "1234");
    bench.edit_field(0, "");
    EXPECT_EQ(bench.field(0), "0");
    EXPECT_TRUE(bench.notice.boxes.empty());
}

TEST(PosFlowEditing, AWrongEntryInText4EmptiesItToo) {
    PosFlowForm bench;
    bench.form.MSHFlexGrid1_Click(2, 2);
    bench.enter("2147483649");
    EXPECT_EQ(bench.form.editor().box, kText4);
    EXPECT_EQ(bench.form.editor().text, "");
    bench.enter("2147483648");
    EXPECT_EQ(bench.grids().MSHFlexGrid1.at(2, 2), "2147483648");
    EXPECT_TRUE(bench.notice.boxes.empty());
}

TEST(PosFlowEditing, AWrongFieldHasAMessage) {
    PosFlowForm bench;
    bench.form.MSHFlexGrid2_Click(3, 0);
    bench.edit_field(0, "33");
    bench.language = base::Language::kChinese;
    bench.edit_field(9, "3");
    using Boxes = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(bench.notice.boxes, (Boxes{{" Notice", "Wrong Setting!"}, {" 提示", "输入错误!"}}));
    EXPECT_EQ(bench.form.editor().box, kText3);
    EXPECT_EQ(bench.form.editor().text, "");
    EXPECT_EQ(bench.field(0), "0");
    EXPECT_EQ(bench.cell(3, step_column::kCtlReg), "0");
}

TEST(PosFlowEditing, AGoodFieldRecomposesTheRegister) {
    PosFlowForm bench;
    bench.form.MSHFlexGrid2_Click(3, 0);
    bench.edit_field(register_field::kNext, "5");
    bench.edit_field(register_field::kGoOn, "1");
    bench.edit_field(register_field::kMode, "2");
    bench.edit_field(register_field::kStartCond, "1");
    EXPECT_EQ(bench.cell(3, step_column::kCtlReg), "6105");
    EXPECT_EQ(bench.cell(3, step_column::kMode), "RA");
    EXPECT_EQ(bench.cell(3, step_column::kStartCond), "Wait");
    EXPECT_EQ(bench.cell(2, step_column::kCtlReg), "0");
}

TEST(PosFlowEditing, TheNextIndex32PassesAndLandsAs0) {
    PosFlowForm bench;
    bench.form.MSHFlexGrid2_Click(3, 0);
    bench.edit_field(register_field::kGoOn, "1");
    bench.edit_field(register_field::kNext, "32");
    EXPECT_TRUE(bench.notice.boxes.empty());
    EXPECT_EQ(bench.field(register_field::kNext), "32") << "as typed";
    EXPECT_EQ(bench.cell(3, step_column::kCtlReg), "100");
    bench.form.MSHFlexGrid2_Click(3, 0);
    EXPECT_EQ(bench.field(register_field::kNext), "0") << "decoded anew";
}

TEST(PosFlowEditing, AChoiceWritesItsItemAndItsField) {
    PosFlowForm bench;
    bench.form.update_CTL_REG(6, 0x0107);
    bench.form.MSHFlexGrid2_Click(6, step_column::kMode);
    bench.form.Combo_Click(1);
    EXPECT_EQ(bench.cell(6, step_column::kMode), "RN");
    EXPECT_EQ(bench.field(8), "1");
    EXPECT_EQ(bench.cell(6, step_column::kCtlReg), "1107");
    EXPECT_EQ(bench.form.editor().box, kNone);
    bench.form.MSHFlexGrid2_Click(6, step_column::kStartCond);
    bench.form.Combo_Click(2);
    EXPECT_EQ(bench.cell(6, step_column::kStartCond), "Interrupt!") << "as the form is stored";
    EXPECT_EQ(bench.field(9), "2");
    EXPECT_EQ(bench.cell(6, step_column::kCtlReg), "9107");
}

TEST(PosFlowEditing, AChoiceWithoutABoxOrItemDoesNothing) {
    PosFlowForm bench;
    const PositionGrids before = bench.grids();
    bench.form.Combo_Click(1);
    bench.form.MSHFlexGrid2_Click(1, step_column::kMode);
    bench.form.Combo_Click(-1);
    bench.form.Combo_Click(3);
    EXPECT_EQ(bench.grids(), before);
    bench.form.hide_editors();
    bench.form.editor_key(13, "5");
    EXPECT_EQ(bench.grids(), before);
}

TEST(PosFlowEditing, UpdateOfARowThatIsNoneDoesNothing) {
    PosFlowForm bench;
    const PositionGrids before = bench.grids();
    bench.form.update_CTL_REG(0, 0xFFFF);
    bench.form.update_CTL_REG(33, 0xFFFF);
    EXPECT_EQ(bench.grids(), before);
}

}  // namespace
}  // namespace servo::tools
