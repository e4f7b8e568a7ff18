// One action on one control, as a person would do it. Texts that are not empty say why it could not
// be done.
#pragma once

#include <QString>
#include <QWidget>
#include <string>

#include "app/walk_script.h"

namespace servo::app {

// Whether a person could use it now.
bool control_usable(const QWidget& control);

void click_control(QWidget& control);
std::string check_control(QWidget& control, bool on);
std::string choose_position(QWidget& control, int position);
std::string select_tab(QWidget& control, int position);

// Empties the box and types.
void type_into(QWidget& control, const QString& text);

std::string click_cell(QWidget& control, int row, int column, WalkButton button);

// Clicks the cell and types into the editor that opens, then Enter. In a drop-down the item is
// picked that is the text, or that begins with it and a colon.
std::string edit_cell(QWidget& window, QWidget& control, int row, int column, const QString& text);

}  // namespace servo::app
