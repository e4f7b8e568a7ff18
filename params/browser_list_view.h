// `MSHFlexGrid2`, the list of the dictionary browser, as a table: mouse, keys, wheel and scroll bar
// become calls of the browser.
#pragma once

#include <QAbstractTableModel>

#include "params/object_browser.h"
#include "params/row_table_view.h"

namespace servo::params {

// Model row r is row r + 1 of the list. Cells are made when they are shown.
class BrowserListModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    // What the header shows, in the language of the reader; the header's text is the told one.
    static constexpr int kTitleRole = Qt::UserRole;

    BrowserListModel(const ObjectBrowser& browser, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void list_changed();

  private:
    const ObjectBrowser& browser_;
};

class BrowserTable final : public RowTable {
    Q_OBJECT

  public:
    BrowserTable(ObjectBrowser& browser, QWidget* parent);

    void list_changed();
    // Selects the browser's row from its first column to its last.
    void show_selection(bool to_top);
    // The width at which keys and attributes can be read.
    int readable_width() const;
    // The keys that move the selection. False for any other.
    bool move_key(int key);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void set_widths();
    void copy_selected() const;

    ObjectBrowser& browser_;
    BrowserListModel model_;
    bool top_wanted_ = false;  // before the list has a size, it cannot scroll
};

}  // namespace servo::params
