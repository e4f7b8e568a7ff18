// The grid of a page on screen: what it shows, and how mouse, keys and wheel move in it.
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

#include "page_window_bench.h"
#include "params/ui_palette.h"

namespace servo::params {
namespace {

class PageView : public test::PageWindowBench {
  protected:
    void wheel(int delta, Qt::KeyboardModifiers held = Qt::NoModifier) {
        const QPointF at = grid->viewport()->rect().center();
        QWheelEvent event(at, grid->viewport()->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, held,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(grid->viewport(), &event);
    }
    std::vector<dictionary::Identity> many(int count) const {
        return std::vector<dictionary::Identity>(static_cast<std::size_t>(count), 0x607A00);
    }
};

TEST_F(PageView, IsNamedAfterItsPage) {
    EXPECT_EQ(window->objectName(), "Basic");
}

TEST_F(PageView, AnOpenedPageTakesTheKeyboard) {
    EXPECT_TRUE(grid->hasFocus());
    EXPECT_EQ(current(), 1);
}

TEST_F(PageView, ShowsHeaderAndRowsAndHoldsTheHiddenColumns) {
    EXPECT_EQ(grid_rows(*grid), 8);
    EXPECT_EQ(grid_columns(*grid), 11);
    EXPECT_EQ(text(0, kNumber), "N");
    EXPECT_EQ(text(0, kUnit), "Unit");
    EXPECT_EQ(text(0, kFormula), "");
    EXPECT_EQ(text(kTarget, kNumber), "2*");
    EXPECT_EQ(text(kTarget, kIndex), "607A00");
    EXPECT_EQ(text(kMode, kListCh), QStringLiteral("|1:位置|3:速度|-4:脉冲"));
    for (int column = 0; column < kColumns; ++column) {
        EXPECT_EQ(grid->isColumnHidden(column), column >= kFormula) << column;
    }
}

TEST_F(PageView, ReadOnlyRowsHaveTheToldBackgroundFromColumnOne) {
    EXPECT_FALSE(grid_color(*grid, kStatus, kNumber));
    for (int column = kIndex; column < kColumns; ++column) {
        EXPECT_EQ(grid_color(*grid, kStatus, column), QColor(209, 216, 200)) << column;
        EXPECT_FALSE(grid_color(*grid, kTarget, column));
    }
    // On screen, too.
    const QPoint cell = grid->visualRect(grid->model()->index(kStatus - 1, kUnit)).center();
    const QImage picture = grid->viewport()->grab().toImage();
    EXPECT_EQ(picture.pixelColor(cell * picture.devicePixelRatio()), QColor(209, 216, 200));
}

TEST_F(PageView, ColumnsAreToldFractionsOfTheGridAndNeedNoScrollBar) {
    for (int column = 0; column < kShownColumns; ++column) {
        EXPECT_EQ(grid->columnWidth(column), column_width(column, grid->width())) << column;
    }
    EXPECT_FALSE(grid->horizontalScrollBar()->isVisible());
    EXPECT_LE(grid->horizontalHeader()->length(), grid->viewport()->width());
    frame->resize(1000, frame->height());
    EXPECT_EQ(grid->columnWidth(kValue), column_width(kValue, grid->width()));
}

TEST_F(PageView, AnAnswerChangesItsCellOnly) {
    QSignalSpy changes(grid->model(), &QAbstractItemModel::dataChanged);
    page.set_value(kTarget, 4711, 14);
    EXPECT_EQ(text(kTarget, kValue), "4711");
    ASSERT_EQ(changes.size(), 1);
    const auto cell = changes[0][0].toModelIndex();
    EXPECT_EQ(cell, changes[0][1].toModelIndex());
    EXPECT_EQ(cell.row(), kTarget - 1);
    EXPECT_EQ(cell.column(), kValue);
    page.set_value(kTarget, 4711, 14);
    EXPECT_EQ(changes.size(), 1) << "the same text again is no change";
}

TEST_F(PageView, ATextFromTheDriveEndsAtItsFirstNul) {
    page.set_text(kTarget, std::string_view("AB\0\0", 4));
    EXPECT_EQ(text(kTarget, kValue), "AB");
}

TEST_F(PageView, TextsInToolTipsAreNeverMarkup) {
    page.set_text(kTarget, "<b>x</b>");
    const QModelIndex cell = grid->model()->index(kTarget - 1, kValue);
    EXPECT_EQ(cell.data(Qt::ToolTipRole).toString(), "<p>&lt;b&gt;x&lt;/b&gt;</p>");
    EXPECT_EQ(cell.siblingAtColumn(kName).data(Qt::ToolTipRole).toString(),
              "<p>Target position</p>");
}

TEST_F(PageView, TheToolTipOfAValueTellsItsMeaning) {
    page.set_value(kMode, 3, 11);
    const QModelIndex cell = grid->model()->index(kMode - 1, kValue);
    EXPECT_EQ(cell.data(Qt::ToolTipRole).toString(), "<p>3:Velocity</p>");
    bench.language = base::Language::kChinese;
    EXPECT_EQ(cell.data(Qt::ToolTipRole).toString(), QStringLiteral("<p>3:速度</p>"));
}

TEST_F(PageView, NamesFollowTheLanguage) {
    bench.language = base::Language::kChinese;
    page.grid().apply_language();
    EXPECT_EQ(text(kMode, kName), QStringLiteral("工作模式"));
}

TEST_F(PageView, UpAndDownMoveTheCurrentRow) {
    click(kTarget, kName);
    EXPECT_EQ(current(), kTarget);
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(current(), kVelocity);
    QTest::keyClick(grid, Qt::Key_Up);
    QTest::keyClick(grid, Qt::Key_Up);
    EXPECT_EQ(current(), kActual);
    QTest::keyClick(grid, Qt::Key_End);
    EXPECT_EQ(current(), kCurrent);
    QTest::keyClick(grid, Qt::Key_Home);
    EXPECT_EQ(current(), kMode);
}

TEST_F(PageView, LeftAndRightStayAmongTheShownColumns) {
    click(kTarget, kUnit);
    QTest::keyClick(grid, Qt::Key_Escape);
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(page.grid().current().column, kUnit);
    for (int i = 0; i < 9; ++i)
        QTest::keyClick(grid, Qt::Key_Left);
    EXPECT_EQ(page.grid().current().column, kNumber);
}

TEST_F(PageView, TheWheelIsUpAndDownWhileTheGridHasTheFocus) {
    click(kTarget, kName);
    wheel(-120);
    EXPECT_EQ(current(), kVelocity);
    wheel(120);
    wheel(120);
    EXPECT_EQ(current(), kActual);
}

TEST_F(PageView, OtherTurnsOfTheWheelAndHeldKeysDoNothing) {
    click(kTarget, kName);
    for (const int delta : {60, -60, 240, -240})
        wheel(delta);
    wheel(-120, Qt::ControlModifier);
    wheel(-120, Qt::ShiftModifier);
    EXPECT_EQ(current(), kTarget);
}

TEST_F(PageView, TheWheelDoesNothingWhileAnEditorHasTheFocus) {
    click(kTarget, kValue);
    ASSERT_TRUE(textbox->hasFocus());
    wheel(-120);
    EXPECT_EQ(current(), kTarget);
    EXPECT_TRUE(textbox->isVisible());
}

TEST_F(PageView, ScrollingMakesTheTopVisibleRowTheCurrentRow) {
    fill(many(60));
    click(3, kValue);
    ASSERT_TRUE(textbox->isVisible());
    auto* bar = grid->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_GT(bar->value(), 0);
    EXPECT_EQ(current(), bar->value() + 1);
    EXPECT_EQ(page.grid().current().row, bar->value() + 1);
    EXPECT_FALSE(textbox->isVisible()) << "it would lie over another row";
    EXPECT_TRUE(bench.writes.empty());
}

TEST_F(PageView, MovingTheCurrentRowOutOfSightScrollsWithoutAJump) {
    fill(many(60));
    click(1, kName);
    QTest::keyClick(grid, Qt::Key_End);
    EXPECT_EQ(current(), 60);
    EXPECT_GT(grid->verticalScrollBar()->value(), 0);
    QTest::keyClick(grid, Qt::Key_Up);
    EXPECT_EQ(current(), 59);
    QTest::keyClick(grid, Qt::Key_PageUp);
    EXPECT_LT(current(), 59);
    EXPECT_GT(current(), 1);
}

TEST_F(PageView, TheHeightFollowsTheRowsUpTo29) {
    main.resize(1100, 1600);
    const int row_height = grid->rowHeight(0);
    fill(many(10));
    const int ten = window->grid_view().height();
    fill(many(11));
    EXPECT_EQ(window->grid_view().height(), ten + row_height);
    QCoreApplication::processEvents();
    EXPECT_EQ(grid->viewport()->height(), 11 * row_height);
    EXPECT_FALSE(grid->verticalScrollBar()->isVisible());
    fill(many(28));
    EXPECT_EQ(window->grid_view().height(), ten + 18 * row_height);
    fill(many(29));
    EXPECT_EQ(window->grid_view().height(), ten + 18 * row_height);
    EXPECT_EQ(window->grid_view().wanted_height(), ten + 18 * row_height);
    page.grid().delete_row(5);
    page.grid().delete_row(5);
    EXPECT_EQ(window->grid_view().height(), ten + 17 * row_height);
}

TEST_F(PageView, APageThatDoesNotFitIsCutBetweenTwoRows) {
    main.resize(1100, 500);
    fill(many(40));
    EXPECT_LE(frame->geometry().bottom(), area->viewport()->height());
    EXPECT_EQ(grid->viewport()->height() % grid->rowHeight(0), 0);
    EXPECT_GT(grid->viewport()->height(), 8 * grid->rowHeight(0));
}

TEST_F(PageView, NoHeightCutsARow) {
    fill(many(40));
    for (int height = 200; height < 260; height += 7) {
        frame->resize(frame->width(), height);
        QCoreApplication::processEvents();
        EXPECT_EQ(grid->viewport()->height() % grid->rowHeight(0), 0) << height;
        EXPECT_GT(grid->viewport()->height(), 0) << height;
    }
}

TEST_F(PageView, ATableInAnotherFontChangesWhatThePageWants) {
    fill(many(10));
    const int before = window->sizeHint().height();
    QFont font = grid->font();
    font.setPixelSize(2 * QFontInfo(font).pixelSize());
    grid->setFont(font);
    EXPECT_GT(window->sizeHint().height(), before);
    QCoreApplication::processEvents();
    EXPECT_EQ(window->sizeHint().height() - window->grid_view().wanted_height(),
              window->contentsMargins().top() + 16);
}

TEST_F(PageView, TheSmallestPageShowsWholeNumbersAndIndices) {
    frame->resize(frame->minimumSizeHint());
    QCoreApplication::processEvents();
    const QFontMetrics metrics(grid->font());
    EXPECT_GE(grid->columnWidth(kNumber), metrics.horizontalAdvance(QStringLiteral("10*")));
    EXPECT_GT(grid->columnWidth(kIndex), metrics.horizontalAdvance(QStringLiteral("60FB0D")) + 8);
    EXPECT_EQ(grid->viewport()->height(), 3 * grid->rowHeight(0));
    EXPECT_LT(frame->width(), 640) << "two stand side by side on a usual screen";
}

TEST_F(PageView, AResizeHidesBothEditors) {
    click(kTarget, kValue);
    ASSERT_TRUE(textbox->isVisible());
    frame->resize(frame->width() + 40, frame->height());
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_TRUE(bench.writes.empty());
}

TEST_F(PageView, AnEmptyPageSaysSo) {
    fill({});
    EXPECT_EQ(grid_rows(*grid), 1);
    EXPECT_EQ(current(), 0);
    QTest::keyClick(grid, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_FALSE(textbox->isVisible());
    const QImage empty = grid->viewport()->grab().toImage();
    int dark = 0;
    for (int y = 0; y < empty.height(); ++y) {
        for (int x = 0; x < empty.width(); ++x)
            dark += empty.pixelColor(x, y).lightness() < 128;
    }
    EXPECT_GT(dark, 0);
}

TEST_F(PageView, TheRightButtonAsksForTheMenuOfItsRow) {
    QSignalSpy asked(window, &PageWindow::popup_asked);
    click(kVelocity, kName, GridClick::kRight);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(page.grid().popup_row(), kVelocity);
    EXPECT_EQ(current(), kVelocity);
    click(0, kName, GridClick::kRight);
    EXPECT_EQ(asked.size(), 2);
    EXPECT_EQ(page.grid().popup_row(), 0);
}

TEST_F(PageView, TheMenuKeyAsksForTheMenuOfTheCurrentRow) {
    QSignalSpy asked(window, &PageWindow::popup_asked);
    click(kActual, kName);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {0, 0}, {0, 0});
    QCoreApplication::sendEvent(grid->viewport(), &event);
    EXPECT_EQ(asked.size(), 1);
    EXPECT_EQ(page.grid().popup_row(), kActual);
}

TEST_F(PageView, CtrlCCopiesTheCurrentCell) {
    page.set_value(kTarget, 815, 14);
    click(kTarget, kName);
    page.grid().set_current({kTarget, kValue});
    QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "815");
}

TEST_F(PageView, ClosingHidesItAndKeepsTheRows) {
    page.set_value(kTarget, 5, 14);
    click(kTarget, kValue);
    frame->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(textbox->isVisible());
    frame->show();
    window->show();
    EXPECT_EQ(text(kTarget, kValue), "5");
    EXPECT_EQ(page.grid().editor().open, Editor::kNone);
    EXPECT_TRUE(bench.writes.empty());
}

TEST_F(PageView, AHiddenColumnOrAMissingRowCannotBeClicked) {
    EXPECT_FALSE(grid_click(*grid, 1, kFormula, GridClick::kLeft));
    EXPECT_FALSE(grid_click(*grid, 99, kValue, GridClick::kLeft));
    EXPECT_FALSE(grid_click(*grid, 1, -1, GridClick::kLeft));
}

TEST_F(PageView, GridsOfTabsCarryTheirNumber) {
    Page other(kPageTable.front(), bench.services());
    const PageGridView view(other.grid(), nullptr, QStringLiteral("(3)"));
    EXPECT_NE(view.findChild<QTableView*>(QStringLiteral("MSHFlexGrid1(3)")), nullptr);
    EXPECT_NE(view.findChild<QLineEdit*>(QStringLiteral("textbox1(3)")), nullptr);
    EXPECT_NE(view.findChild<QComboBox*>(QStringLiteral("Combobox1(3)")), nullptr);
}

}  // namespace
}  // namespace servo::params
