// The window `imexport` through its real controls.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTimer>
#include <ctime>

#include "configuration_window_bench.h"

namespace servo::tools::test {
namespace {

using base::Language;

struct ConfigurationWindowTest : testing::Test, WindowBench {};

TEST_F(ConfigurationWindowTest, EveryToldControlIsThereByItsName) {
    for (const char* name :
         {"Command1", "Command2", "Command3", "Command4", "Command6", "Command7", "Command8"})
        control<QPushButton>(name);
    for (const char* name : {"ProgressBar1", "ProgressBar2"})
        control<QProgressBar>(name);
    for (const char* name : {"Label2", "Label8"})
        EXPECT_EQ(text(name), "No path");
    EXPECT_EQ(control<QTabWidget>("SSTab1").count(), 2);
    EXPECT_EQ(window.objectName(), "imexport");
    EXPECT_EQ(window.findChild<QPushButton*>(QStringLiteral("Command5")), nullptr);
}

TEST_F(ConfigurationWindowTest, CaptionsFollowTheLanguageTimeAndAgain) {
    for (int round = 0; round < 2; ++round) {
        speak(Language::kChinese);
        EXPECT_EQ(caption("Command1"), "选择cdi文件");
        EXPECT_EQ(caption("Command2"), "写入数据");
        EXPECT_EQ(caption("Command3"), "存储数据到EEPROM");
        EXPECT_EQ(caption("Command4"), "重启");
        EXPECT_EQ(caption("Command6"), "导出为cdi文件");
        EXPECT_EQ(caption("Command7"), "读出数据");
        EXPECT_EQ(caption("Command8"), "选择cdo模板");
        EXPECT_EQ(control<QTabWidget>("SSTab1").tabText(0), "写入驱动器");
        speak(Language::kEnglish);
        EXPECT_EQ(caption("Command1"), "Choose cdi File");
        EXPECT_EQ(caption("Command2"), "Write to Controller");
        EXPECT_EQ(caption("Command3"), "Store Data to EEPROM");
        EXPECT_EQ(caption("Command7"), "Read from Controller");
        EXPECT_EQ(control<QTabWidget>("SSTab1").tabText(1), "Read from Drive");
    }
}

TEST_F(ConfigurationWindowTest, TheCaptionsOfTheLanguagePassStay) {
    control<QPushButton>("Command2").setText(QStringLiteral("Write Settings to Driver"));
    speak(Language::kEnglish);
    EXPECT_EQ(caption("Command2"), "Write Settings to Driver");
}

TEST_F(ConfigurationWindowTest, TheGridsHaveTheToldColumns) {
    const std::vector<std::string> source{"N",      "Index", "Source Value", "Check Value",
                                          "Result", "Name",  "Name"};
    const std::vector<std::string> driver{"N", "Index", "Driver Value", "Result", "Name", "Name"};
    ASSERT_EQ(params::grid_columns(grid("MSHFlexGridA")), 7);
    ASSERT_EQ(params::grid_columns(grid("MSHFlexGridB")), 6);
    for (int column = 0; column < 7; ++column)
        EXPECT_EQ(cell("MSHFlexGridA", 0, column), source[static_cast<std::size_t>(column)]);
    for (int column = 0; column < 6; ++column)
        EXPECT_EQ(cell("MSHFlexGridB", 0, column), driver[static_cast<std::size_t>(column)]);
    EXPECT_EQ(params::grid_rows(grid("MSHFlexGridA")), 1) << "the heading alone";
}

TEST_F(ConfigurationWindowTest, TheNameOfTheOtherLanguageHasNoWidth) {
    speak(Language::kEnglish);
    EXPECT_EQ(grid("MSHFlexGridA").columnWidth(5), 0);
    EXPECT_GT(grid("MSHFlexGridA").columnWidth(6), 0);
    EXPECT_EQ(grid("MSHFlexGridB").columnWidth(4), 0);
    speak(Language::kChinese);
    EXPECT_GT(grid("MSHFlexGridA").columnWidth(5), 0);
    EXPECT_EQ(grid("MSHFlexGridA").columnWidth(6), 0);
    EXPECT_EQ(grid("MSHFlexGridB").columnWidth(5), 0);
}

TEST_F(ConfigurationWindowTest, AnInvalidRowIsRedInAllOfItsCellsAndSaysSo) {
    choose(put("a.cdi", "60600008,1,True\n20100310,2,False\n"));
    click("Command1");
    EXPECT_EQ(params::grid_rows(grid("MSHFlexGridA")), 3);
    EXPECT_EQ(cell("MSHFlexGridA", 2, 0), "1");
    EXPECT_EQ(cell("MSHFlexGridA", 2, 4), "Invalid");
    for (int column = 0; column < 7; ++column) {
        EXPECT_EQ(color("MSHFlexGridA", 2, column), QColor(255, 0, 0)) << column;
        EXPECT_EQ(color("MSHFlexGridA", 1, column), std::nullopt) << column;
    }
    EXPECT_EQ(text("Label2"), (folder / "a.cdi").string());
    EXPECT_EQ(cell("MSHFlexGridA", 1, 5), "工作模式");
    EXPECT_EQ(cell("MSHFlexGridA", 1, 6), "Modes of operation");
}

TEST_F(ConfigurationWindowTest, AWriteLocksTheSevenButtonsUntilTheTimerHasSeenItsEnd) {
    choose(put("a.cdi", "60600008,1,True\n77770008,2,True\n"));
    click("Command1");
    click("Command2");
    const std::vector<const char*> told{"Command1", "Command2", "Command3", "Command4",
                                        "Command6", "Command7", "Command8"};
    for (const char* name : told)
        EXPECT_FALSE(enabled(name)) << name;
    EXPECT_TRUE(enabled("CommandA")) << "stop";
    EXPECT_EQ(text("Label2"), "");
    ASSERT_TRUE(finish());
    QApplication::processEvents();
    for (const char* name : told)
        EXPECT_FALSE(enabled(name)) << name;
    EXPECT_EQ(text("Label2"), "Finished! Fail:1");
    EXPECT_EQ(text("LabelE"), "a.cdi") << "which file it was";
    EXPECT_EQ(percent("ProgressBar1"), 100);
    EXPECT_EQ(cell("MSHFlexGridA", 1, 3), "1");
    EXPECT_EQ(cell("MSHFlexGridA", 2, 4), "False");
    EXPECT_EQ(color("MSHFlexGridA", 2, 0), QColor(255, 0, 0));
    EXPECT_FALSE(enabled("CommandA"));
    tick_timer();
    for (const char* name : told)
        EXPECT_TRUE(enabled(name)) << name;
}

TEST_F(ConfigurationWindowTest, Timer1RunsAtItsIntervalUntilItHasSeenTheEnd) {
    auto* Timer1 = window.findChild<QTimer*>(QStringLiteral("Timer1"));
    ASSERT_NE(Timer1, nullptr);
    EXPECT_EQ(Timer1->interval(), 4500);
    EXPECT_FALSE(Timer1->isActive());
    choose(put("a.cdi", "60600008,1,True\n"));
    click("Command1");
    click("Command2");
    EXPECT_TRUE(Timer1->isActive());
    Timer1->setInterval(0);
    QApplication::processEvents();
    EXPECT_TRUE(Timer1->isActive()) << "the job runs";
    EXPECT_FALSE(enabled("Command2"));
    ASSERT_TRUE(finish());
    EXPECT_TRUE(Timer1->isActive());
    while (Timer1->isActive())
        QApplication::processEvents();
    EXPECT_TRUE(enabled("Command2"));
}

TEST_F(ConfigurationWindowTest, AReadFillsTheDriverGridWithoutPaint) {
    drive.objects[0x606000].value = 0xFC;
    tab(1);
    choose(put("a.cdo", "60600008\n77770008\n"));
    click("Command8");
    EXPECT_EQ(questions.at(0).suggestion, folder / "Servo_Settings.cdo");
    click("Command7");
    ASSERT_TRUE(finish());
    QApplication::processEvents();
    EXPECT_EQ(cell("MSHFlexGridB", 1, 2), "252");
    EXPECT_EQ(cell("MSHFlexGridB", 2, 3), "False");
    EXPECT_EQ(color("MSHFlexGridB", 2, 3), std::nullopt);
    EXPECT_EQ(text("Label8"), "Finished! Fail:1");
    EXPECT_EQ(percent("ProgressBar2"), 100);
    tick_timer();
    choose(folder / "out.cdi");
    click("Command6");
    EXPECT_EQ(folder.get("out.cdi"), "60600008,252,True\r\n77770008,,False\r\n");
}

TEST_F(ConfigurationWindowTest, StoreAndRebootReachTheDrive) {
    click("Command3");
    run_for(10ms);
    EXPECT_EQ(asked(0x101001, true), 3);
    EXPECT_FALSE(enabled("Command3"));
    tick_timer();
    click("Command4");
    run_for(10ms);
    EXPECT_EQ(asked(0x2FFF00, true), 1);
    EXPECT_FALSE(enabled("Command4"));
}

TEST_F(ConfigurationWindowTest, WithoutAFileTheMessageComes) {
    click("Command2");
    tab(1);
    click("Command7");
    ASSERT_EQ(notice.boxes.size(), 2U);
    EXPECT_TRUE(enabled("Command2"));
}

TEST_F(ConfigurationWindowTest, TheGridFollowsTheRowInWorkUntilItsUserScrolls) {
    add_600(false);
    choose(put("a.cdi", file_of_600()));
    click("Command1");
    click("Command2");
    const auto& bar = *grid("MSHFlexGridA").verticalScrollBar();
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 200; }));
    EXPECT_GT(bar.value(), 150);
    QTest::keyClick(&grid("MSHFlexGridA"), Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(bar.value(), 0);
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 300; }));
    EXPECT_EQ(bar.value(), 0) << "who scrolls wants to look";
    ASSERT_TRUE(finish());
    tick_timer();
    click("Command2");
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 200; }));
    EXPECT_GT(bar.value(), 150) << "the next job is followed again";
}

