// The files of a configuration and what their cells mean on the line.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <string>

#include "configuration_bench.h"
#include "tools/configuration_rows.h"

namespace servo::tools {
namespace {

const dictionary::Store& store() {
    static const dictionary::Store made = test::small_dictionary();
    return made;
}

TEST(ConfigurationKeys, TheLastTwoDigitsDecideTheSize) {
    EXPECT_EQ(row_key("60600008"), 0x60600001U);
    EXPECT_EQ(row_key("20100310"), 0x20100302U);
    EXPECT_EQ(row_key("60810020"), 0x60810004U);
    EXPECT_EQ(row_key("60f61110"), 0x60F61102U);
}

TEST(ConfigurationKeys, OtherDigitsNameNoSize) {
    for (const char* Index : {"60600004", "60600018", "60600000", "606000", "", "08"})
        EXPECT_EQ(row_key(Index), std::nullopt) << Index;
}

TEST(ConfigurationKeys, APrefixOrADigitTooManyIsNoKey) {
    for (const char* Index : {"0x60600008", "606600008", "0060600008", "6060 008", "6060000G08",
                              "60600008 ", " 60600008", "&H600008"})
        EXPECT_EQ(row_key(Index), std::nullopt) << Index;
}

TEST(ConfigurationValues, DecimalAsItStands) {
    EXPECT_EQ(source_number("1"), 1);
    EXPECT_EQ(source_number("-1"), -1);
    EXPECT_EQ(source_number("2147483647"), 2147483647);
}

TEST(ConfigurationValues, A0x8000IsMinus32768) {
    EXPECT_EQ(source_number("0x8000"), -32768);
    EXPECT_EQ(source_number("0x7FFF"), 32767);
    EXPECT_EQ(source_number("0x00010000"), 65536);
    EXPECT_EQ(source_number("0xFFFFFFFF"), -1);
}

TEST(ConfigurationValues, A4294967295GoesOutAsMinus1) {
    EXPECT_EQ(source_number("4294967295"), -1);
    EXPECT_EQ(source_number("2147483648"), INT32_MIN);
}

TEST(ConfigurationValues, RoundsHalvesToEven) {
    EXPECT_EQ(source_number("2.5"), 2);
    EXPECT_EQ(source_number("3.5"), 4);
}

TEST(ConfigurationValues, OnlyTheSmallPrefixIsHexadecimal) {
    EXPECT_EQ(source_number("0x10"), 16);
    EXPECT_EQ(source_number("0X10"), 0);
    EXPECT_EQ(source_number("&H10"), 16) << "what the prefix is replaced by";
}

TEST(ConfigurationValues, ReadsAsFarAsItIsANumber) {
    EXPECT_EQ(source_number("12abc"), 12);
    EXPECT_EQ(source_number(""), 0);
    EXPECT_EQ(source_number("abc"), 0);
}

TEST(ConfigurationValues, WhatNo32BitsHoldIsNotSent) {
    for (const char* text : {"6442450944", "99999999999", "-2147483649", "1E999", "-1E999"})
        EXPECT_EQ(source_number(text), std::nullopt) << text;
}

RC_GTEST_PROP(ConfigurationValues, AnyReportedValueComesBackAsItsPattern, (std::uint32_t value)) {
    RC_ASSERT(source_number(std::to_string(value)) == static_cast<std::int32_t>(value));
}

TEST(CdiFile, ALineIsARow) {
    const auto rows = read_cdi("60600008,1,True\r\n", store());
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0], (SourceRow{.Index = "60600008",
                                  .Source_Value = "1",
                                  .Check_Value = "",
                                  .Result = "",
                                  .name_ch = "工作模式",
                                  .name_en = "Modes of operation"}));
}

TEST(CdiFile, AThirdFieldFalseIsRedAndInvalid) {
    const auto rows = read_cdi("60600008,1,False\r\n20100310,2,True\r\n", store());
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].Result, "Invalid");
    EXPECT_TRUE(rows[0].red);
    EXPECT_EQ(rows[1].Result, "");
    EXPECT_FALSE(rows[1].red);
}

