// Whole files in and out. A file is written under a temporary name beside it, flushed to the disk
// and renamed, so a crash, a full disk or a failed write leaves the old file whole.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace servo::base {

// Nothing when the file cannot be opened or read. Bytes as they stand.
std::optional<std::string> read_file(const std::filesystem::path& file);

// Asked before each write call of a save; false makes that call fail. For tests only.
using WriteFault = std::function<bool(std::size_t call)>;

bool write_file(const std::filesystem::path& file, std::string_view bytes,
                const WriteFault& fault = {});

// Splits at LF and drops one CR before it; no empty line behind a final line feed.
// (A view into `text`.)
class LineReader {
  public:
    explicit LineReader(std::string_view text) : rest_(text) {}
    std::optional<std::string_view> next();

  private:
    std::string_view rest_;
};

// The path of a file of the run-time tree, whose names are matched without regard to case, as the
// data was named on such a system: the exact name when it exists, else the first that differs only
// in case, else the exact name again.
std::filesystem::path find_in(const std::filesystem::path& folder, std::string_view name);

}  // namespace servo::base
