#include "app/project.h"

#include <filesystem>
#include <utility>

#include "app/workstation.h"
#include "base/file.h"
#include "params/page.h"
#include "params/page_grid.h"

namespace servo::app {

namespace {

class PageProjectGrid final : public ProjectGrid {
  public:
    explicit PageProjectGrid(params::PageGrid& grid) : grid_(grid) {}
    int rows() const override { return grid_.rows(); }
    std::string cell(int row, int column) const override {
        return std::string(grid_.cell(row, column));
    }
    void set_rows(std::vector<params::Row> rows) override { grid_.set_rows(std::move(rows)); }

  private:
    params::PageGrid& grid_;
};

std::vector<ProjectRow> saved_rows(const ProjectGrid& grid) {
    std::vector<ProjectRow> rows;
    for (int row = 1; row < grid.rows(); ++row)
        rows.push_back({grid.cell(row, params::kIndex), grid.cell(row, params::kValue),
                        grid.cell(row, params::kUnit)});
    return rows;
}

std::vector<params::Row> restored_rows(const std::vector<ProjectRow>& saved,
                                       const ProjectTarget& target) {
    std::vector<params::Row> rows;
    rows.reserve(saved.size());
    for (const ProjectRow& row : saved)
        rows.push_back(params::restore_row(target.dictionary, project_key(row.key),
                                           static_cast<int>(rows.size()), target.language,
                                           row.value, row.unit));
    return rows;
}

std::string absolute_path(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

}  // namespace

std::unique_ptr<ProjectGrid> page_project_grid(params::PageGrid& grid) {
    return std::make_unique<PageProjectGrid>(grid);
}

std::unique_ptr<ProjectGrid> find_page_grid(link::Window& window) {
    auto* page = dynamic_cast<params::Page*>(&window);
    return page == nullptr ? nullptr : page_project_grid(page->grid());
}

std::vector<ProjectSection> visible_sections(std::span<link::Window* const> windows,
                                             const GridFinder& grids) {
    std::vector<ProjectSection> sections;
    for (link::Window* window : windows) {
        if (window == nullptr || !window->visible()) continue;
        ProjectSection& section = sections.emplace_back(ProjectSection{window->name(), {}});
        // The one row of the browser is a place to try an object, not part of a working set.
        if (window->name() == kBrowserName) continue;
        if (const auto grid = grids(*window)) section.rows = saved_rows(*grid);
    }
    return sections;
}

std::vector<ProjectPlace> project_places(std::span<link::Window* const> windows,
                                         const GridFinder& grids) {
    std::vector<ProjectPlace> places;
    places.reserve(windows.size());
    for (link::Window* window : windows) {
        // A place without a window has no name that a section could have; "[" and "]" never stand
        // in one.
        if (window == nullptr)
            places.push_back({"[]", false});
        else
            places.push_back({window->name(), grids(*window) != nullptr});
    }
    return places;
}

void apply_project(const ProjectReading& reading, const ProjectTarget& target) {
    // Rows first, so that a window is shown with what it has to show.
    for (const ProjectReading::Rows& rows : reading.rows) {
        if (const auto grid = target.grids(*target.windows[rows.window]))
            grid->set_rows(restored_rows(rows.rows, target));
    }
    for (const std::size_t window : reading.shown)
        target.show(*target.windows[window]);
}

Project::Project(Workstation& workstation, UserDialogs& dialogs)
    : workstation_(workstation), dialogs_(dialogs), finders_{find_page_grid} {}

std::unique_ptr<ProjectGrid> Project::find_grid(link::Window& window) const {
    for (const GridFinder& finder : finders_)
        if (auto grid = finder(window)) return grid;
    return nullptr;
}

void Project::new1() {
    for (link::Window* window : workstation_.engine.all_windows)
        if (window != nullptr && window->visible()) close_window(workstation_, *window);
}

std::optional<std::string> Project::ask(FileRequest::Kind kind, base::Text title) {
    return dialogs_.ask_file({kind, std::string(title.in(workstation_.language)),
                              std::string(kProjectSuffix), std::string(kProjectSuffix), ""});
}

ProjectResult Project::save1() {
    const auto path = ask(FileRequest::Kind::kSave, {"保存", "Save"});
    return path ? save1(*path) : ProjectResult{};
}

ProjectResult Project::save1(const std::string& path) {
    const GridFinder grids = [this](link::Window& window) { return find_grid(window); };
    const std::string bytes =
        project_bytes(visible_sections(workstation_.engine.all_windows, grids));
    const bool written = base::write_file(path, bytes);
    return {written ? ProjectResult::Outcome::kDone : ProjectResult::Outcome::kFailed,
            absolute_path(path)};
}

ProjectResult Project::open1() {
    const auto path = ask(FileRequest::Kind::kOpen, {"打开", "Open"});
    return path ? open1(*path) : ProjectResult{};
}

ProjectResult Project::open1(const std::string& path) {
    const std::optional<std::string> bytes = base::read_file(path);
    if (!bytes) return {ProjectResult::Outcome::kFailed, absolute_path(path)};
    const GridFinder grids = [this](link::Window& window) { return find_grid(window); };
    // Shown as the windows themselves would do it, without the route of the menus: that one sends
    // the poller to the newest page at once, and here several come together and have values.
    const std::function<void(link::Window&)> show = [this](link::Window& window) {
        window.set_visible(true);
        if (workstation_.screen != nullptr) workstation_.screen->show_window(window);
    };
    const ProjectTarget target{workstation_.engine.all_windows, grids, workstation_.dictionary,
                               workstation_.language, show};
    const ProjectReading reading =
        read_project(*bytes, project_places(target.windows, target.grids));
    apply_project(reading, target);
    return {reading.stopped ? ProjectResult::Outcome::kStopped : ProjectResult::Outcome::kDone,
            absolute_path(path)};
}

}  // namespace servo::app
