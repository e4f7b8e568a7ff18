#include "tuner/picture_image_view.h"

#include <cstring>
#include <utility>

#include "tuner/picture_paint_view.h"

namespace servo::tuner {

void PictureImage::set_font(const QFont& font) {
    font_ = font;
    grid_ = {};
    ready_ = false;
}

void PictureImage::set_marks(PictureMarks marks) {
    marks_ = std::move(marks);
    ready_ = false;
}

bool PictureImage::grid_fits(QSize size, qreal ratio) const {
    const Choices& now = data_.choices;
    const Choices& then = grid_key_.choices;
    return !grid_.isNull() && grid_key_.size == size && grid_key_.ratio == ratio &&
           now.Check15 == then.Check15 && now.Check16 == then.Check16 && now.Combo2 == then.Combo2;
}

void PictureImage::draw_grid(QSize size, qreal ratio) {
    grid_ = QImage((QSizeF(size) * ratio).toSize(), QImage::Format_RGB32);
    grid_.setDevicePixelRatio(ratio);
    QPainter painter(&grid_);
    paint_grid(painter, scene_, {.ratio = ratio}, font_);
    painter.end();
    grid_key_ = {size, ratio, data_.choices};
    image_ = grid_.copy();
}

const QImage& PictureImage::image(QSize size, qreal ratio) {
    const bool fits = grid_fits(size, ratio);
    if (ready_ && fits) return image_;
    scene_ = picture_scene(data_, surface_of(size.width(), size.height(), data_.choices), marks_);
    if (fits)
        std::memcpy(image_.bits(), grid_.constBits(),
                    static_cast<std::size_t>(grid_.sizeInBytes()));
    else
        draw_grid(size, ratio);
    QPainter painter(&image_);
    const PictureFrame frame{.ratio = ratio};
    paint_curves(painter, scene_, frame);
    paint_marks(painter, scene_, frame, font_);
    ready_ = true;
    return image_;
}

}  // namespace servo::tuner
