// What is made of the objects: the dictionary file of fixed records and the list of Modbus
// addresses.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/tools/table.h"

namespace servo::data {

// The file's bytes, records in ascending order of their identity. The objects must have passed
// check_objects.
std::string build_records(std::vector<Object> objects);

// The address list in UTF-8 with line feeds: "604000,Controlword,0x0205", the last line "END".
std::string modbus_list(std::vector<Object> objects);

// A text of the run-time tree: code page bytes with CR LF at the end of each line, however the
// lines of `utf8` end.
std::string tree_text(std::string_view utf8);

}  // namespace servo::data
