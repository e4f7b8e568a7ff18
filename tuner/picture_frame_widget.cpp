#include "tuner/picture_frame_widget.h"

#include <QEvent>
#include <cmath>
#include <utility>

#include "tuner/tuner_controls_view.h"
#include "tuner/tuner_palette.h"

namespace servo::tuner {

namespace {
constexpr int kLine = 1;  // around the picture
}

PictureFrameWidget::PictureFrameWidget(const TunerData& held, QWidget* parent)
    : QWidget(parent), picture_(named(new PictureWidget(held, this), "PictureA")) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PictureFrameWidget::show_data(PictureMarks marks) {
    picture_->show_data(std::move(marks));
    update();
}

void PictureFrameWidget::show_choices() {
    picture_->show_choices();
    update();
}

void PictureFrameWidget::place() {
    const int left = static_cast<int>(std::ceil(scale_width(font()))) + kLine;
    picture_->setGeometry(rect().adjusted(left, kLine, -kLine, -kLine));
}

QSize PictureFrameWidget::sizeHint() const {
    return picture_->sizeHint() +
           QSize(static_cast<int>(scale_width(font())) + 3 * kLine, 2 * kLine);
}

QSize PictureFrameWidget::minimumSizeHint() const {
    return picture_->minimumSizeHint() +
           QSize(static_cast<int>(scale_width(font())) + 3 * kLine, 2 * kLine);
}

void PictureFrameWidget::resizeEvent(QResizeEvent*) {
    place();
}

void PictureFrameWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) place();
    QWidget::changeEvent(event);
}

void PictureFrameWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect inner = picture_->geometry();
    paint_scales(painter, picture_->scene(), {.origin = QPointF(inner.topLeft())},
                 inner.left() - 2 * kLine - 1, font());
    painter.setPen(QColor(palette::kFrame));
    painter.drawRect(inner.adjusted(-kLine, -kLine, 0, 0));
}

}  // namespace servo::tuner
