// Puts a window and its controls into a language. A control that switches carries both texts in its
// property "Tag": "Chinese/English", the tabs of a tab control separated by "|", the halves of a
// block of text by CR LF. A window with a "Tag" takes its caption from there.
//
// A label or button whose text is no pair although it may hold a "/" (a path, a unit such as
// "rps/s", a value) carries the tag kOneText, and the walker leaves it alone.
//
// Walking twice changes nothing. Values, selections and the rows of grids stay as they are.
#pragma once

#include <QString>

#include "app/tag_text.h"
#include "dictionary/store.h"

class QWidget;

namespace servo::app {

inline constexpr const char* kTag = "Tag";
inline constexpr const char* kOneText = "-";

struct LanguagePass {
    unsigned slot = 1;  // 0 Chinese, 1 English, 2 a third that no command chooses
    dictionary::Variant variant = dictionary::Variant::kAllItems;
    bool designed_font = false;  // the window keeps its font
};

// Everything: caption, texts, fixed texts, font; then the window gets QEvent::LanguageChange, at
// which it changes what it has of its own (headings, lists, state texts).
void walk_window(QWidget& window, const LanguagePass& pass);

// Option buttons, check boxes, frames, labels, buttons, tabs and text blocks. A caption with a "/"
// and no tag is split too, and keeps only that half afterwards: what must switch again has a tag.
void walk_texts(QWidget& window, const LanguagePass& pass);
void walk_texts(QWidget& window, base::Language language);

// The language's font on every control that shows text.
void walk_fonts(QWidget& window, base::Language language);

}  // namespace servo::app
