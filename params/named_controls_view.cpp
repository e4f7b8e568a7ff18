#include "params/named_controls_view.h"

#include <QSignalBlocker>

#include "params/ui_palette.h"

namespace servo::params::controls {

void ControlTexts::add(QWidget* control, base::Text name, base::Text tip, const char* key) {
    entries_.push_back({control, name, tip, key});
}

void ControlTexts::apply(base::Language language) const {
    const bool chinese = language == base::Language::kChinese;
    for (const Entry& entry : entries_) {
        const QString name = to_qt(entry.name.in(language));
        const std::string_view told = entry.tip.in(language);
        QString tip = told.empty() ? name : to_qt(told);
        if (entry.key != nullptr)
            tip += (chinese ? QStringLiteral("（%1）") : QStringLiteral(" (%1)"))
                       .arg(QLatin1String(entry.key));
        entry.control->setAccessibleName(name);
        entry.control->setToolTip(tip);
    }
}

std::string numbered(const char* name, int index) {
    return std::string(name) + "(" + std::to_string(index) + ")";
}

void set_tag(QWidget* control, base::Text text) {
    control->setProperty(kTag, text.english.empty()
                                   ? QString(QLatin1String(kNoPair))
                                   : to_qt(text.chinese) + QLatin1Char('/') + to_qt(text.english));
}

QLabel* make_caption(QWidget* parent, std::string_view name, base::Text text) {
    auto* label = named(new QLabel(to_qt(text.english), parent), name);
    label->setTextFormat(Qt::PlainText);
    set_tag(label, text);
    return label;
}

QLabel* make_heading(QWidget* parent, std::string_view name, base::Text text) {
    QLabel* label = make_caption(parent, name, text);
    make_bold(label);
    return label;
}

QCheckBox* make_check(QWidget* parent, std::string_view name, base::Text text) {
    auto* box = named(new QCheckBox(to_qt(text.english), parent), name);
    set_tag(box, text);
    return box;
}

QPushButton* make_command(QWidget* parent, std::string_view name, base::Text text) {
    auto* button = named(new QPushButton(to_qt(text.english), parent), name);
    button->setAutoDefault(true);
    set_tag(button, text);
    return button;
}

void make_bold(QWidget* control) {
    QFont font = control->font();
    font.setBold(true);
    control->setFont(font);
}

void make_quiet(QWidget* control) {
    QPalette colours = control->palette();
    colours.setColor(QPalette::WindowText, QColor(palette::kMutedText));
    control->setPalette(colours);
}

void show_text(QLabel* label, std::string_view text) {
    if (const QString shown = to_qt(text); label->text() != shown) label->setText(shown);
}

void show_line(QLineEdit* box, std::string_view text) {
    if (const QString shown = to_qt(text); box->text() != shown) box->setText(shown);
}

void show_number(QLineEdit* box, std::string_view text) {
    const QString shown = to_qt(text);
    if (box->text() == shown) return;
    box->setText(shown);
    show_begin(box);
}

void show_begin(QLineEdit* box) {
    if (!box->hasFocus()) box->setCursorPosition(0);
}

void show_check(QAbstractButton* box, bool on) {
    const QSignalBlocker not_the_user(box);
    box->setChecked(on);
}

}  // namespace servo::params::controls
