#include "scope/curve_chip_widget.h"

#include <QPainter>

#include "params/drawn_icon_view.h"
#include "params/ui_palette.h"
#include "scope/plot_palette.h"
#include "scope/plot_sprites_view.h"

namespace servo::scope {

namespace {

constexpr int kBoxSide = 20;
constexpr int kShapeRoom = 16;
constexpr qreal kIconSide = 16;
constexpr qreal kRadius = 4;
constexpr qreal kDisabledOpacity = 0.45;

class ShapeIcon final : public params::DrawnIcon {
  public:
    explicit ShapeIcon(int channel) : channel_(channel) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode, QIcon::State) override {
        painter->save();
        // In the measure of the pixels that are asked for.
        const qreal scale = place.height() / kIconSide;
        painter->translate(QRectF(place).center());
        painter->scale(scale, scale);
        draw_shape(*painter, QPointF(), channel_);
        painter->restore();
    }
    QIconEngine* clone() const override { return new ShapeIcon(*this); }

  private:
    int channel_;
};

}  // namespace

QIcon shape_icon(int channel) {
    return QIcon(new ShapeIcon(channel));
}

CurveChip::CurveChip(int channel, QWidget* parent) : QLabel(parent), channel_(channel) {
    setText(QString::number(channel + 1));
    setProperty("Tag", QStringLiteral("-"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
}

QSize CurveChip::sizeHint() const {
    const int side = std::max(kBoxSide, fontMetrics().height());
    return {side + kShapeRoom, side};
}

void CurveChip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) painter.setOpacity(kDisabledOpacity);
    const qreal side = height();
    const QRectF box(0.5, 0.5, side - 1, side - 1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgba(palette::kCurves.at(static_cast<std::size_t>(channel_))));
    painter.drawRoundedRect(box, kRadius, kRadius);
    painter.setPen(QColor::fromRgba(palette::kCursorText));
    painter.drawText(box, Qt::AlignCenter, text());
    draw_shape(painter, QPointF(side + kShapeRoom / 2.0, side / 2), channel_);
}

}  // namespace servo::scope
