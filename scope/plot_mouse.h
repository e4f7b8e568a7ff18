// The mouse on `Picture1`: cursors that are dragged, the hand that pans, the rectangle that zooms.
// Coordinates are picture units.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

#include "scope/scope_data.h"

namespace servo::scope {

enum class MouseButton : std::uint8_t { kNone, kLeft, kRight };

// Which picture the pointer has over the plot.
enum class Pointer : std::uint8_t { kArrow, kHand, kGrabbing };

struct PlotEvents {
    // change_curve_unit, Print_Pic_Line, DrawPicture; with the time texts before them where
    // `times`.
    std::function<void(bool times)> view_changed;
    std::function<void()> cursor_moved;  // the read-outs only
    std::function<void()> tool_changed;  // hand tool, pointer, rectangle
};

struct ZoomRectangle {
    double rectangle_x1 = 0.0;
    double rectangle_y1 = 0.0;
    double rectangle_x2 = 0.0;
    double rectangle_y2 = 0.0;
    bool operator==(const ZoomRectangle&) const = default;
};

// The nearest of the cursors that are on, within so many units; nothing where none is.
std::optional<Cursor> nearest_cursor(const std::array<CursorPlace, kCursors>& cursors, double x,
                                     double y, double grab_width, double grab_height);

class PlotMouse {
  public:
    PlotMouse(ScopeData& data, PlotEvents events);

    // How near a cursor has to be to be grabbed, in picture units; the window says what a few
    // pixels are in these.
    double grab_width = 60.0;
    double grab_height = 60.0;

    void Picture1_MouseDown(MouseButton button, double x, double y);
    void Picture1_MouseMove(MouseButton held, double x, double y);
    void Picture1_MouseUp(MouseButton button, double x, double y);
    void Image8_Click();  // the hand tool
    // Lets go of everything without a zoom: the button's release will not come.
    void leave();

    // The cursor under the pointer; of two the nearer.
    std::optional<Cursor> cursor_at(double x, double y) const;

    Pointer pointer() const;
    const std::optional<ZoomRectangle>& rectangle() const { return rectangle_; }

    // The same zooms for keyboard and wheel. `at` is the part of the width that stays in its place.
    // False when nothing changed: at the last level, at the first, with fewer than two samples, or
    // while the hand or the rectangle is at work, which hold on to their window.
    bool zoom_in(double at);
    bool zoom_out();
    // Moves the window by so many samples, inside of the recording.
    bool shift(int samples);

  private:
    struct Pan {
        double x = 0.0;
        ZoomWindow window;
    };

    bool dragging() const { return pan_ || rectangle_; }
    void drag_hand(double x);
    bool zoom_to(const ZoomWindow& window);
    void show_window(const ZoomWindow& window, bool times);

    ScopeData& data_;
    PlotEvents events_;
    std::optional<Cursor> grabbed_;
    std::optional<Pan> pan_;
    std::optional<ZoomRectangle> rectangle_;
};

}  // namespace servo::scope
