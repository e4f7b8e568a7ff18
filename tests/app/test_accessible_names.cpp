// What a screen reader says: every control that can be reached with the keyboard has a name, in
// both languages.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>

#include "app/style.h"
#include "app/window_table.h"
#include "params/grid_access_view.h"
#include "shown_shell.h"

namespace servo::app::test {
namespace {

QString spoken_name(QWidget& control) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&control);
    return accessible == nullptr ? QString() : accessible->text(QAccessible::Name);
}

// Parts of other controls, which speak for them.
bool is_part(const QWidget& control) {
    const QWidget* parent = control.parentWidget();
    return qobject_cast<const QComboBox*>(parent) != nullptr ||
           qobject_cast<const QLineEdit*>(parent) != nullptr ||
           (parent != nullptr && parent->inherits("QComboBoxPrivateContainer")) ||
           control.objectName().startsWith("qt_") || control.objectName() == "ScrollLeftButton" ||
           control.objectName() == "ScrollRightButton" || control.inherits("QHeaderView");
}

bool is_control(const QWidget& control, const QWidget& window) {
    if (control.focusPolicy() == Qt::NoFocus || is_part(control)) return false;
    // A button that is not offered now has no text either.
    if (!control.isVisibleTo(&window) && qobject_cast<const QAbstractButton*>(&control) != nullptr)
        return false;
    return qobject_cast<const QAbstractButton*>(&control) != nullptr ||
           qobject_cast<const QLineEdit*>(&control) != nullptr ||
           qobject_cast<const QComboBox*>(&control) != nullptr ||
           qobject_cast<const QAbstractItemView*>(&control) != nullptr ||
           qobject_cast<const QTextEdit*>(&control) != nullptr;
}

void expect_names(const QWidget& window, std::string_view name, const char* language) {
    int controls = 0;
    for (QWidget* control : window.findChildren<QWidget*>()) {
        if (!is_control(*control, window)) continue;
        ++controls;
        EXPECT_FALSE(spoken_name(*control).isEmpty())
            << name << "." << control->objectName().toStdString() << " ("
            << control->metaObject()->className() << ") in " << language;
    }
    EXPECT_GT(controls, 0) << name;
}

class AccessibleNames : public ::testing::TestWithParam<std::string_view> {};

TEST_P(AccessibleNames, EveryControlOfTheWindowHasOne) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.form.open_window(to_qt(GetParam()));
    QWidget* window = shell.form.window_widget(to_qt(GetParam()));
    ASSERT_NE(window, nullptr);
    expect_names(*window, GetParam(), "English");
    shell.menu("chinese");
    expect_names(*window, GetParam(), "Chinese");
}

INSTANTIATE_TEST_SUITE_P(Windows, AccessibleNames,
                         ::testing::Values("Basic", "TPDOSet", "ObjectDictionay", "modbus",
                                           "Motorcodes", "Form1", "About", "Scope", "Download"),
                         [](const auto& test) { return std::string(test.param); });

TEST(AccessibleNames, OfAGridFollowsTheLanguage) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    auto* grid = shell.control<QTableView>("Basic", "MSHFlexGrid1");
    EXPECT_EQ(spoken_name(*grid), "Parameters");
    shell.menu("chinese");
    EXPECT_EQ(spoken_name(*grid), QStringLiteral("参数表"));
}

TEST(AccessibleNames, AnOpenEditorIsCalledAfterItsObject) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    auto* grid = shell.control<QTableView>("Basic", "MSHFlexGrid1");
    ASSERT_TRUE(params::grid_click(*grid, 3, params::kValue, params::GridClick::kLeft));
    auto* editor = shell.control<QLineEdit>("Basic", "textbox1");
    ASSERT_TRUE(editor->isVisible());
    EXPECT_EQ(spoken_name(*editor), "Target velocity, Value");
}

TEST(AccessibleNames, EveryButtonOfTheToolbarHasOne) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    auto* bar = shell.form.findChild<QToolBar*>(QStringLiteral("Toolbar1"));
    ASSERT_NE(bar, nullptr);
    for (const QString& key : shell.form.tools()) {
        QWidget* button = bar->widgetForAction(shell.form.tool(key));
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(spoken_name(*button), shell.form.tool(key)->toolTip()) << key.toStdString();
    }
}

}  // namespace
}  // namespace servo::app::test
