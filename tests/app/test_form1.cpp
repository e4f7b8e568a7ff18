#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>

#include "app/style.h"
#include "shown_shell.h"

namespace servo::app {
namespace {

using test::ShownShell;

TEST(Form1, HasItsControlsByNameAndTheirDefaults) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    auto* ports = shell.control<QComboBox>("Form1", "Combo1");
    ASSERT_NE(ports, nullptr);
    EXPECT_EQ(ports->count(), 2);
    EXPECT_EQ(ports->currentText(), "COM1");
    EXPECT_EQ(shell.control<QComboBox>("Form1", "Combo2")->currentText(), "38400");
    EXPECT_EQ(shell.control<QComboBox>("Form1", "Combo2")->count(), 8);
    EXPECT_EQ(shell.control<QLineEdit>("Form1", "Text1")->text(), "127");
    EXPECT_EQ(shell.control<QPushButton>("Form1", "Command1")->text(), "OPEN");
    EXPECT_EQ(shell.control<QComboBox>("Form1", "Combo3")->currentText(), "1M");
    EXPECT_EQ(shell.control<QLineEdit>("Form1", "Text2")->text(), "1");
    EXPECT_EQ(shell.control<QPushButton>("Form1", "Command3")->text(), "Active");
    EXPECT_EQ(shell.control<QLabel>("Form1", "Label7")->text(), QStringLiteral("CAN口未激活"));
    EXPECT_EQ(shell.control<QLabel>("Form1", "Label8")->text(), QStringLiteral("只支持Peak-CAN"));
    for (const char* name :
         {"Command2", "LabelA", "LabelB", "LabelC", "LabelD", "LabelE", "LabelF", "SSTab1"})
        EXPECT_NE(shell.control<QWidget>("Form1", name), nullptr) << name;
}

TEST(Form1, TheCanTabIsHidden) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    auto* tabs = shell.control<QTabWidget>("Form1", "SSTab1");
    EXPECT_EQ(tabs->count(), 2);
    EXPECT_TRUE(tabs->isTabVisible(0));
    EXPECT_FALSE(tabs->isTabVisible(1));
}

TEST(Form1, ShowsTheDeviceBesideThePort) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    auto* device = shell.control<QLabel>("Form1", "LabelDevice");
    EXPECT_EQ(device->text(), "/dev/ttyS0");
    shell.control<QComboBox>("Form1", "Combo1")->setCurrentIndex(1);
    EXPECT_EQ(device->text(), "/dev/ttyUSB0  FT232R USB UART");
    // A path is no pair of texts, whatever its slashes look like.
    shell.menu("chinese");
    EXPECT_EQ(device->text(), "/dev/ttyUSB0  FT232R USB UART");
}

TEST(Form1, TheMenuShowsItOnTopAndTheCloseBoxHidesIt) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Communication_Settings");
    EXPECT_TRUE(shell.on_screen("Form1"));
    EXPECT_TRUE(shell.window("Form1").visible());
    EXPECT_TRUE(shell.workstation.communication.state().dialog_visible);
    shell.form.window_widget("Form1")->parentWidget()->close();
    EXPECT_FALSE(shell.on_screen("Form1"));
    EXPECT_FALSE(shell.window("Form1").visible());
    EXPECT_FALSE(shell.workstation.communication.state().dialog_visible);
}

TEST(Form1, TheOpeningRouteShowsItToo) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    EXPECT_TRUE(shell.form.open_window("Form1"));
    EXPECT_TRUE(shell.on_screen("Form1"));
    EXPECT_TRUE(shell.workstation.communication.state().dialog_visible);
    EXPECT_TRUE(shell.form.close_window_by_name("Form1"));
    EXPECT_FALSE(shell.on_screen("Form1"));
    EXPECT_FALSE(shell.workstation.communication.state().dialog_visible);
    EXPECT_FALSE(shell.form.open_window("Nothing"));
}

TEST(Form1, SaysWhatIsMissingWhenNoPortIsSelected) {
    ShownShell shell;
    shell.ports.entries.clear();
    ASSERT_TRUE(shell.start());
    auto* device = shell.control<QLabel>("Form1", "LabelDevice");
    EXPECT_EQ(device->text(), "No serial port found");
    shell.menu("chinese");
    EXPECT_EQ(device->text(), QStringLiteral("没有找到串口"));
    shell.ports.entries.push_back({"COM5", "/dev/ttyS4", ""});
    shell.control<QPushButton>("Form1", "Command2")->click();
    EXPECT_EQ(device->text(), QStringLiteral("请选择串口"));
}

