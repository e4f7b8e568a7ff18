// The commands of the shell through the real menus and grids: picking objects in the browser,
// projects, dropped files, and the desk that is remembered.
#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QDropEvent>
#include <QLabel>
#include <QMap>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QUrl>
#include <deque>

#include "app/desk_keeper.h"
#include "app/style.h"
#include "params/grid_access_view.h"
#include "shown_shell.h"

namespace servo::app::test {
namespace {

using params::GridClick;

// Answers file dialogs in their order, and keeps the boxes.
class ScriptedDialogs final : public UserDialogs {
  public:
    base::Answer show(std::string_view title, std::string_view text, base::Buttons) override {
        boxes.emplace_back(std::string(title), std::string(text));
        return base::Answer::kOk;
    }
    std::optional<std::string> ask_file(const FileRequest& request) override {
        requests.push_back(request);
        if (files.empty()) return {};
        const std::string path = files.front();
        files.pop_front();
        if (path == "-") return {};
        return path;
    }
    std::deque<std::string> files;
    std::vector<FileRequest> requests;
    std::vector<std::pair<std::string, std::string>> boxes;
};

struct CommandShell : ShownShell {
    ScriptedDialogs user;
    CommandShell() { dialogs.use(user); }

    QTableView* grid(const char* window, const char* name = "MSHFlexGrid1") {
        return control<QTableView>(window, name);
    }
    // Right click on a row, then the entry of the pop-up menu.
    void pick_popup(const char* window, int row, const char* item) {
        ASSERT_TRUE(params::grid_click(*grid(window), row, params::kValue, GridClick::kRight));
        QMenu* popup = form.open_popup();
        ASSERT_NE(popup, nullptr);
        auto* action = popup->findChild<QAction*>(QLatin1String(item));
        ASSERT_NE(action, nullptr) << item;
        ASSERT_TRUE(action->isEnabled()) << item;
        action->trigger();
        popup->close();
    }
    std::string file(const char* name) const { return (folder.path() / name).string(); }
    void drop(const std::vector<std::string>& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& path : paths)
            urls << QUrl::fromLocalFile(to_qt(path));
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(400, 300), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(&form, &enter);
        accepted = enter.isAccepted();
        QDropEvent event(QPointF(400, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&form, &event);
    }
    bool accepted = false;
};

int list_row_of(CommandShell& shell, const char* index) {
    QTableView* list = shell.grid("ObjectDictionay", "MSHFlexGrid2");
    for (int row = 1; row < params::grid_rows(*list); ++row)
        if (params::grid_text(*list, row, 0) + params::grid_text(*list, row, 1) ==
            QLatin1String(index))
            return row;
    return 0;
}

void double_click(CommandShell& shell, int row) {
    ASSERT_TRUE(params::grid_click(*shell.grid("ObjectDictionay", "MSHFlexGrid2"), row, 3,
                                   GridClick::kDouble));
}

TEST(PopUpMenu, HasItsEntriesOnARowAndOnTheHeader) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    const auto entries = [&shell](int row) {
        EXPECT_TRUE(
            params::grid_click(*shell.grid("Basic"), row, params::kValue, GridClick::kRight));
        QMenu* popup = shell.form.open_popup();
        QMap<QString, QAction*> found;
        for (QAction* action : popup->actions())
            found.insert(action->objectName(), action);
        return found;
    };
    auto row = entries(2);
    EXPECT_TRUE(row["adding"]->isEnabled());
    EXPECT_TRUE(row["helping"]->isEnabled());
    EXPECT_TRUE(row["deling"]->isEnabled());
    EXPECT_FALSE(row["copyline"]->isVisible());
    EXPECT_FALSE(row["pasteline"]->isVisible());
    EXPECT_EQ(row["deling"]->text(), "Delete");
    EXPECT_EQ(shell.workstation.popup_window, &shell.window("Basic"));
    EXPECT_EQ(shell.workstation.popup_row, 2);
    shell.form.open_popup()->close();
    EXPECT_EQ(shell.form.open_popup(), nullptr);
}

TEST(PopUpMenu, DeleteTakesTheRowOut) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.pick_popup("Basic", 2, "deling");
    EXPECT_EQ(shell.workstation.find_page("Basic")->rows(), 3);
    EXPECT_EQ(params::grid_rows(*shell.grid("Basic")), 3);
    EXPECT_EQ(params::grid_text(*shell.grid("Basic"), 2, params::kName), "Target velocity");
}

