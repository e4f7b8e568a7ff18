#include "tuner/picture_overlay_view.h"

#include <algorithm>

#include "base/number.h"
#include "tuner/curve_line_view.h"
#include "tuner/tuner_controls_view.h"
#include "tuner/tuner_palette.h"

namespace servo::tuner {

namespace {

constexpr qreal kPadding = 6.0;
constexpr qreal kFromCross = 12.0;
constexpr qreal kSample = 22.0;
constexpr qreal kRadius = 3.0;

void draw_cross(QPainter& painter, const PictureScene& scene, const PictureFrame& frame,
                QPointF at) {
    const QRectF whole = frame.area({true, 0, scene.surface.height}, scene.surface);
    painter.setPen(QPen(QColor(palette::kCross), 1.0, Qt::DotLine));
    painter.drawLine(QPointF(at.x(), whole.top()), QPointF(at.x(), whole.bottom()));
    painter.drawLine(QPointF(whole.left(), at.y()), QPointF(whole.right(), at.y()));
}

// To the right of the cross, or to its left where there is no room.
QPointF box_corner(const QRectF& whole, QPointF at, QSizeF size) {
    qreal left = at.x() + kFromCross;
    if (left + size.width() > whole.right()) left = at.x() - kFromCross - size.width();
    const qreal top = at.y() + kFromCross;
    return {std::max(left, whole.left()),
            std::clamp(top, whole.top(), std::max(whole.top(), whole.bottom() - size.height()))};
}

}  // namespace

std::string reading_text(const CurveReading& reading) {
    std::string text = reading.gain ? base::format_fixed(*reading.gain, 1) + " dB" : "-";
    if (reading.phase) text += "  " + base::format_fixed(*reading.phase, 1) + "\u00b0";
    return text;
}

void paint_overlay(QPainter& painter, const PictureScene& scene, const PictureFrame& frame,
                   const PictureOverlay& overlay, const QFont& font) {
    if (!overlay.shown) return;
    painter.save();
    const QPointF at = frame.at(overlay.at);
    draw_cross(painter, scene, frame, at);
    if (!overlay.readings.empty()) {
        painter.setFont(small_font(font));
        const QFontMetricsF metrics(painter.font(), painter.device());
        qreal widest = 0.0;
        for (const CurveReading& reading : overlay.readings)
            widest = std::max(widest, metrics.horizontalAdvance(to_qt(reading_text(reading))));
        const qreal line = metrics.height();
        const QSizeF size(widest + kSample + 3.0 * kPadding,
                          line * static_cast<qreal>(overlay.readings.size()) + 2.0 * kPadding);
        const QRectF whole = frame.area({true, 0, scene.surface.height}, scene.surface);
        const QRectF box(box_corner(whole, at, size), size);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QColor(palette::kFrame));
        painter.setBrush(QColor::fromRgba(palette::kMarkBack));
        painter.drawRoundedRect(box, kRadius, kRadius);
        QRectF row(box.left() + kPadding, box.top() + kPadding, kSample, line);
        for (const CurveReading& reading : overlay.readings) {
            draw_sample(painter, row, reading.curve);
            painter.setPen(QColor(palette::kText));
            painter.drawText(QRectF(row.right() + kPadding, row.top(), widest, line),
                             Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                             to_qt(reading_text(reading)));
            row.translate(0.0, line);
        }
    }
    painter.restore();
}

}  // namespace servo::tuner
