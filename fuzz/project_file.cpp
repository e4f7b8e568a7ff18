// A project file, through the windows that it is opened in: whatever its bytes, it touches no
// window that it does not name, and what it restored is what it restores again after a save.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/project.h"
#include "base/gbk.h"
#include "link/engine_state.h"
#include "params/page.h"

using namespace servo;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

// All windows, those of pages with a row that no file holds.
class Windows {
  public:
    Windows() {
        for (const std::string_view name : link::kAllWindowNames) {
            auto window = make(name);
            list_.push_back(window.get());
            owned_.push_back(std::move(window));
        }
        reset();
    }

    void reset() {
        for (const link::Window* window : list_) {
            auto* grid = grid_of(*window);
            list_[index_of(*window)]->set_visible(false);
            if (grid == nullptr) continue;
            params::Row row = params::build_row(dictionary_, 0x12345, 0, language_);
            row.value = kMark;
            grid->set_rows({row});
        }
    }

    void open(std::string_view bytes) {
        const app::ProjectReading reading =
            app::read_project(bytes, app::project_places(list_, finder_));
        check(reading);
        app::apply_project(reading, {list_, finder_, dictionary_, language_, show_});
    }

    // Every window that the text does not name is as it was.
    void require_untouched(std::string_view names) const {
        for (const link::Window* window : list_) {
            const bool named =
                window->name() != "modbus" && names.find(window->name()) != std::string_view::npos;
            if (named) continue;
            require(!window->visible());
            require(!changed(*window));
        }
        for (const std::string_view kept : {app::kPositionTableName, app::kBrowserName})
            require(!changed(*list_[position(kept)]));
    }

    std::string save() { return app::project_bytes(app::visible_sections(list_, finder_)); }

    // All rows of the windows that are visible and restored.
    std::string visible_rows() const {
        std::string text;
        for (const link::Window* window : list_) {
            const params::PageGrid* grid = grid_of(*window);
            if (!window->visible() || grid == nullptr || !changed(*window)) continue;
            for (int row = 1; row < grid->rows(); ++row)
                for (int column = 0; column < params::kColumns; ++column)
                    text.append(grid->cell(row, column)).push_back('\n');
        }
        return text;
    }

  private:
    static constexpr std::string_view kMark = "a row of before\n";  // no file holds a line break

    std::unique_ptr<link::Window> make(std::string_view name) {
        const auto* page =
            std::ranges::find(params::kPageTable, name, &params::PageDefinition::name);
        if (page != params::kPageTable.end())
            return std::make_unique<params::Page>(*page, services());
        auto window = std::make_unique<link::Window>(std::string(name));
        // Grids of windows that are no pages.
        for (const std::string_view with_grid :
             {std::string_view("EASY1"), std::string_view("Download"), std::string_view("TPDOSet"),
              std::string_view("modbus"), app::kPositionTableName, app::kBrowserName})
            if (name == with_grid)
                grids_[window.get()] = std::make_unique<params::PageGrid>(services());
        return window;
    }

    params::PageServices services() {
        return {dictionary_, operands_, language_, [](auto, auto) {}};
    }

    params::PageGrid* grid_of(const link::Window& window) const {
        const auto found = grids_.find(&window);
        if (found != grids_.end()) return found->second.get();
        auto* page = dynamic_cast<params::Page*>(list_[index_of(window)]);
        return page == nullptr ? nullptr : &page->grid();
    }

    bool changed(const link::Window& window) const {
        const params::PageGrid* grid = grid_of(window);
        return grid != nullptr && (grid->rows() != 2 || grid->row(1).value != kMark);
    }

    static std::size_t position(std::string_view name) {
        const auto found = std::ranges::find(link::kAllWindowNames, name);
        return static_cast<std::size_t>(found - link::kAllWindowNames.begin());
    }
    static std::size_t index_of(const link::Window& window) { return position(window.name()); }

    void check(const app::ProjectReading& reading) const {
        std::vector<std::size_t> seen;
        for (const auto& rows : reading.rows) {
            require(rows.window + 1 < list_.size());
            require(grid_of(*list_[rows.window]) != nullptr);
            require(std::ranges::find(seen, rows.window) == seen.end());
            seen.push_back(rows.window);
        }
        seen.clear();
        for (const std::size_t window : reading.shown) {
            require(window + 1 < list_.size());
            require(std::ranges::find(seen, window) == seen.end());
            seen.push_back(window);
        }
        // A window that gets rows is shown, but for the one at which the reading stopped.
        if (!reading.stopped) {
            for (const auto& rows : reading.rows)
                require(std::ranges::find(seen, rows.window) != seen.end());
        }
    }

    dictionary::Store dictionary_;
    link::FormulaOperands operands_;
    base::Language language_ = base::Language::kEnglish;
    std::map<const link::Window*, std::unique_ptr<params::PageGrid>> grids_;
    std::vector<std::unique_ptr<link::Window>> owned_;
    std::vector<link::Window*> list_;
    app::GridFinder finder_ = [this](link::Window& window) -> std::unique_ptr<app::ProjectGrid> {
        auto* grid = grid_of(window);
        return grid == nullptr ? nullptr : app::page_project_grid(*grid);
    };
    std::function<void(link::Window&)> show_ = [](link::Window& window) {
        window.set_visible(true);
    };
};

// The file without its brackets, in which every name that a section line can have stands.
std::string without_brackets(std::string_view bytes) {
    std::string text = base::gbk_to_utf8(bytes);
    std::erase_if(text, [](char c) { return c == '[' || c == ']'; });
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Windows windows;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    windows.reset();
    windows.open(bytes);
    windows.require_untouched(without_brackets(bytes));

    // Texts that the code page cannot hold are replaced by the first save; from then on a project
    // comes back as it was.
    const std::string first = windows.save();
    windows.reset();
    windows.open(first);
    const std::string rows = windows.visible_rows();
    const std::string second = windows.save();
    windows.reset();
    windows.open(second);
    require(windows.visible_rows() == rows);
    require(windows.save() == second);
    return 0;
}
