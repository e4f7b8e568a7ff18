// `xpop`: the pop-up menu of a grid row.
#pragma once

#include <QAction>
#include <QMap>
#include <QMenu>

#include "app/menu_table.h"

namespace servo::app {

class PopupMenu final : public QMenu {
    Q_OBJECT

  public:
    explicit PopupMenu(QWidget* parent);

    void apply(base::Language language, dictionary::Variant variant);

    QAction* entry(const QString& item) const { return actions_.value(item); }

  Q_SIGNALS:
    void chosen(const QString& item);

  private:
    QMap<QString, QAction*> actions_;
};

}  // namespace servo::app
