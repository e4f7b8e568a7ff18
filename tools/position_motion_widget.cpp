#include "tools/position_motion_widget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "params/ui_palette.h"
#include "tools/form_controls_view.h"
#include "tools/position_palette_view.h"

namespace servo::tools {

namespace {

namespace palette = position_palette;

constexpr int kHeightCharacters = 11;  // of a height axis: "-1000000000"
constexpr int kTimeCharacters = 10;
constexpr int kKeyStep = 4;  // pixels

MotionSizes sizes_for(const QFontMetrics& metrics) {
    MotionSizes sizes;
    const double line = metrics.lineSpacing();
    sizes.left = metrics.averageCharWidth() * kHeightCharacters + 8;
    sizes.top = line + 4;
    sizes.gap = line + 2;
    sizes.bottom = line + 6;
    sizes.row = line + 2;
    sizes.tick = metrics.averageCharWidth() * kTimeCharacters;
    sizes.label = metrics.averageCharWidth() * 3;
    return sizes;
}

QRectF rect_of(const PictureRect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

}  // namespace

PositionMotionWidget::PositionMotionWidget(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("PictureB"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAutoFillBackground(true);
    QPalette colours = QWidget::palette();
    colours.setColor(QPalette::Window, QColor(palette::kPaper));
    setPalette(colours);
}

void PositionMotionWidget::show_motion(const Motion& motion, double resolution,
                                       base::Language language) {
    motion_ = motion;
    resolution_ = resolution;
    language_ = language;
    cursor_ = std::min(cursor_, motion_.duration);
    setAccessibleName(form::qt(
        base::Text{"位置和速度随时间的变化", "Position and speed over time"}.in(language)));
    setAccessibleDescription(form::qt(motion_end_text(motion_, language)));
    arrange();
}

void PositionMotionWidget::show_step(int selected) {
    if (selected == selected_) return;
    selected_ = selected;
    update();
}

void PositionMotionWidget::arrange() {
    picture_ = motion_picture(motion_, resolution_, width(), height(), sizes_for(fontMetrics()));
    update();
}

void PositionMotionWidget::resizeEvent(QResizeEvent*) {
    arrange();
}

void PositionMotionWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) arrange();
}

// --- Events

void PositionMotionWidget::read_at(double time) {
    cursor_ = picture_.position.empty() ? -1 : std::clamp(time, 0.0, motion_.duration);
    update();
    Q_EMIT reading_changed();
}

std::string PositionMotionWidget::reading() const {
    return cursor_ < 0 ? std::string() : motion_reading(motion_, cursor_, resolution_, language_);
}

void PositionMotionWidget::stop_reading() {
    cursor_ = -1;
    update();
    Q_EMIT reading_changed();
}

void PositionMotionWidget::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    if (!underMouse()) stop_reading();
}

void PositionMotionWidget::mouseMoveEvent(QMouseEvent* event) {
    read_at(picture_.time_at(event->position().x()));
}

void PositionMotionWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || picture_.position.empty()) return;
    read_at(picture_.time_at(event->position().x()));
    if (const int step = motion_.step_at(cursor_); step >= 0) Q_EMIT step_picked(step);
}

void PositionMotionWidget::leaveEvent(QEvent*) {
    stop_reading();
}

void PositionMotionWidget::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (picture_.position.empty() || (key != Qt::Key_Left && key != Qt::Key_Right)) {
        QWidget::keyPressEvent(event);
        return;
    }
    const double step = kKeyStep * picture_.seconds_per_pixel;
    read_at(std::max(cursor_, 0.0) + (key == Qt::Key_Right ? step : -step));
    if (const int at = motion_.step_at(cursor_); at >= 0) Q_EMIT step_picked(at);
}

// --- Painting

void PositionMotionWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (picture_.position.empty()) {
        painter.setPen(QColor(params::palette::kMutedText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         form::qt(base::Text{"没有运动。", "Nothing moves."}.in(language_)) +
                             QLatin1Char('\n') + form::qt(motion_end_text(motion_, language_)));
        return;
    }
    paint_bands(painter);
    paint_axes(painter);
    paint_plot(painter, picture_.position_plot, picture_.positions, picture_.position,
               palette::kPosition, form::qt(base::Text{"位置 inc", "Position inc"}.in(language_)));
    paint_plot(painter, picture_.speed_plot, picture_.speeds, picture_.speed, palette::kSpeed,
               form::qt(base::Text{"速度 rpm", "Speed rpm"}.in(language_)));
    if (cursor_ < 0) return;
    painter.setPen(QPen(QColor(params::palette::kText), 1, Qt::DashLine));
    const double x = std::round(picture_.x_of(cursor_)) + 0.5;
    painter.drawLine(QPointF(x, picture_.position_plot.y),
                     QPointF(x, picture_.speed_plot.bottom()));
}

void PositionMotionWidget::paint_bands(QPainter& painter) const {
    bool odd = false;
    for (const MotionBand& band : picture_.bands) {
        odd = !odd;
        const QRectF place = rect_of(band.rect);
        if (band.step == selected_)
            painter.fillRect(place, QColor(palette::kSelectedBand));
        else if (odd)
            painter.fillRect(place, QColor(palette::kBand));
        // The axis rests.
        const QRectF delay(band.delay_from, place.top(), place.right() - band.delay_from,
                           place.height());
        painter.fillRect(delay, QBrush(QColor(params::palette::kFrame), Qt::BDiagPattern));
        if (!band.labelled) continue;
        painter.setPen(QColor(params::palette::kText));
        painter.drawText(QRectF(place.left() + 2, 0, 60, place.top() - 2),
                         Qt::AlignLeft | Qt::AlignBottom, QString::number(band.step));
    }
}

void PositionMotionWidget::paint_axes(QPainter& painter) const {
    const double bottom = picture_.speed_plot.bottom();
    const int half = fontMetrics().averageCharWidth() * kTimeCharacters / 2;
    for (const PictureTick& tick : picture_.times) {
        painter.setPen(QColor(palette::kTick));
        const double x = std::round(tick.at) + 0.5;
        painter.drawLine(QPointF(x, picture_.position_plot.y), QPointF(x, bottom));
        painter.setPen(QColor(params::palette::kMutedText));
        QString text = form::qt(tick.text);
        if (&tick == &picture_.times.back()) text += QLatin1String(" s");
        painter.drawText(QRectF(tick.at - half, bottom + 3, 2 * half, fontMetrics().lineSpacing()),
                         Qt::AlignHCenter | Qt::AlignTop, text);
    }
}

void PositionMotionWidget::paint_plot(QPainter& painter, const PictureRect& plot,
                                      const std::vector<PictureTick>& ticks,
                                      const std::vector<PicturePoint>& curve, QRgb colour,
                                      const QString& name) const {
    const int line = fontMetrics().lineSpacing();
    for (const PictureTick& tick : ticks) {
        painter.setPen(QColor(palette::kTick));
        const double y = std::round(tick.at) + 0.5;
        painter.drawLine(QPointF(plot.x, y), QPointF(plot.right(), y));
        painter.setPen(QColor(params::palette::kMutedText));
        painter.drawText(QRectF(0, tick.at - line / 2.0, plot.x - 4, line),
                         Qt::AlignRight | Qt::AlignVCenter, form::qt(tick.text));
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QColor(params::palette::kFrame));
    painter.drawRect(rect_of(plot));
    QPolygonF points;
    for (const PicturePoint& point : curve)
        points << QPointF(point.x, point.y);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgba(colour), 1.8));
    painter.drawPolyline(points);
    painter.restore();
    // The name of the curve, on a ground of its own where the curve passes.
    const int width = fontMetrics().horizontalAdvance(name) + 8;
    const QRectF label(plot.right() - width - 2, plot.y + 2, width, line);
    painter.fillRect(label, QColor::fromRgba(palette::kLabelGround));
    painter.setPen(QColor::fromRgba(colour));
    painter.drawText(label, Qt::AlignCenter, name);
}

}  // namespace servo::tools
