// The gains of the loops that are tried, and the simulation's button.
#pragma once

#include <QWidget>

#include "tuner/tuner_controls_view.h"

namespace servo::tuner {

class GainsPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    GainsPanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    void simulate();

  private:
    void take_scanned();
    void connect_box(QLineEdit& box, AdvancedTuner::Box which);

    PanelContext context_;
    ControlTexts texts_;
    QLineEdit* Text10_ = nullptr;      // gain of the velocity loop
    QLineEdit* Text11_ = nullptr;      // for its integral part
    QLineEdit* Text9_ = nullptr;       // gain of the position loop
    QPushButton* Command4_ = nullptr;  // simulate
    QPushButton* scanned_ = nullptr;   // CommandD: the gains that the drive had at the scan
};

}  // namespace servo::tuner
