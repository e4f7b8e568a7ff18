#include "app/shell_menus.h"

#include <QMenu>
#include <QMenuBar>
#include <array>

#include "app/key_sequences.h"
#include "app/menu_hints.h"
#include "app/style.h"
#include "tools/journal.h"

namespace servo::app {

namespace {

struct ItemPicture {
    std::string_view item;
    const char* picture;
};

// Items that a picture helps to find: those of the toolbar, and what is looked for every day. A
// picture at every item would help nobody.
constexpr std::array kPictures{
    ItemPicture{"new1", "newpic"},
    ItemPicture{"open1", "openpic"},
    ItemPicture{"save1", "savepic"},
    ItemPicture{"quit1", "quitpic"},
    ItemPicture{"Communication_Settings", "settingspic"},
    ItemPicture{"Basic_Operation", "pagepic"},
    ItemPicture{"IO_Port_settings", "IOpic"},
    ItemPicture{"ODs", "dictionarypic"},
    ItemPicture{"Scopex", "scopepic"},
    ItemPicture{"tunner", "tunerpic"},
    ItemPicture{"Real_time_error", "faultpic"},
    ItemPicture{"ErrHistory1", "historypic"},
    ItemPicture{"Initandsave", "storepic"},
    ItemPicture{"Download_Tool", "firmwarepic"},
    ItemPicture{"Motor_Config", "motorpic"},
    ItemPicture{"import_export", "configpic"},
    ItemPicture{"showminx", "arrangepic"},
    ItemPicture{"aboutx", "aboutpic"},
    ItemPicture{"ODs2", "dictionarypic"},
    ItemPicture{"fastset", "wizardpic"},
    ItemPicture{"ModBusList", "listpic"},
    ItemPicture{"moremotors", "motorpic"},
};

void give_picture(QAction& action, std::string_view item) {
    for (const ItemPicture& entry : kPictures)
        if (entry.item == item) action.setIcon(picture(QLatin1String(entry.picture)));
}

}  // namespace

ShellMenus::ShellMenus(QMenuBar* bar) : QObject(bar) {
    QMap<QString, QMenu*> menus;
    for (const MenuItem& item : menu_table()) {
        const QString name = to_qt(item.item);
        QMenu* parent = menus.value(to_qt(item.parent));
        if (item.kind != MenuKind::kMenu) {
            actions_.insert(name, add_item(item, *parent));
            continue;
        }
        QMenu* menu = parent == nullptr ? bar->addMenu(QString()) : parent->addMenu(QString());
        menu->setObjectName(QStringLiteral("menu_") + name);
        menu->menuAction()->setObjectName(name);
        menus.insert(name, menu);
        actions_.insert(name, menu->menuAction());
    }
    add_own_items();
}

QAction* ShellMenus::add_item(const MenuItem& item, QMenu& parent) {
    QAction* action = parent.addAction(QString());
    action->setObjectName(to_qt(item.item));
    action->setShortcuts(key_sequences(ShortcutKind::kMenuItem, item.item));
    action->setMenuRole(QAction::NoRole);
    give_picture(*action, item.item);
    connect(action, &QAction::triggered, this, [this, &item] { Q_EMIT chosen(item); });
    return action;
}

void ShellMenus::add_own_items() {
    QMenu* file = menu(QStringLiteral("file"));
    QAction* quit = action(QStringLiteral("quit1"));
    recent_ = new QMenu(file);
    recent_->setObjectName(QStringLiteral("menu_recentx"));
    recent_->menuAction()->setObjectName(QStringLiteral("recentx"));
    recent_->menuAction()->setVisible(false);
    file->insertMenu(quit, recent_);
    file->insertSeparator(quit);
    enlist(recent_->menuAction());

    auto* journal = new QAction(this);
    journal->setObjectName(QStringLiteral("journalx"));
    journal->setShortcuts(key_sequences(ShortcutKind::kJournal));
    connect(journal, &QAction::triggered, this, &ShellMenus::journal_asked);
    menu(QStringLiteral("Tools"))->insertAction(action(QStringLiteral("Change_Language")), journal);
    enlist(journal);

    QMenu* help = menu(QStringLiteral("help"));
    help->addSeparator();
    QAction* keys = help->addAction(picture(QStringLiteral("keyspic")), QString());
    keys->setObjectName(QStringLiteral("keysx"));
    keys->setShortcuts(key_sequences(ShortcutKind::kKeyList));
    connect(keys, &QAction::triggered, this, &ShellMenus::keys_asked);
    enlist(keys);
}

QMenu* ShellMenus::menu(const QString& item) const {
    const QAction* found = actions_.value(item);
    return found == nullptr ? nullptr : found->menu();
}

void ShellMenus::enlist(QAction* action) {
    actions_.insert(action->objectName(), action);
}

void ShellMenus::apply(base::Language language, dictionary::Variant variant) {
    for (const MenuItem& item : menu_table()) {
        QAction* action = actions_.value(to_qt(item.item));
        action->setText(to_qt(menu_caption(item, language, variant)));
        action->setVisible(menu_visible(item, variant));
    }
    for (QAction* action : std::as_const(actions_))
        action->setStatusTip(to_qt(menu_hint(from_qt(action->objectName()), language, variant)));
    apply_own(language);
}

void ShellMenus::apply_own(base::Language language) {
    action(QStringLiteral("journalx"))->setText(to_qt(tools::kJournalCaption.in(language)));
    action(QStringLiteral("keysx"))->setText(to_qt(kKeyListCaption.in(language)));
    // One key to and fro: it belongs to the language that is not on.
    const bool chinese = language == base::Language::kChinese;
    const QList<QKeySequence> other = key_sequences(ShortcutKind::kOtherLanguage);
    action(QStringLiteral("chinese"))->setShortcuts(chinese ? QList<QKeySequence>{} : other);
    action(QStringLiteral("English"))->setShortcuts(chinese ? other : QList<QKeySequence>{});
}

}  // namespace servo::app
