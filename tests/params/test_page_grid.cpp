#include "params/page_grid.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/file.h"
#include "params/page.h"
#include "params/test_page_support.h"

namespace servo::params {
namespace {

using base::Language;
using test::Bench;

// Counts what a view would have to repaint.
struct Watcher final : GridObserver {
    int resets = 0;
    int moves = 0;
    int editors = 0;
    std::vector<CellPosition> cells;
    void rows_reset() override { ++resets; }
    void cell_changed(int row, int column) override { cells.push_back({row, column}); }
    void current_changed() override { ++moves; }
    void editor_changed() override { ++editors; }
};

std::vector<std::string> column(const PageGrid& grid, int number) {
    std::vector<std::string> texts;
    for (int row = 0; row < grid.rows(); ++row)
        texts.emplace_back(grid.cell(row, number));
    return texts;
}

using Texts = std::vector<std::string>;

TEST(PageGrid, RowZeroIsTheHeader) {
    Bench bench;
    const PageGrid grid = bench.grid({0x606000});
    EXPECT_EQ(grid.rows(), 2);
    EXPECT_EQ(column(grid, kIndex), (Texts{"Index", "606000"}));
    EXPECT_EQ(grid.cell(0, kFormula), "");
    EXPECT_EQ(grid.cell(2, kIndex), "");
    EXPECT_EQ(grid.cell(1, kColumns), "");
}

TEST(PageGrid, AnEmptyGridHasOnlyTheHeader) {
    Bench bench;
    PageGrid grid = bench.grid({});
    EXPECT_EQ(grid.rows(), 1);
    EXPECT_EQ(grid.current().row, 0);
    grid.move_current(1);
    EXPECT_EQ(grid.current().row, 0);
    EXPECT_EQ(grid.open_editor(), Editor::kNone);
}

TEST(PageGrid, TheReadOnlyColourCoversColumnsOneToTen) {
    Bench bench;
    const PageGrid grid = bench.grid({0x607100, 0x607A00});
    EXPECT_FALSE(grid.read_only_cell(1, kNumber));
    for (int i = kIndex; i < kColumns; ++i) {
        EXPECT_TRUE(grid.read_only_cell(1, i)) << i;
        EXPECT_FALSE(grid.read_only_cell(2, i)) << i;
        EXPECT_FALSE(grid.read_only_cell(0, i)) << i;
    }
}

TEST(PageGrid, AnswersAreShownInTheUnitOfTheRow) {
    Bench bench;
    PageGrid grid = bench.grid({0x60FF00, 0x604000, 0x608600});
    grid.set_value(1, 1000000, 14);
    grid.set_value(2, 15, 2);
    grid.set_value(3, 2048, 12);
    EXPECT_EQ(column(grid, kValue), (Texts{"Value", "366.21", "000F", "15.00"}));
}

TEST(PageGrid, ARefusedReadShowsQuestionMarks) {
    Bench bench;
    PageGrid grid = bench.grid({0x607A00});
    grid.set_text(1, "?????");
    EXPECT_EQ(grid.cell(1, kValue), "?????");
}

TEST(PageGrid, AStringComesInTheCodePage) {
    Bench bench;
    PageGrid grid = bench.grid({0x100900});
    grid.set_text(1, base::utf8_to_gbk("伺服 V2"));
    EXPECT_EQ(grid.cell(1, kValue), "伺服 V2");
}

TEST(PageGrid, AnAnswerToARowThatIsGoneIsDropped) {
    Bench bench;
    PageGrid grid = bench.grid({0x607A00});
    for (const int row : {-1, 0, 2}) {
        grid.set_value(row, 1, 4);
        grid.set_text(row, "x");
    }
    EXPECT_EQ(column(grid, kValue), (Texts{"Value", ""}));
}

TEST(PageGrid, AFormulaThatCannotBeReadLeavesTheCell) {
    Bench bench;
    PageGrid grid = bench.grid({0x608700});
    grid.set_value(1, 5, 4);
    grid.grid_mouse_down(MouseButton::kLeft, CellPosition{1, kUnit});
    grid.choose(1);
    EXPECT_EQ(grid.cell(1, kUnit), "bad");
    grid.set_value(1, 6, 4);
    EXPECT_EQ(grid.cell(1, kValue), "5");
}

TEST(PageGrid, OnlyAChangedCellIsRepainted) {
    Bench bench;
    PageGrid grid = bench.grid({0x607A00, 0x606300});
    Watcher watcher;
    grid.set_observer(&watcher);
    grid.set_value(2, 7, 14);
    grid.set_value(2, 7, 14);
    grid.set_text(1, "?????");
    grid.set_text(1, "?????");
    EXPECT_EQ(watcher.cells, (std::vector<CellPosition>{{2, kValue}, {1, kValue}}));
    EXPECT_EQ(watcher.resets, 0);
}

TEST(PageGrid, ThePollerSeesNumberIndexTypeAndValue) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x607A00});
    grid.set_value(2, 5, 14);
    const link::PollRow row = grid.poll_row(2);
    EXPECT_EQ(row.number, "1*");
    EXPECT_EQ(row.index, "607A00");
    EXPECT_EQ(row.type, "int32");
    EXPECT_EQ(row.value, "5");
    EXPECT_EQ(grid.poll_row(0).type, "Type") << "no type of an object, so it asks nothing";
}

