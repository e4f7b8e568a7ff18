#include "app/shell_tools.h"

#include "app/key_sequences.h"
#include "app/menu_hints.h"
#include "app/style.h"

namespace servo::app {

namespace {

constexpr int kIconSize = 24;

}  // namespace

ShellTools::ShellTools(QWidget* parent) : QToolBar(parent) {
    setObjectName(QStringLiteral("Toolbar1"));
    setIconSize(QSize(kIconSize, kIconSize));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    for (const ToolItem& item : tool_table()) {
        if (item.new_group) addSeparator();
        QAction* action = addAction(QString());
        action->setObjectName(to_qt(item.key));
        action->setShortcuts(key_sequences(ShortcutKind::kTool, item.key));
        connect(action, &QAction::triggered, this, [this, &item] { Q_EMIT chosen(item); });
        actions_.insert(to_qt(item.key), action);
        set_picture(to_qt(item.key), to_qt(item.picture));
    }
}

void ShellTools::apply(base::Language language, dictionary::Variant variant) {
    for (const ToolItem& item : tool_table()) {
        const QString tip = to_qt(tool_tip(item, language, variant));
        QAction* action = actions_.value(to_qt(item.key));
        action->setText(tip);
        action->setToolTip(tip);
        // A button that stands for a menu item says what the item says.
        const std::string_view named = item.kind == ToolKind::kMenuItem ? item.item : item.key;
        action->setStatusTip(to_qt(menu_hint(named, language, variant)));
    }
}

void ShellTools::set_picture(const QString& key, const QString& name) {
    if (pictures_.value(key) == name) return;
    pictures_.insert(key, name);
    const bool tells_state = key == to_qt(kLinkTool) || key == to_qt(kFaultTool);
    actions_.value(key)->setIcon(tells_state ? state_picture(name) : picture(name));
}

}  // namespace servo::app
