// The window: controls by their names, buttons, jobs, languages.
#include <gtest/gtest.h>

#include <QMdiArea>
#include <QProgressBar>

#include "pos_flow_window_bench.h"

namespace servo::tools {
namespace {

TEST(PosFlowWindow, HasItsControlsByTheirNames) {
    PosFlowWindowBench bench;
    for (const char* name :
         {"Command1", "Command2", "Command3", "Command4", "Command5", "Label1", "Text1",
          "ProgressBar1", "Label3", "Label4", "MSHFlexGrid1", "MSHFlexGrid2", "MSHFlexGrid3",
          "Combo1", "Combo2", "Text2", "Text3", "Text4"})
        EXPECT_NE(app::find_control(bench.window, QLatin1String(name)), nullptr) << name;
    EXPECT_EQ(bench.window.objectName(), "PosFlow");
    for (const char* name : {"Combo1", "Combo2", "Text2", "Text3", "Text4"})
        EXPECT_FALSE(bench.visible(name)) << name;
}

TEST(PosFlowWindow, CaptionsFollowTheLanguage) {
    PosFlowWindowBench bench;
    EXPECT_EQ(bench.window.windowTitle(), "Position Table Mode");
    EXPECT_EQ(bench.text("Command1"), "Read Table");
    EXPECT_EQ(bench.text("Label1"), "Current Index");
    bench.walk(base::Language::kChinese);
    EXPECT_EQ(bench.window.windowTitle(), QStringLiteral("位置表模式"));
    const std::array<const char*, 5> told{"读取配置表", "写入配置表", "导入配置表", "导出配置表",
                                          "清空配置表"};
    for (std::size_t i = 0; i < told.size(); ++i)
        EXPECT_EQ(bench.text(("Command" + std::to_string(i + 1)).c_str()), told[i]);
    EXPECT_EQ(bench.text("Label1"), "当前索引");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 0, 3), "位置inc");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 1, 2), "忽略");
    EXPECT_EQ(bench.shown("MSHFlexGrid3", 0, 0), "控制寄存器:0");
    EXPECT_EQ(bench.shown("MSHFlexGrid1", 0, 1), "加速度rps/s");
    bench.walk(base::Language::kEnglish);
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 0, 3), "Pos inc");
    EXPECT_EQ(bench.text("Command5"), "Clear Table");
}

TEST(PosFlowWindow, GridsHaveTheirSizes) {
    PosFlowWindowBench bench;
    const auto size = [&](const char* name) {
        return std::pair(params::grid_rows(bench.grid(name)),
                         params::grid_columns(bench.grid(name)));
    };
    EXPECT_EQ(size("MSHFlexGrid1"), std::pair(9, 3));
    EXPECT_EQ(size("MSHFlexGrid2"), std::pair(33, 11));
    EXPECT_EQ(size("MSHFlexGrid3"), std::pair(3, 10));
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 32, 0), "31");
    EXPECT_EQ(bench.shown("MSHFlexGrid3", 1, 4), "Bit8:Next/Stop");
}

TEST(PosFlowWindow, WritesAndReadsTheTable) {
    PosFlowWindowBench bench;
    bench.fill_grids();
    bench.click("Command2");
    EXPECT_TRUE(bench.run_until([&] { return bench.engine.state.batch_row == 104; }));
    EXPECT_EQ(bench.text("ProgressBar1"), "50");
    EXPECT_EQ(bench.text("LabelF"), "Writing: 104 of 208");
    ASSERT_TRUE(bench.finish());
    EXPECT_EQ(bench.text("Label4"), "finished");
    EXPECT_EQ(bench.text("Label3"), "");
    EXPECT_EQ(bench.text("ProgressBar1"), "0");
    bench.expect_drive_equals_grid();
    bench.click("Command5");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 3, 3), "0");
    bench.click("Command1");
    ASSERT_TRUE(bench.finish());
    EXPECT_EQ(bench.text("Label3"), "finished");
    EXPECT_EQ(bench.text("Label4"), "");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 3, 3), "-7000");
    EXPECT_EQ(bench.text("LabelF"), "208 objects read.");
}

TEST(PosFlowWindow, AJobThatFailsSaysWhatTheDriveHolds) {
    PosFlowWindowBench bench;
    bench.drive.refuse.insert(bench.object(20));
    bench.click("Command2");
    ASSERT_TRUE(bench.finish());
    EXPECT_EQ(bench.text("Label4"), "failed");
    EXPECT_EQ(bench.text("LabelF"),
              "The drive refused 10 times, last the object 310205. The first 20 objects are "
              "written: the drive holds a mixed table.");
    bench.walk(base::Language::kChinese);
    EXPECT_NE(bench.text("LabelF").find("310205"), std::string::npos);
}

