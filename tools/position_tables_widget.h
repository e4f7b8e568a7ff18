// The three grids of the window `PosFlow` with the boxes over their cells, and the pop-up menu of
// the steps.
#pragma once

#include <QMenu>
#include <QWidget>

#include "tools/pos_flow.h"
#include "tools/position_editors_view.h"
#include "tools/position_grid_view.h"

namespace servo::tools {

class PositionTablesWidget final : public QWidget {
    Q_OBJECT

  public:
    // The form outlives the widget.
    PositionTablesWidget(PosFlow& form, QWidget* parent);

    void refresh();
    void editor_changed() { editors_.editor_changed(); }
    void apply_language();
    PositionTable& steps() { return *MSHFlexGrid2_; }

    // Of the selected rows.
    void copy();
    void paste();
    void fill_down();
    void clear_rows();
    void undo() { form_.undo(); }

  private:
    struct Command {
        QAction* action;
        base::Text text;
    };

    void lay_out();
    void connect_tables();
    void make_menu();
    QAction* add_command(const char* name, base::Text text, const QKeySequence& keys,
                         void (PositionTablesWidget::*act)());
    void show_menu(const QPoint& place);
    void type(int row, int column, const QString& text);

    PosFlow& form_;
    PositionTable* MSHFlexGrid2_;  // the steps
    PositionTable* MSHFlexGrid1_;  // accelerations and decelerations
    PositionTable* MSHFlexGrid3_;  // the register of the selected step
    PositionEditors editors_;
    QMenu menu_;
    std::vector<Command> commands_;
    QAction* undo_ = nullptr;
    QAction* fill_ = nullptr;
    int shown_row_ = 0;
};

}  // namespace servo::tools
