// The windows of tabs through their real controls.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <numeric>

#include "base/temp_folder.h"
#include "params/grid_access_view.h"
#include "params/tabbed_page_window.h"
#include "params/test_page_support.h"

namespace servo::params {
namespace {

using Writes = std::vector<test::Write>;

struct TabbedWindow : testing::Test, test::Bench {
    TempFolder folder;
    TabbedPage page{kTabbedPageTable[0], services()};
    QMainWindow main;
    QMdiArea* area = new QMdiArea(&main);
    TabbedPageWindow* window = nullptr;
    QMdiSubWindow* frame = nullptr;
    QTabWidget* tabs = nullptr;

    enum : int { kActual = 1, kTarget, kVelocity };  // rows

    void SetUp() override {
        std::filesystem::create_directory(folder / "sys");
        for (int tab = 1; tab <= kTabs; ++tab)
            folder.put("sys/TPDO" + std::to_string(tab) + ".ini",
                       "title\r\nheading\r\n606300\r\n607A00\r\n60FF00\r\n");
        ASSERT_TRUE(page.load(folder.path()).empty());
        main.setCentralWidget(area);
        main.resize(1100, 800);
        window = new TabbedPageWindow(page);
        frame = area->addSubWindow(window);
        frame->setAttribute(Qt::WA_DeleteOnClose, false);
        main.show();
        frame->show();
        area->setActiveSubWindow(frame);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
        tabs = window->findChild<QTabWidget*>(QStringLiteral("SSTab1"));
        ASSERT_NE(tabs, nullptr);
    }

    template <typename Control>
    Control* control(const char* name, int tab) const {
        auto* found =
            window->findChild<Control*>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(tab));
        EXPECT_NE(found, nullptr) << name << tab;
        return found;
    }
    QTableView* grid(int tab) const { return control<QTableView>("MSHFlexGrid1", tab); }
    QLineEdit* textbox(int tab) const { return control<QLineEdit>("textbox1", tab); }
    QComboBox* list(int tab) const { return control<QComboBox>("Combobox1", tab); }
    void click_tab(int tab) const {
        QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier,
                          tabs->tabBar()->tabRect(tab).center());
        EXPECT_EQ(tabs->currentIndex(), tab);
    }
    void click(int tab, int row, int column, GridClick how = GridClick::kLeft) const {
        ASSERT_TRUE(grid_click(*grid(tab), row, column, how));
    }
    QString text(int tab, int row, int column) const { return grid_text(*grid(tab), row, column); }
};

TEST_F(TabbedWindow, ItsFirstSizeShowsAPdoWithItsEightMappingEntries) {
    frame->resize(frame->sizeHint());
    QCoreApplication::processEvents();
    EXPECT_EQ(grid(0)->viewport()->height(), 14 * grid(0)->rowHeight(0));
}

TEST_F(TabbedWindow, HasEightTabsEachWithItsOwnControls) {
    EXPECT_EQ(window->objectName(), "TPDOSet");
    ASSERT_EQ(tabs->count(), 8);
    EXPECT_EQ(tabs->property("Tag"), "TPDO1|TPDO2|TPDO3|TPDO4|TPDO5|TPDO6|TPDO7|TPDO8");
    for (int tab = 0; tab < kTabs; ++tab) {
        EXPECT_EQ(tabs->tabText(tab), QStringLiteral("TPDO%1").arg(tab + 1));
        EXPECT_EQ(grid_rows(*grid(tab)), 4);
        EXPECT_TRUE(textbox(tab)->isHidden());
        EXPECT_TRUE(list(tab)->isHidden());
        for (int column = 0; column < kColumns; ++column)
            EXPECT_EQ(text(tab, 0, column).toStdString(),
                      kHeader.at(static_cast<std::size_t>(column)));
        EXPECT_TRUE(grid(tab)->isColumnHidden(kFormula)) << tab;
    }
}