TEST(PosFlowWindow, RefusesWithoutTheEncoder) {
    PosFlowWindowBench bench;
    bench.values.operands.o64100320.seen = false;
    bench.click("Command1");
    ASSERT_EQ(bench.notice.boxes.size(), 1U);
    EXPECT_EQ(bench.notice.boxes[0].first, " Notice");
}

TEST(PosFlowWindow, ImportsAndExports) {
    PosFlowWindowBench bench;
    bench.answer = bench.put_file("5,123,60.00,0,0,0,101,0,7\r\n");
    bench.click("Command3");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 6, 3), "123");
    EXPECT_EQ(bench.shown("MSHFlexGrid2", 6, 10), "7");
    bench.answer = (bench.folder / "out.pft").string();
    bench.click("Command4");
    EXPECT_NE(bench.folder.get("out.pft").find("5,123,60.00,0,0,0,101,0,7\r\n"), std::string::npos);
}

TEST(PosFlowWindow, ShowsTheLiveIndex) {
    PosFlowWindowBench bench;
    bench.form.set_ods(0, 3);
    EXPECT_EQ(bench.text("Text1"), "3");
    bench.click("Command5");
    EXPECT_EQ(bench.text("Text1"), "3");
}

TEST(PosFlowWindow, EveryCommandIsReachedByTheKeyboard) {
    PosFlowWindowBench bench;
    bench.window.activateWindow();
    bench.control<>("Command1").setFocus();
    QStringList order;
    QWidget* widget = &bench.control<>("Command1");
    for (int i = 0; i < 500; ++i) {
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisibleTo(&bench.window) &&
            !widget->objectName().isEmpty())
            order << widget->objectName();
        widget = widget->nextInFocusChain();
        if (widget->objectName() == "Command1") break;
    }
    int last = -1;
    for (const char* name : {"Command1", "Command2", "Command3", "Command4", "Command5",
                             "MSHFlexGrid2", "MSHFlexGrid1", "MSHFlexGrid3", "PictureA", "ListA"}) {
        const int at = static_cast<int>(order.indexOf(QLatin1String(name)));
        EXPECT_GT(at, last) << name << " in " << order.join(' ').toStdString();
        last = at;
    }
}

TEST(PosFlowWindow, FitsASmallScreenAndUsesALargeOne) {
    PosFlowWindowBench bench;
    for (const auto language : {base::Language::kChinese, base::Language::kEnglish}) {
        bench.walk(language);
        EXPECT_LE(bench.window.minimumSizeHint().width(), 1000);
        EXPECT_LE(bench.window.minimumSizeHint().height(), 540);
    }
}

// Painted in both languages and sizes; POS_FLOW_PICTURES=folder keeps the pictures to look at.
TEST(PosFlowWindow, IsPaintedInBothLanguagesAndSizes) {
    PosFlowWindowBench bench;
    const QString folder =
        qEnvironmentVariable("POS_FLOW_PICTURES", QString::fromStdString(bench.folder.path()));
    std::vector<QImage> pictures;
    std::string steps;
    const auto add = [&](const char* line) { steps += std::string(line) + "\r\n"; };
    add("0,0,600.00,200,0,0,101,0,0");
    add("1,50000,1500.00,0,0,1,102,0,0");
    add("2,-2000,300.00,100,1,1,1103,4,0");
    add("3,8000,900.00,0,1,1,5304,0,0");
    add("4,20000,1200.00,300,0,0,9505,0,0");
    add("5,0,2000.00,500,2,2,101,0,0");
    add("9,5000,600.00,0,7,0,10A,0,0");
    add("10,7000,0,0,0,0,115,0,0");
    add("20,100,100.00,0,0,0,1114,0,0");
    steps += "\r\n0,50.00,50.00\r\n1,100.00,80.00\r\n2,200.00,200.00\r\n";
    bench.form.import_file(bench.put_file(steps));
    bench.form.set_ods(0, 3);
    bench.form.select_row(3);
    const auto shoot = [&](const char* name) {
        bench.window.refresh_now();
        QApplication::processEvents();
        const QPixmap picture = bench.window.grab();
        EXPECT_TRUE(picture.save(folder + "/" + name));
        for (const QImage& other : pictures)
            EXPECT_NE(picture.toImage(), other) << name;
        pictures.push_back(picture.toImage());
    };
    bench.window.resize(1000, 560);
    shoot("small_en.png");
    bench.control<QTabWidget>("SSTabA").setCurrentIndex(1);
    shoot("small_motion_en.png");
    bench.walk(base::Language::kChinese);
    shoot("small_motion_zh.png");
    bench.window.resize(1560, 760);
    QApplication::processEvents();
    shoot("large_motion_zh.png");
    bench.control<QTabWidget>("SSTabA").setCurrentIndex(0);
    bench.cell("MSHFlexGrid2", 4, 1);
    shoot("large_zh.png");
    bench.walk(base::Language::kEnglish);
    bench.cell("MSHFlexGrid3", 2, 0);
    shoot("large_en.png");
}

}  // namespace
}  // namespace servo::tools
