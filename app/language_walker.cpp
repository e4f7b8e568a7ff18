#include "app/language_walker.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QVariant>
#include <optional>

#include "app/fixed_texts.h"
#include "app/style.h"

namespace servo::app {

namespace {

std::string tag_of(const QWidget& control) {
    return from_qt(control.property(kTag).toString());
}

// Texts that are no pair have one literal for Chinese and one for all else.
base::Language language_of(unsigned slot) {
    return slot == slot_of(base::Language::kChinese) ? base::Language::kChinese
                                                     : base::Language::kEnglish;
}

// The new caption of a control; nothing when it has only one.
std::optional<QString> new_caption(const QWidget& control, const QString& caption, unsigned slot) {
    const std::string tag = tag_of(control);
    if (tag.find('/') != std::string::npos) return to_qt(tag_part(tag, slot));
    if (tag.find("\r\n") != std::string::npos) return to_qt(block_part(tag, slot));
    if (!tag.empty() || !caption.contains(QLatin1Char('/'))) return {};
    return to_qt(tag_part(from_qt(caption), slot));
}

// Setting the text that is there already would lay the window out anew.
template <typename Control>
void walk_caption(Control& control, unsigned slot) {
    const QString now = control.text();
    if (const auto text = new_caption(control, now, slot); text && *text != now)
        control.setText(*text);
}

void walk_button(const QWidget& window, QPushButton& button, const LanguagePass& pass) {
    if (const auto fixed =
            fixed_button_text(from_qt(window.objectName()), from_qt(button.objectName()),
                              language_of(pass.slot), pass.variant))
        button.setText(to_qt(*fixed));
    else
        walk_caption(button, pass.slot);
}

void walk_frame(QGroupBox& frame, unsigned slot) {
    if (const auto text = new_caption(frame, frame.title(), slot)) frame.setTitle(*text);
}

void walk_tabs(QTabWidget& tabs, unsigned slot) {
    const std::string tag = tag_of(tabs);
    if (tag.empty()) return;
    int position = 0;
    for (const std::string_view caption : tab_captions(tag, slot)) {
        if (position >= tabs.count()) return;
        tabs.setTabText(position++, to_qt(caption));
    }
}

// Only what its tag holds: the text itself may be a file's, with line ends of its own.
template <typename Block>
void walk_block(Block& block, unsigned slot) {
    const std::string tag = tag_of(block);
    if (tag.find("\r\n") != std::string::npos) block.setPlainText(to_qt(block_part(tag, slot)));
}

void walk_list(const QWidget& window, QComboBox& list, base::Language language) {
    const std::string window_name = from_qt(window.objectName());
    const std::string name = from_qt(list.objectName());
    const QSignalBlocker no_pick(list);
    for (const FixedItem& item : fixed_items())
        if (item.window == window_name && item.control == name && item.position < list.count())
            list.setItemText(item.position, to_qt(item.text.in(language)));
}

void walk_control(const QWidget& window, QWidget& control, const LanguagePass& pass) {
    if (auto* label = qobject_cast<QLabel*>(&control)) {
        walk_caption(*label, pass.slot);
    } else if (auto* command = qobject_cast<QPushButton*>(&control)) {
        walk_button(window, *command, pass);
    } else if (auto* box = qobject_cast<QCheckBox*>(&control)) {
        walk_caption(*box, pass.slot);
    } else if (auto* option = qobject_cast<QRadioButton*>(&control)) {
        walk_caption(*option, pass.slot);
    } else if (auto* frame = qobject_cast<QGroupBox*>(&control)) {
        walk_frame(*frame, pass.slot);
    } else if (auto* tabs = qobject_cast<QTabWidget*>(&control)) {
        walk_tabs(*tabs, pass.slot);
    } else if (auto* list = qobject_cast<QComboBox*>(&control)) {
        walk_list(window, *list, language_of(pass.slot));
    } else if (auto* text = qobject_cast<QTextEdit*>(&control)) {
        walk_block(*text, pass.slot);
    } else if (auto* plain = qobject_cast<QPlainTextEdit*>(&control)) {
        walk_block(*plain, pass.slot);
    }
}

template <typename... Kinds>
bool is_any_of(const QWidget* widget) {
    return ((qobject_cast<const Kinds*>(widget) != nullptr) || ...);
}

}  // namespace

void walk_texts(QWidget& window, const LanguagePass& pass) {
    for (auto* control : window.findChildren<QWidget*>())
        walk_control(window, *control, pass);
}

void walk_texts(QWidget& window, base::Language language) {
    walk_texts(window, LanguagePass{.slot = slot_of(language)});
}

void walk_fonts(QWidget& window, base::Language language) {
    const QStringList families = font_families(language);
    for (auto* control : window.findChildren<QWidget*>()) {
        if (!is_any_of<QTableView, QLabel, QLineEdit, QComboBox, QPushButton, QCheckBox,
                       QRadioButton, QTextEdit, QPlainTextEdit, QTabWidget, QGroupBox>(control))
            continue;
        QFont font = control->font();
        if (font.families() == families) continue;
        font.setFamilies(families);
        control->setFont(font);
    }
}

void walk_window(QWidget& window, const LanguagePass& pass) {
    if (const std::string tag = tag_of(window); !tag.empty())
        window.setWindowTitle(to_qt(window_caption(tag, pass.slot)));
    walk_texts(window, pass);
    if (!pass.designed_font) walk_fonts(window, language_of(pass.slot));
    QEvent changed(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &changed);
}

}  // namespace servo::app
