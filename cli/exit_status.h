// What the program tells its caller.
#pragma once

#include <cstdint>

namespace servo::cli {

enum class ExitStatus : std::uint8_t {
    kDone = 0,
    kNo = 1,        // done, and the answer is no: a refused object, a value out of range
    kWrongUse = 2,  // the command line names something that does not exist
    kNoLink = 3,    // the port can't be opened, no drive answers, or the link was lost
    kFile = 4,      // a file could not be read or written
};

}  // namespace servo::cli
