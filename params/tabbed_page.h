// The windows `TPDOSet` and `RPDOSet`: eight grids of drive objects on the tabs of one tab control,
// `SSTab1`, one for each PDO. Every rule of a page holds in each of them; what is polled and edited
// is the grid of the active tab. No widget here; TabbedPageWindow shows one.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "link/window.h"
#include "params/page_grid.h"

namespace servo::params {

inline constexpr int kTabs = 8;

struct TabbedPageDefinition {
    std::string_view name;
    base::Text caption;
    std::string_view tab_word;  // "TPDO": captions "TPDO1" to "TPDO8", files "\sys\TPDO1.ini" ...
};

// In the order of start-up: the transmit PDOs, then the receive PDOs.
inline constexpr std::array<TabbedPageDefinition, 2> kTabbedPageTable{{
    {"TPDOSet", {"TPDO", "TPDO"}, "TPDO"},
    {"RPDOSet", {"RPDO", "RPDO"}, "RPDO"},
}};

class TabbedPage final : public link::PollWindow {
  public:
    // The definition outlives the page.
    TabbedPage(const TabbedPageDefinition& definition, const PageServices& services);

    const TabbedPageDefinition& definition() const { return definition_; }

    // Tabs count from 0.
    std::string tab_caption(int tab) const;
    std::string file(int tab) const;
    PageGrid& grid(int tab) { return *grids_.at(static_cast<std::size_t>(tab)); }
    const PageGrid& grid(int tab) const { return *grids_.at(static_cast<std::size_t>(tab)); }
    // The keys that were read from the tab's file.
    const std::vector<dictionary::Identity>& keys(int tab) const {
        return keys_.at(static_cast<std::size_t>(tab));
    }

    // `SSTab1.Tab`, the active tab. Changing it hides both editors of the tab that has become
    // active; there is no such tab: nothing happens.
    int SSTab1_Tab() const { return active_; }
    void select_tab(int tab);
    PageGrid& active_grid() { return grid(active_); }
    const PageGrid& active_grid() const { return grid(active_); }

    // Fills the grids from the files below `folder`, tab by tab. The files that can't be opened, in
    // that order: their tabs are then empty, and the caller may say so (missing_file_text()).
    std::vector<std::string> load(const std::filesystem::path& folder);

    void apply_language();  // names in all grids

    // Addition: the order in which a drive lets a mapping be changed; it refuses any other, and the
    // next pass brings its own value back without a word.
    std::string_view mapping_hint() const;

    bool custom() const override { return false; }
    int rows() const override { return active_grid().rows(); }
    link::PollRow row(int row) const override { return active_grid().poll_row(row); }
    void set_value(int row, double value, int size_code) override {
        active_grid().set_value(row, value, size_code);
    }
    void set_text(int row, std::string_view text) override { active_grid().set_text(row, text); }

  private:
    const TabbedPageDefinition& definition_;
    const base::Language& language_;
    std::array<std::unique_ptr<PageGrid>, kTabs> grids_;
    std::array<std::vector<dictionary::Identity>, kTabs> keys_;
    int active_ = 0;
};

}  // namespace servo::params
