// One of the six filters: in use, its type, four parameters under the labels of the type, and the
// tick of its curve. A slot that is not in use is quiet, but takes every entry all the same.
#pragma once

#include <QWidget>
#include <array>

#include "tuner/tuner_controls_view.h"

namespace servo::tuner {

class FilterSlotWidget final : public QWidget {
    Q_OBJECT

  public:
    FilterSlotWidget(PanelContext context, int slot, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    std::function<void()> entered;  // Enter in a box

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void make_choices();
    void make_boxes();
    void lay_out();
    void show_labels(int type);

    PanelContext context_;
    ControlTexts texts_;
    int slot_;                    // from 0
    bool used_ = false;           // as shown
    int type_ = -1;               // as shown
    QCheckBox* use_ = nullptr;    // Check17, Check18, Check2, Check19, Check20, Check21
    PickList* kind_ = nullptr;    // Combo3, Combo4, Combo1, Combo5, Combo6, Combo7
    QCheckBox* curve_ = nullptr;  // Check9 to Check14
    std::array<QLineEdit*, kParameters>
        boxes_{};                                // Text13 on, Text17, Text5, Text21, Text25, Text29
    std::array<QLabel*, kParameters> labels_{};  // ParameterLabel(0) to (23), slot by slot
};

}  // namespace servo::tuner
