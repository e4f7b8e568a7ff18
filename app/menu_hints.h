// What a menu item leads to, in a sentence: the status bar shows it while the mouse or the keys are
// on the item.
#pragma once

#include <string_view>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::app {

// Empty for a menu, and for a name that is none.
std::string_view menu_hint(std::string_view item, base::Language language,
                           dictionary::Variant variant);

}  // namespace servo::app
