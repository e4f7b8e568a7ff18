#include "params/browser_paint_view.h"

#include <QPainter>

#include "params/browser_list_view.h"
#include "params/grid_paint_view.h"
#include "params/ui_palette.h"

namespace servo::params {

namespace {

constexpr int kMarkWidth = 3;  // of the selected row, so that it is not told by its colour alone

bool is_name(int column) {
    return column == kListNameCh || column == kListNameEn;
}

}  // namespace

void BrowserListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    const QRect& cell = option.rect;
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool focus = option.widget != nullptr && option.widget->hasFocus();
    const QColor chosen(focus ? palette::kSelectedCell : palette::kQuietSelectedCell);
    painter->save();
    painter->fillRect(cell, selected ? chosen : QColor(palette::kCell));
    painter->setPen(QColor(palette::kLine));
    painter->drawLine(cell.bottomLeft(), cell.bottomRight());
    if (selected && index.column() == kListIndex) {
        painter->fillRect(QRect(cell.left(), cell.top(), kMarkWidth, cell.height() - 1),
                          QColor(focus ? palette::kAccent : palette::kQuietAccent));
    }
    painter->setFont(option.font);
    painter->setPen(
        QColor(is_name(index.column()) || selected ? palette::kText : palette::kMutedText));
    paint_cell_text(*painter, cell, index.data(Qt::DisplayRole).toString());
    painter->restore();
}

BrowserListHeader::BrowserListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(false);
    setHighlightSections(false);
    setSectionResizeMode(QHeaderView::Fixed);
    setMinimumSectionSize(0);
    setStretchLastSection(true);  // where no scroll bar takes what is left
}

QSize BrowserListHeader::sizeHint() const {
    return {QHeaderView::sizeHint().width(), grid_row_height(fontMetrics())};
}

void BrowserListHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->save();
    painter->fillRect(rect, QColor(palette::kHeader));
    painter->setPen(QColor(palette::kFrame));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    QFont bold = font();
    bold.setBold(true);
    painter->setFont(bold);
    painter->setPen(QColor(palette::kMutedText));
    paint_cell_text(
        *painter, rect,
        model()->headerData(section, Qt::Horizontal, BrowserListModel::kTitleRole).toString());
    painter->restore();
}

}  // namespace servo::params