TEST(CdiFile, OnlyTheExactWordTrueCounts) {
    for (const char* word : {"", "true", "TRUE", "True ", " True", "1"}) {
        const auto rows = read_cdi(std::string("60600008,1,") + word + "\r\n", store());
        ASSERT_EQ(rows.size(), 1U);
        EXPECT_EQ(rows[0].Result, "Invalid") << '"' << word << '"';
    }
    EXPECT_EQ(read_cdi("60600008,1,True,more,fields\n", store()).at(0).Result, "");
}

TEST(CdiFile, CellsHoldTheFieldsAsTheyStand) {
    const auto rows = read_cdi(" 6060 , 0x8000 x,True\n", store());
    EXPECT_EQ(rows.at(0).Index, " 6060 ");
    EXPECT_EQ(rows.at(0).Source_Value, " 0x8000 x");
}

TEST(CdiFile, AnUnknownKeyHasEmptyNamesAndStays) {
    const auto rows = read_cdi("77770008,1,True\nFFFF0020,1,True\n0x606000,1,True\n", store());
    ASSERT_EQ(rows.size(), 3U);
    for (const SourceRow& row : rows)
        EXPECT_EQ(row.name_ch + row.name_en, "") << row.Index;
}

TEST(CdiFile, AKeyOfManyDigitsIsNoObject) {
    const auto rows = read_cdi(std::string(400, 'F') + ",1,True\n", store());
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].name_en, "");
}

TEST(CdiFile, ALineWithFewerThanThreeFieldsEndsTheLoadingAndIsShown) {
    const auto rows = read_cdi("60600008,1,True\n20100310,2\n60810020,3,True\n", store());
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1].Index, "20100310");
    EXPECT_EQ(rows[1].Source_Value, "2");
    EXPECT_EQ(rows[1].Result, "Invalid");
    EXPECT_TRUE(rows[1].red);
}

// --- The same records, however the lines end.

TEST(CdiFile, LinesEndWithCrLfOrLfAndTheLastMayHaveNoEnd) {
    const auto told = read_cdi("60600008,1,True\r\n20100310,2,False\r\n", store());
    ASSERT_EQ(told.size(), 2U);
    for (const char* text :
         {"60600008,1,True\n20100310,2,False\n", "60600008,1,True\r\n20100310,2,False",
          "60600008,1,True\n20100310,2,False\r", "60600008,1,True\n20100310,2,False"})
        EXPECT_EQ(read_cdi(text, store()), told) << text;
}

TEST(CdiFile, AQuotedFieldKeepsItsQuotesAndIsSplitAtItsComma) {
    const auto rows = read_cdi("\"60600008\",1,True\n60600008,\"1,5\",True\n", store());
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].Index, "\"60600008\"");
    EXPECT_EQ(row_key(rows[0].Index), std::nullopt) << "so nothing is sent";
    EXPECT_EQ(rows[1].Source_Value, "\"1");
    EXPECT_EQ(rows[1].Result, "Invalid") << "the third field is what stands behind the comma";
}

TEST(CdiFile, ABlankLineEndsTheLoadingAndIsShown) {
    const auto rows = read_cdi("60600008,1,True\n\n60810020,3,True\n", store());
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1].Index, "");
    EXPECT_EQ(rows[1].Result, "Invalid");
}

TEST(CdiFile, BytesOfTheCodePageAreShownAsText) {
    const auto rows = read_cdi(base::utf8_to_gbk("60600008,1 转,True\n模式,2,True\n"), store());
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].Source_Value, "1 转");
    EXPECT_EQ(source_number(rows[0].Source_Value), 1);
    EXPECT_EQ(rows[1].Index, "模式");
    EXPECT_EQ(rows[1].Result, "");
    const auto broken = read_cdi("60600008,1\xFF\x80,True\n", store());
    ASSERT_EQ(broken.size(), 1U);
    EXPECT_EQ(source_number(broken[0].Source_Value), 1);
}

TEST(CdiFile, AnEmptyFileHasNoRows) {
    EXPECT_TRUE(read_cdi("", store()).empty());
}

TEST(CdiFile, RowsAreLimited) {
    std::string text;
    for (std::size_t row = 0; row < kMostRows + 5; ++row)
        text += "1,2,True\n";
    EXPECT_EQ(read_cdi(text, store()).size(), kMostRows);
    EXPECT_EQ(read_cdo(text, store()).size(), kMostRows);
}

