// The controls of a window by their told names and kinds: what the state dump shows and what a
// walkthrough looks at. Knows classes of widgets, not windows, so a new window needs nothing here.
#pragma once

#include <QString>
#include <QWidget>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/state_document.h"

namespace servo::app {

enum class ControlKind : std::uint8_t {
    kButton,
    kCheck,
    kOption,
    kComboBox,
    kList,
    kTextBox,
    kRichText,
    kLabel,
    kImage,  // shows a picture by name: a widget with the dynamic property "picture"
    kProgress,
    kTabs,
    kFrame,
    kGrid,
    kPicture,  // a surface that is drawn on
};

// Name of a dynamic property: which picture an image control shows.
inline constexpr const char* kPictureProperty = "picture";

// Nothing for a widget that is no control: a plain container, or a part of another control.
std::optional<ControlKind> control_kind(const QWidget& widget);

// The kind as the state document names it ("CommandButton", "TextBox" ...).
std::string control_type(ControlKind kind);

// The controls of a window in the order in which they were made, each name once.
std::vector<QWidget*> controls_of(const QWidget& window);

// null when the window has none of that name.
QWidget* find_control(const QWidget& window, const QString& name);

// What a walkthrough's target gives: "on" or "off" for check and option buttons, the picture's
// name, a whole number for a progress bar, the current item of a list, the current tab, else the
// text.
QString control_text(const QWidget& control);

// Whether the control is shown when its window is.
bool control_shown(const QWidget& control, const QWidget& window);

ControlState control_state(const QWidget& control, const QWidget& window);

}  // namespace servo::app
