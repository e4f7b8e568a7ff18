// The plot as a sheet of its own: what the window shows around the picture is written at its edges.
#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QTransform>
#include <algorithm>
#include <cmath>

#include "base/number.h"
#include "params/qt_text_view.h"
#include "scope/plot_paint_view.h"
#include "scope/plot_palette.h"

namespace servo::scope {

namespace {

using params::to_qt;

constexpr double kGap = 8.0;
constexpr double kShapeRoom = 14.0;
constexpr base::Text kPerDivision{"/格", "/div"};

QColor colour(std::uint32_t argb) {
    return QColor::fromRgba(argb);
}

// What a curve is: number, object, unit, scale.
QString curve_text(const SceneCurve& curve, base::Language language) {
    QString text = QString::number(curve.channel + 1) + QStringLiteral("  ") + to_qt(curve.object);
    text += QStringLiteral("  ") + to_qt(base::number_text(curve.transform.scale));
    if (!curve.unit.empty()) text += QLatin1Char(' ') + to_qt(curve.unit);
    return text + to_qt(kPerDivision.in(language));
}

class PageWriter {
  public:
    PageWriter(QPainter& painter, const QRectF& place, const PlotScene& scene, const QFont& font)
        : painter_(painter), place_(place), scene_(scene), font_(font), metrics_(font) {
        line_ = std::ceil(metrics_.height());
        curves_ = scene.curves;
        std::sort(curves_.begin(), curves_.end(),
                  [](const SceneCurve& a, const SceneCurve& b) { return a.channel < b.channel; });
    }

    // On whole units, so that pixels stay sharp.
    QRectF picture() const {
        double column = 0;
        for (const std::string& label : scene_.y_labels)
            column = std::max(column, metrics_.horizontalAdvance(to_qt(label)));
        const double left = std::ceil(column) + 2 * kGap;
        const double above = line_ + 2 * kGap;
        const double below = line_ * (1 + legend_rows(place_.width() - left - kGap)) + 3 * kGap;
        QRectF picture = place_.adjusted(left, above, -2 * kGap, -below);
        picture.setWidth(std::max(std::floor(picture.width()), 1.0));
        picture.setHeight(std::max(std::floor(picture.height()), 1.0));
        return picture;
    }

    void write(const QRectF& picture) {
        painter_.setFont(font_);
        write_values(picture);
        write_times(picture);
        painter_.setPen(colour(palette::kMutedText));
        painter_.drawText(QRectF(picture.left(), place_.top() + kGap, picture.width(), line_),
                          Qt::AlignRight | Qt::AlignVCenter, to_qt(scene_.zoom));
        legend(picture, [this](QPointF at, const SceneCurve& curve, const QString& text) {
            draw_shape(painter_, {at.x() + 5, at.y() + line_ / 2}, curve.channel);
            painter_.setPen(colour(palette::kText));
            painter_.drawText(QRectF(at.x() + kShapeRoom, at.y(), 1e4, line_),
                              Qt::AlignLeft | Qt::AlignVCenter, text);
        });
    }

  private:
    void write_values(const QRectF& picture) {
        if (scene_.labelled < 0) return;
        painter_.setPen(colour(palette::kCurves.at(static_cast<std::size_t>(scene_.labelled))));
        const double right = picture.left() - kGap;
        for (int line = 0; line < kDivisions; ++line) {
            const double y = picture.bottom() - picture.height() * line / kDivisions;
            painter_.drawText(QRectF(place_.left(), y - line_ / 2, right - place_.left(), line_),
                              Qt::AlignRight | Qt::AlignVCenter,
                              to_qt(scene_.y_labels.at(static_cast<std::size_t>(line))));
        }
    }

    // Label15: times under lines 2, 4, 6, 8, their unit at the right end.
    void write_times(const QRectF& picture) {
        painter_.setPen(colour(palette::kText));
        const double top = picture.bottom() + kGap / 2;
        const double room = picture.width() / kDivisions;
        for (int i = 0; i < 4; ++i) {
            const double x = picture.left() + picture.width() * (2 * i + 2) / kDivisions;
            painter_.drawText(QRectF(x - room, top, 2 * room, line_), Qt::AlignCenter,
                              to_qt(scene_.times.at(static_cast<std::size_t>(i))));
        }
        painter_.setPen(colour(palette::kMutedText));
        painter_.drawText(QRectF(picture.right() - room, top, room, line_),
                          Qt::AlignRight | Qt::AlignVCenter, to_qt(scene_.times.back()));
    }

    int legend_rows(double width) const {
        int rows = 1;
        double x = 0;
        for (const SceneCurve& curve : curves_) {
            const double wide = entry_width(curve);
            if (x > 0 && x + wide > width) {
                ++rows;
                x = 0;
            }
            x += wide;
        }
        return rows;
    }

    double entry_width(const SceneCurve& curve) const {
        return kShapeRoom + 3 * kGap +
               metrics_.horizontalAdvance(curve_text(curve, scene_.language));
    }

    template <typename Entry>
    void legend(const QRectF& picture, Entry entry) const {
        QPointF at(picture.left(), picture.bottom() + line_ + 1.5 * kGap);
        for (const SceneCurve& curve : curves_) {
            const double wide = entry_width(curve);
            if (at.x() > picture.left() && at.x() + wide > picture.right() + kGap) {
                at = {picture.left(), at.y() + line_};
            }
            entry(at, curve, curve_text(curve, scene_.language));
            at.rx() += wide;
        }
    }

    QPainter& painter_;
    QRectF place_;
    const PlotScene& scene_;
    QFont font_;
    QFontMetricsF metrics_;
    double line_ = 0;
    std::vector<SceneCurve> curves_;  // in the order of the channels
};

// Noise as stroked lines takes seconds in pixels, so these are drawn as on screen.
bool has_pixels(const QPainter& painter) {
    return painter.paintEngine() != nullptr &&
           painter.paintEngine()->type() == QPaintEngine::Raster &&
           painter.worldTransform().type() <= QTransform::TxTranslate;
}

}  // namespace

void paint_plot(QPainter& painter, const QRectF& place, const PlotScene& scene, const QFont& font) {
    painter.save();
    painter.fillRect(place, colour(palette::kPlot));
    PageWriter page(painter, place, scene, font);
    PictureFrame frame{page.picture(), 0};
    if (has_pixels(painter)) {
        PlotPicture picture;
        picture.set_font(font);
        picture.set_scene(scene);
        frame.ratio = painter.device()->devicePixelRatioF();
        painter.drawImage(frame.place.topLeft(),
                          picture.image(frame.place.size().toSize(), frame.ratio));
    } else {
        paint_picture(painter, frame.place, scene, font);
    }
    PlotOverlay overlay;
    overlay.cursors = scene.cursors;
    paint_overlay(painter, frame, scene, overlay, font);
    if (scene.valid) page.write(frame.place);
    painter.restore();
}

}  // namespace servo::scope
