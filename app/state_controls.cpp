#include "app/state_controls.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QToolButton>
#include <set>

namespace servo::app {
namespace {

std::string utf8(const QString& text) {
    return text.toStdString();
}

// An access key is a mark in the caption, not part of what is read.
QString without_access_key(const QString& text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('&') && i + 1 < text.size()) ++i;  // "&&" is a single one
        plain += text[i];
    }
    return plain;
}

QString label_text(const QLabel& label) {
    // Only a label with a buddy hides its access key.
    return label.buddy() == nullptr ? label.text() : without_access_key(label.text());
}

QString item_text(const QAbstractItemView& list, int row) {
    return list.model()->index(row, 0, list.rootIndex()).data().toString();
}

std::vector<std::string> list_items(const QAbstractItemView& list) {
    std::vector<std::string> items;
    if (list.model() == nullptr) return items;
    for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row)
        items.push_back(utf8(item_text(list, row)));
    return items;
}

QString tab_text(const QTabWidget& tabs, int position) {
    return without_access_key(tabs.tabText(position));
}

// The caption in the state document, the text everywhere else.
QString shown_text(const QWidget& control, ControlKind kind) {
    switch (kind) {
        case ControlKind::kButton:
        case ControlKind::kCheck:
        case ControlKind::kOption:
            return without_access_key(static_cast<const QAbstractButton&>(control).text());
        case ControlKind::kComboBox:
            return static_cast<const QComboBox&>(control).currentText();
        case ControlKind::kList: {
            const auto& list = static_cast<const QAbstractItemView&>(control);
            return list.currentIndex().isValid() ? list.currentIndex().data().toString()
                                                 : QString();
        }
        case ControlKind::kTextBox:
            return static_cast<const QLineEdit&>(control).text();
        case ControlKind::kRichText: {
            if (const auto* rich = qobject_cast<const QTextEdit*>(&control))
                return rich->toPlainText();
            return static_cast<const QPlainTextEdit&>(control).toPlainText();
        }
        case ControlKind::kLabel:
            return label_text(static_cast<const QLabel&>(control));
        case ControlKind::kImage:
            return control.property(kPictureProperty).toString();
        case ControlKind::kProgress:
            return QString::number(static_cast<const QProgressBar&>(control).value());
        case ControlKind::kTabs: {
            const auto& tabs = static_cast<const QTabWidget&>(control);
            return tab_text(tabs, tabs.currentIndex());
        }
        case ControlKind::kFrame:
            return without_access_key(static_cast<const QGroupBox&>(control).title());
        case ControlKind::kGrid: {
            const auto& grid = static_cast<const QTableView&>(control);
            return grid.currentIndex().isValid() ? grid.currentIndex().data().toString()
                                                 : QString();
        }
        case ControlKind::kPicture:
            return {};
    }
    return {};
}

std::optional<ControlKind> kind_of_class(const QWidget& widget) {
    if (qobject_cast<const QCheckBox*>(&widget) != nullptr) return ControlKind::kCheck;
    if (qobject_cast<const QRadioButton*>(&widget) != nullptr) return ControlKind::kOption;
    if (qobject_cast<const QAbstractButton*>(&widget) != nullptr) return ControlKind::kButton;
    if (qobject_cast<const QComboBox*>(&widget) != nullptr) return ControlKind::kComboBox;
    if (qobject_cast<const QLineEdit*>(&widget) != nullptr) return ControlKind::kTextBox;
    if (qobject_cast<const QTextEdit*>(&widget) != nullptr) return ControlKind::kRichText;
    if (qobject_cast<const QPlainTextEdit*>(&widget) != nullptr) return ControlKind::kRichText;
    if (qobject_cast<const QLabel*>(&widget) != nullptr) return ControlKind::kLabel;
    if (qobject_cast<const QProgressBar*>(&widget) != nullptr) return ControlKind::kProgress;
    if (qobject_cast<const QTabWidget*>(&widget) != nullptr) return ControlKind::kTabs;
    if (qobject_cast<const QGroupBox*>(&widget) != nullptr) return ControlKind::kFrame;
    if (qobject_cast<const QTableView*>(&widget) != nullptr) return ControlKind::kGrid;
    if (qobject_cast<const QAbstractItemView*>(&widget) != nullptr) return ControlKind::kList;
    // Everything else that has a name of its own is drawn on by the program.
    return ControlKind::kPicture;
}

