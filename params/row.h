// One row of a page's grid: an object of the drive with everything that showing, polling and
// writing it needs, so that nothing is looked up in the dictionary while values come in.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::params {

// Columns of the grid. Those from kFormula on are hidden.
enum Column : std::uint8_t {
    kNumber,   // row number from 0, with a "*" at its end when the row is static
    kIndex,    // identity in hexadecimal without leading zeros
    kType,     // short type name
    kName,     // in the current language
    kValue,    // as text; empty until first read
    kUnit,     // unit word
    kFormula,  // the whole formula list
    kNameCh,
    kNameEn,
    kListEn,  // item list "|0:Off|1:On"; empty when the object has none
    kListCh,
};
inline constexpr int kColumns = 11;
inline constexpr int kShownColumns = 6;

// The header row; the hidden columns have no header. The same in both languages.
inline constexpr std::array<std::string_view, kColumns> kHeader{"N",    "Index", "Type",
                                                                "Name", "Value", "Unit"};

struct Row {
    std::string number;
    std::string index;
    std::string type;
    std::string name;
    std::string value;
    std::string unit;
    std::string formula;
    std::string name_ch;
    std::string name_en;
    std::string list_en;
    std::string list_ch;
    bool read_only = false;  // columns 1 to 10 have the read-only colour

    const std::string& cell(int column) const;
    std::string& cell(int column);

    // A static row is read once; a live one all the time.
    bool is_static() const { return number.ends_with('*'); }
    // The object, as the drive's answers are matched with it.
    dictionary::Identity identity() const;
    // Puts another number into column 0; the "*" stays.
    void renumber(int row_number);
};

// The row of an object. An identity that the dictionary does not have gives a row without name and
// type in the unit DEC, static and read-only.
Row build_row(const dictionary::Store& dictionary, dictionary::Identity key, int row_number,
              base::Language language);

// The same with a value and a unit that were stored before.
Row restore_row(const dictionary::Store& dictionary, dictionary::Identity key, int row_number,
                base::Language language, std::string_view value, std::string_view unit);

// Width of a column in a grid of that width: a told fraction of it, 0 for the hidden ones. The sum
// of all leaves a twenty-fifth free, where a scroll bar fits.
int column_width(int column, int grid_width);

}  // namespace servo::params
