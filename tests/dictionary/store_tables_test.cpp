#include <gtest/gtest.h>

#include <vector>

#include "base/gbk.h"
#include "dictionary/raw_record.h"
#include "dictionary/store.h"
#include "dictionary/store_of.h"

namespace servo::dictionary {
namespace {

using namespace std::literals;

RawRecord current() {
    RawRecord record;
    record.index = "6078";
    record.sub = "00";
    record.name_ch = base::utf8_to_gbk("实际电流");
    record.name_en = "Current actual value";
    record.type = "Integer16";
    record.attribute = "H";
    record.comment_ch = base::utf8_to_gbk("说明");
    record.comment_en = "Help|0:x\n";
    record.formula = "[DEC Ap]N/2048*[65100310]/10\n";
    record.modbus = "3E00";
    return record;
}

using Row = std::vector<std::string>;

Row dictionary_row(const Store& store, std::size_t row) {
    Row cells;
    for (std::size_t column = 0; column < 9; ++column) {
        cells.push_back(store.dictionary_cell(row, column));
    }
    return cells;
}

Row modbus_row(const Store& store, std::size_t row) {
    Row cells;
    for (std::size_t column = 0; column < 7; ++column) {
        cells.push_back(store.modbus_cell(row, column));
    }
    return cells;
}

TEST(DictionaryTable, HasNineCellsInTheirOrder) {
    EXPECT_EQ(dictionary_row(store_of({current()}), 0),
              (Row{"6078", "00", "实际电流", "Current actual value", "H       ", "Integer16",
                   "说明", "Help|0:x", "[DEC Ap]N/2048*[65100310]/10"}));
}

TEST(DictionaryTable, NulPaddingIsTrimmedLikeBlanks) {
    RawRecord record = current();
    record.padding = '\0';
    const Store store = store_of({record});
    EXPECT_EQ(store.dictionary_cell(0, 2), "实际电流");
    EXPECT_EQ(store.dictionary_cell(0, 6), "说明");
    EXPECT_EQ(store.dictionary_cell(0, 8), "[DEC Ap]N/2048*[65100310]/10");
}

TEST(DictionaryTable, AnAllBlankFieldKeepsItsWidth) {
    RawRecord record = current();
    record.name_en.clear();
    record.comment_en.clear();
    const Store store = store_of({record});
    EXPECT_EQ(store.dictionary_cell(0, 3), std::string(64, ' '));
    EXPECT_EQ(store.dictionary_cell(0, 7), std::string(4096, ' '));
}

TEST(DictionaryTable, AFieldOfOneCharacterKeepsItsWidth) {
    RawRecord record = current();
    record.name_en = "x";
    EXPECT_EQ(store_of({record}).dictionary_cell(0, 3), "x" + std::string(63, ' '));
}

TEST(DictionaryTable, IndexAndSubKeepTheirExactWidth) {
    RawRecord record = current();
    record.index = "12";
    record.sub = "";
    const Store store = store_of({record});
    EXPECT_EQ(store.dictionary_cell(0, 0), "12  ");
    EXPECT_EQ(store.dictionary_cell(0, 1), "  ");
}

TEST(DictionaryTable, ACellThatIsNotThereIsEmpty) {
    const Store store = store_of({current()});
    EXPECT_EQ(store.dictionary_cell(1, 0), "");
    EXPECT_EQ(store.dictionary_cell(0, 9), "");
    EXPECT_EQ(store.modbus_cell(1, 0), "");
    EXPECT_EQ(store.modbus_cell(0, 7), "");
    EXPECT_EQ(store.row_identity(1), 0);
}

TEST(DictionaryTable, RowsStandInFileOrderWithTheirIdentity) {
    RawRecord second = current();
    second.index = "1008";
    second.sub = "0A";
    const Store store = store_of({current(), second, current()});
    EXPECT_EQ(store.dictionary_rows(), 3U);
    EXPECT_EQ(store.row_identity(0), 0x607800);
    EXPECT_EQ(store.row_identity(1), 0x10080A);
    EXPECT_EQ(store.row_identity(2), 0x607800);
}

TEST(ModbusTable, HasSevenCellsInTheirOrder) {
    EXPECT_EQ(
        modbus_row(store_of({current()}), 0),
        (Row{"3E00", "6078", "00", "实际电流", "Current actual value", "H       ", "Integer16"}));
}

TEST(ModbusTable, AnAddressThatBeginsWithNShowsInTheDictionaryTableOnly) {
    RawRecord without = current();
    without.modbus = "NULL";
    RawRecord bare = current();
    bare.modbus = "N";
    const Store store = store_of({without, current(), bare});
    EXPECT_EQ(store.dictionary_rows(), 3U);
    ASSERT_EQ(store.modbus_rows(), 1U);
    EXPECT_EQ(store.modbus_cell(0, 0), "3E00");
}

TEST(ModbusTable, BlanksInTheAddressShowInBothTables) {
    RawRecord record = current();
    record.modbus = "    ";
    const Store store = store_of({record});
    EXPECT_EQ(store.dictionary_rows(), 1U);
    ASSERT_EQ(store.modbus_rows(), 1U);
    EXPECT_EQ(store.modbus_cell(0, 0), "    ");
}

TEST(ModbusTable, OnlyACapitalNMeansNone) {
    RawRecord record = current();
    record.modbus = "n   ";
    EXPECT_EQ(store_of({record}).modbus_rows(), 1U);
    record.modbus = " N  ";
    EXPECT_EQ(store_of({record}).modbus_rows(), 1U);
}

}  // namespace
}  // namespace servo::dictionary
