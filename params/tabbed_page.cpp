#include "params/tabbed_page.h"

#include <fmt/format.h>

#include "params/page.h"

namespace servo::params {

namespace {

constexpr base::Text kMappingHint{
    "修改映射的顺序：COB-ID 加 80000000，个数写 0，写入各映射（索引、子索引、位数，如 "
    "60410010），写入个数，恢复 COB-ID。",
    "To change a mapping, in this order: COB-ID + 80000000, number 0, mappings (index, sub-index, "
    "bits: 60410010), number, COB-ID."};

}  // namespace

TabbedPage::TabbedPage(const TabbedPageDefinition& definition, const PageServices& services)
    : PollWindow(std::string(definition.name)),
      definition_(definition),
      language_(services.language) {
    for (auto& grid : grids_)
        grid = std::make_unique<PageGrid>(services);
}

std::string TabbedPage::tab_caption(int tab) const {
    return fmt::format("{}{}", definition_.tab_word, tab + 1);
}

std::string TabbedPage::file(int tab) const {
    return fmt::format(R"(\sys\{}.ini)", tab_caption(tab));
}

void TabbedPage::select_tab(int tab) {
    if (tab < 0 || tab >= kTabs || tab == active_) return;
    active_ = tab;
    active_grid().hide_editors();
}

std::vector<std::string> TabbedPage::load(const std::filesystem::path& folder) {
    std::vector<std::string> missing;
    for (int tab = 0; tab < kTabs; ++tab) {
        auto& keys = keys_.at(static_cast<std::size_t>(tab));
        if (!load_page(folder, file(tab), keys, grid(tab))) missing.push_back(file(tab));
    }
    return missing;
}

void TabbedPage::apply_language() {
    for (const auto& grid : grids_)
        grid->apply_language();
}

std::string_view TabbedPage::mapping_hint() const {
    return kMappingHint.in(language_);
}

}  // namespace servo::params
