#include "params/modbus_grid_view.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <algorithm>

#include "params/grid_model_view.h"
#include "params/grid_paint_view.h"
#include "params/ui_palette.h"

namespace servo::params {

namespace {

// The index column is a twenty-fourth of the grid, so its text stands close to the next one.
constexpr GridLook kLook{.number_column = -1, .padding = 4};

constexpr base::Text kNoMatch{"没有符合的对象", "No object matches"};
constexpr base::Text kNoObjects{"字典中没有带 ModBus 地址的对象",
                                "The dictionary has no object with a ModBus address"};

bool is_name(int column) {
    return column == kModbusNameCh || column == kModbusNameEn;
}

}  // namespace

ModbusModel::ModbusModel(ModbusTable& table, QObject* parent)
    : QAbstractTableModel(parent), table_(table) {}

int ModbusModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : table_.rows();
}

int ModbusModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kModbusColumns;
}

QVariant ModbusModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
            return shown_text(table_.cell(index.row(), index.column()));
        case Qt::ToolTipRole:
            if (!is_name(index.column())) return {};
            return plain_tool_tip(shown_text(table_.cell(index.row(), index.column())));
        case Qt::ForegroundRole:
            return index.column() == kModbusAddress || is_name(index.column())
                       ? QColor(palette::kText)
                       : QColor(palette::kMutedText);
        default:
            return {};
    }
}

QVariant ModbusModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= kModbusColumns)
        return {};
    return shown_text(kModbusHeader.at(static_cast<std::size_t>(section)));
}

void ModbusModel::set_filter(const QString& text) {
    beginResetModel();
    table_.set_filter(text.toStdString());
    endResetModel();
}

void ModbusModel::reload() {
    beginResetModel();
    table_.reload();
    endResetModel();
}

ModbusGrid::ModbusGrid(ModbusTable& table, const base::Language& language, QWidget* parent)
    : RowTable(parent), table_(table), language_(language) {
    setItemDelegate(new GridDelegate(this, kLook));
    setHorizontalHeader(new GridHeader(this, kLook));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollBarPolicy(
        Qt::ScrollBarAlwaysOn);  // columns keep their place when it is not needed
}

int ModbusGrid::least_width() const {
    QFont bold = font();
    bold.setBold(true);
    const auto fits = [this, &bold](int width) {
        for (const int column : {kModbusAddress, kModbusIndex, kModbusSub}) {
            const auto header = kModbusHeader.at(static_cast<std::size_t>(column));
            const int text = std::max(QFontMetrics(bold).horizontalAdvance(shown_text(header)),
                                      fontMetrics().horizontalAdvance(QStringLiteral("0000")));
            if (modbus_column_width(column, width) < text + 2 * kLook.padding + 1) return false;
        }
        return true;
    };
    int width = 0;
    while (!fits(width))
        width += 8;
    return width;
}

// Where the window is too narrow the columns keep their ratios and can be scrolled to.
void ModbusGrid::fit_columns() {
    const int whole = std::max(viewport()->width(), least_width());
    for (int column = 0; column < kModbusColumns; ++column)
        setColumnWidth(column, modbus_column_width(column, whole));
}

void ModbusGrid::select_row(int row) {
    const QModelIndex cell = model()->index(row, kModbusAddress);
    setCurrentIndex(cell);
    if (cell.isValid()) scrollTo(cell);
}

void ModbusGrid::copy_selected() {
    std::vector<int> rows;
    for (const QModelIndex& cell : selectionModel()->selectedRows())
        rows.push_back(cell.row());
    std::sort(rows.begin(), rows.end());
    if (rows.empty()) return;  // what the clipboard holds stays
    QApplication::clipboard()->setText(QString::fromStdString(table_.copied_rows(rows)));
}

void ModbusGrid::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copy_selected();
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        Q_EMIT escaped();
        return;
    }
    const bool plain =
        (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    const QString text = event->text();
    if (plain && !text.isEmpty() && text.front().isPrint() && !text.front().isSpace()) {
        Q_EMIT typed(text);
        return;
    }
    RowTable::keyPressEvent(event);
}

void ModbusGrid::resizeEvent(QResizeEvent* event) {
    RowTable::resizeEvent(event);
    fit_columns();
}

void ModbusGrid::changeEvent(QEvent* event) {
    RowTable::changeEvent(event);
    if (event->type() == QEvent::FontChange && model() != nullptr) fit_columns();
}

void ModbusGrid::paintEvent(QPaintEvent* event) {
    RowTable::paintEvent(event);
    if (table_.rows() > 0) return;
    const base::Text& text = table_.all_rows() > 0 ? kNoMatch : kNoObjects;
    paint_note(shown_text(text.in(language_)));
}

}  // namespace servo::params
