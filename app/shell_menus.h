// The menu bar made from the menu table: one action for each item, named like it.
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

    // Captions, the mark of the language, items that the variant leaves out.
    void apply(base::Language language, dictionary::Variant variant);

    // Of an item or of a menu; null for a name that is none.
    QAction* action(const QString& item) const { return actions_.value(item); }

  Q_SIGNALS:
    void chosen(const servo::app::MenuItem& item);

  private:
    QMap<QString, QAction*> actions_;
};

}  // namespace servo::app
