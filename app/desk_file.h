// What the program remembers of its desk between two runs: where windows stood, and the project
// files that were used last. It is a file of its own, sys/desk.json, since sys.ini holds what the
// drive's user has chosen and nothing else. Losing it costs nothing but the memory.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/recent_files.h"
#include "app/shell_layout.h"

namespace servo::app {

using WindowPlaces = std::map<std::string, WindowPlace>;  // by window name

struct Desk {
    std::optional<WindowPlace> main;  // the main window, on the screen
    WindowPlaces windows;             // in the frame
    std::vector<std::string> recent;  // project files, UTF-8, the last one first
    bool operator==(const Desk&) const = default;
};

inline constexpr std::size_t kMostRecent = kMaxRecentFiles;

// Never fails: what can't be read, is out of range or too much is left out. Coordinates are kept
// within +-100000, sizes from 1 to 100000.
Desk parse_desk(std::string_view text);

// Reading it again gives the same desk, but for texts that are no UTF-8.
std::string desk_text(const Desk& desk);

std::filesystem::path desk_path(const std::filesystem::path& folder);

// An empty desk when there is no file, it can't be read, or it is far larger than any desk.
Desk load_desk(const std::filesystem::path& folder);

// False when it can't be written; an old file then stands as it was. Nothing is written when the
// file holds just that already.
bool save_desk(const std::filesystem::path& folder, const Desk& desk);

}  // namespace servo::app
