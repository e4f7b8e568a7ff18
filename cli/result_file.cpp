#include "cli/result_file.h"

#include <fmt/format.h>
#include <unistd.h>

#include <system_error>

namespace servo::cli {
namespace {

bool can_be_written(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) return false;
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    return std::filesystem::is_directory(folder, error) && access(folder.c_str(), W_OK) == 0;
}

}  // namespace

ExitStatus check_result_file(const std::filesystem::path& file, const Output& output) {
    return can_be_written(file) ? ExitStatus::kDone : cannot_write(file, output);
}

ExitStatus cannot_write(const std::filesystem::path& file, const Output& output) {
    output.message(fmt::format("servoctl: {} can't be written", file.string()));
    return ExitStatus::kFile;
}

}  // namespace servo::cli
