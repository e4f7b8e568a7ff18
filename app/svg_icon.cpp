#include "app/svg_icon.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

namespace servo::app {

namespace {

QPixmap drawn(const QString& file, const QSize& size) {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(file);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    return pixmap;
}

}  // namespace

void SvgIcon::paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) {
    const qreal ratio = painter->device()->devicePixelRatioF();
    QPixmap shown = pixmap((QSizeF(place.size()) * ratio).toSize(), mode, state);
    shown.setDevicePixelRatio(ratio);
    painter->drawPixmap(place, shown);
}

QPixmap SvgIcon::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) {
    if (size.isEmpty()) return {};
    const bool grey = mode == QIcon::Disabled && disabled_ == DisabledLook::kGrey;
    const QString name = QStringLiteral("%1:%2x%3:%4")
                             .arg(file_)
                             .arg(size.width())
                             .arg(size.height())
                             .arg(grey ? 1 : 0);
    QPixmap pixmap;
    if (QPixmapCache::find(name, &pixmap)) return pixmap;
    pixmap = drawn(file_, size);
    if (grey) {
        QStyleOption option;
        option.palette = QApplication::palette();
        pixmap = QApplication::style()->generatedIconPixmap(QIcon::Disabled, pixmap, &option);
    }
    QPixmapCache::insert(name, pixmap);
    return pixmap;
}

}  // namespace servo::app
