// The dictionary's source: tables of tab-separated text in UTF-8, one row for an object or for a
// family of objects, and the table of named formulas. docs/dictionary.md tells the form.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/keys.h"

namespace servo::data {

// Something that keeps the tables from being packed.
struct Problem {
    std::string file;
    int line = 0;
    std::string text;
};

using Problems = std::vector<Problem>;

// Where an object was told, for messages.
struct Place {
    std::string file;
    int line = 0;
};

// One object, families spread out, named formulas put in, "\n" turned into line feeds.
struct Object {
    dictionary::Identity key = 0;
    std::string name_zh;
    std::string name_en;
    std::string type;  // the dictionary's word, such as "Unsigned16"
    std::string attr;
    std::string comment_zh;
    std::string comment_en;
    std::string formula;
    std::string modbus;  // four digits, or a word that begins with "N"
    Place place;
};

// Named formulas, without the "@" that calls them.
using Formulas = std::map<std::string, std::string, std::less<>>;

// Columns: name, formula, use. `file` is only for messages.
Formulas read_formulas(std::string_view file, std::string_view text, Problems& problems);

// Columns: index, sub, name_zh, name_en, type, attr, comment_zh, comment_en, formula, modbus.
std::vector<Object> read_objects(std::string_view file, std::string_view text,
                                 const Formulas& formulas, Problems& problems);

// Registers that the object takes on Modbus; 0 for a string.
unsigned modbus_registers(std::string_view type);

// A row of a tab-separated text with its line number. Blank lines and lines that begin with "#" are
// left out; the first line that is left must equal `header`. Every row has as many cells.
struct Row {
    int line = 0;
    std::vector<std::string> cells;
};

std::vector<Row> read_rows(std::string_view file, std::string_view text, std::string_view header,
                           Problems& problems);

}  // namespace servo::data