TEST_F(ConfigurationWindowTest, AWheelTurnIsTheUsersScrolling) {
    add_600(false);
    choose(put("a.cdi", file_of_600()));
    click("Command1");
    click("Command2");
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 100; }));
    grid("MSHFlexGridA").verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepSub);
    const int at = grid("MSHFlexGridA").verticalScrollBar()->value();
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 200; }));
    EXPECT_EQ(grid("MSHFlexGridA").verticalScrollBar()->value(), at);
}

// What a job costs the window: far less than the 12 ms that a row takes on the line. The
// processor's time, since others may use the machine.
TEST_F(ConfigurationWindowTest, ARowOf600IsRepaintedInLessThanItsTimeOnTheLine) {
    add_600(false);
    choose(put("a.cdi", file_of_600()));
    click("Command1");
    click("Command2");
    const std::clock_t begin = std::clock();
    int row = 0;
    while (form.running() && row < 600) {
        run_until([&] { return engine.state.batch_row > row || !form.running(); });
        row = engine.state.batch_row;
        QApplication::processEvents();
    }
    const double ms = 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC / 600;
    EXPECT_LT(ms, 12.0);
    RecordProperty("ms_per_row", std::to_string(ms));
}

TEST_F(ConfigurationWindowTest, ADryRunOpensItsTableBelowTheTabs) {
    drive.objects[0x606000].value = 3;
    choose(put("a.cdi", "60600008,1,True\n20100310,70000,True\n"));
    click("Command1");
    EXPECT_FALSE(control("MSHFlexGridC").isVisible());
    click("CommandB");
    EXPECT_FALSE(enabled("Command2"));
    ASSERT_TRUE(finish());
    QApplication::processEvents();
    EXPECT_TRUE(enabled("Command2")) << "nothing was written";
    EXPECT_TRUE(control("MSHFlexGridC").isVisible());
    EXPECT_EQ(text("LabelC"), "Dry run: a.cdi");
    EXPECT_EQ(text("LabelD"),
              "2 rows would be written and change 2 values; 1 row has a warning. Nothing was "
              "written.");
    EXPECT_EQ(cell("MSHFlexGridC", 1, 2), "3");
    EXPECT_EQ(cell("MSHFlexGridC", 1, 3), "1");
    EXPECT_EQ(cell("MSHFlexGridC", 2, 4), "the value does not fit the object's width");
    speak(Language::kChinese);
    EXPECT_EQ(text("LabelC"), "试运行：a.cdi");
    EXPECT_EQ(cell("MSHFlexGridC", 0, 2), "驱动器当前值");
    click("CommandJ");
    EXPECT_FALSE(control("MSHFlexGridC").isVisible());
}

