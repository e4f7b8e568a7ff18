#include "scope/plot_paint_view.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "scope/plot_figures_view.h"
#include "scope/plot_palette.h"

namespace servo::scope {

namespace {

constexpr double kReferencePen = 1.0;
constexpr int kTicks = 5;  // in a division
constexpr double kTickLength = 3.0;
constexpr double kPaperHairline = 0.5;
constexpr double kEmptyGap = 8.0;

QColor colour(std::uint32_t argb) {
    return QColor::fromRgba(argb);
}

// Lines of the grid stand on whole pixels, so that they are one pixel wide at any ratio.
class GridPainter {
  public:
    GridPainter(QPainter& painter, const PictureFrame& frame)
        : painter_(painter), frame_(frame), line_(frame.hairline()) {}

    void vertical(double units, double from, double to, std::uint32_t argb) {
        fill({on_pixel(frame_.x(units)), from, line_, to - from}, argb);
    }
    void horizontal(double units, double from, double to, std::uint32_t argb) {
        fill({from, on_pixel(frame_.y(units)), to - from, line_}, argb);
    }

  private:
    // The edge of a line whose middle is there.
    double on_pixel(double middle) const {
        const double edge = middle - line_ / 2;
        return frame_.ratio > 0 ? std::round(edge * frame_.ratio) / frame_.ratio : edge;
    }
    void fill(const QRectF& rect, std::uint32_t argb) { painter_.fillRect(rect, colour(argb)); }

    QPainter& painter_;
    const PictureFrame& frame_;
    double line_;
};

void paint_ticks(GridPainter& grid, const PictureFrame& frame) {
    const double middle_x = frame.x(kPictureWidth / 2.0);
    const double middle_y = frame.y(kPictureHeight / 2.0);
    const QRectF& place = frame.place;
    for (int i = 1; i < kDivisions * kTicks; ++i) {
        const double x = kPictureWidth * i / double{kDivisions * kTicks};
        const double y = kPictureHeight * i / double{kDivisions * kTicks};
        const double length = i % kTicks == 0 ? 2 * kTickLength : kTickLength;
        grid.vertical(x, middle_y - kTickLength, middle_y + kTickLength, palette::kMiddle);
        grid.vertical(x, place.bottom() - length, place.bottom(), palette::kTick);
        grid.vertical(x, place.top(), place.top() + length, palette::kTick);
        grid.horizontal(y, middle_x - kTickLength, middle_x + kTickLength, palette::kMiddle);
        grid.horizontal(y, place.left(), place.left() + length, palette::kTick);
        grid.horizontal(y, place.right() - length, place.right(), palette::kTick);
    }
}

void paint_grid(QPainter& painter, const PictureFrame& frame) {
    const QRectF& place = frame.place;
    painter.fillRect(place, colour(palette::kPlot));
    GridPainter grid(painter, frame);
    for (int i = 1; i < kDivisions; ++i) {
        grid.vertical(kPictureWidth * i / double{kDivisions}, place.top(), place.bottom(),
                      palette::kGrid);
        grid.horizontal(kPictureHeight * i / double{kDivisions}, place.left(), place.right(),
                        palette::kGrid);
    }
    paint_ticks(grid, frame);
    grid.vertical(kPictureWidth / 2.0, place.top(), place.bottom(), palette::kMiddle);
    grid.horizontal(kPictureHeight / 2.0, place.left(), place.right(), palette::kMiddle);
    grid.vertical(0, place.top(), place.bottom(), palette::kFrame);
    grid.vertical(kPictureWidth, place.top(), place.bottom(), palette::kFrame);
    grid.horizontal(0, place.left(), place.right(), palette::kFrame);
    grid.horizontal(kPictureHeight, place.left(), place.right(), palette::kFrame);
}

void paint_empty(QPainter& painter, const QRectF& place, const PlotScene& scene,
                 const QFont& font) {
    const auto texts = empty_texts(scene.waits, scene.language);
    const QString head = QString::fromStdString(texts[0]);
    const QString next = QString::fromStdString(texts[1]);
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() > 0 ? font.pointSizeF() * 1.4 : 14);
    const QFontMetricsF large_metrics(large);
    const QFontMetricsF metrics(font);
    const double width =
        std::max(large_metrics.horizontalAdvance(head), metrics.horizontalAdvance(next));
    const double height = large_metrics.height() + metrics.height() + kEmptyGap;
    QRectF box(0, 0, std::ceil(width), std::ceil(height));
    box.moveCenter(place.center());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour(palette::kFrame), 1.0));
    painter.setBrush(colour(palette::kPlot));
    painter.drawRoundedRect(
        box.adjusted(-4 * kEmptyGap, -2 * kEmptyGap, 4 * kEmptyGap, 2 * kEmptyGap), 6, 6);
    painter.setFont(large);
    painter.setPen(colour(palette::kText));
    painter.drawText(box, Qt::AlignHCenter | Qt::AlignTop, head);
    painter.setFont(font);
    painter.setPen(colour(palette::kMutedText));
    painter.drawText(box, Qt::AlignHCenter | Qt::AlignBottom, next);
}

