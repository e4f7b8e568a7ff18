// How much is recorded and how fast, and the run itself.
#pragma once

#include <QWidget>

#include "scope/scope_controls_view.h"

class QProgressBar;

namespace servo::scope {

class FilterBox;
class NumberLabel;

class RunPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    RunPanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    // With Esc in a box.
    std::function<void()> left;

  private:
    void make_boxes();
    void make_buttons();
    void lay_out();
    void connect_box(FilterBox& box, Oscilloscope::Box which);

    PanelContext context_;
    ControlTexts texts_;
    FilterBox* Text1_ = nullptr;       // sampling period
    NumberLabel* Label18_ = nullptr;   // the period as time
    FilterBox* Text2_ = nullptr;       // trigger offset
    FilterBox* Text3_ = nullptr;       // number of samples
    QPushButton* Command6_ = nullptr;  // start and stop
    QPushButton* Command7_ = nullptr;  // reads the buffer again
    QCheckBox* Check5_ = nullptr;      // single
    QProgressBar* ProgressBar1_ = nullptr;
};

}  // namespace servo::scope