TEST_F(ConfigurationWindowTest, TheTableHasItsRoomAsSoonAsItsText) {
    load("60600008,1,True\n");
    form.show_failures(ConfigurationSide::kWrite);
    EXPECT_EQ(text("LabelC"), "Failed rows: values.cdi");
    EXPECT_GE(grid("MSHFlexGridC").height(), 90);
    EXPECT_LE(control("SSTab1").height() + grid("MSHFlexGridC").height(), window.height());
}

TEST_F(ConfigurationWindowTest, EscPutsTheTableAwayAndSaveKeepsIt) {
    choose(put("a.cdi", "60600008,1,True\n"));
    choose(put("b.cdi", "60600008,3,True\n"));
    click("Command1");
    click("CommandD");
    EXPECT_EQ(text("LabelC"), "Comparison: a.cdi / b.cdi");
    EXPECT_EQ(grid("MSHFlexGridC").columnWidth(4), 0) << "there is nothing to remark";
    choose(folder / "kept.txt");
    click("CommandI");
    EXPECT_NE(folder.get("kept.txt").find("60600008\tModes of operation\t1\t3"), std::string::npos);
    QTest::keyClick(&control("MSHFlexGridC"), Qt::Key_Escape);
    EXPECT_FALSE(control("MSHFlexGridC").isVisible());
}

