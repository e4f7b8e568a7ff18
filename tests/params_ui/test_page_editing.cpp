// Editing through the real controls.
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QWheelEvent>

#include "page_window_bench.h"

namespace servo::params {
namespace {

using Writes = std::vector<test::Write>;

class PageEditing : public test::PageWindowBench {
  protected:
    QModelIndex cell(int row, int column) const { return grid->model()->index(row - 1, column); }
};

TEST_F(PageEditing, AClickOnAValueOpensTheTextEditorOverTheCellWithItsTextSelected) {
    page.set_value(kTarget, 1234, 14);
    click(kTarget, kValue);
    EXPECT_TRUE(textbox->isVisible());
    EXPECT_FALSE(list->isVisible());
    EXPECT_TRUE(textbox->hasFocus());
    EXPECT_EQ(textbox->selectedText(), "1234");
    EXPECT_EQ(textbox->geometry(), grid->visualRect(cell(kTarget, kValue)));
}

TEST_F(PageEditing, TypingAndEnterWriteAndShowTheText) {
    click(kTarget, kValue);
    QTest::keyClicks(textbox, "120");
    QTest::keyClick(textbox, Qt::Key_Return);
    EXPECT_EQ(bench.writes, (Writes{{0x607A0004, 120}}));
    EXPECT_EQ(text(kTarget, kValue), "120");
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_TRUE(grid->hasFocus()) << "the keyboard stays where the user works";
}

TEST_F(PageEditing, TheWholeRoadByKeyboard) {
    click(kMode, kName);
    QTest::keyClick(grid, Qt::Key_Right);
    QTest::keyClick(grid, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(current(), kTarget);
    QTest::keyClick(grid, Qt::Key_Enter);
    ASSERT_TRUE(textbox->isVisible());
    QTest::keyClicks(textbox, "7");
    QTest::keyClick(textbox, Qt::Key_Enter);
    EXPECT_EQ(bench.writes, (Writes{{0x607A0004, 7}}));
}

TEST_F(PageEditing, KeysThatTheFilterSwallowsDoNotArrive) {
    click(kTarget, kValue);
    QTest::keyClicks(textbox, "1a2 +3.4.5-6");
    EXPECT_EQ(textbox->text(), "123.45-6");
}

TEST_F(PageEditing, KeysThatAreNoCharactersWorkAsInAnyBox) {
    click(kTarget, kValue);
    QTest::keyClicks(textbox, "123");
    QTest::keyClick(textbox, Qt::Key_Backspace);
    QTest::keyClick(textbox, Qt::Key_Home);
    QTest::keyClick(textbox, Qt::Key_Delete);
    QTest::keyClick(textbox, Qt::Key_Right);
    QTest::keyClicks(textbox, "9");
    EXPECT_EQ(textbox->text(), "29");
}

TEST_F(PageEditing, PasteAndCopyPassCutAndUndoDoNot) {
    click(kTarget, kValue);
    QApplication::clipboard()->setText(QStringLiteral("77"));
    QTest::keyClick(textbox, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(textbox->text(), "77");
    textbox->selectAll();
    QTest::keyClick(textbox, Qt::Key_X, Qt::ControlModifier);
    QTest::keyClick(textbox, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(textbox->text(), "77");
    QApplication::clipboard()->clear();
    QTest::keyClick(textbox, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "77");
}

TEST_F(PageEditing, LettersOfHexadecimalPassInAHexRowOnly) {
    page.grid().set_current({kControl, kUnit});
    click(kTarget, kValue);
    QTest::keyClicks(textbox, "AF");
    EXPECT_EQ(textbox->text(), "");
    // A HEX row without item lists.
    fill({0x608300});
    click(1, kUnit);
    QTest::keyClick(textbox, Qt::Key_Escape);
    Row row = bench.row(0x608300);
    row.unit = "HEX";
    page.grid().set_rows({row});
    click(1, kValue);
    QTest::keyClicks(textbox, "1gAf");
    EXPECT_EQ(textbox->text(), "1Af");
}

TEST_F(PageEditing, EscLeavesAndTheCellKeepsItsText) {
    page.set_value(kTarget, 10, 14);
    click(kTarget, kValue);
    QTest::keyClicks(textbox, "99");
    QTest::keyClick(textbox, Qt::Key_Escape);
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_EQ(text(kTarget, kValue), "10");
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageEditing, OutOfRangeClearsTheBoxAndItStaysOpen) {
    click(kTarget, kValue);
    QTest::keyClicks(textbox, "12345678901");
    QTest::keyClick(textbox, Qt::Key_Return);
    EXPECT_TRUE(textbox->isVisible());
    EXPECT_TRUE(textbox->hasFocus());
    EXPECT_EQ(textbox->text(), "");
    QTest::keyClicks(textbox, "9999999999");
    QTest::keyClick(textbox, Qt::Key_Return);
    EXPECT_EQ(textbox->text(), "");
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageEditing, EnterOnAnEmptyValueWritesZero) {
    click(kTarget, kValue);
    QTest::keyClick(textbox, Qt::Key_Return);
    EXPECT_EQ(bench.writes, (Writes{{0x607A0004, 0}}));
}

TEST_F(PageEditing, AValueOfAReadOnlyRowOpensNothingAndItsUnitTheList) {
    click(kStatus, kValue);
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_FALSE(list->isVisible());
    click(kStatus, kUnit);
    EXPECT_TRUE(list->isVisible());
    EXPECT_EQ(list->count(), 1);
}

TEST_F(PageEditing, ARowWithItemsOpensTheDropDownAndItsList) {
    page.set_value(kMode, 3, 11);
    click(kMode, kValue);
    EXPECT_TRUE(list->isVisible());
    EXPECT_TRUE(list->view()->isVisible()) << "opened when the button was released";
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(list->currentText(), "3:Velocity");
    EXPECT_EQ(list->geometry(), grid->visualRect(cell(kMode, kValue)));
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageEditing, APickWritesShowsTheItemAndHidesTheDropDown) {
    page.set_value(kMode, 3, 11);
    click(kMode, kValue);
    const QModelIndex item = list->model()->index(2, 0);
    QTest::mouseClick(list->view()->viewport(), Qt::LeftButton, {},
                      list->view()->visualRect(item).center());
    // A list ignores a release that comes too soon after it opened; the keyboard is never too soon.
    if (bench.writes.empty()) {
        list->view()->setCurrentIndex(item);
        QTest::keyClick(list->view(), Qt::Key_Return);
    }
    EXPECT_EQ(bench.writes, (Writes{{0x60600001, -4}}));
    EXPECT_EQ(text(kMode, kValue), "-4:Pulse");
    EXPECT_FALSE(list->isVisible());
    page.set_value(kMode, -4, 11);
    EXPECT_EQ(text(kMode, kValue), "-4");
}

TEST_F(PageEditing, TheDropDownByKeyboard) {
    page.set_value(kMode, 1, 11);
    page.grid().set_current({kMode, kValue});
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Return);
    ASSERT_TRUE(list->isVisible());
    EXPECT_FALSE(list->view()->isVisible());
    QTest::keyClick(list, Qt::Key_Down);  // opens the list
    ASSERT_TRUE(list->view()->isVisible());
    EXPECT_EQ(bench.writes, Writes{});
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(bench.writes, (Writes{{0x60600001, 3}}));
    EXPECT_FALSE(list->isVisible());
    EXPECT_TRUE(grid->hasFocus());
}

TEST_F(PageEditing, F4OpensTheListOfACell) {
    click(kMode, kName);
    QTest::keyClick(grid, Qt::Key_Right);
    QTest::keyClick(grid, Qt::Key_F4);
    EXPECT_TRUE(list->isVisible());
    ASSERT_TRUE(list->view()->isVisible());
    QTest::keyClick(list->view(), Qt::Key_Escape);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(bench.writes, Writes{});
    click(kTarget, kName);
    QTest::keyClick(grid, Qt::Key_Right);
    QTest::keyClick(grid, Qt::Key_F4);
    EXPECT_TRUE(textbox->isVisible()) << "a cell without a list";
}

TEST_F(PageEditing, WheelAndArrowsOverAClosedDropDownWriteNothing) {
    page.set_value(kMode, 1, 11);
    page.grid().set_current({kMode, kValue});
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Return);
    const QPointF at = list->rect().center();
    QWheelEvent wheel(at, list->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(list, &wheel);
    EXPECT_EQ(list->currentIndex(), 0);
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageEditing, EscInTheListLeavesAltogether) {
    click(kMode, kValue);
    ASSERT_TRUE(list->view()->isVisible());
    QTest::keyClick(list->view(), Qt::Key_Escape);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(page.grid().editor().open, Editor::kNone);
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageEditing, ADigitFindsItsItemAndOtherCharactersAreSwallowed) {
    page.set_value(kMode, 1, 11);
    page.grid().set_current({kMode, kValue});
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Return);
    QTest::keyClicks(list, "x");
    EXPECT_FALSE(list->view()->isVisible());
    QTest::keyClicks(list, "3");
    ASSERT_TRUE(list->view()->isVisible());
    EXPECT_EQ(list->view()->currentIndex().row(), 1);
    EXPECT_EQ(bench.writes, Writes{}) << "found, not chosen";
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(bench.writes, (Writes{{0x60600001, 3}}));
}

TEST_F(PageEditing, ACharacterInAListOfUnitsHidesIt) {
    page.grid().set_current({kVelocity, kUnit});
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Return);
    ASSERT_TRUE(list->isVisible());
    QTest::keyClicks(list, "r");
    EXPECT_FALSE(list->isVisible());
}

TEST_F(PageEditing, AUnitIsShownFromTheNextReadOn) {
    page.set_value(kVelocity, 1000000, 14);
    EXPECT_EQ(text(kVelocity, kValue), "366.21");
    click(kVelocity, kUnit);
    EXPECT_EQ(list->currentText(), "rpm");
    Q_EMIT list->activated(1);
    EXPECT_EQ(text(kVelocity, kUnit), "DEC");
    EXPECT_EQ(text(kVelocity, kValue), "366.21");
    EXPECT_EQ(bench.writes, Writes{});
    page.set_value(kVelocity, 1000000, 14);
    EXPECT_EQ(text(kVelocity, kValue), "1000000");
}

TEST_F(PageEditing, AClickOnAnotherValueMovesTheEditor) {
    click(kTarget, kValue);
    QTest::keyClicks(textbox, "5");
    click(kVelocity, kValue);
    EXPECT_TRUE(textbox->isVisible());
    EXPECT_TRUE(textbox->hasFocus());
    EXPECT_EQ(textbox->text(), "");
    EXPECT_EQ(textbox->geometry(), grid->visualRect(cell(kVelocity, kValue)));
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageEditing, AClickOnAUnitPutsTheListInPlaceOfTheTextEditor) {
    click(kTarget, kValue);
    click(kVelocity, kUnit);
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_TRUE(list->isVisible());
}

TEST_F(PageEditing, AClickOnANameOrBesideTheColumnsHidesBoth) {
    click(kTarget, kValue);
    click(kTarget, kName);
    EXPECT_FALSE(textbox->isVisible());
    click(kTarget, kValue);
    const QRect row = grid->visualRect(cell(kTarget, kUnit));
    ASSERT_LT(row.right() + 3, grid->viewport()->width());
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, {row.right() + 3, row.center().y()});
    EXPECT_FALSE(textbox->isVisible());
}

TEST_F(PageEditing, AClickBelowTheLastRowClosesWithoutWriting) {
    frame->resize(frame->width(), frame->height() + 80);
    click(kTarget, kValue);
    ASSERT_TRUE(textbox->isVisible());
    QTest::keyClicks(textbox, "5");
    const int below = grid->visualRect(cell(kCurrent, kValue)).bottom() + 30;
    ASSERT_LT(below, grid->viewport()->height());
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, {300, below});
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_EQ(bench.writes, Writes{});
    EXPECT_EQ(current(), kTarget);
}

