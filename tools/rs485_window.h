// The settings of the drive's serial port on screen. It holds no rule: picks go to the Rs485, and
// what that holds is shown.
#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>
#include <array>

#include "tools/form_controls_view.h"
#include "tools/rs485.h"

namespace servo::tools {

class Rs485Window final : public QWidget {
    Q_OBJECT

  public:
    // Changes that ticks bring are gathered for so long. What the user does is shown at once.
    static constexpr int kGatherMs = 50;
    static constexpr int kMostNotes = 4;

    // The form outlives the window.
    explicit Rs485Window(Rs485& form, QWidget* parent = nullptr);
    ~Rs485Window() override;

    // Shows what has been gathered.
    void refresh_now();
    QSize sizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void make_lists();
    void lay_out();
    void apply_language();

    Rs485& form_;
    std::array<QLabel*, 5> labels_{};          // LabelA to LabelE
    std::array<form::ListBox*, 5> lists_{};    // Combo1 to Combo5
    std::array<QLabel*, kMostNotes> notes_{};  // LabelF to LabelI
    QTimer gather_;
};

}  // namespace servo::tools
