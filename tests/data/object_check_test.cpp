#include "data/tools/object_check.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace servo::data {
namespace {

Object good() {
    Object object;
    object.key = 0x606000;
    object.name_zh = "工作模式";
    object.name_en = "Mode";
    object.type = "Integer8";
    object.attr = "RWL";
    object.comment_zh = "说明|-4:脉冲|1:位置";
    object.comment_en = "Help|-4:Pulse|1:Position";
    object.formula = "[DEC]N*1\n[HEX]N*1";
    object.modbus = "0100";
    object.place = {"t.tsv", 7};
    return object;
}

Object good_hex() {
    Object object = good();
    object.type = "Unsigned16";
    object.formula = "[HEX]N*1\n[DEC]N*1";
    object.comment_zh = "说明|000F:使能";
    object.comment_en = "Help|000F:Enable";
    return object;
}

std::string problem_of(const Object& object) {
    Problems problems;
    check_objects({object}, problems);
    return problems.empty() ? "" : problems.front().text;
}

TEST(ObjectCheck, GoodObjectsPass) {
    EXPECT_EQ(problem_of(good()), "");
    EXPECT_EQ(problem_of(good_hex()), "");
}

struct Fault {
    const char* name;
    std::function<void(Object&)> make;
    const char* problem;
};

class ObjectFault : public testing::TestWithParam<Fault> {};

TEST_P(ObjectFault, IsReported) {
    Object object = good();
    GetParam().make(object);
    const std::string problem = problem_of(object);
    EXPECT_NE(problem.find(GetParam().problem), std::string::npos) << problem;
}

INSTANTIATE_TEST_SUITE_P(
    ObjectCheck, ObjectFault,
    testing::Values(
        Fault{"UnknownType", [](Object& o) { o.type = "Unsigned64"; }, "type Unsigned64"},
        Fault{"EmptyName", [](Object& o) { o.name_en = ""; }, "name_en is empty"},
        Fault{"LongName", [](Object& o) { o.name_zh = std::string(65, 'x'); }, "65 bytes"},
        Fault{"CommaInName", [](Object& o) { o.name_en = "a,b"; }, "comma"},
        Fault{"LineFeedInName", [](Object& o) { o.name_en = "a\nb"; }, "comma or line feed"},
        Fault{"NotInCodePage", [](Object& o) { o.name_en = "I\u00B2t"; }, "GBK has not"},
        Fault{"ControlCharacter", [](Object& o) { o.name_en = "a\x01"; }, "GBK has not"},
        Fault{"LeftOverPlaceholder", [](Object& o) { o.name_en = "x {n}"; }, "placeholder"},
        Fault{"OneLetterComment", [](Object& o) { o.comment_en = "x"; }, "too short"},
        Fault{"LongComment", [](Object& o) { o.comment_en = std::string(4097, 'x'); }, "4097"},
        Fault{"UnknownAttribute", [](Object& o) { o.attr = "RWX"; }, "attr knows"},
        Fault{"AttributeTwice", [](Object& o) { o.attr = "RR"; }, "comes twice"},
        Fault{"NeitherReadNorWrite", [](Object& o) { o.attr = "L"; }, "neither R nor W"},
        Fault{"FastAndSlow", [](Object& o) { o.attr = "RHL"; }, "both H and L"},
        Fault{"Formula", [](Object& o) { o.formula = "[DEC]N-1"; }, "formula: "},
        Fault{"ListInOneLanguage", [](Object& o) { o.comment_en = "Help"; }, "differ in values"},
        Fault{"OtherValues", [](Object& o) { o.comment_en = "Help|-4:Pulse|2:P"; }, "differ"},
        Fault{"ItemWithoutColon", [](Object& o) { o.comment_en = "Help|-4 Pulse"; },
              "is not value"},
        Fault{"ItemWithoutText", [](Object& o) { o.comment_en = "Help|-4:"; }, "is not value"},
        Fault{"ItemNoNumber", [](Object& o) { o.comment_en = "Help|x:Pulse"; }, "is not value"},
        Fault{"ItemLeadingZero", [](Object& o) { o.comment_en = "Help|01:P"; }, "is not value"},
        Fault{"ItemOutOfRange", [](Object& o) { o.comment_en = "Help|128:P"; }, "is not value"},
        Fault{"EmptyItem", [](Object& o) { o.comment_en = "Help||1:P"; }, "is not value"},
        Fault{"ItemTwice", [](Object& o) { o.comment_zh = o.comment_en = "Help|1:a|1:b"; },
              "comes twice"},
        Fault{"LongList", [](Object& o) { o.comment_en = "Help|1:" + std::string(768, 'x'); },
              "more than 768"},
        Fault{"ListInAFreeUnit", [](Object& o) { o.formula = "[DEC ms]N*1\n[ms DEC]N*1"; },
              "never opens"},
        Fault{"NoAddress", [](Object& o) { o.modbus = ""; }, "one to four"},
        Fault{"LongAddress", [](Object& o) { o.modbus = "NNNNN"; }, "one to four"},
        Fault{"ShortAddress", [](Object& o) { o.modbus = "100"; }, "neither four"},
        Fault{"LowerCaseAddress", [](Object& o) { o.modbus = "00ab"; }, "neither four"},
        Fault{"StringWithAddress",
              [](Object& o) {
                  o.type = "Visible String";
                  o.comment_zh = o.comment_en = "Help";
              },
              "no Modbus address"}),
    [](const auto& one) { return one.param.name; });

TEST(ObjectCheck, HexItemsHaveTheWidthOfTheCell) {
    Object object = good_hex();
    object.comment_zh = object.comment_en = "Help|F:Enable";
    EXPECT_NE(problem_of(object).find("is not value"), std::string::npos);
    object.comment_zh = object.comment_en = "Help|000f:Enable";
    EXPECT_NE(problem_of(object).find("is not value"), std::string::npos);
    object.comment_zh = object.comment_en = "Help|0x0F:Enable";
    EXPECT_NE(problem_of(object).find("is not value"), std::string::npos);
}

TEST(ObjectCheck, SameIdentityTwiceNamesTheOtherPlace) {
    Object other = good();
    other.place = {"u.tsv", 9};
    other.modbus = "NULL";
    Problems problems;
    check_objects({good(), other}, problems);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].file, "u.tsv");
    EXPECT_EQ(problems[0].line, 9);
    EXPECT_EQ(problems[0].text, "606000 was told at t.tsv:7");
}

TEST(ObjectCheck, RegistersOfWideObjectsMayNotOverlap) {
    Object wide = good();
    wide.key = 0x607A00;
    wide.type = "Integer32";
    wide.modbus = "00FF";
    Problems problems;
    check_objects({wide, good()}, problems);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].text, "Modbus register 0100 belongs to 607A00 at t.tsv:7");
}

}  // namespace
}  // namespace servo::data
