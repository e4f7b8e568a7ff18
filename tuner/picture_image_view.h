// The picture made ready in pixels. What a repaint can keep is kept: the grid until its size or its
// scales change, all of it until the data does.
#pragma once

#include <QFont>
#include <QImage>
#include <QSize>

#include "tuner/picture_scene.h"

namespace servo::tuner {

class PictureImage {
  public:
    // The data outlives the image.
    explicit PictureImage(const TunerData& data) : data_(data) {}

    void set_font(const QFont& font);
    // What is drawn has changed; the marks stay until they are set.
    void invalidate() { ready_ = false; }
    void set_marks(PictureMarks marks);
    const PictureMarks& marks() const { return marks_; }

    // Draws when something has changed. The size is in pixels at 100 percent.
    const QImage& image(QSize size, qreal ratio);
    // Of the last image.
    const PictureScene& scene() const { return scene_; }

  private:
    struct GridKey {
        QSize size;
        qreal ratio = 0.0;
        Choices choices;
    };
    bool grid_fits(QSize size, qreal ratio) const;
    void draw_grid(QSize size, qreal ratio);

    const TunerData& data_;
    QFont font_;
    PictureMarks marks_;
    PictureScene scene_;
    QImage grid_;
    GridKey grid_key_;
    QImage image_;
    bool ready_ = false;
};

}  // namespace servo::tuner