TEST(CdoFile, OnlyTheFirstFieldCounts) {
    const auto rows = read_cdo("60600008\r\n20100310,whatever,False,x\r\n", store());
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].Index, "60600008");
    EXPECT_EQ(rows[0].Result, "");
    EXPECT_EQ(rows[1].Index, "20100310");
    EXPECT_EQ(rows[1].name_en, "Input 1 function");
}

TEST(CdoFile, AnEmptyLineEndsTheLoading) {
    EXPECT_EQ(read_cdo("60600008\n\n20100310\n", store()).size(), 1U);
}

TEST(CdoFile, LinesEndWithCrLfOrLfAndTheLastMayHaveNoEnd) {
    for (const char* text : {"60600008\r\n20100310\r\n", "60600008\n20100310\n",
                             "60600008\n20100310", "60600008,\r\n20100310\r"}) {
        const auto rows = read_cdo(text, store());
        ASSERT_EQ(rows.size(), 2U) << text;
        EXPECT_EQ(rows[0].Index, "60600008");
        EXPECT_EQ(rows[1].Index, "20100310");
    }
}

TEST(CdoFile, AnEmptyFileHasNoRows) {
    EXPECT_TRUE(read_cdo("", store()).empty());
}

// The name of a row is looked up without its last two digits, so each length of an object has it.
TEST(CdoFile, TheNameIsThatOfTheKeyDividedBy256) {
    for (const char* Index : {"60600008", "60600010", "606000FF", "60600000"})
        EXPECT_EQ(read_cdo(Index, store()).at(0).name_en, "Modes of operation") << Index;
    EXPECT_EQ(read_cdo("606000", store()).at(0).name_en, "") << "6060 of sub-index 00 is none";
}

TEST(BrokenLine, IsTheFirstThatCannotBeSplit) {
    EXPECT_EQ(broken_line("a,b,c\nd,e,f\n", 2, 3), std::nullopt);
    EXPECT_EQ(broken_line("a,b,c\nd,e\n", 2, 3), 2U);
    EXPECT_EQ(broken_line("a,b,c\nd,e\nf,g,h\n", 2, 3), 2U);
    EXPECT_EQ(broken_line("a,b,c,d\n", 1, 3), std::nullopt);
    EXPECT_EQ(broken_line("", 0, 3), std::nullopt);
    EXPECT_EQ(broken_line("\n\n", 1, 3), std::nullopt);
    EXPECT_EQ(broken_line("a\n\n\nb\n", 1, 1), 2U);
    EXPECT_EQ(broken_line("a\nb\n", 1, 1), 2U) << "more than are loaded";
}

TEST(Export, OneLineARowEndedByCrLf) {
    const std::vector<DriverRow> rows{
        {.Index = "60600008", .Driver_Value = "1", .Result = "True", .name_ch = {}, .name_en = {}},
        {.Index = "20100310", .Driver_Value = "", .Result = "False", .name_ch = {}, .name_en = {}}};
    EXPECT_EQ(write_cdi(rows), "60600008,1,True\r\n20100310,,False\r\n");
}

TEST(Export, CanBeLoadedUnchangedAndFailedReadsAreSkipped) {
    const std::vector<DriverRow> rows{{"60600008", "1", "True", "", ""},
                                      {"20100310", "", "False", "", ""}};
    const auto loaded = read_cdi(write_cdi(rows), store());
    ASSERT_EQ(loaded.size(), 2U);
    EXPECT_EQ(loaded[0].Source_Value, "1");
    EXPECT_EQ(loaded[0].Result, "");
    EXPECT_EQ(loaded[1].Result, "Invalid");
}

TEST(Template, OfAFileAsksForEachObjectOnce) {
    const auto rows = read_cdi(
        "60600008,1,True\n20100310,1,False\n60600008,2,True\nnonsense,1,True\n60810020,1,True\n",
        store());
    const auto wanted = template_of(rows);
    ASSERT_EQ(wanted.size(), 2U);
    EXPECT_EQ(wanted[0].Index, "60600008");
    EXPECT_EQ(wanted[1].Index, "60810020");
}

}  // namespace
}  // namespace servo::tools
