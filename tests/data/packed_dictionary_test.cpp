// The dictionary file as it lies beside the programs.
#include <gtest/gtest.h>

#include <set>

#include "base/gbk.h"
#include "data/tools/records.h"
#include "tree_support.h"

namespace servo::data {
namespace {

using test::objects;
using test::store;

constexpr std::string_view kSpeedShown = "[DEC rpm]N*1875/512/[64100320]";
constexpr std::string_view kSpeedEntered = "[rpm DEC]N/1875*512*[64100320]";
constexpr std::string_view kAccelerationShown = "[DEC rps/s]N*1000*4000/65536/[64100320]";
constexpr std::string_view kAccelerationEntered = "[rps/s DEC]N/1000/4000*65536*[64100320]";
constexpr std::string_view kCurrentShown = "[DEC Ap]N/2048*[65100310]/10";
constexpr std::string_view kCurrentEntered = "[Ap DEC]N*2048/[65100310]*10";

bool has_line(const Object* object, std::string_view line) {
    if (object == nullptr) return false;
    for (const std::string& one : test::split(object->formula, '\n')) {
        if (one == line) return true;
    }
    return false;
}

TEST(PackedDictionary, HoldsAWholeDrive) {
    EXPECT_GE(objects().size(), 1000U);
    EXPECT_EQ(static_cast<std::size_t>(store().count()), objects().size());
}

TEST(PackedDictionary, IsMadeFromTheTables) {
    const auto folder = test::tree();
    const bool reduced = dictionary::Store::variant_of(folder) == dictionary::Variant::kReduced;
    const std::string packed = test::bytes_of(folder / (reduced ? "Servo.dat" : "qorlan.dat"));
    EXPECT_TRUE(packed == build_records(objects()));
}

TEST(PackedDictionary, OnlyOneVariantIsThere) {
    const bool reduced = std::filesystem::exists(test::tree() / "Servo.dat");
    const bool whole = std::filesystem::exists(test::tree() / "qorlan.dat");
    EXPECT_NE(reduced, whole);
}

TEST(PackedDictionary, StoreGivesEveryFieldBack) {
    for (const Object& object : objects()) {
        SCOPED_TRACE(object.place.file + ":" + std::to_string(object.place.line));
        const auto record = store().get_record(object.key);
        ASSERT_EQ(record.key, object.key);
        EXPECT_EQ(dictionary::trim_tail(record.name_ch), object.name_zh);
        EXPECT_EQ(dictionary::trim_tail(record.name_en), object.name_en);
        EXPECT_EQ(dictionary::trim_tail(record.formula), object.formula);
        EXPECT_EQ(record.attr.substr(0, object.attr.size()), object.attr);
        EXPECT_EQ(dictionary::strip_blanks(record.type), dictionary::short_type(object.type));
        EXPECT_EQ(store().comment(object.key, false), object.comment_zh);
        EXPECT_EQ(store().comment(object.key, true), object.comment_en);
    }
}

TEST(PackedDictionary, EnglishTextsAreEnglish) {
    for (const Object& object : objects()) {
        for (const std::string* text : {&object.name_en, &object.comment_en, &object.formula}) {
            EXPECT_EQ(base::utf8_length(*text), text->size()) << object.name_en << ": " << *text;
        }
    }
}

TEST(PackedDictionary, ChineseHelpIsChinese) {
    for (const Object& object : objects()) {
        EXPECT_LT(base::utf8_length(object.comment_zh), object.comment_zh.size())
            << object.name_en << ": " << object.comment_zh;
    }
}

// What one sees in a list tells the objects apart.
TEST(PackedDictionary, NamesAreUnique) {
    std::set<std::string> chinese;
    std::set<std::string> english;
    for (const Object& object : objects()) {
        EXPECT_TRUE(chinese.insert(object.name_zh).second) << object.name_zh;
        EXPECT_TRUE(english.insert(object.name_en).second) << object.name_en;
    }
}

TEST(PackedDictionary, InternalUnitsUseTheLinesThatTheProgramHolds) {
    for (const dictionary::Identity key : {0x606C00, 0x608100, 0x60FF00, 0x609901, 0x60F916}) {
        EXPECT_TRUE(has_line(test::find_object(key), kSpeedShown)) << std::hex << key;
        EXPECT_TRUE(has_line(test::find_object(key), kSpeedEntered)) << std::hex << key;
    }
    for (const dictionary::Identity key : {0x608300, 0x609A00, 0x310001}) {
        EXPECT_TRUE(has_line(test::find_object(key), kAccelerationShown)) << std::hex << key;
        EXPECT_TRUE(has_line(test::find_object(key), kAccelerationEntered)) << std::hex << key;
    }
    for (const dictionary::Identity key : {0x607800, 0x60F60C, 0x607300, 0x215002}) {
        EXPECT_TRUE(has_line(test::find_object(key), kCurrentShown)) << std::hex << key;
        EXPECT_TRUE(has_line(test::find_object(key), kCurrentEntered)) << std::hex << key;
    }
}

}  // namespace
}  // namespace servo::data
