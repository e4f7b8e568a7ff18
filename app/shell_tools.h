// The toolbar made from its table. Buttons 4 and 5 show the state of the link and of the drive.
#pragma once

#include <QAction>
#include <QMap>
#include <QToolBar>

#include "app/menu_table.h"

namespace servo::app {

class ShellTools final : public QToolBar {
    Q_OBJECT

  public:
    explicit ShellTools(QWidget* parent);

    void apply(base::Language language, dictionary::Variant variant);

    QAction* tool(const QString& key) const { return actions_.value(key); }

    // The picture of a button by its name. Writing the one that it shows does nothing.
    QString picture_of(const QString& key) const { return pictures_.value(key); }
    void set_picture(const QString& key, const QString& name);

  Q_SIGNALS:
    void chosen(const servo::app::ToolItem& item);

  private:
    QMap<QString, QAction*> actions_;
    QMap<QString, QString> pictures_;
};

}  // namespace servo::app
