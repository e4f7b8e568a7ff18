#include "tools/configuration_grid_view.h"

#include <QClipboard>
#include <QColor>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>

#include "params/grid_paint_view.h"
#include "params/ui_palette.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

namespace {

constexpr int kPadding = 6;
constexpr QRgb kRed = 0xffff0000;    // told: value 255, pure red
constexpr QRgb kOnRed = 0xff000000;  // black has 5.25 to 1 on it, white 4.0
constexpr int kLongestCell = 1000;
constexpr int kLeastShared = 60;  // of a column that takes what is left

}  // namespace

ConfigurationModel::ConfigurationModel(ConfigurationCells cells, QObject* parent)
    : QAbstractTableModel(parent), cells_(std::move(cells)), shown_(cells_.rows()) {}

int ConfigurationModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_;
}

int ConfigurationModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cells_.columns;
}

QVariant ConfigurationModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= cells_.rows()) return {};
    const bool red = cells_.red && cells_.red(index.row());
    const bool last = index.column() == cells_.columns - 1;
    switch (role) {
        case Qt::DisplayRole:
            // A cell of a file may be of any length, and all of it would be laid out at each paint.
            return cells_.text(index.row(), index.column()).left(kLongestCell);
        case Qt::ToolTipRole:
            return form::plain_tip(cells_.text(index.row(), index.column()).toStdString());
        case Qt::BackgroundRole:
            return red ? QVariant(QColor(kRed)) : QVariant();
        case Qt::ForegroundRole:
            if (red) return QColor(kOnRed);
            return QColor(last && cells_.warns && cells_.warns(index.row())
                              ? params::palette::kWarningText
                              : params::palette::kText);
        default:
            return {};
    }
}

QVariant ConfigurationModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return cells_.heading(section);
}

void ConfigurationModel::row_changed(int row) {
    if (row < shown_) Q_EMIT dataChanged(index(row, 0), index(row, cells_.columns - 1));
}

void ConfigurationModel::all_changed() {
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, cells_.columns - 1);
    if (cells_.rows() != shown_) {
        beginResetModel();
        shown_ = cells_.rows();
        endResetModel();
    } else if (shown_ > 0) {
        Q_EMIT dataChanged(index(0, 0), index(shown_ - 1, cells_.columns - 1));
    }
}

ConfigurationTable::ConfigurationTable(ConfigurationCells cells,
                                       std::vector<ConfigurationColumn> columns, const char* name,
                                       QWidget* parent)
    : RowTable(parent), model_(std::move(cells), this), columns_(std::move(columns)) {
    setObjectName(QLatin1String(name));
    setHorizontalHeader(new params::GridHeader(this, {.number_column = -1, .padding = kPadding}));
    setModel(&model_);
    setItemDelegate(new params::GridDelegate(this, {.number_column = -1, .padding = kPadding}));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setFrameShape(QFrame::StyledPanel);
    connect(this, &RowTable::scrolled_by_user, this, [this] { stay(); });
}

void ConfigurationTable::refresh() {
    model_.all_changed();
    fit_columns();
    viewport()->update();
}

void ConfigurationTable::refresh_row(int row) {
    model_.row_changed(row);
    if (!follows_) return;
    row_in_work_ = row;
    scrolls_itself();
    scrollTo(model_.index(row, 0));
}

void ConfigurationTable::show_column(int column, bool shown) {
    setColumnHidden(column, !shown);
    fit_columns();
}

void ConfigurationTable::set_note(const QString& text) {
    note_ = text;
    viewport()->update();
}

void ConfigurationTable::paintEvent(QPaintEvent* event) {
    RowTable::paintEvent(event);
    if (model_.rowCount() == 0) paint_note(note_);
}

void ConfigurationTable::resizeEvent(QResizeEvent* event) {
    RowTable::resizeEvent(event);
    fit_columns();
}

void ConfigurationTable::changeEvent(QEvent* event) {
    RowTable::changeEvent(event);
    if (event->type() == QEvent::FontChange) fit_columns();
}

void ConfigurationTable::fit_columns() {
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics headings(bold);
    int left = viewport()->width();
    int shares = 0;
    for (std::size_t at = 0; at < columns_.size(); ++at) {
        const int column = static_cast<int>(at);
        if (isColumnHidden(column)) continue;
        shares += columns_[at].share;
        if (columns_[at].share > 0) continue;
        const QString heading =
            model_.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const int width = std::max(headings.horizontalAdvance(heading),
                                   fontMetrics().horizontalAdvance(columns_[at].sample)) +
                          2 * kPadding + 2;
        setColumnWidth(column, width);
        left -= width;
    }
    for (std::size_t at = 0; at < columns_.size() && shares > 0; ++at) {
        const int column = static_cast<int>(at);
        if (isColumnHidden(column) || columns_[at].share == 0) continue;
        setColumnWidth(column, std::max(kLeastShared, left * columns_[at].share / shares));
    }
}

void ConfigurationTable::copy_rows() const {
    QStringList lines;
    for (int row = 0; row < model_.rowCount(); ++row) {
        if (!selectionModel()->isRowSelected(row)) continue;
        QStringList cells;
        for (int column = 0; column < model_.columnCount(); ++column)
            if (!isColumnHidden(column))
                cells << model_.index(row, column).data().toString().replace(u'\t', u' ');
        lines << cells.join(u'\t');
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

// Whoever moves the current row looks for something: the grid stays with him. He sets out from the
// row that he sees, which is the one in work.
void ConfigurationTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copy_rows();
        return;
    }
    const bool moves = row_step(event->key(), model_.rowCount()).has_value();
    if (moves && follows_ && row_in_work_ >= 0)
        setCurrentIndex(model_.index(row_in_work_, std::max(0, currentIndex().column())));
    if (moves) stay();
    RowTable::keyPressEvent(event);
}

void ConfigurationTable::stay() {
    follows_ = false;
    row_in_work_ = -1;
}

void ConfigurationTable::mousePressEvent(QMouseEvent* event) {
    stay();
    RowTable::mousePressEvent(event);
}

}  // namespace servo::tools
