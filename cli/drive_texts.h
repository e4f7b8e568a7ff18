// What the bits of the fault words mean.
#pragma once

#include <string_view>

#include "base/language.h"

namespace servo::cli {

// Meaning of bit 0 to 15 of fault word 1 or 2.
std::string_view fault_text(int word, int bit, base::Language language);

}  // namespace servo::cli
