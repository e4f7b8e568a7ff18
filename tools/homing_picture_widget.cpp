#include "tools/homing_picture_widget.h"

#include <QPainter>

#include "params/ui_palette.h"

namespace servo::tools {

namespace {

constexpr const char* kPicture = "picture";  // where the name of the picture is looked for
constexpr QSize kHint{560, 315};
constexpr QSize kSmallest{240, 135};

QColor colour(std::uint32_t rgb) {
    return QColor::fromRgba(rgb);
}

}  // namespace

HomingPictureWidget::HomingPictureWidget(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Image1"));
    setProperty(kPicture, QString());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void HomingPictureWidget::show_picture(const std::string& name, const std::string& bytes) {
    const QString shown = QString::fromStdString(name);
    if (property(kPicture).toString() == shown) return;
    if (!name.empty()) {
        const QImage read = QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()),
                                             static_cast<int>(bytes.size()));
        if (read.isNull()) return;
        image_ = read;
    } else {
        image_ = {};
    }
    scaled_ = {};
    setProperty(kPicture, shown);
    update();
}

void HomingPictureWidget::show_words(const QString& words) {
    if (words == words_) return;
    words_ = words;
    update();
}

QSize HomingPictureWidget::sizeHint() const {
    return kHint;
}

QSize HomingPictureWidget::minimumSizeHint() const {
    return kSmallest;
}

void HomingPictureWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), colour(params::palette::kCell));
    const QRect inner = rect().adjusted(1, 1, -1, -1);
    if (image_.isNull()) {
        painter.setPen(colour(params::palette::kMutedText));
        painter.drawText(inner, Qt::AlignCenter | Qt::TextWordWrap, words_);
    } else {
        // Scaled once, to the pixels of the screen, so that lines and letters stay smooth.
        const qreal ratio = devicePixelRatioF();
        const QSize wanted =
            image_.size().scaled((QSizeF(inner.size()) * ratio).toSize(), Qt::KeepAspectRatio);
        if (scaled_.size() != wanted) {
            scaled_ = QPixmap::fromImage(
                image_.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        }
        scaled_.setDevicePixelRatio(ratio);
        const QSizeF size = QSizeF(scaled_.size()) / ratio;
        painter.drawPixmap(QPointF(inner.x() + (inner.width() - size.width()) / 2,
                                   inner.y() + (inner.height() - size.height()) / 2),
                           scaled_);
    }
    painter.setPen(colour(params::palette::kFrame));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace servo::tools
