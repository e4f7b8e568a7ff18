#include "tuner/picture_widget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <limits>
#include <utility>

#include "params/ui_palette.h"
#include "tuner/tuner_palette.h"

namespace servo::tuner {

namespace {

constexpr QSize kWanted{760, 460};
constexpr QSize kLeast{360, 220};
constexpr int kFewPixels = 1;
constexpr int kManyPixels = 10;
constexpr int kHintPadding = 6;

// On a ground of its own: the lines of the grid would strike it out.
void paint_hint(QPainter& painter, const QRect& place, const QString& hint) {
    const QRect text = painter.fontMetrics().boundingRect(place, Qt::AlignCenter, hint);
    painter.fillRect(text.adjusted(-kHintPadding, 0, kHintPadding, 0), QColor(palette::kPicture));
    painter.setPen(QColor(params::palette::kMutedText));
    painter.drawText(place, Qt::AlignCenter, hint);
}

}  // namespace

PictureWidget::PictureWidget(const TunerData& held, QWidget* parent)
    : QWidget(parent), data_(held), image_(held) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    image_.set_font(font());
}

QSize PictureWidget::sizeHint() const {
    return kWanted;
}

QSize PictureWidget::minimumSizeHint() const {
    return kLeast;
}

void PictureWidget::show_data(PictureMarks marks) {
    image_.set_marks(std::move(marks));
    read_under();
    update();
}

void PictureWidget::show_choices() {
    image_.invalidate();
    read_under();
    update();
}

void PictureWidget::set_hint(const QString& hint) {
    hint_ = hint;
    update();
}

Surface PictureWidget::surface() const {
    return surface_of(width(), height(), data_.choices);
}

const PictureScene& PictureWidget::scene() {
    image_.image(size(), devicePixelRatioF());
    return image_.scene();
}

void PictureWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(QPointF(0, 0), image_.image(size(), devicePixelRatioF()));
    Q_EMIT drawn();
    if (image_.scene().curves.empty() && !data_.analysed)
        paint_hint(painter, rect().adjusted(0, 0, 0, -height() / 2), hint_);
    paint_overlay(painter, image_.scene(), {}, overlay_, font());
    if (!hasFocus()) return;
    painter.setPen(QColor(params::palette::kAccent));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

// --- The pointer

void PictureWidget::point_at(ScenePoint at) {
    const Surface whole = surface();
    overlay_.at = {std::clamp(at.x, 0, whole.width), std::clamp(at.y, 0, whole.height)};
    overlay_.shown = true;
    read_under();
    Q_EMIT pointed(overlay_.at.x, overlay_.at.y);
    update();
}

void PictureWidget::hide_cross() {
    if (!overlay_.shown) return;
    overlay_.shown = false;
    update();
}

void PictureWidget::read_under() {
    if (overlay_.shown)
        overlay_.readings = readings_at(data_, frequency_at(surface(), overlay_.at.x));
}

void PictureWidget::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position() * kUnitsPerPixel;
    point_at({static_cast<int>(at.x()), static_cast<int>(at.y())});
    event->accept();
}

void PictureWidget::mousePressEvent(QMouseEvent* event) {
    mouseMoveEvent(event);
}

void PictureWidget::leaveEvent(QEvent* event) {
    hide_cross();
    QWidget::leaveEvent(event);
}

void PictureWidget::focusOutEvent(QFocusEvent* event) {
    hide_cross();
    QWidget::focusOutEvent(event);
}

// Where nobody has pointed yet, the cross begins in the middle of the axis, at 0 dB.
void PictureWidget::begin_cross() {
    if (overlay_.shown) return;
    if (overlay_.at == ScenePoint{}) {
        const Surface whole = surface();
        overlay_.at = {whole.width / 2, gain_y(whole, 1.0)};
    }
    overlay_.shown = true;
}

bool PictureWidget::move_cross(int key, int pixels) {
    begin_cross();
    ScenePoint at = overlay_.at;
    const int units = pixels * kUnitsPerPixel;
    switch (key) {
        case Qt::Key_Left:
            at.x -= units;
            break;
        case Qt::Key_Right:
            at.x += units;
            break;
        case Qt::Key_Up:
            at.y -= units;
            break;
        case Qt::Key_Down:
            at.y += units;
            break;
        case Qt::Key_Home:
            at.x = frequency_x(surface(), 1.0);
            break;
        case Qt::Key_End:
            at.x = surface().width;
            break;
        default:
            return false;
    }
    point_at(at);
    return true;
}

// To the next mark on that side, from the last to the first.
bool PictureWidget::jump(int direction) {
    const std::vector<SceneMark>& marks = scene().marks;
    if (marks.empty()) return false;
    begin_cross();
    const SceneMark* next = nullptr;
    const SceneMark* farthest = &marks.front();
    int next_distance = std::numeric_limits<int>::max();
    int farthest_distance = std::numeric_limits<int>::max();
    for (const SceneMark& mark : marks) {
        const int distance = (mark.at.x - overlay_.at.x) * direction;
        if (distance > 0 && distance < next_distance) {
            next = &mark;
            next_distance = distance;
        }
        if (distance < farthest_distance) {
            farthest = &mark;
            farthest_distance = distance;
        }
    }
    point_at((next != nullptr ? next : farthest)->at);
    return true;
}

void PictureWidget::keyPressEvent(QKeyEvent* event) {
    const bool far = (event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier)) != 0;
    const int key = event->key();
    bool taken = false;
    if (key == Qt::Key_PageDown || key == Qt::Key_PageUp)
        taken = jump(key == Qt::Key_PageDown ? 1 : -1);
    else if (key == Qt::Key_Escape && overlay_.shown) {
        hide_cross();
        taken = true;
    } else if (key >= Qt::Key_Home && key <= Qt::Key_Down)
        taken = move_cross(key, far ? kManyPixels : kFewPixels);
    if (!taken) QWidget::keyPressEvent(event);
}

void PictureWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        image_.set_font(font());
        update();
    }
    QWidget::changeEvent(event);
}

}  // namespace servo::tuner
