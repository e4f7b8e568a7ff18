// A page: a window that shows drive objects in one grid. All pages are this class and a line of the
// page table. No widget here; PageWindow shows one.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "link/window.h"
#include "params/page_grid.h"
#include "params/page_table.h"

namespace servo::params {

// Fills a grid from a definition file, one row for each key of it. False when it can't be opened:
// keys and grid are then empty.
bool load_page(const std::filesystem::path& folder, std::string_view file,
               std::vector<dictionary::Identity>& keys, PageGrid& grid);

class Page final : public link::PollWindow {
  public:
    Page(const PageDefinition& definition, PageServices services);

    const PageDefinition& definition() const { return definition_; }
    PageGrid& grid() { return grid_; }
    const PageGrid& grid() const { return grid_; }

    // Fills the grid from the definition file below `folder`. False when it can't be opened: the
    // page is then empty, and the caller may say so (missing_file_text()).
    bool load(const std::filesystem::path& folder);
    // The keys that were read from the file.
    const std::vector<dictionary::Identity>& keys() const { return keys_; }

    bool custom() const override { return false; }
    int rows() const override { return grid_.rows(); }
    link::PollRow row(int row) const override { return grid_.poll_row(row); }
    void set_value(int row, double value, int size_code) override {
        grid_.set_value(row, value, size_code);
    }
    void set_text(int row, std::string_view text) override { grid_.set_text(row, text); }

  private:
    const PageDefinition& definition_;
    PageGrid grid_;
    std::vector<dictionary::Identity> keys_;
};

}  // namespace servo::params
