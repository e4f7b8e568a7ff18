// Resonances of the measured plant, and the notch filter that would answer the one that is picked.
#pragma once

#include <QListWidget>
#include <QWidget>
#include <vector>

#include "tuner/resonances.h"
#include "tuner/tuner_controls_view.h"

namespace servo::tuner {

class ResonancesPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    ResonancesPanelWidget(PanelContext context, QWidget* parent);

    // The highest one is picked.
    void show_resonances(std::vector<Resonance> resonances);
    // The free slot may have changed.
    void refresh();
    void apply_language(base::Language language);

  private:
    void fill();
    void apply();
    std::optional<NotchProposal> proposal() const;
    int free_slot() const;  // from 0, -1 for none

    PanelContext context_;
    ControlTexts texts_;
    std::vector<Resonance> resonances_;
    QListWidget* list_ = nullptr;   // ListResonances
    QLabel* proposal_ = nullptr;    // LabelProposal
    QPushButton* apply_ = nullptr;  // CommandNotch
};

}  // namespace servo::tuner
