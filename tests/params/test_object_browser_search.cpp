// The list of the dictionary browser and the search in it.
#include <gtest/gtest.h>

#include <random>

#include "params/test_object_browser_support.h"

namespace servo::params {
namespace {

using base::Language;
using test::BrowserBench;
using test::Entry;

std::vector<std::string> header(const ObjectBrowser& browser) {
    std::vector<std::string> texts;
    for (int column = 0; column < kListColumns; ++column)
        texts.push_back(browser.list_cell(0, column));
    return texts;
}

using Texts = std::vector<std::string>;

TEST(BrowserList, OnlyTheKeysHaveAHeaderForEachLanguage) {
    BrowserBench bench;
    EXPECT_EQ(header(bench.browser), (Texts{"Index", "Sub.", "变量名", "Name", "属性", "数据类型",
                                            "注释", "Comment", "公式"}));
    bench.language(Language::kChinese);
    EXPECT_EQ(header(bench.browser), (Texts{"索引1", "索引2", "变量名", "Name", "属性", "数据类型",
                                            "注释", "Comment", "公式"}));
}

TEST(BrowserList, TheTitleOnScreenIsInTheReadersLanguage) {
    EXPECT_EQ(list_title(kListAttribute, Language::kEnglish), "Attr.");
    EXPECT_EQ(list_title(kListAttribute, Language::kChinese), "属性");
    EXPECT_EQ(list_title(kListColumns, Language::kEnglish), "");
    EXPECT_EQ(list_title(-1, Language::kEnglish), "");
}

TEST(BrowserList, RowsAreTheRecordsInFileOrderWithTheirCommentsInFull) {
    const BrowserBench bench;
    EXPECT_EQ(bench.browser.list_rows(), 9);
    Texts cells;
    for (int column = 0; column < kListColumns; ++column)
        cells.push_back(bench.browser.list_cell(1, column));
    EXPECT_EQ(cells, (Texts{"6060", "00", "工作模式", "Operation Mode", "RWL", "Integer8",
                            "选择模式。|1:位置|3:速度", "Chooses the mode.|1:Position|3:Velocity",
                            "[DEC]N*1"}));
    EXPECT_EQ(bench.browser.list_cell(9, 0), "");
    EXPECT_EQ(bench.browser.list_cell(-1, 0), "");
    EXPECT_EQ(bench.browser.list_cell(1, kListColumns), "");
}

TEST(BrowserList, TheNameOfTheLanguageHasFiveAndAHalfTenthsAndTheOtherNone) {
    EXPECT_EQ(list_column_width(kListNameEn, 1000, Language::kEnglish), 550);
    EXPECT_EQ(list_column_width(kListNameCh, 1000, Language::kEnglish), 0);
    EXPECT_EQ(list_column_width(kListNameEn, 1000, Language::kChinese), 0);
    EXPECT_EQ(list_column_width(kListNameCh, 1000, Language::kChinese), 550);
    for (const Language language : {Language::kChinese, Language::kEnglish}) {
        int sum = 0;
        for (int column = -1; column <= kListColumns; ++column)
            sum += list_column_width(column, 1000, language);
        EXPECT_LT(sum, 1000) << "a scroll bar stands there too";
        EXPECT_GT(sum, 900);
    }
}

TEST(BrowserSearch, ThePositionAtStartIsTheFirstRowOfTheList) {
    const BrowserBench bench;
    EXPECT_EQ(bench.browser.selected_row(), 1);
    EXPECT_EQ(bench.browser.search_row, 1);
}

TEST(BrowserSearch, TheSameTextTwiceGoesToTheNextMatchAndFromTheLastBackToTheFirst) {
    BrowserBench bench;
    bench.search("position");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kActual);
    bench.browser.Command1_Click();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kTarget);
    EXPECT_EQ(bench.browser.search_row, BrowserBench::kTarget);
    bench.browser.Command1_Click();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kActual);
}

