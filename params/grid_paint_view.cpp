#include "params/grid_paint_view.h"

#include <QPainter>
#include <QTableView>
#include <algorithm>

#include "params/ui_palette.h"

namespace servo::params {

namespace {

// The number column is a narrow one. In a narrow grid padding and gap give way to the number.
constexpr int kNumberPadding = 4;
constexpr int kMarkGap = 2;
constexpr int kLeastPadding = 2;  // right of a text; the next cell has a whole one on its left
constexpr QLatin1String kWidestNumber("88");
constexpr QLatin1String kWidestIndex("D0D0D0");

QFont bold(QFont font) {
    font.setBold(true);
    return font;
}

// Where the mark of a static row stands: a place of its own, so that the numbers stay in line.
struct NumberPlaces {
    QRect number;
    QRect mark;
};

int mark_width(const QFont& font) {
    return QFontMetrics(bold(font)).horizontalAdvance(QLatin1Char('*'));
}

NumberPlaces number_places(const QRect& cell, const QFont& font) {
    const int mark = mark_width(font);
    const int spare = cell.width() - mark - QFontMetrics(font).horizontalAdvance(kWidestNumber);
    const int gap = std::clamp(spare, 0, kMarkGap);
    const int padding = std::clamp(spare - gap, 0, kNumberPadding);
    NumberPlaces places;
    places.mark = {cell.right() - padding - mark + 1, cell.top(), mark, cell.height() - 1};
    places.number = {cell.topLeft(), QPoint(places.mark.left() - gap - 1, cell.bottom() - 1)};
    return places;
}

void paint_number(QPainter& painter, const QRect& cell, QString text) {
    const bool is_static = text.endsWith(QLatin1Char('*'));
    if (is_static) text.chop(1);
    const QFont font = painter.font();
    const NumberPlaces places = number_places(cell, font);
    painter.drawText(places.number, Qt::AlignRight | Qt::AlignVCenter, text);
    if (!is_static) return;
    painter.setFont(bold(font));
    painter.setPen(QColor(palette::kAccent));
    painter.drawText(places.mark, Qt::AlignHCenter | Qt::AlignVCenter, QStringLiteral("*"));
}

QString without_end_blanks(QString text) {
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}

}  // namespace

int number_cell_width(const QFont& font) {
    return QFontMetrics(font).horizontalAdvance(kWidestNumber) + mark_width(font);
}

int index_cell_width(const QFont& font) {
    return kCellPadding + QFontMetrics(font).horizontalAdvance(kWidestIndex) + kLeastPadding;
}

int grid_row_height(const QFontMetrics& metrics) {
    return metrics.height() + metrics.height() / 2 + 5;
}

void paint_cell_text(QPainter& painter, const QRect& cell, const QString& text, int padding) {
    const QRect place = cell.adjusted(padding, 0, -std::min(padding, kLeastPadding), -1);
    const QString shown = without_end_blanks(text);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(shown, Qt::ElideRight, place.width()));
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
        painter->drawText(number_places(rect, font()).number, Qt::AlignRight | Qt::AlignVCenter,
                          text);
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
