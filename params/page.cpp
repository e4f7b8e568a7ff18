#include "params/page.h"

#include <string>
#include <utility>

#include "params/page_loader.h"

namespace servo::params {

Page::Page(const PageDefinition& definition, PageServices services)
    : PollWindow(std::string(definition.name)),
      definition_(definition),
      dictionary_(services.dictionary),
      language_(services.language),
      grid_(std::move(services)) {}

bool Page::load(const std::filesystem::path& folder) {
    auto keys = load_page_keys(folder, definition_.file);
    const bool found = keys.has_value();
    keys_ = found ? std::move(*keys) : std::vector<dictionary::Identity>{};
    std::vector<Row> rows;
    rows.reserve(keys_.size());
    for (const dictionary::Identity key : keys_) {
        rows.push_back(build_row(dictionary_, key, static_cast<int>(rows.size()), language_));
    }
    grid_.set_rows(std::move(rows));
    return found;
}

}  // namespace servo::params
