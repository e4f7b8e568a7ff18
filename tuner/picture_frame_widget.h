// The picture with its scales: gains and phases at the left.
#pragma once

#include <QWidget>

#include "tuner/picture_widget.h"

namespace servo::tuner {

class PictureFrameWidget final : public QWidget {
    Q_OBJECT

  public:
    PictureFrameWidget(const TunerData& held, QWidget* parent);

    PictureWidget& picture() { return *picture_; }
    // As those of the picture; the scales follow.
    void show_data(PictureMarks marks);
    void show_choices();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void place();

    PictureWidget* picture_;  // PictureA
};

}  // namespace servo::tuner
