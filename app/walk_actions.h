// What the commands of a walkthrough do to the program, through its real controls. Each gives an
// empty text, or what is wrong: a name that is none, an editor that does not open.
//
// On a control that is disabled or hidden nothing happens, as for a person.
#pragma once

#include <QWidget>
#include <string>

#include "app/shell_access.h"
#include "app/walk_script.h"

class QComboBox;

namespace servo::app {

class WalkActions {
  public:
    explicit WalkActions(ShellAccess& shell) : shell_(shell) {}

    std::string menu(const WalkCommand& command);
    std::string tool(const WalkCommand& command);
    std::string open(const WalkCommand& command);
    std::string close(const WalkCommand& command);
    std::string click(const WalkCommand& command);
    std::string check(const WalkCommand& command);
    std::string choose(const WalkCommand& command);
    std::string tab(const WalkCommand& command);
    std::string type(const WalkCommand& command);
    std::string key(const WalkCommand& command);
    std::string cell(const WalkCommand& command);
    std::string edit(const WalkCommand& command);
    std::string drag(const WalkCommand& command);
    std::string popup(const WalkCommand& command);
    std::string place(const WalkCommand& command);
    std::string shot(const WalkCommand& command);
    void wake_up();
    std::string state(const WalkCommand& command);

  private:
    struct Found {
        QWidget* window = nullptr;
        QWidget* control = nullptr;
        std::string error;
    };
    Found find(const WalkCommand& command);

    ShellAccess& shell_;
};

// The widget of a window, the main one included; null for a name that is none.
QWidget* find_window_widget(ShellAccess& shell, const std::string& name);

}  // namespace servo::app
