// The commands on project files: `new1`, `open1` and `save1`.
//
// A project keeps the working set of a user: the windows that were open, and the objects with their
// values in the grids. Opening one writes nothing to the drive; values are shown until the poller
// has read newer ones.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/project_file.h"
#include "app/user_dialogs.h"
#include "base/language.h"
#include "dictionary/store.h"
#include "link/window.h"
#include "params/row.h"

namespace servo::params {
class PageGrid;
}

namespace servo::app {

struct Workstation;

// The grid `MSHFlexGrid1` of a window, as project files see it.
class ProjectGrid {
  public:
    ProjectGrid() = default;
    ProjectGrid(const ProjectGrid&) = delete;
    ProjectGrid& operator=(const ProjectGrid&) = delete;
    virtual ~ProjectGrid() = default;

    virtual int rows() const = 0;  // the header counted
    // Text of a cell; empty where the grid has no such column.
    virtual std::string cell(int row, int column) const = 0;
    // Other rows in place of all below the header. A grid with fewer than a page's columns takes
    // what it has columns for.
    virtual void set_rows(std::vector<params::Row> rows) = 0;
};

// The grid of a page, or of one tab of a window of pages. The PageGrid outlives it.
std::unique_ptr<ProjectGrid> page_project_grid(params::PageGrid& grid);

// Gives the grid of a window, null when it has none or is not the finder's to know.
using GridFinder = std::function<std::unique_ptr<ProjectGrid>(link::Window&)>;

// Finds the grids of params::Page windows.
std::unique_ptr<ProjectGrid> find_page_grid(link::Window& window);

// The sections of the windows that are visible, in the order of the list (null places are passed
// by).
std::vector<ProjectSection> visible_sections(std::span<link::Window* const> windows,
                                             const GridFinder& grids);

// The windows as the reader of files wants them, place by place.
std::vector<ProjectPlace> project_places(std::span<link::Window* const> windows,
                                         const GridFinder& grids);

// Puts what was read into the windows that it was read for.
struct ProjectTarget {
    std::span<link::Window* const> windows;
    const GridFinder& grids;
    const dictionary::Store& dictionary;
    base::Language language = base::Language::kEnglish;
    const std::function<void(link::Window&)>& show;
};
void apply_project(const ProjectReading& reading, const ProjectTarget& target);

// How a command ended. The user is told of none of it: a save that fails leaves the old file as it
// was, and an opening that fails leaves the windows.
struct ProjectResult {
    enum class Outcome : std::uint8_t {
        kCancelled,  // in the dialog; nothing has changed
        kFailed,     // the file could not be read or written; nothing has changed
        kStopped,    // a row of the file could not be read; what stood before it holds
        kDone,
    };
    Outcome outcome = Outcome::kCancelled;
    std::string path;  // absolute, of the file that was asked for; empty when cancelled

    // Whether the file is worth a place among the recent ones.
    bool used() const { return outcome == Outcome::kDone || outcome == Outcome::kStopped; }
};

class Project {
  public:
    // Both outlive it. Grids of pages are known from the start.
    Project(Workstation& workstation, UserDialogs& dialogs);

    // For windows that are no pages. Finders are asked in the order of adding; the first grid
    // counts.
    void add_grids(GridFinder finder) { finders_.push_back(std::move(finder)); }

    // Hides every window (the background and the main window are none of the list). Nothing is
    // written or cleared.
    void new1();

    // With the dialog, and for a path that is known (UTF-8).
    ProjectResult save1();
    ProjectResult save1(const std::string& path);
    ProjectResult open1();
    ProjectResult open1(const std::string& path);

  private:
    std::unique_ptr<ProjectGrid> find_grid(link::Window& window) const;
    std::optional<std::string> ask(FileRequest::Kind kind, base::Text title);

    Workstation& workstation_;
    UserDialogs& dialogs_;
    std::vector<GridFinder> finders_;
};

}  // namespace servo::app
