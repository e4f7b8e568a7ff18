// The list of all keys, from Help. Made from the table that the menus are made from.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "app/shortcuts.h"

class QPushButton;
class QTreeWidget;

namespace servo::app {

class WindowHost;
struct Workstation;

// Its name among the windows of the frame; it is none of `all_windows`.
inline constexpr const char* kKeyListWindow = "KeyList";

class KeysWindow final : public QWidget {
    Q_OBJECT

  public:
    // `list` is asked at the start and at each change of the language.
    explicit KeysWindow(std::function<std::vector<ShortcutGroup>()> list);

  Q_SIGNALS:
    void close_asked();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void fill();

    std::function<std::vector<ShortcutGroup>()> list_;
    QTreeWidget* tree_ = nullptr;
    QPushButton* close_ = nullptr;
};

// Tells the host how the window is made. Both outlive it.
void add_key_list(WindowHost& host, const Workstation& workstation);

}  // namespace servo::app
