#include "params/grid_model_view.h"

#include <QColor>

#include "params/qt_text_view.h"
#include "params/ui_palette.h"

namespace servo::params {

namespace {

constexpr base::Text kStaticTip{"静态对象：只读取一次", "Static object: read once"};

}  // namespace

QString shown_text(std::string_view cell) {
    return to_qt(cell.substr(0, cell.find('\0')));
}

QString plain_tool_tip(const QString& text) {
    return text.isEmpty() ? QString() : QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
}

GridModel::GridModel(const PageGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), grid_(grid) {}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : grid_.rows() - 1;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const int row = index.row() + 1;
    const int column = index.column();
    switch (role) {
        case Qt::DisplayRole:
            return shown_text(grid_.cell(row, column));
        case Qt::ToolTipRole:
            return plain_tool_tip(tool_tip(row, column));
        case Qt::BackgroundRole:
            if (grid_.read_only_cell(row, column)) return QColor(palette::kReadOnlyCell);
            return {};
        case Qt::ForegroundRole:
            return column == kName || column == kValue ? QColor(palette::kText)
                                                       : QColor(palette::kMutedText);
        default:
            return {};
    }
}

QString GridModel::tool_tip(int row, int column) const {
    if (column == kName) return shown_text(grid_.cell(row, kName));
    if (column == kNumber && grid_.row(row).is_static())
        return to_qt(kStaticTip.in(grid_.language()));
    if (column != kValue) return {};
    QString value = shown_text(grid_.cell(row, kValue));
    for (const std::string& item : value_items(grid_.row(row), grid_.language())) {
        if (!value.isEmpty() && to_qt(item).startsWith(value + QLatin1Char(':')))
            return to_qt(item);
    }
    return value;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= kColumns) return {};
    // The hidden columns have an empty header, which a missing one would not be.
    if (role == Qt::DisplayRole) return to_qt(kHeader.at(static_cast<std::size_t>(section)));
    return {};
}

void GridModel::rows_reset() {
    beginResetModel();
    endResetModel();
}

void GridModel::cell_changed(int row, int column) {
    const QModelIndex cell = index(row - 1, column);
    Q_EMIT dataChanged(cell, cell);
}

}  // namespace servo::params
