// The picture of the motion that the table describes. The mouse reads out a moment; a click picks
// the step that runs there. Left and Right do the same by the keyboard.
#pragma once

#include <QWidget>
#include <string>

#include "tools/pos_flow.h"
#include "tools/position_table_motion_picture.h"

namespace servo::tools {

class PositionMotionWidget final : public QWidget {
    Q_OBJECT

  public:
    explicit PositionMotionWidget(QWidget* parent);

    void show_motion(const Motion& motion, double resolution, base::Language language);
    void show_step(int selected);
    // The moment that is read out, in words; empty when none is.
    std::string reading() const;

    QSize minimumSizeHint() const override { return {260, 110}; }

  Q_SIGNALS:
    void step_picked(int step);
    void reading_changed();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void arrange();
    void read_at(double time);
    void stop_reading();
    void paint_bands(QPainter& painter) const;
    void paint_axes(QPainter& painter) const;
    void paint_plot(QPainter& painter, const PictureRect& plot,
                    const std::vector<PictureTick>& ticks, const std::vector<PicturePoint>& curve,
                    QRgb colour, const QString& name) const;

    Motion motion_;
    MotionPicture picture_;
    double resolution_ = 1;
    base::Language language_ = base::Language::kEnglish;
    int selected_ = -1;
    double cursor_ = -1;  // s; below 0 none
};

}  // namespace servo::tools
