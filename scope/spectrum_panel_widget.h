// The spectrum of one curve over the visible window, with a choice of the window function.
#pragma once

#include <QWidget>

#include "scope/recording.h"
#include "scope/scope_controls_view.h"

class QComboBox;

namespace servo::scope {

class SpectrumPlot;

class SpectrumPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    explicit SpectrumPanelWidget(QWidget* parent);

    void show_recording(const Recording& visible);
    void apply_language(base::Language language);

  private:
    void make_controls();
    void compute();

    ControlTexts texts_;
    base::Language language_ = base::Language::kEnglish;
    Recording visible_;
    QComboBox* curve_ = nullptr;    // ComboA
    QComboBox* window_ = nullptr;   // ComboB
    QCheckBox* log_ = nullptr;      // CheckA
    QLabel* peak_ = nullptr;        // LabelX
    SpectrumPlot* plot_ = nullptr;  // PictureA
};

}  // namespace servo::scope