TEST(PageGrid, ALanguageSwitchChangesNamesAndKeepsValues) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x607A00});
    grid.set_value(1, 3, 11);
    bench.language = Language::kChinese;
    grid.apply_language();
    EXPECT_EQ(column(grid, kName), (Texts{"Name", "工作模式", "目标位置"}));
    EXPECT_EQ(grid.cell(1, kValue), "3");
    grid.apply_language();  // again changes nothing
    EXPECT_EQ(grid.cell(2, kName), "目标位置");
    bench.language = Language::kEnglish;
    grid.apply_language();
    EXPECT_EQ(grid.cell(2, kName), "Target position");
}

TEST(PageGrid, TheDropDownFollowsTheLanguage) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000});
    bench.language = Language::kChinese;
    grid.set_current({1, kValue});
    EXPECT_EQ(grid.open_editor(), Editor::kList);
    EXPECT_EQ(grid.editor().items.front(), "1:位置");
}

TEST(PageGrid, AClickMovesTheCurrentCell) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x607A00});
    EXPECT_EQ(grid.current(), (CellPosition{1, kValue}));
    grid.grid_mouse_down(MouseButton::kLeft, CellPosition{2, kName});
    EXPECT_EQ(grid.current(), (CellPosition{2, kName}));
    EXPECT_EQ(grid.click_just_happend, Editor::kNone);
}

TEST(PageGrid, AClickBelowTheLastRowClosesAnOpenEditorWithoutWriting) {
    Bench bench;
    PageGrid grid = bench.grid({0x607A00});
    grid.grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    ASSERT_EQ(grid.editor().open, Editor::kText);
    grid.grid_mouse_down(MouseButton::kLeft, std::nullopt);
    EXPECT_EQ(grid.editor().open, Editor::kNone);
    EXPECT_EQ(grid.click_just_happend, Editor::kNone);
    EXPECT_TRUE(bench.writes.empty());
    EXPECT_EQ(grid.current().row, 1);
}

TEST(PageGrid, EnterInTheGridOpensTheEditorOfTheCurrentCell) {
    Bench bench;
    PageGrid grid = bench.grid({0x607A00, 0x60FF00});
    grid.move_current(1);
    EXPECT_EQ(grid.open_editor(), Editor::kText);
    EXPECT_EQ(grid.editor().row, 2);
    EXPECT_EQ(grid.click_just_happend, Editor::kNone) << "only the mouse sets it";
    grid.editor_lost_focus(Editor::kText);
    EXPECT_EQ(grid.editor().open, Editor::kNone);
}

TEST(PageGrid, OneEditorAtATime) {
    Bench bench;
    PageGrid grid = bench.grid({0x607A00, 0x606000});
    grid.grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    grid.grid_mouse_down(MouseButton::kLeft, CellPosition{2, kValue});
    EXPECT_EQ(grid.editor().open, Editor::kList);
    EXPECT_EQ(grid.editor().row, 2);
}

