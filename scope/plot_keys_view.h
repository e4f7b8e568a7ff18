// Wheel and keyboard on the plot, beside the mouse tools.
//
// Wheel zooms around the pointer, with Shift it pans. Left and Right move the picked X cursor by a
// sample (Ctrl: ten), Up and Down the picked Y cursor, Tab picks the next cursor; + - 0 zoom, Home,
// End, Page Up and Page Down pan, Space starts and stops, H is the hand.
#pragma once

#include <QObject>
#include <functional>
#include <optional>

#include "scope/scope_controls_view.h"

class QKeyEvent;
class QWheelEvent;

namespace servo::scope {

enum class AnalysisPanel : std::uint8_t;

class PlotKeys final : public QObject {
    Q_OBJECT

  public:
    // Works on the events of `plot`, a widget that is as large as the picture.
    PlotKeys(PanelContext context, QWidget& plot, QObject* parent);

    // The cursors that the arrow keys move.
    Cursor picked_x() const { return x_; }
    Cursor picked_y() const { return y_; }
    std::optional<Cursor> last_picked() const { return last_; }
    std::function<void()> picked_changed;

    // What the letters do, which is the window's part.
    std::function<void()> fit_curves;
    std::function<void()> keep_reference;
    std::function<void(AnalysisPanel panel)> toggle_panel;

    void zoom_in(double at);
    void zoom_out();
    void zoom_all();

    // A cursor that was switched on or dragged is the one that the keys move next.
    void follow(const ScopeData& data);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool wheel(const QWheelEvent& event);
    bool key(const QKeyEvent& event);
    bool move_cursor(int key, int samples);
    bool pan_or_zoom(int key);
    bool command(int key);
    bool next_cursor(bool forward);
    void pick(Cursor cursor);
    bool on(Cursor cursor) const;
    int samples_shown() const;

    PanelContext context_;
    QWidget& plot_;
    Cursor x_ = Cursor::kX1;
    Cursor y_ = Cursor::kY1;
    std::optional<Cursor> last_;
    std::array<CursorPlace, kCursors> seen_{};
    int wheel_rest_ = 0;
};

}  // namespace servo::scope
