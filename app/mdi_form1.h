// `MDIForm1`: the main window. Makes menu, toolbar, background and windows, and connects them with
// the workstation; the rules are there.
#pragma once

#include <QMainWindow>
#include <QPoint>
#include <QTimer>

#include "app/link_meter.h"
#include "app/screen.h"
#include "app/shell_access.h"
#include "app/toolkit_texts.h"
#include "app/workstation.h"

namespace servo::params {
class PageGrid;
}

namespace servo::app {

class BackgroudForm;
class DeskKeeper;
class Form1Window;
class PopupMenu;
class ShellCommands;
class ShellFiles;
class ShellMenus;
class ShellTools;
class StatusStrip;
class WindowHost;
class WindowList;

class MDIForm1 final : public QMainWindow, public Screen, public ShellAccess {
    Q_OBJECT

  public:
    MDIForm1(Workstation& workstation, DialogSwitch& dialogs);
    ~MDIForm1() override;

    // Whether the program has that window; makes none.
    bool has_window(const QString& name) const;

    // Puts windows and recent files where the keeper remembers them, and has it remember them again
    // at the end. It outlives the main window. Before the main window is shown.
    void use_desk(DeskKeeper& desk);

    // Screen
    void show_background() override;
    void apply_variant() override;
    void show_window(link::Window& window) override;
    void hide_window(link::Window& window) override;
    std::string active_window() const override;
    void apply_language() override;
    void unload_all() override;

    // ShellAccess
    Workstation& workstation() override { return workstation_; }
    DialogSwitch& dialogs() override { return dialogs_; }
    QMainWindow* main_window() override { return this; }
    QWidget* window_widget(const QString& name) override;
    QAction* menu_item(const QString& item) override;
    QStringList menu_items() const override;
    QAction* tool(const QString& key) override;
    QStringList tools() const override;
    QString tool_picture(const QString& key) const override;
    QMenu* open_popup() override;
    bool open_window(const QString& name) override;
    bool close_window_by_name(const QString& name) override;
    void quit_program() override;

  Q_SIGNALS:
    // Every window is gone, and the program ends.
    void unloaded();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void add_windows();
    void connect_shell();
    void connect_link();
    void follow_communication();
    void show_pictures();
    void show_figures();

    Workstation& workstation_;
    DialogSwitch& dialogs_;
    BackgroudForm* background_ = nullptr;
    ShellMenus* menus_ = nullptr;
    ShellTools* tools_ = nullptr;
    PopupMenu* xpop_ = nullptr;
    WindowHost* host_ = nullptr;
    ShellFiles* files_ = nullptr;
    ShellCommands* commands_ = nullptr;
    WindowList* windows_ = nullptr;
    StatusStrip* strip_ = nullptr;
    DeskKeeper* desk_ = nullptr;  // not owned; null: nothing is remembered
    QTimer Timer2_;               // arranges the icons of minimised windows
    LinkMeter meter_;
    QTimer meter_timer_;  // looks at the engine's counters for the status bar
    ToolkitTexts toolkit_texts_;
    bool unloaded_ = false;
};

}  // namespace servo::app