TEST(PageGrid, UpAndDownStayAmongTheObjects) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x607A00});
    grid.move_current(-1);
    EXPECT_EQ(grid.current().row, 1);
    grid.move_current(5);
    EXPECT_EQ(grid.current().row, 2);
}

TEST(PageGrid, TheRightButtonMovesTheCurrentRowAndKeepsTheRowForTheMenu) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x607A00});
    grid.grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    grid.grid_mouse_down(MouseButton::kRight, CellPosition{2, kName});
    EXPECT_EQ(grid.popup_row(), 2);
    EXPECT_EQ(grid.current().row, 2);
    EXPECT_EQ(grid.editor().open, Editor::kNone);
    EXPECT_EQ(grid.click_just_happend, Editor::kList) << "that of the last left click";
}

TEST(PageGrid, OnTheHeaderOnlyAddStands) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000});
    grid.grid_mouse_down(MouseButton::kRight, CellPosition{0, kName});
    EXPECT_EQ(grid.popup_row(), 0);
    EXPECT_EQ(PageGrid::popup_entries(grid.popup_row()), (PopupEntries{true, false, false}));
    EXPECT_EQ(PageGrid::popup_entries(1), (PopupEntries{true, true, true}));
}

TEST(PageGrid, BelowTheLastRowTheMenuBelongsToTheLastRow) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x607A00});
    grid.grid_mouse_down(MouseButton::kRight, std::nullopt);
    EXPECT_EQ(grid.popup_row(), 2);
}

TEST(PageGrid, AddInsertsJustBelowAndRenumbersKeepingTheStars) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x607A00, 0x606300});
    EXPECT_TRUE(grid.add_row(0x60FF00, 1));
    EXPECT_EQ(column(grid, kIndex), (Texts{"Index", "606000", "60FF00", "607A00", "606300"}));
    EXPECT_EQ(column(grid, kNumber), (Texts{"N", "0", "1*", "2*", "3"}));
}

TEST(PageGrid, AddBelowTheHeaderMakesTheFirstRow) {
    Bench bench;
    PageGrid grid = bench.grid({});
    EXPECT_TRUE(grid.add_row(0x607A00, 0));
    EXPECT_TRUE(grid.add_row(0x606000, 0));
    EXPECT_EQ(column(grid, kIndex), (Texts{"Index", "606000", "607A00"}));
}

TEST(PageGrid, AddOfAKeyThatThePageHoldsChangesNothing) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x607A00});
    Watcher watcher;
    grid.set_observer(&watcher);
    EXPECT_FALSE(grid.add_row(0x607A00, 1));
    EXPECT_EQ(grid.rows(), 3);
    EXPECT_EQ(watcher.resets, 0);
}

TEST(PageGrid, DeleteRemovesTheRowAndRenumbersKeepingTheStars) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x607A00, 0x606300, 0x60FF00});
    grid.delete_row(2);
    EXPECT_EQ(column(grid, kIndex), (Texts{"Index", "606000", "606300", "60FF00"}));
    EXPECT_EQ(column(grid, kNumber), (Texts{"N", "0", "1", "2*"}));
}

TEST(PageGrid, DeletingTheLastRowLeavesOnlyTheHeader) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000});
    grid.delete_row(1);
    EXPECT_EQ(grid.rows(), 1);
    EXPECT_EQ(grid.current().row, 0);
    grid.delete_row(1);
    grid.delete_row(0);
    EXPECT_EQ(grid.rows(), 1);
}

TEST(PageGrid, DeletingARowClosesTheEditor) {
    Bench bench;
    PageGrid grid = bench.grid({0x607A00, 0x60FF00});
    grid.grid_mouse_down(MouseButton::kLeft, CellPosition{2, kValue});
    grid.delete_row(1);
    EXPECT_EQ(grid.editor().open, Editor::kNone);
    EXPECT_EQ(grid.editor_key(kKeyEnter, "1"), kKeySwallowed);
    EXPECT_TRUE(bench.writes.empty());
}

