// What the menus, the toolbar and the pop-up menu of a grid do.
#pragma once

#include <QObject>

#include "app/workstation.h"

class QPoint;

namespace servo::app {

class BackgroudForm;
class PopupMenu;
class ShellFiles;
class WindowHost;
struct MenuItem;
struct ToolItem;

class ShellCommands final : public QObject {
    Q_OBJECT

  public:
    // Everything given outlives the commands.
    struct Parts {
        Workstation& workstation;
        ShellFiles& files;
        WindowHost& host;
        BackgroudForm& background;
        PopupMenu& xpop;
    };
    explicit ShellCommands(const Parts& parts, QObject* parent = nullptr);

    void run_menu(const MenuItem& item);
    void run_tool(const ToolItem& item);
    void run_popup(const QString& item);

    // The opening route, by window name. False for a name that is none.
    bool open_window(const QString& name);
    // The close box.
    bool close_window_by_name(const QString& name);

    // The pop-up menu on the row that was clicked in a window's grid.
    void show_popup(link::Window& window, params::PageGrid& grid, const QPoint& place);

  private:
    void open_error_table();

    Workstation& workstation_;
    ShellFiles& files_;
    WindowHost& host_;
    BackgroudForm& background_;
    PopupMenu& xpop_;
};

}  // namespace servo::app
