// Puts a window's controls into a language. A control that switches carries both texts in its
// property "Tag" ("Chinese/English"; tabs of a tab control separated by "|").
#pragma once

#include "base/language.h"

class QWidget;

namespace servo::app {

// Option buttons, check boxes, frames, labels, buttons and tabs. A caption with a "/" and no tag is
// split too, and keeps only that half afterwards.
void walk_texts(QWidget& window, base::Language language);

// The language's font on every control that shows text.
void walk_fonts(QWidget& window, base::Language language);

}  // namespace servo::app