TEST(PageGrid, FindRowGivesTheFirstRowOfAnObject) {
    Bench bench;
    const PageGrid grid = bench.grid({0x606000, 0x607A00, 0x607A00});
    EXPECT_EQ(grid.find_row(0x607A00), 2);
    EXPECT_EQ(grid.find_row(0x123456), 0);
}

TEST(PageGrid, TheHeightFollowsTheRowsUpTo29) {
    EXPECT_EQ(shown_rows(1), 1);
    EXPECT_EQ(shown_rows(28), 28);
    EXPECT_EQ(shown_rows(29), 29);
    EXPECT_EQ(shown_rows(256), 29);
}

TEST(PageGrid, TheWheelIsUpOrDownAtExactlyOneNotchAndNoKeyHeld) {
    EXPECT_EQ(wheel_rows(120, false), -1);
    EXPECT_EQ(wheel_rows(-120, false), 1);
    for (const int delta : {0, 119, 121, 240, -240, 15, -15}) {
        EXPECT_EQ(wheel_rows(delta, false), 0) << delta;
    }
    EXPECT_EQ(wheel_rows(120, true), 0);
    EXPECT_EQ(wheel_rows(-120, true), 0);
}

class PageFile : public testing::Test {
  protected:
    Bench bench;
    std::filesystem::path folder;
    void SetUp() override {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        folder = std::filesystem::path(testing::TempDir()) / (std::string("page_") + info->name());
        std::filesystem::create_directories(folder / "sys");
    }
    void TearDown() override { std::filesystem::remove_all(folder); }
    void file(std::string_view content) const {
        ASSERT_TRUE(base::write_file(folder / "sys" / "BasicOperate.ini", content));
    }
};

TEST_F(PageFile, APageLoadsItsRowsInFileOrder) {
    file("Basic\r\nIndex\r\nmode 606000\r\ntarget 607A00\r\nunknown 123456\r\n");
    Page page(kPageTable.front(), bench.services());
    EXPECT_TRUE(page.load(folder));
    EXPECT_EQ(page.name(), "Basic");
    EXPECT_FALSE(page.custom());
    EXPECT_TRUE(page.must_fresh);
    EXPECT_EQ(page.rows(), 4);
    EXPECT_EQ(page.keys(), (std::vector<dictionary::Identity>{0x606000, 0x607A00, 0x123456}));
    EXPECT_EQ(column(page.grid(), kNumber), (Texts{"N", "0", "1*", "2*"}));
    EXPECT_EQ(column(page.grid(), kType), (Texts{"Type", "int8", "int32", ""}));
    EXPECT_EQ(column(page.grid(), kUnit), (Texts{"Unit", "DEC", "inc", "DEC"}));
    EXPECT_EQ(column(page.grid(), kValue), (Texts{"Value", "", "", ""}));
}

TEST_F(PageFile, AMissingFileLeavesThePageEmptyAndSaysSo) {
    file("Basic\r\nIndex\r\nmode 606000\r\n");
    Page page(kPageTable.front(), bench.services());
    ASSERT_TRUE(page.load(folder));
    std::filesystem::remove_all(folder / "sys");
    EXPECT_FALSE(page.load(folder));
    EXPECT_EQ(page.rows(), 1);
    EXPECT_TRUE(page.keys().empty());
}

TEST_F(PageFile, AFileWithTwoHeaderLinesAndNoMoreGivesAPageWithNoRows) {
    file("Basic\r\nIndex\r\n");
    Page page(kPageTable.front(), bench.services());
    EXPECT_TRUE(page.load(folder));
    EXPECT_EQ(page.rows(), 1);
}

TEST_F(PageFile, ThePollerTalksToThePageAsToAnyWindow) {
    file("Basic\r\nIndex\r\n606000\r\n100900\r\n");
    Page page(kPageTable.front(), bench.services());
    ASSERT_TRUE(page.load(folder));
    link::PollWindow& window = page;
    EXPECT_EQ(window.row(1).type, "int8");
    window.set_value(1, -4, 11);
    window.set_text(2, "V1");
    EXPECT_EQ(window.row(1).value, "-4");
    EXPECT_EQ(window.row(2).value, "V1");
}

}  // namespace
}  // namespace servo::params