TEST_F(ConfigurationWindowTest, FailedRowsCanBeAskedForWhenThereAreSome) {
    choose(put("a.cdi", "60600008,1,True\n"));
    click("Command1");
    EXPECT_FALSE(enabled("CommandE"));
    drive.refuse.insert(0x606000);
    click("Command2");
    ASSERT_TRUE(finish());
    EXPECT_FALSE(enabled("CommandE"));
    tick_timer();
    EXPECT_TRUE(enabled("CommandE"));
    click("CommandE");
    EXPECT_EQ(cell("MSHFlexGridC", 1, 4), "0x06020000, the drive has no such object");
}

TEST_F(ConfigurationWindowTest, StopEndsAJob) {
    add_600(false);
    choose(put("a.cdi", file_of_600()));
    click("Command1");
    click("Command2");
    run_until([this] { return engine.state.batch_row == 50; });
    click("CommandA");
    EXPECT_EQ(text("Label2"), "Stopped! Fail:0");
    EXPECT_EQ(text("LabelA"), "Stopped at row 49 of 600: nothing behind it was written");
}

TEST_F(ConfigurationWindowTest, ALanguageSwitchInTheMiddleChangesTheTextsAndNothingElse) {
    add_600(false);
    choose(put("a.cdi", file_of_600()));
    click("Command1");
    click("Command2");
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 100; }));
    speak(Language::kChinese);
    EXPECT_EQ(text("LabelA"), "第 99 行，共 600 行；失败 0");
    EXPECT_EQ(caption("Command3"), "存储数据到EEPROM");
    EXPECT_FALSE(enabled("Command2"));
    EXPECT_EQ(cell("MSHFlexGridA", 50, 4), "True");
    EXPECT_EQ(grid("MSHFlexGridA").columnWidth(6), 0);
    ASSERT_TRUE(finish());
    EXPECT_EQ(text("Label2"), "Finished! Fail:0");
    EXPECT_EQ(writes().size(), 600U);
}

TEST_F(ConfigurationWindowTest, AHiddenWindowGoesOnAndShowsAllWhenItComesBack) {
    add_600(false);
    choose(put("a.cdi", file_of_600()));
    click("Command1");
    click("Command2");
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 100; }));
    window.hide();
    ASSERT_TRUE(finish());
    tick_timer();
    window.show();
    QApplication::processEvents();
    EXPECT_EQ(text("Label2"), "Finished! Fail:0");
    EXPECT_EQ(percent("ProgressBar1"), 100);
    EXPECT_EQ(cell("MSHFlexGridA", 600, 4), "True");
    EXPECT_TRUE(enabled("Command2"));
}

TEST_F(ConfigurationWindowTest, ALinkThatClosesInTheMiddleGivesTheButtonsBack) {
    add_600(false);
    choose(put("a.cdi", file_of_600()));
    click("Command1");
    click("Command2");
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 100; }));
    communication.Command1_Click();
    QApplication::processEvents();
    EXPECT_EQ(text("Label2"), "Stopped! Fail:0");
    EXPECT_EQ(text("LabelA"),
              "The link was closed at row 99 of 600: nothing behind it was written");
    EXPECT_FALSE(enabled("Command2"));
    tick_timer();
    EXPECT_TRUE(enabled("Command2"));
}

TEST_F(ConfigurationWindowTest, SelectedRowsAreCopiedAsTheyAreShown) {
    choose(put("a.cdi", "60600008,1,True\n20100310,2,True\n"));
    click("Command1");
    grid("MSHFlexGridA").selectRow(1);
    QTest::keyClick(&grid("MSHFlexGridA"), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(),
              "1\t20100310\t2\t\t\tInput 1 function");
}

