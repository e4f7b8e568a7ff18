// The dictionary browser: what it shows of an object, and what a double click does.
#include "params/object_browser.h"

#include <gtest/gtest.h>

#include "params/test_object_browser_support.h"

namespace servo::params {
namespace {

using base::Language;
using test::BrowserBench;
using test::Write;

std::vector<std::string> live_row(const ObjectBrowser& browser) {
    std::vector<std::string> cells;
    for (int column = 0; column < kColumns; ++column)
        cells.emplace_back(browser.grid().cell(1, column));
    return cells;
}

using Texts = std::vector<std::string>;

TEST(Browser, IsAPolledGridPageOfOneRow) {
    const BrowserBench bench;
    EXPECT_EQ(bench.browser.name(), "ObjectDictionay");
    EXPECT_FALSE(bench.browser.custom());
    EXPECT_EQ(bench.browser.rows(), 2);
    EXPECT_EQ(bench.browser.row(1).index, "606000");
    EXPECT_EQ(bench.browser.row(1).type, "int8");
    EXPECT_EQ(bench.browser.row(1).value, "");
}

TEST(Browser, TheLiveRowHasAllElevenColumnsAndTheNumberZero) {
    BrowserBench bench;
    EXPECT_EQ(live_row(bench.browser),
              (Texts{"0", "606000", "int8", "Operation Mode", "", "DEC", "[DEC]N*1", "工作模式",
                     "Operation Mode", "|1:Position|3:Velocity", "|1:位置|3:速度"}));
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kTarget);
    EXPECT_EQ(bench.browser.grid().cell(1, kNumber), "0*") << "a static object";
    EXPECT_EQ(bench.browser.rows(), 2);
}

TEST(Browser, AnAnswerIsShownInTheLiveRowAndATextToo) {
    BrowserBench bench;
    bench.browser.set_value(1, 3, 11);
    EXPECT_EQ(bench.browser.row(1).value, "3");
    bench.browser.set_text(1, "?????");
    EXPECT_EQ(bench.browser.row(1).value, "?????");
}

TEST(Browser, ALiveRowThatShowsTheObjectAlreadyIsNotRewritten) {
    BrowserBench bench;
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kVelocity);
    bench.browser.set_value(1, 100, 14);
    bench.browser.grid().grid_mouse_down(MouseButton::kLeft, CellPosition{1, kUnit});
    bench.browser.grid().choose(1);
    bench.browser.grid().grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    const Texts before = live_row(bench.browser);
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kVelocity);
    EXPECT_EQ(live_row(bench.browser), before);
    EXPECT_EQ(bench.browser.grid().editor().open, Editor::kText);
}

TEST(Browser, AnotherObjectEmptiesTheValueAndClosesTheEditorOfTheLastOne) {
    BrowserBench bench;
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kTarget);
    bench.browser.set_value(1, 7, 14);
    bench.browser.grid().grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    ASSERT_EQ(bench.browser.grid().editor().open, Editor::kText);
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kControl);
    EXPECT_EQ(bench.browser.grid().editor().open, Editor::kNone);
    EXPECT_EQ(bench.browser.row(1).value, "");
    EXPECT_TRUE(bench.bench.writes.empty());
}

TEST(Browser, AReadOnlyObjectGraysTheWholeLiveRowAndAWritableOneClearsIt) {
    BrowserBench bench;
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kActual);
    for (int column = 0; column < kColumns; ++column)
        EXPECT_TRUE(bench.browser.grid().read_only_cell(1, column)) << column;
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kTarget);
    for (int column = 0; column < kColumns; ++column)
        EXPECT_FALSE(bench.browser.grid().read_only_cell(1, column)) << column;
}

TEST(Browser, TheLiveRowIsWrittenByTheCommitRuleOfPages) {
    BrowserBench bench;
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kTarget);
    bench.browser.grid().grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    bench.browser.grid().editor_key(kKeyEnter, "-12");
    EXPECT_EQ(bench.bench.writes, (std::vector<Write>{{0x607A0004, -12}}));
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kActual);
    bench.browser.grid().grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    EXPECT_EQ(bench.browser.grid().editor().open, Editor::kNone) << "read-only";
}

