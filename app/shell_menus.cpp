#include "app/shell_menus.h"

#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include "app/style.h"

namespace servo::app {

namespace {

// Keys for the commands that are used all the time; the others are reached by the menus' letters.
QKeySequence shortcut_of(MenuKind kind) {
    switch (kind) {
        case MenuKind::kNewProject:
            return QKeySequence::New;
        case MenuKind::kOpenProject:
            return QKeySequence::Open;
        case MenuKind::kSaveProject:
            return QKeySequence::Save;
        case MenuKind::kQuit:
            return QKeySequence(Qt::CTRL | Qt::Key_Q);
        case MenuKind::kShowForm1:
            return QKeySequence(Qt::Key_F2);
        case MenuKind::kMenu:
        case MenuKind::kNothing:
        case MenuKind::kOpenPage:
        case MenuKind::kChinese:
        case MenuKind::kEnglish:
        case MenuKind::kArrange:
        case MenuKind::kErrorTable:
            break;
    }
    return {};
}

}  // namespace

ShellMenus::ShellMenus(QMenuBar* bar) : QObject(bar) {
    QMap<QString, QMenu*> menus;
    for (const MenuItem& item : menu_table()) {
        const QString name = to_qt(item.item);
        QMenu* parent = menus.value(to_qt(item.parent));
        if (item.kind == MenuKind::kMenu) {
            QMenu* menu = parent == nullptr ? bar->addMenu(QString()) : parent->addMenu(QString());
            menu->setObjectName(QStringLiteral("menu_") + name);
            menu->menuAction()->setObjectName(name);
            menus.insert(name, menu);
            actions_.insert(name, menu->menuAction());
            continue;
        }
        QAction* action = parent->addAction(QString());
        action->setObjectName(name);
        action->setShortcut(shortcut_of(item.kind));
        action->setMenuRole(QAction::NoRole);
        connect(action, &QAction::triggered, this, [this, &item] { Q_EMIT chosen(item); });
        actions_.insert(name, action);
    }
}

void ShellMenus::apply(base::Language language, dictionary::Variant variant) {
    for (const MenuItem& item : menu_table()) {
        QAction* action = actions_.value(to_qt(item.item));
        action->setText(to_qt(menu_caption(item, language, variant)));
        action->setVisible(menu_visible(item, variant));
    }
}

}  // namespace servo::app
