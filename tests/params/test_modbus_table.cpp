#include <gtest/gtest.h>

#include "base/gbk.h"
#include "dictionary/store_of.h"
#include "params/modbus_table.h"

namespace servo::params {
namespace {

RawRecord object(std::string index, std::string sub, std::string_view name_ch, std::string name_en,
                 std::string modbus) {
    RawRecord record;
    record.index = std::move(index);
    record.sub = std::move(sub);
    record.name_ch = base::utf8_to_gbk(name_ch);
    record.name_en = std::move(name_en);
    record.type = "Unsigned16";
    record.attribute = "RW";
    record.modbus = std::move(modbus);
    return record;
}

dictionary::Store sample() {
    return dictionary::store_of({
        object("6060", "00", "工作模式", "Operation mode", "1301"),
        object("1008", "00", "设备名称", "Device name", "NULL"),
        object("60F6", "11", "电机电流", "Motor current", "13A0"),
        object("6410", "0A", "电机最大电流", "Motor maximum current", "110B"),
    });
}

std::vector<std::string> addresses(const ModbusTable& table) {
    std::vector<std::string> all;
    for (int row = 0; row < table.rows(); ++row)
        all.push_back(table.cell(row, 0));
    return all;
}

using Addresses = std::vector<std::string>;

TEST(ModbusTable, HasARowForEachObjectWithAnAddressInTheDictionarysOrder) {
    const dictionary::Store store = sample();
    const ModbusTable table(store);
    EXPECT_EQ(addresses(table), (Addresses{"1301", "13A0", "110B"}));
    const std::vector<std::string> expected{"13A0",          "60F6", "11",        "电机电流",
                                            "Motor current", "RW",   "Unsigned16"};
    for (int column = 0; column < kModbusColumns; ++column)
        EXPECT_EQ(table.cell(1, column), expected.at(static_cast<std::size_t>(column)));
}

TEST(ModbusTable, CellsThatAreNotThereAreEmpty) {
    const dictionary::Store store = sample();
    const ModbusTable table(store);
    EXPECT_EQ(table.cell(3, 0), "");
    EXPECT_EQ(table.cell(-1, 0), "");
    EXPECT_EQ(table.cell(0, 7), "");
    EXPECT_EQ(table.cell(0, -1), "");
}

TEST(ModbusTable, TheHeaderIsAsTold) {
    const std::vector<std::string_view> header(kModbusHeader.begin(), kModbusHeader.end());
    EXPECT_EQ(header, (std::vector<std::string_view>{"ModBus", "Index", "Sub", "NameCH", "NameEN",
                                                     "ATTR", "Type"}));
}

TEST(ModbusTable, TheDictionaryIsTakenWhenAsked) {
    dictionary::Store store;
    ModbusTable table(store);
    EXPECT_EQ(table.rows(), 0);
    store = sample();
    table.reload();
    EXPECT_EQ(table.rows(), 3);
}

TEST(ModbusTable, TheFilterLooksIntoEveryCell) {
    const dictionary::Store store = sample();
    ModbusTable table(store);
    table.set_filter("1301");
    EXPECT_EQ(addresses(table), Addresses{"1301"});
    table.set_filter("电流");
    EXPECT_EQ(addresses(table), (Addresses{"13A0", "110B"}));
    table.set_filter("unsigned16");
    EXPECT_EQ(table.rows(), 3);
    table.set_filter("nothing");
    EXPECT_EQ(table.rows(), 0);
    table.set_filter("");
    EXPECT_EQ(table.rows(), 3);
}

TEST(ModbusTable, TheFilterFindsAKeyWithoutABlankInIt) {
    const dictionary::Store store = sample();
    ModbusTable table(store);
    table.set_filter("60f611");
    EXPECT_EQ(addresses(table), Addresses{"13A0"});
    table.set_filter("64100A");
    EXPECT_EQ(addresses(table), Addresses{"110B"});
}

TEST(ModbusTable, EveryWordMustBeThereInAnyOrderAndCase) {
    const dictionary::Store store = sample();
    ModbusTable table(store);
    table.set_filter("  CURRENT   motor ");
    EXPECT_EQ(addresses(table), (Addresses{"13A0", "110B"}));
    table.set_filter("current max");
    EXPECT_EQ(addresses(table), Addresses{"110B"});
    table.set_filter("   ");
    EXPECT_EQ(table.rows(), 3);
}

TEST(ModbusTable, AWordDoesNotReachAcrossTwoCells) {
    const dictionary::Store store = sample();
    ModbusTable table(store);
    table.set_filter("modeRW");
    EXPECT_EQ(table.rows(), 0);
}

TEST(ModbusTable, TheFilterStaysWhenTheDictionaryIsTakenAnew) {
    const dictionary::Store store = sample();
    ModbusTable table(store);
    table.set_filter("mode");
    table.reload();
    EXPECT_EQ(addresses(table), Addresses{"1301"});
    EXPECT_EQ(table.all_rows(), 3);
}

TEST(ModbusTable, RowsAreCopiedAsTextSeparatedByTabs) {
    const dictionary::Store store = sample();
    const ModbusTable table(store);
    const std::vector<int> rows{0, 99, 2};
    EXPECT_EQ(table.copied_rows(rows),
              "1301\t6060\t00\t工作模式\tOperation mode\tRW\tUnsigned16\n"
              "110B\t6410\t0A\t电机最大电流\tMotor maximum current\tRW\tUnsigned16\n");
    EXPECT_EQ(table.copied_rows({}), "");
}

TEST(ModbusTable, TheCountTellsWhatAFilterLeaves) {
    const dictionary::Store store = sample();
    ModbusTable table(store);
    EXPECT_EQ(table.count_text(base::Language::kEnglish), "3 rows");
    EXPECT_EQ(table.count_text(base::Language::kChinese), "共 3 行");
    table.set_filter("mode");
    EXPECT_EQ(table.count_text(base::Language::kEnglish), "1 of 3 rows");
    EXPECT_EQ(table.count_text(base::Language::kChinese), "1 行，共 3 行");
}

TEST(ModbusTable, WidthsHaveTheToldRatiosAndFillTheGrid) {
    const std::vector<int> tenths{25, 10, 13, 70, 70, 12, 40};
    for (int column = 0; column < kModbusColumns; ++column)
        EXPECT_EQ(modbus_column_width(column, 2400),
                  tenths.at(static_cast<std::size_t>(column)) * 10);
    for (int width = 0; width < 3000; width += 7) {
        int sum = 0;
        for (int column = 0; column < kModbusColumns; ++column) {
            const int wide = modbus_column_width(column, width);
            const double exact = width * tenths.at(static_cast<std::size_t>(column)) / 240.0;
            EXPECT_NEAR(wide, exact, 1.0);
            sum += wide;
        }
        EXPECT_EQ(sum, width);
    }
    EXPECT_EQ(modbus_column_width(-1, 2400), 0);
    EXPECT_EQ(modbus_column_width(7, 2400), 0);
}

}  // namespace
}  // namespace servo::params
