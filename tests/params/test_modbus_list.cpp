#include "params/modbus_list.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(parse_modbus_list("\n606000,x,1234\n").size(), 0U);
}

TEST(ModbusList, AFileWithoutEndIsReadToItsEnd) {
    EXPECT_EQ(parse_modbus_list("606000,x,1234\n607A00,y,5678").size(), 2U);
}

}  // namespace
}  // namespace servo::params
