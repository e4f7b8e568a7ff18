#include "app/walk_input.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

namespace servo::app {
namespace {

constexpr int kDragSteps = 8;

void send_mouse(QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button,
                Qt::MouseButtons held) {
    QMouseEvent event(type, at, widget.mapToGlobal(at), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

// The nearest widget that a click gives the focus to.
void move_focus(QWidget& clicked) {
    for (QWidget* widget = &clicked; widget != nullptr; widget = widget->parentWidget()) {
        if (widget->isEnabled() && widget->focusPolicy() & Qt::ClickFocus) {
            widget->setFocus(Qt::MouseFocusReason);
            return;
        }
        if (widget->isWindow()) return;
    }
}

int qt_key(NamedKey key, int function) {
    switch (key) {
        case NamedKey::kNone:
            return 0;
        case NamedKey::kEnter:
            return Qt::Key_Return;
        case NamedKey::kEscape:
            return Qt::Key_Escape;
        case NamedKey::kTab:
            return Qt::Key_Tab;
        case NamedKey::kBackspace:
            return Qt::Key_Backspace;
        case NamedKey::kDelete:
            return Qt::Key_Delete;
        case NamedKey::kInsert:
            return Qt::Key_Insert;
        case NamedKey::kHome:
            return Qt::Key_Home;
        case NamedKey::kEnd:
            return Qt::Key_End;
        case NamedKey::kPageUp:
            return Qt::Key_PageUp;
        case NamedKey::kPageDown:
            return Qt::Key_PageDown;
        case NamedKey::kUp:
            return Qt::Key_Up;
        case NamedKey::kDown:
            return Qt::Key_Down;
        case NamedKey::kLeft:
            return Qt::Key_Left;
        case NamedKey::kRight:
            return Qt::Key_Right;
        case NamedKey::kSpace:
            return Qt::Key_Space;
        case NamedKey::kFunction:
            return Qt::Key_F1 + function - 1;
    }
    return 0;
}

// The text that a keyboard sends along with a named key.
QString text_of(NamedKey key) {
    switch (key) {
        case NamedKey::kEnter:
            return QStringLiteral("\r");
        case NamedKey::kEscape:
            return QStringLiteral("\x1B");
        case NamedKey::kTab:
            return QStringLiteral("\t");
        case NamedKey::kBackspace:
            return QStringLiteral("\b");
        case NamedKey::kDelete:
            return QStringLiteral("\x7F");
        case NamedKey::kSpace:
            return QStringLiteral(" ");
        case NamedKey::kNone:
        case NamedKey::kInsert:
        case NamedKey::kHome:
        case NamedKey::kEnd:
        case NamedKey::kPageUp:
        case NamedKey::kPageDown:
        case NamedKey::kUp:
        case NamedKey::kDown:
        case NamedKey::kLeft:
        case NamedKey::kRight:
        case NamedKey::kFunction:
            return {};
    }
    return {};
}

// Key codes of letters, digits and signs are their upper-case characters.
int key_of_character(char32_t character) {
    if (character >= U'a' && character <= U'z') return static_cast<int>(character - U'a' + U'A');
    return character < 0x80 ? static_cast<int>(character) : 0;
}

void send_key_events(QWidget& widget, int key, Qt::KeyboardModifiers modifiers,
                     const QString& text) {
    const QPointer<QWidget> guard(&widget);
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(&widget, &press);
    if (!guard) return;
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QCoreApplication::sendEvent(&widget, &release);
}

// What Ctrl and a letter send: the control character.
QString text_of(char32_t character, Qt::KeyboardModifiers modifiers) {
    if ((modifiers & Qt::ControlModifier) != 0) {
        const int key = key_of_character(character);
        return key >= 'A' && key <= 'Z' ? QString(QChar(key - 'A' + 1)) : QString();
    }
    return QString::fromUcs4(&character, 1);
}

}  // namespace

void send_click(QWidget& widget, QPoint at, Qt::MouseButton button) {
    const QPointer<QWidget> guard(&widget);
    move_focus(widget);
    send_mouse(widget, QEvent::MouseButtonPress, at, button, button);
    if (guard && button == Qt::RightButton) {
        QContextMenuEvent menu(QContextMenuEvent::Mouse, at, widget.mapToGlobal(at));
        QCoreApplication::sendEvent(&widget, &menu);
    }
    if (guard) send_mouse(widget, QEvent::MouseButtonRelease, at, button, Qt::NoButton);
}

void send_drag(QWidget& widget, QPoint from, QPoint to, Qt::MouseButton button) {
    const QPointer<QWidget> guard(&widget);
    move_focus(widget);
    send_mouse(widget, QEvent::MouseButtonPress, from, button, button);
    for (int step = 1; step <= kDragSteps && guard; ++step) {
        const QPoint at = from + (to - from) * step / kDragSteps;
        send_mouse(widget, QEvent::MouseMove, at, Qt::NoButton, button);
    }
    if (guard) send_mouse(widget, QEvent::MouseButtonRelease, to, button, Qt::NoButton);
}

void send_key(QWidget& widget, const KeyStroke& stroke) {
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    if (stroke.ctrl) modifiers |= Qt::ControlModifier;
    if (stroke.shift) modifiers |= Qt::ShiftModifier;
    if (stroke.alt) modifiers |= Qt::AltModifier;
    if (stroke.key == NamedKey::kNone)
        send_key_events(widget, key_of_character(stroke.character), modifiers,
                        text_of(stroke.character, modifiers));
    else
        send_key_events(widget, qt_key(stroke.key, stroke.function), modifiers,
                        text_of(stroke.key));
}

void send_text(QWidget& widget, const QString& text) {
    const QPointer<QWidget> guard(&widget);
    for (const char32_t character : text.toUcs4()) {
        if (!guard) return;
        const bool capital = character >= U'A' && character <= U'Z';
        const Qt::KeyboardModifiers modifiers = capital ? Qt::ShiftModifier : Qt::NoModifier;
        send_key_events(widget, key_of_character(character), modifiers,
                        QString::fromUcs4(&character, 1));
    }
}

}  // namespace servo::app