TEST_F(ConfigurationWindowTest, ASideComesToTheFront) {
    form.show_side(ConfigurationSide::kRead);
    EXPECT_TRUE(control("Command7").isVisible());
    EXPECT_FALSE(control("Command2").isVisible());
    tab(0);
    EXPECT_EQ(form.side(), ConfigurationSide::kWrite) << "the user's choice is kept";
    form.show_side(ConfigurationSide::kRead);
    form.show_side(ConfigurationSide::kWrite);
    EXPECT_TRUE(control("Command2").isVisible());
}

TEST_F(ConfigurationWindowTest, TheTabKeyGoesThroughTheCommandsInTheirOrderAndThenTheGrid) {
    choose(put("a.cdi", "60600008,1,True\n"));
    click("Command1");
    window.activateWindow();
    control("Command1").setFocus();
    std::vector<std::string> passed{"Command1"};
    for (int step = 0; step < 12 && passed.back() != "MSHFlexGridA"; ++step) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        passed.push_back(window.focusWidget()->objectName().toStdString());
    }
    EXPECT_EQ(passed,
              (std::vector<std::string>{"Command1", "CommandB", "CommandC", "CommandD", "Command2",
                                        "Command3", "Command4", "MSHFlexGridA"}));
}

TEST_F(ConfigurationWindowTest, FitsASmallDeskAndUsesALargeOne) {
    window.resize(640, 420);
    EXPECT_LE(window.minimumSizeHint().width(), 640);
    EXPECT_LE(window.minimumSizeHint().height(), 560);
    window.resize(1600, 900);
    QApplication::processEvents();
    EXPECT_GT(grid("MSHFlexGridA").width(), 1200);
}

TEST_F(ConfigurationWindowTest, TextFromAFileIsNoMarkup) {
    choose(put("a.cdi", "<b>60600008</b>,<i>1</i>,True\n"));
    click("Command1");
    EXPECT_EQ(cell("MSHFlexGridA", 1, 1), "<b>60600008</b>");
    EXPECT_EQ(control<QLabel>("Label2").textFormat(), Qt::PlainText);
}

TEST_F(ConfigurationWindowTest, Pictures) {
    drive.objects[0x606000].value = 3;
    drive.objects[0x641003].value = 10000;
    drive.refuse.insert(0x201003);
    std::string many;
    for (int round = 0; round < 6; ++round)
        many +=
            "60600008,1,True\n64100320,10000,True\n60810020,1000000,True\n20100310,2,True\n"
            "60730010,100,True\n60860010,0,False\n77770010,5,True\n";
    choose(put("commissioning-line-7.cdi", many));
    click("Command1");
    keep_picture("loaded-en");
    click("Command2");
    run_until([this] { return engine.state.batch_row == 20; });
    keep_picture("writing-en");
    ASSERT_TRUE(finish());
    tick_timer();
    keep_picture("written-en");
    click("CommandB");
    ASSERT_TRUE(finish());
    keep_picture("dry-en");
    speak(Language::kChinese);
    keep_picture("dry-zh");
    click("CommandE");
    keep_picture("failed-zh");
    click("CommandJ");
    tab(1);
    choose(put("Servo_Settings.cdo", "60600008\n64100320\n60810020\n20100310\n77770010\n"));
    click("Command8");
    click("Command7");
    ASSERT_TRUE(finish());
    tick_timer();
    keep_picture("read-zh");
    speak(Language::kEnglish);
    keep_picture("read-en");
    window.resize(1600, 860);
    keep_picture("read-large");
    tab(0);
    click("CommandE");
    window.resize(800, 520);
    keep_picture("small");
    click("CommandJ");
    choose(put("a-name-that-somebody-has-made-rather-too-long-for-any-line.cdi",
               "60600008,1,True\n60860010,0,False\n60860010,0\n60860010,0,True\n"));
    click("Command1");
    keep_picture("broken-en");
    speak(Language::kChinese);
    keep_picture("broken-zh");
    click("Command3");
    keep_picture("stored-zh");
    tick_timer();
    choose(put("other.cdi", "60600008,3,True\n60810020,5,True\n"));
    click("CommandD");
    keep_picture("compared-zh");
}

}  // namespace
}  // namespace servo::tools::test
