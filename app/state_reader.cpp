#include "app/state_reader.h"

#include <QAction>
#include <QMainWindow>
#include <QTableView>
#include <algorithm>
#include <array>

#include "app/state_controls.h"
#include "link/engine.h"
#include "params/grid_access_view.h"
#include "params/qt_text_view.h"

namespace servo::app {
namespace {

std::string utf8(const QString& text) {
    return text.toStdString();
}

GridState grid_state(const QTableView& grid) {
    GridState state;
    state.name = utf8(grid.objectName());
    const int columns = params::grid_columns(grid);
    for (int row = 0; row < params::grid_rows(grid); ++row) {
        std::vector<std::string>& cells = state.rows.emplace_back();
        for (int column = 0; column < columns; ++column) {
            cells.push_back(utf8(params::grid_text(grid, row, column)));
            if (const auto color = params::grid_color(grid, row, column))
                state.colors.push_back({row, column, utf8(color->name().toUpper())});
        }
    }
    return state;
}

WindowState window_state(ShellAccess& shell, std::string_view name) {
    WindowState state;
    state.name = name;
    const link::Window* window = shell.workstation().find_window(name);
    state.visible = window != nullptr && window->visible();
    const QWidget* widget = shell.window_widget(params::to_qt(name));
    if (widget == nullptr) return state;
    state.caption = utf8(widget->windowTitle());
    for (const QWidget* control : controls_of(*widget)) {
        state.controls.push_back(control_state(*control, *widget));
        if (const auto* grid = qobject_cast<const QTableView*>(control))
            state.grids.push_back(grid_state(*grid));
    }
    return state;
}

// Members that hold text, also when the text happens to be digits.
bool is_text(std::string_view member) {
    constexpr std::array<std::string_view, 4> kTexts{"str_temp_string", "firmware_check",
                                                     "fault_word1", "fault_word2"};
    return std::find(kTexts.begin(), kTexts.end(), member) != kTexts.end();
}

EngineMembers engine_members(const link::Engine& engine) {
    EngineMembers members;
    for (const std::string_view name : link::Engine::member_names()) {
        const std::string text = engine.member(name).value_or("");
        bool whole = false;
        const qlonglong number = QString::fromStdString(text).toLongLong(&whole);
        if (whole && !is_text(name))
            members.emplace_back(name, static_cast<std::int64_t>(number));
        else
            members.emplace_back(name, text);
    }
    return members;
}

}  // namespace

StateDocument read_state(ShellAccess& shell) {
    StateDocument state;
    state.language = static_cast<int>(shell.workstation().language);
    state.title = utf8(shell.main_window()->windowTitle());
    for (const QString& key : shell.tools()) {
        state.toolbar.emplace_back(utf8(key), utf8(shell.tool_picture(key)));
        state.tooltips.emplace_back(utf8(key), utf8(shell.tool(key)->toolTip()));
    }
    for (const QString& item : shell.menu_items()) {
        const QAction* action = shell.menu_item(item);
        if (action == nullptr) continue;
        state.menus.push_back(
            {utf8(item), utf8(action->text()), action->isVisible(), action->isEnabled()});
    }
    state.engine = engine_members(shell.workstation().engine);
    for (const std::string_view name : link::kAllWindowNames)
        state.windows.push_back(window_state(shell, name));
    state.windows.push_back(window_state(shell, kJournalWindow));
    return state;
}

}  // namespace servo::app
