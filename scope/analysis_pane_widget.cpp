#include "scope/analysis_pane_widget.h"

#include <QHBoxLayout>
#include <algorithm>

#include "scope/reference_panel_widget.h"
#include "scope/spectrum_panel_widget.h"
#include "scope/statistics_panel_widget.h"

namespace servo::scope {

AnalysisPaneWidget::AnalysisPaneWidget(PanelContext context, QWidget* parent)
    : QWidget(parent),
      context_(std::move(context)),
      statistics_(new StatisticsPanelWidget(this)),
      spectrum_(new SpectrumPanelWidget(this)),
      references_(new ReferencePanelWidget(context_, this)),
      panels_{statistics_, spectrum_, references_} {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, kGap / 2, 0, 0);
    row->setSpacing(2 * kGap);
    row->addWidget(statistics_);
    row->addWidget(spectrum_, 1);
    row->addWidget(references_);
    for (QWidget* panel : panels_)
        panel->hide();
    hide();
}

void AnalysisPaneWidget::show_panel(int panel, bool shown) {
    panels_.at(static_cast<std::size_t>(panel))->setVisible(shown);
    setVisible(std::ranges::any_of(panels_, [](const QWidget* p) { return !p->isHidden(); }));
    refresh_lists();
    refresh_plots();
}

void AnalysisPaneWidget::refresh_lists() {
    if (!references_->isHidden()) references_->refresh();
}

void AnalysisPaneWidget::refresh_plots() {
    if (statistics_->isHidden() && spectrum_->isHidden()) return;
    const ScopeData& held = context_.scope.data();
    const Recording visible = held.dataValid ? context_.scope.visible_recording() : Recording{};
    if (!statistics_->isHidden()) statistics_->show_recording(visible, held);
    if (!spectrum_->isHidden()) spectrum_->show_recording(visible);
}

void AnalysisPaneWidget::apply_language(base::Language language) {
    spectrum_->apply_language(language);
    references_->apply_language(language);
    refresh_plots();
}

}  // namespace servo::scope
