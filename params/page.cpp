#include "params/page.h"

#include <string>
#include <utility>

#include "params/page_loader.h"

namespace servo::params {

bool load_page(const std::filesystem::path& folder, std::string_view file,
               std::vector<dictionary::Identity>& keys, PageGrid& grid) {
    auto read = load_page_keys(folder, file);
    const bool found = read.has_value();
    keys = found ? std::move(*read) : std::vector<dictionary::Identity>{};
    grid.set_objects(keys);
    return found;
}

Page::Page(const PageDefinition& definition, PageServices services)
    : PollWindow(std::string(definition.name)),
      definition_(definition),
      grid_(std::move(services)) {}

bool Page::load(const std::filesystem::path& folder) {
    return load_page(folder, definition_.file, keys_, grid_);
}

}  // namespace servo::params
