// `MSHFlexGrid1` as a table: mouse, keys, wheel and scroll bar become calls of the grid.
#pragma once

#include <optional>

#include "params/page_grid.h"
#include "params/row_table_view.h"

namespace servo::params {

class GridTable final : public RowTable {
    Q_OBJECT

  public:
    GridTable(PageGrid& grid, QWidget* parent);

    // Column widths as told fractions of this table's width.
    void setup_grid();
    // Puts the view's current cell where the grid's is, and into sight.
    void show_current();
    // Height that shows `rows` rows, the header counted.
    int height_of_rows(int rows) const;
    // The most of `height` that cuts no row: all of it when every row fits.
    int whole_height(int height) const;
    // Width from which on row numbers and indices can be read.
    int readable_width() const;

  Q_SIGNALS:
    void popup_asked(const QPoint& place);
    void left_released();
    void list_asked();  // by its key: an editor has just been opened
    // Another font: rows have another height, columns another least width.
    void rows_resized();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void press(Qt::MouseButton button, std::optional<CellPosition> cell, QPoint global);
    void paint_row_ends(QPainter& painter);
    bool move_key(int key);
    void move_column(int columns);

    PageGrid& grid_;
};

}  // namespace servo::params
