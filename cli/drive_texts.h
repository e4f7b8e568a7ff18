// Texts for what a drive says in numbers: why it refuses an access, and what its fault bits mean.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/language.h"

namespace servo::cli {

// "0x06010002, a read-only object".
std::string abort_text(std::uint32_t code, base::Language language);

// Meaning of bit 0 to 15 of fault word 1 or 2.
std::string_view fault_text(int word, int bit, base::Language language);

}  // namespace servo::cli
