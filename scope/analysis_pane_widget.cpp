#include "scope/analysis_pane_widget.h"

#include <QHBoxLayout>

#include "scope/spectrum_panel_widget.h"
#include "scope/statistics_panel_widget.h"

namespace servo::scope {

AnalysisPaneWidget::AnalysisPaneWidget(const Oscilloscope& scope, QWidget* parent)
    : QWidget(parent),
      scope_(scope),
      statistics_(new StatisticsPanelWidget(this)),
      spectrum_(new SpectrumPanelWidget(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, kGap / 2, 0, 0);
    row->setSpacing(2 * kGap);
    row->addWidget(statistics_, 2);
    row->addWidget(spectrum_, 3);
    statistics_->hide();
    spectrum_->hide();
    hide();
}

void AnalysisPaneWidget::show_panel(AnalysisPanel panel, bool shown) {
    if (panel == AnalysisPanel::kStatistics) statistics_->setVisible(shown);
    if (panel == AnalysisPanel::kSpectrum) spectrum_->setVisible(shown);
    setVisible(!statistics_->isHidden() || !spectrum_->isHidden());
    refresh();
}

void AnalysisPaneWidget::refresh() {
    if (isHidden()) return;
    const ScopeData& held = scope_.data();
    const Recording visible = held.dataValid ? scope_.visible_recording() : Recording{};
    if (!statistics_->isHidden()) statistics_->show_recording(visible, held);
    if (!spectrum_->isHidden()) spectrum_->show_recording(visible);
}

void AnalysisPaneWidget::apply_language(base::Language language) {
    spectrum_->apply_language(language);
}

}  // namespace servo::scope
