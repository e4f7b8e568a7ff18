// The scan: its plan, the unlocked start, how far it has come.
#pragma once

#include <QProgressBar>
#include <QWidget>

#include "tuner/tuner_controls_view.h"

class QGridLayout;

namespace servo::tuner {

class ScanPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    ScanPanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

  private:
    void make_boxes();
    void make_buttons();
    void connect_box(QLineEdit& box, AdvancedTuner::Box which);
    void lay_out();

    PanelContext context_;
    ControlTexts texts_;
    QLineEdit* Text1_ = nullptr;        // current of the excitation
    QLineEdit* Text2_ = nullptr;        // start frequency
    QLineEdit* Text4_ = nullptr;        // step
    QLineEdit* Text3_ = nullptr;        // stop frequency
    QCheckBox* Check1_ = nullptr;       // unlocks the start
    QPushButton* Command1_ = nullptr;   // start
    QLabel* Label36_ = nullptr;         // state
    QPushButton* cancel_ = nullptr;     // CommandA
    QProgressBar* progress_ = nullptr;  // ProgressBar1
    QLabel* point_ = nullptr;           // LabelProgress: the same in words
};

}  // namespace servo::tuner
