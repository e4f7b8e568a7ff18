// Edge cases of the shell through its real widgets, each under its own name.
#include <gtest/gtest.h>

#include <QMenu>
#include <QMouseEvent>
#include <QTabWidget>
#include <QTableView>

#include "app/keys_window.h"
#include "app/menu_table.h"
#include "app/style.h"
#include "params/grid_access_view.h"
#include "shown_shell.h"

namespace servo::app::test {
namespace {

using params::GridClick;

struct AuditShell : ShownShell {
    QTableView* grid(const char* window, const char* name = "MSHFlexGrid1") {
        return control<QTableView>(window, name);
    }
    int rows(const char* window) { return params::grid_rows(*grid(window)); }
    QString cell(const char* window, int row, int column) {
        return params::grid_text(*grid(window), row, column);
    }
    QAction* entry(const char* item) {
        QMenu* popup = form.open_popup();
        return popup == nullptr ? nullptr : popup->findChild<QAction*>(QLatin1String(item));
    }
    bool enabled(const char* item) {
        const QAction* action = entry(item);
        return action != nullptr && action->isVisible() && action->isEnabled();
    }
    void pick(const char* item) {
        QAction* action = entry(item);
        ASSERT_NE(action, nullptr) << item;
        ASSERT_TRUE(action->isEnabled()) << item;
        action->trigger();
        form.open_popup()->close();
    }
    void right_click(const char* window, int row) {
        ASSERT_TRUE(params::grid_click(*grid(window), row, params::kValue, GridClick::kRight));
    }
    // On the free area of a grid, below whatever rows it has.
    void right_click_below(const char* window) {
        QTableView* table = grid(window);
        table->resize(table->width(), table->height() + 200);
        const QPoint at(20, table->viewport()->height() - 5);
        ASSERT_LT(table->rowAt(at.y()), 0);
        QMouseEvent press(QEvent::MouseButtonPress, at, table->viewport()->mapToGlobal(at),
                          Qt::RightButton, Qt::RightButton, Qt::NoModifier);
        QApplication::sendEvent(table->viewport(), &press);
    }
    // In the browser, on the object of that key.
    void double_click(std::string_view key) {
        QTableView* list = grid("ObjectDictionay", "MSHFlexGrid2");
        const params::ObjectBrowser& browser = workstation.browser;
        for (int row = 1; row < browser.list_rows(); ++row) {
            if (browser.list_cell(row, 0) + browser.list_cell(row, 1) != key) continue;
            ASSERT_TRUE(params::grid_click(*list, row, 3, GridClick::kDouble));
            return;
        }
        FAIL() << key;
    }
};

TEST(StartUpEdge, WithOnlyQorlanTheTitleIsQrlServoAndAllMenuItemsAreVisible) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    EXPECT_EQ(shell.form.windowTitle(), "QRL Servo");
    for (const MenuItem& item : menu_table())
        EXPECT_TRUE(shell.form.menu_item(to_qt(item.item))->isVisible()) << item.item;
}

TEST(StartUpEdge, ClearsTheSharedStateOfAnEarlierLoad) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    auto& state = bench.workstation.engine.state;
    state.batch_mode = 3;
    state.page = 4;
    state.sub_Pointer = 9;
    bench.workstation.values.operands.o64100320 = {65536, true};
    bench.workstation.popup_window = &bench.window("Basic");
    bench.workstation.popup_row = 2;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_EQ(state.batch_mode, 0);
    EXPECT_EQ(state.page, 0);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_FALSE(bench.workstation.values.operands.o64100320.seen);
    EXPECT_EQ(bench.workstation.popup_window, nullptr);
    EXPECT_EQ(bench.workstation.popup_row, 0);
}

TEST(StartUpEdge, EveryMessageComesBeforeThatOfTheMissingDictionary) {
    ShellBench bench;
    for (const char* file : {"qorlan.dat", "modbus.txt", "sys/download.ini", "sys/RPDO8.ini"})
        bench.folder.remove(file);
    EXPECT_FALSE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), 4U);
    EXPECT_NE(bench.notice.boxes[0].second.find("RPDO8"), std::string::npos);
    EXPECT_NE(bench.notice.boxes[1].second.find("download"), std::string::npos);
    EXPECT_EQ(bench.notice.boxes[2].first, "Attention");
    EXPECT_EQ(bench.notice.boxes[3].second, "File Missing,Program is about to quit");
}

TEST(StartUpEdge, TheBrowsersGridIsReadyWithTheFirstObject) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_EQ(bench.workstation.browser.selected_row(), 1);
    EXPECT_EQ(bench.workstation.browser.list_cell(0, 0), "Index");
    EXPECT_EQ(bench.workstation.browser.rows(), 2);
}

TEST(PopUpEdge, OnTheHeaderOnlyAddStandsAndMakesTheFirstRow) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.right_click("Basic", 0);
    EXPECT_EQ(shell.workstation.popup_row, 0);
    EXPECT_TRUE(shell.enabled("adding"));
    EXPECT_FALSE(shell.enabled("deling"));
    EXPECT_FALSE(shell.enabled("helping"));
    shell.pick("adding");
    shell.double_click("607A00");
    ASSERT_EQ(shell.rows("Basic"), 5);
    EXPECT_EQ(shell.cell("Basic", 1, params::kIndex), "607A00");
    EXPECT_EQ(shell.cell("Basic", 1, params::kNumber).left(1), "0");
    EXPECT_EQ(shell.cell("Basic", 4, params::kNumber).left(1), "3");
}

