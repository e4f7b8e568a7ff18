// What starts a recording: source, level, edge.
#pragma once

#include <QWidget>

#include "scope/scope_controls_view.h"

namespace servo::scope {

class FilterBox;
class PickListWidget;

class TriggerPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    TriggerPanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    std::function<void()> left;
    std::function<void(int)> object_asked;

  private:
    void make_controls();
    void connect_controls();
    void lay_out();

    PanelContext context_;
    ControlTexts texts_;
    PickListWidget* Combo9_ = nullptr;      // source
    QToolButton* ObjectButton4_ = nullptr;  // another object
    FilterBox* Text4_ = nullptr;            // level
    PickListWidget* Combo11_ = nullptr;     // its unit
    QToolButton* Image5_ = nullptr;         // edge
};

}  // namespace servo::scope
