#include "tuner/margins_panel_widget.h"

#include <QGridLayout>
#include <cmath>

#include "base/number.h"
#include "params/ui_palette.h"

namespace servo::tuner {

namespace {

constexpr std::array<base::Text, 2> kLoopNames{{{"速度环", "Velocity"}, {"位置环", "Position"}}};
constexpr std::array<base::Text, 6> kFigureNames{{{"穿越频率", "Crossover"},
                                                  {"增益裕度", "Gain margin"},
                                                  {"相位裕度", "Phase margin"},
                                                  {"闭环带宽", "Bandwidth"},
                                                  {"闭环峰值", "Peak"},
                                                  {"闭环", "Closed loop"}}};
constexpr base::Text kStable{"稳定", "stable"};
constexpr base::Text kUnstable{"不稳定", "unstable"};
constexpr const char* kNothing = "-";
constexpr int kStability = 5;

std::string with_unit(std::optional<double> value, const char* unit) {
    if (!value || !std::isfinite(*value)) return kNothing;
    return base::format_fixed(*value, 1) + unit;
}

std::optional<double> value_of(const std::optional<Reading>& reading) {
    return reading ? std::optional(reading->value) : std::nullopt;
}

// Where it was read, for the tip.
QString place_of(const std::optional<Reading>& reading) {
    return reading ? to_qt(base::format_fixed(reading->frequency, 1) + " Hz") : QString();
}

void show_warning(QLabel* label, bool on) {
    QPalette colours = label->parentWidget()->palette();
    if (on) colours.setColor(QPalette::WindowText, QColor(params::palette::kWarningText));
    label->setPalette(colours);
}

}  // namespace

MarginsPanelWidget::MarginsPanelWidget(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(kGap, kGap / 2, kGap, kGap / 2);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(0);
    for (int loop = 0; loop < kLoops; ++loop) {
        const auto column = static_cast<std::size_t>(loop);
        QLabel* heading = make_caption(this, numbered("LabelLoop", loop), kLoopNames.at(column));
        make_quiet(heading);
        heading->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(heading, 0, loop + 1);
        for (int row = 0; row < kFigures; ++row) {
            QLabel* value = make_value(this, numbered("LabelMargin", row * kLoops + loop));
            value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            value->setTextInteractionFlags(Qt::TextSelectableByMouse);
            values_.at(column).at(static_cast<std::size_t>(row)) = value;
            grid->addWidget(value, row + 1, loop + 1);
        }
        grid->setColumnStretch(loop + 1, 1);
    }
    for (int row = 0; row < kFigures; ++row)
        grid->addWidget(make_caption(this, numbered("LabelFigure", row),
                                     kFigureNames.at(static_cast<std::size_t>(row))),
                        row + 1, 0);
    grid->setRowStretch(kFigures + 1, 1);
}

void MarginsPanelWidget::show_figures(const SimulationFigures& figures, bool simulated,
                                      base::Language language) {
    show_loop(0, figures.velocity, simulated, language);
    show_loop(1, figures.position, simulated, language);
}

void MarginsPanelWidget::show_loop(std::size_t loop, const LoopFigures& figures, bool simulated,
                                   base::Language language) {
    const Margins& margins = figures.margins;
    auto& values = values_.at(loop);
    show_text(values[0], with_unit(margins.crossover, " Hz"));
    show_text(values[1], with_unit(value_of(margins.gain_margin), " dB"));
    show_text(values[2], with_unit(value_of(margins.phase_margin), "\u00b0"));
    show_text(values[3], with_unit(figures.bandwidth, " Hz"));
    show_text(values[4], with_unit(value_of(figures.peak), " dB"));
    values[1]->setToolTip(place_of(margins.gain_margin));
    values[2]->setToolTip(place_of(margins.phase_margin));
    values[4]->setToolTip(place_of(figures.peak));
    const base::Text& verdict = margins.stable ? kStable : kUnstable;
    show_text(values[kStability], simulated ? verdict.in(language) : kNothing);
    show_warning(values[kStability], simulated && !margins.stable);
}

}  // namespace servo::tuner