TEST(PopUpMenu, AddPicksAnObjectInTheBrowserThatGoesBelowTheRow) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.pick_popup("Basic", 1, "deling");  // the mode of operation, to be added again
    shell.pick_popup("Basic", 1, "adding");
    EXPECT_TRUE(shell.on_screen("ObjectDictionay"));
    EXPECT_EQ(shell.workstation.browser.mode, params::ObjectBrowser::kAdding);
    const int row = list_row_of(shell, "606000");
    ASSERT_GT(row, 0);
    double_click(shell, row);
    EXPECT_FALSE(shell.on_screen("ObjectDictionay"));
    EXPECT_FALSE(shell.window("ObjectDictionay").visible());
    QTableView* grid = shell.grid("Basic");
    ASSERT_EQ(params::grid_rows(*grid), 4);
    EXPECT_EQ(params::grid_text(*grid, 2, params::kIndex), "606000");
    EXPECT_EQ(params::grid_text(*grid, 2, params::kValue), "");
    EXPECT_TRUE(params::grid_text(*grid, 2, params::kNumber).startsWith("1"));
    EXPECT_TRUE(params::grid_text(*grid, 3, params::kNumber).startsWith("2"));
}

TEST(PopUpMenu, AddOfAnObjectThatThePageHasOnlyClosesTheBrowser) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.pick_popup("Basic", 1, "adding");
    double_click(shell, list_row_of(shell, "606300"));
    EXPECT_FALSE(shell.on_screen("ObjectDictionay"));
    EXPECT_EQ(params::grid_rows(*shell.grid("Basic")), 4);
}

TEST(PopUpMenu, HelpOpensTheBrowserOnTheObjectOfTheRow) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.pick_popup("Basic", 3, "helping");
    EXPECT_TRUE(shell.on_screen("ObjectDictionay"));
    EXPECT_EQ(shell.workstation.browser.mode, params::ObjectBrowser::kMenuAndHelp);
    EXPECT_EQ(shell.workstation.browser.details().index, "60FF");
    EXPECT_EQ(params::grid_text(*shell.grid("ObjectDictionay"), 1, params::kIndex), "60FF00");
}

TEST(PopUpMenu, WorksInATabOfThePdoWindows) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("TPDOx");
    auto* grid = shell.grid("TPDOSet", "MSHFlexGrid1(0)");
    ASSERT_NE(grid, nullptr);
    ASSERT_TRUE(params::grid_click(*grid, 1, params::kValue, GridClick::kRight));
    ASSERT_NE(shell.form.open_popup(), nullptr);
    shell.form.open_popup()->findChild<QAction*>(QStringLiteral("deling"))->trigger();
    shell.form.open_popup()->close();
    EXPECT_EQ(shell.workstation.find_tabbed_page("TPDOSet")->grid(0).rows(), 3);
    EXPECT_EQ(shell.workstation.find_tabbed_page("TPDOSet")->grid(1).rows(), 4);
}

TEST(Browser, TheMenuEntriesOpenItToLookThingsUp) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    for (const char* item : {"ODs", "ODs2"}) {
        shell.workstation.browser.mode = 3;
        shell.menu(item);
        EXPECT_TRUE(shell.on_screen("ObjectDictionay"));
        EXPECT_EQ(shell.workstation.browser.mode, 0) << item;
        double_click(shell, 1);
        EXPECT_FALSE(shell.on_screen("ObjectDictionay"));
    }
}