TEST_F(PageEditing, TheHeaderOpensNothing) {
    click(0, kValue);
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_EQ(page.grid().current().row, 0);
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_FALSE(textbox->isVisible());
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(current(), 1);
}

TEST_F(PageEditing, LosingTheFocusClosesAnEditorOpenedByKeyAndNeverWrites) {
    page.grid().set_current({kTarget, kValue});
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Return);
    ASSERT_TRUE(textbox->hasFocus());
    QTest::keyClicks(textbox, "5");
    grid->setFocus(Qt::TabFocusReason);
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageEditing, AnEditorOpenedByAClickOutlivesTheLossOfFocus) {
    click(kTarget, kValue);
    grid->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(textbox->isVisible());
}

TEST_F(PageEditing, LeavingThePageHidesBothEditors) {
    auto* other = area->addSubWindow(new QWidget);
    other->show();
    area->setActiveSubWindow(frame);
    click(kTarget, kValue);
    ASSERT_TRUE(textbox->isVisible());
    area->setActiveSubWindow(other);
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageEditing, AReadDoesNotDisturbTheTypedText) {
    click(kTarget, kValue);
    QTest::keyClicks(textbox, "42");
    page.set_value(kTarget, 7, 14);
    EXPECT_EQ(textbox->text(), "42");
    EXPECT_EQ(text(kTarget, kValue), "7");
    QTest::keyClick(textbox, Qt::Key_Return);
    EXPECT_EQ(text(kTarget, kValue), "42");
}

TEST_F(PageEditing, DeletingARowClosesTheEditor) {
    click(kTarget, kValue);
    page.grid().delete_row(kTarget);
    EXPECT_FALSE(textbox->isVisible());
    EXPECT_EQ(grid_rows(*grid), 7);
}

TEST_F(PageEditing, ADoubleClickIsAClick) {
    click(kTarget, kValue, GridClick::kDouble);
    EXPECT_TRUE(textbox->isVisible());
    EXPECT_EQ(bench.writes, Writes{});
}

}  // namespace
}  // namespace servo::params
