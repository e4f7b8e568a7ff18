// Draws a picture's scene: grid, curves, marks. Units of the scene become pixels here.
#pragma once

#include <QFont>
#include <QPainter>
#include <QRectF>

#include "tuner/picture_scene.h"

namespace servo::tuner {

// Where the surface stands on what is painted on. A unit is the same length both ways.
struct PictureFrame {
    QPointF origin{};
    qreal pixels_per_unit = 1.0 / kUnitsPerPixel;
    qreal ratio = 1.0;  // pixels of the device to one of these pixels

    QPointF at(ScenePoint point) const { return {x(point.x), y(point.y)}; }
    qreal x(int units) const { return origin.x() + units * pixels_per_unit; }
    qreal y(int units) const { return origin.y() + units * pixels_per_unit; }
    QRectF area(const SceneArea& area, const Surface& surface) const {
        return {QPointF(x(0), y(area.top)), QPointF(x(surface.width), y(area.bottom))};
    }
};

// The ground, the lines of the grid and their frequencies.
void paint_grid(QPainter& painter, const PictureScene& scene, const PictureFrame& frame,
                const QFont& font);

// On a raster: with hairlines, some of them beside each other, which is what makes it quick.
void paint_curves(QPainter& painter, const PictureScene& scene, const PictureFrame& frame);
// On paper: with the pen as it is.
void stroke_curves(QPainter& painter, const PictureScene& scene, const PictureFrame& frame);

void paint_marks(QPainter& painter, const PictureScene& scene, const PictureFrame& frame,
                 const QFont& font);

// Gains and phases at the left of their lines; the numbers end at `right`.
void paint_scales(QPainter& painter, const PictureScene& scene, const PictureFrame& frame,
                  qreal right, const QFont& font);
// Room that the scales need at the left.
qreal scale_width(const QFont& font);

// The font of numbers on the picture.
QFont small_font(const QFont& font);

}  // namespace servo::tuner
