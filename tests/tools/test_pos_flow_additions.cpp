// Rows by the clipboard, undo, and what the pictures are made of.
#include <gtest/gtest.h>

#include "pos_flow_bench.h"

namespace servo::tools {
namespace {

TEST(PosFlowRows, ThePopUpCopiesTheSelectedRowIntoTheSelectedRow) {
    PosFlowForm bench;
    bench.form.pasteline();
    EXPECT_TRUE(bench.notice.boxes.empty()) << "nothing was copied";
    bench.form.update_CTL_REG(2, 0x1104);
    bench.edit(2, step_column::kPos, "55");
    bench.form.copyline();
    bench.form.MSHFlexGrid2_Click(9, 0);
    bench.form.pasteline();
    EXPECT_EQ(bench.cell(9, step_column::kPos), "55");
    EXPECT_EQ(bench.cell(9, step_column::kMode), "RN");
    EXPECT_EQ(bench.cell(9, step_column::kIdx), "8");
    EXPECT_EQ(bench.field(0), "4") << "the register of the selected row is shown";
}

TEST(PosFlowRows, APasteThatIsRefusedSaysWhy) {
    PosFlowForm bench;
    const PositionGrids before = bench.grids();
    bench.form.paste_rows(3, "what is this");
    ASSERT_EQ(bench.notice.boxes.size(), 1U);
    EXPECT_EQ(bench.notice.boxes[0].first, " Notice");
    EXPECT_EQ(bench.grids(), before);
    EXPECT_FALSE(bench.form.can_undo());
}

TEST(PosFlowRows, SeveralRowsAreFilledAndCleared) {
    PosFlowForm bench;
    bench.edit(2, step_column::kDelay, "40");
    bench.form.fill_down(2, 5, step_column::kDelay);
    EXPECT_EQ(bench.cell(5, step_column::kDelay), "40");
    bench.form.clear_rows(3, 4);
    EXPECT_EQ(bench.cell(3, step_column::kDelay), "0");
    EXPECT_EQ(bench.cell(5, step_column::kDelay), "40");
}

TEST(PosFlowUndo, TakesBackStepByStep) {
    PosFlowForm bench;
    EXPECT_FALSE(bench.form.can_undo());
    const PositionGrids first = bench.grids();
    bench.edit(1, step_column::kPos, "1");
    const PositionGrids second = bench.grids();
    bench.form.Command5_Click();
    bench.form.undo();
    EXPECT_EQ(bench.grids().MSHFlexGrid2, second.MSHFlexGrid2);
    bench.form.undo();
    EXPECT_EQ(bench.grids(), first);
    bench.form.undo();
    EXPECT_EQ(bench.grids(), first);
}

TEST(PosFlowUndo, BringsBackWhatAReadHasCleared) {
    PosFlowForm bench;
    bench.edit(1, step_column::kPos, "1");
    bench.form.Command1_Click();
    bench.form.undo();
    EXPECT_EQ(bench.cell(1, step_column::kPos), "0") << "not while the job runs";
    bench.engine.state.batch_mode = 0;
    bench.form.undo();
    EXPECT_EQ(bench.cell(1, step_column::kPos), "1");
}

TEST(PosFlowUndo, SpeaksTheLanguageOfNow) {
    PosFlowForm bench;
    bench.edit(1, step_column::kPos, "1");
    bench.language = base::Language::kChinese;
    bench.form.change_my_language();
    bench.form.undo();
    EXPECT_EQ(bench.cell(1, step_column::kStartCond), "忽略");
    EXPECT_EQ(bench.cell(0, step_column::kPos), "位置inc");
}

TEST(PosFlowPicture, StartsWhereTheUserSays) {
    PosFlowForm bench;
    bench.edit(5, step_column::kPos, "1");
    bench.form.set_start_step(4);
    EXPECT_EQ(bench.form.picture().flow.start, 4);
    EXPECT_TRUE(bench.form.picture().flow.step(4).reached);
    bench.form.set_start_step(99);
    EXPECT_EQ(bench.form.start_step(), 31);
}

TEST(PosFlowPicture, WithoutAnEncoderAUsualOneStandsIn) {
    PosFlowForm bench;
    bench.know_encoder(2500);
    EXPECT_EQ(bench.form.resolution(), 2500);
    bench.values.operands.o64100320.seen = false;
    EXPECT_FALSE(bench.form.resolution_known());
    EXPECT_EQ(bench.form.resolution(), 10000);
}

}  // namespace
}  // namespace servo::tools
