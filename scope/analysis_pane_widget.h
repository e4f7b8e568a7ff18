// What looks closer at the visible window: statistics, spectrum, references. Each is shown when its
// tool is on, side by side; nothing is computed for one that is not shown.
#pragma once

#include <QWidget>
#include <array>

#include "scope/tool_row_widget.h"

namespace servo::scope {

class ReferencePanelWidget;
class SpectrumPanelWidget;
class StatisticsPanelWidget;

class AnalysisPaneWidget final : public QWidget {
    Q_OBJECT

  public:
    AnalysisPaneWidget(PanelContext context, QWidget* parent);

    void show_panel(int panel, bool shown);
    void refresh_lists();  // what is kept
    void refresh_plots();  // figures and spectrum of the window that is visible now
    void apply_language(base::Language language);

  private:
    PanelContext context_;
    StatisticsPanelWidget* statistics_;
    SpectrumPanelWidget* spectrum_;
    ReferencePanelWidget* references_;
    std::array<QWidget*, kAnalysisPanels> panels_{};
};

}  // namespace servo::scope
