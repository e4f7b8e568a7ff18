#include "data/tools/records.h"

#include <gtest/gtest.h>

#include <string>

#include "base/gbk.h"
#include "dictionary/store.h"

namespace servo::data {
namespace {

Object object(dictionary::Identity key, const std::string& modbus) {
    Object made;
    made.key = key;
    made.name_zh = "工作模式";
    made.name_en = "Mode";
    made.type = "Integer8";
    made.attr = "R";
    made.comment_zh = "说明|1:位置";
    made.comment_en = "Help|1:Position";
    made.formula = "[DEC]N*1\n[HEX]N*1";
    made.modbus = modbus;
    return made;
}

TEST(Records, FieldsStandAtTheirOffsets) {
    const std::string bytes = build_records({object(0x60600A, "01AB")});
    ASSERT_EQ(bytes.size(), dictionary::kRecordSize);
    EXPECT_EQ(bytes.substr(0, 6), "60600A");
    EXPECT_EQ(bytes.substr(6, 9), base::utf8_to_gbk("工作模式") + '\0');
    EXPECT_EQ(bytes.substr(70, 5), std::string("Mode\0", 5));
    EXPECT_EQ(bytes.substr(134, 16), "Integer8        ");
    EXPECT_EQ(bytes.substr(150, 8), "R       ");
    EXPECT_EQ(bytes.substr(158, 4), base::utf8_to_gbk("说明"));
    EXPECT_EQ(bytes.substr(4254, 6), "Help|1");
    EXPECT_EQ(bytes.substr(8350, 18), std::string("[DEC]N*1\n[HEX]N*1\0", 18));
    EXPECT_EQ(bytes.substr(8550, 4), "01AB");
}

TEST(Records, StandInTheOrderOfTheirIdentity) {
    const std::string bytes =
        build_records({object(0x606100, "N"), object(0x100000, "N"), object(0x606000, "N")});
    EXPECT_EQ(bytes.substr(0, 6), "100000");
    EXPECT_EQ(bytes.substr(dictionary::kRecordSize, 6), "606000");
    EXPECT_EQ(bytes.substr(2 * dictionary::kRecordSize, 6), "606100");
}

TEST(Records, StoreReadsThemBack) {
    dictionary::Store store;
    store.load(build_records({object(0x606000, "N")}));
    const auto record = store.get_record(0x606000);
    EXPECT_EQ(dictionary::trim_tail(record.name_ch), "工作模式");
    EXPECT_EQ(dictionary::strip_blanks(record.type), "int8");
    EXPECT_EQ(dictionary::trim_tail(record.list_en), "|1:Position");
    EXPECT_EQ(store.modbus_rows(), 0U);
}

TEST(ModbusList, HoldsAddressedObjectsAndEnds) {
    EXPECT_EQ(
        modbus_list({object(0x606100, "0200"), object(0x606000, "0100"), object(0x100800, "NULL")}),
        "606000,Mode,0x0100\n606100,Mode,0x0200\nEND\n");
    EXPECT_EQ(modbus_list({}), "END\n");
}

TEST(TreeText, LinesEndInCrLfWhateverTheyHad) {
    EXPECT_EQ(tree_text("a\nb\r\n\nc"), "a\r\nb\r\n\r\nc\r\n");
    EXPECT_EQ(tree_text("速"), base::utf8_to_gbk("速") + "\r\n");
    EXPECT_EQ(tree_text(""), "");
}

}  // namespace
}  // namespace servo::data
