// Measuring: the curve that cursors and steps work on, the steps, and what the cursors read.
#pragma once

#include <QWidget>
#include <array>

#include "scope/scope_controls_view.h"

class QGridLayout;

namespace servo::scope {

class NumberLabel;
class PickListWidget;

class CursorPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    CursorPanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

  private:
    QToolButton* step(const char* name, const char* icon, base::Text text,
                      std::function<void()> run);
    void make_steps();
    void lay_out_steps(QGridLayout& grid);
    void lay_out_read_outs(QGridLayout& grid, int line);
    NumberLabel* read_out(const char* name);

    PanelContext context_;
    ControlTexts texts_;
    PickListWidget* Combo12_ = nullptr;  // the curve
    QCheckBox* Check10_ = nullptr;       // small steps
    QToolButton* Command9_ = nullptr;    // more units per division
    QToolButton* Command10_ = nullptr;   // fewer
    QToolButton* Command11_ = nullptr;   // down
    QToolButton* Command12_ = nullptr;   // up
    NumberLabel* Label25_ = nullptr;     // time at X1
    NumberLabel* Label27_ = nullptr;     // time at X2
    NumberLabel* Label29_ = nullptr;     // dX
    NumberLabel* Label31_ = nullptr;     // unit of times
    NumberLabel* Label32_ = nullptr;     // unit of values
    NumberLabel* Label33_ = nullptr;     // dY
    NumberLabel* Label34_ = nullptr;     // value at X2 or Y2
    NumberLabel* Label35_ = nullptr;     // value at X1 or Y1
};

}  // namespace servo::scope
