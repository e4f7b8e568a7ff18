// The table of inputs and outputs on the page `EASY1`.
#pragma once

#include <QAbstractTableModel>

#include "params/row_table_view.h"

namespace servo::tools {

class EasyPinModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
};

// MSHFlexGrid1. All of its rows are in view.
class EasyGrid final : public params::RowTable {
    Q_OBJECT

  public:
    explicit EasyGrid(QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  private:
    EasyPinModel model_;
};

}  // namespace servo::tools
