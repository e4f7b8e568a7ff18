#include "app/child_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMenu>
#include <QPushButton>
#include <algorithm>
#include <array>
#include <utility>

#include "app/style.h"

namespace servo::app {

namespace {

// The toolkit's items by their names there, which are English.
constexpr std::array kMenuTexts{
    std::pair{"qt_Restore", base::Text{"还原(&R)", "&Restore"}},
    std::pair{"qt_Move", base::Text{"移动(&M)", "&Move"}},
    std::pair{"qt_Size", base::Text{"大小(&S)", "&Size"}},
    std::pair{"qt_Minimize", base::Text{"最小化(&N)", "Mi&nimize"}},
    std::pair{"qt_Maximize", base::Text{"最大化(&X)", "Ma&ximize"}},
    std::pair{"qt_Stay on Top", base::Text{"总在最前(&T)", "Stay on &Top"}},
    std::pair{"qt_Close", base::Text{"关闭(&C)", "&Close"}},
};

}  // namespace

ChildWindow::ChildWindow(QWidget* content, Kind kind) : kind_(kind) {
    setWidget(content);
    setAttribute(Qt::WA_DeleteOnClose, false);
    if (kind_ == Kind::kDialog)
        setWindowFlags(Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                       Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    prepare_menu();
}

// Keys are given out in one place, the program's menus; the toolkit's own for closing would clash
// with the same key there.
void ChildWindow::prepare_menu() {
    for (QAction* action : systemMenu()->actions()) {
        action->setShortcuts(QList<QKeySequence>{});
        action->setObjectName(QStringLiteral("qt_") + action->text().remove(QLatin1Char('&')));
    }
}

void ChildWindow::apply_language(base::Language language) {
    for (QAction* action : systemMenu()->actions())
        for (const auto& [name, text] : kMenuTexts)
            if (action->objectName() == QLatin1String(name))
                action->setText(to_qt(text.in(language)));
}

// Never smaller than its content needs by now, or a text that has grown would be cut.
bool ChildWindow::event(QEvent* event) {
    const bool done = QMdiSubWindow::event(event);
    if (event->type() == QEvent::LayoutRequest && !isMinimized() && !isMaximized() && !isShaded()) {
        if (size().expandedTo(minimumSizeHint()) != size()) put(place());
    }
    return done;
}

void ChildWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    Q_EMIT close_asked();
}

void ChildWindow::keyPressEvent(QKeyEvent* event) {
    if (kind_ == Kind::kDialog && event->key() == Qt::Key_Escape) {
        Q_EMIT close_asked();
        return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (QPushButton* button = enter ? entered_button() : nullptr; button != nullptr) {
        if (!event->isAutoRepeat()) button->click();
        return;
    }
    QMdiSubWindow::keyPressEvent(event);
}

// The toolkit gives Enter to buttons in dialogs of their own only. What a control had a use for
// does not come here.
QPushButton* ChildWindow::entered_button() const {
    auto* focused = qobject_cast<QPushButton*>(QApplication::focusWidget());
    if (focused != nullptr && isAncestorOf(focused)) return focused;
    for (QPushButton* button : widget()->findChildren<QPushButton*>())
        if (button->isDefault() && button->isVisible() && button->isEnabled()) return button;
    return nullptr;
}

void ChildWindow::moveEvent(QMoveEvent* event) {
    QMdiSubWindow::moveEvent(event);
    keep_geometry();
}

void ChildWindow::resizeEvent(QResizeEvent* event) {
    QMdiSubWindow::resizeEvent(event);
    keep_geometry();
}

WindowPlace ChildWindow::place() const {
    PlaceState state = PlaceState::kNormal;
    if (isMinimized()) state = PlaceState::kMinimized;
    if (isMaximized()) state = PlaceState::kMaximized;
    return {{normal_.x(), normal_.y()}, {normal_.width(), normal_.height()}, state};
}

// A window that needs more than it is given stays in view with what it takes.
void ChildWindow::put(const WindowPlace& place) {
    const QSize given(place.size.width, place.size.height);
    const QSize needed = given.expandedTo(minimumSizeHint());
    QPoint corner(place.corner.x, place.corner.y);
    if (const QMdiArea* area = mdiArea(); area != nullptr && needed != given) {
        const QSize room = area->viewport()->size() - needed;
        corner.setX(std::clamp(room.width(), 0, std::max(corner.x(), 0)));
        corner.setY(std::clamp(room.height(), 0, std::max(corner.y(), 0)));
    }
    setGeometry(QRect(corner, needed));
}

// The toolkit keeps the normal place of a child window to itself.
void ChildWindow::keep_geometry() {
    if (!isMinimized() && !isMaximized() && !isShaded()) normal_ = geometry();
}

}  // namespace servo::app
