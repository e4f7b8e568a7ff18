#include "scope/plot_sprites_view.h"

#include <QFontMetricsF>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "scope/plot_palette.h"

namespace servo::scope {

namespace {

constexpr double kShape = 4.5;  // half of its height
constexpr double kOutline = 1.5;
constexpr double kDot = 2.5;
constexpr double kTip = 5.0;  // of a flag
constexpr double kTagGap = 4.0;

QColor colour_of(int channel) {
    return QColor::fromRgba(palette::kCurves.at(static_cast<std::size_t>(channel)));
}

QPolygonF shape_of(int channel, QPointF middle) {
    const double r = kShape;
    QPolygonF shape;
    switch (channel) {
        case 1: {
            const double half = r * 0.88;
            shape << QPointF(-half, -half) << QPointF(half, -half) << QPointF(half, half)
                  << QPointF(-half, half);
            break;
        }
        case 2:
            shape << QPointF(0, -r * 1.15) << QPointF(r * 1.1, r * 0.8)
                  << QPointF(-r * 1.1, r * 0.8);
            break;
        default:
            shape << QPointF(0, -r * 1.2) << QPointF(r * 1.2, 0) << QPointF(0, r * 1.2)
                  << QPointF(-r * 1.2, 0);
            break;
    }
    shape.translate(middle);
    return shape;
}

}  // namespace

void draw_shape(QPainter& painter, QPointF middle, int channel) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgba(palette::kPlot), kOutline, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    painter.setBrush(colour_of(channel));
    if (channel == 0)
        painter.drawEllipse(middle, kShape, kShape);
    else
        painter.drawPolygon(shape_of(channel, middle));
}

void draw_dot(QPainter& painter, QPointF middle, int channel) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour_of(channel));
    painter.drawEllipse(middle, kDot, kDot);
}

QSizeF flag_size(const QFont& font) {
    const QFontMetricsF metrics(font);
    const double height = std::ceil(metrics.height()) + 1;
    return {std::ceil(metrics.horizontalAdvance(QStringLiteral("4"))) + 8 + kTip, height};
}

void draw_flag(QPainter& painter, QPointF tip, int channel, FlagEnd end, const QFont& font) {
    const QSizeF size = flag_size(font);
    const double half = size.height() / 2;
    // The body; its tip is at the right for a line that is seen, else above or below.
    const QRectF body(tip.x() - size.width(), tip.y() - half, size.width() - kTip, size.height());
    QPolygonF outline;
    outline << body.topLeft();
    if (end == FlagEnd::kAbove) outline << QPointF(body.center().x(), body.top() - kTip);
    outline << body.topRight();
    if (end == FlagEnd::kHere) outline << tip;
    outline << body.bottomRight();
    if (end == FlagEnd::kBelow) outline << QPointF(body.center().x(), body.bottom() + kTip);
    outline << body.bottomLeft();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgba(palette::kPlot), 1.0));
    painter.setBrush(colour_of(channel));
    painter.drawPolygon(outline);
    QFont bold = font;
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(QColor::fromRgba(palette::kCursorText));
    painter.drawText(body, Qt::AlignCenter, QString::number(channel + 1));
}

QRectF draw_name(QPainter& painter, QPointF at, int channel, const QString& name,
                 const QFont& font) {
    const QFontMetricsF metrics(font);
    QRectF box(0, 0, std::ceil(metrics.horizontalAdvance(name)) + 2 * kTagGap,
               std::ceil(metrics.height()));
    box.moveTopLeft({at.x() - box.width(), at.y() - box.height() / 2});
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(QColor::fromRgba(palette::kReferences.at(static_cast<std::size_t>(channel))), 1.0));
    painter.setBrush(QColor::fromRgba(palette::kBox));
    painter.drawRoundedRect(box, 3, 3);
    painter.setFont(font);
    painter.setPen(colour_of(channel));
    painter.drawText(box, Qt::AlignCenter, name);
    return box;
}

