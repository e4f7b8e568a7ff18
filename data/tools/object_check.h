// Everything that the fixed records, the pages and the drive expect of the objects.
#pragma once

#include <vector>

#include "data/tools/table.h"

namespace servo::data {

// Widths, words and texts of each object, then what they share: an identity told twice, Modbus
// registers that overlap. Problems name the row.
void check_objects(const std::vector<Object>& objects, Problems& problems);

// True when every character is one of the code page, and none a control character other than LF.
bool is_code_page_text(std::string_view text);

}  // namespace servo::data
