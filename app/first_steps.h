// What stands on the empty desk: how to begin, in a few lines.
#pragma once

#include <string_view>
#include <vector>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::app {

struct FirstSteps {
    std::string_view title;
    std::vector<std::string_view> lines;  // in their order
};

FirstSteps first_steps(base::Language language, dictionary::Variant variant, bool link_open);

}  // namespace servo::app
