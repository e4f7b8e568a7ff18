// The picture's surface: shows the scene, tells where the pointer is, by mouse or by keys. It
// knows no rule of the tuner.
#pragma once

#include <QWidget>

#include "tuner/picture_image_view.h"
#include "tuner/picture_overlay_view.h"

namespace servo::tuner {

class PictureWidget final : public QWidget {
    Q_OBJECT

  public:
    // The data outlives the widget.
    PictureWidget(const TunerData& held, QWidget* parent);

    // What is drawn has changed.
    void show_data(PictureMarks marks);
    // Only choices have changed: the marks hold.
    void show_choices();

    // Said where there is nothing to draw yet.
    void set_hint(const QString& hint);

    const PictureMarks& marks() const { return image_.marks(); }
    // The scene as it stands at the size of now.
    const PictureScene& scene();
    const PictureOverlay& overlay() const { return overlay_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    // The pointer, in units of the surface.
    void pointed(int x, int y);
    // The data has been drawn.
    void drawn();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    Surface surface() const;
    void point_at(ScenePoint at);
    void hide_cross();
    void begin_cross();
    bool move_cross(int key, int pixels);
    bool jump(int direction);
    void read_under();

    const TunerData& data_;
    PictureImage image_;
    PictureOverlay overlay_;
    QString hint_;
};

}  // namespace servo::tuner
