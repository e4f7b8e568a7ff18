// Style, colours and pictures of the whole program.
#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>

#include "base/language.h"
#include "params/qt_text_view.h"

namespace servo::app {

// One look on every desktop: told cell colours are light, so a dark desktop must not turn the text
// on them light as well. Call it once, behind the construction of QApplication.
void apply_style();

// A picture of the program by its name ("Commpic").
QIcon picture(const QString& name);

// One that tells a state: it keeps its colours where its button can't be pressed.
QIcon state_picture(const QString& name);

// The font of a language, with the families that stand in for it where it is not installed.
QStringList font_families(base::Language language);

using params::to_qt;
std::string from_qt(const QString& text);

}  // namespace servo::app