TEST(Projects, SavedAndOpenedThroughTheMenus) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.user.files = {shell.file("set.tpjt"), shell.file("set.tpjt")};
    shell.menu("Basic_Operation");
    shell.menu("aboutx");
    shell.workstation.find_page("Basic")->grid().set_value(1, 3, 11);
    shell.menu("save1");
    EXPECT_EQ(shell.folder.read("set.tpjt"),
              "[Basic]\r\n606000,3,DEC\r\n606300,,inc\r\n60FF00,,rpm\r\n[About]\r\n");
    shell.menu("new1");
    EXPECT_FALSE(shell.on_screen("Basic"));
    EXPECT_FALSE(shell.on_screen("About"));
    shell.workstation.find_page("Basic")->grid().delete_row(1);
    shell.menu("open1");
    EXPECT_TRUE(shell.on_screen("Basic"));
    EXPECT_TRUE(shell.on_screen("About"));
    EXPECT_EQ(params::grid_rows(*shell.grid("Basic")), 4);
    EXPECT_EQ(params::grid_text(*shell.grid("Basic"), 1, params::kValue), "3");
    ASSERT_EQ(shell.user.requests.size(), 2U);
    EXPECT_EQ(shell.user.requests[0].kind, FileRequest::Kind::kSave);
    EXPECT_EQ(shell.user.requests[1].suffix, "tpjt");
    EXPECT_TRUE(shell.user.boxes.empty());
}

TEST(Projects, CancelChangesNothing) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.user.files = {"-", "-"};
    shell.menu("Basic_Operation");
    shell.menu("save1");
    shell.menu("open1");
    EXPECT_TRUE(shell.on_screen("Basic"));
    EXPECT_TRUE(shell.form.menu_item("recentx")->menu()->isEmpty() ||
                !shell.form.menu_item("recentx")->isVisible());
}

TEST(Projects, TheModbusListIsSavedWithThreeOfItsColumnsAndNotOpened) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.user.files = {shell.file("modbus.tpjt"), shell.file("modbus.tpjt")};
    shell.menu("ModBusList");
    shell.menu("save1");
    const std::string saved = shell.folder.read("modbus.tpjt");
    ASSERT_TRUE(saved.starts_with("[modbus]\r\n"));
    const dictionary::Store& store = shell.workstation.dictionary;
    std::string rows;
    for (std::size_t row = 0; row < store.modbus_rows(); ++row)
        rows += store.modbus_cell(row, 1) + "," + store.modbus_cell(row, 4) + "," +
                store.modbus_cell(row, 5) + "\r\n";
    EXPECT_EQ(saved, "[modbus]\r\n" + rows);
    shell.menu("new1");
    shell.menu("open1");
    EXPECT_FALSE(shell.on_screen("modbus"));
}

TEST(Projects, OfAWindowOfTabsTheActiveOneIsSavedAndFilled) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.user.files = {shell.file("tabs.tpjt"), shell.file("tabs.tpjt")};
    shell.menu("RPDOx");
    params::TabbedPage& page = *shell.workstation.find_tabbed_page("RPDOSet");
    page.grid(2).delete_row(1);
    page.select_tab(2);
    shell.menu("save1");
    EXPECT_EQ(shell.folder.read("tabs.tpjt"), "[RPDOSet]\r\n606300,,inc\r\n60FF00,,rpm\r\n");
    page.select_tab(0);
    shell.menu("open1");
    EXPECT_EQ(page.grid(0).rows(), 3);
    EXPECT_EQ(page.grid(1).rows(), 4);
}