TEST(BrowserSearch, AMatchInTheLastRowIsFoundAndTheNextSearchWrapsToRowOne) {
    BrowserBench bench;
    bench.search("motor current");
    EXPECT_EQ(bench.browser.search_row, BrowserBench::kCurrent);
    bench.search("o");
    EXPECT_EQ(bench.browser.search_row, BrowserBench::kMode);
}

TEST(BrowserSearch, AnOnlyMatchIsFoundAgainAndAgain) {
    BrowserBench bench;
    bench.search("607a00");
    bench.browser.Command1_Click();
    EXPECT_EQ(bench.browser.search_row, BrowserBench::kTarget);
    bench.search("operation");
    EXPECT_EQ(bench.browser.search_row, BrowserBench::kMode) << "row 1, reached by going round";
}

TEST(BrowserSearch, IndexAndSubIndexAreOneRunOfSixDigits) {
    BrowserBench bench;
    bench.search("60F611");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kGain);
    bench.search("60f6 11");
    EXPECT_TRUE(bench.browser.search_failed());
}

TEST(BrowserSearch, APartOfANameInEitherLanguageIsFoundInAnyCase) {
    BrowserBench bench;
    bench.search("WORD");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kControl);
    bench.search("标速");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kVelocity);
    bench.search("ωⅳ");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kGain);
}

TEST(BrowserSearch, TextAcrossTheJoinOfTwoColumnsIsFound) {
    BrowserBench bench;
    bench.search("00 控制字");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kControl);
    bench.search("控制字 control");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kControl);
    bench.search("控制字control");
    EXPECT_TRUE(bench.browser.search_failed());
    bench.search("version60f6");
    EXPECT_TRUE(bench.browser.search_failed()) << "rows are not joined";
}

TEST(BrowserSearch, AttributeTypeAndCommentAreNotLookedAt) {
    BrowserBench bench;
    for (const char* text : {"RWL", "Integer32", "encoder", "[inc]"}) {
        bench.search(text);
        EXPECT_TRUE(bench.browser.search_failed()) << text;
    }
}

TEST(BrowserSearch, AnEmptyTextFindsTheNextRowAtOnce) {
    BrowserBench bench;
    bench.browser.Command1_Click();
    EXPECT_EQ(bench.browser.selected_row(), 2);
    bench.browser.search_row = 8;
    bench.browser.Command1_Click();
    EXPECT_EQ(bench.browser.selected_row(), 1);
}

TEST(BrowserSearch, ASearchRowThatIsNoneCountsAsOne) {
    for (const int row : {0, -1, 9, 1000}) {
        BrowserBench bench;
        bench.browser.search_row = row;
        bench.browser.Command1_Click();
        EXPECT_EQ(bench.browser.search_row, 2) << row;
    }
}

TEST(BrowserSearch, WithoutAMatchTheSelectionAndTheSearchRowStay) {
    BrowserBench bench;
    bench.search("position");
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kControl);
    bench.search("no such thing");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kControl);
    EXPECT_EQ(bench.browser.search_row, BrowserBench::kActual);
    EXPECT_EQ(bench.browser.details().name, "Control Word");
    EXPECT_TRUE(bench.browser.search_failed());
    EXPECT_EQ(bench.browser.search_note(), "No match");
    bench.language(Language::kChinese);
    EXPECT_EQ(bench.browser.search_note(), "没有找到");
}

TEST(BrowserSearch, ATextLongerThanAnyRowDoesNotMatch) {
    BrowserBench bench;
    bench.search(std::string(10000, 'o'));
    EXPECT_TRUE(bench.browser.search_failed());
}

TEST(BrowserSearch, ContinuesBelowTheLastMatchAndNotBelowTheSelection) {
    BrowserBench bench;
    bench.search("position");
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kCurrent);
    bench.browser.Command1_Click();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kTarget);
}

TEST(BrowserSearch, AMatchIsSelectedAndScrolledToTheTop) {
    BrowserBench bench;
    test::BrowserWatcher watcher;
    bench.browser.set_observer(&watcher);
    bench.browser.Command1_Click();
    EXPECT_EQ(watcher.to_top, 1);
    bench.browser.MSHFlexGrid2_Click(4);
    EXPECT_EQ(watcher.shown, 2);
    EXPECT_EQ(watcher.to_top, 1) << "a click scrolls nothing";
}