TEST(Browser, TheDetailsComeFromTheRowOfTheList) {
    BrowserBench bench;
    EXPECT_EQ(bench.browser.details(),
              (ObjectDetails{"6060", "00", "Operation Mode", "Integer8", "RWL", "0x1A00"}));
    bench.language(Language::kChinese);
    EXPECT_EQ(bench.browser.details().name, "工作模式");
}

TEST(Browser, TheModbusAddressIsFoundInAnyCase) {
    BrowserBench bench;
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kGain);
    EXPECT_EQ(bench.browser.details().modbus, "0x2B00");
}

TEST(Browser, AnObjectMissingFromTheModbusListShowsDots) {
    BrowserBench bench;
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kTarget);
    EXPECT_EQ(bench.browser.details().modbus, "....");
    EXPECT_EQ(ObjectDetails{}.modbus, "....");
    bench.modbus = {};
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kMode);
    EXPECT_EQ(bench.browser.details().modbus, "....") << "no list at all";
}

TEST(Browser, TheHelpIsTitleNameAndHelpTextOfTheLanguageWithTheItemList) {
    BrowserBench bench;
    EXPECT_EQ(bench.browser.help(),
              "Help Information of:Operation Mode\nChooses the mode.|1:Position|3:Velocity");
    bench.language(Language::kChinese);
    EXPECT_EQ(bench.browser.help(), "帮助:工作模式\n选择模式。|1:位置|3:速度");
}

TEST(Browser, ANulInsideOfAFieldEndsWhatIsShown) {
    using namespace std::string_view_literals;
    BrowserBench bench(
        {{"606000", "名\0x"sv, "Name\0rest"sv, "Integer8", "RW", "[DEC]N*1", "", "Help\0rest"sv}});
    EXPECT_EQ(bench.browser.details().name, "Name");
    EXPECT_EQ(bench.browser.help(), "Help Information of:Name\nHelp");
}

TEST(Browser, AChangeOfTheLanguageKeepsTheValueAndChangesTheName) {
    BrowserBench bench;
    bench.browser.set_value(1, 3, 11);
    bench.language(Language::kChinese);
    EXPECT_EQ(bench.browser.grid().cell(1, kValue), "3");
    EXPECT_EQ(bench.browser.grid().cell(1, kName), "工作模式");
}

TEST(Browser, AClickOnTheHeaderOrBelowTheListShowsNothing) {
    BrowserBench bench;
    for (const int row : {0, -1, 9}) {
        bench.browser.MSHFlexGrid2_Click(row);
        bench.browser.double_click(row);
    }
    EXPECT_EQ(bench.browser.selected_row(), 1);
    EXPECT_EQ(bench.hidden, 0);
}

TEST(Browser, TheTopRowAfterScrollingIsTheCurrentRow) {
    BrowserBench bench;
    bench.browser.scrolled_to(4);
    EXPECT_EQ(bench.browser.selected_row(), 4);
    EXPECT_EQ(bench.browser.details().name, "Target Velocity");
}

TEST(Browser, KeysMoveTheSelectionInsideOfTheList) {
    BrowserBench bench;
    bench.browser.move_selection(-1);
    EXPECT_EQ(bench.browser.selected_row(), 1);
    bench.browser.move_selection(3);
    EXPECT_EQ(bench.browser.details().name, "Target Velocity");
    bench.browser.move_selection(1000);
    EXPECT_EQ(bench.browser.selected_row(), 8);
}

TEST(Browser, ARepeatedIdentityShowsItsOwnRowAndTheRecordThatTheDriveIsAskedFor) {
    BrowserBench bench(
        {{"606000", "一", "First", "Integer8"}, {"606000", "二", "Second", "Integer16"}});
    bench.browser.MSHFlexGrid2_Click(2);
    EXPECT_EQ(bench.browser.details().name, "Second");
    EXPECT_EQ(bench.browser.details().type, "Integer16");
    EXPECT_EQ(bench.browser.grid().cell(1, kName), "First");
}

// --- Modes

TEST(BrowserMode, FromTheMenuADoubleClickHides) {
    BrowserBench bench;
    bench.browser.mode = 5;
    bench.browser.open_plain();
    EXPECT_EQ(bench.browser.mode, 0);
    bench.browser.double_click(3);
    EXPECT_EQ(bench.hidden, 1);
    EXPECT_TRUE(bench.bench.writes.empty());
    EXPECT_EQ(bench.browser.aim().text, "");
}

