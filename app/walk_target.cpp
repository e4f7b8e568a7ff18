#include "app/walk_target.h"

#include <QMainWindow>
#include <QTableView>

#include "app/state_controls.h"
#include "app/walk_actions.h"
#include "link/engine.h"
#include "params/grid_access_view.h"

namespace servo::app {
namespace {

TargetText text(std::string found) {
    return {std::move(found), {}};
}

TargetText text(const QString& found) {
    return {found.toStdString(), {}};
}

TargetText text(bool found) {
    return {found ? "true" : "false", {}};
}

TargetText error(std::string why) {
    return {{}, std::move(why)};
}

TargetText read_tool(ShellAccess& shell, const std::string& key) {
    const QString name = QString::fromStdString(key);
    if (shell.tool(name) == nullptr) return error("no toolbar button has the name '" + key + "'");
    return text(shell.tool_picture(name));
}

TargetText read_engine(ShellAccess& shell, const std::string& member) {
    const std::optional<std::string> value = shell.workstation().engine.member(member);
    return value ? text(*value) : error("no member of the engine has the name '" + member + "'");
}

TargetText window_visible(ShellAccess& shell, const std::string& name) {
    if (name == "MDIForm1") return text(shell.main_window()->isVisible());
    const link::Window* window = shell.workstation().find_window(name);
    return window != nullptr ? text(window->visible())
                             : error("no window has the name '" + name + "'");
}

TargetText read_grid(const QTableView& grid, const WalkTarget& target) {
    if (target.kind == TargetKind::kRow)
        return text(std::to_string(params::grid_current_row(grid)));
    if (target.row >= params::grid_rows(grid) || target.column >= params::grid_columns(grid))
        return error(target.control + " has no cell [" + std::to_string(target.row) + "," +
                     std::to_string(target.column) + "]");
    return text(params::grid_text(grid, target.row, target.column));
}

TargetText read_control(const QWidget& window, const WalkTarget& target) {
    const QWidget* control = find_control(window, QString::fromStdString(target.control));
    if (control == nullptr)
        return error(target.window + " has no control '" + target.control + "'");
    switch (target.kind) {
        case TargetKind::kText:
            return text(control_text(*control));
        case TargetKind::kEnabled:
            return text(control->isEnabled());
        case TargetKind::kControlVisible:
            return text(control_shown(*control, window));
        case TargetKind::kCell:
        case TargetKind::kRow: {
            const auto* grid = qobject_cast<const QTableView*>(control);
            return grid != nullptr ? read_grid(*grid, target)
                                   : error(target.control + " is no grid");
        }
        case TargetKind::kCaption:
        case TargetKind::kWindowVisible:
        case TargetKind::kToolbar:
        case TargetKind::kEngine:
            break;
    }
    return error("no text");
}

}  // namespace

TargetText read_target(ShellAccess& shell, const WalkTarget& target) {
    if (target.kind == TargetKind::kToolbar) return read_tool(shell, target.control);
    if (target.kind == TargetKind::kEngine) return read_engine(shell, target.control);
    if (target.kind == TargetKind::kWindowVisible) return window_visible(shell, target.window);
    const QWidget* window = find_window_widget(shell, target.window);
    if (window == nullptr) return error("no window has the name '" + target.window + "'");
    if (target.kind == TargetKind::kCaption) return text(window->windowTitle());
    return read_control(*window, target);
}

std::string target_name(const WalkTarget& target) {
    std::string control = target.window + "." + target.control;
    switch (target.kind) {
        case TargetKind::kText:
            return control;
        case TargetKind::kCell:
            return control + "[" + std::to_string(target.row) + "," +
                   std::to_string(target.column) + "]";
        case TargetKind::kRow:
            return control + ".row";
        case TargetKind::kEnabled:
            return control + ".enabled";
        case TargetKind::kControlVisible:
            return control + ".visible";
        case TargetKind::kCaption:
            return target.window + ".caption";
        case TargetKind::kWindowVisible:
            return target.window + ".visible";
        case TargetKind::kToolbar:
            return "toolbar." + target.control;
        case TargetKind::kEngine:
            return "engine." + target.control;
    }
    return control;
}

}  // namespace servo::app
