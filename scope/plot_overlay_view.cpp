// What moves over the curves: cursors, the zoom rectangle, the read-out under the pointer.
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "scope/plot_paint_view.h"
#include "scope/plot_palette.h"

namespace servo::scope {

namespace {

constexpr double kBoxMargin = 8.0;
constexpr double kBoxDistance = 14.0;  // from the crosshair
constexpr double kShapeRoom = 14.0;
constexpr const char* kCursorNames[kCursors] = {"X1", "X2", "Y1", "Y2"};

QColor colour(std::uint32_t argb) {
    return QColor::fromRgba(argb);
}

// A line through the middle of whole pixels.
double on_pixel(const PictureFrame& frame, double at) {
    if (frame.ratio <= 0) return at;
    return (std::floor(at * frame.ratio) + 0.5) / frame.ratio;
}

QPen line_pen(const PictureFrame& frame, std::uint32_t argb, Qt::PenStyle style) {
    QPen pen(colour(argb), frame.hairline(), style, Qt::FlatCap);
    if (style == Qt::CustomDashLine) pen.setDashPattern({6, 4});
    return pen;
}

// The second of each pair is dashed.
void paint_cursor(QPainter& painter, const PictureFrame& frame, Cursor cursor, double at,
                  const QFont& font) {
    const bool vertical = cursor == Cursor::kX1 || cursor == Cursor::kX2;
    const bool second = cursor == Cursor::kX2 || cursor == Cursor::kY2;
    const QRectF& place = frame.place;
    painter.setRenderHint(QPainter::Antialiasing, frame.ratio <= 0);
    painter.setPen(line_pen(frame, palette::kCursor, second ? Qt::CustomDashLine : Qt::SolidLine));
    const QString name = QString::fromLatin1(kCursorNames[static_cast<std::size_t>(cursor)]);
    if (vertical) {
        const double x = on_pixel(frame, frame.x(at));
        painter.drawLine(QPointF(x, place.top()), QPointF(x, place.bottom()));
        draw_tag(painter, {x, place.top() + 2}, TagPlace::kTopCentre, name, font, place);
    } else {
        const double y = on_pixel(frame, frame.y(at));
        painter.drawLine(QPointF(place.left(), y), QPointF(place.right(), y));
        draw_tag(painter, {place.right() - 2, y}, TagPlace::kRightMiddle, name, font, place);
    }
}

void paint_rectangle(QPainter& painter, const PictureFrame& frame, const ZoomRectangle& zoom) {
    const QPointF from(on_pixel(frame, frame.x(zoom.rectangle_x1)),
                       on_pixel(frame, frame.y(zoom.rectangle_y1)));
    const QPointF to(on_pixel(frame, frame.x(zoom.rectangle_x2)),
                     on_pixel(frame, frame.y(zoom.rectangle_y2)));
    painter.setRenderHint(QPainter::Antialiasing, false);
    // From right to left leads out: nothing is picked then, so nothing is filled.
    painter.setBrush(zoom.rectangle_x2 > zoom.rectangle_x1 ? QBrush(colour(palette::kZoomArea))
                                                           : QBrush(Qt::NoBrush));
    painter.setPen(QPen(colour(palette::kZoomEdge), frame.hairline()));
    painter.drawRect(QRectF(from, to).normalized());
}

// The box with the time and the values, beside the crosshair where there is room.
class HoverBox {
  public:
    HoverBox(const HoverReadout& readout, const QFont& font)
        : readout_(readout), font_(font), bold_(font) {
        bold_.setBold(true);
        const QFontMetricsF metrics(font);
        line_ = std::ceil(metrics.height()) + 2;
        double width = QFontMetricsF(bold_).horizontalAdvance(time());
        for (const HoverValue& value : readout.values)
            width = std::max(width, kShapeRoom + metrics.horizontalAdvance(text_of(value)));
        size_ = {std::ceil(width) + 2 * kBoxMargin,
                 line_ * static_cast<double>(readout.values.size() + 1) + kBoxMargin};
    }

    QRectF place(double x, double y, const QRectF& inside) const {
        QRectF box({x + kBoxDistance, y - size_.height() - kBoxDistance}, size_);
        if (box.right() > inside.right()) box.moveRight(x - kBoxDistance);
        box.moveTop(
            std::max(std::min(box.top(), inside.bottom() - size_.height() - 4), inside.top() + 4));
        return box;
    }

    void paint(QPainter& painter, const QRectF& box) const {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colour(palette::kFrame), 1.0));
        painter.setBrush(colour(palette::kBox));
        painter.drawRoundedRect(box, 4, 4);
        QRectF row = box.adjusted(kBoxMargin, kBoxMargin / 2, -kBoxMargin, 0);
        row.setHeight(line_);
        painter.setPen(colour(palette::kText));
        painter.setFont(bold_);
        painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, time());
        painter.setFont(font_);
        for (const HoverValue& value : readout_.values) {
            row.translate(0, line_);
            draw_shape(painter, {row.left() + 4.5, row.center().y()}, value.channel);
            painter.setPen(colour(palette::kText));
            painter.drawText(row.adjusted(kShapeRoom, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                             text_of(value));
        }
    }

  private:
    QString time() const { return QString::fromStdString(readout_.time); }
    static QString text_of(const HoverValue& value) {
        return QStringLiteral("%1   ").arg(value.channel + 1) + QString::fromStdString(value.text);
    }

    const HoverReadout& readout_;
    QFont font_;
    QFont bold_;
    double line_ = 0;
    QSizeF size_;
};

void paint_hover(QPainter& painter, const PictureFrame& frame, const HoverReadout& hover,
                 double pointer_y, const QFont& font) {
    const double x = on_pixel(frame, frame.x(hover.x));
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(line_pen(frame, palette::kCrosshair, Qt::SolidLine));
    painter.drawLine(QPointF(x, frame.place.top()), QPointF(x, frame.place.bottom()));
    for (const HoverValue& value : hover.values)
        if (value.y >= 0 && value.y <= kPictureHeight)
            draw_shape(painter, {x, frame.y(value.y)}, value.channel);
    const HoverBox box(hover, font);
    box.paint(painter, box.place(x, frame.y(pointer_y), frame.place));
}

}  // namespace

void paint_overlay(QPainter& painter, const PictureFrame& frame, const PlotScene& scene,
                   const PlotOverlay& overlay, const QFont& font) {
    if (!scene.valid) return;
    painter.save();
    painter.setClipRect(frame.place);
    for (std::size_t i = 0; i < kCursors; ++i)
        if (overlay.cursors[i].on)
            paint_cursor(painter, frame, static_cast<Cursor>(i), overlay.cursors[i].at, font);
    if (overlay.rectangle) paint_rectangle(painter, frame, *overlay.rectangle);
    if (overlay.hover) paint_hover(painter, frame, *overlay.hover, overlay.hover_y, font);
    painter.restore();
}

}  // namespace servo::scope
