// The rows of a grid for Qt's views. Model row r is row r + 1 of the grid: the header of the grid
// is the view's header.
#pragma once

#include <QAbstractTableModel>

#include "params/page_grid.h"

namespace servo::params {

// A cell's text as it is shown: up to the first NUL, which drives use to end a text.
QString shown_text(std::string_view cell);

// A tool tip that shows a text as it stands, never as markup; empty for an empty text.
QString plain_tool_tip(const QString& text);

class GridModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    GridModel(const PageGrid& grid, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // What the grid told: rows as the grid counts them.
    void rows_reset();
    void cell_changed(int row, int column);

  private:
    QString tool_tip(int row, int column) const;

    const PageGrid& grid_;
};

}  // namespace servo::params
