#include "scope/spectrum_plot_widget.h"

#include <QHelpEvent>
#include <QPainter>
#include <QPolygonF>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "base/even_step.h"
#include "params/ui_palette.h"
#include "scope/scope_controls_view.h"

namespace servo::scope {

namespace {

constexpr int kDecades = 5;  // of the logarithmic axis
constexpr int kLinesUp = 4;
constexpr int kMostHalvings = 8;
constexpr int kLinesAlong = 6;
constexpr QSize kMinimum{220, 110};
constexpr QSize kWanted{360, 140};
constexpr qreal kPeakRadius = 3.5;
constexpr const char* kWidestLabel = "-0.00000";

}  // namespace

SpectrumPlot::SpectrumPlot(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize SpectrumPlot::sizeHint() const {
    return kWanted;
}

QSize SpectrumPlot::minimumSizeHint() const {
    return kMinimum;
}

void SpectrumPlot::show_spectrum(Spectrum spectrum, const QString& unit) {
    spectrum_ = std::move(spectrum);
    unit_ = unit;
    peak_ = 0;
    const auto& lines = spectrum_.amplitudes;
    if (lines.size() > 1) {
        const auto highest = std::max_element(lines.begin() + 1, lines.end());
        if (*highest > 0.0) peak_ = static_cast<std::size_t>(highest - lines.begin());
    }
    update();
}

void SpectrumPlot::set_logarithmic(bool on) {
    logarithmic_ = on;
    update();
}

double SpectrumPlot::top() const {
    if (spectrum_.amplitudes.empty()) return 1.0;
    const double highest = *std::ranges::max_element(spectrum_.amplitudes);
    if (!(highest > 0.0) || !std::isfinite(highest)) return 1.0;
    if (logarithmic_) return std::pow(10.0, std::ceil(std::log10(highest)));
    const double step = base::even_step(highest, kLinesUp);
    return step * std::ceil(highest / step);
}

QRectF SpectrumPlot::area() const {
    const QFontMetrics font = fontMetrics();
    const int left = font.horizontalAdvance(QLatin1String(kWidestLabel)) + kGap / 2;
    return QRectF(rect()).adjusted(left, font.height() / 2.0, -font.averageCharWidth() * 3.0,
                                   -font.height() - kGap / 2.0);
}

double SpectrumPlot::height_of(double amplitude, const QRectF& area) const {
    double part = amplitude / top();
    if (logarithmic_) part = amplitude > 0.0 ? 1.0 + std::log10(part) / kDecades : 0.0;
    return area.bottom() - std::clamp(part, 0.0, 1.0) * area.height();
}

double SpectrumPlot::last_line() const {
    const double all = static_cast<double>(spectrum_.amplitudes.size()) - 1.0;
    return std::max(1.0, std::floor(std::ldexp(all, -halvings_)));
}

void SpectrumPlot::wheelEvent(QWheelEvent* event) {
    const int turned = event->angleDelta().y();
    if (turned == 0) return;
    halvings_ = std::clamp(halvings_ + (turned > 0 ? 1 : -1), 0, kMostHalvings);
    event->accept();
    update();
}

void SpectrumPlot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF box = area();
    painter.fillRect(box, QColor(params::palette::kCell));
    draw_grid(painter, box);
    if (spectrum_.amplitudes.size() < 2) return;
    draw_curve(painter, box);
    draw_peak(painter, box);
}

void SpectrumPlot::draw_grid(QPainter& painter, const QRectF& area) const {
    const QColor line(params::palette::kLine);
    const QColor text(params::palette::kMutedText);
    const int height = fontMetrics().height();
    const int parts = logarithmic_ ? kDecades : kLinesUp;
    const double step = logarithmic_ ? 0.0 : base::even_step(top(), kLinesUp);
    for (int k = 0; k <= parts; ++k) {
        const double value = logarithmic_ ? top() * std::pow(10.0, k - kDecades) : k * step;
        if (value > top() * (1 + 1e-9)) break;
        const double y =
            logarithmic_ ? area.bottom() - area.height() * k / kDecades : height_of(value, area);
        painter.setPen(line);
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        if (spectrum_.amplitudes.empty()) continue;
        painter.setPen(text);
        painter.drawText(QRectF(0, y - height / 2.0, area.left() - kGap / 2.0, height),
                         Qt::AlignRight | Qt::AlignVCenter, to_qt(short_number(value)));
    }
    painter.setPen(QColor(params::palette::kFrame));
    painter.drawRect(area);
    if (spectrum_.amplitudes.size() < 2) return;
    const double range = spectrum_.step_hz * last_line();
    const double along = base::even_step(range, kLinesAlong);
    for (double hz = 0.0; along > 0.0 && hz <= range * (1 + 1e-9); hz += along) {
        const double x = area.left() + area.width() * hz / range;
        painter.setPen(line);
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
        painter.setPen(text);
        painter.drawText(QRectF(x - 40, area.bottom() + kGap / 4.0, 80, height), Qt::AlignCenter,
                         hz == 0.0 ? QStringLiteral("0 Hz") : to_qt(short_number(hz)));
    }
}

void SpectrumPlot::draw_curve(QPainter& painter, const QRectF& area) const {
    const auto& lines = spectrum_.amplitudes;
    const double last = last_line();
    const auto shown = static_cast<std::size_t>(last) + 1;
    // Of the lines that share a column of pixels only the highest can be seen.
    QPolygonF path;
    double column = -1.0;
    double highest = 0.0;
    const auto add = [&] { path << QPointF(area.left() + column, height_of(highest, area)); };
    for (std::size_t i = 0; i < shown; ++i) {
        const double place = static_cast<double>(i) / last * area.width();
        const double snapped = last > area.width() ? std::floor(place) : place;
        if (snapped != column && column >= 0.0) {
            add();
            highest = 0.0;
        }
        column = snapped;
        highest = std::max(highest, lines.at(i));
    }
    add();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(params::palette::kAccent), 1.2));
    painter.drawPolyline(path);
}

void SpectrumPlot::draw_peak(QPainter& painter, const QRectF& area) const {
    if (peak_ == 0) return;
    const auto& lines = spectrum_.amplitudes;
    if (static_cast<double>(peak_) > last_line()) return;
    const double x = area.left() + area.width() * static_cast<double>(peak_) / last_line();
    painter.setPen(QPen(QColor(params::palette::kWarningText), 1.4));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QPointF(x, height_of(lines.at(peak_), area)), kPeakRadius, kPeakRadius);
}

bool SpectrumPlot::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || spectrum_.amplitudes.size() < 2)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QRectF box = area();
    if (!box.contains(help->pos())) {
        QToolTip::hideText();
        return true;
    }
    const double last = last_line();
    const double place = (help->pos().x() - box.left()) / box.width() * last;
    const auto line = static_cast<std::size_t>(std::clamp(std::round(place), 0.0, last));
    QToolTip::showText(help->globalPos(),
                       QStringLiteral("%1 Hz: %2 %3")
                           .arg(to_qt(short_number(spectrum_.step_hz * static_cast<double>(line))),
                                to_qt(short_number(spectrum_.amplitudes.at(line))), unit_),
                       this);
    return true;
}

}  // namespace servo::scope
