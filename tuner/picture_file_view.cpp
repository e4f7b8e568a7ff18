#include "tuner/picture_file_view.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <cmath>
#include <vector>

#include "base/file.h"
#include "tuner/curve_line_view.h"
#include "tuner/curve_values.h"
#include "tuner/picture_paint_view.h"
#include "tuner/tuner_controls_view.h"
#include "tuner/tuner_palette.h"

namespace servo::tuner {

namespace {

constexpr qreal kScale = 2.0;  // of a picture made of pixels
constexpr qreal kPointsPerPixel = 0.75;
constexpr int kScreenResolution = 96;  // pixels an inch, what font sizes of screens mean
constexpr qreal kMargin = 12.0;
constexpr qreal kSample = 28.0;
constexpr qreal kBetween = 16.0;  // legend entries

struct LegendEntry {
    Curve curve = Curve::kPlant;
    QString name;
    QPointF at;  // of its upper left corner
};

// The picture, its scales at the left, the legend below it in as many rows as it takes.
class Sheet {
  public:
    Sheet(const TunerData& data, const PictureMarks& marks, const QFont& font, QSize size,
          base::Language language)
        : scene_(picture_scene(data, surface_of(size.width(), size.height(), data.choices), marks)),
          font_(font),
          picture_(QPointF(kMargin + std::ceil(scale_width(font)), kMargin), QSizeF(size)),
          line_(QFontMetricsF(small_font(font)).height() + 4.0) {
        place_legend(data, language);
    }

    QSize size() const {
        return QSizeF(picture_.right() + kMargin, legend_bottom_ + kMargin).toSize();
    }

    void paint(QPainter& painter, bool raster) const {
        const PictureFrame frame{.origin = picture_.topLeft(), .ratio = raster ? kScale : 1.0};
        painter.fillRect(QRectF(QPointF(), QSizeF(size())), QColor(palette::kPicture));
        painter.setRenderHint(QPainter::Antialiasing);
        paint_grid(painter, scene_, frame, font_);
        if (raster)
            paint_curves(painter, scene_, frame);
        else
            stroke_curves(painter, scene_, frame);
        paint_marks(painter, scene_, frame, font_);
        paint_scales(painter, scene_, frame, picture_.left() - 3.0, font_);
        painter.setPen(QColor(palette::kFrame));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(picture_);
        painter.setFont(small_font(font_));
        for (const LegendEntry& entry : legend_) {
            draw_sample(painter, QRectF(entry.at, QSizeF(kSample, line_)), entry.curve);
            painter.setPen(QColor(palette::kText));
            painter.drawText(QRectF(entry.at + QPointF(kSample + 4.0, 0.0), QSizeF(1.0, line_)),
                             Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, entry.name);
        }
    }

  private:
    void place_legend(const TunerData& data, base::Language language) {
        const QFontMetricsF metrics(small_font(font_));
        QPointF at(picture_.left(), picture_.bottom() + kMargin / 2.0);
        for (int i = 0; i < kCurves; ++i) {
            const auto curve = static_cast<Curve>(i);
            if (!data.choices.shows(curve) || curve_values(data, curve).empty()) continue;
            const QString name = to_qt(curve_name(curve).in(language));
            const qreal width = kSample + 4.0 + metrics.horizontalAdvance(name);
            if (at.x() + width > picture_.right() && at.x() > picture_.left())
                at = {picture_.left(), at.y() + line_};
            legend_.push_back({curve, name, at});
            at.rx() += width + kBetween;
        }
        legend_bottom_ = legend_.empty() ? picture_.bottom() : at.y() + line_;
    }

    PictureScene scene_;
    QFont font_;
    QRectF picture_;
    qreal line_;
    std::vector<LegendEntry> legend_;
    qreal legend_bottom_ = 0.0;
};

void draw_svg(QBuffer& buffer, const Sheet& sheet) {
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(kScreenResolution);
    generator.setSize(sheet.size());
    generator.setViewBox(QRect(QPoint(), sheet.size()));
    QPainter painter(&generator);
    sheet.paint(painter, false);
}

void draw_pdf(QBuffer& buffer, const Sheet& sheet) {
    QPdfWriter writer(&buffer);
    writer.setResolution(kScreenResolution);
    writer.setPageSize(QPageSize(QSizeF(sheet.size()) * kPointsPerPixel, QPageSize::Point));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    sheet.paint(painter, false);
}

void draw_png(QBuffer& buffer, const Sheet& sheet) {
    QImage image((QSizeF(sheet.size()) * kScale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(kScale);
    {
        QPainter painter(&image);
        sheet.paint(painter, true);
    }
    image.save(&buffer, "PNG");
}

}  // namespace

bool save_picture(const TunerData& data, const PictureMarks& marks, const QFont& font, QSize size,
                  base::Language language, const QString& path) {
    const Sheet sheet(data, marks, font, size, language);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive))
        draw_svg(buffer, sheet);
    else if (path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        draw_pdf(buffer, sheet);
    else
        draw_png(buffer, sheet);
    const QByteArray& bytes = buffer.data();
    return !bytes.isEmpty() &&
           base::write_file(path.toStdString(),
                            {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace servo::tuner
