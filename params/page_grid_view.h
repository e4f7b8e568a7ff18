// A grid on screen: the table `MSHFlexGrid1` and over it the editors `textbox1` and `Combobox1`. A
// window of tabs has one for each tab, named `MSHFlexGrid1(0)` and so on.
#pragma once

#include <QWidget>

#include "params/grid_editors_view.h"
#include "params/grid_model_view.h"
#include "params/grid_table_view.h"
#include "params/page_grid.h"

namespace servo::params {

class PageGridView final : public QWidget, private GridObserver {
    Q_OBJECT

  public:
    // The grid outlives the view. `suffix` goes to the end of the three names.
    explicit PageGridView(PageGrid& grid, QWidget* parent = nullptr, const QString& suffix = {});
    ~PageGridView() override;

    PageGrid& grid() { return grid_; }
    GridTable& table() { return table_; }

    // Height that shows `rows` rows, the header counted.
    int height_for_rows(int rows) const;
    // Height that shows the grid's rows, up to 29 of them.
    int wanted_height() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void hide_editors() { grid_.hide_editors(); }

  Q_SIGNALS:
    void popup_asked(const QPoint& place);
    void rows_changed();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void rows_reset() override;
    void cell_changed(int row, int column) override;
    void current_changed() override;
    void editor_changed() override;

    void place_table();
    void connect_editors();
    void name_controls();
    void name_editor(QWidget& editor, const EditorState& state);
    void show_text_box(const EditorState& state, const QRect& cell);
    void show_list_box(const EditorState& state, const QRect& cell);
    void put_away(QWidget& editor);

    PageGrid& grid_;
    GridTable table_;
    GridModel model_;
    TextBox textbox1_;   // the text editor
    ListBox Combobox1_;  // the drop-down editor
};

}  // namespace servo::params
