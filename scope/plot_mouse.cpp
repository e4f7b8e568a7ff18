#include "scope/plot_mouse.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/number.h"

namespace servo::scope {

namespace {

constexpr double kUnitsPerSample = 100.0;  // travel of the hand
constexpr int kLastLevel = kZoomLevels - 1;

int length_of(const ZoomWindow& window) {
    return window.last - window.first;
}

// Sample numbers are 16 bits wide; the pointer can go further.
std::int16_t sample_number(std::int64_t number) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(
        std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

bool is_vertical(Cursor cursor) {
    return cursor == Cursor::kX1 || cursor == Cursor::kX2;
}

// Whole units inside of the picture: a pointer that is dragged out of it counts at its edge, so
// that a window never ends behind the one that it is a part of.
int whole_units(double x) {
    return static_cast<int>(std::clamp(x, 0.0, static_cast<double>(kPictureWidth)));
}

std::int16_t sample_at(const ZoomWindow& window, double x) {
    return sample_number(window.first + length_of(window) * whole_units(x) / kPictureWidth);
}

}  // namespace

std::optional<Cursor> nearest_cursor(const std::array<CursorPlace, kCursors>& cursors, double x,
                                     double y, double grab_width, double grab_height) {
    std::optional<Cursor> nearest;
    double nearest_distance = 1.0;  // in parts of what may be grabbed
    for (std::size_t i = 0; i < kCursors; ++i) {
        if (!cursors[i].on) continue;
        const bool vertical = is_vertical(static_cast<Cursor>(i));
        const double distance =
            std::abs((vertical ? x : y) - cursors[i].at) / (vertical ? grab_width : grab_height);
        // Of two in one place the later one: it was drawn over the other.
        if (!(distance <= nearest_distance)) continue;
        nearest = static_cast<Cursor>(i);
        nearest_distance = distance;
    }
    return nearest;
}

PlotMouse::PlotMouse(ScopeData& data, PlotEvents events)
    : data_(data), events_(std::move(events)) {}

void PlotMouse::Picture1_MouseDown(MouseButton button, double x, double y) {
    if (!data_.dataValid) return;
    const bool any_cursor = std::any_of(data_.cursors.begin(), data_.cursors.end(),
                                        [](const CursorPlace& cursor) { return cursor.on; });
    if (button == MouseButton::kRight) {
        if (data_.handTool) {
            Image8_Click();
        } else if (!any_cursor) {
            rectangle_ = ZoomRectangle{x, y, x, y};
            events_.tool_changed();
        }
        return;
    }
    if (button != MouseButton::kLeft) return;
    grabbed_ = cursor_at(x, y);
    if (data_.handTool && !any_cursor) {
        pan_ = Pan{x, data_.window()};
        events_.tool_changed();
    }
}

void PlotMouse::Picture1_MouseMove(MouseButton held, double x, double y) {
    if (!data_.dataValid) return;
    if (grabbed_ && held == MouseButton::kLeft) {
        CursorPlace& cursor = data_.cursors.at(static_cast<std::size_t>(*grabbed_));
        cursor.at = is_vertical(*grabbed_) ? std::clamp<double>(x, 0, kPictureWidth)
                                           : std::clamp<double>(y, 0, kPictureHeight);
        events_.cursor_moved();
    }
    if (pan_ && held == MouseButton::kLeft) drag_hand(x);
    if (rectangle_) {
        rectangle_->rectangle_x2 = x;
        rectangle_->rectangle_y2 = y;
        events_.tool_changed();
    }
}

// No lower limit: a window that begins before the recording is left as it is by who works on it,
// until the hand brings it back.
void PlotMouse::drag_hand(double x) {
    if (data_.zoomDepth == 0) return;
    const int length = length_of(pan_->window);
    const std::int64_t wanted =
        base::round_half_even(pan_->window.first - (x - pan_->x) / kUnitsPerSample);
    const std::int64_t first = std::min<std::int64_t>(wanted, data_.zoomWindow[0].last - length);
    show_window({sample_number(first), sample_number(first + length)}, false);
}

void PlotMouse::Picture1_MouseUp(MouseButton button, double x, double /*y*/) {
    if (button == MouseButton::kLeft) {
        grabbed_.reset();
        if (pan_) {
            pan_.reset();
            events_.tool_changed();
        }
    }
    if (button != MouseButton::kRight || !rectangle_) return;
    const double from = rectangle_->rectangle_x1;
    rectangle_.reset();
    events_.tool_changed();
    if (!data_.dataValid) return;
    if (x > from) {
        zoom_to({sample_at(data_.window(), from), sample_at(data_.window(), x)});
    } else {
        // From right to left leads out again; so does a click.
        if (data_.zoomDepth > 0) --data_.zoomDepth;
    }
    // Written anew even where the level stays, at the first and at the last.
    events_.view_changed(true);
}

void PlotMouse::Image8_Click() {
    data_.handTool = !data_.handTool;
    pan_.reset();
    rectangle_.reset();
    events_.tool_changed();
}

void PlotMouse::leave() {
    const bool seen = rectangle_ || pan_;
    grabbed_.reset();
    pan_.reset();
    rectangle_.reset();
    if (seen) events_.tool_changed();
}

std::optional<Cursor> PlotMouse::cursor_at(double x, double y) const {
    return nearest_cursor(data_.cursors, x, y, grab_width, grab_height);
}

Pointer PlotMouse::pointer() const {
    if (!data_.handTool) return Pointer::kArrow;
    return pan_ ? Pointer::kGrabbing : Pointer::kHand;
}

// Refused at the last level.
bool PlotMouse::zoom_to(const ZoomWindow& window) {
    if (data_.zoomDepth >= kLastLevel) return false;
    ++data_.zoomDepth;
    data_.zoomWindow.at(data_.zoomDepth) = window;
    return true;
}

void PlotMouse::show_window(const ZoomWindow& window, bool times) {
    ZoomWindow& shown = data_.zoomWindow.at(data_.zoomDepth);
    shown = window;
    events_.view_changed(times);
}

bool PlotMouse::zoom_in(double at) {
    const ZoomWindow window = data_.window();
    const int length = length_of(window);
    if (!data_.dataValid || length < 2 || dragging()) return false;
    const int shown = length / 2;
    const double part = std::clamp(at, 0.0, 1.0);
    const std::int64_t first =
        window.first + base::round_half_even(part * static_cast<double>(length - shown));
    if (!zoom_to({sample_number(first), sample_number(first + shown)})) return false;
    events_.view_changed(true);
    return true;
}

bool PlotMouse::zoom_out() {
    if (!data_.dataValid || data_.zoomDepth == 0 || dragging()) return false;
    --data_.zoomDepth;
    events_.view_changed(true);
    return true;
}

bool PlotMouse::shift(int samples) {
    if (!data_.dataValid || data_.zoomDepth == 0 || dragging()) return false;
    const ZoomWindow& whole = data_.zoomWindow[0];
    const ZoomWindow window = data_.window();
    const int length = length_of(window);
    const std::int64_t highest = std::max<int>(whole.first, whole.last - length);
    const std::int64_t first = std::clamp<std::int64_t>(
        static_cast<std::int64_t>(window.first) + samples, whole.first, highest);
    if (first == window.first) return false;
    show_window({sample_number(first), sample_number(first + length)}, false);
    return true;
}

}  // namespace servo::scope
