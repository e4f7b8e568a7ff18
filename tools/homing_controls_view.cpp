#include "tools/homing_controls_view.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace servo::tools::homing {

namespace {

constexpr char32_t kEnter = 13;
constexpr char32_t kDelete = 127;

}  // namespace

// --- HomingFrame

HomingFrame::HomingFrame(const char* name, QWidget* parent) : QGroupBox(parent) {
    setObjectName(QLatin1String(name));
    form::set_pair(this, params::controls::kNoPair);
    setContentsMargins(0, 0, 0, 0);
}

// Both would make room for a line and a title.
void HomingFrame::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);  // NOLINT(bugprone-parent-virtual-call): not the frame's own
}

void HomingFrame::changeEvent(QEvent* event) {
    QGroupBox::changeEvent(event);
    setContentsMargins(0, 0, 0, 0);
}

// --- HomingBox

HomingBox::HomingBox(const char* name, QWidget* parent) : QLineEdit(parent) {
    setObjectName(QLatin1String(name));
    // Only keys come in, one by one.
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setAcceptDrops(false);
    // One that takes no entry does not look as if it did, but what it says counts all the same.
    QPalette colours = palette();
    colours.setColor(QPalette::Disabled, QPalette::Base,
                     colours.color(QPalette::Active, QPalette::Window));
    colours.setColor(QPalette::Disabled, QPalette::Text,
                     colours.color(QPalette::Active, QPalette::Text));
    setPalette(colours);
}

void HomingBox::keyPressEvent(QKeyEvent* event) {
    // Neither changes the text.
    if (event->matches(QKeySequence::Copy) || event->matches(QKeySequence::SelectAll)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto characters = event->text().toUcs4();
    const char32_t key = enter                  ? kEnter
                         : characters.isEmpty() ? U'\0'
                                                : static_cast<char32_t>(characters.front());
    if (key != U'\0' && key != kDelete && pressed && pressed(key)) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void HomingBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    came_by_mouse_ = event->reason() == Qt::MouseFocusReason;
    selectAll();
    if (focus_changed) focus_changed(true);
}

void HomingBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason) return;  // its own menu
    if (focus_changed) focus_changed(false);
}

// The press that brought the focus has put the cursor somewhere.
void HomingBox::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (came_by_mouse_ && !hasSelectedText()) selectAll();
    came_by_mouse_ = false;
}

}  // namespace servo::tools::homing
