#include "data/tools/table.h"

#include <gtest/gtest.h>

#include <string>

namespace servo::data {
namespace {

const std::string kHeader =
    "index\tsub\tname_zh\tname_en\ttype\tattr\tcomment_zh\tcomment_en\tformula\tmodbus\n";

std::vector<Object> read(const std::string& rows, Problems& problems) {
    const Formulas formulas{{"dec", "[DEC]N*1"}};
    return read_objects("t.tsv", kHeader + rows, formulas, problems);
}

std::string row(const std::string& index, const std::string& sub, const std::string& type,
                const std::string& formula, const std::string& modbus) {
    return index + "\t" + sub + "\t名 {i}.{s}\tName {i0}.{s0}\t" + type +
           "\tRW\t注释 {s}\\n二\thelp {i}\t" + formula + "\t" + modbus + "\n";
}

TEST(Table, RowBecomesAnObject) {
    Problems problems;
    const auto objects = read(row("6040", "00", "Unsigned16", "@dec", "0205"), problems);
    ASSERT_TRUE(problems.empty());
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(objects[0].key, 0x604000);
    EXPECT_EQ(objects[0].name_zh, "名 1.1");
    EXPECT_EQ(objects[0].name_en, "Name 0.0");
    EXPECT_EQ(objects[0].comment_zh, "注释 1\n二");
    EXPECT_EQ(objects[0].formula, "[DEC]N*1");
    EXPECT_EQ(objects[0].modbus, "0205");
    EXPECT_EQ(objects[0].place.line, 2);
}

TEST(Table, FamilySpreadsOverIndexAndSub) {
    Problems problems;
    const auto objects =
        read(row("1A00..1A01", "01..03", "Unsigned32", "[HEX]N*1\\n[DEC]N*1", "4000"), problems);
    ASSERT_TRUE(problems.empty());
    ASSERT_EQ(objects.size(), 6U);
    EXPECT_EQ(objects[5].key, 0x1A0103);
    EXPECT_EQ(objects[5].name_zh, "名 2.3");
    EXPECT_EQ(objects[5].name_en, "Name 1.2");
    EXPECT_EQ(objects[5].comment_en, "help 2");
    EXPECT_EQ(objects[5].formula, "[HEX]N*1\n[DEC]N*1");
    EXPECT_EQ(objects[5].modbus, "400A");  // two registers each
}

TEST(Table, FamilyOfNarrowObjectsTakesOneRegisterEach) {
    Problems problems;
    const auto objects = read(row("2010", "0E..10", "Integer8", "@dec", "00FF"), problems);
    ASSERT_EQ(objects.size(), 3U);
    EXPECT_EQ(objects[1].modbus, "0100");
}

TEST(Table, FamilyWithoutAddressKeepsItsWord) {
    Problems problems;
    const auto objects = read(row("2010", "01..02", "Integer8", "@dec", "NULL"), problems);
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(objects[1].modbus, "NULL");
}

TEST(Table, BlankLinesAndCommentsCountAsLinesOnly) {
    Problems problems;
    const auto objects =
        read("\n# note\n" + row("6040", "00", "Integer8", "@dec", "NULL"), problems);
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(objects[0].place.line, 4);
}

struct BadRow {
    const char* index;
    const char* sub;
    const char* formula;
    const char* problem;
};

class BadRows : public testing::TestWithParam<BadRow> {};

TEST_P(BadRows, AreReportedWithTheirLine) {
    Problems problems;
    const auto objects = read(
        row(GetParam().index, GetParam().sub, "Integer8", GetParam().formula, "NULL"), problems);
    EXPECT_TRUE(objects.empty());
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].line, 2);
    EXPECT_EQ(problems[0].file, "t.tsv");
    EXPECT_NE(problems[0].text.find(GetParam().problem), std::string::npos) << problems[0].text;
}

INSTANTIATE_TEST_SUITE_P(Table, BadRows,
                         testing::Values(BadRow{"604", "00", "@dec", "index is not"},
                                         BadRow{"60400", "00", "@dec", "index is not"},
                                         BadRow{"60fF", "00", "@dec", "index is not"},
                                         BadRow{"6040..", "00", "@dec", "index is not"},
                                         BadRow{"6041..6040", "00", "@dec", "index is not"},
                                         BadRow{"6040", "1", "@dec", "sub is not"},
                                         BadRow{"6040", "01..01", "@dec", "sub is not"},
                                         BadRow{"6040", "0G", "@dec", "sub is not"},
                                         BadRow{"6040", "00", "@none", "no formula named @none"}));

TEST(Table, WrongNumberOfColumnsIsReported) {
    Problems problems;
    EXPECT_TRUE(read("6040\t00\n", problems).empty());
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].text, "2 columns, not 10");
}

TEST(Table, WrongOrMissingHeaderIsReported) {
    Problems problems;
    EXPECT_TRUE(read_objects("t", "index\tsub\n", {}, problems).empty());
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].text, "the header line is wrong");
    EXPECT_TRUE(read_objects("t", "", {}, problems).empty());
    ASSERT_EQ(problems.size(), 2U);
    EXPECT_EQ(problems[1].text, "the header line is missing");
}

TEST(Table, FormulaNameMayNotComeTwice) {
    Problems problems;
    const auto formulas =
        read_formulas("f", "name\tformula\tuse\na\t[DEC]N*1\tx\na\t[HEX]N*1\ty\n", problems);
    EXPECT_EQ(formulas.at("a"), "[DEC]N*1");
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].line, 3);
}

TEST(Table, RegistersFollowTheWidth) {
    EXPECT_EQ(modbus_registers("Unsigned8"), 1U);
    EXPECT_EQ(modbus_registers("Integer16"), 1U);
    EXPECT_EQ(modbus_registers("Integer32"), 2U);
    EXPECT_EQ(modbus_registers("Visible String"), 0U);
}

}  // namespace
}  // namespace servo::data
