// The document that the menu item ErrorCode opens: the faults with causes and remedies, a sheet for
// each language.
#pragma once

#include <vector>

#include "data/tools/xls_file.h"
#include "dictionary/store.h"

namespace servo::data {

std::vector<XlsSheet> fault_sheets(dictionary::Variant variant);

}  // namespace servo::data
