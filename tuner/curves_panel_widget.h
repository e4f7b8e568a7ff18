// Which curves the picture shows; each box carries a sample of its line, so the row is the legend.
// The boxes of the filters' curves are with their filters.
#pragma once

#include <QWidget>
#include <array>

#include "tuner/tuner_controls_view.h"

namespace servo::tuner {

class CurvesPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    CurvesPanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

  private:
    static constexpr std::size_t kBoxes = 6;

    PanelContext context_;
    ControlTexts texts_;
    std::array<QCheckBox*, kBoxes> boxes_{};  // Check3 to Check8
};

}  // namespace servo::tuner
