#include "app/backgroud_form.h"

#include <QMdiSubWindow>
#include <QPaintEvent>
#include <QPainter>

#include "app/palette.h"
#include "app/shell_layout.h"
#include "app/style.h"

namespace servo::app {

BackgroudForm::BackgroudForm(QWidget* parent) : QMdiArea(parent) {
    setObjectName(QStringLiteral("Backgroudform"));
    setBackground(Qt::NoBrush);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
}

void BackgroudForm::show_picture(dictionary::Variant variant) {
    name_ = variant == dictionary::Variant::kReduced ? QStringLiteral("background_reduced")
                                                     : QStringLiteral("background_all");
    size_class_ = -1;
    viewport()->update();
}

const QPixmap& BackgroudForm::picture_for(int size_class) {
    if (size_class != size_class_) {
        const Size size = background_size(size_class);
        picture_ = picture(name_).pixmap(QSize(size.width, size.height), devicePixelRatioF());
        size_class_ = size_class;
    }
    return picture_;
}

void BackgroudForm::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), QColor(palette::kWorkspace));
    if (name_.isEmpty()) return;
    const int size_class = background_class(window()->width());
    const Size size = background_size(size_class);
    const QRect place((viewport()->width() - size.width) / 2,
                      (viewport()->height() - size.height) / 2, size.width, size.height);
    if (event->rect().intersects(place)) painter.drawPixmap(place, picture_for(size_class));
}

void BackgroudForm::arrange_icons() {
    QList<QMdiSubWindow*> icons;
    for (QMdiSubWindow* window : subWindowList())
        if (window->isMinimized() && !window->isHidden()) icons << window;
    if (icons.isEmpty()) return;
    std::vector<Size> sizes;
    for (const QMdiSubWindow* icon : icons)
        sizes.push_back({icon->width(), icon->height()});
    const auto places = icon_places({viewport()->width(), viewport()->height()}, sizes);
    for (qsizetype i = 0; i < icons.size(); ++i) {
        const Place& place = places.at(static_cast<std::size_t>(i));
        icons.at(i)->move(place.x, place.y);
    }
}

}  // namespace servo::app
