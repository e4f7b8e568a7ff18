// The pages of tabs: eight grids, of which the active one is polled and edited.
#include <gtest/gtest.h>

#include "base/temp_folder.h"
#include "params/tabbed_page.h"
#include "params/test_page_support.h"

namespace servo::params {
namespace {

using Keys = std::vector<dictionary::Identity>;

struct Tabs : testing::Test, test::Bench {
    TempFolder folder;
    TabbedPage page{kTabbedPageTable[0], services()};

    Tabs() { std::filesystem::create_directory(folder / "sys"); }

    void put(const std::string& file, const std::string& lines) const {
        folder.put("sys/" + file, "title\r\nheading\r\n" + lines);
    }
    void put_all() const {
        for (int tab = 0; tab < kTabs; ++tab)
            put("TPDO" + std::to_string(tab + 1) + ".ini", "606300\r\n607A00\r\n");
    }
    std::string value(int tab, int row) const { return page.grid(tab).row(row).value; }
};

TEST_F(Tabs, AreTwoWindowsOfEightTabs) {
    EXPECT_EQ(page.name(), "TPDOSet");
    EXPECT_EQ(page.tab_caption(0), "TPDO1");
    EXPECT_EQ(page.tab_caption(7), "TPDO8");
    EXPECT_EQ(page.file(0), R"(\sys\TPDO1.ini)");
    EXPECT_EQ(page.file(7), R"(\sys\TPDO8.ini)");
    const TabbedPage receive(kTabbedPageTable[1], services());
    EXPECT_EQ(receive.name(), "RPDOSet");
    EXPECT_EQ(receive.tab_caption(2), "RPDO3");
    EXPECT_EQ(receive.file(2), R"(\sys\RPDO3.ini)");
    EXPECT_FALSE(page.custom());
}

TEST_F(Tabs, EachIsFilledFromItsFile) {
    put_all();
    put("TPDO3.ini", "0x606000\r\n");
    EXPECT_TRUE(page.load(folder.path()).empty());
    EXPECT_EQ(page.keys(0), (Keys{0x606300, 0x607A00}));
    EXPECT_EQ(page.keys(2), Keys{0x606000});
    EXPECT_EQ(page.grid(7).rows(), 3);
    EXPECT_EQ(page.grid(2).rows(), 2);
    EXPECT_EQ(page.grid(2).row(1).name, "Operation mode");
    EXPECT_EQ(page.grid(2).row(1).number, "0") << "RWL is a live row";
    EXPECT_EQ(page.grid(0).row(2).number, "1*") << "RW is a static one";
}

TEST_F(Tabs, EachMissingFileIsToldInTheOrderOfTheTabs) {
    put_all();
    std::filesystem::remove(folder / "sys/TPDO6.ini");
    std::filesystem::remove(folder / "sys/TPDO2.ini");
    EXPECT_EQ(page.load(folder.path()),
              (std::vector<std::string>{R"(\sys\TPDO2.ini)", R"(\sys\TPDO6.ini)"}));
    EXPECT_EQ(page.grid(1).rows(), 1) << "only its header";
    EXPECT_EQ(page.grid(2).rows(), 3) << "the next one is read all the same";
}

TEST_F(Tabs, WithoutAnyFileAllEightAreTold) {
    EXPECT_EQ(page.load(folder.path()).size(), 8U);
    EXPECT_EQ(page.load(folder.path()).front(), R"(\sys\TPDO1.ini)");
    EXPECT_EQ(page.load(folder.path()).back(), R"(\sys\TPDO8.ini)");
    EXPECT_EQ(page.rows(), 1);
}

TEST_F(Tabs, ThePollerSeesTheActiveTabOnly) {
    put_all();
    put("TPDO3.ini", "606000\r\n60FF00\r\n604000\r\n");
    page.load(folder.path());
    EXPECT_EQ(page.rows(), 3);
    EXPECT_EQ(page.row(1).index, "606300");
    page.select_tab(2);
    EXPECT_EQ(page.SSTab1_Tab(), 2);
    EXPECT_EQ(page.rows(), 4);
    EXPECT_EQ(page.row(1).index, "606000");
}

TEST_F(Tabs, AnswersGoToTheActiveTabAndTheOthersKeepTheirText) {
    put_all();
    page.load(folder.path());
    page.set_value(1, 11, 14);
    page.select_tab(4);
    page.set_value(1, 22, 14);
    page.set_text(2, "?????");
    EXPECT_EQ(value(0, 1), "11");
    EXPECT_EQ(value(0, 2), "");
    EXPECT_EQ(value(4, 1), "22");
    EXPECT_EQ(value(4, 2), "?????");
    page.select_tab(0);
    EXPECT_EQ(page.row(1).value, "11");
}

TEST_F(Tabs, AnAnswerForARowThatTheNewTabDoesNotHaveIsDropped) {
    put_all();
    put("TPDO2.ini", "606000\r\n");
    page.load(folder.path());
    page.select_tab(1);
    page.set_value(2, 5, 14);
    page.set_text(9, "text");
    EXPECT_EQ(value(1, 1), "");
    EXPECT_EQ(page.row(2).index, "");
}

TEST_F(Tabs, ChangingHidesTheEditorsOfTheTabThatHasBecomeActive) {
    put_all();
    page.load(folder.path());
    page.select_tab(3);
    page.active_grid().grid_mouse_down(MouseButton::kLeft, CellPosition{2, kValue});
    ASSERT_EQ(page.grid(3).editor().open, Editor::kText);
    page.select_tab(0);
    page.active_grid().grid_mouse_down(MouseButton::kLeft, CellPosition{1, kUnit});
    ASSERT_EQ(page.grid(0).editor().open, Editor::kList);
    page.select_tab(3);
    EXPECT_EQ(page.grid(3).editor().open, Editor::kNone);
    page.select_tab(0);
    EXPECT_EQ(page.grid(0).editor().open, Editor::kNone);
    EXPECT_TRUE(writes.empty());
}

TEST_F(Tabs, ATabThatIsNotThereIsNotSelected) {
    page.select_tab(5);
    page.select_tab(8);
    EXPECT_EQ(page.SSTab1_Tab(), 5);
    page.select_tab(-1);
    EXPECT_EQ(page.SSTab1_Tab(), 5);
}

TEST_F(Tabs, EditingHoldsTheRulesOfAPage) {
    put_all();
    put("TPDO2.ini", "604000\r\n608300\r\n607A00\r\n");
    page.load(folder.path());
    page.select_tab(1);
    PageGrid& grid = page.active_grid();
    // A mapping entry with digits A to F can be typed in a row whose unit is HEX, and in no other.
    grid.set_current({3, kValue});
    ASSERT_EQ(grid.open_editor(), Editor::kText);
    EXPECT_EQ(grid.editor_key(U'A', "6041"), kKeySwallowed);
    EXPECT_EQ(grid.editor_key(U'1', "6041"), U'1');
    EXPECT_EQ(grid.editor_key(kKeyEnter, "607"), kKeySwallowed);
    EXPECT_EQ(writes, (std::vector<test::Write>{{0x607A0004, 607}}));
    Row hexadecimal = row(0x608300);
    hexadecimal.unit = "HEX";
    grid.set_rows({hexadecimal});
    ASSERT_EQ(grid.open_editor(), Editor::kText);
    EXPECT_EQ(grid.editor_key(U'A', "6041"), U'A');
    EXPECT_EQ(grid.editor_key(U'G', "6041"), kKeySwallowed);
    EXPECT_EQ(grid.editor_key(kKeyEnter, "60410010"), kKeySwallowed);
    EXPECT_EQ(writes.back(), (test::Write{0x60830004, 0x60410010}));
}

TEST_F(Tabs, RowsAreAddedAndRemovedOnTheActiveTabOnly) {
    put_all();
    page.load(folder.path());
    page.select_tab(6);
    EXPECT_TRUE(page.active_grid().add_row(0x606000, 1));
    page.active_grid().delete_row(1);
    EXPECT_EQ(page.grid(6).rows(), 3);
    EXPECT_EQ(page.row(1).index, "606000");
    EXPECT_EQ(page.row(1).number, "0");
    EXPECT_EQ(page.grid(5).row(1).index, "606300");
}

TEST_F(Tabs, ALanguageChangeSwapsTheNamesOnEveryTabAndKeepsTheValues) {
    put_all();
    page.load(folder.path());
    page.set_value(1, 42, 14);
    language = base::Language::kChinese;
    page.apply_language();
    for (int tab = 0; tab < kTabs; ++tab) {
        EXPECT_EQ(page.grid(tab).row(1).name, "实际位置");
        EXPECT_EQ(page.grid(tab).row(2).name, "目标位置");
    }
    EXPECT_EQ(value(0, 1), "42");
    language = base::Language::kEnglish;
    page.apply_language();
    page.apply_language();
    for (int tab = 0; tab < kTabs; ++tab)
        EXPECT_EQ(page.grid(tab).row(1).name, "Position actual");
}

}  // namespace
}  // namespace servo::params
