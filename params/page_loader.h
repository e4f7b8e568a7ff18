// Page definition files: plain text, read by position.
//
// The first two lines are free. Each following line names one object by its last six characters,
// four hexadecimal digits of index and two of sub-index; what stands before them is for the reader
// of the file. The first empty line, or the end of the file, ends the list.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/keys.h"

namespace servo::params {

// The row counter of a file is one byte; lines beyond it are not read.
inline constexpr std::size_t kMaxPageKeys = 255;

// The keys of a file's bytes.
std::vector<dictionary::Identity> parse_page_keys(std::string_view content);

// The keys of a file (`file` as in the page table, "\sys\Basic.ini", below the program's folder).
// Nothing when it can't be opened; the reader itself says nothing to the user.
std::optional<std::vector<dictionary::Identity>> load_page_keys(const std::filesystem::path& folder,
                                                                std::string_view file);

// What start-up tells the user about a definition file that is not there.
std::string missing_file_text(std::string_view file);

}  // namespace servo::params
