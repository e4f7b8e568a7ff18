#include "params/grid_editors_view.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>
#include <QWheelEvent>
#include <algorithm>

#include "params/grid_paint_view.h"
#include "params/page_editor.h"
#include "params/ui_palette.h"

namespace servo::params {

namespace {

// Another program, a menu or the list of the box itself takes the focus for a while only.
bool comes_back(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

bool is_enter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

char32_t key_character(const QKeyEvent& event) {
    if (is_enter(event)) return kKeyEnter;
    if (event.key() == Qt::Key_Escape) return kKeyEsc;
    if (event.key() == Qt::Key_Backspace) return kKeyBackspace;
    if (event.key() == Qt::Key_Delete) return 0;
    const Qt::KeyboardModifiers held =
        event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (held == Qt::ControlModifier && event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) {
        return static_cast<char32_t>(event.key() - Qt::Key_A + 1);
    }
    const auto text = event.text().toUcs4();
    return text.isEmpty() ? 0 : text.front();
}

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {
    setFrame(false);
    setTextMargins(kCellPadding - 2, 0, kCellPadding - 2, 0);
    // Text that arrives in other ways than keys and paste would pass the filter by.
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setAcceptDrops(false);
    setDragEnabled(false);
    setContextMenuPolicy(Qt::NoContextMenu);
}

void TextBox::keyPressEvent(QKeyEvent* event) {
    const char32_t character = key_character(*event);
    if (character != 0 && filter && filter(character) == kKeySwallowed) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void TextBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (!comes_back(event->reason())) Q_EMIT focus_lost();
}

void TextBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    paint_outline(painter, rect(), QColor(palette::kAccent));
}

ListBox::ListBox(QWidget* parent) : QComboBox(parent) {
    setContextMenuPolicy(Qt::NoContextMenu);
    view()->installEventFilter(this);
}

void ListBox::showPopup() {
    const int items = view()->sizeHintForColumn(0) + 2 * kCellPadding;
    view()->setMinimumWidth(std::max(width(), items));
    QComboBox::showPopup();
}

// True when the key is used up.
bool ListBox::filter_key(QKeyEvent& event) {
    const char32_t character = key_character(event);
    if (character == 0 || character == kKeyEnter || character == U' ') return false;
    return filter && filter(character) == kKeySwallowed;
}

void ListBox::keyPressEvent(QKeyEvent* event) {
    if (view()->isVisible()) {
        QCoreApplication::sendEvent(view(), event);
        event->accept();  // a choice has put the box away; the key must not go on to the grid
        return;
    }
    if (filter_key(*event)) {
        event->accept();
        return;
    }
    const int key = event->key();
    const bool opens = is_enter(*event) || key == Qt::Key_Space || key == Qt::Key_F4 ||
                       key == Qt::Key_Up || key == Qt::Key_Down;
    if (opens) {
        if (!event->isAutoRepeat()) showPopup();
    } else if (key_character(*event) != 0 && key != Qt::Key_Tab && key != Qt::Key_Backtab) {
        showPopup();  // the character finds an item
        QCoreApplication::sendEvent(view(), event);
        event->accept();
    } else {
        event->ignore();
    }
}

bool ListBox::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view() && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        // A key that is still held from opening the list must not choose.
        if (is_enter(*key) && key->isAutoRepeat()) return true;
        if (key->key() == Qt::Key_Escape) hidePopup();
        if (filter_key(*key)) return true;
    }
    return QComboBox::eventFilter(watched, event);
}

void ListBox::wheelEvent(QWheelEvent* event) {
    event->accept();
}

void ListBox::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    // Its own list has the focus while it is open.
    if (!comes_back(event->reason()) && !view()->isVisible()) Q_EMIT focus_lost();
}

// Like the cell under it, with an arrow: a button in the middle of a grid would look pressed.
void ListBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(palette::kCell));
    QStyleOption arrow;
    arrow.initFrom(this);
    const int side = height() / 2;
    arrow.rect = QRect(width() - side - kCellPadding / 2, (height() - side) / 2, side, side);
    style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, &painter, this);
    painter.setPen(QColor(palette::kText));
    paint_cell_text(painter, QRect(0, 0, arrow.rect.left() + kCellPadding / 2, height()),
                    currentText());
    paint_outline(painter, rect(), QColor(palette::kAccent));
}

}  // namespace servo::params