TEST(BrowserMode, AddingInsertsBelowThePopupRowAndHides) {
    BrowserBench bench;
    PageGrid page = bench.bench.grid({0x606000, 0x607A00});
    bench.browser.open_for_adding(page, 1, {"基本操作", "Basic Operation"});
    EXPECT_EQ(bench.browser.mode, 1);
    EXPECT_EQ(bench.browser.aim().text, "Double click adds the object to: Basic Operation");
    EXPECT_EQ(bench.browser.aim().button.english, "Add");
    EXPECT_EQ(bench.hidden, 0);
    bench.browser.double_click(BrowserBench::kControl);
    EXPECT_EQ(bench.hidden, 1);
    ASSERT_EQ(page.rows(), 4);
    EXPECT_EQ(page.cell(2, kIndex), "604000");
    EXPECT_EQ(page.cell(2, kNumber), "1*");
    EXPECT_EQ(page.cell(3, kNumber), "2*");
}

TEST(BrowserMode, AddingWhatThePageAlreadyHoldsChangesNothingButHides) {
    BrowserBench bench;
    PageGrid page = bench.bench.grid({0x606000, 0x607A00});
    bench.browser.open_for_adding(page, 1);
    bench.browser.double_click(BrowserBench::kTarget);
    EXPECT_EQ(bench.hidden, 1);
    EXPECT_EQ(page.rows(), 3);
    EXPECT_EQ(page.cell(2, kIndex), "607A00");
}

TEST(BrowserMode, AddingOnTheHeaderMakesTheFirstRow) {
    BrowserBench bench;
    PageGrid page = bench.bench.grid({0x606000});
    bench.browser.open_for_adding(page, 0);
    EXPECT_EQ(bench.browser.aim().text, "Double click adds the object to: the page");
    bench.browser.double_click(BrowserBench::kControl);
    EXPECT_EQ(page.cell(1, kIndex), "604000");
    PageGrid empty = bench.bench.grid({});
    bench.browser.open_for_adding(empty, 0);
    bench.browser.double_click(BrowserBench::kControl);
    EXPECT_EQ(empty.rows(), 2);
}

TEST(BrowserMode, ThePlaceOfAddingGoesWithItsRowWhenThePageChanges) {
    BrowserBench bench;
    PageGrid page = bench.bench.grid({0x606000, 0x607A00, 0x606300});
    bench.browser.open_for_adding(page, 2);
    page.delete_row(1);
    bench.browser.double_click(BrowserBench::kControl);
    EXPECT_EQ(page.cell(2, kIndex), "604000") << "below 607A00, which has moved up";
    bench.browser.open_for_adding(page, 3);
    page.set_rows({});
    bench.browser.double_click(BrowserBench::kGain);
    EXPECT_EQ(page.rows(), 2) << "the row is gone, and so are the others";
}

TEST(BrowserMode, AddingWithNoPageOnlyHides) {
    BrowserBench bench;
    bench.browser.mode = 1;
    bench.browser.double_click(3);
    EXPECT_EQ(bench.hidden, 1);
}

struct Selector {
    int mode;
    int row;
    Write write;
};

TEST(BrowserMode, AScopeChannelGetsTheObjectInTheSelectorOfItsWidth) {
    using B = BrowserBench;
    const std::vector<Selector> table{
        {2, B::kMode, {0x23000104, 0x60600008}},     {3, B::kMode, {0x23000204, 0x60600008}},
        {4, B::kMode, {0x23000304, 0x60600008}},     {5, B::kMode, {0x23000404, 0x60600008}},
        {6, B::kMode, {0x23000C04, 0x60600008}},     {2, B::kControl, {0x23000104, 0x60400010}},
        {3, B::kControl, {0x23000204, 0x60400010}},  {4, B::kControl, {0x23000304, 0x60400010}},
        {5, B::kControl, {0x23000404, 0x60400010}},  {6, B::kControl, {0x23000C04, 0x60400010}},
        {2, B::kVelocity, {0x23000504, 0x60FF0020}}, {3, B::kVelocity, {0x23000504, 0x60FF0020}},
        {4, B::kVelocity, {0x23000604, 0x60FF0020}}, {5, B::kVelocity, {0x23000604, 0x60FF0020}},
        {6, B::kVelocity, {0x23000C04, 0x60FF0020}},
    };
    for (const Selector& line : table) {
        BrowserBench bench;
        bench.browser.open_for_scope(line.mode - 2);
        EXPECT_EQ(bench.browser.mode, line.mode);
        bench.browser.double_click(line.row);
        EXPECT_EQ(bench.bench.writes, std::vector<Write>{line.write}) << line.mode;
        EXPECT_EQ(bench.hidden, 1);
    }
}

