// Paints the pictures of all homing methods in both languages.
//
//   draw_homing FOLDER
//
// Exit status 0 done, 2 wrong use, 4 a picture could not be written.
#include <QBuffer>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QPainterPath>
#include <QSaveFile>
#include <cstdio>

#include "data/tools/homing_drawing.h"
#include "tools/homing_method.h"

namespace {

using namespace servo;

enum ExitStatus : int { kDone = 0, kWrongUse = 2, kFileFailed = 4 };

constexpr int kScale = 2;  // pixels for each unit of a drawing
constexpr int kQuality = 92;

QColor colour_of(data::Ink ink) {
    switch (ink) {
        case data::Ink::kText:
            return QColor(0x1d, 0x27, 0x30);
        case data::Ink::kQuiet:
            return QColor(0x46, 0x53, 0x5e);
        case data::Ink::kRail:
            return QColor(0x6b, 0x78, 0x84);
        case data::Ink::kGuide:
            return QColor(0xb4, 0xbe, 0xc7);
        case data::Ink::kHomeSwitch:
            return QColor(0x0f, 0x76, 0x70);
        case data::Ink::kLimit:
            return QColor(0xa3, 0x4d, 0x14);
        case data::Ink::kIndex:
            return QColor(0x6a, 0x3f, 0xa0);
        case data::Ink::kCurrent:
            return QColor(0xa3, 0x4d, 0x14);
        case data::Ink::kTravel:
            return QColor(0x1a, 0x64, 0xa3);
        case data::Ink::kHome:
            return QColor(0xb7, 0x23, 0x2b);
        case data::Ink::kPaper:
            return QColor(0xff, 0xff, 0xff);
    }
    return {};
}

class Painting {
  public:
    Painting(QPainter& painter, base::Language language) : painter_(painter) {
        if (language == base::Language::kChinese)
            families_ << QStringLiteral("WenQuanYi Micro Hei")
                      << QStringLiteral("Noto Sans CJK SC");
        families_ << QStringLiteral("DejaVu Sans") << QStringLiteral("Noto Sans");
    }

    void operator()(const data::Stroke& stroke) {
        QPolygonF points;
        for (const data::Point& point : stroke.points)
            points << QPointF(point.x, point.y);
        if (stroke.filled) {
            painter_.setPen(Qt::NoPen);
            painter_.setBrush(colour_of(stroke.ink));
            painter_.drawPolygon(points);
            return;
        }
        QPen pen(colour_of(stroke.ink), stroke.width);
        pen.setJoinStyle(Qt::RoundJoin);
        pen.setCapStyle(Qt::FlatCap);
        if (stroke.dashed) pen.setDashPattern({4, 3});
        painter_.setPen(pen);
        painter_.setBrush(Qt::NoBrush);
        painter_.drawPolyline(points);
    }

    void operator()(const data::Disc& disc) {
        painter_.setPen(QPen(colour_of(disc.edge), 1.8));
        painter_.setBrush(colour_of(disc.fill));
        painter_.drawEllipse(QPointF(disc.centre.x, disc.centre.y), disc.radius, disc.radius);
    }

    void operator()(const data::Words& words) {
        // Sizes are those of the drawing; the font is made in pixels of the picture, and sharp.
        QFont font;
        font.setFamilies(families_);
        font.setPixelSize(qRound(words.size * kScale));
        font.setBold(words.bold);
        int flags = Qt::AlignVCenter | Qt::TextWordWrap;
        switch (words.align) {
            case data::Align::kLeft:
                flags |= Qt::AlignLeft;
                break;
            case data::Align::kCentre:
                flags |= Qt::AlignHCenter;
                break;
            case data::Align::kRight:
                flags |= Qt::AlignRight;
                break;
        }
        painter_.save();
        painter_.resetTransform();
        painter_.setFont(font);
        painter_.setPen(colour_of(words.ink));
        painter_.drawText(
            QRectF(words.x * kScale, words.y * kScale, words.width * kScale, words.height * kScale),
            flags, QString::fromStdString(words.text));
        painter_.restore();
    }

  private:
    QPainter& painter_;
    QStringList families_;
};

QImage paint(const data::Drawing& drawing, base::Language language) {
    QImage image(qRound(drawing.width * kScale), qRound(drawing.height * kScale),
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(kScale, kScale);
    Painting painting(painter, language);
    for (const data::Shape& shape : drawing.shapes)
        std::visit(painting, shape);
    return image;
}

// Under its name only when it is whole.
bool save(const QImage& image, const QString& file) {
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QImageWriter writer(&bytes, "jpeg");
    writer.setQuality(kQuality);
    writer.setOptimizedWrite(true);
    if (!writer.write(image)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(file), qPrintable(writer.errorString()));
        return false;
    }
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && out.write(bytes.data()) == bytes.data().size() &&
        out.commit())
        return true;
    std::fprintf(stderr, "%s: could not be written\n", qPrintable(file));
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    // A build has no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 2) {
        std::fprintf(stderr, "use: draw_homing FOLDER\n");
        return kWrongUse;
    }
    if (QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty())
        std::fprintf(stderr, "draw_homing: no font here has Chinese characters\n");
    for (const tools::HomingTravel& travel : tools::homing_travels())
        for (const base::Language language : {base::Language::kChinese, base::Language::kEnglish}) {
            const auto name = tools::homing_picture_file(travel.method, language);
            if (!name) continue;
            const QImage image = paint(data::draw_homing(travel, language), language);
            if (!save(image, arguments[1] + QLatin1Char('/') + QString::fromStdString(*name)))
                return kFileFailed;
        }
    return kDone;
}
