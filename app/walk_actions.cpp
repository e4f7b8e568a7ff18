#include "app/walk_actions.h"

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPainter>
#include <QPixmap>

#include "app/state_controls.h"
#include "app/state_document.h"
#include "app/state_reader.h"
#include "app/walk_control_actions.h"
#include "app/walk_input.h"
#include "base/file.h"

namespace servo::app {
namespace {

QString qt(const std::string& text) {
    return QString::fromStdString(text);
}

std::string no_such(const char* what, const std::string& name) {
    return std::string("no ") + what + " has the name '" + name + "'";
}

// Open lists and pop-up menus are windows of their own; a person sees them in the picture.
void draw_lists_and_menus(const QWidget& shown, QPixmap& picture) {
    QPainter painter(&picture);
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->windowType() != Qt::Popup || !window->isVisible()) continue;
        painter.drawPixmap(shown.mapFromGlobal(window->mapToGlobal(QPoint(0, 0))), window->grab());
    }
}

}  // namespace

QWidget* find_window_widget(ShellAccess& shell, const std::string& name) {
    if (name == "MDIForm1") return shell.main_window();
    return shell.window_widget(qt(name));
}

WalkActions::Found WalkActions::find(const WalkCommand& command) {
    Found found;
    found.window = find_window_widget(shell_, command.window);
    if (found.window == nullptr) {
        found.error = no_such("window", command.window);
        return found;
    }
    found.control = find_control(*found.window, qt(command.control));
    if (found.control == nullptr)
        found.error = command.window + " has no control '" + command.control + "'";
    return found;
}

std::string WalkActions::menu(const WalkCommand& command) {
    QAction* action = shell_.menu_item(qt(command.text));
    if (action == nullptr) return no_such("menu item", command.text);
    if (action->isVisible()) action->trigger();
    return {};
}

std::string WalkActions::tool(const WalkCommand& command) {
    QAction* action = shell_.tool(qt(command.text));
    if (action == nullptr) return no_such("toolbar button", command.text);
    if (action->isVisible()) action->trigger();
    return {};
}

std::string WalkActions::open(const WalkCommand& command) {
    return shell_.open_window(qt(command.window)) ? std::string{}
                                                  : no_such("window", command.window);
}

std::string WalkActions::close(const WalkCommand& command) {
    if (command.window == "MDIForm1") {
        shell_.main_window()->close();
        return {};
    }
    return shell_.close_window_by_name(qt(command.window)) ? std::string{}
                                                           : no_such("window", command.window);
}

std::string WalkActions::click(const WalkCommand& command) {
    const Found found = find(command);
    if (found.control != nullptr && control_usable(*found.control)) click_control(*found.control);
    return found.error;
}

std::string WalkActions::check(const WalkCommand& command) {
    const Found found = find(command);
    if (found.control == nullptr) return found.error;
    return check_control(*found.control, command.on);
}

std::string WalkActions::choose(const WalkCommand& command) {
    const Found found = find(command);
    if (found.control == nullptr) return found.error;
    return choose_position(*found.control, command.number);
}

std::string WalkActions::tab(const WalkCommand& command) {
    const Found found = find(command);
    if (found.control == nullptr) return found.error;
    return select_tab(*found.control, command.number);
}

std::string WalkActions::type(const WalkCommand& command) {
    const Found found = find(command);
    if (found.control == nullptr) return found.error;
    if (control_usable(*found.control)) type_into(*found.control, qt(command.text));
    return {};
}

std::string WalkActions::key(const WalkCommand& command) {
    const Found found = find(command);
    if (found.control == nullptr) return found.error;
    if (!control_usable(*found.control)) return {};
    found.control->setFocus(Qt::OtherFocusReason);
    for (const KeyStroke& stroke : command.keys) {
        // The control may hide itself on a key; what follows would go nowhere.
        if (control_usable(*found.control)) send_key(*found.control, stroke);
    }
    return {};
}

std::string WalkActions::cell(const WalkCommand& command) {
    const Found found = find(command);
    if (found.control == nullptr) return found.error;
    return click_cell(*found.control, command.row, command.column, command.button);
}

std::string WalkActions::edit(const WalkCommand& command) {
    const Found found = find(command);
    if (found.control == nullptr) return found.error;
    return edit_cell(*found.window, *found.control, command.row, command.column, qt(command.text));
}

std::string WalkActions::drag(const WalkCommand& command) {
    const Found found = find(command);
    if (found.control == nullptr) return found.error;
    if (!control_usable(*found.control)) return {};
    const QSize size = found.control->size();
    const auto point = [&](int x, int y) {
        return QPoint(size.width() * x / 1000, size.height() * y / 1000);
    };
    const auto [x1, y1, x2, y2] = command.points;
    send_drag(*found.control, point(x1, y1), point(x2, y2),
              command.button == WalkButton::kRight ? Qt::RightButton : Qt::LeftButton);
    return {};
}

std::string WalkActions::popup(const WalkCommand& command) {
    QMenu* menu = shell_.open_popup();
    if (menu == nullptr) return "no pop-up menu is open";
    for (QAction* action : menu->actions()) {
        if (action->objectName() != qt(command.text)) continue;
        if (!action->isEnabled() || !action->isVisible())
            return "the pop-up item '" + command.text + "' can't be picked now";
        menu->setActiveAction(action);
        send_key(*menu, {.key = NamedKey::kEnter});
        return {};
    }
    return no_such("pop-up item", command.text);
}

// A platform without windows of its own leaves none active when a list has closed, and the picture
// would show the keyboard nowhere.
void WalkActions::wake_up() {
    if (QApplication::activeWindow() != nullptr || QApplication::activePopupWidget() != nullptr)
        return;
    shell_.main_window()->activateWindow();
    QApplication::processEvents();
}

// The main window has no place of its own in a picture, a size only.
std::string WalkActions::place(const WalkCommand& command) {
    QWidget* placed = find_window_widget(shell_, command.window);
    if (placed == nullptr) return no_such("window", command.window);
    const auto [x, y, width, height] = command.points;
    if (placed == shell_.main_window()) {
        placed->resize(width, height);
    } else {
        auto* frame = qobject_cast<QMdiSubWindow*>(placed->parentWidget());
        if (frame == nullptr || !frame->isVisible()) return command.window + " is not open";
        if (frame->isMaximized() || frame->isMinimized()) frame->showNormal();
        frame->setGeometry(x, y, width, height);
    }
    QApplication::processEvents();
    return {};
}

std::string WalkActions::shot(const WalkCommand& command) {
    wake_up();
    QWidget* shown =
        command.window.empty() ? shell_.main_window() : find_window_widget(shell_, command.window);
    if (shown == nullptr) return no_such("window", command.window);
    // With its frame, as it is seen.
    if (auto* frame = qobject_cast<QMdiSubWindow*>(shown->parentWidget())) shown = frame;
    QPixmap picture = shown->grab();
    draw_lists_and_menus(*shown, picture);
    if (!picture.save(qt(command.text), "PNG"))
        return "the picture '" + command.text + "' could not be written";
    return {};
}

std::string WalkActions::state(const WalkCommand& command) {
    if (!base::write_file(command.text, state_json(read_state(shell_))))
        return "the file '" + command.text + "' could not be written";
    return {};
}

}  // namespace servo::app
