#include "tools/position_grid_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <numeric>

#include "params/grid_paint_view.h"
#include "params/ui_palette.h"
#include "tools/position_palette_view.h"

namespace servo::tools {

namespace {

constexpr int kPadding = 6;
constexpr int kMark = 10;  // room for the mark of the step that runs

bool is_enter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

void paint_mark(QPainter& painter, const QRect& cell) {
    const int side = kMark;
    const int middle = cell.center().y();
    const QPolygon triangle({QPoint(cell.left() + 5, middle - side / 2),
                             QPoint(cell.left() + 5 + side - 2, middle),
                             QPoint(cell.left() + 5, middle + side / 2)});
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(position_palette::kRunningEdge));
    painter.drawPolygon(triangle);
}

QColor background(const QModelIndex& index, bool selected) {
    using enum CellLook;
    if (selected) return params::palette::kSelectedCell;
    if (index.data(PositionGridModel::kMarkedRole).toBool()) return position_palette::kRunning;
    switch (static_cast<CellLook>(index.data(PositionGridModel::kLookRole).toInt())) {
        case kEditable:
            return params::palette::kCell;
        case kFixed:
            return position_palette::kFixedCell;
        case kHeading:
            return params::palette::kHeader;
    }
    return params::palette::kCell;
}

}  // namespace

PositionGridModel::PositionGridModel(GridContent content, QObject* parent)
    : QAbstractTableModel(parent), content_(std::move(content)) {}

int PositionGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : content_.rows - first_row();
}

int PositionGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : content_.columns;
}

QVariant PositionGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int row = grid_row(index);
    switch (role) {
        case Qt::DisplayRole:
            return content_.text(row, index.column());
        case Qt::TextAlignmentRole:
            return static_cast<int>(Qt::AlignVCenter |
                                    (content_.number && content_.number(index.column())
                                         ? Qt::AlignRight
                                         : Qt::AlignLeft));
        case kLookRole:
            return static_cast<int>(content_.look(row, index.column()));
        case kMarkedRole:
            return content_.marked && content_.marked(row);
        default:
            return {};
    }
}

QVariant PositionGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return content_.text(0, section);
}

void PositionGridModel::all_changed() {
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void PositionDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    const auto* table = qobject_cast<const QTableView*>(option.widget);
    const bool heading =
        index.data(PositionGridModel::kLookRole).toInt() == static_cast<int>(CellLook::kHeading);
    const bool selected = option.state.testFlag(QStyle::State_Selected) && !heading;
    const bool marked = index.data(PositionGridModel::kMarkedRole).toBool();
    QRect cell = option.rect;
    painter->save();
    painter->fillRect(cell, background(index, selected));
    painter->setPen(QColor(params::palette::kLine));
    painter->drawLine(cell.bottomLeft(), cell.bottomRight());
    if (heading) painter->drawLine(cell.topRight(), cell.bottomRight());
    if (marked && index.column() == 0) paint_mark(*painter, cell);

    QFont font = option.font;
    font.setBold(heading || (marked && index.column() == 0));
    painter->setFont(font);
    painter->setPen(QColor(heading ? params::palette::kMutedText : params::palette::kText));
    const QRect room = cell.adjusted(kPadding, 0, -kPadding, -1);
    const QString text = index.data(Qt::DisplayRole).toString();
    painter->drawText(room, index.data(Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine,
                      painter->fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
    if (table != nullptr && index == table->currentIndex() && !heading) {
        const QColor accent(table->hasFocus() ? params::palette::kAccent
                                              : params::palette::kQuietAccent);
        params::paint_outline(*painter, cell.adjusted(0, 0, 0, -1), accent);
    }
    painter->restore();
}

PositionHeader::PositionHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(false);
    setHighlightSections(false);
    setSectionResizeMode(QHeaderView::Fixed);
    setMinimumSectionSize(0);
}

QSize PositionHeader::sizeHint() const {
    return {QHeaderView::sizeHint().width(), params::grid_row_height(fontMetrics())};
}

void PositionHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->save();
    painter->fillRect(rect, QColor(params::palette::kHeader));
    painter->setPen(QColor(params::palette::kFrame));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    QFont bold = font();
    bold.setBold(true);
    painter->setFont(bold);
    painter->setPen(QColor(params::palette::kMutedText));
    const int alignment = model()->index(0, section).data(Qt::TextAlignmentRole).toInt();
    painter->drawText(rect.adjusted(kPadding, 0, -kPadding, -1), alignment | Qt::TextSingleLine,
                      model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString());
    painter->restore();
}

PositionTable::PositionTable(GridContent content, QStringList samples, const char* name,
                             QWidget* parent)
    : RowTable(parent), model_(std::move(content), this), samples_(std::move(samples)) {
    setObjectName(QLatin1String(name));
    setHorizontalHeader(new PositionHeader(this));
    if (!model_.content().header) horizontalHeader()->hide();
    setModel(&model_);
    setItemDelegate(new PositionDelegate(this));
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setFrameShape(QFrame::StyledPanel);
}

void PositionTable::refresh() {
    model_.all_changed();
    viewport()->update();
}

void PositionTable::show_row(int row) {
    const QModelIndex at = model_.cell(row, std::max(0, currentIndex().column()));
    if (!at.isValid() || at.row() == currentIndex().row()) return;
    setCurrentIndex(at);
    scrollTo(at);
}

