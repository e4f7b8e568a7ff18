// The small figures of the plot: a curve's shape, its flag at the zero line, tags. Drawn with the
// painter on paper; on screen they are painted once and stamped.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <array>
#include <cstdint>

namespace servo::scope {

// Where the zero line of a flag is.
enum class FlagEnd : std::uint8_t { kHere, kAbove, kBelow };

// Circle, square, triangle, diamond: by the channel, 0 to 3.
void draw_shape(QPainter& painter, QPointF middle, int channel);
// A dot for a single sample.
void draw_dot(QPainter& painter, QPointF middle, int channel);
// The channel's number with a tip at `tip` on its right side, or an arrow to where the line is.
void draw_flag(QPainter& painter, QPointF tip, int channel, FlagEnd end, const QFont& font);
QSizeF flag_size(const QFont& font);

// The name of a reference, ending at `at`. Returns its box.
QRectF draw_name(QPainter& painter, QPointF at, int channel, const QString& name,
                 const QFont& font);

// Text on a filled rounded box. Returns the box.
enum class TagPlace : std::uint8_t { kTopCentre, kRightMiddle };
QRectF draw_tag(QPainter& painter, QPointF at, TagPlace place, const QString& text,
                const QFont& font, const QRectF& inside);

class PlotSprites {
  public:
    // Paints them anew when the font or the ratio has changed.
    void prepare(const QFont& font, qreal ratio);

    // Onto device pixels of a picture with that ratio. The rectangle is what was painted on.
    QRectF shape(QPainter& painter, QPointF middle, int channel) const;
    QRectF dot(QPainter& painter, QPointF middle, int channel) const;
    QRectF flag(QPainter& painter, QPointF tip, int channel, FlagEnd end) const;

  private:
    struct Sprite {
        QImage image;
        QPointF anchor;  // of the figure's place, from the image's corner
    };
    template <typename Draw>
    Sprite sprite(QRectF bounds, Draw draw) const;
    QRectF stamp(QPainter& painter, const Sprite& sprite, QPointF at) const;

    QFont font_;
    qreal ratio_ = 0;
    std::array<Sprite, 4> shapes_;
    std::array<Sprite, 4> dots_;
    std::array<std::array<Sprite, 3>, 4> flags_;
};

}  // namespace servo::scope