// The line edit of a drop-down or a spin box, the list of an open drop-down, the arrows of a tab
// bar.
bool part_of_another(const QWidget& widget) {
    for (const QWidget* parent = widget.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (qobject_cast<const QComboBox*>(parent) != nullptr) return true;
        if (qobject_cast<const QTabBar*>(parent) != nullptr) return true;
        if (qobject_cast<const QAbstractSpinBox*>(parent) != nullptr) return true;
        if (parent->isWindow()) return parent->objectName().startsWith(QLatin1String("qt_"));
    }
    return false;
}

}  // namespace

std::optional<ControlKind> control_kind(const QWidget& widget) {
    const QString name = widget.objectName();
    if (name.isEmpty() || name.startsWith(QLatin1String("qt_"))) return std::nullopt;
    if (name.startsWith(QLatin1String("_q_"))) return std::nullopt;  // buttons inside of a box
    if (part_of_another(widget)) return std::nullopt;
    if (widget.property(kPictureProperty).isValid()) return ControlKind::kImage;
    return kind_of_class(widget);
}

std::string control_type(ControlKind kind) {
    switch (kind) {
        case ControlKind::kButton:
            return "CommandButton";
        case ControlKind::kCheck:
            return "CheckBox";
        case ControlKind::kOption:
            return "OptionButton";
        case ControlKind::kComboBox:
            return "ComboBox";
        case ControlKind::kList:
            return "ListBox";
        case ControlKind::kTextBox:
            return "TextBox";
        case ControlKind::kRichText:
            return "RichTextBox";
        case ControlKind::kLabel:
            return "Label";
        case ControlKind::kImage:
            return "Image";
        case ControlKind::kProgress:
            return "ProgressBar";
        case ControlKind::kTabs:
            return "SSTab";
        case ControlKind::kFrame:
            return "Frame";
        case ControlKind::kGrid:
            return "MSHFlexGrid";
        case ControlKind::kPicture:
            return "PictureBox";
    }
    return {};
}

std::vector<QWidget*> controls_of(const QWidget& window) {
    std::vector<QWidget*> controls;
    std::set<QString> names;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (control_kind(*widget) && names.insert(widget->objectName()).second)
            controls.push_back(widget);
    }
    return controls;
}

QWidget* find_control(const QWidget& window, const QString& name) {
    for (QWidget* widget : window.findChildren<QWidget*>(name)) {
        if (control_kind(*widget)) return widget;
    }
    return nullptr;
}

QString control_text(const QWidget& control) {
    const std::optional<ControlKind> kind = control_kind(control);
    if (!kind) return {};
    if (*kind == ControlKind::kCheck || *kind == ControlKind::kOption) {
        const bool on = static_cast<const QAbstractButton&>(control).isChecked();
        return on ? QStringLiteral("on") : QStringLiteral("off");
    }
    return shown_text(control, *kind);
}

bool control_shown(const QWidget& control, const QWidget& window) {
    return control.isVisibleTo(&window);
}

ControlState control_state(const QWidget& control, const QWidget& window) {
    const ControlKind kind = control_kind(control).value_or(ControlKind::kPicture);
    ControlState state;
    state.name = utf8(control.objectName());
    state.type = control_type(kind);
    state.text = utf8(shown_text(control, kind));
    state.enabled = control.isEnabled();
    state.visible = control_shown(control, window);
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control);
        button != nullptr && button->isCheckable())
        state.checked = button->isChecked();
    if (kind == ControlKind::kComboBox) {
        const auto& combo = static_cast<const QComboBox&>(control);
        state.items.emplace();
        for (int i = 0; i < combo.count(); ++i)
            state.items->push_back(utf8(combo.itemText(i)));
        state.current = combo.currentIndex();
    } else if (kind == ControlKind::kList) {
        const auto& list = static_cast<const QAbstractItemView&>(control);
        state.items = list_items(list);
        state.current = list.currentIndex().isValid() ? list.currentIndex().row() : -1;
    } else if (kind == ControlKind::kTabs) {
        const auto& tabs = static_cast<const QTabWidget&>(control);
        state.items.emplace();
        for (int i = 0; i < tabs.count(); ++i)
            state.items->push_back(utf8(tab_text(tabs, i)));
        state.current = tabs.currentIndex();
    }
    return state;
}

}  // namespace servo::app
