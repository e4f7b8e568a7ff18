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

// The same for a large file of which little is kept: `take` gets pieces of `size` bytes in their
// order, the last one shorter, each gone after the call. False when the file cannot be opened or
// read to its end; some pieces may have been taken by then.
bool read_pieces(const std::filesystem::path& file, std::size_t size,
                 const std::function<void(std::string_view piece)>& take);

// Asked before each system call of a save (open, every write, fsync, close, rename; counted from
// 0); false makes that call fail. For tests only.
using WriteFault = std::function<bool(std::size_t call)>;

// False when any of the calls failed: the old file then stands as it was and nothing is left beside
// it. An existing file keeps its permissions; a symbolic link keeps pointing at the file it names.
// A device or pipe is written straight, since nothing can be renamed over it.
bool write_file(const std::filesystem::path& file, std::string_view bytes,
                const WriteFault& fault = {});

// Splits at LF and drops one CR before it (and at the very end of the text, where a copy may have
// lost the LF); no empty line behind a final line feed.
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
// in case (the lowest of several), else the exact name again. `name` may lead through folders, with
// either slash; a slash at its start means the folder itself.
std::filesystem::path find_in(const std::filesystem::path& folder, std::string_view name);

}  // namespace servo::base
