#include "scope/scope_controls_view.h"

#include <algorithm>
#include <cmath>

#include "base/number.h"
#include "scope/tool_icon_view.h"

namespace servo::scope {

namespace {

constexpr int kToolSide = 30;
constexpr int kRowToolSide = 26;
constexpr int kRowIconSize = 18;
constexpr int kSignificant = 6;
constexpr int kMostDecimals = 12;
constexpr double kLargest = 1E9;  // from here on, and below the smallest, with an exponent
constexpr double kSmallest = 1E-6;

}  // namespace

QToolButton* make_tool(QWidget* parent, std::string_view name, const char* icon) {
    auto* button = named(new QToolButton(parent), name);
    button->setAutoRaise(true);
    button->setIcon(tool_icon(icon));
    button->setIconSize({kIconSize, kIconSize});
    button->setFixedSize(kToolSide, kToolSide);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

QToolButton* make_row_tool(QWidget* parent, std::string_view name, const char* icon) {
    QToolButton* button = make_tool(parent, name, icon);
    button->setIconSize({kRowIconSize, kRowIconSize});
    button->setFixedSize(kRowToolSide, kRowToolSide);
    return button;
}

QLineEdit* make_number_box(QWidget* parent, std::string_view name) {
    auto* box = named(new QLineEdit(parent), name);
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QObject::connect(box, &QLineEdit::editingFinished, box,
                     [box] { params::controls::show_begin(box); });
    return box;
}

void set_picture(QWidget* control, const char* picture) {
    control->setProperty(kPictureProperty, QLatin1String(picture));
}

std::string short_number(double value) {
    if (!std::isfinite(value)) return "-";
    const double size = std::fabs(value);
    if (size == 0.0) return "0";
    const int leading = static_cast<int>(std::floor(std::log10(size)));
    if (size < kLargest && size >= kSmallest)
        return base::format_up_to(value, std::clamp(kSignificant - 1 - leading, 0, kMostDecimals));
    const double power = std::pow(10.0, leading);
    return base::format_up_to(value / power, kSignificant - 1) + "E" + std::to_string(leading);
}

}  // namespace servo::scope
