// The windows' part of the menu View: to and fro between windows, closing, arranging, and the open
// ones by number with the active one marked.
#pragma once

#include <QAction>
#include <QActionGroup>
#include <QList>
#include <QObject>
#include <functional>

#include "base/language.h"
#include "dictionary/store.h"

class QMenu;

namespace servo::app {

class ShellMenus;
class WindowHost;

class WindowList final : public QObject {
    Q_OBJECT

  public:
    // Both outlive the list. The items are known to the menus by their names: nextx, previousx,
    // closex, cascadex, tilex, and windowx(0) and so on for the open windows.
    WindowList(ShellMenus& menus, WindowHost& host, QObject* parent);

    void apply(base::Language language, dictionary::Variant variant);

  private:
    QAction* add(const char* name, const char* picture, std::function<void()> run);
    QAction* entry(int position);
    void refresh();

    ShellMenus& menus_;
    WindowHost& host_;
    QMenu* view_ = nullptr;
    QAction* next_ = nullptr;
    QAction* previous_ = nullptr;
    QAction* close_ = nullptr;
    QAction* cascade_ = nullptr;
    QAction* tile_ = nullptr;
    QAction* line_ = nullptr;  // above the windows
    QList<QAction*> entries_;  // as many as were ever open at a time
    QActionGroup group_;       // of the entries
};

}  // namespace servo::app
