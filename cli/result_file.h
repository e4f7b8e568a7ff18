// The file that a command writes at its end.
#pragma once

#include <filesystem>

#include "cli/exit_status.h"
#include "cli/output.h"

namespace servo::cli {

// Whether it can be written, found before a long job and not after it. Prints a message.
ExitStatus check_result_file(const std::filesystem::path& file, const Output& output);

// Says that it can't; kFile.
ExitStatus cannot_write(const std::filesystem::path& file, const Output& output);

}  // namespace servo::cli
