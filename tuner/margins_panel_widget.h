// What the simulated loops leave to spare: crossover, margins, bandwidth of each.
#pragma once

#include <QWidget>
#include <array>

#include "tuner/margins.h"
#include "tuner/tuner_controls_view.h"

namespace servo::tuner {

class MarginsPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    explicit MarginsPanelWidget(QWidget* parent);

    // `simulated` is false before the first simulation of this scan.
    void show_figures(const SimulationFigures& figures, bool simulated, base::Language language);

  private:
    static constexpr int kLoops = 2;
    static constexpr int kFigures = 6;

    void show_loop(std::size_t loop, const LoopFigures& figures, bool simulated,
                   base::Language language);

    // LabelMargin(0) to (11): by row, velocity first.
    std::array<std::array<QLabel*, kFigures>, kLoops> values_{};
};

}  // namespace servo::tuner
