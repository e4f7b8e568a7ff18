#include "app/keys_window.h"

#include <QEvent>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <utility>

#include "app/language_walker.h"
#include "app/style.h"
#include "app/window_host.h"
#include "app/workstation.h"

namespace servo::app {

namespace {

constexpr int kMargin = 16;
constexpr int kSpacing = 8;
constexpr QSize kWantedSize{460, 520};

}  // namespace

KeysWindow::KeysWindow(std::function<std::vector<ShortcutGroup>()> list) : list_(std::move(list)) {
    tree_ = new QTreeWidget(this);
    tree_->setObjectName(QStringLiteral("Keys"));
    tree_->setColumnCount(2);
    tree_->setHeaderHidden(true);
    tree_->setRootIsDecorated(false);
    tree_->setItemsExpandable(false);
    tree_->setUniformRowHeights(true);
    tree_->setIndentation(kMargin);
    tree_->setSelectionMode(QAbstractItemView::SingleSelection);
    tree_->setAllColumnsShowFocus(true);
    tree_->header()->setStretchLastSection(true);
    close_ = new QPushButton(this);
    close_->setObjectName(QStringLiteral("Command1"));  // closes
    close_->setProperty(kTag, QStringLiteral("关闭/Close"));
    close_->setAutoDefault(true);
    connect(close_, &QPushButton::clicked, this, &KeysWindow::close_asked);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addWidget(tree_);
    layout->addWidget(close_, 0, Qt::AlignRight);
    tree_->setMinimumSize(kWantedSize);
    setFocusProxy(tree_);
    fill();
}

void KeysWindow::fill() {
    tree_->clear();
    const QSize row(0, tree_->fontMetrics().height() + kSpacing);
    for (const ShortcutGroup& group : list_()) {
        auto* title = new QTreeWidgetItem(tree_, {to_qt(group.title)});
        QFont bold = tree_->font();
        bold.setBold(true);
        title->setFont(0, bold);
        title->setFlags(Qt::ItemIsEnabled);
        title->setFirstColumnSpanned(true);
        title->setSizeHint(0, row);
        for (const ShortcutLine& line : group.lines)
            new QTreeWidgetItem(title, {to_qt(line.command), to_qt(line.keys)});
    }
    tree_->expandAll();
    tree_->resizeColumnToContents(0);
    tree_->setColumnWidth(0, tree_->columnWidth(0) + kMargin);
}

void KeysWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) {
        tree_->setAccessibleName(windowTitle());
        tree_->setFont(close_->font());  // the language's
        fill();
    }
    QWidget::changeEvent(event);
}

void add_key_list(WindowHost& host, const Workstation& workstation) {
    const auto make = [&host, &workstation] {
        auto* window = new KeysWindow([&workstation] {
            return shortcut_list(workstation.language, workstation.Tavro_Nevra_Other_mode);
        });
        QObject::connect(window, &KeysWindow::close_asked, &host,
                         [&host] { host.hide(kKeyListWindow); });
        return window;
    };
    const auto caption = [](base::Language language) {
        return to_qt(kKeyListCaption.in(language));
    };
    host.add_kind(kKeyListWindow, {.make = make,
                                   .caption = caption,
                                   .frame = ChildWindow::Kind::kDialog,
                                   .of_the_frame = true});
}

}  // namespace servo::app