TEST_F(TabbedWindow, EveryGridHasTheToldWidthsWhenItIsShown) {
    for (int tab = 0; tab < kTabs; ++tab) {
        click_tab(tab);
        for (int column = 0; column < kShownColumns; ++column)
            EXPECT_EQ(grid(tab)->columnWidth(column), column_width(column, grid(tab)->width()));
    }
}

TEST_F(TabbedWindow, OpenedWhileNoLinkIsOpenAllValueCellsAreEmpty) {
    for (int tab = 0; tab < kTabs; ++tab) {
        click_tab(tab);
        for (int row = 1; row < grid_rows(*grid(tab)); ++row)
            EXPECT_EQ(text(tab, row, kValue), "");
    }
}

TEST_F(TabbedWindow, AValueReadOnTab2StaysVisibleWhenTheUserReturnsFromTab3) {
    click_tab(1);
    page.set_value(kActual, 55, 14);
    EXPECT_EQ(text(1, kActual, kValue), "55");
    click_tab(2);
    EXPECT_EQ(text(2, kActual, kValue), "");
    page.set_value(kActual, 66, 14);
    EXPECT_EQ(text(1, kActual, kValue), "55") << "refreshed only while tab 2 is active";
    EXPECT_EQ(text(2, kActual, kValue), "66");
    click_tab(1);
    EXPECT_EQ(text(1, kActual, kValue), "55");
}

TEST_F(TabbedWindow, ChangingTabsHidesTheEditorsOfTheTabThatHasBecomeActive) {
    click_tab(2);
    click(2, kTarget, kValue);
    ASSERT_TRUE(textbox(2)->isVisible());
    click_tab(5);
    click(5, kActual, kUnit);
    ASSERT_TRUE(list(5)->isVisible());
    click_tab(2);
    EXPECT_TRUE(textbox(2)->isHidden());
    click_tab(5);
    EXPECT_TRUE(list(5)->isHidden());
    EXPECT_TRUE(writes.empty());
}

TEST_F(TabbedWindow, TypingAndEnterWriteFromTheActiveTab) {
    click_tab(6);
    click(6, kTarget, kValue);
    QTest::keyClicks(textbox(6), "1A20");
    EXPECT_EQ(textbox(6)->text(), "120") << "letters of hexadecimal pass in HEX only";
    QTest::keyClick(textbox(6), Qt::Key_Return);
    EXPECT_EQ(writes, (Writes{{0x607A0004, 120}}));
    EXPECT_EQ(text(6, kTarget, kValue), "120");
    EXPECT_EQ(text(5, kTarget, kValue), "");
    EXPECT_TRUE(grid(6)->hasFocus());
}

TEST_F(TabbedWindow, AReadOnlyRowIsGrayAndOpensNoEditor) {
    page.grid(3).set_objects({0x607100});
    click_tab(3);
    EXPECT_EQ(grid_color(*grid(3), 1, kValue), QColor(209, 216, 200));
    click(3, 1, kValue);
    EXPECT_TRUE(textbox(3)->isHidden());
    click(3, 1, kUnit);
    EXPECT_TRUE(list(3)->isVisible());
}

TEST_F(TabbedWindow, TheRightButtonAsksForTheMenuOfTheActiveTabsRow) {
    QSignalSpy asked(window, &TabbedPageWindow::popup_asked);
    click_tab(4);
    click(4, kVelocity, kName, GridClick::kRight);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(&page.active_grid(), &page.grid(4));
    EXPECT_EQ(page.active_grid().popup_row(), kVelocity);
    click(4, 0, kName, GridClick::kRight);
    EXPECT_EQ(page.active_grid().popup_row(), 0);
}

