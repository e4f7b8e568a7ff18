#include "params/browser_list_view.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QWheelEvent>
#include <algorithm>

#include "params/browser_paint_view.h"
#include "params/grid_model_view.h"
#include "params/grid_paint_view.h"
#include "params/qt_text_view.h"

namespace servo::params {

BrowserListModel::BrowserListModel(const ObjectBrowser& browser, QObject* parent)
    : QAbstractTableModel(parent), browser_(browser) {}

int BrowserListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : browser_.list_rows() - 1;
}

int BrowserListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kListColumns;
}

QVariant BrowserListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const QString text = shown_text(browser_.list_cell(index.row() + 1, index.column()));
    if (role == Qt::DisplayRole) return text;
    const bool is_name = index.column() == kListNameCh || index.column() == kListNameEn;
    return is_name && !text.isEmpty() ? plain_tool_tip(text) : QVariant();
}

QVariant BrowserListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::DisplayRole) return to_qt(list_header(section, browser_.language()));
    if (role == kTitleRole || role == Qt::AccessibleTextRole)
        return to_qt(list_title(section, browser_.language()));
    return {};
}

void BrowserListModel::list_changed() {
    beginResetModel();
    endResetModel();
}

BrowserTable::BrowserTable(ObjectBrowser& browser, QWidget* parent)
    : RowTable(parent), browser_(browser), model_(browser, this) {
    setObjectName(QStringLiteral("MSHFlexGrid2"));
    setItemDelegate(new BrowserListDelegate(this));
    setHorizontalHeader(new BrowserListHeader(this));
    setModel(&model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // the widths are parts of the whole
    connect(this, &RowTable::scrolled_by_user, this,
            [this](int top_row) { browser_.scrolled_to(top_row); });
    list_changed();
}

void BrowserTable::set_widths() {
    for (int column = 0; column < kListColumns; ++column) {
        const int width = list_column_width(column, this->width(), browser_.language());
        setColumnHidden(column, width == 0);
        if (width != 0) setColumnWidth(column, width);
    }
}

void BrowserTable::list_changed() {
    model_.list_changed();
    set_widths();
    show_selection(false);
}

void BrowserTable::show_selection(bool to_top) {
    const QModelIndex cell = model_.index(browser_.selected_row() - 1, 0);
    if (!cell.isValid()) {
        selectionModel()->clear();
        return;
    }
    selectionModel()->setCurrentIndex(
        cell, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrolls_itself();
    top_wanted_ = to_top && !isVisible();
    scrollTo(cell, to_top ? PositionAtTop : EnsureVisible);
}

int BrowserTable::readable_width() const {
    constexpr int kWhole = 1000;
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    int width = 0;
    for (const int column : {kListIndex, kListSub, kListAttribute}) {
        const QString title = to_qt(list_title(column, browser_.language()));
        const int needed = metrics.horizontalAdvance(title) + 2 * kCellPadding + 1;
        const int part = list_column_width(column, kWhole, browser_.language());
        width = std::max(width, needed * kWhole / part + 1);
    }
    return width;
}

void BrowserTable::mousePressEvent(QMouseEvent* event) {
    event->accept();
    const int row = rowAt(event->position().toPoint().y());
    if (event->button() == Qt::LeftButton && row >= 0) browser_.MSHFlexGrid2_Click(row + 1);
}

// Dragging selects nothing here.
void BrowserTable::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
}

void BrowserTable::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
}

void BrowserTable::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
    const int row = rowAt(event->position().toPoint().y());
    if (event->button() == Qt::LeftButton && row >= 0) browser_.double_click(row + 1);
}

void BrowserTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copy_selected();
        return;
    }
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int key = event->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    // Opened from the menu there is nothing to pick, and Enter must not close the window.
    if (plain && enter && browser_.mode != ObjectBrowser::kMenuAndHelp) {
        if (!event->isAutoRepeat()) browser_.double_click(browser_.selected_row());
        return;
    }
    if (plain && move_key(key)) return;
    event->ignore();
}

bool BrowserTable::move_key(int key) {
    const auto rows = row_step(key, browser_.list_rows());
    if (rows) browser_.move_selection(*rows);
    return rows.has_value();
}

void BrowserTable::copy_selected() const {
    const ObjectDetails& details = browser_.details();
    QApplication::clipboard()->setText(to_qt(details.index + details.sub + '\t' + details.name));
}

// As in a page: the wheel moves the current row, and only while the list has the focus.
void BrowserTable::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (!hasFocus()) return;
    const bool held = event->modifiers() != Qt::NoModifier || event->buttons() != Qt::NoButton;
    if (const int rows = wheel_rows(event->angleDelta().y(), held); rows != 0)
        browser_.move_selection(rows);
}

void BrowserTable::resizeEvent(QResizeEvent* event) {
    RowTable::resizeEvent(event);
    set_widths();
}

void BrowserTable::showEvent(QShowEvent* event) {
    RowTable::showEvent(event);
    if (top_wanted_) show_selection(true);
}

// The selected row is painted by whether the keyboard is here.
void BrowserTable::focusInEvent(QFocusEvent* event) {
    RowTable::focusInEvent(event);
    viewport()->update();
}

void BrowserTable::focusOutEvent(QFocusEvent* event) {
    RowTable::focusOutEvent(event);
    viewport()->update();
}

}  // namespace servo::params
