// The shell as a walkthrough, the state dump and the tests see it: everything by the names that the
// program's windows, controls and menu items carry.
//
// Controls of a window are its descendants with that objectName (`Command1`, `Check1(3)`); grids
// are QTableView with the grid's name, read and clicked by params/grid_access_view.h, where row 0
// is the header. A control whose objectName begins with "qt_" or is empty is the toolkit's own.
#pragma once

#include <QString>
#include <QStringList>

#include "app/user_dialogs.h"
#include "app/workstation.h"

class QAction;
class QMainWindow;
class QMenu;
class QWidget;

namespace servo::app {

// Stands between the program and the boxes on screen, so that they can be answered without a
// person.
class DialogSwitch final : public UserDialogs {
  public:
    explicit DialogSwitch(UserDialogs& real) : now_(&real) {}
    void use(UserDialogs& dialogs) { now_ = &dialogs; }
    UserDialogs& current() const { return *now_; }
    base::Answer show(std::string_view title, std::string_view text,
                      base::Buttons buttons) override {
        return now_->show(title, text, buttons);
    }
    std::optional<std::string> ask_file(const FileRequest& request) override {
        return now_->ask_file(request);
    }

  private:
    UserDialogs* now_;
};

class ShellAccess {
  public:
    ShellAccess() = default;
    ShellAccess(const ShellAccess&) = delete;
    ShellAccess& operator=(const ShellAccess&) = delete;
    virtual ~ShellAccess() = default;

    virtual Workstation& workstation() = 0;
    virtual DialogSwitch& dialogs() = 0;

    // MDIForm1 itself.
    virtual QMainWindow* main_window() = 0;

    // The widget of a window in `all_windows`, made now if it was not needed before; null for a
    // name that is none, and for windows that the program does not have yet. Its windowTitle is the
    // caption; its visibility is link::Window::visible().
    virtual QWidget* window_widget(const QString& name) = 0;

    // Menu items by their item name; menus too (their menuAction). null when there is none.
    virtual QAction* menu_item(const QString& item) = 0;
    virtual QStringList menu_items() const = 0;  // in the order of the menu table

    // Toolbar buttons by key ("commx"): toolTip is the tip, and the picture by its name.
    virtual QAction* tool(const QString& key) = 0;
    virtual QStringList tools() const = 0;  // left to right
    virtual QString tool_picture(const QString& key) const = 0;

    // The pop-up menu `xpop` while it is open, else null. Its actions carry the item names.
    virtual QMenu* open_popup() = 0;

    // The opening route and the close box, by name. False for a name that is none.
    virtual bool open_window(const QString& name) = 0;
    virtual bool close_window_by_name(const QString& name) = 0;

    // The quit command.
    virtual void quit_program() = 0;
};

}  // namespace servo::app