TEST_F(TabbedWindow, ItsHeightDoesNotFollowTheRows) {
    const QSize before = frame->size();
    for (int i = 0; i < 3; ++i)
        page.active_grid().delete_row(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(frame->size(), before);
    std::vector<dictionary::Identity> many(40);
    std::iota(many.begin(), many.end(), 0x200000);
    page.active_grid().set_objects(many);
    QCoreApplication::processEvents();
    EXPECT_EQ(frame->size(), before);
    EXPECT_EQ(grid_rows(*grid(0)), 41);
}

TEST_F(TabbedWindow, AResizeHidesBothEditorsAndFitsTheColumns) {
    click(0, kTarget, kValue);
    ASSERT_TRUE(textbox(0)->isVisible());
    frame->resize(frame->width() - 80, frame->height());
    EXPECT_TRUE(textbox(0)->isHidden());
    EXPECT_EQ(grid(0)->columnWidth(kValue), column_width(kValue, grid(0)->width()));
    EXPECT_TRUE(writes.empty());
}

TEST_F(TabbedWindow, LeavingTheWindowHidesTheEditors) {
    auto* other = area->addSubWindow(new QWidget);
    other->show();
    area->setActiveSubWindow(frame);
    click(0, kTarget, kValue);
    ASSERT_TRUE(textbox(0)->isVisible());
    area->setActiveSubWindow(other);
    EXPECT_TRUE(textbox(0)->isHidden());
    EXPECT_TRUE(writes.empty());
}

TEST_F(TabbedWindow, ClosingHidesItAndKeepsTheRowsAndTheTab) {
    click_tab(3);
    page.set_value(kTarget, 5, 14);
    click(3, kTarget, kValue);
    frame->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(page.active_grid().editor().open, Editor::kNone);
    frame->show();
    window->show();
    EXPECT_EQ(tabs->currentIndex(), 3);
    EXPECT_EQ(text(3, kTarget, kValue), "5");
}

TEST_F(TabbedWindow, CtrlPageDownAndCtrlPageUpGoRoundTheTabs) {
    click(0, kTarget, kName);
    QTest::keyClick(grid(0), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_TRUE(grid(1)->hasFocus());
    QTest::keyClick(grid(1), Qt::Key_PageUp, Qt::ControlModifier);
    QTest::keyClick(grid(0), Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(tabs->currentIndex(), 7);
    EXPECT_TRUE(grid(7)->hasFocus());
    QTest::keyClick(grid(7), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_EQ(page.SSTab1_Tab(), 0);
}

TEST_F(TabbedWindow, ALanguageChangeSwapsTheNamesOfEveryTabAndKeepsTheValues) {
    page.set_value(kActual, 7, 14);
    language = base::Language::kChinese;
    page.apply_language();
    for (int tab = 0; tab < kTabs; ++tab)
        EXPECT_EQ(text(tab, kActual, kName), "实际位置");
    EXPECT_EQ(text(0, kActual, kValue), "7");
    EXPECT_EQ(text(0, 0, kName), "Name") << "headers are the same in both languages";
}

TEST_F(TabbedWindow, TheOrderOfAChangeOfMappingIsTold) {
    auto* hint = window->findChild<QLabel*>(QStringLiteral("LabelA"));
    ASSERT_NE(hint, nullptr);
    EXPECT_TRUE(hint->text().startsWith("To change a mapping, in this order: COB-ID + 80000000"));
    frame->resize(frame->sizeHint());
    QCoreApplication::processEvents();
    const int rows = grid(0)->viewport()->height();
    EXPECT_GE(hint->height(), hint->heightForWidth(hint->width())) << "none of it is cut";
    language = base::Language::kChinese;
    QEvent changed(QEvent::LanguageChange);
    QCoreApplication::sendEvent(window, &changed);
    QCoreApplication::processEvents();
    EXPECT_TRUE(hint->text().startsWith("修改映射的顺序："));
    EXPECT_GE(hint->height(), hint->heightForWidth(hint->width()));
    EXPECT_EQ(grid(0)->viewport()->height(), rows) << "the language moves nothing";
}

TEST_F(TabbedWindow, TheOtherWindowHasItsOwnNames) {
    TabbedPage receive(kTabbedPageTable[1], services());
    const TabbedPageWindow other(receive);
    EXPECT_EQ(other.objectName(), "RPDOSet");
    EXPECT_EQ(other.findChild<QTabWidget*>(QStringLiteral("SSTab1"))->tabText(7), "RPDO8");
}

}  // namespace
}  // namespace servo::params
