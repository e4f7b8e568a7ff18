// The page `EASY1` on screen. It needs no drive and changes none: see easy.h.
#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include "base/language.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

class EasyApplicationWidget;
class EasyControlWidget;
class EasyGrid;

class EasyWindow final : public QWidget {
    Q_OBJECT

  public:
    // The language outlives the window.
    explicit EasyWindow(const base::Language& language, QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QWidget* make_motor(QWidget* parent);
    QWidget* make_pins(QWidget* parent);
    void lay_out();
    void apply_language();

    const base::Language& language_;
    form::Tips tips_;
    QLineEdit* Text1_ = nullptr;           // motor type
    form::ListBox* Combo1_ = nullptr;      // control method
    EasyControlWidget* Frame1_ = nullptr;  // of the control method
    EasyApplicationWidget* Frame5_ = nullptr;
    EasyGrid* MSHFlexGrid1_ = nullptr;  // inputs and outputs
    QPushButton* Command1_ = nullptr;   // no action
};

}  // namespace servo::tools
