#include "app/window_list.h"

#include <QMenu>
#include <utility>

#include "app/key_sequences.h"
#include "app/menu_hints.h"
#include "app/shell_menus.h"
#include "app/style.h"
#include "app/window_host.h"

namespace servo::app {

WindowList::WindowList(ShellMenus& menus, WindowHost& host, QObject* parent)
    : QObject(parent),
      menus_(menus),
      host_(host),
      view_(menus.menu(QStringLiteral("View"))),
      group_(this) {
    // One of them at the most is the active one; a box before each would promise something else.
    group_.setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    cascade_ = add("cascadex", "cascadepic", [this] { host_.cascade(); });
    tile_ = add("tilex", "tilepic", [this] { host_.tile(); });
    view_->addSeparator();
    next_ = add("nextx", nullptr, [this] { host_.activate_next(true); });
    previous_ = add("previousx", nullptr, [this] { host_.activate_next(false); });
    close_ = add("closex", nullptr, [this] { host_.close_active(); });
    next_->setShortcuts(key_sequences(ShortcutKind::kNextWindow));
    previous_->setShortcuts(key_sequences(ShortcutKind::kPreviousWindow));
    close_->setShortcuts(key_sequences(ShortcutKind::kCloseWindow));
    line_ = view_->addSeparator();
    connect(&host_, &WindowHost::changed, this, &WindowList::refresh);
    connect(view_, &QMenu::aboutToShow, this, &WindowList::refresh);
    refresh();
}

QAction* WindowList::add(const char* name, const char* picture_name, std::function<void()> run) {
    QAction* action = view_->addAction(QString());
    action->setObjectName(QLatin1String(name));
    if (picture_name != nullptr) action->setIcon(picture(QLatin1String(picture_name)));
    connect(action, &QAction::triggered, this, std::move(run));
    menus_.enlist(action);
    return action;
}

// Kept when its window closes, so that its key has not to be made anew each time.
QAction* WindowList::entry(int position) {
    if (position < entries_.size()) return entries_.at(position);
    const QByteArray name = "windowx(" + QByteArray::number(position) + ")";
    QAction* action = add(name.constData(), nullptr, [this, position] {
        const auto windows = host_.open_windows();
        if (position < static_cast<int>(windows.size()))
            host_.activate(windows[static_cast<std::size_t>(position)].name);
        refresh();  // a press on the active one has taken its mark
    });
    action->setCheckable(true);
    group_.addAction(action);
    action->setShortcut(
        QKeySequence::fromString(to_qt(window_key(position)), QKeySequence::PortableText));
    entries_ << action;
    return action;
}

void WindowList::refresh() {
    const auto windows = host_.open_windows();
    const int count = static_cast<int>(windows.size());
    for (int i = 0; i < count; ++i) {
        const OpenWindow& window = windows[static_cast<std::size_t>(i)];
        QAction* action = entry(i);
        action->setText(to_qt(entry_text(i, window.caption)));
        action->setChecked(window.active);
        action->setVisible(true);
    }
    for (int i = count; i < entries_.size(); ++i)
        entries_.at(i)->setVisible(false);
    line_->setVisible(count > 0);
    for (QAction* action : {next_, previous_, close_, cascade_, tile_})
        action->setEnabled(count > 0);
}

void WindowList::apply(base::Language language, dictionary::Variant variant) {
    const std::pair<QAction*, base::Text> texts[] = {{cascade_, kCascadeCaption},
                                                     {tile_, kTileCaption},
                                                     {next_, kNextWindowCaption},
                                                     {previous_, kPreviousWindowCaption},
                                                     {close_, kCloseWindowCaption}};
    for (const auto& [action, text] : texts) {
        action->setText(to_qt(text.in(language)));
        action->setStatusTip(to_qt(menu_hint(from_qt(action->objectName()), language, variant)));
    }
    refresh();
}

}  // namespace servo::app
