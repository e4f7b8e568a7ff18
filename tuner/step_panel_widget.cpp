#include "tuner/step_panel_widget.h"

#include <fmt/format.h>

#include <QHBoxLayout>
#include <QPainter>
#include <QPolygonF>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "base/even_step.h"
#include "base/number.h"
#include "params/ui_palette.h"
#include "tuner/tuner_palette.h"

namespace servo::tuner {

namespace {

constexpr QSize kWanted{240, 110};
constexpr QSize kLeast{160, 56};
constexpr int kLinesAlong = 4;
constexpr double kHeadroom = 0.1;  // of the range, above and below
constexpr double kMilli = 1000.0;
constexpr base::Text kNothingYet{"先仿真。", "Simulate first."};
constexpr base::Text kOvershoot{"超调", "Overshoot"};
constexpr base::Text kUnstable{"不稳定：没有阶跃响应。", "Unstable: there is no such answer."};
constexpr base::Text kSlow{"起始频率过高，终值不可靠。", "Starts too high: the end is a guess."};
constexpr base::Text kFast{"结束频率过低，陡沿不可靠。", "Stops too low: steep parts look soft."};

std::string milliseconds(const std::optional<double>& seconds) {
    return seconds ? base::format_fixed(*seconds * kMilli, 1) + " ms" : "-";
}

}  // namespace

// --- StepPlot

StepPlot::StepPlot(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize StepPlot::sizeHint() const {
    return kWanted;
}

QSize StepPlot::minimumSizeHint() const {
    return kLeast;
}

void StepPlot::show_response(StepResponse response) {
    response_ = std::move(response);
    update();
}

double StepPlot::length() const {
    return response_.time_step *
           std::max<double>(static_cast<double>(response_.values.size()) - 1.0, 1.0);
}

void StepPlot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(palette::kPicture));
    if (!response_.values.empty() && !response_.unstable) {
        const auto [least, most] = std::ranges::minmax(response_.values);
        const double low = std::min(least, 0.0);
        const double high = std::max(most, 1.0);
        const double room = (high - low) * kHeadroom;
        const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1 - fontMetrics().height());
        draw_grid(painter, area, high + room, low - room);
        draw_curve(painter, area, high + room, low - room);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QColor(palette::kFrame));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void StepPlot::draw_grid(QPainter& painter, const QRectF& area, double top, double bottom) const {
    const double step = base::even_step(length(), kLinesAlong);
    for (double time = 0.0; time <= length() * (1 + 1e-9); time += step) {
        const double x = area.left() + area.width() * time / length();
        painter.setPen(QColor(palette::kGrid));
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
        const QString label =
            to_qt(base::format_up_to(time * kMilli, 2) + (time == 0.0 ? " ms" : ""));
        const double width = fontMetrics().horizontalAdvance(label);
        if (x + width + 2.0 > area.right()) continue;
        painter.setPen(QColor(palette::kMutedText));
        painter.drawText(QPointF(x + 2.0, area.bottom() + fontMetrics().ascent()), label);
    }
    for (const double value : {0.0, 1.0}) {
        const double y = area.top() + area.height() * (top - value) / (top - bottom);
        painter.setPen(QColor(value == 1.0 ? palette::kMiddle : palette::kDecade));
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    }
}

void StepPlot::draw_curve(QPainter& painter, const QRectF& area, double top, double bottom) const {
    QPolygonF line;
    const auto count = static_cast<double>(std::max<std::size_t>(response_.values.size() - 1, 1));
    for (std::size_t i = 0; i < response_.values.size(); ++i)
        line << QPointF(area.left() + area.width() * static_cast<double>(i) / count,
                        area.top() + area.height() * (top - response_.values[i]) / (top - bottom));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(params::palette::kAccent), 1.4));
    painter.drawPolyline(line);
}

// --- StepPanelWidget

StepPanelWidget::StepPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    loop_ = new PickList("ComboStep", this);
    loop_->picked = [this](int) { work_out(); };
    overshoot_ = make_value(this, "LabelOvershoot");
    figures_ = make_value(this, "LabelStep");
    doubt_ = make_value(this, "LabelDoubt");
    QPalette colours = doubt_->palette();
    colours.setColor(QPalette::WindowText, QColor(params::palette::kWarningText));
    doubt_->setPalette(colours);
    plot_ = named(new StepPlot(this), "PictureStep");
    make_small(overshoot_);
    make_small(figures_);
    make_small(doubt_);
    make_small(plot_);
    texts_.add(loop_, {"环", "Loop"}, {"哪一个环的阶跃响应", "Which loop answers the step"});
    texts_.add(plot_, {"阶跃响应", "Step response"});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kGap, kGap / 2, kGap, kGap / 2);
    layout->setSpacing(kGap / 4);
    auto* head = new QHBoxLayout;
    head->setSpacing(kGap);
    head->addWidget(loop_);
    head->addWidget(overshoot_, 1);
    layout->addLayout(head);
    layout->addWidget(figures_);
    layout->addWidget(plot_, 1);
    layout->addWidget(doubt_);
}

void StepPanelWidget::invalidate() {
    stale_ = true;
    if (isVisible()) work_out();
}

void StepPanelWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (stale_) work_out();
}

void StepPanelWidget::work_out() {
    stale_ = false;
    const auto loop = loop_->currentIndex() == 1 ? LoopKind::kPosition : LoopKind::kVelocity;
    plot_->show_response(step_response(context_.tuner.data(), loop));
    show_figures();
}

void StepPanelWidget::show_figures() {
    const base::Language language = context_.tuner.language();
    const bool chinese = language == base::Language::kChinese;
    const StepResponse& shown = plot_->response();
    if (shown.values.empty() && !shown.unstable) {
        show_figures(kNothingYet.in(language), {}, {});
        return;
    }
    if (shown.unstable) {
        show_figures({}, {}, kUnstable.in(language));
        return;
    }
    const std::string over = base::format_fixed(shown.overshoot * 100.0, 1);
    const std::string rise = milliseconds(shown.rise);
    const std::string settling = milliseconds(shown.settling);
    show_figures(fmt::format("{} {} %", kOvershoot.in(language), over),
                 chinese ? fmt::format("上升 {}，稳定 {}", rise, settling)
                         : fmt::format("Rises in {}, settles in {}", rise, settling),
                 shown.slow_part_missing   ? kSlow.in(language)
                 : shown.fast_part_missing ? kFast.in(language)
                                           : std::string_view());
}

void StepPanelWidget::show_figures(std::string_view overshoot, std::string_view times,
                                   std::string_view doubt) {
    show_text(overshoot_, overshoot);
    show_text(figures_, times);
    show_text(doubt_, doubt);
    doubt_->setVisible(!doubt.empty());
}

void StepPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
    loop_->show_items(language == base::Language::kChinese
                          ? std::vector<std::string_view>{"速度环", "位置环"}
                          : std::vector<std::string_view>{"Velocity", "Position"});
    show_figures();
}

}  // namespace servo::tuner