TEST(BrowserMode, AnIdentityInTheUpperHalfIsANegativeValue) {
    BrowserBench bench({{"A00001", "高", "High", "Unsigned16"}});
    bench.browser.open_for_scope(0);
    bench.browser.double_click(1);
    EXPECT_EQ(bench.bench.writes,
              (std::vector<Write>{{0x23000104, static_cast<std::int32_t>(0xA0000110)}}));
}

TEST(BrowserMode, ATextCannotBeRecordedAndTheWindowStays) {
    BrowserBench bench;
    bench.browser.open_for_scope(1);
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kText);
    EXPECT_FALSE(bench.browser.aim().possible);
    EXPECT_EQ(bench.browser.aim().text, "This object is no number: the scope can't record it");
    bench.browser.double_click(BrowserBench::kText);
    EXPECT_TRUE(bench.bench.writes.empty());
    EXPECT_EQ(bench.hidden, 0);
}

TEST(BrowserMode, SaysWhichChannelGetsTheObject) {
    BrowserBench bench;
    bench.browser.open_for_scope(3);
    EXPECT_EQ(bench.browser.aim().text, "Double click assigns the object to scope channel 4");
    EXPECT_TRUE(bench.browser.aim().possible);
    bench.browser.open_for_scope(4);
    bench.bench.language = Language::kChinese;
    EXPECT_EQ(bench.browser.aim().text, "双击将对象设为示波器的触发源");
}

TEST(BrowserMode, ChannelsThatDoNotExistAreClamped) {
    BrowserBench bench;
    bench.browser.open_for_scope(-1);
    EXPECT_EQ(bench.browser.mode, 2);
    bench.browser.open_for_scope(5);
    EXPECT_EQ(bench.browser.mode, 6);
    bench.browser.mode = 7;
    bench.browser.double_click(1);
    EXPECT_TRUE(bench.bench.writes.empty());
    EXPECT_EQ(bench.hidden, 1);
}

TEST(BrowserMode, HelpSelectsTheObjectOfTheRowAndScrollsToIt) {
    BrowserBench bench;
    test::BrowserWatcher watcher;
    bench.browser.set_observer(&watcher);
    bench.browser.mode = 1;
    bench.browser.open_for_help(0x60FF00);
    EXPECT_EQ(bench.browser.mode, 0);
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kVelocity);
    EXPECT_EQ(watcher.to_top, 1);
    EXPECT_EQ(bench.browser.details().name, "Target Velocity");
    EXPECT_EQ(bench.browser.row(1).index, "60FF00");
}

TEST(BrowserMode, HelpOnAnObjectThatTheDictionaryLacksSaysSo) {
    BrowserBench bench;
    bench.browser.open_for_help(0x123456);
    EXPECT_EQ(bench.browser.selected_row(), 0);
    EXPECT_EQ(bench.browser.details(), (ObjectDetails{"1234", "56", "", "", "", "...."}));
    EXPECT_EQ(bench.browser.help(),
              "Help Information of:123456\nThe dictionary does not have this object");
    EXPECT_EQ(bench.browser.row(1).index, "123456");
    bench.browser.Text2_Change("no such thing");
    bench.language(Language::kChinese);
    EXPECT_EQ(bench.browser.help(), "帮助:123456\n字典中没有此对象");
}

TEST(BrowserMode, StaysWhenTheWindowCloses) {
    BrowserBench bench;
    bench.browser.open_for_scope(2);
    bench.browser.double_click(1);
    EXPECT_EQ(bench.hidden, 1);
    EXPECT_EQ(bench.browser.mode, 4);
    EXPECT_EQ(bench.browser.selected_row(), 1);
}

TEST(BrowserMode, WithoutAnOwnerADoubleClickIsHarmless) {
    BrowserBench bench;
    bench.browser.hide = {};
    bench.browser.double_click(1);
    EXPECT_EQ(bench.browser.mode, 0);
}

}  // namespace
}  // namespace servo::params
