// How the cells and the header of a grid look.
#pragma once

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace servo::params {

inline constexpr int kCellPadding = 8;  // left and right of a cell's text, pixels at 100 %

inline constexpr int kOutline = 2;  // of the current cell and of an open editor

// What differs between a page's grid and a plain list.
struct GridLook {
    int number_column = 0;  // row numbers, right-aligned, with their mark; -1 none
    int padding = kCellPadding;
};

// Text as a cell shows it: one line, padded, cut with an ellipsis. Before it is cut it takes most
// of the padding on its right; blanks at its end need no room.
void paint_cell_text(QPainter& painter, const QRect& cell, const QString& text,
                     int padding = kCellPadding);

// Outline inside of a rectangle.
void paint_outline(QPainter& painter, const QRect& rect, const QColor& colour);

// Widths below which a row number of two digits with its mark, or an index, would be cut.
int number_cell_width(const QFont& font);
int index_cell_width(const QFont& font);

// Height of a row for a font: room for the editors, and for Chinese.
int grid_row_height(const QFontMetrics& metrics);

class GridDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    explicit GridDelegate(QObject* parent, GridLook look = {})
        : QStyledItemDelegate(parent), look_(look) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  private:
    GridLook look_;
};

class GridHeader final : public QHeaderView {
    Q_OBJECT

  public:
    explicit GridHeader(QWidget* parent, GridLook look = {});

    QSize sizeHint() const override;

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    void paintEvent(QPaintEvent* event) override;

  private:
    GridLook look_;
};

}  // namespace servo::params
