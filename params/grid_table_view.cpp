#include "params/grid_table_view.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "params/grid_model_view.h"
#include "params/grid_paint_view.h"
#include "params/ui_palette.h"

namespace servo::params {

namespace {

constexpr base::Text kNoRows{"此页没有对象", "This page has no objects"};

}  // namespace

GridTable::GridTable(PageGrid& grid, QWidget* parent) : RowTable(parent), grid_(grid) {
    setItemDelegate(new GridDelegate(this));
    setHorizontalHeader(new GridHeader(this));
    horizontalHeader()->viewport()->installEventFilter(this);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::NoSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // the widths are parts of the whole
}

void GridTable::setup_grid() {
    for (int column = 0; column < kColumns; ++column) {
        setColumnHidden(column, column >= kShownColumns);
        if (column < kShownColumns) setColumnWidth(column, column_width(column, width()));
    }
}

void GridTable::show_current() {
    const CellPosition at = grid_.current();
    const QModelIndex cell = model()->index(at.row - 1, at.column);  // none for the header
    setCurrentIndex(cell);
    if (cell.isValid()) {
        scrolls_itself();
        verticalScrollBar()->setValue(std::min(verticalScrollBar()->value(), cell.row()));
        scrollTo(cell.siblingAtColumn(kValue));
    }
    viewport()->update();  // the mark of the current row stands in another cell
}

int GridTable::height_of_rows(int rows) const {
    return horizontalHeader()->sizeHint().height() +
           (rows - 1) * verticalHeader()->defaultSectionSize();
}

int GridTable::whole_height(int height) const {
    if (height >= height_of_rows(grid_.rows())) return height;
    const int row = verticalHeader()->defaultSectionSize();
    return height_of_rows(1 + std::max(1, (height - height_of_rows(1)) / row));
}

int GridTable::readable_width() const {
    constexpr int kWhole = 2000;
    const auto needed = [](int column, int width) {
        return width * kWhole / column_width(column, kWhole) + 1;
    };
    return std::max(needed(kNumber, number_cell_width(font())),
                    needed(kIndex, index_cell_width(font())));
}

void GridTable::press(Qt::MouseButton button, std::optional<CellPosition> cell, QPoint global) {
    if (button == Qt::LeftButton) {
        grid_.grid_mouse_down(MouseButton::kLeft, cell);
    } else if (button == Qt::RightButton) {
        grid_.grid_mouse_down(MouseButton::kRight, cell);
        Q_EMIT popup_asked(global);
    }
}

void GridTable::mousePressEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    std::optional<CellPosition> cell;
    if (const int row = rowAt(at.y()); row >= 0) {
        // Beside the columns there is none: a click there is one on a cell that opens nothing.
        cell = CellPosition{row + 1, std::max(columnAt(at.x()), int{kNumber})};
    }
    press(event->button(), cell, event->globalPosition().toPoint());
    event->accept();
}

// Dragging selects nothing here.
void GridTable::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
}

void GridTable::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (event->button() == Qt::LeftButton) Q_EMIT left_released();
}

// The first of the two presses has done what there is to do.
void GridTable::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
}

bool GridTable::eventFilter(QObject* watched, QEvent* event) {
    if (watched == horizontalHeader()->viewport() && event->type() == QEvent::MouseButtonPress) {
        auto* mouse = static_cast<QMouseEvent*>(event);
        const int column = horizontalHeader()->logicalIndexAt(mouse->position().toPoint());
        setFocus(Qt::MouseFocusReason);
        press(mouse->button(), CellPosition{0, std::max(column, int{kNumber})},
              mouse->globalPosition().toPoint());
        return true;
    }
    return RowTable::eventFilter(watched, event);
}

void GridTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        const CellPosition at = grid_.current();
        QApplication::clipboard()->setText(shown_text(grid_.cell(at.row, at.column)));
        return;
    }
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int key = event->key();
    if (plain && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2)) {
        if (!event->isAutoRepeat()) grid_.open_editor();
        return;
    }
    if (plain && key == Qt::Key_F4) {
        if (event->isAutoRepeat()) return;
        grid_.open_editor();
        Q_EMIT list_asked();
        return;
    }
    if (key == Qt::Key_Escape && grid_.editor().open != Editor::kNone) {
        grid_.editor_key(kKeyEsc, {});
        return;
    }
    if (plain && move_key(key)) return;
    event->ignore();
}

bool GridTable::move_key(int key) {
    if (const auto rows = row_step(key, grid_.rows())) {
        grid_.move_current(*rows);
        return true;
    }
    if (key != Qt::Key_Left && key != Qt::Key_Right) return false;
    move_column(key == Qt::Key_Left ? -1 : 1);
    return true;
}

void GridTable::move_column(int columns) {
    const CellPosition at = grid_.current();
    grid_.set_current({at.row, std::clamp(at.column + columns, 0, kShownColumns - 1)});
}

// The wheel moves the current row, and only while the grid has the focus.
void GridTable::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (!hasFocus()) return;
    const bool held = event->modifiers() != Qt::NoModifier || event->buttons() != Qt::NoButton;
    if (const int rows = wheel_rows(event->angleDelta().y(), held); rows != 0) {
        grid_.move_current(rows);
    }
}

// The right button has been served on its press; here it is the menu key.
void GridTable::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard) return;
    const QRect cell = visualRect(currentIndex());
    press(Qt::RightButton, grid_.current(), viewport()->mapToGlobal(cell.bottomLeft()));
}

void GridTable::changeEvent(QEvent* event) {
    RowTable::changeEvent(event);
    if (event->type() == QEvent::FontChange) Q_EMIT rows_resized();
}

void GridTable::paintEvent(QPaintEvent* event) {
    RowTable::paintEvent(event);
    if (grid_.rows() == 1) {
        paint_note(shown_text(kNoRows.in(grid_.language())));
        return;
    }
    QPainter painter(viewport());
    paint_row_ends(painter);
}

// Rows run on to the edge, behind the last column, where the scroll bar stands when there is one.
void GridTable::paint_row_ends(QPainter& painter) {
    const int left = horizontalHeader()->length();
    const int right = viewport()->width();
    if (left >= right) return;
    for (int row = rowAt(0); row >= 0 && row < model()->rowCount(); ++row) {
        const int top = rowViewportPosition(row);
        if (top >= viewport()->height()) return;
        const bool read_only = grid_.read_only_cell(row + 1, kUnit);
        const QRect end(left, top, right - left, rowHeight(row));
        painter.fillRect(end, QColor(read_only ? palette::kReadOnlyCell : palette::kCell));
        painter.setPen(QColor(read_only ? palette::kReadOnlyLine : palette::kLine));
        painter.drawLine(end.bottomLeft(), end.bottomRight());
    }
}

}  // namespace servo::params
