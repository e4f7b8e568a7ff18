// The project files that were used last, and how the menu shows them.
//
// A list and its texts, no disk: whoever keeps it stores paths() and builds it from them again.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"

namespace servo::app {

inline constexpr std::size_t kMaxRecentFiles = 8;  // a digit each

class RecentFiles {
  public:
    RecentFiles() = default;
    // Most recent first. Empty and relative paths, doubles, and what is beyond the limit are left
    // out: the list may come from a file that somebody edited.
    explicit RecentFiles(const std::vector<std::string>& paths);

    // Puts a file first; where it stood before it goes. A path that is not absolute is none that
    // could be found again, and changes nothing. Paths are compared by their text ("a/../b" is
    // "b"); two names of one file through a link stay two.
    void add(std::string_view path);
    void remove(std::string_view path);
    void clear() { paths_.clear(); }

    const std::vector<std::string>& paths() const { return paths_; }
    bool empty() const { return paths_.empty(); }
    bool operator==(const RecentFiles&) const = default;

  private:
    std::vector<std::string> paths_;  // absolute, normal
};

// An entry of the menu.
struct RecentEntry {
    std::string text;      // "&1  name — folder"
    std::string path;      // whole, as for a tool tip
    bool enabled = false;  // the file is there
    bool operator==(const RecentEntry&) const = default;
};

// The entries in their order, made when the menu is about to open. A file that is not there now is
// greyed and stays in the list: its disk may be back tomorrow.
std::vector<RecentEntry> recent_entries(const RecentFiles& files,
                                        const std::function<bool(const std::string&)>& exists);

// The text of an entry, `number` from 1: digit as mnemonic, name, folder. "&" is doubled, what
// would break the line or the columns of a menu is a blank, long texts lose their middle.
std::string recent_text(std::size_t number, std::string_view path);

// At most `width` characters (at least 3) of a UTF-8 text, the middle replaced by "…".
std::string shorten_middle(std::string_view text, std::size_t width);

// Titles of the menu itself and of the entry that empties it.
inline constexpr base::Text kRecentTitle{"最近的文件", "Recent Files"};
inline constexpr base::Text kRecentClear{"清空列表", "Clear List"};

}  // namespace servo::app
