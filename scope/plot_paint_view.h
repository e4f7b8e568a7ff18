// Paints the plot: grid, references, curves, flags; then what moves over it. On screen the curves
// are drawn into the pixels themselves, at their number; on paper they are lines.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QRegion>
#include <optional>

#include "scope/plot_mouse.h"
#include "scope/plot_raster.h"
#include "scope/plot_scene.h"
#include "scope/plot_sprites_view.h"

namespace servo::scope {

inline constexpr double kCurvePen = 1.5;  // pixels on screen at 100 percent

// Where picture units are on a surface. With a ratio the surface has pixels, and the picture runs
// from the middle of its first to that of its last; without one it is paper.
struct PictureFrame {
    QRectF place;
    qreal ratio = 0;

    double x(double units) const;
    double y(double units) const;
    QPointF units(QPointF at) const;
    // The same in device pixels, from the middle of the first one; on paper that of `place`.
    PlotArea area() const;
    // Of a thin line, in the surface's own measure.
    double hairline() const;

  private:
    double inset() const { return ratio > 0 ? 0.5 / ratio : 0.0; }
};

// What moves over the curves.
struct PlotOverlay {
    std::array<CursorPlace, kCursors> cursors{};
    std::optional<ZoomRectangle> rectangle;
    std::optional<HoverReadout> hover;
    double hover_y = 0.0;  // height of the pointer, picture units
};

// The picture without what moves, as pixels; painted anew only when something has changed.
class PlotPicture {
  public:
    void set_scene(PlotScene scene);
    const PlotScene& scene() const { return scene_; }
    void set_font(const QFont& font);
    void set_pen_width(double width);  // at 100 percent

    const QImage& image(QSize size, qreal ratio);

  private:
    void paint_background(QSize pixels, qreal ratio);
    void paint_curves();
    void paint_figures(const PictureFrame& frame);

    PlotScene scene_;
    QFont font_;
    double pen_width_ = kCurvePen;
    bool current_ = false;
    QImage background_;  // all that stays for one size
    QImage image_;
    std::vector<QRect> figures_;  // pixels that were painted beside the curves
    PlotSprites sprites_;
    CurveRaster raster_;
    std::vector<float> heights_;
};

// The same as lines, for paper and for drawings.
void paint_picture(QPainter& painter, const QRectF& place, const PlotScene& scene,
                   const QFont& font);

void paint_overlay(QPainter& painter, const PictureFrame& frame, const PlotScene& scene,
                   const PlotOverlay& overlay, const QFont& font);

// The whole sheet for saving and printing: the picture with its cursors, values and times at its
// edges, and what each curve is. Works on every paint device.
void paint_plot(QPainter& painter, const QRectF& place, const PlotScene& scene, const QFont& font);

}  // namespace servo::scope