TEST(RecentFiles, StandInTheMenuAndOpenAgain) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    EXPECT_FALSE(shell.form.menu_item("recentx")->isVisible());
    shell.user.files = {shell.file("one.tpjt"), shell.file("two.tpjt")};
    shell.menu("Basic_Operation");
    shell.menu("save1");
    shell.menu("save1");
    EXPECT_TRUE(shell.form.menu_item("recentx")->isVisible());
    QMenu* menu = shell.form.menu_item("recentx")->menu();
    auto* second = menu->findChild<QAction*>(QStringLiteral("recentx(1)"));
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(second->text().contains("one.tpjt"));
    shell.menu("new1");
    second->trigger();
    QApplication::processEvents();
    EXPECT_TRUE(shell.on_screen("Basic"));
    EXPECT_TRUE(
        menu->findChild<QAction*>(QStringLiteral("recentx(0)"))->text().contains("one.tpjt"));
    menu->findChild<QAction*>(QStringLiteral("clearrecentx"))->trigger();
    QApplication::processEvents();
    EXPECT_FALSE(shell.form.menu_item("recentx")->isVisible());
}

TEST(DroppedFiles, AProjectIsOpened) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.folder.write("set.TPJT", "[Basic]\r\n606300,77,inc\r\n");
    shell.drop({shell.file("set.TPJT")});
    EXPECT_TRUE(shell.accepted);
    EXPECT_TRUE(shell.on_screen("Basic"));
    EXPECT_EQ(params::grid_text(*shell.grid("Basic"), 1, params::kValue), "77");
    EXPECT_TRUE(shell.user.boxes.empty());
}

// A configuration file goes into its window, on the side that it is for, and waits there: nothing
// is written and nothing is read before its button is pressed.
TEST(DroppedFiles, ACdiIsShownOnTheSideThatWrites) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.form.tool("importx")->trigger();
    auto* tabs = shell.control<QTabWidget>("imexport", "SSTab1");
    ASSERT_NE(tabs, nullptr);
    EXPECT_EQ(tabs->currentIndex(), 1);
    shell.folder.write("machine.CDI", "60600008,1,True\r\n60630020,5,False\r\n");
    shell.drop({shell.file("machine.CDI")});
    EXPECT_TRUE(shell.accepted);
    EXPECT_TRUE(shell.on_screen("imexport"));
    EXPECT_EQ(tabs->currentIndex(), 0);
    const QTableView& rows = *shell.grid("imexport", "MSHFlexGridA");
    ASSERT_EQ(params::grid_rows(rows), 3);
    EXPECT_EQ(params::grid_text(rows, 1, 1), "60600008");
    EXPECT_EQ(params::grid_text(rows, 2, 4), "Invalid");
    EXPECT_EQ(shell.control<QLabel>("imexport", "Label2")->text(),
              to_qt(shell.file("machine.CDI")));
    EXPECT_EQ(shell.workstation.engine.state.batch_mode, 0);
    EXPECT_TRUE(shell.user.boxes.empty());
}

TEST(DroppedFiles, ACdoIsShownOnTheSideThatReads) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.folder.write("list.cdo", "60600008\r\n60630020\r\n60FF0020\r\n");
    shell.drop({shell.file("list.cdo")});
    EXPECT_TRUE(shell.accepted);
    EXPECT_TRUE(shell.on_screen("imexport"));
    EXPECT_EQ(shell.control<QTabWidget>("imexport", "SSTab1")->currentIndex(), 1);
    const QTableView& rows = *shell.grid("imexport", "MSHFlexGridB");
    ASSERT_EQ(params::grid_rows(rows), 4);
    EXPECT_EQ(params::grid_text(rows, 3, 1), "60FF0020");
    EXPECT_EQ(shell.control<QLabel>("imexport", "Label8")->text(), to_qt(shell.file("list.cdo")));
    EXPECT_EQ(shell.workstation.engine.state.batch_mode, 0);
    EXPECT_TRUE(shell.user.boxes.empty());
}

