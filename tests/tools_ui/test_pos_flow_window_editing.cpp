// Cells, boxes, lists and keys.
#include <gtest/gtest.h>

#include <QComboBox>

#include "pos_flow_window_bench.h"

namespace servo::tools {
namespace {

TEST(PosFlowWindowEditing, AClickShowsTheBoxOverTheCell) {
    PosFlowWindowBench bench;
    bench.cell("MSHFlexGrid2", 3, step_column::kPos);
    QWidget& box = bench.control<>("Text2");
    EXPECT_TRUE(box.isVisible());
    QTableView& steps = bench.grid("MSHFlexGrid2");
    EXPECT_EQ(box.geometry(), steps.visualRect(steps.model()->index(2, step_column::kPos)));
    EXPECT_TRUE(box.hasFocus());
    bench.cell("MSHFlexGrid1", 2, 1);
    EXPECT_FALSE(box.isVisible());
    EXPECT_TRUE(bench.control<>("Text4").isVisible());
    bench.cell("MSHFlexGrid3", 2, 0);
    EXPECT_TRUE(bench.control<>("Text3").isVisible());
    EXPECT_FALSE(bench.control<>("Text4").isVisible());
}

TEST(PosFlowWindowEditing, TypesAndCommitsByEnter) {
    PosFlowWindowBench bench;
    EXPECT_EQ(bench.edit("MSHFlexGrid2", 3, step_column::kPos, "-12345"), "");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 3, step_column::kPos), "-12345");
    EXPECT_FALSE(bench.control<>("Text2").isVisible());
    EXPECT_EQ(bench.edit("MSHFlexGrid1", 8, 2, "250.5"), "");
    EXPECT_EQ(bench.shown("MSHFlexGrid1", 8, 2), "250.5");
    EXPECT_TRUE(bench.grid("MSHFlexGrid1").hasFocus()) << "the keyboard goes back to the grid";
}

TEST(PosFlowWindowEditing, KeysThatDoNotPassAreNotTyped) {
    PosFlowWindowBench bench;
    bench.cell("MSHFlexGrid2", 3, step_column::kSpeed);
    bench.key("Text2", Qt::Key_Backspace);
    bench.keys("Text2", "1.2.3,4 +5*");
    EXPECT_EQ(bench.text("Text2"), "1.2345");
}

TEST(PosFlowWindowEditing, EscapeLeavesTheCell) {
    PosFlowWindowBench bench;
    bench.cell("MSHFlexGrid2", 3, step_column::kPos);
    bench.keys("Text2", "77");
    bench.key("Text2", Qt::Key_Escape);
    EXPECT_FALSE(bench.control<>("Text2").isVisible());
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 3, step_column::kPos), "0");
}

TEST(PosFlowWindowEditing, AWrongEntryEmptiesTheBox) {
    PosFlowWindowBench bench;
    bench.edit("MSHFlexGrid2", 3, step_column::kAccIdx, "8");
    EXPECT_TRUE(bench.control<>("Text2").isVisible());
    EXPECT_EQ(bench.text("Text2"), "");
    EXPECT_TRUE(bench.notice.boxes.empty());
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 3, step_column::kAccIdx), "0");
}

TEST(PosFlowWindowEditing, AWrongFieldHasItsMessage) {
    PosFlowWindowBench bench;
    bench.edit("MSHFlexGrid3", 2, 0, "33");
    ASSERT_EQ(bench.notice.boxes.size(), 1U);
    EXPECT_EQ(bench.notice.boxes[0].second, "Wrong Setting!");
    EXPECT_EQ(bench.text("Text3"), "");
}

TEST(PosFlowWindowEditing, FieldsAndListsMakeTheRegister) {
    PosFlowWindowBench bench;
    bench.cell("MSHFlexGrid2", 5, 0);
    EXPECT_EQ(bench.shown("MSHFlexGrid3", 0, 0), "CTL Reg of index:4");
    bench.edit("MSHFlexGrid3", 2, 0, "6");
    bench.edit("MSHFlexGrid3", 2, 4, "1");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 5, step_column::kCtlReg), "106");
    EXPECT_EQ(bench.edit("MSHFlexGrid2", 5, step_column::kMode, "RA"), "");
    EXPECT_EQ(bench.edit("MSHFlexGrid2", 5, step_column::kStartCond, "Wait"), "");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 5, step_column::kMode), "RA");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 5, step_column::kStartCond), "Wait");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 5, step_column::kCtlReg), "6106");
    EXPECT_EQ(bench.shown("MSHFlexGrid3", 2, 8), "2");
    EXPECT_EQ(bench.shown("MSHFlexGrid3", 2, 9), "1");
}

TEST(PosFlowWindowEditing, TheListsFollowTheLanguage) {
    PosFlowWindowBench bench;
    bench.walk(base::Language::kChinese);
    auto& list = bench.control<QComboBox>("Combo2");
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(list.itemText(2), QStringLiteral("中断"));
    EXPECT_EQ(bench.edit("MSHFlexGrid2", 1, step_column::kStartCond, "中断"), "");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 1, step_column::kCtlReg), "8000");
}

TEST(PosFlowWindowEditing, CellsThatAreNotEditedOpenNothing) {
    PosFlowWindowBench bench;
    for (const int column : {step_column::kIdx, step_column::kCtlReg, step_column::kRest})
        EXPECT_NE(bench.edit("MSHFlexGrid2", 2, column, "5"), "") << column;
    EXPECT_NE(bench.edit("MSHFlexGrid3", 1, 0, "5"), "");
    EXPECT_NE(bench.edit("MSHFlexGrid1", 1, 0, "5"), "");
}

TEST(PosFlowWindowEditing, TheKeyboardAloneEditsACell) {
    PosFlowWindowBench bench;
    QTableView& steps = bench.grid("MSHFlexGrid2");
    steps.setFocus();
    steps.setCurrentIndex(steps.model()->index(0, step_column::kPos));
    bench.key("MSHFlexGrid2", Qt::Key_Down);
    bench.key("MSHFlexGrid2", Qt::Key_Down);
    EXPECT_EQ(bench.form.data().selected_row, 3) << "the register follows the keyboard";
    bench.key("MSHFlexGrid2", Qt::Key_Return);
    bench.keys("Text2", "55");
    bench.key("Text2", Qt::Key_Return);
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 3, step_column::kPos), "55");
    // A character begins a new entry.
    bench.keys("MSHFlexGrid2", "7");
    EXPECT_EQ(bench.text("Text2"), "7");
    bench.keys("Text2", "8");
    bench.key("Text2", Qt::Key_Return);
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 3, step_column::kPos), "78");
}

TEST(PosFlowWindowEditing, LeavingTheWindowPutsTheBoxAway) {
    PosFlowWindowBench bench;
    bench.cell("MSHFlexGrid2", 3, step_column::kPos);
    bench.window.hide();
    EXPECT_EQ(bench.form.editor().box, PosFlowBox::kNone);
}

}  // namespace
}  // namespace servo::tools
