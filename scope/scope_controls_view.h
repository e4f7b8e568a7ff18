// What the oscilloscope's panels are made of, beside what all windows have.
#pragma once

#include <QToolButton>
#include <functional>
#include <string>
#include <string_view>

#include "params/named_controls_view.h"
#include "scope/oscilloscope.h"

namespace servo::scope {

using params::controls::ControlTexts;
using params::controls::make_caption;
using params::controls::make_check;
using params::controls::make_command;
using params::controls::make_heading;
using params::controls::make_quiet;
using params::controls::named;
using params::controls::numbered;
using params::controls::set_tag;
using params::controls::show_check;
using params::controls::show_number;
using params::controls::show_text;
using params::controls::to_qt;

inline constexpr int kGap = 8;  // the grid that everything stands on
inline constexpr int kIconSize = 20;

// Name of the dynamic property that says which picture an image control shows.
inline constexpr const char* kPictureProperty = "picture";

// What every panel works with. A panel tells `acted` behind each thing that the operator did, so
// that its outcome is seen at once and not at the next refresh.
struct PanelContext {
    Oscilloscope& scope;
    std::function<void()> acted;
};

// A flat button that shows a picture only.
QToolButton* make_tool(QWidget* parent, std::string_view name, const char* icon);
// The same, lower: for rows of boxes.
QToolButton* make_row_tool(QWidget* parent, std::string_view name, const char* icon);
QLineEdit* make_number_box(QWidget* parent, std::string_view name);

void set_picture(QWidget* control, const char* picture);

// The number with six significant digits, without an exponent where that reads better.
std::string short_number(double value);

}  // namespace servo::scope
