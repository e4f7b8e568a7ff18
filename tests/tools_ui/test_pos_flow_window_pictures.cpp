// Flow, motion and findings on screen.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QTabWidget>

#include "pos_flow_window_bench.h"
#include "tools/position_flow_widget.h"

namespace servo::tools {
namespace {

struct PicturesTest : testing::Test {
    PicturesTest() {
        bench.form.import_file(
            bench.put_file("0,1000,600.00,0,0,0,101,0,0\r\n1,5000,600.00,0,0,0,109,0,0\r\n"
                           "5,1,600.00,0,0,0,0,0,0\r\n\r\n0,100.00,100.00\r\n"));
        QApplication::processEvents();
    }
    PosFlowWindowBench bench;
};

TEST_F(PicturesTest, FindingsAreListedAndPickTheirRow) {
    auto& list = bench.control<QListWidget>("ListA");
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.item(0)->text().toStdString(),
              "✖ Fault  Step 1: goes on to step 9, which is empty.");
    EXPECT_EQ(list.item(1)->text().toStdString(), "▲ Warning  Step 5: never reached from step 0.");
    EXPECT_EQ(bench.text("LabelE"), "✖ faults: 1   ▲ warnings: 1");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualItemRect(list.item(1)).center());
    EXPECT_EQ(bench.form.data().selected_row, 6);
    EXPECT_EQ(params::grid_current_row(bench.grid("MSHFlexGrid2")), 6);
}

TEST_F(PicturesTest, FindingsSpeakTheLanguage) {
    bench.walk(base::Language::kChinese);
    EXPECT_EQ(bench.control<QListWidget>("ListA").item(0)->text(),
              QStringLiteral("✖ 错误  第 1 段：转到第 9 段，该段为空。"));
    EXPECT_EQ(bench.control<QTabWidget>("SSTabA").tabText(1), QStringLiteral("运动"));
}

TEST_F(PicturesTest, AnEntryChangesThemAtOnce) {
    bench.cell("MSHFlexGrid2", 2, 0);
    bench.edit("MSHFlexGrid3", 2, 0, "5");
    auto& list = bench.control<QListWidget>("ListA");
    ASSERT_EQ(list.count(), 1);
    EXPECT_EQ(list.item(0)->text().toStdString(), "● Note  Step 5: the table stops here.");
    EXPECT_EQ(bench.text("LabelE"), "✔ Nothing is wrong with the flow");
}

TEST_F(PicturesTest, TheFlowIsToldToAScreenReader) {
    EXPECT_EQ(bench.control<>("PictureA").accessibleDescription().toStdString(), "0 → 1 → 9, stop");
}

TEST_F(PicturesTest, AClickInTheFlowPicksTheStep) {
    auto& flow = bench.control<PositionFlowWidget>("PictureA");
    FlowSizes sizes;
    // By the keyboard: from the first box to the second.
    flow.setFocus();
    QTest::keyClick(&flow, Qt::Key_Right);
    EXPECT_EQ(bench.form.data().selected_row, 2);
    QTest::keyClick(&flow, Qt::Key_Left);
    EXPECT_EQ(bench.form.data().selected_row, 1);
    // By the mouse: the first box stands behind the margin.
    bench.form.select_row(7);
    QTest::mouseClick(
        &flow, Qt::LeftButton, {},
        QPoint(static_cast<int>(sizes.margin) + 20, static_cast<int>(sizes.gap_y / 2) + 20));
    EXPECT_EQ(bench.form.data().selected_row, 1);
}

TEST_F(PicturesTest, TheStartStepIsChosen) {
    bench.control<QTabWidget>("SSTabA");
    auto& start = bench.control<QComboBox>("ComboA");
    app::choose_position(start, 5);
    EXPECT_EQ(bench.form.start_step(), 5);
    bench.window.refresh_now();
    EXPECT_EQ(bench.control<>("PictureA").accessibleDescription().toStdString(), "5, stop");
}

TEST_F(PicturesTest, TheMotionReadsOutAndPicks) {
    bench.control<QTabWidget>("SSTabA").setCurrentIndex(1);
    QApplication::processEvents();
    EXPECT_EQ(bench.text("LabelD"),
              "Comes to step 9, which is empty. Encoder: 10000 inc per turn.");
    QWidget& motion = bench.control<>("PictureB");
    QTest::mouseClick(&motion, Qt::LeftButton, {}, QPoint(motion.width() - 30, 60));
    EXPECT_EQ(bench.form.data().selected_row, 2);
    EXPECT_NE(bench.control<QLabel>("LabelD").text().indexOf("step 1, position"), -1);
}

TEST_F(PicturesTest, WithoutAnEncoderTheAssumptionIsTold) {
    bench.values.operands.o64100320.seen = false;
    EXPECT_EQ(bench.text("LabelD"),
              "Comes to step 9, which is empty. The encoder is not known yet; 10000 inc per turn "
              "are assumed.");
}

TEST_F(PicturesTest, TheStepThatRunsIsMarkedInTheGridAndTheFlow) {
    const QImage before = bench.grid("MSHFlexGrid2").grab().toImage();
    const QImage flow = bench.control<>("PictureA").grab().toImage();
    bench.form.set_ods(0, 1);
    bench.window.refresh_now();
    QApplication::processEvents();
    EXPECT_NE(bench.grid("MSHFlexGrid2").grab().toImage(), before);
    EXPECT_NE(bench.control<>("PictureA").grab().toImage(), flow);
    bench.communication.Command1_Click();
    bench.window.refresh_now();
    EXPECT_EQ(bench.grid("MSHFlexGrid2").grab().toImage(), before);
}

}  // namespace
}  // namespace servo::tools
