// Why a drive refuses an access, in words.
#pragma once

#include <cstdint>
#include <string>

#include "base/language.h"

namespace servo::link {

// "0x06010002, a read-only object"; the bare code for one that the standard does not tell.
std::string abort_text(std::uint32_t code, base::Language language);

}  // namespace servo::link
