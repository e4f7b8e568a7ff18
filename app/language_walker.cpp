#include "app/language_walker.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QVariant>
#include <optional>

#include "app/style.h"
#include "app/tag_text.h"

namespace servo::app {

namespace {

std::string tag_of(const QWidget& control) {
    return from_qt(control.property("Tag").toString());
}

// The new caption of a control; nothing when it has only one.
std::optional<QString> new_caption(const QWidget& control, const QString& caption,
                                   base::Language language) {
    const std::string tag = tag_of(control);
    if (tag.find('/') != std::string::npos) return to_qt(tag_part(tag, language));
    if (!tag.empty() || !caption.contains(QLatin1Char('/'))) return {};
    return to_qt(tag_part(from_qt(caption), language));
}

bool is_caption_button(const QAbstractButton& button) {
    return qobject_cast<const QRadioButton*>(&button) != nullptr ||
           qobject_cast<const QCheckBox*>(&button) != nullptr ||
           qobject_cast<const QPushButton*>(&button) != nullptr;
}

void walk_tabs(QTabWidget& tabs, base::Language language) {
    const std::string tag = tag_of(tabs);
    if (tag.empty()) return;
    int position = 0;
    for (const std::string_view caption : tab_captions(tag, language)) {
        if (position >= tabs.count()) return;
        tabs.setTabText(position++, to_qt(caption));
    }
}

template <typename... Kinds>
bool is_any_of(const QWidget* widget) {
    return ((qobject_cast<const Kinds*>(widget) != nullptr) || ...);
}

}  // namespace

void walk_texts(QWidget& window, base::Language language) {
    for (auto* button : window.findChildren<QAbstractButton*>()) {
        if (!is_caption_button(*button)) continue;
        if (const auto text = new_caption(*button, button->text(), language))
            button->setText(*text);
    }
    for (auto* label : window.findChildren<QLabel*>())
        if (const auto text = new_caption(*label, label->text(), language)) label->setText(*text);
    for (auto* frame : window.findChildren<QGroupBox*>())
        if (const auto text = new_caption(*frame, frame->title(), language)) frame->setTitle(*text);
    for (auto* tabs : window.findChildren<QTabWidget*>())
        walk_tabs(*tabs, language);
}

void walk_fonts(QWidget& window, base::Language language) {
    for (auto* control : window.findChildren<QWidget*>()) {
        if (!is_any_of<QTableView, QLabel, QLineEdit, QComboBox, QPushButton, QCheckBox,
                       QRadioButton, QTextEdit, QTabWidget, QGroupBox>(control))
            continue;
        QFont font = control->font();
        if (font.families() == font_families(language)) continue;
        font.setFamilies(font_families(language));
        control->setFont(font);
    }
}

}  // namespace servo::app
