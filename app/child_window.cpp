#include "app/child_window.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace servo::app {

ChildWindow::ChildWindow(QWidget* content, Kind kind) : kind_(kind) {
    setWidget(content);
    setAttribute(Qt::WA_DeleteOnClose, false);
    if (kind_ == Kind::kDialog)
        setWindowFlags(Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                       Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
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
    QMdiSubWindow::keyPressEvent(event);
}

}  // namespace servo::app
