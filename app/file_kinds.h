// The program's own files: which window or command opens which, for files that are dropped onto
// the main window or named on the command line.
//
// Opening a file never writes to the drive. A configuration or a firmware image is put into the
// window that can send it, and waits there for the button.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/language.h"

namespace servo::app {

enum class FileKindId : std::uint8_t {
    kProject,
    kConfiguration,          // values to write to a drive
    kConfigurationTemplate,  // which values to read from one
    kPositionTable,
    kRecording,
    kFrequencyResponse,
    kFirmware,
};
inline constexpr std::size_t kFileKinds = 7;

struct FileKind {
    FileKindId id = FileKindId::kProject;
    std::string_view suffix;       // without the dot, lower case
    std::string_view window = {};  // that opens it; empty for a command of the main window
    base::Text name;               // what such a file is called
};

// In the order of FileKindId.
std::span<const FileKind, kFileKinds> file_kinds();

// By the suffix of a path, whatever its case. nullptr for a foreign file and for a name that is
// only a suffix (".tpjt").
const FileKind* kind_of_file(std::string_view path);

// What came of opening a file.
enum class FileOpening : std::uint8_t {
    kOpened,   // handed to whoever opens it
    kNotYet,   // one of ours, but its window cannot open it
    kForeign,  // none of ours
};

// Whoever can open a kind says so here; the others are ours, but not yet to be opened.
class FileOpeners {
  public:
    using Opener = std::function<void(const std::string& path)>;

    void handle(FileKindId kind, Opener opener) { opener_of(kind) = std::move(opener); }
    bool handled(FileKindId kind) const {
        return static_cast<bool>(openers_[static_cast<std::size_t>(kind)]);
    }

    FileOpening open(const std::string& path) const;

    // Whether at least one of the files would be opened: what a drag shows over the window.
    bool accepts(std::span<const std::string> paths) const;

  private:
    Opener& opener_of(FileKindId kind) { return openers_[static_cast<std::size_t>(kind)]; }

    std::array<Opener, kFileKinds> openers_;
};

// What to tell the user of a file that was not opened (the name without its folder); empty for
// kOpened.
std::string file_opening_text(FileOpening opening, std::string_view path, base::Language language);

}  // namespace servo::app
