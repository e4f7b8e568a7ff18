#include "params/modbus_list.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "base/gbk.h"
#include "base/temp_folder.h"

namespace servo::params {
namespace {

TEST(ModbusList, KeepsSixCharactersOfTheFirstAndFourOfTheThirdField) {
    const auto list = parse_modbus_list("6060001,x,0x1A2B\r\n60F611,,4,more\r\nEND\r\n1,2,3\r\n");
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].key, "606000");
    EXPECT_EQ(list[0].address, "1A2B");
    EXPECT_EQ(list[1].key, "60F611");
    EXPECT_EQ(list[1].address, "4");
}

TEST(ModbusList, ALineWithFewerThanThreeFieldsEndsTheReading) {
    EXPECT_EQ(parse_modbus_list("606000,x,1234\n607A00,y\n60FF00,z,5678\nEND\n").size(), 1U);
    EXPECT_EQ(parse_modbus_list("606000,x,1234\n607A00\n60FF00,z,5678\nEND\n").size(), 1U);
    EXPECT_EQ(parse_modbus_list("606000,x,1234\n\n60FF00,z,5678\nEND\n").size(), 1U)
        << "an empty line has one field, an empty one";
    EXPECT_EQ(parse_modbus_list("\n606000,x,1234\n").size(), 0U);
}

TEST(ModbusList, AFileWithoutEndIsReadToItsEnd) {
    EXPECT_EQ(parse_modbus_list("606000,x,1234\n607A00,y,5678").size(), 2U);
    EXPECT_EQ(parse_modbus_list("606000,x,1234\n607A00,y,5678\n").size(), 2U);
}

TEST(ModbusList, OnlyALineOfJustEndEndsIt) {
    EXPECT_EQ(parse_modbus_list("END\n606000,x,1234\n").size(), 0U);
    EXPECT_EQ(parse_modbus_list("END,x,1234\n607A00,y,5678\n").size(), 2U);
    EXPECT_EQ(parse_modbus_list("end,x,1234\n607A00,y,5678\n").size(), 2U);
    // Any other word alone on its line has too few fields, which ends it as well.
    EXPECT_EQ(parse_modbus_list("606000,x,1234\nEND \n607A00,y,5678\n").size(), 1U);
}

TEST(ModbusList, FieldsMayBeShortOrEmpty) {
    const auto list = parse_modbus_list(",,\n1,2,\n");
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].key, "");
    EXPECT_EQ(list[0].address, "");
    EXPECT_EQ(list[1].key, "1");
    EXPECT_EQ(list[1].address, "");
}

TEST(ModbusList, CharactersAreCountedAndNotBytes) {
    const std::string line = base::utf8_to_gbk("工作60600,模式,地址工12");
    const auto list = parse_modbus_list(line);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0].key, "工作6060");
    EXPECT_EQ(list[0].address, "址工12");
}

TEST(ModbusList, HostileLinesHurtNobody) {
    const std::string long_line(100'000, '6');
    EXPECT_EQ(parse_modbus_list(long_line).size(), 0U);
    const auto list = parse_modbus_list(long_line + "," + long_line + "," + long_line + "\n" +
                                        std::string(100'000, ',') + "\n" +
                                        std::string("6\0006,\0,\0\0001\xFF\x81\n", 12));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0].key, "666666");
    EXPECT_EQ(list[0].address, "6666");
    EXPECT_EQ(list[1].key, "");
    EXPECT_EQ(list[2].key, std::string("6\0006", 3)) << "a NUL is a character like any other";
    EXPECT_EQ(base::utf8_length(list[2].address), 4U);
}

RC_GTEST_PROP(ModbusListProperty, WhatIsWrittenComesBack, ()) {
    const auto text = [](std::size_t longest) {
        return rc::gen::resize(static_cast<int>(longest),
                               rc::gen::container<std::string>(rc::gen::inRange('-', '~')));
    };
    const auto records = *rc::gen::container<std::vector<std::pair<std::string, std::string>>>(
        rc::gen::pair(text(12), text(9)));
    std::string content;
    for (const auto& [key, address] : records)
        content += key + ",name," + address + "\r\n";
    const auto list = parse_modbus_list(content + "END\r\n1,2,3\r\n");
    RC_ASSERT(list.size() == records.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        const auto& [key, address] = records[i];
        RC_ASSERT(list[i].key == key.substr(0, 6));
        RC_ASSERT(list[i].address == address.substr(address.size() < 4 ? 0 : address.size() - 4));
    }
}

TEST(ModbusList, AMissingFileLeavesTheListAbsent) {
    const TempFolder folder;
    EXPECT_FALSE(load_modbus_list(folder.path()).present);
    EXPECT_EQ(kModbusMissingTitle, "Attention");
    EXPECT_EQ(kModbusMissingText, "Missing the Modbus address file!");
}

TEST(ModbusList, AFileInTheFolderIsPresentEvenWithoutALine) {
    const TempFolder folder;
    folder.put("MODBUS.TXT", "");
    EXPECT_TRUE(load_modbus_list(folder.path()).present);
    EXPECT_TRUE(load_modbus_list(folder.path()).addresses.empty());
    folder.put("MODBUS.TXT", "606000,Operation mode,1301\r\nEND\r\n");
    const ModbusList list = load_modbus_list(folder.path());
    ASSERT_EQ(list.addresses.size(), 1U);
    EXPECT_EQ(list.addresses[0].address, "1301");
}

}  // namespace
}  // namespace servo::params
