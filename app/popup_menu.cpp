#include "app/popup_menu.h"

#include "app/style.h"

namespace servo::app {

PopupMenu::PopupMenu(QWidget* parent) : QMenu(parent) {
    setObjectName(QStringLiteral("xpop"));
    for (const MenuItem& item : popup_table()) {
        const QString name = to_qt(item.item);
        QAction* action = addAction(QString());
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, [this, name] { Q_EMIT chosen(name); });
        actions_.insert(name, action);
    }
    // They copy rows of the position table, which no page is.
    actions_.value(QStringLiteral("copyline"))->setVisible(false);
    actions_.value(QStringLiteral("pasteline"))->setVisible(false);
}

void PopupMenu::apply(base::Language language, dictionary::Variant variant) {
    for (const MenuItem& item : popup_table())
        actions_.value(to_qt(item.item))->setText(to_qt(menu_caption(item, language, variant)));
}

}  // namespace servo::app
