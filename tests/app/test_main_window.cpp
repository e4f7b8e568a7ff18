#include <gtest/gtest.h>

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QTableView>

#include "app/menu_table.h"
#include "app/style.h"
#include "params/grid_access_view.h"
#include "shown_shell.h"

namespace servo::app {
namespace {

using test::ShownShell;

QMdiSubWindow* frame_of(QWidget* content) {
    return qobject_cast<QMdiSubWindow*>(content->parentWidget());
}

TEST(MainWindow, StartsWithTitleMenusAndNoWindowOpen) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    EXPECT_EQ(shell.form.windowTitle(), "QRL Servo");
    EXPECT_EQ(shell.form.menu_item("file")->text(), "&File");
    EXPECT_EQ(shell.form.menu_item("English")->text(), "*English");
    for (const auto* window : shell.workstation.engine.all_windows)
        EXPECT_FALSE(window->visible()) << window->name();
    EXPECT_EQ(shell.form.tool_picture("commx"), "Commpic");
    EXPECT_EQ(shell.form.tool_picture("Errorx"), "errorgray");
    EXPECT_EQ(shell.form.tool("savex")->toolTip(), "Save");
}

TEST(MainWindow, TheReducedVariantHasItsTitleWordsAndHiddenItems) {
    ShownShell shell;
    shell.folder.write("Servo.dat", shell.folder.read("qorlan.dat"));
    ASSERT_TRUE(shell.start());
    EXPECT_EQ(shell.form.windowTitle(), "ZARN Configurator");
    EXPECT_EQ(shell.form.menu_item("DirverSettings")->text(), "Co&ntroller");
    for (const char* item : {"reverse", "tunner", "Ecan", "RS485X", "Ptable"})
        EXPECT_FALSE(shell.form.menu_item(item)->isVisible()) << item;
    EXPECT_TRUE(shell.form.menu_item("Vtable")->isVisible());
    EXPECT_EQ(shell.caption("Driver_CFG"), "Controller Configration");
}

TEST(MainWindow, EveryItemOfTheTableIsAnActionWithItsName) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    EXPECT_EQ(shell.form.menu_items().size(), static_cast<qsizetype>(menu_table().size()));
    for (const QString& item : shell.form.menu_items()) {
        ASSERT_NE(shell.form.menu_item(item), nullptr) << item.toStdString();
        EXPECT_EQ(shell.form.menu_item(item)->objectName(), item);
    }
    EXPECT_EQ(shell.form.menu_item("nothing"), nullptr);
}

TEST(MainWindow, EveryWindowOfTheListIsThereByName) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    for (const std::string_view name : link::kAllWindowNames) {
        QWidget* window = shell.form.window_widget(to_qt(name));
        ASSERT_NE(window, nullptr) << name;
        EXPECT_FALSE(window->windowTitle().isEmpty()) << name;
        EXPECT_FALSE(window->isVisible()) << name;
    }
    for (const MenuItem& item : menu_table())
        EXPECT_TRUE(shell.form.menu_item(to_qt(item.item))->isEnabled()) << item.item;
}

TEST(MainWindow, APageItemOpensThePageAndSendsThePollerThere) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("SPDLoop");
    EXPECT_TRUE(shell.window("VLoop").visible());
    EXPECT_TRUE(shell.on_screen("VLoop"));
    EXPECT_EQ(shell.caption("VLoop"), "Velocity Loop");
    EXPECT_EQ(shell.workstation.engine.state.Com_Change, 1);
    EXPECT_EQ(shell.workstation.engine.state.sub_Pointer, 0);
}

TEST(MainWindow, OpeningBringsAWindowToTheTop) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("SPDLoop");
    shell.menu("Basic_Operation");
    auto* area = shell.form.findChild<QMdiArea*>();
    EXPECT_EQ(area->activeSubWindow()->widget()->objectName(), "Basic");
    shell.menu("SPDLoop");
    EXPECT_EQ(area->activeSubWindow()->widget()->objectName(), "VLoop");
    EXPECT_EQ(area->subWindowList(QMdiArea::StackingOrder).constLast()->widget()->objectName(),
              "VLoop");
}

TEST(MainWindow, OpeningAMinimisedWindowRestoresIt) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("SPDLoop");
    QMdiSubWindow* frame = frame_of(shell.form.window_widget("VLoop"));
    frame->showMinimized();
    EXPECT_TRUE(shell.window("VLoop").visible());
    shell.menu("SPDLoop");
    EXPECT_FALSE(frame->isMinimized());
}

TEST(MainWindow, TheCloseBoxHidesAndKeepsTheRows) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.workstation.find_page("Basic")->set_text(2, "42");
    QWidget* content = shell.form.window_widget("Basic");
    frame_of(content)->close();
    EXPECT_FALSE(shell.window("Basic").visible());
    EXPECT_FALSE(content->isVisible());
    shell.menu("Basic_Operation");
    EXPECT_EQ(shell.form.window_widget("Basic"), content);
    EXPECT_TRUE(content->isVisible());
    EXPECT_EQ(
        params::grid_text(*shell.control<QTableView>("Basic", "MSHFlexGrid1"), 2, params::kValue),
        "42");
}

