// Tells when the user leaves a window: it closes, is hidden, or another one becomes active, be it
// the window itself or the frame of an MDI area that it stands in.
#pragma once

#include <QObject>
#include <functional>

class QWidget;

namespace servo::params {

class LeaveWatch final : public QObject {
    Q_OBJECT

  public:
    // A member of the window, behind whatever `left` acts on: a window hides while it is destroyed.
    LeaveWatch(QWidget& window, std::function<void()> left);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void watch_frame();

    QWidget& window_;
    std::function<void()> left_;
};

}  // namespace servo::params
