// The drawing surface `Picture1`: shows the plot and tells what the mouse does on it, in picture
// units. It knows no rule of the oscilloscope. Wheel and keys go to whoever filters its events.
#pragma once

#include <QWidget>
#include <optional>

#include "scope/plot_backing_view.h"
#include "scope/plot_mouse.h"
#include "scope/plot_paint_view.h"

namespace servo::scope {

class PlotWidget final : public QWidget {
    Q_OBJECT

  public:
    explicit PlotWidget(QWidget* parent = nullptr);

    // Paints the curves anew; they appear when they are ready, and at once where the plot is
    // painted for another reason.
    void set_scene(PlotScene scene);
    // Cursors, rectangle and pointer; the curves stay as they were painted.
    void set_overlay(const std::array<CursorPlace, kCursors>& cursors,
                     const std::optional<ZoomRectangle>& rectangle, Pointer pointer);

    const PlotScene& scene() const { return picture_.scene(); }
    // What is read under the mouse now.
    const std::optional<HoverReadout>& hover() const { return overlay_.hover; }

    QPointF to_units(QPointF at) const;
    QPointF from_units(QPointF units) const;
    // Within so many units of a cursor it is grabbed: a few pixels, whatever the size.
    double grab_width() const;
    double grab_height() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void pressed(servo::scope::MouseButton button, double x, double y);
    void moved(servo::scope::MouseButton held, double x, double y);  // with or without a button
    void released(servo::scope::MouseButton button, double x, double y);
    // Hidden while a button was held: no release will come.
    void abandoned();
    // The size on screen has changed, so grab_width and grab_height have.
    void grab_changed(double width, double height);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    PictureFrame frame() const;
    void painted();
    // False when there was nothing to read and is nothing now.
    bool read_under(std::optional<QPointF> at);
    void choose_pointer();
    std::optional<Cursor> cursor_under(QPointF at) const;

    PlotBacking picture_;
    QImage ready_;  // while it is being shown
    PlotOverlay overlay_;
    Pointer pointer_ = Pointer::kArrow;
    std::optional<QPointF> mouse_;  // over the plot, no button held
    std::optional<Cursor> held_cursor_;
    Qt::MouseButtons held_;
};

}  // namespace servo::scope
