#include "tuner/curve_line_view.h"

#include <QPainter>

#include "params/drawn_icon_view.h"
#include "tuner/tuner_palette.h"

namespace servo::tuner {

namespace {

constexpr qreal kSampleWidth = 1.8;
constexpr qreal kDisabledOpacity = 0.35;

QList<qreal> dashes_of(const palette::CurveStyle& style) {
    QList<qreal> dashes;
    for (const std::uint8_t length : style.dashes) {
        if (length == 0) break;
        dashes << length;
    }
    return dashes;
}

class LineIcon final : public params::DrawnIcon {
  public:
    explicit LineIcon(Curve curve) : curve_(curve) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
        painter->save();
        if (mode == QIcon::Disabled) painter->setOpacity(kDisabledOpacity);
        draw_sample(*painter, place, curve_);
        painter->restore();
    }
    QIconEngine* clone() const override { return new LineIcon(curve_); }

  private:
    Curve curve_;
};

}  // namespace

QPen curve_pen(Curve curve) {
    const palette::CurveStyle& style = palette::style_of(curve);
    QPen pen(QColor(style.colour), 1.0);
    pen.setCosmetic(true);
    if (const QList<qreal> dashes = dashes_of(style); !dashes.isEmpty()) {
        pen.setDashPattern(dashes);
        pen.setCapStyle(Qt::FlatCap);
    }
    return pen;
}

void draw_sample(QPainter& painter, const QRectF& place, Curve curve) {
    const palette::CurveStyle& style = palette::style_of(curve);
    QPen pen(QColor(style.colour), kSampleWidth);
    pen.setCapStyle(Qt::FlatCap);
    QList<qreal> dashes = dashes_of(style);
    for (qreal& length : dashes)
        length /= kSampleWidth;
    if (!dashes.isEmpty()) pen.setDashPattern(dashes);
    painter.setPen(pen);
    painter.drawLine(QPointF(place.left(), place.center().y()),
                     QPointF(place.right(), place.center().y()));
}

QIcon curve_icon(Curve curve) {
    return QIcon(new LineIcon(curve));
}

}  // namespace servo::tuner
