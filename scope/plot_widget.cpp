#include "scope/plot_widget.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <utility>

namespace servo::scope {

namespace {

constexpr double kGrab = 5.0;  // pixels at 100 percent
constexpr QSize kWanted{760, 420};
constexpr QSize kLeast{320, 200};

MouseButton button_of(Qt::MouseButton button) {
    if (button == Qt::LeftButton) return MouseButton::kLeft;
    if (button == Qt::RightButton) return MouseButton::kRight;
    return MouseButton::kNone;
}

MouseButton held_of(Qt::MouseButtons buttons) {
    if (buttons.testFlag(Qt::LeftButton)) return MouseButton::kLeft;
    if (buttons.testFlag(Qt::RightButton)) return MouseButton::kRight;
    return MouseButton::kNone;
}

bool is_vertical(Cursor cursor) {
    return cursor == Cursor::kX1 || cursor == Cursor::kX2;
}

}  // namespace

PlotWidget::PlotWidget(QWidget* parent)
    : QWidget(parent), picture_([this] {
          QMetaObject::invokeMethod(this, &PlotWidget::painted, Qt::QueuedConnection);
      }) {
    setObjectName(QStringLiteral("Picture1"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    // The right button draws the zoom rectangle, here and not in a window around.
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    picture_.set_font(font());
}

void PlotWidget::set_scene(PlotScene scene) {
    picture_.set_scene(std::move(scene));
    read_under(mouse_);
    if (isVisible() && picture_.paint_ahead(size(), frame().ratio)) return;
    update();
}

// A newer scene may have come in the meantime. It is begun, and this one is shown: scenes that come
// fast would otherwise leave the plot as it was.
void PlotWidget::painted() {
    const qreal ratio = frame().ratio;
    ready_ = picture_.ready(size(), ratio);
    picture_.paint_ahead(size(), ratio);
    repaint();
    ready_ = {};
}

void PlotWidget::set_overlay(const std::array<CursorPlace, kCursors>& cursors,
                             const std::optional<ZoomRectangle>& rectangle, Pointer pointer) {
    const bool moved = overlay_.cursors != cursors || overlay_.rectangle != rectangle;
    overlay_.cursors = cursors;
    overlay_.rectangle = rectangle;
    pointer_ = pointer;
    choose_pointer();
    if (moved) update();
}

PictureFrame PlotWidget::frame() const {
    const qreal ratio = devicePixelRatioF();
    return {QRectF({0, 0}, QSizeF((QSizeF(size()) * ratio).toSize()) / ratio), ratio};
}

QPointF PlotWidget::to_units(QPointF at) const {
    // A place that the mouse tells is the corner of a pixel; what is under it is its middle.
    return frame().units(at + QPointF(0.5, 0.5) / devicePixelRatioF());
}

QPointF PlotWidget::from_units(QPointF units) const {
    const PictureFrame shown = frame();
    return QPointF(shown.x(units.x()), shown.y(units.y())) -
           QPointF(0.5, 0.5) / devicePixelRatioF();
}

double PlotWidget::grab_width() const {
    return kGrab * kPictureWidth / std::max(width(), 1);
}

double PlotWidget::grab_height() const {
    return kGrab * kPictureHeight / std::max(height(), 1);
}

QSize PlotWidget::sizeHint() const {
    return kWanted;
}

QSize PlotWidget::minimumSizeHint() const {
    return kLeast;
}

void PlotWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const PictureFrame shown = frame();
    painter.drawImage(QPointF(0, 0),
                      ready_.isNull() ? picture_.image(size(), shown.ratio) : ready_);
    paint_overlay(painter, shown, picture_.scene(), overlay_, font());
}

void PlotWidget::mousePressEvent(QMouseEvent* event) {
    held_ = event->buttons();
    if (event->button() == Qt::LeftButton) held_cursor_ = cursor_under(event->position());
    const QPointF at = to_units(event->position());
    if (read_under(std::nullopt)) update();
    Q_EMIT pressed(button_of(event->button()), at.x(), at.y());
    choose_pointer();
    event->accept();
}

// The second press of two in haste is a press like the first.
void PlotWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void PlotWidget::mouseMoveEvent(QMouseEvent* event) {
    held_ = event->buttons();
    const QPointF at = to_units(event->position());
    const bool free = held_ == Qt::NoButton;
    if (read_under(free ? std::optional(event->position()) : std::nullopt)) update();
    Q_EMIT moved(held_of(held_), at.x(), at.y());
    choose_pointer();
    event->accept();
}

void PlotWidget::mouseReleaseEvent(QMouseEvent* event) {
    held_ = event->buttons();
    if (event->button() == Qt::LeftButton) held_cursor_.reset();
    const QPointF at = to_units(event->position());
    Q_EMIT released(button_of(event->button()), at.x(), at.y());
    if (held_ == Qt::NoButton && rect().contains(event->position().toPoint()) &&
        read_under(event->position()))
        update();
    choose_pointer();
    event->accept();
}

void PlotWidget::leaveEvent(QEvent* event) {
    if (read_under(std::nullopt)) update();
    QWidget::leaveEvent(event);
}

void PlotWidget::hideEvent(QHideEvent* event) {
    if (read_under(std::nullopt)) update();
    held_cursor_.reset();
    if (held_ != Qt::NoButton) {
        held_ = Qt::NoButton;
        Q_EMIT abandoned();
    }
    QWidget::hideEvent(event);
}

void PlotWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Q_EMIT grab_changed(grab_width(), grab_height());
}

void PlotWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        picture_.set_font(font());
        update();
    }
    QWidget::changeEvent(event);
}

bool PlotWidget::read_under(std::optional<QPointF> at) {
    const bool shown = overlay_.hover.has_value();
    mouse_ = at;
    overlay_.hover.reset();
    if (at) {
        const QPointF units = to_units(*at);
        overlay_.hover = hover_readout(picture_.scene(), units.x());
        overlay_.hover_y = units.y();
    }
    return shown || overlay_.hover;
}

std::optional<Cursor> PlotWidget::cursor_under(QPointF at) const {
    if (!picture_.scene().valid) return std::nullopt;
    const QPointF units = to_units(at);
    return nearest_cursor(overlay_.cursors, units.x(), units.y(), grab_width(), grab_height());
}

void PlotWidget::choose_pointer() {
    std::optional<Cursor> cursor = held_cursor_;
    if (!cursor && mouse_) cursor = cursor_under(*mouse_);
    Qt::CursorShape shape = Qt::ArrowCursor;
    if (cursor)
        shape = is_vertical(*cursor) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
    else if (overlay_.rectangle)
        shape = Qt::CrossCursor;
    else if (pointer_ == Pointer::kHand)
        shape = Qt::OpenHandCursor;
    else if (pointer_ == Pointer::kGrabbing)
        shape = Qt::ClosedHandCursor;
    if (this->cursor().shape() != shape) setCursor(shape);
}

}  // namespace servo::scope
