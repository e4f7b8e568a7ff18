#include "scope/scope_picture_view.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "base/file.h"
#include "scope/plot_paint_view.h"

namespace servo::scope {

namespace {

constexpr qreal kScale = 2.0;  // of a picture made of pixels
constexpr qreal kPointsPerPixel = 0.75;
constexpr int kScreenResolution = 96;  // pixels an inch, what font sizes of screens mean

void draw_svg(QBuffer& buffer, const PlotScene& scene, const QFont& font, QSize size) {
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(kScreenResolution);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    QPainter painter(&generator);
    paint_plot(painter, QRectF(QPointF(), size), scene, font);
}

void draw_pdf(QBuffer& buffer, const PlotScene& scene, const QFont& font, QSize size) {
    QPdfWriter writer(&buffer);
    writer.setResolution(kScreenResolution);
    writer.setPageSize(QPageSize(QSizeF(size) * kPointsPerPixel, QPageSize::Point));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    paint_plot(painter, QRectF(QPointF(), size), scene, font);
}

void draw_png(QBuffer& buffer, const PlotScene& scene, const QFont& font, QSize size) {
    QImage image((QSizeF(size) * kScale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(kScale);
    {
        QPainter painter(&image);
        paint_plot(painter, QRectF(QPointF(), size), scene, font);
    }
    image.save(&buffer, "PNG");
}

}  // namespace

bool save_picture(const PlotScene& scene, const QFont& font, QSize size, const QString& path) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive))
        draw_svg(buffer, scene, font, size);
    else if (path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        draw_pdf(buffer, scene, font, size);
    else
        draw_png(buffer, scene, font, size);
    const QByteArray& bytes = buffer.data();
    return !bytes.isEmpty() &&
           base::write_file(path.toStdString(),
                            {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace servo::scope