TEST(Form1, EscHidesIt) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Communication_Settings");
    QTest::keyClick(shell.control<QLineEdit>("Form1", "Text1"), Qt::Key_Escape);
    EXPECT_FALSE(shell.window("Form1").visible());
}

TEST(Form1, EnterInAFieldOpensTheLink) {
    for (const char* name : {"Text1", "Combo2"}) {
        ShownShell shell;
        ASSERT_TRUE(shell.start());
        shell.menu("Communication_Settings");
        auto* field = shell.control<QWidget>("Form1", name);
        field->setFocus();
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_TRUE(shell.port.is_open()) << name;
    }
}

TEST(Form1, EnterPressesTheButtonWithTheFocus) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Communication_Settings");
    shell.form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&shell.form));
    auto* refresh = shell.control<QPushButton>("Form1", "Command2");
    refresh->setFocus();
    QSignalSpy pressed(refresh, &QPushButton::clicked);
    QTest::keyClick(refresh, Qt::Key_Enter);
    EXPECT_EQ(pressed.count(), 1);
    EXPECT_FALSE(shell.port.is_open());
}

TEST(Form1, OpensAndClosesTheLink) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Communication_Settings");
    auto* open = shell.control<QPushButton>("Form1", "Command1");
    shell.control<QLineEdit>("Form1", "Text1")->setText("5");
    open->click();
    EXPECT_TRUE(shell.port.is_open());
    EXPECT_TRUE(shell.timer.enabled());
    EXPECT_EQ(open->text(), "CLOSE");
    EXPECT_EQ(shell.form.tool_picture("commx"), "CommOKpic");
    EXPECT_EQ(shell.workstation.engine.serial.COMM_ID, 5);
    for (const char* name : {"Combo1", "Combo2", "Text1", "Command2"})
        EXPECT_FALSE(shell.control<QWidget>("Form1", name)->isEnabled()) << name;
    open->click();
    EXPECT_FALSE(shell.port.is_open());
    EXPECT_EQ(open->text(), "OPEN");
    EXPECT_EQ(shell.form.tool_picture("commx"), "Commpic");
    for (const char* name : {"Combo1", "Combo2", "Text1", "Command2"})
        EXPECT_TRUE(shell.control<QWidget>("Form1", name)->isEnabled()) << name;
}

TEST(Form1, TheOpenButtonChangesItsLanguageWhileTheLinkIsOpen) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.control<QPushButton>("Form1", "Command1")->click();
    shell.menu("chinese");
    EXPECT_EQ(shell.control<QPushButton>("Form1", "Command1")->text(), QStringLiteral("关闭"));
    EXPECT_TRUE(shell.port.is_open());
}

TEST(Form1, TheToolConnectsToTheSavedPortAtOnce) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.form.tool("commx")->trigger();
    EXPECT_TRUE(shell.port.is_open());
    EXPECT_TRUE(shell.window("Form1").visible());
}

TEST(Form1, TheToolOpensTheDialogWhenTheSavedPortIsNotInTheList) {
    ShownShell shell;
    shell.folder.write("sys/sys.ini", "[com]\r\ncomid=COM77\r\n");
    ASSERT_TRUE(shell.start());
    shell.form.tool("commx")->trigger();
    EXPECT_FALSE(shell.port.is_open());
    EXPECT_TRUE(shell.window("Form1").visible());
    EXPECT_EQ(shell.control<QComboBox>("Form1", "Combo1")->currentIndex(), -1);
}

TEST(Form1, RefreshTakesTheListAnew) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.ports.entries.push_back({"COM21", "/dev/ttyACM0", ""});
    shell.control<QPushButton>("Form1", "Command2")->click();
    EXPECT_EQ(shell.control<QComboBox>("Form1", "Combo1")->count(), 3);
}

TEST(Form1, ATimeOutShowsTheDialogAndKeepsTheErrorPicture) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.form.tool("commx")->trigger();
    shell.form.close_window_by_name("Form1");
    for (int tick = 0; tick < 2 * 350 + 10 && shell.timer.enabled(); ++tick)
        shell.workstation.engine.cTmr_Timer();
    EXPECT_FALSE(shell.timer.enabled());
    EXPECT_EQ(shell.form.tool_picture("commx"), "Commerrorpic");
    EXPECT_EQ(shell.form.tool_picture("Errorx"), "errorgray");
    EXPECT_TRUE(shell.on_screen("Form1"));
    EXPECT_EQ(shell.control<QPushButton>("Form1", "Command1")->text(), "OPEN");
}

}  // namespace
}  // namespace servo::app
