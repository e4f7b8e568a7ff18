// Which widget each of the program's windows is made of, and what its signals lead to.
#pragma once

#include <QPoint>
#include <QString>
#include <functional>

#include "app/workstation.h"

namespace servo::app {

class UserDialogs;
class WindowHost;

// Where the windows' signals go.
struct WindowHooks {
    // A grid asks for its pop-up menu, at that place of the screen.
    std::function<void(link::Window&, params::PageGrid&, const QPoint&)> popup;
    std::function<void(const QString& name)> close;
    UserDialogs& dialogs;  // outlives the host
};

// Tells the host how each window is made. The workstation outlives the host.
void add_shell_windows(WindowHost& host, Workstation& workstation, const WindowHooks& hooks);

}  // namespace servo::app