TEST(PopUpEdge, BelowTheLastRowTheMenuIsThatOfTheLastRow) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.right_click_below("Basic");
    EXPECT_EQ(shell.workstation.popup_row, 3);
    shell.pick("adding");
    shell.double_click("607A00");
    ASSERT_EQ(shell.rows("Basic"), 5);
    EXPECT_EQ(shell.cell("Basic", 4, params::kIndex), "607A00");
    shell.right_click_below("Basic");
    shell.pick("deling");
    ASSERT_EQ(shell.rows("Basic"), 4);
    EXPECT_EQ(shell.cell("Basic", 3, params::kIndex), "60FF00");
}

TEST(PopUpEdge, OnAnEmptyPageOnlyAddStandsAndMakesARow) {
    AuditShell shell;
    shell.folder.remove("sys/BasicOperate.ini");
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    EXPECT_EQ(shell.rows("Basic"), 1);
    shell.right_click_below("Basic");
    EXPECT_TRUE(shell.enabled("adding"));
    EXPECT_FALSE(shell.enabled("deling"));
    EXPECT_FALSE(shell.enabled("helping"));
    shell.pick("adding");
    shell.double_click("606000");
    EXPECT_EQ(shell.rows("Basic"), 2);
}

TEST(PopUpEdge, DeletingTheLastRowOnScreenLeavesOnlyTheHeader) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    for (int left = 3; left > 0; --left) {
        shell.right_click("Basic", 1);
        shell.pick("deling");
        EXPECT_EQ(shell.rows("Basic"), left);
    }
    EXPECT_EQ(shell.cell("Basic", 0, params::kNumber), "N");
    EXPECT_EQ(shell.workstation.find_page("Basic")->rows(), 1);
}

TEST(PopUpEdge, AddingGoesIntoTheTabThatIsInFront) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("RPDOx");
    shell.control<QTabWidget>("RPDOSet", "SSTab1")->setCurrentIndex(4);
    ASSERT_TRUE(params::grid_click(*shell.grid("RPDOSet", "MSHFlexGrid1(4)"), 2, params::kValue,
                                   GridClick::kRight));
    EXPECT_EQ(shell.workstation.popup_window, &shell.window("RPDOSet"));
    shell.pick("adding");
    shell.double_click("607A00");
    const params::TabbedPage& page = *shell.workstation.find_tabbed_page("RPDOSet");
    ASSERT_EQ(page.grid(4).rows(), 5);
    EXPECT_EQ(page.grid(4).cell(3, params::kIndex), "607A00");
    EXPECT_EQ(page.grid(0).rows(), 4);
    EXPECT_EQ(page.grid(3).rows(), 4);
}

TEST(PopUpEdge, HelpEndsTheAddModeThatWasLeftOpen) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.right_click("Basic", 1);
    shell.pick("adding");
    shell.right_click("Basic", 2);
    shell.pick("helping");
    EXPECT_EQ(shell.workstation.browser.mode, params::ObjectBrowser::kMenuAndHelp);
    shell.double_click("607A00");
    EXPECT_FALSE(shell.on_screen("ObjectDictionay"));
    EXPECT_EQ(shell.rows("Basic"), 4);
}

TEST(PopUpEdge, TheLiveRowOfTheBrowserHasNoMenu) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("ODs");
    shell.right_click("ObjectDictionay", 1);
    EXPECT_EQ(shell.form.open_popup(), nullptr);
    EXPECT_EQ(shell.workstation.popup_window, nullptr);
}

TEST(LanguageEdge, AfterASwitchAPagesValueColumnIsUnchangedAndItsNameColumnHasChanged) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    for (int row = 1; row < 4; ++row)
        shell.workstation.find_page("Basic")->set_text(row, std::to_string(row * 11));
    std::vector<QString> names;
    for (int row = 1; row < 4; ++row)
        names.push_back(shell.cell("Basic", row, params::kName));
    shell.menu("chinese");
    for (int row = 1; row < 4; ++row) {
        EXPECT_EQ(shell.cell("Basic", row, params::kValue), QString::number(row * 11));
        EXPECT_NE(shell.cell("Basic", row, params::kName),
                  names[static_cast<std::size_t>(row - 1)]);
    }
}

TEST(New1Edge, TheListOfKeysGoesToo) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    shell.menu("keysx");
    const auto* keys = shell.form.findChild<KeysWindow*>();
    ASSERT_NE(keys, nullptr);
    ASSERT_TRUE(keys->isVisible());
    shell.menu("new1");
    EXPECT_FALSE(keys->isVisible());
    EXPECT_FALSE(shell.on_screen("Basic"));
}

TEST(OpenPageEdge, EveryWindowThatTheMenusOpenComesToTheTopAndAsksForItsRowsAtOnce) {
    AuditShell shell;
    ASSERT_TRUE(shell.start());
    auto& state = shell.workstation.engine.state;
    for (const MenuItem& item : menu_table()) {
        if (item.kind != MenuKind::kOpenPage) continue;
        state.Com_Change = 0;
        state.page = 5;
        state.sub_Pointer = 7;
        shell.form.menu_item(to_qt(item.item))->trigger();
        EXPECT_TRUE(shell.workstation.find_window(item.window)->visible()) << item.item;
        EXPECT_EQ(state.Com_Change, 1) << item.item;
        EXPECT_EQ(state.page, 0) << item.item;
        EXPECT_EQ(state.sub_Pointer, 0) << item.item;
    }
}

}  // namespace
}  // namespace servo::app::test
