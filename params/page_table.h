// The pages as data: they differ only in name, caption and definition file.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::params {

struct PageDefinition {
    std::string_view name;
    base::Text caption;
    base::Text reduced_caption;  // in the reduced product variant
    std::string_view file;       // below the program's folder, as users know it: "\sys\X.ini"
    int load_order = 0;          // position in which start-up reads the files, from 0

    constexpr base::Text caption_of(dictionary::Variant variant) const {
        return variant == dictionary::Variant::kReduced ? reduced_caption : caption;
    }
};

inline constexpr std::size_t kPages = 22;
extern const std::array<PageDefinition, kPages> kPageTable;

// Positions in kPageTable in the order of loading. The PDO tabs of start-up come between the last
// two of them.
std::array<std::size_t, kPages> pages_in_load_order();

// Null when there is no such page. Without regard to case.
const PageDefinition* find_page_definition(std::string_view name);

}  // namespace servo::params
