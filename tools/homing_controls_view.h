// What the panels of the window `Homing2` are made of, beside what all forms have.
#pragma once

#include <QGroupBox>
#include <QLineEdit>
#include <functional>

#include "tools/form_controls_view.h"

namespace servo::tools::homing {

using form::kGap;
using form::make_check;
using form::make_command;
using form::make_frame;
using form::make_label;
using form::make_option;
using form::make_value;
using form::qt;
using form::show_text;
using params::controls::make_quiet;
using params::controls::show_line;

inline constexpr int kInnerGap = 5;

// A frame without a line or a title: it only holds what belongs together.
class HomingFrame final : public QGroupBox {
    Q_OBJECT

  public:
    HomingFrame(const char* name, QWidget* parent);

  protected:
    void paintEvent(QPaintEvent*) override {}
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
};

// A box that shows each character to the form before it takes it (Enter as 13, Escape as 27).
// Whoever comes to it with the keyboard or the mouse finds its text selected.
class HomingBox final : public QLineEdit {
    Q_OBJECT

  public:
    explicit HomingBox(const char* name, QWidget* parent);

    std::function<bool(char32_t key)> pressed;  // true: the key is swallowed
    std::function<void(bool here)> focus_changed;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool came_by_mouse_ = false;
};

}  // namespace servo::tools::homing