int PositionTable::selected_first() const {
    int first = model_.grid_row(currentIndex());
    for (const QModelIndex& index : selectedIndexes())
        first = std::min(first, model_.grid_row(index));
    return first;
}

int PositionTable::selected_last() const {
    int last = model_.grid_row(currentIndex());
    for (const QModelIndex& index : selectedIndexes())
        last = std::max(last, model_.grid_row(index));
    return last;
}

int PositionTable::current_column() const {
    return currentIndex().column();
}

QRect PositionTable::cell_rect(int row, int column) const {
    return visualRect(model_.cell(row, column));
}

// --- Sizes

std::vector<int> PositionTable::least_widths() const {
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics headings(bold);
    std::vector<int> widths;
    const int fixed_rows = model_.content().header ? 0 : 1;
    for (int column = 0; column < model_.content().columns; ++column) {
        const QString heading = model_.content().text(fixed_rows, column);
        const int mark = column == 0 && model_.content().marked ? kMark : 0;
        widths.push_back(std::max(headings.horizontalAdvance(heading),
                                  fontMetrics().horizontalAdvance(samples_.value(column))) +
                         2 * kPadding + 2 + mark);
    }
    return widths;
}

void PositionTable::fit_columns() {
    const std::vector<int> least = least_widths();
    const int wanted = std::accumulate(least.begin(), least.end(), 0);
    const int spare = std::max(0, viewport()->width() - wanted);
    int given = 0;
    int sum = 0;
    for (std::size_t column = 0; column < least.size(); ++column) {
        sum += least[column];
        const int share = wanted > 0 ? spare * sum / wanted : 0;
        setColumnWidth(static_cast<int>(column), least[column] + share - given);
        given = share;
    }
}

int PositionTable::readable_width() const {
    const std::vector<int> least = least_widths();
    return std::accumulate(least.begin(), least.end(), 0) + 2 * frameWidth();
}

int PositionTable::height_of_rows(int rows) const {
    const int row = params::grid_row_height(fontMetrics());
    const int header = model_.content().header ? horizontalHeader()->sizeHint().height() : 0;
    const int cells = rows - (model_.content().header ? 1 : 0);
    return header + cells * row + 2 * frameWidth();
}

QSize PositionTable::sizeHint() const {
    const bool scrolls = model_.content().header;
    const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
    return {readable_width() + bar, height_of_rows(model_.content().rows)};
}

QSize PositionTable::minimumSizeHint() const {
    return {120, height_of_rows(std::min(least_rows_, model_.content().rows))};
}

void PositionTable::resizeEvent(QResizeEvent* event) {
    RowTable::resizeEvent(event);
    fit_columns();
}

void PositionTable::changeEvent(QEvent* event) {
    RowTable::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LanguageChange) {
        fit_columns();
        updateGeometry();
    }
}

// --- Events

void PositionTable::press_right(const QModelIndex& index, QPoint place) {
    if (index.isValid() && !selectionModel()->isSelected(index)) {
        setCurrentIndex(index);
        Q_EMIT row_reached(model_.grid_row(index));
    }
    Q_EMIT popup_asked(place);
}

void PositionTable::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::RightButton) {
        press_right(index, event->globalPosition().toPoint());
        return;
    }
    RowTable::mousePressEvent(event);
    if (event->button() != Qt::LeftButton) return;
    pressed_ = index;
    if (!index.isValid())
        Q_EMIT cell_clicked(-1, -1);
    else if (event->modifiers() == Qt::NoModifier)
        Q_EMIT cell_clicked(model_.grid_row(index), index.column());
    else
        Q_EMIT row_reached(model_.grid_row(index));
}

void PositionTable::mouseMoveEvent(QMouseEvent* event) {
    RowTable::mouseMoveEvent(event);
    const bool away =
        event->buttons().testFlag(Qt::LeftButton) && indexAt(event->pos()) != pressed_;
    if (away) Q_EMIT selection_dragged();
}

void PositionTable::mouseReleaseEvent(QMouseEvent* event) {
    RowTable::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) Q_EMIT clicked(pressed_);
}

void PositionTable::keyPressEvent(QKeyEvent* event) {
    const QModelIndex at = currentIndex();
    if (at.isValid() && (is_enter(*event) || event->key() == Qt::Key_F2)) {
        Q_EMIT cell_clicked(model_.grid_row(at), at.column());
        event->accept();
        return;
    }
    // A character begins a new entry, as in a spreadsheet.
    const QString text = event->text();
    const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
    if (at.isValid() && plain && !text.isEmpty() && text.at(0).isPrint() && text != u" ") {
        Q_EMIT cell_typed(model_.grid_row(at), at.column(), text);
        event->accept();
        return;
    }
    by_keyboard_ = true;
    RowTable::keyPressEvent(event);
    by_keyboard_ = false;
}

void PositionTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    RowTable::currentChanged(current, previous);
    viewport()->update();
    if (by_keyboard_ && current.isValid() && current.row() != previous.row())
        Q_EMIT row_reached(model_.grid_row(current));
}

void PositionTable::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Keyboard || !currentIndex().isValid()) return;
    press_right(currentIndex(), viewport()->mapToGlobal(visualRect(currentIndex()).center()));
    event->accept();
}

}  // namespace servo::tools
