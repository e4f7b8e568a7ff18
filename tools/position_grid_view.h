// The three grids of the position table on screen: cells are read from the form, and events go out
// by the program's own counting, where row 0 is the heading.
#pragma once

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QString>
#include <QStyledItemDelegate>
#include <functional>
#include <optional>
#include <vector>

#include "params/row_table_view.h"

namespace servo::tools {

enum class CellLook : std::uint8_t {
    kEditable,
    kFixed,    // cannot be edited in place
    kHeading,  // a heading that is a cell
};

struct GridContent {
    int rows = 0;  // the heading counted
    int columns = 0;
    bool header = true;  // row 0 is the view's header; else all rows are cells
    std::function<QString(int row, int column)> text;
    std::function<CellLook(int row, int column)> look;
    std::function<bool(int column)> number;  // right-aligned
    std::function<bool(int row)> marked;     // the step that runs
};

class PositionGridModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    static constexpr int kLookRole = Qt::UserRole;
    static constexpr int kMarkedRole = Qt::UserRole + 1;

    PositionGridModel(GridContent content, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    const GridContent& content() const { return content_; }
    int grid_row(const QModelIndex& index) const { return index.row() + first_row(); }
    QModelIndex cell(int row, int column) const { return index(row - first_row(), column); }
    void all_changed();

  private:
    int first_row() const { return content_.header ? 1 : 0; }

    GridContent content_;
};

class PositionDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

// The view's header; the title of a column stands as its cells do.
class PositionHeader final : public QHeaderView {
    Q_OBJECT

  public:
    explicit PositionHeader(QWidget* parent);
    QSize sizeHint() const override;

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
};

class PositionTable final : public params::RowTable {
    Q_OBJECT

  public:
    // `samples`: the widest text that each column should show without a cut.
    PositionTable(GridContent content, QStringList samples, const char* name, QWidget* parent);

    PositionGridModel& cells() { return model_; }
    void refresh();
    // Puts the current cell into a row, its column as it was.
    void show_row(int row);
    int selected_first() const;  // rows of the selection
    int selected_last() const;
    int current_column() const;
    QRect cell_rect(int row, int column) const;

    // Least width that cuts no text.
    int readable_width() const;
    int height_of_rows(int rows) const;  // the heading counted
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void set_least_rows(int rows) { least_rows_ = rows; }

  Q_SIGNALS:
    void cell_clicked(int row, int column);  // -1, -1 beside the cells
    void cell_typed(int row, int column, const QString& text);
    void row_reached(int row);  // by the keyboard
    void selection_dragged();
    void popup_asked(const QPoint& place);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

  private:
    std::vector<int> least_widths() const;
    void fit_columns();
    void press_right(const QModelIndex& index, QPoint place);

    PositionGridModel model_;
    QStringList samples_;
    int least_rows_ = 4;
    QModelIndex pressed_;
    bool by_keyboard_ = false;
};

}  // namespace servo::tools
