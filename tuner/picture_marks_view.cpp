// Margins and resonances on the picture: a shape at the place and a text beside it, in the colour
// of its curve, no text over another.
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "tuner/picture_paint_view.h"
#include "tuner/tuner_controls_view.h"
#include "tuner/tuner_palette.h"

namespace servo::tuner {

namespace {

constexpr qreal kRadius = 3.5;
constexpr qreal kGapToText = 3.0;
constexpr qreal kTip = 5.0;  // half a triangle's side
constexpr int kMostShifts = 8;

class Marker {
  public:
    Marker(QPainter& painter, const PictureScene& scene, const PictureFrame& frame)
        : painter_(painter),
          scene_(scene),
          frame_(frame),
          metrics_(painter.font(), painter.device()) {}

    void draw(const SceneMark& mark) {
        colour_ = QColor(palette::style_of(mark.curve).colour);
        switch (mark.kind) {
            case MarkKind::kCrossover:
                dot(mark, true);
                return;
            case MarkKind::kBandwidth:
                dot(mark, false);
                return;
            case MarkKind::kGainMargin:
                span(mark, scene_.gain);
                return;
            case MarkKind::kPhaseMargin:
                span(mark, scene_.phase);
                return;
            case MarkKind::kResonance:
                tip(mark, -1.0);
                return;
            case MarkKind::kAntiResonance:
                tip(mark, 1.0);
                return;
        }
    }

  private:
    void dot(const SceneMark& mark, bool filled) {
        const QPointF at = inside(mark.at, scene_.gain, 0.0);
        painter_.setPen(QPen(colour_, 1.6));
        painter_.setBrush(filled ? colour_ : QColor(palette::kPicture));
        painter_.drawEllipse(at, kRadius, kRadius);
        text(mark, QPointF(at.x() + kRadius + kGapToText, at.y() - metrics_.height()), -1.0,
             scene_.gain);
    }

    void span(const SceneMark& mark, const SceneArea& area) {
        const QPointF at = inside(mark.at, area, 0.0);
        const QPointF to = inside({mark.at.x, mark.to_y}, area, 0.0);
        painter_.setPen(QPen(colour_, 1.6));
        painter_.drawLine(at, to);
        for (const QPointF& end : {at, to})
            painter_.drawLine(end - QPointF(kRadius, 0), end + QPointF(kRadius, 0));
        text(mark, QPointF(at.x() + kGapToText, (at.y() + to.y() - metrics_.height()) / 2.0), 1.0,
             area);
    }

    // `down` is 1 for a tip that points down.
    void tip(const SceneMark& mark, qreal down) {
        const QPointF at =
            inside(mark.at, scene_.gain, kGapToText + 1.4 * kTip + metrics_.height()) +
            QPointF(0.0, down * kGapToText);
        const QPolygonF shape{
            {at, at + QPointF(-kTip, down * 1.4 * kTip), at + QPointF(kTip, down * 1.4 * kTip)}};
        colour_ = QColor(palette::kPeak);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(colour_);
        painter_.drawPolygon(shape);
        const qreal beside = at.y() + down * 1.4 * kTip + (down < 0.0 ? -metrics_.height() : 0.0);
        text(mark, QPointF(at.x() - metrics_.horizontalAdvance(to_qt(mark.text)) / 2.0, beside),
             down, scene_.gain);
    }

    // What lies outside of its area is marked at the edge, so far from it.
    QPointF inside(ScenePoint point, const SceneArea& area, qreal margin) const {
        const QPointF at = frame_.at(point);
        const qreal top = frame_.y(area.top) + margin;
        const qreal bottom = frame_.y(area.bottom) - margin;
        return {at.x(), std::clamp(at.y(), top, std::max(top, bottom))};
    }

    // Beside its place, or further up or down where another text stands already.
    void text(const SceneMark& mark, QPointF corner, qreal way, const SceneArea& area) {
        const QString shown = to_qt(mark.text);
        const QRectF room = frame_.area(area, scene_.surface);
        QRectF place(corner, QSizeF(metrics_.horizontalAdvance(shown), metrics_.height()));
        const auto into = [&room](QRectF moved) {
            moved.moveLeft(std::clamp(moved.left(), room.left() + 1.0,
                                      std::max(room.left() + 1.0, room.right() - moved.width())));
            moved.moveTop(std::clamp(moved.top(), room.top(),
                                     std::max(room.top(), room.bottom() - moved.height())));
            return moved;
        };
        place = into(place);
        const auto touches = [&](const QRectF& other) { return other.intersects(place); };
        const QRectF first = place;
        for (int i = 1; i <= kMostShifts && std::ranges::any_of(taken_, touches); ++i) {
            // Alternately further that way and back.
            const int steps = (i + 1) / 2;
            const qreal there = i % 2 == 1 ? way : -way;
            place = into(first.translated(0.0, steps * there * metrics_.height()));
        }
        taken_.push_back(place);
        painter_.fillRect(place.adjusted(-1, 0, 1, 0), QColor::fromRgba(palette::kMarkBack));
        painter_.setPen(colour_);
        painter_.drawText(place, Qt::AlignCenter | Qt::TextDontClip, shown);
    }

    QPainter& painter_;
    const PictureScene& scene_;
    const PictureFrame& frame_;
    QFontMetricsF metrics_;
    QColor colour_;
    std::vector<QRectF> taken_;
};

}  // namespace

void paint_marks(QPainter& painter, const PictureScene& scene, const PictureFrame& frame,
                 const QFont& font) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(small_font(font));
    painter.setClipRect(frame.area({true, 0, scene.surface.height}, scene.surface));
    Marker marker(painter, scene, frame);
    for (const SceneMark& mark : scene.marks)
        marker.draw(mark);
    painter.restore();
}

}  // namespace servo::tuner