PixelSurface surface_of(QImage& image) {
    return {reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(),
            static_cast<std::ptrdiff_t>(image.bytesPerLine() / 4)};
}

// With a pixel more on each side, for what a smooth edge adds.
void copy_pixels(const QImage& from, QImage& to, const QRect& rect) {
    const QRect part = rect.adjusted(-1, -1, 1, 1) & to.rect();
    for (int y = part.top(); y <= part.bottom(); ++y)
        std::memcpy(to.scanLine(y) + part.left() * 4, from.constScanLine(y) + part.left() * 4,
                    static_cast<std::size_t>(part.width()) * 4);
}

CurveLine line_of(std::span<const float> heights, SampleTimes times,
                  const CurveTransform& transform, const PlotArea& area) {
    const double first = transform.x(times.first_at, area);
    return {heights, first, transform.x(times.first_at + times.step, area) - first};
}

void paint_polyline(QPainter& painter, const std::vector<PlotPoint>& points, std::uint32_t argb,
                    double width) {
    QPolygonF line;
    line.reserve(static_cast<qsizetype>(points.size()));
    for (const PlotPoint& point : points)
        line << QPointF(point.x, point.y);
    painter.setPen(QPen(colour(argb), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(line);
}

}  // namespace

// --- Frame

double PictureFrame::x(double units) const {
    return place.left() + inset() + units * (place.width() - 2 * inset()) / kPictureWidth;
}

double PictureFrame::y(double units) const {
    return place.top() + inset() + units * (place.height() - 2 * inset()) / kPictureHeight;
}

QPointF PictureFrame::units(QPointF at) const {
    const double width = std::max(place.width() - 2 * inset(), 1e-9);
    const double height = std::max(place.height() - 2 * inset(), 1e-9);
    return {(at.x() - place.left() - inset()) * kPictureWidth / width,
            (at.y() - place.top() - inset()) * kPictureHeight / height};
}

PlotArea PictureFrame::area() const {
    if (ratio <= 0) return {place.left(), place.top(), place.width(), place.height()};
    return {0, 0, place.width() * ratio - 1, place.height() * ratio - 1};
}

double PictureFrame::hairline() const {
    return ratio > 0 ? std::max(std::floor(ratio), 1.0) / ratio : kPaperHairline;
}

// --- Pixels

void PlotPicture::set_scene(PlotScene scene) {
    scene_ = std::move(scene);
    current_ = false;
}

void PlotPicture::set_font(const QFont& font) {
    if (font == font_) return;
    font_ = font;
    current_ = false;
    background_ = {};
}

void PlotPicture::set_pen_width(double width) {
    pen_width_ = width;
    current_ = false;
}

const QImage& PlotPicture::image(QSize size, qreal ratio) {
    const QSize pixels = (QSizeF(size) * ratio).toSize().expandedTo({1, 1});
    if (current_ && image_.size() == pixels && image_.devicePixelRatio() == ratio) return image_;
    paint_background(pixels, ratio);
    const PictureFrame frame{QRectF({0, 0}, QSizeF(pixels) / ratio), ratio};
    if (scene_.valid) {
        paint_curves();
        paint_figures(frame);
    } else {
        QPainter painter(&image_);
        paint_empty(painter, frame.place, scene_, font_);
        figures_.push_back(image_.rect());
    }
    current_ = true;
    return image_;
}

// Makes it for a new size, or clears away what was painted last.
void PlotPicture::paint_background(QSize pixels, qreal ratio) {
    if (background_.size() == pixels && background_.devicePixelRatio() == ratio) {
        raster_.erase(surface_of(background_), surface_of(image_));
        for (const QRect& rect : figures_)
            copy_pixels(background_, image_, rect);
        figures_.clear();
        return;
    }
    background_ = QImage(pixels, QImage::Format_RGB32);
    background_.setDevicePixelRatio(ratio);
    {
        QPainter painter(&background_);
        paint_grid(painter, {QRectF({0, 0}, QSizeF(pixels) / ratio), ratio});
    }
    image_ = background_.copy();
    raster_.forget();
    figures_.clear();
}

void PlotPicture::paint_curves() {
    const double ratio = image_.devicePixelRatio();
    const PlotArea area{0, 0, image_.width() - 1.0, image_.height() - 1.0};
    const PixelSurface surface = surface_of(image_);
    for (const SceneReference& reference : scene_.references) {
        curve_heights(reference.values, reference.transform, area, heights_);
        raster_.draw(line_of(heights_, reference.times, reference.transform, area),
                     kReferencePen * ratio,
                     palette::kReferences.at(static_cast<std::size_t>(reference.channel)), surface);
    }
    for (const SceneCurve& curve : scene_.curves) {
        curve_heights(curve.values, curve.transform, area, heights_);
        raster_.draw(line_of(heights_, curve.times, curve.transform, area), pen_width_ * ratio,
                     palette::kCurves.at(static_cast<std::size_t>(curve.channel)), surface);
    }
}

void PlotPicture::paint_figures(const PictureFrame& frame) {
    sprites_.prepare(font_, frame.ratio);
    QPainter painter(&image_);
    const auto keep = [&](const QRectF& rect) {
        const QRectF pixels(rect.topLeft() * frame.ratio, rect.size() * frame.ratio);
        figures_.push_back(pixels.toAlignedRect());
    };
    for (const PlacedName& name : placed_names(scene_, frame))
        keep(draw_name(painter, name.at, name.channel, name.text, font_));
    for (const PlacedShape& shape : placed_shapes(scene_, frame))
        keep(shape.dot ? sprites_.dot(painter, shape.at, shape.channel)
                       : sprites_.shape(painter, shape.at, shape.channel));
    for (const PlacedFlag& flag : placed_flags(scene_, frame, font_))
        keep(sprites_.flag(painter, flag.tip, flag.channel, flag.end));
}

// --- Lines

void paint_picture(QPainter& painter, const QRectF& place, const PlotScene& scene,
                   const QFont& font) {
    const PictureFrame frame{place, 0};
    const PlotArea area = frame.area();
    painter.save();
    painter.setClipRect(place);
    paint_grid(painter, frame);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!scene.valid) paint_empty(painter, place, scene, font);
    for (const SceneReference& reference : scene.references)
        paint_polyline(painter,
                       curve_points(reference.values, reference.times, reference.transform, area,
                                    CurveRaster::kStripes),
                       palette::kReferences.at(static_cast<std::size_t>(reference.channel)),
                       kReferencePen);
    for (const SceneCurve& curve : scene.curves)
        paint_polyline(
            painter,
            curve_points(curve.values, curve.times, curve.transform, area, CurveRaster::kStripes),
            palette::kCurves.at(static_cast<std::size_t>(curve.channel)), kCurvePen);
    for (const PlacedName& name : placed_names(scene, frame))
        draw_name(painter, name.at, name.channel, name.text, font);
    for (const PlacedShape& shape : placed_shapes(scene, frame)) {
        if (shape.dot)
            draw_dot(painter, shape.at, shape.channel);
        else
            draw_shape(painter, shape.at, shape.channel);
    }
    for (const PlacedFlag& flag : placed_flags(scene, frame, font))
        draw_flag(painter, flag.tip, flag.channel, flag.end, font);
    painter.restore();
}

}  // namespace servo::scope
