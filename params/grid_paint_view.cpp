#include "params/grid_paint_view.h"

#include <QPainter>
#include <QTableView>

#include "params/row.h"
#include "params/ui_palette.h"

namespace servo::params {

namespace {

QRect text_rect(const QRect& cell) {
    return cell.adjusted(kCellPadding, 0, -kCellPadding, -1);
}

// The row number, and the mark of a static row in a place of its own, so that numbers stay in line.
void paint_number(QPainter& painter, const QRect& place, QString text, const QColor& colour) {
    QFont bold = painter.font();
    bold.setBold(true);
    const int mark = QFontMetrics(bold).horizontalAdvance(QLatin1Char('*'));
    const QRect number = place.adjusted(-kCellPadding, 0, -mark - 1, 0);
    const bool is_static = text.endsWith(QLatin1Char('*'));
    if (is_static) text.chop(1);
    painter.setPen(colour);
    painter.drawText(number, Qt::AlignRight | Qt::AlignVCenter, text);
    if (!is_static) return;
    painter.setFont(bold);
    painter.setPen(QColor(palette::kAccent));
    painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("*"));
}

}  // namespace

int grid_row_height(const QFontMetrics& metrics) {
    return metrics.height() + metrics.height() / 2 + 2;
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const auto* table = qobject_cast<const QTableView*>(option.widget);
    const QVariant background = index.data(Qt::BackgroundRole);
    const QRect cell = option.rect;
    painter->save();
    painter->setFont(option.font);
    painter->fillRect(cell,
                      background.isValid() ? background.value<QColor>() : QColor(palette::kCell));
    painter->setPen(QColor(background.isValid() ? palette::kReadOnlyLine : palette::kLine));
    painter->drawLine(cell.bottomLeft(), cell.bottomRight());

    const QString text = index.data(Qt::DisplayRole).toString();
    const auto colour = index.data(Qt::ForegroundRole).value<QColor>();
    if (index.column() == kNumber) {
        paint_number(*painter, text_rect(cell), text, colour);
    } else {
        const QRect place = text_rect(cell);
        painter->setPen(colour);
        painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                          option.fontMetrics.elidedText(text, Qt::ElideRight, place.width()));
    }

    const QModelIndex current = table != nullptr ? table->currentIndex() : QModelIndex();
    const QColor accent(table != nullptr && table->hasFocus() ? palette::kAccent
                                                              : palette::kQuietAccent);
    if (index.row() == current.row() && index.column() == kNumber) {
        painter->fillRect(QRect(cell.left(), cell.top(), 3, cell.height() - 1), accent);
    }
    if (index == current) {
        painter->setPen(QPen(accent, 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter->drawRect(cell.adjusted(1, 1, -1, -2));
    }
    painter->restore();
}

GridHeader::GridHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(false);
    setHighlightSections(false);
    setSectionResizeMode(QHeaderView::Fixed);
    setMinimumSectionSize(0);
}

QSize GridHeader::sizeHint() const {
    return {QHeaderView::sizeHint().width(), grid_row_height(fontMetrics())};
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->save();
    painter->fillRect(rect, QColor(palette::kHeader));
    QFont bold = font();
    bold.setBold(true);
    painter->setFont(bold);
    painter->setPen(QColor(palette::kMutedText));
    const int align = model()->headerData(section, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    const QString text = model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
    painter->drawText(text_rect(rect), align | Qt::TextSingleLine, text);
    painter->restore();
}

void GridHeader::paintEvent(QPaintEvent* event) {
    {
        // Behind the last section, where the scroll bar may stand further down.
        QPainter painter(viewport());
        painter.fillRect(viewport()->rect(), QColor(palette::kHeader));
    }
    QHeaderView::paintEvent(event);
    QPainter painter(viewport());
    const QRect all = viewport()->rect();
    painter.fillRect(QRect(length(), 0, all.width() - length(), all.height()),
                     QColor(palette::kHeader));
    painter.setPen(QColor(palette::kFrame));
    painter.drawLine(all.bottomLeft(), all.bottomRight());
}

}  // namespace servo::params
