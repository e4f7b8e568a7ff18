#include "app/recent_menu.h"

#include <utility>

#include "app/style.h"

namespace servo::app {

RecentMenu::RecentMenu(QMenu& menu, std::function<std::vector<RecentEntry>()> list)
    : QObject(&menu), menu_(menu), list_(std::move(list)) {
    connect(&menu_, &QMenu::aboutToShow, this, &RecentMenu::fill);
}

void RecentMenu::apply(base::Language language) {
    language_ = language;
    menu_.setTitle(to_qt(kRecentTitle.in(language)));
    fill();
    menu_.menuAction()->setVisible(menu_.actions().size() > 2);
}

void RecentMenu::fill() {
    menu_.clear();
    int position = 0;
    for (const RecentEntry& entry : list_()) {
        const QString path = to_qt(entry.path);
        QAction* action = menu_.addAction(to_qt(entry.text));
        action->setObjectName(QStringLiteral("recentx(%1)").arg(position++));
        action->setStatusTip(path);
        action->setEnabled(entry.enabled);
        connect(action, &QAction::triggered, this, [this, path] { Q_EMIT chosen(path); });
    }
    menu_.addSeparator();
    QAction* clear = menu_.addAction(to_qt(kRecentClear.in(language_)));
    clear->setObjectName(QStringLiteral("clearrecentx"));
    connect(clear, &QAction::triggered, this, &RecentMenu::clear_asked);
}

}  // namespace servo::app
