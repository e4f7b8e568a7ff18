// The grid of the window `modbus` as a table: read-only, whole rows are selected and copied.
#pragma once

#include <QAbstractTableModel>

#include "base/language.h"
#include "params/modbus_table.h"
#include "params/row_table_view.h"

namespace servo::params {

// The rows of the table that its filter leaves.
class ModbusModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    ModbusModel(ModbusTable& table, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void set_filter(const QString& text);
    void reload();

  private:
    ModbusTable& table_;
};

// `MSHFlexGrid1` of the window.
class ModbusGrid final : public RowTable {
    Q_OBJECT

  public:
    ModbusGrid(ModbusTable& table, const base::Language& language, QWidget* parent);

    // Puts the current cell on a row, from 0, and selects it; none when there is no such row.
    void select_row(int row);
    int current_row() const { return currentIndex().row(); }
    // In which every text of the narrow columns can be read.
    int least_width() const;

  Q_SIGNALS:
    void typed(const QString& text);  // a letter or digit: somebody looks for something
    void escaped();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void fit_columns();
    void copy_selected();

    ModbusTable& table_;
    const base::Language& language_;
};

}  // namespace servo::params