TEST(BrowserSearch, AChangeOfTheLanguagePositionsOnTheFirstMatch) {
    BrowserBench bench;
    bench.search("position");
    bench.browser.Command1_Click();
    ASSERT_EQ(bench.browser.selected_row(), BrowserBench::kTarget);
    bench.language(Language::kChinese);
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kActual);
    EXPECT_EQ(bench.browser.search_row, BrowserBench::kActual);
}

TEST(BrowserSearch, ADictionaryLoadedLaterIsSearched) {
    BrowserBench bench(std::vector<Entry>{});
    EXPECT_EQ(bench.browser.list_rows(), 1);
    bench.search("word");
    bench.browser.find_next();
    bench.browser.find_previous();
    bench.browser.move_selection(1);
    EXPECT_EQ(bench.browser.selected_row(), 0);
    EXPECT_EQ(bench.browser.rows(), 1);
    bench.bench.dictionary.load(test::dictionary_bytes(test::browser_entries()));
    bench.browser.Init_OD_Grid();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kControl);
}

TEST(BrowserSearch, AListOfOneRowFindsThatRow) {
    BrowserBench bench({{"606000", "工作模式", "Mode"}});
    for (const char* text : {"", "mode"}) {
        bench.search(text);
        EXPECT_EQ(bench.browser.search_row, 1);
        EXPECT_FALSE(bench.browser.search_failed());
    }
}

// --- Search while typing, and the steps from the selection: additions to the search button.

TEST(BrowserTyping, ShowsTheRowThatTheButtonThenFinds) {
    BrowserBench bench;
    bench.browser.Text2_Change("p");
    bench.browser.Text2_Change("po");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kActual);
    EXPECT_EQ(bench.browser.search_row, 1) << "nothing has been searched for yet";
    bench.browser.Command1_Click();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kActual);
    bench.browser.Command1_Click();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kTarget);
}

TEST(BrowserTyping, ATextWithoutAMatchSaysSoAndLeavesTheSelectionFromBeforeTheTyping) {
    BrowserBench bench;
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kText);
    for (const char* text : {"v", "ve", "velo", "velox"})
        bench.browser.Text2_Change(text);
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kText);
    EXPECT_EQ(bench.browser.details().name, "Hardware Version");
    EXPECT_EQ(bench.browser.row(1).index, "100900");
    EXPECT_EQ(bench.browser.search_note(), "No match");
    bench.browser.Command1_Click();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kText);
    bench.browser.Text2_Change("velo");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kVelocity) << "taken back by a key";
    bench.browser.Text2_Change("");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kVelocity) << "the box is only cleared";
    EXPECT_EQ(bench.browser.search_note(), "");
}

TEST(BrowserTyping, WhatWasFoundOrClickedMeanwhileIsTheSelectionThatStays) {
    BrowserBench bench;
    bench.search("velo");
    bench.browser.Text2_Change("velox");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kVelocity) << "searched for";
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kMode);
    bench.browser.Text2_Change("w");
    ASSERT_EQ(bench.browser.selected_row(), BrowserBench::kControl);
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kControl);
    bench.browser.Text2_Change("wx");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kControl) << "clicked";
    bench.browser.Text2_Change("current");
    bench.browser.find_next();
    bench.browser.Text2_Change("currentx");
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kCurrent) << "stepped to";
}

TEST(BrowserTyping, TheHelpOfAnObjectThatTheListLacksComesBackToo) {
    BrowserBench bench;
    bench.browser.open_for_help(0x123456);
    bench.browser.Text2_Change("v");
    EXPECT_NE(bench.browser.selected_row(), 0);
    bench.browser.Text2_Change("vx");
    EXPECT_EQ(bench.browser.selected_row(), 0);
    EXPECT_EQ(bench.browser.details().index, "1234");
    EXPECT_EQ(bench.browser.row(1).index, "123456");
}

