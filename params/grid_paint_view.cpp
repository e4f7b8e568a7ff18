#include "params/grid_paint_view.h"

#include <QPainter>
#include <QTableView>

#include "params/ui_palette.h"

namespace servo::params {

namespace {

// The number column is a narrow one.
constexpr int kNumberPadding = 4;

QFont bold(QFont font) {
    font.setBold(true);
    return font;
}

// Where the mark of a static row stands: a place of its own, so that the numbers stay in line.
QRect mark_rect(const QRect& cell, const QFont& font) {
    const int width = QFontMetrics(bold(font)).horizontalAdvance(QLatin1Char('*'));
    return {cell.right() - kNumberPadding - width + 1, cell.top(), width, cell.height() - 1};
}

QRect number_rect(const QRect& cell, const QFont& font) {
    return {cell.topLeft(), QPoint(mark_rect(cell, font).left() - 2, cell.bottom() - 1)};
}

void paint_number(QPainter& painter, const QRect& cell, QString text) {
    const bool is_static = text.endsWith(QLatin1Char('*'));
    if (is_static) text.chop(1);
    const QFont font = painter.font();
    painter.drawText(number_rect(cell, font), Qt::AlignRight | Qt::AlignVCenter, text);
    if (!is_static) return;
    painter.setFont(bold(font));
    painter.setPen(QColor(palette::kAccent));
    painter.drawText(mark_rect(cell, font), Qt::AlignHCenter | Qt::AlignVCenter,
                     QStringLiteral("*"));
}

}  // namespace

int grid_row_height(const QFontMetrics& metrics) {
    return metrics.height() + metrics.height() / 2 + 5;
}

void paint_cell_text(QPainter& painter, const QRect& cell, const QString& text, int padding) {
    const QRect place = cell.adjusted(padding, 0, -padding, -1);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}

void paint_outline(QPainter& painter, const QRect& rect, const QColor& colour) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, kOutline, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(rect.adjusted(1, 1, -1, -1));
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const auto* table = qobject_cast<const QTableView*>(option.widget);
    const QVariant background = index.data(Qt::BackgroundRole);
    const QRect cell = option.rect;
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QColor plain(selected ? palette::kSelectedCell : palette::kCell);
    painter->save();
    painter->setFont(option.font);
    painter->fillRect(cell, background.isValid() ? background.value<QColor>() : plain);
    painter->setPen(QColor(background.isValid() ? palette::kReadOnlyLine : palette::kLine));
    painter->drawLine(cell.bottomLeft(), cell.bottomRight());

    const QString text = index.data(Qt::DisplayRole).toString();
    painter->setPen(index.data(Qt::ForegroundRole).value<QColor>());
    if (index.column() == look_.number_column) {
        paint_number(*painter, cell, text);
    } else {
        paint_cell_text(*painter, cell, text, look_.padding);
    }

    const QModelIndex current = table != nullptr ? table->currentIndex() : QModelIndex();
    const QColor accent(table != nullptr && table->hasFocus() ? palette::kAccent
                                                              : palette::kQuietAccent);
    if (index.row() == current.row() && index.column() == 0) {
        painter->fillRect(QRect(cell.left(), cell.top(), 3, cell.height() - 1), accent);
    }
    if (index == current) paint_outline(*painter, cell.adjusted(0, 0, 0, -1), accent);
    painter->restore();
}

GridHeader::GridHeader(QWidget* parent, GridLook look)
    : QHeaderView(Qt::Horizontal, parent), look_(look) {
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
    painter->setFont(bold(font()));
    painter->setPen(QColor(palette::kMutedText));
    const QString text = model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
    if (section == look_.number_column) {
        painter->drawText(number_rect(rect, font()), Qt::AlignRight | Qt::AlignVCenter, text);
    } else {
        paint_cell_text(*painter, rect, text, look_.padding);
    }
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
