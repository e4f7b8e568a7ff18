#include "tuner/picture_paint_view.h"

#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "tuner/curve_line_view.h"
#include "tuner/tuner_controls_view.h"
#include "tuner/tuner_palette.h"

namespace servo::tuner {

namespace {

constexpr qreal kSmall = 0.85;
constexpr qreal kLabelGap = 2.0;    // pixels between a line and its number
constexpr qreal kCurveWidth = 1.6;  // pixels
constexpr const char* kWidestScale = "-180\u00b0 ";

QColor line_colour(GridRank rank) {
    return QColor(rank == GridRank::kDecade ? palette::kDecade : palette::kGrid);
}

void draw_lines_across(QPainter& painter, const std::vector<GridLine>& lines,
                       const PictureScene& scene, const PictureFrame& frame) {
    for (const GridLine& line : lines) {
        painter.setPen(QColor(line.rank == GridRank::kDecade ? palette::kMiddle : palette::kGrid));
        painter.drawLine(QPointF(frame.x(0), frame.y(line.place)),
                         QPointF(frame.x(scene.surface.width), frame.y(line.place)));
    }
}

// Where there is no room for all of them, those of the lower ranks give way.
void draw_frequencies(QPainter& painter, const PictureScene& scene, const PictureFrame& frame) {
    const QFontMetricsF metrics(painter.font(), painter.device());
    std::vector<QRectF> taken;
    painter.setPen(QColor(palette::kMutedText));
    for (const GridRank rank : {GridRank::kDecade, GridRank::kMiddle, GridRank::kOther})
        for (const GridLine& line : scene.frequencies) {
            if (line.rank != rank) continue;
            const QString label = to_qt(line.label);
            const qreal width = metrics.horizontalAdvance(label);
            qreal left = frame.x(line.place) + kLabelGap;
            if (left + width > frame.x(scene.surface.width))
                left = frame.x(line.place) - kLabelGap - width;
            const QRectF place(left, frame.y(scene.label_y), width, metrics.height());
            const auto touches = [&](const QRectF& other) {
                return place.adjusted(-kLabelGap, 0, kLabelGap, 0).intersects(other);
            };
            if (std::ranges::any_of(taken, touches)) continue;
            taken.push_back(place);
            painter.drawText(place, Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, label);
        }
}

QPolygonF polygon_of(const ScenePolyline& line, const PictureFrame& frame, qreal shift) {
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(line.size()));
    for (const ScenePoint& point : line)
        polygon << frame.at(point) + QPointF(0.0, shift);
    return polygon;
}

const SceneArea& area_of(const PictureScene& scene, const SceneCurve& curve) {
    return curve.phase ? scene.phase : scene.gain;
}

}  // namespace

QFont small_font(const QFont& font) {
    QFont small = font;
    small.setPointSizeF(font.pointSizeF() * kSmall);
    return small;
}

void paint_grid(QPainter& painter, const PictureScene& scene, const PictureFrame& frame,
                const QFont& font) {
    painter.save();
    const QRectF whole = frame.area({true, 0, scene.surface.height}, scene.surface);
    painter.fillRect(whole, QColor(palette::kPicture));
    for (const GridRank rank : {GridRank::kOther, GridRank::kMiddle, GridRank::kDecade})
        for (const GridLine& line : scene.frequencies) {
            if (line.rank != rank) continue;
            painter.setPen(line_colour(rank));
            painter.drawLine(QPointF(frame.x(line.place), whole.top()),
                             QPointF(frame.x(line.place), whole.bottom()));
        }
    draw_lines_across(painter, scene.gains, scene, frame);
    draw_lines_across(painter, scene.phases, scene, frame);
    painter.setFont(small_font(font));
    draw_frequencies(painter, scene, frame);
    painter.restore();
}

void paint_curves(QPainter& painter, const PictureScene& scene, const PictureFrame& frame) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    // Hairlines of one pixel of the device each, side by side in height.
    const qreal more = kCurveWidth * frame.ratio - 1.0;
    const int lines = std::max(2, static_cast<int>(std::lround(kCurveWidth * frame.ratio)));
    const qreal apart = more / (lines - 1) / frame.ratio;
    for (const SceneCurve& curve : scene.curves) {
        painter.setClipRect(frame.area(area_of(scene, curve), scene.surface));
        painter.setPen(curve_pen(curve.curve));
        for (const ScenePolyline& line : curve.lines) {
            QPolygonF polygon = polygon_of(line, frame, -more / frame.ratio / 2.0);
            for (int i = 0; i < lines; ++i) {
                if (i > 0) polygon.translate(0.0, apart);
                painter.drawPolyline(polygon);
            }
        }
    }
    painter.restore();
}

void stroke_curves(QPainter& painter, const PictureScene& scene, const PictureFrame& frame) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const SceneCurve& curve : scene.curves) {
        painter.setClipRect(frame.area(area_of(scene, curve), scene.surface));
        QPen pen = curve_pen(curve.curve);
        QList<qreal> dashes = pen.dashPattern();
        for (qreal& length : dashes)
            length /= kCurveWidth;
        pen.setCosmetic(false);
        pen.setWidthF(kCurveWidth);
        if (!dashes.isEmpty()) pen.setDashPattern(dashes);
        painter.setPen(pen);
        for (const ScenePolyline& line : curve.lines)
            painter.drawPolyline(polygon_of(line, frame, 0.0));
    }
    painter.restore();
}

qreal scale_width(const QFont& font) {
    return QFontMetricsF(small_font(font)).horizontalAdvance(QString::fromUtf8(kWidestScale));
}

void paint_scales(QPainter& painter, const PictureScene& scene, const PictureFrame& frame,
                  qreal right, const QFont& font) {
    painter.save();
    painter.setFont(small_font(font));
    painter.setPen(QColor(palette::kMutedText));
    const qreal height = QFontMetricsF(painter.font(), painter.device()).height();
    const qreal top = frame.y(0);
    const qreal bottom = frame.y(scene.surface.height);
    const auto draw = [&](const std::vector<GridLine>& lines, const SceneArea& area) {
        for (const GridLine& line : lines) {
            qreal y = frame.y(line.place) - height / 2.0;
            // At the edge between the areas each keeps to its side.
            if (scene.gain.shown && scene.phase.shown) {
                if (line.place == area.bottom) y = frame.y(line.place) - height;
                if (line.place == area.top) y = frame.y(line.place);
            }
            y = std::clamp(y, top, std::max(top, bottom - height));
            painter.drawText(QRectF(0.0, y, right, height),
                             Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip,
                             to_qt(line.label));
        }
    };
    draw(scene.gains, scene.gain);
    draw(scene.phases, scene.phase);
    painter.restore();
}

}  // namespace servo::tuner
