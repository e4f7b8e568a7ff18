#include "scope/statistics_panel_widget.h"

#include <QGridLayout>
#include <algorithm>

#include "scope/curve_chip_widget.h"
#include "scope/number_label_widget.h"
#include "scope/statistics.h"

namespace servo::scope {

namespace {

constexpr std::array<base::Text, 5> kHeadings{{{"最小", "Min"},
                                               {"最大", "Max"},
                                               {"平均", "Mean"},
                                               {"有效值", "RMS"},
                                               {"峰峰值", "Peak-peak"}}};
constexpr const char* kWidestFigure = "-0000.00";
constexpr const char* kWidestUnit = "rps/s";

}  // namespace

StatisticsPanelWidget::StatisticsPanelWidget(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 2);
    grid->addWidget(make_heading(this, "LabelU", {"统计", "Statistics"}), 0, 0, 1, 2);
    for (std::size_t i = 0; i < kHeadings.size(); ++i) {
        QLabel* heading = make_caption(this, "LabelU" + std::to_string(i + 1), kHeadings.at(i));
        make_quiet(heading);
        heading->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(heading, 1, static_cast<int>(i) + 1);
        grid->setColumnStretch(static_cast<int>(i) + 1, 1);
    }
    for (int channel = 0; channel < kCurves; ++channel)
        make_line(channel, *grid);
    grid->setRowStretch(kCurves + 2, 1);
}

void StatisticsPanelWidget::make_line(int channel, QGridLayout& grid) {
    Line& line = lines_.at(static_cast<std::size_t>(channel));
    const int row = channel + 2;
    line.chip = new CurveChip(channel, this);
    grid.addWidget(line.chip, row, 0);
    for (std::size_t i = 0; i < kFigures; ++i) {
        auto* figure = new NumberLabel(kWidestFigure, this);
        const int number = channel * static_cast<int>(kFigures) + static_cast<int>(i);
        figure->setObjectName(to_qt(numbered("LabelS", number)));
        line.figures.at(i) = figure;
        grid.addWidget(figure, row, static_cast<int>(i) + 1);
    }
    line.unit = new NumberLabel(kWidestUnit, this);
    line.unit->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    line.unit->setObjectName(to_qt(numbered("LabelSUnit", channel)));
    make_quiet(line.unit);
    grid.addWidget(line.unit, row, static_cast<int>(kFigures) + 1);
}

void StatisticsPanelWidget::clear(Line& line) {
    for (NumberLabel* figure : line.figures)
        show_text(figure, {});
    show_text(line.unit, {});
}

void StatisticsPanelWidget::show_recording(const Recording& visible, const ScopeData& held) {
    for (int channel = 0; channel < kCurves; ++channel) {
        Line& line = lines_.at(static_cast<std::size_t>(channel));
        const auto curve = std::ranges::find(visible.curves, channel, &RecordedCurve::channel);
        std::optional<Statistics> figures;
        if (held.drawn(channel) && curve != visible.curves.end())
            figures = statistics_of(curve->values);
        line.chip->setEnabled(figures.has_value());
        if (!figures) {
            clear(line);
            continue;
        }
        const std::array values{figures->minimum, figures->maximum, figures->mean, figures->rms,
                                figures->peak_to_peak};
        for (std::size_t i = 0; i < kFigures; ++i)
            show_text(line.figures.at(i), short_number(values.at(i)));
        show_text(line.unit, curve->unit);
    }
}

}  // namespace servo::scope
