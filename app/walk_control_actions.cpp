#include "app/walk_control_actions.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>

#include "app/walk_input.h"
#include "params/grid_access_view.h"

namespace servo::app {
namespace {

constexpr KeyStroke kEnter{.key = NamedKey::kEnter};
constexpr KeyStroke kBackspace{.key = NamedKey::kBackspace};
constexpr KeyStroke kEscape{.key = NamedKey::kEscape};

std::string name_of(const QWidget& control) {
    return control.objectName().toStdString();
}

// A check box is clicked on its mark: the room behind its text belongs to it but does nothing.
QPoint click_point(const QWidget& control) {
    const auto* button = qobject_cast<const QAbstractButton*>(&control);
    const bool check = qobject_cast<const QCheckBox*>(&control) != nullptr;
    const bool option = qobject_cast<const QRadioButton*>(&control) != nullptr;
    if (button == nullptr || (!check && !option)) return control.rect().center();
    QStyleOptionButton style;
    style.initFrom(button);
    return control.style()
        ->subElementRect(check ? QStyle::SE_CheckBoxIndicator : QStyle::SE_RadioButtonIndicator,
                         &style, &control)
        .center();
}

std::string out_of_range(const QWidget& control, int position, int count) {
    return name_of(control) + " has " + std::to_string(count) + " positions, none is " +
           std::to_string(position);
}

// From the open list with Enter: a list that is only set would not tell that a person has chosen.
void choose_in_combo(QComboBox& combo, int position) {
    combo.setFocus(Qt::OtherFocusReason);
    if (!combo.view()->isVisible()) combo.showPopup();
    combo.view()->setCurrentIndex(
        combo.model()->index(position, combo.modelColumn(), combo.rootModelIndex()));
    send_key(*combo.view(), kEnter);
}

std::string choose_in_list(QAbstractItemView& list, int position) {
    const int count = list.model() == nullptr ? 0 : list.model()->rowCount(list.rootIndex());
    if (position >= count) return out_of_range(list, position, count);
    const QModelIndex item = list.model()->index(position, 0, list.rootIndex());
    list.scrollTo(item);
    send_click(*list.viewport(), list.visualRect(item).center());
    return {};
}

int find_item(const QComboBox& combo, const QString& text) {
    const int exact = combo.findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (exact >= 0) return exact;
    return combo.findText(text + QLatin1Char(':'), Qt::MatchStartsWith | Qt::MatchCaseSensitive);
}

void select_all(QWidget& control) {
    if (auto* line = qobject_cast<QLineEdit*>(&control))
        line->selectAll();
    else if (auto* text = qobject_cast<QTextEdit*>(&control))
        text->selectAll();
    else if (auto* plain = qobject_cast<QPlainTextEdit*>(&control))
        plain->selectAll();
}

}  // namespace

bool control_usable(const QWidget& control) {
    return control.isVisible() && control.isEnabled();
}

void click_control(QWidget& control) {
    send_click(control, click_point(control));
}

std::string check_control(QWidget& control, bool on) {
    auto* button = qobject_cast<QAbstractButton*>(&control);
    if (button == nullptr || !button->isCheckable()) return name_of(control) + " can't be checked";
    if (control_usable(control) && button->isChecked() != on) click_control(control);
    return {};
}

std::string choose_position(QWidget& control, int position) {
    if (!control_usable(control)) return {};
    if (auto* combo = qobject_cast<QComboBox*>(&control)) {
        if (position >= combo->count()) return out_of_range(control, position, combo->count());
        choose_in_combo(*combo, position);
        return {};
    }
    if (auto* list = qobject_cast<QAbstractItemView*>(&control))
        return choose_in_list(*list, position);
    return name_of(control) + " is no list";
}

std::string select_tab(QWidget& control, int position) {
    auto* tabs = qobject_cast<QTabWidget*>(&control);
    if (tabs == nullptr) return name_of(control) + " has no tabs";
    if (position >= tabs->count()) return out_of_range(control, position, tabs->count());
    if (!tabs->isTabVisible(position)) return "tab " + std::to_string(position) + " is hidden";
    if (!control_usable(control) || !tabs->isTabEnabled(position)) return {};
    send_click(*tabs->tabBar(), tabs->tabBar()->tabRect(position).center());
    // A tab may have been scrolled out of the bar.
    if (tabs->currentIndex() != position) tabs->setCurrentIndex(position);
    return {};
}

void type_into(QWidget& control, const QString& text) {
    QWidget* box = &control;
    if (auto* combo = qobject_cast<QComboBox*>(&control); combo != nullptr && combo->isEditable())
        box = combo->lineEdit();
    box->setFocus(Qt::OtherFocusReason);
    select_all(*box);
    send_key(*box, kBackspace);
    send_text(*box, text);
}

std::string click_cell(QWidget& control, int row, int column, WalkButton button) {
    auto* grid = qobject_cast<QTableView*>(&control);
    if (grid == nullptr) return name_of(control) + " is no grid";
    if (!control_usable(control)) return {};
    params::GridClick click = params::GridClick::kLeft;
    switch (button) {
        case WalkButton::kLeft:
            break;
        case WalkButton::kRight:
            click = params::GridClick::kRight;
            break;
        case WalkButton::kDouble:
            click = params::GridClick::kDouble;
            break;
    }
    if (params::grid_click(*grid, row, column, click)) return {};
    return name_of(control) + " has no cell [" + std::to_string(row) + "," +
           std::to_string(column) + "] that can be clicked";
}

std::string edit_cell(QWidget& window, QWidget& control, int row, int column, const QString& text) {
    if (std::string error = click_cell(control, row, column, WalkButton::kLeft); !error.empty())
        return error;
    QWidget* editor = window.window()->focusWidget();
    const bool shown = editor != nullptr && editor->isVisible() && window.isAncestorOf(editor);
    if (auto* line = qobject_cast<QLineEdit*>(editor); shown && line != nullptr) {
        type_into(*line, text);
        if (line->isVisible()) send_key(*line, kEnter);
        return {};
    }
    if (auto* combo = qobject_cast<QComboBox*>(editor); shown && combo != nullptr) {
        const int position = find_item(*combo, text);
        if (position >= 0) {
            choose_in_combo(*combo, position);
            return {};
        }
        combo->hidePopup();
        send_key(*combo, kEscape);
        return "the list of cell [" + std::to_string(row) + "," + std::to_string(column) +
               "] has no item '" + text.toStdString() + "'";
    }
    return "no editor opens in cell [" + std::to_string(row) + "," + std::to_string(column) + "]";
}

}  // namespace servo::app
