// What looks closer at the visible window: statistics and spectrum. Each is shown when its tool is
// on, side by side; nothing is computed for one that is not shown.
#pragma once

#include <QWidget>

#include "scope/tool_row_widget.h"

namespace servo::scope {

class SpectrumPanelWidget;
class StatisticsPanelWidget;

class AnalysisPaneWidget final : public QWidget {
    Q_OBJECT

  public:
    AnalysisPaneWidget(const Oscilloscope& scope, QWidget* parent);

    void show_panel(AnalysisPanel panel, bool shown);
    void refresh();  // from the window that is visible now
    void apply_language(base::Language language);

  private:
    const Oscilloscope& scope_;
    StatisticsPanelWidget* statistics_;
    SpectrumPanelWidget* spectrum_;
};

}  // namespace servo::scope
