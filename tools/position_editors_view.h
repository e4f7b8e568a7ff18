// The five boxes that lie over the cells of the position table: `Combo1`, `Combo2`, `Text2` over
// the steps, `Text3` over the register, `Text4` over the accelerations. They show what the form
// says is open, and pass keys and choices to it.
#pragma once

#include <QObject>
#include <array>

#include "params/grid_editors_view.h"
#include "tools/pos_flow.h"
#include "tools/position_grid_view.h"

namespace servo::tools {

class PositionEditors final : public QObject {
    Q_OBJECT

  public:
    struct Tables {
        PositionTable& ramps;      // MSHFlexGrid1
        PositionTable& steps;      // MSHFlexGrid2
        PositionTable& registers;  // MSHFlexGrid3
    };

    // The form and the tables outlive the boxes.
    PositionEditors(PosFlow& form, Tables tables, QObject* parent);

    void editor_changed();
    void apply_language();
    // The first character of an entry that is typed onto a cell.
    void type(const QString& text);

  private:
    void connect_text(params::TextBox& box);
    void connect_list(params::ListBox& box);
    PositionTable& table_of(PosFlowBox box);
    params::TextBox* text_box(PosFlowBox box) const;
    params::ListBox* list_box(PosFlowBox box) const;
    void show_text(params::TextBox& box);
    void show_list(params::ListBox& box);
    void put_away_others(const QWidget* shown);
    void put_away(QWidget& box, PositionTable& table);
    void fill_lists();

    PosFlow& form_;
    Tables tables_;
    params::ListBox* Combo1_;
    params::ListBox* Combo2_;
    params::TextBox* Text2_;
    params::TextBox* Text3_;
    params::TextBox* Text4_;
    bool closing_ = false;
};

}  // namespace servo::tools
