// Named controls of the window `PosFlow` whose texts follow the language. A caption in both
// languages stands in the property "Tag", where the walk through a window's texts finds it; a text
// that is no pair (a value, a result) carries the tag "-".
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QString>
#include <string>
#include <string_view>

#include "base/language.h"

namespace servo::tools {

QString qt_of(std::string_view text);
std::string utf8_of(const QString& text);

// `pair`: "中文/English".
QLabel* make_position_label(QWidget* parent, const char* name, std::string_view pair);
QLabel* make_position_value(QWidget* parent, const char* name);
QPushButton* make_position_command(QWidget* parent, const char* name, std::string_view pair);

void show_position_text(QLabel* label, std::string_view text);

}  // namespace servo::tools
