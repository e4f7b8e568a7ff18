// The frame of a window inside of the main window. Its close box hides it and keeps what it holds;
// windows live until the program ends.
#pragma once

#include <QMdiSubWindow>
#include <QRect>

#include "app/shell_layout.h"
#include "base/language.h"

class QPushButton;

namespace servo::app {

class ChildWindow final : public QMdiSubWindow {
    Q_OBJECT

  public:
    // A dialog keeps its size and goes at Esc; a page can be minimised and maximised.
    enum class Kind : std::uint8_t { kPage, kDialog };

    ChildWindow(QWidget* content, Kind kind);

    Kind kind() const { return kind_; }

    // Where it stood last when it was neither minimised nor maximised.
    QRect normal_geometry() const { return normal_; }

    WindowPlace place() const;
    // Place and size, not the state.
    void put(const WindowPlace& place);

    // The texts of the menu at the icon.
    void apply_language(base::Language language);

  Q_SIGNALS:
    // The close box, or Esc in a dialog. Whoever keeps the windows hides this one.
    void close_asked();

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    // What Enter presses: the button with the focus, else the default one of the content.
    QPushButton* entered_button() const;
    void keep_geometry();
    void prepare_menu();

    Kind kind_;
    QRect normal_;
};

}  // namespace servo::app