QRectF draw_tag(QPainter& painter, QPointF at, TagPlace place, const QString& text,
                const QFont& font, const QRectF& inside) {
    const QFontMetricsF metrics(font);
    const QSizeF size(std::ceil(metrics.horizontalAdvance(text)) + 2 * kTagGap,
                      std::ceil(metrics.height()) + 2);
    QRectF box({0, 0}, size);
    if (place == TagPlace::kTopCentre)
        box.moveTopLeft({at.x() - size.width() / 2, at.y()});
    else
        box.moveTopLeft({at.x() - size.width(), at.y() - size.height() / 2});
    box.moveLeft(std::max(std::min(box.left(), inside.right() - size.width()), inside.left()));
    box.moveTop(std::max(std::min(box.top(), inside.bottom() - size.height()), inside.top()));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgba(palette::kCursor));
    painter.drawRoundedRect(box, 3, 3);
    painter.setFont(font);
    painter.setPen(QColor::fromRgba(palette::kCursorText));
    painter.drawText(box, Qt::AlignCenter, text);
    return box;
}

template <typename Draw>
PlotSprites::Sprite PlotSprites::sprite(QRectF bounds, Draw draw) const {
    Sprite made;
    made.image = QImage((bounds.size() * ratio_).toSize() + QSize(1, 1),
                        QImage::Format_ARGB32_Premultiplied);
    made.image.setDevicePixelRatio(ratio_);
    made.image.fill(Qt::transparent);
    made.anchor = -bounds.topLeft();
    QPainter painter(&made.image);
    draw(painter, made.anchor);
    return made;
}

void PlotSprites::prepare(const QFont& font, qreal ratio) {
    if (font == font_ && ratio == ratio_) return;
    font_ = font;
    ratio_ = ratio;
    const double r = std::ceil(kShape * 1.2 + kOutline) + 0.5;
    const QRectF around(-r, -r, 2 * r, 2 * r);
    const QSizeF size = flag_size(font);
    const QRectF flag(-size.width() - 1, -size.height() / 2 - kTip - 1, size.width() + 2,
                      size.height() + 2 * kTip + 2);
    for (int channel = 0; channel < 4; ++channel) {
        const auto place = static_cast<std::size_t>(channel);
        shapes_.at(place) = sprite(
            around, [&](QPainter& painter, QPointF at) { draw_shape(painter, at, channel); });
        dots_.at(place) =
            sprite(around, [&](QPainter& painter, QPointF at) { draw_dot(painter, at, channel); });
        for (const FlagEnd end : {FlagEnd::kHere, FlagEnd::kAbove, FlagEnd::kBelow})
            flags_.at(place).at(static_cast<std::size_t>(end)) = sprite(
                flag,
                [&](QPainter& painter, QPointF at) { draw_flag(painter, at, channel, end, font); });
    }
}

// On whole device pixels: between them it would be blurred.
QRectF PlotSprites::stamp(QPainter& painter, const Sprite& sprite, QPointF at) const {
    const QPointF corner = at - sprite.anchor;
    const QPointF snapped(std::round(corner.x() * ratio_) / ratio_,
                          std::round(corner.y() * ratio_) / ratio_);
    painter.drawImage(snapped, sprite.image);
    return {snapped, QSizeF(sprite.image.size()) / ratio_};
}

QRectF PlotSprites::shape(QPainter& painter, QPointF middle, int channel) const {
    return stamp(painter, shapes_.at(static_cast<std::size_t>(channel)), middle);
}

QRectF PlotSprites::dot(QPainter& painter, QPointF middle, int channel) const {
    return stamp(painter, dots_.at(static_cast<std::size_t>(channel)), middle);
}

QRectF PlotSprites::flag(QPainter& painter, QPointF tip, int channel, FlagEnd end) const {
    return stamp(painter,
                 flags_.at(static_cast<std::size_t>(channel)).at(static_cast<std::size_t>(end)),
                 tip);
}

}  // namespace servo::scope