TEST(MainWindow, MinimisedWindowsAreArrangedAtTheBottom) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    for (const char* item : {"SPDLoop", "Basic_Operation"})
        shell.menu(item);
    auto* area = shell.form.findChild<QMdiArea*>();
    for (QMdiSubWindow* frame : area->subWindowList())
        if (!frame->isHidden()) {
            frame->showMinimized();
            frame->move(50, 10);
        }
    shell.menu("showminx");
    const int bottom = area->viewport()->height();
    for (QMdiSubWindow* frame : area->subWindowList())
        if (!frame->isHidden()) {
            EXPECT_EQ(frame->geometry().bottom() + 1, bottom);
        }
}

bool drawn(const QImage& image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 128) return true;
    return false;
}

TEST(Pictures, EveryOneIsThereAtEverySize) {
    QStringList names{"Commpic",    "CommOKpic", "Commerrorpic", "errorgray",
                      "errorgreen", "errorred",  "program"};
    for (const ToolItem& item : tool_table())
        names << to_qt(item.picture);
    for (const QString& name : names)
        for (const int size : {16, 24, 48})
            EXPECT_TRUE(drawn(picture(name).pixmap(size, size).toImage()))
                << name.toStdString() << " at " << size;
}

TEST(Pictures, AStateKeepsItsColoursOnADisabledButton) {
    const QIcon fault = state_picture("errorred");
    EXPECT_EQ(fault.pixmap(24, 24, QIcon::Disabled).toImage(),
              fault.pixmap(24, 24, QIcon::Normal).toImage());
    const QIcon open = picture("openpic");
    EXPECT_NE(open.pixmap(24, 24, QIcon::Disabled).toImage(),
              open.pixmap(24, 24, QIcon::Normal).toImage());
}

TEST(Language, SwitchesEveryTextAndKeepsTheValues) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.workstation.find_page("Basic")->set_text(2, "42");
    auto* grid = shell.control<QTableView>("Basic", "MSHFlexGrid1");
    EXPECT_EQ(params::grid_text(*grid, 2, params::kName), "Position actual");
    shell.menu("chinese");
    EXPECT_EQ(params::grid_text(*grid, 2, params::kName), QStringLiteral("实际位置"));
    EXPECT_EQ(params::grid_text(*grid, 2, params::kValue), "42");
    EXPECT_EQ(shell.caption("Basic"), QStringLiteral("基本操作"));
    EXPECT_EQ(shell.caption("Form1"), QStringLiteral("通信设置"));
    EXPECT_EQ(shell.form.menu_item("file")->text(), QStringLiteral("文件&F"));
    EXPECT_EQ(shell.form.menu_item("chinese")->text(), QStringLiteral("*中文"));
    EXPECT_EQ(shell.form.tool("savex")->toolTip(), QStringLiteral("保存"));
    EXPECT_EQ(shell.control<QLabel>("Form1", "LabelA")->text(), QStringLiteral("串口"));
    EXPECT_EQ(grid->font().families().constFirst(), QStringLiteral("宋体"));
    EXPECT_NE(shell.folder.read("sys/sys.ini").find("lang=0"), std::string::npos);
    shell.menu("English");
    EXPECT_EQ(params::grid_text(*grid, 2, params::kName), "Position actual");
    EXPECT_EQ(params::grid_text(*grid, 2, params::kValue), "42");
    EXPECT_EQ(grid->font().families().constFirst(), "Tahoma");
}

TEST(Language, AWindowMadeAfterTheSwitchComesUpInTheLanguage) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("chinese");
    EXPECT_EQ(shell.caption("VLoop"), QStringLiteral("速度环"));
    EXPECT_EQ(shell.caption("F003"), "DI/DO & Operation Mode Setting(F003)");
    EXPECT_EQ(shell.caption("About"), QStringLiteral("关于"));
    EXPECT_TRUE(
        shell.control<QLabel>("About", "LabelB")->text().startsWith(QStringLiteral("版本")));
    shell.menu("English");
    EXPECT_TRUE(shell.control<QLabel>("About", "LabelB")->text().startsWith("Version"));
    shell.menu("chinese");
    EXPECT_TRUE(
        shell.control<QLabel>("About", "LabelB")->text().startsWith(QStringLiteral("版本")));
}

TEST(Quit, HidesEverythingAtOnceAndSaysSo) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.workstation.engine.state.batch_mode = 1;
    QSignalSpy unloaded(&shell.form, &MDIForm1::unloaded);
    shell.menu("quit1");
    EXPECT_EQ(unloaded.count(), 1);
    EXPECT_FALSE(shell.form.isVisible());
    EXPECT_TRUE(shell.notice.boxes.empty());
}

TEST(Quit, TheCloseBoxOfTheMainWindowIsTheQuitCommand) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    QSignalSpy unloaded(&shell.form, &MDIForm1::unloaded);
    shell.form.close();
    EXPECT_EQ(unloaded.count(), 1);
}

TEST(Quit, AMissingDictionaryUnloadsBeforeAnythingIsShown) {
    ShownShell shell;
    shell.folder.remove("qorlan.dat");
    QSignalSpy unloaded(&shell.form, &MDIForm1::unloaded);
    EXPECT_FALSE(shell.start());
    EXPECT_EQ(unloaded.count(), 1);
    EXPECT_FALSE(shell.form.isVisible());
}

}  // namespace
}  // namespace servo::app
