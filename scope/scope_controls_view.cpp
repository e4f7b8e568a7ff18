#include "scope/scope_controls_view.h"

#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "base/number.h"
#include "params/ui_palette.h"
#include "scope/tool_icon_view.h"

namespace servo::scope {

namespace {

// A number that is longer than its box tells more by its first digits than by its last.
void show_begin(QLineEdit& box) {
    if (!box.hasFocus()) box.setCursorPosition(0);
}

constexpr int kToolSide = 30;
constexpr int kRowToolSide = 26;
constexpr int kRowIconSize = 18;
constexpr int kSignificant = 6;
constexpr int kMostDecimals = 12;
constexpr double kLargest = 1E9;  // from here on, and below the smallest, with an exponent
constexpr double kSmallest = 1E-6;

}  // namespace

QString to_qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string numbered(const char* name, int index) {
    return std::string(name) + "(" + std::to_string(index) + ")";
}

void ControlTexts::add(QWidget* control, base::Text name, base::Text tip, const char* key) {
    entries_.push_back({control, name, tip, key});
}

void ControlTexts::apply(base::Language language) const {
    for (const Entry& entry : entries_) {
        const QString name = to_qt(entry.name.in(language));
        const std::string_view told = entry.tip.in(language);
        QString tip = told.empty() ? name : to_qt(told);
        if (entry.key != nullptr)
            tip += language == base::Language::kChinese
                       ? QStringLiteral("（%1）").arg(QLatin1String(entry.key))
                       : QStringLiteral(" (%1)").arg(QLatin1String(entry.key));
        entry.control->setAccessibleName(name);
        entry.control->setToolTip(tip);
    }
}

void set_tag(QWidget* control, base::Text text) {
    control->setProperty("Tag", to_qt(text.chinese) + QLatin1Char('/') + to_qt(text.english));
}

QLabel* make_caption(QWidget* parent, std::string_view name, base::Text text) {
    auto* label = named(new QLabel(to_qt(text.english), parent), name);
    label->setTextFormat(Qt::PlainText);
    set_tag(label, text);
    return label;
}

QLabel* make_heading(QWidget* parent, std::string_view name, base::Text text) {
    QLabel* label = make_caption(parent, name, text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QCheckBox* make_check(QWidget* parent, std::string_view name, base::Text text) {
    auto* box = named(new QCheckBox(to_qt(text.english), parent), name);
    if (text.english.empty())
        box->setProperty("Tag", QStringLiteral("-"));
    else
        set_tag(box, text);
    return box;
}

QPushButton* make_command(QWidget* parent, std::string_view name, base::Text text) {
    auto* button = named(new QPushButton(to_qt(text.english), parent), name);
    button->setAutoDefault(true);
    set_tag(button, text);
    return button;
}

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
    QObject::connect(box, &QLineEdit::editingFinished, box, [box] { show_begin(*box); });
    return box;
}

void make_quiet(QWidget* control) {
    QPalette colours = control->palette();
    colours.setColor(QPalette::WindowText, QColor(params::palette::kMutedText));
    control->setPalette(colours);
}

void set_picture(QWidget* control, const char* picture) {
    control->setProperty(kPictureProperty, QLatin1String(picture));
}

void show_text(QLabel* label, std::string_view text) {
    if (const QString shown = to_qt(text); label->text() != shown) label->setText(shown);
}

void show_text(QLineEdit* box, std::string_view text) {
    const QString shown = to_qt(text);
    if (box->text() == shown) return;
    box->setText(shown);
    show_begin(*box);
}

void show_check(QAbstractButton* box, bool on) {
    const QSignalBlocker not_the_user(box);
    box->setChecked(on);
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