TEST(BrowserTyping, TellsWhichMatchOfHowManyIsShown) {
    BrowserBench bench;
    bench.browser.Text2_Change("position");
    EXPECT_EQ(bench.browser.search_note(), "1 of 2");
    bench.browser.find_next();
    EXPECT_EQ(bench.browser.search_note(), "2 of 2");
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kControl);
    EXPECT_EQ(bench.browser.search_note(), "2 found");
    bench.language(Language::kChinese);
    EXPECT_EQ(bench.browser.search_note(), "第 1 个，共 2 个");
    bench.browser.MSHFlexGrid2_Click(BrowserBench::kControl);
    EXPECT_EQ(bench.browser.search_note(), "共 2 个");
}

TEST(BrowserTyping, StepsGoFromTheSelectionBothWaysRound) {
    BrowserBench bench;
    bench.browser.Text2_Change("current");
    ASSERT_EQ(bench.browser.selected_row(), BrowserBench::kGain);
    bench.browser.find_next();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kCurrent);
    EXPECT_EQ(bench.browser.search_row, BrowserBench::kCurrent);
    bench.browser.find_next();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kGain);
    bench.browser.find_previous();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kCurrent);
    bench.browser.find_previous();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kGain);
    bench.browser.Text2_Change("");
    bench.browser.find_previous();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kText);
    bench.browser.MSHFlexGrid2_Click(1);
    bench.browser.find_previous();
    EXPECT_EQ(bench.browser.selected_row(), BrowserBench::kCurrent);
}

// --- Against the search as it is told, step by step.

int told_search(const dictionary::Store& store, std::string_view text, int search_row) {
    const int rows = static_cast<int>(store.dictionary_rows()) + 1;
    if (search_row <= 0 || search_row >= rows) search_row = 1;
    const int begin = search_row;
    for (;;) {
        if (++search_row >= rows) search_row = 1;
        if (search_text(store, search_row).find(lower_case(text)) != std::string::npos)
            return search_row;
        if (search_row == begin) return -begin;  // no result; stands where it began
    }
}

TEST(BrowserSearch, GoesWhereTheToldStepsGo) {
    std::mt19937 random(20240229);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::string> names;
        std::vector<Entry> entries;
        const std::size_t count = 1 + random() % 12;
        for (std::size_t i = 0; i < count; ++i)
            names.push_back(std::string(1 + random() % 3, static_cast<char>('A' + random() % 3)));
        for (const std::string& name : names)
            entries.push_back({"606000", "名", name});
        BrowserBench bench(entries);
        bench.browser.search_row = static_cast<int>(random() % (count + 3)) - 1;
        for (int press = 0; press < 8; ++press) {
            const std::string text(random() % 3, static_cast<char>('a' + random() % 3));
            const int expected =
                told_search(bench.bench.dictionary, text, bench.browser.search_row);
            const int selected = bench.browser.selected_row();
            bench.browser.Text2_Change({});
            bench.browser.Text2_Change(text);
            const int shown = bench.browser.selected_row();
            bench.browser.Command1_Click();
            EXPECT_EQ(bench.browser.search_row, std::abs(expected));
            EXPECT_EQ(bench.browser.selected_row(), expected > 0 ? expected : selected);
            if (!text.empty()) {
                EXPECT_EQ(shown, bench.browser.selected_row());
            }
        }
    }
}

TEST(LowerCase, LeavesWhatHasNoCaseAndWhatIsNoText) {
    EXPECT_EQ(lower_case("AbZ[`@09 名字"), "abz[`@09 名字");
    EXPECT_EQ(lower_case("ＡＺ ΑΩ АЯЁ ⅠⅫ ÀÞ×"), "ａｚ αω аяё ⅰⅻ àþ×");
    EXPECT_EQ(lower_case("\U0001F600A"), "\U0001F600a");
    for (const std::string_view broken : {"\xC3", "\xE5\x90", "\x80", "\xF0\x9F", "\xFF"})
        EXPECT_EQ(lower_case(broken), broken);
}

}  // namespace
}  // namespace servo::params
