// Several rows at once, by menu and keyboard.
#include <gtest/gtest.h>

#include "app/walk_input.h"
#include "pos_flow_window_bench.h"

namespace servo::tools {
namespace {

TEST(PosFlowWindowRows, RowsGoThroughTheClipboard) {
    PosFlowWindowBench bench;
    bench.edit("MSHFlexGrid2", 1, step_column::kPos, "11");
    bench.edit("MSHFlexGrid2", 2, step_column::kPos, "22");
    bench.select_rows(1, 2, step_column::kPos);
    bench.key("MSHFlexGrid2", Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "0\tA\tIgnore\t11\t0\t0\t0\t0\t0\t0\t0\n1\tA\tIgnore\t22\t0\t0\t0\t0\t0\t0\t0\n");
    bench.select_rows(10, 10, step_column::kPos);
    bench.key("MSHFlexGrid2", Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 10, step_column::kPos), "11");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 11, step_column::kPos), "22");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 12, step_column::kPos), "0");
}

TEST(PosFlowWindowRows, WhatASpreadsheetGivesIsTaken) {
    PosFlowWindowBench bench;
    QApplication::clipboard()->setText("0\t500\t60\t10\t1\t2\t1101\t3\t0\r\n");
    bench.select_rows(4, 4, step_column::kPos);
    bench.key("MSHFlexGrid2", Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 4, step_column::kPos), "500");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 4, step_column::kMode), "RN");
}

TEST(PosFlowWindowRows, ABadPasteIsToldAndChangesNothing) {
    PosFlowWindowBench bench;
    QApplication::clipboard()->setText("hello");
    bench.select_rows(4, 4, step_column::kPos);
    bench.key("MSHFlexGrid2", Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(bench.notice.boxes.size(), 1U);
}

TEST(PosFlowWindowRows, FillsDownAndTakesBack) {
    PosFlowWindowBench bench;
    bench.edit("MSHFlexGrid2", 3, step_column::kDelay, "40");
    bench.select_rows(3, 6, step_column::kDelay);
    bench.key("MSHFlexGrid2", Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 6, step_column::kDelay), "40");
    bench.key("MSHFlexGrid2", Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 6, step_column::kDelay), "0");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 3, step_column::kDelay), "40");
    EXPECT_TRUE(bench.control<>("CommandA").isEnabled());
    bench.click("CommandA");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 3, step_column::kDelay), "0");
    EXPECT_FALSE(bench.control<>("CommandA").isEnabled());
}

TEST(PosFlowWindowRows, TheRightButtonOpensTheMenuOfRows) {
    PosFlowWindowBench bench;
    bench.edit("MSHFlexGrid2", 2, step_column::kPos, "77");
    params::grid_click(bench.grid("MSHFlexGrid2"), 2, step_column::kSpeed,
                       params::GridClick::kRight);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QStringList names;
    for (const QAction* action : menu->actions())
        if (!action->isSeparator()) names << action->objectName();
    EXPECT_EQ(names, (QStringList{"copyline", "pasteline", "fillline", "clearline", "undoline"}));
    EXPECT_EQ(menu->actions().front()->text(), "Copy Row");
    menu->actions().front()->trigger();
    menu->hide();
    params::grid_click(bench.grid("MSHFlexGrid2"), 8, step_column::kSpeed,
                       params::GridClick::kRight);
    menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    menu->actions().at(1)->trigger();
    menu->hide();
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 8, step_column::kPos), "77");
    EXPECT_EQ(bench.form.data().selected_row, 8);
}

}  // namespace
}  // namespace servo::tools
