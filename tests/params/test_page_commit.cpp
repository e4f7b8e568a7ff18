// What the two editors write to the drive and leave in the cells.
#include <gtest/gtest.h>

#include "params/page_grid.h"
#include "params/test_page_support.h"

namespace servo::params {
namespace {

using test::Bench;
using test::Write;
using Writes = std::vector<Write>;

// A grid of one object whose Value cell was clicked.
class PageCommit : public testing::Test {
  protected:
    Bench bench;
    PageGrid grid = bench.grid({});

    void click(dictionary::Identity key, std::string_view value = "", int column = kValue,
               std::string_view unit = "") {
        Row row = bench.row(key);
        row.value = value;
        if (!unit.empty()) row.unit = unit;
        grid.set_rows({row});
        grid.grid_mouse_down(MouseButton::kLeft, CellPosition{1, column});
    }
    char32_t enter(std::string_view text) { return grid.editor_key(kKeyEnter, text); }
    std::string_view value() const { return grid.cell(1, kValue); }
};

TEST_F(PageCommit, EnterWritesAndShowsTheTextAsTyped) {
    click(0x607A00, "10");
    EXPECT_EQ(enter("0020"), kKeySwallowed);
    EXPECT_EQ(bench.writes, (Writes{{0x607A0004, 20}}));
    EXPECT_EQ(value(), "0020");
    EXPECT_EQ(grid.editor().open, Editor::kNone);
}

TEST_F(PageCommit, EnterWritesEvenWhenTheTextDidNotChange) {
    click(0x607A00, "10");
    enter("10");
    EXPECT_EQ(bench.writes, (Writes{{0x607A0004, 10}}));
}

TEST_F(PageCommit, EnterOnAnEmptyValueTextInDecWritesZero) {
    click(0x607A00, "10", kValue, "DEC");
    enter("");
    EXPECT_EQ(bench.writes, (Writes{{0x607A0004, 0}}));
    EXPECT_EQ(value(), "") << "as typed";
}

TEST_F(PageCommit, ElevenCharactersClearTheEditorAndItStaysOpen) {
    click(0x607A00, "10");
    EXPECT_EQ(enter("12345678901"), kKeySwallowed);
    EXPECT_EQ(bench.writes, Writes{});
    EXPECT_EQ(value(), "10");
    EXPECT_EQ(grid.editor().open, Editor::kText);
    EXPECT_EQ(grid.editor().text, "");
}

TEST_F(PageCommit, TenNinesAreRefusedAsAboveTheRange) {
    click(0x607A00);
    enter("9999999999");
    EXPECT_EQ(bench.writes, Writes{});
    EXPECT_EQ(grid.editor().open, Editor::kText);
}

TEST_F(PageCommit, TheEndsOfTheRangeAreWritten) {
    click(0x607A00);
    enter("2147483647");
    click(0x607A00);
    enter("2147483648");
    EXPECT_EQ(bench.writes, (Writes{{0x607A0004, 2147483647}}));
    click(0x607A00);
    enter("-999999999");  // the lower end has eleven characters and cannot be typed in full
    EXPECT_EQ(bench.writes.back(), (Write{0x607A0004, -999999999}));
}

TEST_F(PageCommit, AUint32AboveTheSignedRangeGoesInHexOnly) {
    click(0x608300, "", kValue, "DEC");
    enter("4294967295");
    EXPECT_EQ(bench.writes, Writes{});
    click(0x608300, "", kValue, "HEX");
    enter("FFFFFFFF");
    EXPECT_EQ(bench.writes, (Writes{{0x60830004, -1}}));
}

TEST_F(PageCommit, FourHexDigitsWithTheHighBitAreNegative) {
    click(0x608300, "", kValue, "HEX");
    enter("8000");
    EXPECT_EQ(bench.writes, (Writes{{0x60830004, -32768}}));
}

TEST_F(PageCommit, AMinusInHexReadsAsZero) {
    click(0x608300, "", kValue, "HEX");
    EXPECT_EQ(grid.editor_key(U'-', ""), U'-');
    enter("-1");
    EXPECT_EQ(bench.writes, (Writes{{0x60830004, 0}}));
    EXPECT_EQ(value(), "-1");
}

TEST_F(PageCommit, AnotherUnitGoesThroughItsFormula) {
    click(0x60FF00);
    enter("366.21");
    // 366.21/1875*512*10000 = 999997.44, sent as a whole number
    EXPECT_EQ(bench.writes, (Writes{{0x60FF0004, 999997}}));
    EXPECT_EQ(value(), "366.21");
}

TEST_F(PageCommit, AMinusInsideTheTextTakesPartInTheFormula) {
    click(0x60FF00);
    enter("1-2");
    // 1 - 2/1875*512*10000
    EXPECT_EQ(bench.writes, (Writes{{0x60FF0004, -5460}}));
}

TEST_F(PageCommit, AUnitWithoutAWayBackWritesZero) {
    click(0x608600);
    EXPECT_EQ(grid.cell(1, kUnit), "Ap");
    enter("3");
    EXPECT_EQ(bench.writes, (Writes{{0x60860002, 0}}));
}

TEST_F(PageCommit, HalvesGoToTheEvenNeighbour) {
    for (const auto& [text, sent] : {std::pair{"2.5", 2}, std::pair{"3.5", 4}}) {
        bench.writes.clear();
        click(0x607A00);
        enter(text);
        EXPECT_EQ(bench.writes, (Writes{{0x607A0004, sent}}));
    }
}

TEST_F(PageCommit, AStringRowWritesThroughKeyZero) {
    click(0x100900, "V1.0");
    enter("7");
    ASSERT_EQ(bench.writes.size(), 1U);
    EXPECT_EQ(bench.writes[0].key, 0U);
}

TEST_F(PageCommit, AnUnknownTypeWritesThroughKeyZero) {
    click(0x608500);
    enter("7");
    EXPECT_EQ(bench.writes, (Writes{{0, 7}}));
}

TEST_F(PageCommit, AFormulaThatCannotBeReadLeavesEverythingAsItIs) {
    click(0x608700, "5", kValue, "bad");
    ASSERT_EQ(grid.editor().open, Editor::kText);
    EXPECT_EQ(enter("1"), kKeySwallowed);
    EXPECT_EQ(bench.writes, Writes{});
    EXPECT_EQ(grid.editor().open, Editor::kText);
    EXPECT_EQ(value(), "5");
}

TEST_F(PageCommit, EscHidesBothEditorsAndTheCellKeepsItsText) {
    click(0x607A00, "10");
    EXPECT_EQ(grid.editor_key(kKeyEsc, "99"), kKeySwallowed);
    EXPECT_EQ(grid.editor().open, Editor::kNone);
    EXPECT_EQ(value(), "10");
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageCommit, KeysGoThroughTheFilterOfTheUnit) {
    click(0x607A00);
    EXPECT_EQ(grid.editor_key(U'7', "1"), U'7');
    EXPECT_EQ(grid.editor_key(U'A', "1"), kKeySwallowed);
    click(0x608300, "", kValue, "HEX");
    EXPECT_EQ(grid.editor_key(U'A', "1"), U'A');
}

TEST_F(PageCommit, LosingTheFocusNeverWrites) {
    click(0x607A00, "10");
    grid.click_just_happend = Editor::kNone;
    grid.editor_lost_focus(Editor::kText);
    EXPECT_EQ(grid.editor().open, Editor::kNone);
    EXPECT_EQ(bench.writes, Writes{});
    EXPECT_EQ(value(), "10");
}

TEST_F(PageCommit, TheFocusChangeOfTheClickThatOpenedItDoesNotCloseIt) {
    click(0x607A00);
    EXPECT_EQ(grid.click_just_happend, Editor::kText);
    grid.editor_lost_focus(Editor::kText);
    EXPECT_EQ(grid.editor().open, Editor::kText);
    click(0x606000);
    EXPECT_EQ(grid.click_just_happend, Editor::kList);
    grid.editor_lost_focus(Editor::kText);  // the text editor that the list replaced
    grid.editor_lost_focus(Editor::kList);
    EXPECT_EQ(grid.editor().open, Editor::kList);
}

TEST_F(PageCommit, AChoiceInTheValueColumnWritesWhatStandsBeforeTheColon) {
    click(0x606000, "1");
    EXPECT_EQ(grid.editor().selected, 0);
    grid.choose(2);
    EXPECT_EQ(bench.writes, (Writes{{0x60600001, -4}}));
    EXPECT_EQ(value(), "-4:Pulse") << "the whole item, until the next read";
    EXPECT_EQ(grid.editor().open, Editor::kNone);
}

TEST_F(PageCommit, AChoiceInAnEmptyCellLeavesItEmpty) {
    click(0x606000);
    grid.choose(0);
    EXPECT_EQ(bench.writes, (Writes{{0x60600001, 1}}));
    EXPECT_EQ(value(), "");
}

TEST_F(PageCommit, AChoiceInHexReadsHexadecimal) {
    click(0x604000, "0006");
    grid.choose(1);
    EXPECT_EQ(bench.writes, (Writes{{0x60400002, 15}}));
    click(0x604000, "0006");
    grid.choose(2);
    EXPECT_EQ(bench.writes.back(), (Write{0x60400002, -1}));
}

TEST_F(PageCommit, TheSameItemAgainIsAChoiceToo) {
    click(0x606000, "1");
    grid.choose(0);
    EXPECT_EQ(bench.writes, (Writes{{0x60600001, 1}}));
    EXPECT_EQ(value(), "1:Position");
}

TEST_F(PageCommit, AChoiceOutsideTheRangeOfAWriteChangesNothing) {
    Bench other({{"200001", "a", "a", "Unsigned32", "RW", "[DEC]N*1", "|5000000000:多",
                  "|5000000000:Much"}});
    PageGrid many = other.grid({0x200001});
    many.set_value(1, 1, 4);
    many.grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    many.choose(0);
    EXPECT_EQ(other.writes, Writes{});
    EXPECT_EQ(many.cell(1, kValue), "1");
}

TEST_F(PageCommit, AChoiceOfAUnitWritesNothingAndKeepsTheTextUntilTheNextRead) {
    click(0x60FF00, "366.21", kUnit);
    ASSERT_EQ(grid.editor().open, Editor::kList);
    grid.choose(1);
    EXPECT_EQ(bench.writes, Writes{});
    EXPECT_EQ(grid.cell(1, kUnit), "DEC");
    EXPECT_EQ(value(), "366.21") << "a static row is not read again by itself";
    grid.set_value(1, 1000000, 14);
    EXPECT_EQ(value(), "1000000");
}

TEST_F(PageCommit, AReadOnlyRowMayChangeItsUnit) {
    Bench other({{"200001", "a", "a", "Unsigned16", "R", "[DEC]N*1\n[HEX]N*1"}});
    PageGrid one = other.grid({0x200001});
    one.grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    EXPECT_EQ(one.editor().open, Editor::kNone);
    EXPECT_EQ(one.click_just_happend, Editor::kNone);
    one.grid_mouse_down(MouseButton::kLeft, CellPosition{1, kUnit});
    EXPECT_EQ(one.click_just_happend, Editor::kList);
    one.choose(1);
    EXPECT_EQ(one.cell(1, kUnit), "HEX");
    one.set_value(1, 255, 2);
    EXPECT_EQ(one.cell(1, kValue), "00FF");
}

TEST_F(PageCommit, APositionThatIsNotInTheListIsNoChoice) {
    click(0x606000, "1");
    grid.choose(-1);
    grid.choose(3);
    EXPECT_EQ(bench.writes, Writes{});
    EXPECT_EQ(grid.editor().open, Editor::kList);
    click(0x607A00, "1");
    grid.choose(0);  // no drop-down is open
    EXPECT_EQ(bench.writes, Writes{});
}

TEST_F(PageCommit, EnterTypedInTheDropDownWritesNothing) {
    click(0x606000, "1");
    EXPECT_EQ(grid.list_key(kKeyEnter, "3:Velocity"), kKeySwallowed);
    EXPECT_EQ(bench.writes, Writes{});
    EXPECT_EQ(grid.editor().open, Editor::kList);
}

TEST_F(PageCommit, CharactersInAListOfValuesGoThroughTheFilter) {
    click(0x606000, "1");
    EXPECT_EQ(grid.list_key(U'3', ""), U'3');
    EXPECT_EQ(grid.list_key(U'x', ""), kKeySwallowed);
    EXPECT_EQ(grid.editor().open, Editor::kList);
    EXPECT_EQ(grid.list_key(kKeyEsc, ""), kKeySwallowed);
    EXPECT_EQ(grid.editor().open, Editor::kNone);
}

TEST_F(PageCommit, ACharacterInAListOfUnitsHidesIt) {
    click(0x60FF00, "", kUnit);
    EXPECT_EQ(grid.list_key(U'3', ""), kKeySwallowed);
    EXPECT_EQ(grid.editor().open, Editor::kNone);
}

TEST_F(PageCommit, AReadWhileTheEditorIsOpenDoesNotDisturbItAndTheCommitReplacesTheCell) {
    click(0x607A00, "10");
    grid.set_value(1, 77, 14);
    EXPECT_EQ(value(), "77");
    EXPECT_EQ(grid.editor().open, Editor::kText);
    EXPECT_EQ(grid.editor().text, "10");
    enter("12");
    EXPECT_EQ(value(), "12");
}

TEST_F(PageCommit, AnEditorKeepsItsRowWhenTheCurrentCellMoves) {
    Bench two;
    PageGrid rows = two.grid({0x607A00, 0x60FF00});
    rows.grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    rows.set_current({2, kValue});
    rows.editor_key(kKeyEnter, "5");
    EXPECT_EQ(two.writes, (Writes{{0x607A0004, 5}})) << "never into a row that was not opened";
}

TEST_F(PageCommit, AsciiTextGoesLowestByteFirst) {
    click(0x608300);
    enter("BA");
    EXPECT_EQ(bench.writes, (Writes{{0x60830004, 0x4142}}));
}

TEST_F(PageCommit, AnEmptyAsciiTextWritesTheDigitZero) {
    click(0x608300);
    enter("");
    EXPECT_EQ(bench.writes, (Writes{{0x60830004, 48}}));
}

}  // namespace
}  // namespace servo::params
