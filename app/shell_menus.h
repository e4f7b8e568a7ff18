// The menu bar made from the menu table: one action for each item, named like it. Behind the told
// items stand a few of the frame's own: recent files, the windows (see window_list.h) and the list
// of keys.
#pragma once

#include <QAction>
#include <QMap>
#include <QObject>
#include <QStringList>

#include "app/menu_table.h"

class QMenu;
class QMenuBar;

namespace servo::app {

class ShellMenus final : public QObject {
    Q_OBJECT

  public:
    explicit ShellMenus(QMenuBar* bar);

    // Captions, the mark of the language, items that the variant leaves out, hints.
    void apply(base::Language language, dictionary::Variant variant);

    // Of an item or of a menu; null for a name that is none. "keysx" and what was enlisted too.
    QAction* action(const QString& item) const { return actions_.value(item); }

    // A menu of the table; null for a name that is none.
    QMenu* menu(const QString& item) const;

    // The menu of recent files, below the file items; hidden until it is filled.
    QMenu* recent_menu() const { return recent_; }

    // Makes an item of the frame's own known by its object name.
    void enlist(QAction* action);

  Q_SIGNALS:
    void chosen(const servo::app::MenuItem& item);
    // The list of keys in Help.
    void keys_asked();
    // The journal of writes in Tools.
    void journal_asked();

  private:
    QAction* add_item(const MenuItem& item, QMenu& parent);
    void add_own_items();
    void apply_own(base::Language language);

    QMap<QString, QAction*> actions_;
    QMenu* recent_ = nullptr;
};

}  // namespace servo::app
