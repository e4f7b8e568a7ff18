#include "params/leave_watch_view.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <utility>

namespace servo::params {

LeaveWatch::LeaveWatch(QWidget& window, std::function<void()> left)
    : window_(window), left_(std::move(left)) {
    window_.installEventFilter(this);
    watch_frame();
}

bool LeaveWatch::eventFilter(QObject*, QEvent* event) {
    const bool leaves = event->type() == QEvent::Close || event->type() == QEvent::Hide ||
                        (event->type() == QEvent::WindowDeactivate && window_.isWindow());
    if (leaves) left_();
    if (event->type() == QEvent::ParentChange) watch_frame();
    return false;
}

void LeaveWatch::watch_frame() {
    auto* frame = qobject_cast<QMdiSubWindow*>(window_.parentWidget());
    if (frame == nullptr) return;
    connect(frame, &QMdiSubWindow::windowStateChanged, this,
            [this](Qt::WindowStates before, Qt::WindowStates now) {
                if (before.testFlag(Qt::WindowActive) && !now.testFlag(Qt::WindowActive)) left_();
            });
}

}  // namespace servo::params
