#include <gtest/gtest.h>

#include "params/row.h"
#include "params/test_page_support.h"

namespace servo::params {
namespace {

using test::Bench;

TEST(PageRow, HoldsTheElevenColumnsOfItsObject) {
    const Bench bench;
    const Row row = bench.row(0x606000, 4);
    EXPECT_EQ(row.number, "4");
    EXPECT_EQ(row.index, "606000");
    EXPECT_EQ(row.type, "int8");
    EXPECT_EQ(row.name, "Operation mode");
    EXPECT_EQ(row.value, "");
    EXPECT_EQ(row.unit, "DEC");
    EXPECT_EQ(row.formula, "[DEC]N*1");
    EXPECT_EQ(row.name_ch, "工作模式");
    EXPECT_EQ(row.name_en, "Operation mode");
    EXPECT_EQ(row.list_en, "|1:Position|3:Velocity|-4:Pulse");
    EXPECT_EQ(row.list_ch, "|1:位置|3:速度|-4:脉冲");
    EXPECT_FALSE(row.read_only);
}

TEST(PageRow, CellsAreNumberedInTheOrderOfTheColumns) {
    const Bench bench;
    Row row = bench.row(0x60FF00);
    row.value = "12.00";
    const std::vector<std::string> expected{"0*",
                                            "60FF00",
                                            "int32",
                                            "Target velocity",
                                            "12.00",
                                            "rpm",
                                            std::string(test::kRpm),
                                            "目标速度",
                                            "Target velocity",
                                            "",
                                            ""};
    for (int column = 0; column < kColumns; ++column) {
        EXPECT_EQ(row.cell(column), expected.at(static_cast<std::size_t>(column))) << column;
    }
}

TEST(PageRow, AnObjectWhoseAttrIsRwGetsAStarAndOneWithRwhOrRwlDoesNot) {
    Bench bench({{"200001", "a", "a", "Unsigned8", "RW"},
                 {"200002", "b", "b", "Unsigned8", "RWH"},
                 {"200003", "c", "c", "Unsigned8", "RWL"},
                 {"200004", "d", "d", "Unsigned8", ""},
                 {"200005", "e", "e", "Unsigned8", "rwhl"}});
    EXPECT_EQ(bench.row(0x200001, 7).number, "7*");
    EXPECT_EQ(bench.row(0x200002, 7).number, "7");
    EXPECT_EQ(bench.row(0x200003, 7).number, "7");
    EXPECT_EQ(bench.row(0x200004, 7).number, "7*");
    EXPECT_EQ(bench.row(0x200005, 7).number, "7*") << "the letters are capitals";
}

TEST(PageRow, AnObjectWithoutTheLetterWIsReadOnly) {
    const Bench bench;
    EXPECT_TRUE(bench.row(0x607100).read_only);
    EXPECT_TRUE(bench.row(0x606300).read_only);
    EXPECT_FALSE(bench.row(0x607A00).read_only);
}

TEST(PageRow, TheUnitIsTheTargetOfTheFirstFormulaLine) {
    const Bench bench;
    EXPECT_EQ(bench.row(0x60FF00).unit, "rpm");
    EXPECT_EQ(bench.row(0x604000).unit, "HEX");
    EXPECT_EQ(bench.row(0x608400).unit, "INC");
}

TEST(PageRow, AnObjectWithoutFormulaStartsInDec) {
    const Bench bench({{"200001", "a", "a", "Unsigned8", "RW", ""}});
    EXPECT_EQ(bench.row(0x200001).unit, "DEC");
    EXPECT_EQ(bench.row(0x200001).formula, "");
}

TEST(PageRow, AKeyThatIsNotInTheDictionaryGivesARowWithoutNameAndTypeInDec) {
    const Bench bench;
    const Row row = bench.row(0x123456, 2);
    EXPECT_EQ(row.number, "2*");
    EXPECT_EQ(row.index, "123456") << "the key stays, so that a stored project keeps it";
    EXPECT_EQ(row.type, "");
    EXPECT_EQ(row.name, "");
    EXPECT_EQ(row.unit, "DEC");
    EXPECT_TRUE(row.read_only);
    EXPECT_EQ(dictionary::write_key(row.index, row.type), 0U);
}

TEST(PageRow, TheIndexHasNoLeadingZeros) {
    const Bench bench({{"0A0001", "a", "a"}});
    const Row row = bench.row(0x0A0001);
    EXPECT_EQ(row.index, "A0001");
    EXPECT_EQ(row.identity(), 0x0A0001);
    EXPECT_EQ(row.name, "a");
}

TEST(PageRow, ItemListsAreEmptyWhenTheObjectHasNone) {
    // Filled with blanks or with NULs, as dictionary files come.
    for (const char padding : {' ', '\0'}) {
        dictionary::Store store;
        store.load(test::record({"200001", "a", "a"}, padding));
        const Row row = build_row(store, 0x200001, 0, base::Language::kEnglish);
        EXPECT_EQ(row.list_en, "");
        EXPECT_EQ(row.list_ch, "");
        EXPECT_EQ(row.name_ch, "a");
        EXPECT_EQ(row.type, "uint16");
    }
}

TEST(PageRow, TheItemListIsTheCommentFromItsFirstBarWithoutItsTail) {
    const Bench bench({{"200001", "a", "a", "Unsigned8", "RW", "[DEC]N*1", "说明|0:关\n",
                        "Help text |0:Off|1:On  \n"}});
    EXPECT_EQ(bench.row(0x200001).list_en, "|0:Off|1:On");
    EXPECT_EQ(bench.row(0x200001).list_ch, "|0:关");
}

TEST(PageRow, TheNameComesInTheLanguage) {
    const Bench bench;
    EXPECT_EQ(build_row(bench.dictionary, 0x606000, 0, base::Language::kChinese).name, "工作模式");
    EXPECT_EQ(build_row(bench.dictionary, 0x606000, 0, base::Language::kEnglish).name,
              "Operation mode");
}

TEST(PageRow, RestoringKeepsTheStoredValueAndUnit) {
    const Bench bench;
    const Row row =
        restore_row(bench.dictionary, 0x60FF00, 3, base::Language::kEnglish, "81", "DEC");
    EXPECT_EQ(row.number, "3*");
    EXPECT_EQ(row.value, "81");
    EXPECT_EQ(row.unit, "DEC");
    EXPECT_EQ(row.name, "Target velocity");
    EXPECT_EQ(row.formula, test::kRpm);
}

TEST(PageRow, RenumberingKeepsTheStar) {
    Row row;
    row.number = "3*";
    row.renumber(12);
    EXPECT_EQ(row.number, "12*");
    row.number = "3";
    row.renumber(2);
    EXPECT_EQ(row.number, "2");
}

TEST(PageRow, ColumnWidthsAreTheToldFractionsOfTheGrid) {
    constexpr int kWidth = 2000;
    const std::vector<int> expected{80, 205, 205, 500, 700, 230, 0, 0, 0, 0, 0};
    int sum = 0;
    for (int column = 0; column < kColumns; ++column) {
        EXPECT_EQ(column_width(column, kWidth), expected.at(static_cast<std::size_t>(column)));
        sum += column_width(column, kWidth);
    }
    EXPECT_EQ(sum, 1920) << "a twenty-fifth stays free for the scroll bar";
    EXPECT_EQ(column_width(kColumns, kWidth), 0);
    EXPECT_EQ(column_width(-1, kWidth), 0);
}

TEST(PageRow, HeaderTexts) {
    const std::vector<std::string_view> expected{"N", "Index", "Type", "Name", "Value", "Unit",
                                                 "",  "",      "",     "",     ""};
    EXPECT_EQ(std::vector<std::string_view>(kHeader.begin(), kHeader.end()), expected);
}

}  // namespace
}  // namespace servo::params
