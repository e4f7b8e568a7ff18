// The frame of a window inside of the main window. Its close box hides it and keeps what it holds;
// windows live until the program ends.
#pragma once

#include <QMdiSubWindow>

namespace servo::app {

class ChildWindow final : public QMdiSubWindow {
    Q_OBJECT

  public:
    // A dialog keeps its size and goes at Esc; a page can be minimised and maximised.
    enum class Kind : std::uint8_t { kPage, kDialog };

    ChildWindow(QWidget* content, Kind kind);

  Q_SIGNALS:
    // The close box, or Esc in a dialog. Whoever keeps the windows hides this one.
    void close_asked();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    Kind kind_;
};

}  // namespace servo::app
