// The grids of the configuration window on screen: cells are read from the form. While a job runs
// only the row that got its result is painted anew, and the grid follows it until its user scrolls.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <functional>
#include <vector>

#include "params/row_table_view.h"

namespace servo::tools {

struct ConfigurationCells {
    std::function<int()> rows;  // the heading not counted
    std::function<QString(int row, int column)> text;
    std::function<QString(int column)> heading;
    std::function<bool(int row)> red;    // told: the background of the whole row
    std::function<bool(int row)> warns;  // the last column is a warning
    int columns = 0;
};

class ConfigurationModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    ConfigurationModel(ConfigurationCells cells, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void row_changed(int row);
    void all_changed();

  private:
    ConfigurationCells cells_;
    int shown_ = 0;  // rows that the views know of
};

// How wide a column is: as wide as a sample text, and which of them take what is left.
struct ConfigurationColumn {
    QString sample;
    int share = 0;
};

class ConfigurationTable final : public params::RowTable {
    Q_OBJECT

  public:
    ConfigurationTable(ConfigurationCells cells, std::vector<ConfigurationColumn> columns,
                       const char* name, QWidget* parent);

    // Everything may be different.
    void refresh();
    void refresh_row(int row);
    // Begins to follow the row in work.
    void follow() { follows_ = true; }
    bool follows() const { return follows_; }
    // A column that is not shown has the width 0.
    void show_column(int column, bool shown);
    void set_note(const QString& text);  // in the middle while there are no rows

    QSize sizeHint() const override { return {560, 260}; }
    QSize minimumSizeHint() const override { return {200, 90}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void fit_columns();
    void copy_rows() const;
    void stay();

    ConfigurationModel model_;
    std::vector<ConfigurationColumn> columns_;
    QString note_;
    bool follows_ = true;
    int row_in_work_ = -1;
};

}  // namespace servo::tools
