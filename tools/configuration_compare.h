// What two sets of parameter values say differently: of two files, or of a file and the drive. Only
// the differences are told, with the objects' names and with values in the unit in which a page
// would show them first.
//
// Values are compared as the drive would hold them, in the object's width: "0xFFFF", "65535" and
// "-1" are the same value of 16 bits. An object that a list names twice has the value of its last
// row, which is what is left after all rows have been written. The same object with another length
// is another object, since at most one of the two writes can be taken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/language.h"
#include "dictionary/store.h"
#include "link/drive_values.h"
#include "tools/configuration_rows.h"

namespace servo::tools {

struct ConfigurationValue {
    std::string Index;   // as it stands
    std::string value;   // as it stands: decimal, or hexadecimal behind "0x"
    bool known = false;  // false: a row that is there without a value, such as one never read
};

// "60600008" of a wire key.
std::string configuration_index(dictionary::WireKey key);

// A loaded file: rows that are not valid have no value. A driver grid: rows that were not read, or
// whose read failed, have none.
std::vector<ConfigurationValue> configuration_values(const std::vector<SourceRow>& rows);
std::vector<ConfigurationValue> configuration_values(const std::vector<DriverRow>& rows);

enum class ComparedSide : std::uint8_t {
    kValue,
    kUnread,  // the object is listed, without a value
    kAbsent,  // the object is not listed
};

struct ComparedValue {
    ComparedSide side = ComparedSide::kAbsent;
    std::string raw;    // decimal, signed where the dictionary's type is; empty without a value
    std::string shown;  // in `unit` of the row, without the unit's word; empty without a value
};

struct ComparedRow {
    std::string Index;  // eight hexadecimal digits, upper case
    std::string name_ch;
    std::string name_en;
    // First unit of the object's formulas; `DEC` where the dictionary knows none, or where a value
    // of the drive that the formula needs is not known to either side.
    std::string unit;
    ComparedValue A;
    ComparedValue B;
};

struct Comparison {
    // The differences, in the order of A, then what only B lists in the order of B.
    std::vector<ComparedRow> rows;
    std::size_t equal = 0;     // objects with the same value on both sides
    std::size_t unusable = 0;  // rows of either side that name no object
};

// The values of the drive that formulas refer to are taken from the list itself, else from the
// other one, else from `operands` when they have been seen: a file is shown in its own drive's
// units.
Comparison compare_configurations(const std::vector<ConfigurationValue>& A,
                                  const std::vector<ConfigurationValue>& B,
                                  const dictionary::Store& dictionary,
                                  const link::FormulaOperands& operands = {});

// "1200.00 rpm", the bare number in `DEC`; "(not read)", "(not listed)" for a side without a value.
std::string compared_text(const ComparedValue& value, const ComparedRow& row,
                          base::Language language);

// The comparison as text: one line a difference, fields separated by tabs: key, both names, A, B.
std::string comparison_text(const Comparison& comparison, base::Language language);

}  // namespace servo::tools
