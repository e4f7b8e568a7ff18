// An icon that is painted at the size that is asked for. Whoever derives from it paints and clones.
#pragma once

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

namespace servo::params {

class DrawnIcon : public QIconEngine {
  public:
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return drawn;
    }
    bool isNull() override { return false; }
};

}  // namespace servo::params
