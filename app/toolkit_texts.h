// The toolkit's own texts (buttons of boxes, file dialogs, menus of text boxes, tips of title
// buttons) in the language of the program. They come with the toolkit; where its translations are
// not installed, those texts stay English.
#pragma once

#include <QTranslator>

#include "base/language.h"

namespace servo::app {

class ToolkitTexts final {
  public:
    ToolkitTexts() = default;
    ToolkitTexts(const ToolkitTexts&) = delete;
    ToolkitTexts& operator=(const ToolkitTexts&) = delete;
    ~ToolkitTexts();

    void apply(base::Language language);

    // Whether the toolkit's Chinese texts are on this machine.
    static bool installed();

  private:
    QTranslator chinese_;
    bool on_ = false;
};

}  // namespace servo::app
