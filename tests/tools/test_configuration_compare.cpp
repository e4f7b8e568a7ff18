// The comparison of two configurations.
#include <gtest/gtest.h>

#include "configuration_bench.h"
#include "tools/configuration_compare.h"

namespace servo::tools {
namespace {

using base::Language;

const dictionary::Store& store() {
    static const dictionary::Store made = test::small_dictionary();
    return made;
}

std::vector<ConfigurationValue> file(std::string_view text) {
    return configuration_values(read_cdi(text, store()));
}

Comparison compare(std::string_view A, std::string_view B) {
    return compare_configurations(file(A), file(B), store());
}

TEST(ConfigurationCompare, OnlyDifferencesAreTold) {
    const auto found =
        compare("60600008,1,True\n20100310,2,True\n", "20100310,3,True\n60600008,1,True\n");
    ASSERT_EQ(found.rows.size(), 1U);
    EXPECT_EQ(found.equal, 1U);
    EXPECT_EQ(found.rows[0].Index, "20100310");
    EXPECT_EQ(found.rows[0].name_ch, "输入1功能");
    EXPECT_EQ(found.rows[0].name_en, "Input 1 function");
}

TEST(ConfigurationCompare, ValuesAreThoseThatTheDriveWouldHold) {
    EXPECT_TRUE(compare("20100310,0xFFFF,True\n", "20100310,65535,True\n").rows.empty());
    EXPECT_TRUE(compare("20100310,-1,True\n", "20100310,65535,True\n").rows.empty());
    EXPECT_TRUE(compare("60600008,252,True\n", "60600008,-4,True\n").rows.empty());
    EXPECT_TRUE(compare("60810020,4294967295,True\n", "60810020,-1,True\n").rows.empty());
    EXPECT_EQ(compare("60810020,65535,True\n", "60810020,0xFFFF,True\n").rows.size(), 1U)
        << "0xFFFF is -1 in 32 bits";
}

TEST(ConfigurationCompare, DigitsOfAKeyInSmallLettersAreTheSameObject) {
    EXPECT_TRUE(compare("60f81320,5,True\n", "60F81320,5,True\n").rows.empty());
}

TEST(ConfigurationCompare, WhatOnlyOneSideListsIsADifference) {
    const auto found = compare("60600008,1,True\n", "20100310,2,True\n");
    ASSERT_EQ(found.rows.size(), 2U);
    EXPECT_EQ(found.rows[0].B.side, ComparedSide::kAbsent);
    EXPECT_EQ(found.rows[1].A.side, ComparedSide::kAbsent);
    EXPECT_EQ(compared_text(found.rows[1].A, found.rows[1], Language::kEnglish), "(not listed)");
    EXPECT_EQ(compared_text(found.rows[1].A, found.rows[1], Language::kChinese), "（未列出）");
}

TEST(ConfigurationCompare, ARowWithoutAValueIsNotRead) {
    const auto found = compare("60600008,,False\n", "60600008,1,True\n");
    ASSERT_EQ(found.rows.size(), 1U);
    EXPECT_EQ(found.rows[0].A.side, ComparedSide::kUnread);
    EXPECT_EQ(compared_text(found.rows[0].A, found.rows[0], Language::kEnglish), "(not read)");
    EXPECT_TRUE(compare("60600008,,False\n", "60600008,,False\n").rows.empty());
    EXPECT_TRUE(compare("60600008,,False\n", "").rows.empty()) << "nothing is known of either";
}

TEST(ConfigurationCompare, TheLastRowOfAnObjectCounts) {
    EXPECT_TRUE(compare("60600008,1,True\n60600008,3,True\n", "60600008,3,True\n").rows.empty());
    EXPECT_TRUE(compare("60600008,3,True\n60600008,,False\n", "60600008,3,True\n").rows.empty())
        << "a row that is passed over leaves what was written before";
}

TEST(ConfigurationCompare, AnotherLengthIsAnotherObject) {
    const auto found = compare("60600008,1,True\n", "60600010,1,True\n");
    ASSERT_EQ(found.rows.size(), 2U);
    EXPECT_EQ(found.rows[0].Index, "60600008");
    EXPECT_EQ(found.rows[1].Index, "60600010");
}

TEST(ConfigurationCompare, RowsThatNameNoObjectAreCounted) {
    EXPECT_EQ(compare("nonsense,1,True\n60600008,1,True\n", "60600004,1,True\n").unusable, 2U);
}

TEST(ConfigurationCompare, SignedTypesShowTheirSign) {
    const auto found = compare("60600008,252,True\n", "60600008,1,True\n");
    EXPECT_EQ(found.rows.at(0).A.raw, "-4");
    EXPECT_EQ(found.rows.at(0).unit, "DEC");
}

TEST(ConfigurationCompare, TheFirstUnitOfTheObjectIsShown) {
    const auto hex = compare("20100310,32771,True\n", "20100310,1,True\n");
    EXPECT_EQ(compared_text(hex.rows.at(0).A, hex.rows[0], Language::kEnglish), "8003");
}

TEST(ConfigurationCompare, EachSideIsShownWithItsOwnEncoder) {
    const auto found = compare("60810020,1000000,True\n64100320,10000,True\n",
                               "60810020,1000000,True\n64100320,20000,True\n60730010,1,True\n");
    ASSERT_EQ(found.rows.size(), 2U) << "the raw speeds are the same";
    const auto speeds = compare("60810020,1000000,True\n64100320,10000,True\n",
                                "60810020,2000000,True\n64100320,20000,True\n");
    const ComparedRow& speed = speeds.rows.at(0);
    EXPECT_EQ(speed.unit, "rpm");
    EXPECT_EQ(compared_text(speed.A, speed, Language::kEnglish), "366.21 rpm");
    EXPECT_EQ(compared_text(speed.B, speed, Language::kEnglish), "366.21 rpm");
    EXPECT_EQ(speed.B.raw, "2000000");
}

TEST(ConfigurationCompare, WithoutTheEncoderTheRawNumberIsShown) {
    const auto found = compare("60810020,1000000,True\n", "60810020,2000000,True\n");
    EXPECT_EQ(found.rows.at(0).unit, "DEC");
    EXPECT_EQ(found.rows[0].A.shown, "1000000");
    link::FormulaOperands operands;
    operands.o64100320 = {10000, true};
    const auto known = compare_configurations(file("60810020,1000000,True\n"),
                                              file("60810020,2000000,True\n"), store(), operands);
    EXPECT_EQ(known.rows.at(0).unit, "rpm");
    EXPECT_EQ(known.rows[0].A.shown, "366.21");
}

TEST(ConfigurationCompare, AnUnknownObjectHasNoNameAndIsRaw) {
    const auto found = compare("77770020,4294967295,True\n", "77770020,1,True\n");
    EXPECT_EQ(found.rows.at(0).name_en, "");
    EXPECT_EQ(found.rows[0].A.raw, "4294967295");
}

TEST(ConfigurationCompare, ADriverGridHasTheValuesThatWereRead) {
    const auto read = configuration_values(std::vector<DriverRow>{{"60600008", "1", "True", "", ""},
                                                                  {"20100310", "", "False", "", ""},
                                                                  {"60810020", "", "", "", ""}});
    const auto found = compare_configurations(
        read, file("60600008,1,True\n20100310,1,True\n60810020,1,True\n"), store());
    EXPECT_EQ(found.equal, 1U);
    ASSERT_EQ(found.rows.size(), 2U);
    EXPECT_EQ(found.rows[0].A.side, ComparedSide::kUnread);
    EXPECT_EQ(found.rows[1].A.side, ComparedSide::kUnread);
}

TEST(ConfigurationCompare, AsText) {
    EXPECT_EQ(
        comparison_text(compare("60600008,1,True\n", "60600008,3,True\n"), Language::kEnglish),
        "60600008\t工作模式\tModes of operation\t1\t3\n");
}

}  // namespace
}  // namespace servo::tools
