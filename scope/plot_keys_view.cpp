#include "scope/plot_keys_view.h"

#include <QKeyEvent>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>

#include "scope/tool_row_widget.h"

namespace servo::scope {

namespace {

constexpr int kWheelStep = 120;  // eighths of a degree: one notch
constexpr int kManySamples = 10;
constexpr int kPanParts = 10;  // a notch pans by a tenth of the window
constexpr int kPageParts = 2;  // a page key by half of it
constexpr double kMiddle = 0.5;

bool is_x(Cursor cursor) {
    return cursor == Cursor::kX1 || cursor == Cursor::kX2;
}

}  // namespace

PlotKeys::PlotKeys(PanelContext context, QWidget& plot, QObject* parent)
    : QObject(parent), context_(std::move(context)), plot_(plot) {
    plot_.installEventFilter(this);
    plot_.setFocusPolicy(Qt::StrongFocus);
}

bool PlotKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel) return wheel(*static_cast<QWheelEvent*>(event));
    if (event->type() == QEvent::KeyPress && key(*static_cast<QKeyEvent*>(event))) return true;
    return QObject::eventFilter(watched, event);
}

bool PlotKeys::wheel(const QWheelEvent& event) {
    if (!context_.scope.data().dataValid) return false;
    // With Shift some systems turn the wheel into a sideways one.
    const QPoint turned = event.angleDelta();
    const bool sideways = event.modifiers().testFlag(Qt::ShiftModifier) || turned.x() != 0;
    wheel_rest_ += turned.x() != 0 ? turned.x() : turned.y();
    const int notches = wheel_rest_ / kWheelStep;
    wheel_rest_ -= notches * kWheelStep;
    const double at = std::clamp(event.position().x() / std::max(1, plot_.width()), 0.0, 1.0);
    for (int i = 0; i < std::abs(notches); ++i) {
        if (sideways)
            context_.scope.mouse().shift((notches > 0 ? -1 : 1) *
                                         std::max(1, samples_shown() / kPanParts));
        else
            notches > 0 ? zoom_in(at) : zoom_out();
    }
    if (notches != 0) context_.acted();
    return true;
}

int PlotKeys::samples_shown() const {
    const ZoomWindow& window = context_.scope.data().window();
    return window.last - window.first;
}

bool PlotKeys::on(Cursor cursor) const {
    return context_.scope.data().cursors.at(static_cast<std::size_t>(cursor)).on;
}

void PlotKeys::pick(Cursor cursor) {
    (is_x(cursor) ? x_ : y_) = cursor;
    last_ = cursor;
    if (picked_changed) picked_changed();
}

void PlotKeys::follow(const ScopeData& data) {
    for (std::size_t i = 0; i < kCursors; ++i) {
        const CursorPlace& now = data.cursors.at(i);
        const CursorPlace& before = seen_.at(i);
        if (now.on && (!before.on || now.at != before.at)) pick(static_cast<Cursor>(i));
    }
    seen_ = data.cursors;
    // One that was switched off leaves its place to its partner.
    if (!on(x_) && on(Cursor::kX1)) x_ = Cursor::kX1;
    if (!on(x_) && on(Cursor::kX2)) x_ = Cursor::kX2;
    if (!on(y_) && on(Cursor::kY1)) y_ = Cursor::kY1;
    if (!on(y_) && on(Cursor::kY2)) y_ = Cursor::kY2;
    if (last_ && !on(*last_)) last_.reset();
}

// Walks the cursors that are on; past the last one Tab leaves the plot as it leaves any control.
bool PlotKeys::next_cursor(bool forward) {
    int place = last_ ? static_cast<int>(*last_) : (forward ? -1 : static_cast<int>(kCursors));
    for (place += forward ? 1 : -1; place >= 0 && place < static_cast<int>(kCursors);
         place += forward ? 1 : -1) {
        if (!on(static_cast<Cursor>(place))) continue;
        pick(static_cast<Cursor>(place));
        return true;
    }
    last_.reset();
    if (picked_changed) picked_changed();
    return false;
}

bool PlotKeys::move_cursor(int key, int steps) {
    switch (key) {
        case Qt::Key_Left:
        case Qt::Key_Right:
            if (on(x_)) context_.scope.step_cursor(x_, key == Qt::Key_Right ? steps : -steps);
            return true;
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (on(y_)) context_.scope.step_cursor(y_, key == Qt::Key_Up ? steps : -steps);
            return true;
        default:
            return false;
    }
}

bool PlotKeys::pan_or_zoom(int key) {
    PlotMouse& mouse = context_.scope.mouse();
    const int page = std::max(1, samples_shown() / kPageParts);
    switch (key) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            zoom_in(kMiddle);
            return true;
        case Qt::Key_Minus:
            zoom_out();
            return true;
        case Qt::Key_0:
            zoom_all();
            return true;
        case Qt::Key_Home:
            mouse.shift(-static_cast<int>(kMaxSamples));
            return true;
        case Qt::Key_End:
            mouse.shift(static_cast<int>(kMaxSamples));
            return true;
        case Qt::Key_PageUp:
            mouse.shift(-page);
            return true;
        case Qt::Key_PageDown:
            mouse.shift(page);
            return true;
        default:
            return false;
    }
}

bool PlotKeys::command(int key) {
    switch (key) {
        case Qt::Key_Space:
            if (context_.scope.acquisition_enabled()) context_.scope.Command6_Click();
            return true;
        case Qt::Key_H:
            context_.scope.Image8_Click();
            return true;
        case Qt::Key_F:
            if (fit_curves) fit_curves();
            return true;
        case Qt::Key_R:
            if (keep_reference) keep_reference();
            return true;
        case Qt::Key_1:
        case Qt::Key_2:
        case Qt::Key_3:
        case Qt::Key_4:
            context_.scope.click_cursor(static_cast<Cursor>(key - Qt::Key_1));
            return true;
        case Qt::Key_S:
            if (toggle_panel) toggle_panel(AnalysisPanel::kStatistics);
            return true;
        case Qt::Key_P:
            if (toggle_panel) toggle_panel(AnalysisPanel::kSpectrum);
            return true;
        case Qt::Key_G:
            if (toggle_panel) toggle_panel(AnalysisPanel::kReferences);
            return true;
        default:
            return false;
    }
}

bool PlotKeys::key(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held =
        event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    const int pressed = event.key();
    if (pressed == Qt::Key_Tab || pressed == Qt::Key_Backtab)
        return held == Qt::NoModifier && next_cursor(pressed == Qt::Key_Tab);
    bool done = false;
    if (held == Qt::NoModifier)
        done = move_cursor(pressed, 1) ||
               (context_.scope.data().dataValid && pan_or_zoom(pressed)) || command(pressed);
    else if (held == Qt::ControlModifier)
        done = move_cursor(pressed, kManySamples);
    if (done) context_.acted();
    return done;
}

void PlotKeys::zoom_in(double at) {
    context_.scope.mouse().zoom_in(at);
}

void PlotKeys::zoom_out() {
    context_.scope.mouse().zoom_out();
}

void PlotKeys::zoom_all() {
    while (context_.scope.mouse().zoom_out()) {
    }
}

}  // namespace servo::scope
