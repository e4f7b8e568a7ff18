#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <vector>

#include "base/gbk.h"
#include "dictionary/raw_record.h"
#include "dictionary/store.h"
#include "dictionary/store_of.h"

namespace servo::dictionary {
namespace {

using namespace std::literals;

RawRecord speed() {
    RawRecord record;
    record.index = "60FF";
    record.sub = "00";
    record.name_ch = base::utf8_to_gbk("目标速度");
    record.name_en = "Target velocity";
    record.type = "Integer32";
    record.attribute = "HW";
    record.comment_ch = base::utf8_to_gbk("说明|0:停|1:走");
    record.comment_en = "Help|0:stop|1:go";
    record.formula = "[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]";
    record.modbus = "6FF0";
    return record;
}

void expect_blank(const ObjectRecord& record) {
    EXPECT_EQ(record.key, 0);
    EXPECT_EQ(record.type, filled("", 6));
    EXPECT_EQ(record.name_ch, filled("", 64));
    EXPECT_EQ(record.name_en, filled("", 64));
    EXPECT_EQ(record.formula, filled("", 256));
    EXPECT_EQ(record.attr, filled("", 8));
    EXPECT_EQ(record.list_en, filled("", 768));
    EXPECT_EQ(record.list_ch, filled("", 768));
}

TEST(GetRecord, GivesEveryFieldFilledWithBlanksToItsWidth) {
    const Store store = store_of({speed()});
    const ObjectRecord record = store.get_record(0x60FF00);
    EXPECT_EQ(record.key, 0x60FF00);
    EXPECT_EQ(record.type, "int32 ");
    EXPECT_EQ(record.name_ch, "目标速度" + std::string(60, ' '));  // 64 characters
    EXPECT_EQ(record.name_en, filled("Target velocity", 64));
    EXPECT_EQ(record.formula,
              filled("[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]", 256));
    EXPECT_EQ(record.attr, "HW      ");
    EXPECT_EQ(record.list_en, filled("|0:stop|1:go", 768));
    EXPECT_EQ(record.list_ch, "|0:停|1:走" + std::string(768 - 8, ' '));
}

TEST(GetRecord, AnAbsentIdentityGivesKeyZeroAndBlankType) {
    const Store store = store_of({speed()});
    expect_blank(store.get_record(0x60FF01));
    expect_blank(store.get_record(-1));
    expect_blank(store.get_record(0));
}

TEST(GetRecord, AnEmptyStoreFindsNothing) {
    const Store store;
    EXPECT_EQ(store.count(), 0);
    expect_blank(store.get_record(0x60FF00));
    EXPECT_EQ(store.comment(0x60FF00, true), "");
}

TEST(GetRecord, ARepeatedIdentityGivesTheFirstRecordInFileOrder) {
    RawRecord second = speed();
    second.name_en = "Second";
    RawRecord other;
    const Store store = store_of({other, speed(), second});
    EXPECT_EQ(store.get_record(0x60FF00).name_en, filled("Target velocity", 64));
    EXPECT_EQ(store.dictionary_rows(), 3U);
    EXPECT_EQ(store.dictionary_cell(2, 3), "Second");
}

TEST(Find, GivesTheRowOfTheFirstRecord) {
    const Store store = store_of({RawRecord{}, speed(), speed()});
    EXPECT_EQ(store.find(0x60FF00), 1U);
    EXPECT_EQ(store.find(0x200000), 0U);
    EXPECT_EQ(store.find(0x60FF01), std::nullopt);
    EXPECT_EQ(Store().find(0), std::nullopt);
}

TEST(GetRecord, FieldsAreCutAtTheirFirstNul) {
    RawRecord record = speed();
    record.padding = '\0';
    record.name_ch = base::utf8_to_gbk("速度") + "\0rest"s;
    record.name_en = "Speed\0rest"s;
    record.attribute = "H\0W"s;
    record.formula = "[DEC]N*1\0N*2"s;
    record.type = "Unsigned16\0x"s;
    const Store store = store_of({record});
    const ObjectRecord found = store.get_record(0x60FF00);
    EXPECT_EQ(found.name_ch, "速度" + std::string(62, ' '));
    EXPECT_EQ(found.name_en, filled("Speed", 64));
    EXPECT_EQ(found.attr, filled("H", 8));
    EXPECT_EQ(found.formula, filled("[DEC]N*1", 256));
    EXPECT_EQ(found.type, "uint16");
}

TEST(GetRecord, ASecondLookupGivesTheSameAndTheTablesStayAsLoaded) {
    // Readers clean the master from NUL-padded to blank-padded; neither the next reader nor the
    // tables, which hold copies made at load, can tell.
    RawRecord record = speed();
    record.padding = '\0';
    record.name_en = "Speed\0rest"s;
    const Store store = store_of({record});
    const std::string before = store.dictionary_cell(0, 3);
    EXPECT_EQ(before, "Speed\0rest"s);
    const ObjectRecord first = store.get_record(0x60FF00);
    const ObjectRecord second = store.get_record(0x60FF00);
    EXPECT_EQ(first.name_en, second.name_en);
    EXPECT_EQ(first.type, second.type);
    EXPECT_EQ(first.attr, second.attr);
    EXPECT_EQ(first.formula, second.formula);
    EXPECT_EQ(store.dictionary_cell(0, 3), before);
}

TEST(GetRecord, EveryWordOfTheTypeTableIsMapped) {
    const std::vector<std::pair<std::string, std::string>> types{
        {"Unsigned8", "uint8 "},     {"Integer8", "int8  "},   {"Unsigned16", "uint16"},
        {"Integer16", "int16 "},     {"Unsigned32", "uint32"}, {"Integer32", "int32 "},
        {"Visible String", "String"}};
    for (const auto& [word, name] : types) {
        RawRecord record = speed();
        record.type = word;
        EXPECT_EQ(store_of({record}).get_record(0x60FF00).type, name);
    }
}

TEST(GetRecord, AnUnknownTypeWordLeavesTheTypeBlankAndKeepsTheKey) {
    RawRecord record = speed();
    record.type = "Real32";
    const ObjectRecord found = store_of({record}).get_record(0x60FF00);
    EXPECT_EQ(found.type, filled("", 6));
    EXPECT_EQ(found.key, 0x60FF00);
    EXPECT_EQ(found.name_en, filled("Target velocity", 64));
}

TEST(GetRecord, ACommentWithoutABarGivesBlankLists) {
    RawRecord record = speed();
    record.comment_en = "No list";
    record.comment_ch = base::utf8_to_gbk("没有");
    const ObjectRecord found = store_of({record}).get_record(0x60FF00);
    EXPECT_EQ(found.list_en, filled("", 768));
    EXPECT_EQ(found.list_ch, filled("", 768));
}

TEST(GetRecord, ACommentThatBeginsWithABarGivesTheWholeCommentAsTheList) {
    RawRecord record = speed();
    record.comment_en = "|0:a|1:b";
    EXPECT_EQ(store_of({record}).get_record(0x60FF00).list_en, filled("|0:a|1:b", 768));
}

TEST(GetRecord, TheSecondByteOfAChineseCharacterIsNoBar) {
    RawRecord record = speed();
    record.comment_ch = "\x81\x7C|0:x";  // the first is one character
    EXPECT_EQ(store_of({record}).get_record(0x60FF00).list_ch, filled("|0:x", 768));
    record.comment_ch = "\x81\x7C";
    EXPECT_EQ(store_of({record}).get_record(0x60FF00).list_ch, filled("", 768));
}

TEST(GetRecord, ALongListIsCutToItsWidthInCharacters) {
    RawRecord record = speed();
    record.comment_en = "x|" + std::string(4000, 'e');
    std::string chinese = "|";
    for (int i = 0; i < 2000; ++i)
        chinese += "\xCB\xD9";
    record.comment_ch = chinese;
    const ObjectRecord found = store_of({record}).get_record(0x60FF00);
    EXPECT_EQ(found.list_en, "|" + std::string(767, 'e'));
    EXPECT_EQ(base::utf8_length(found.list_ch), 768U);
    EXPECT_EQ(base::utf8_prefix(found.list_ch, 3), "|速速");
    EXPECT_EQ(found.list_ch.substr(found.list_ch.size() - 3), "速");
}

TEST(GetRecord, AListNextToTheEndOfTheCommentIsWhole) {
    RawRecord record = speed();
    record.comment_en = std::string(4090, 'e') + "|0:yes";
    EXPECT_EQ(store_of({record}).get_record(0x60FF00).list_en, filled("|0:yes", 768));
}

TEST(GetRecord, AListKeepsNulsThatFollowIt) {
    // Only the four short fields and the type are cut at a NUL; the list runs to the comment's end.
    RawRecord record = speed();
    record.padding = '\0';
    const std::string list = store_of({record}).get_record(0x60FF00).list_en;
    EXPECT_EQ(list, "|0:stop|1:go" + std::string(768 - 12, '\0'));
    EXPECT_EQ(trim_tail(list), "|0:stop|1:go");
}

TEST(GetRecord, AFullFieldHasNoFilling) {
    RawRecord record = speed();
    record.name_en = std::string(64, 'n');
    record.formula = std::string(200, 'f');
    record.attribute = "ABCDEFGH";
    const ObjectRecord found = store_of({record}).get_record(0x60FF00);
    EXPECT_EQ(found.name_en, std::string(64, 'n'));
    EXPECT_EQ(found.formula, std::string(200, 'f') + std::string(56, ' '));
    EXPECT_EQ(found.attr, "ABCDEFGH");
}

TEST(GetRecord, IndexDigitsMayBeLowerCase) {
    RawRecord record = speed();
    record.index = "60ff";
    EXPECT_EQ(store_of({record}).get_record(0x60FF00).key, 0x60FF00);
}

TEST(GetRecord, AnUnparsableIndexHasTheValueOfItsLeadingDigitsAndMatchesNoRealObject) {
    RawRecord half = speed();
    half.index = "60zz";
    RawRecord none = speed();
    none.index = "zzzz";
    const Store store = store_of({half, none, speed()});
    EXPECT_EQ(store.row_identity(0), 0x60);
    EXPECT_EQ(store.row_identity(1), 0);
    EXPECT_EQ(store.get_record(0x60FF00).key, 0x60FF00);
    EXPECT_EQ(store.get_record(0x60).name_en, filled("Target velocity", 64));
    EXPECT_EQ(store.dictionary_rows(), 3U);
}

TEST(GetRecord, ABlankInsideTheIndexEndsTheNumber) {
    RawRecord record = speed();
    record.index = "60F ";
    EXPECT_EQ(store_of({record}).row_identity(0), 0x60F);
    record.index = " 60F";
    EXPECT_EQ(store_of({record}).row_identity(0), 0);
}

TEST(GetRecord, FourSignificantDigitsAreASigned16BitNumber) {
    // Index 00FF, sub FF: the digits FFFF read as -1. Asked by the same rule it is found, by the
    // plain number it is not.
    RawRecord record = speed();
    record.index = "00FF";
    record.sub = "FF";
    const Store store = store_of({record});
    EXPECT_EQ(store.row_identity(0), -1);
    EXPECT_EQ(store.get_record(-1).key, -1);
    expect_blank(store.get_record(0xFFFF));
    record.index = "0080";
    record.sub = "00";
    EXPECT_EQ(store_of({record}).row_identity(0), -32768);
    record.index = "0100";
    EXPECT_EQ(store_of({record}).row_identity(0), 0x10000);
}

TEST(Comment, IsTheWholeCommentOfTheFirstRecordTrimmed) {
    RawRecord second = speed();
    second.comment_en = "Other";
    const Store store = store_of({speed(), second});
    EXPECT_EQ(store.comment(0x60FF00, true), "Help|0:stop|1:go");
    EXPECT_EQ(store.comment(0x60FF00, false), "说明|0:停|1:走");
    EXPECT_EQ(store.comment(0x123456, true), "");
}

RC_GTEST_PROP(GetRecord, AgreesWithAScanFromTheFirstRecordOn, ()) {
    // Few identities, so that many are repeated.
    const auto identities = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 20));
    std::vector<RawRecord> records;
    std::map<Identity, std::string> expected;
    for (std::size_t i = 0; i < identities.size(); ++i) {
        RawRecord record;
        record.index = "20" + std::to_string(10 + identities[i]);
        record.name_en = "number " + std::to_string(i);
        records.push_back(record);
        expected.emplace(std::stoi(record.index, nullptr, 16) << 8, record.name_en);
    }
    const Store store = store_of(records);
    for (int i = 0; i < 20; ++i) {
        const Identity identity = std::stoi("20" + std::to_string(10 + i), nullptr, 16) << 8;
        const auto found = expected.find(identity);
        const ObjectRecord record = store.get_record(identity);
        RC_ASSERT(record.key == (found == expected.end() ? 0 : identity));
        RC_ASSERT(record.name_en == filled(found == expected.end() ? "" : found->second, 64));
    }
}

}  // namespace
}  // namespace servo::dictionary