TEST(DroppedFiles, ACdiWhileAConfigurationIsTransferredChangesNothing) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.folder.write("first.cdi", "60600008,1,True\r\n");
    shell.folder.write("second.cdi", "60630020,5,True\r\n60FF0020,5,True\r\n");
    shell.drop({shell.file("first.cdi")});
    tools::ImExport& form = shell.workstation.tools.configuration;
    form.Command2_Click();
    ASSERT_TRUE(form.running());
    shell.drop({shell.file("second.cdi")});
    EXPECT_EQ(form.data().source.size(), 1U);
    EXPECT_EQ(form.source_file(), shell.file("first.cdi"));
    form.stop();
}

TEST(ToolBar, TheTwoArrowsOpenTheConfigurationOnTheirSides) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    auto* tabs = shell.control<QTabWidget>("imexport", "SSTab1");
    for (int round = 0; round < 2; ++round) {
        shell.form.tool("importx")->trigger();
        EXPECT_TRUE(shell.on_screen("imexport"));
        EXPECT_EQ(tabs->currentIndex(), 1) << "reading";
        shell.form.tool("exportx")->trigger();
        EXPECT_EQ(tabs->currentIndex(), 0) << "writing";
    }
}

TEST(DroppedFiles, AForeignFileIsRefusedUnderTheMouse) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.folder.write("picture.png", "x");
    shell.drop({shell.file("picture.png")});
    EXPECT_FALSE(shell.accepted);
}

TEST(DroppedFiles, AForeignFileAmongOthersIsNamed) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.folder.write("picture.png", "x");
    shell.folder.write("set.tpjt", "[About]\r\n");
    shell.drop({shell.file("picture.png"), shell.file("set.tpjt")});
    EXPECT_TRUE(shell.accepted);
    EXPECT_TRUE(shell.on_screen("About"));
    ASSERT_EQ(shell.user.boxes.size(), 1U);
    EXPECT_EQ(shell.user.boxes[0].first, " Notice");
    EXPECT_NE(shell.user.boxes[0].second.find("picture.png"), std::string::npos);
}

TEST(ToolkitTexts, BoxesFollowTheLanguage) {
    if (!ToolkitTexts::installed()) GTEST_SKIP() << "the toolkit has no Chinese texts here";
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    const auto cancel = [] {
        QDialogButtonBox box(QDialogButtonBox::Cancel);
        return box.button(QDialogButtonBox::Cancel)->text().remove(QLatin1Char('&'));
    };
    EXPECT_EQ(cancel(), "Cancel");
    shell.menu("chinese");
    EXPECT_EQ(cancel(), QStringLiteral("取消"));
    shell.menu("English");
    EXPECT_EQ(cancel(), "Cancel");
}

TEST(Desk, WindowsAndRecentFilesComeBackWhereTheyWere) {
    ProgramFolder folder;
    const QRect place(60, 40, 700, 300);
    {
        CommandShell shell;
        DeskKeeper desk(folder.path());
        shell.form.use_desk(desk);
        ASSERT_TRUE(shell.start());
        shell.user.files = {shell.file("set.tpjt")};
        shell.menu("Basic_Operation");
        shell.menu("save1");
        shell.form.window_widget("Basic")->parentWidget()->setGeometry(place);
        shell.menu("quit1");
    }
    CommandShell shell;
    DeskKeeper desk(folder.path());
    EXPECT_EQ(desk.recent().size(), 1U);
    shell.form.use_desk(desk);
    ASSERT_TRUE(shell.start());
    EXPECT_TRUE(shell.form.menu_item("recentx")->isVisible());
    shell.menu("Basic_Operation");
    EXPECT_EQ(shell.form.window_widget("Basic")->parentWidget()->geometry(), place);
    EXPECT_EQ(folder.read("sys/sys.ini").find("Basic"), std::string::npos);
}

TEST(Desk, WithoutAKeeperNothingIsWritten) {
    CommandShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.menu("quit1");
    EXPECT_FALSE(std::filesystem::exists(shell.folder.path() / "sys" / "desk.json"));
}

}  // namespace
}  // namespace servo::app::test
