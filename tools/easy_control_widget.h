// Frame1 of the page `EASY1`: four frames in one place, one for each way to command the drive.
#pragma once

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QStackedWidget>
#include <array>

#include "tools/easy.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

class EasyControlWidget final : public QGroupBox {
    Q_OBJECT

  public:
    explicit EasyControlWidget(QWidget* parent);

    // The position in Combo1.
    void show_method(int method);

  private:
    QGroupBox* make_frame_of(int method);
    QGroupBox* make_pulse();
    QWidget* make_formula(QWidget* parent);
    QGroupBox* make_analog();
    QGroupBox* make_words(int method, const char* name, std::string_view words);
    QLineEdit* make_box(QWidget* parent, int box);
    void show_gear_help(bool gear_help);

    QStackedWidget* place_ = nullptr;
    form::ListBox* Combo2_ = nullptr;
    form::ListBox* Combo3_ = nullptr;
    QCheckBox* Check1_ = nullptr;
    QLineEdit* Text7_ = nullptr;
    std::array<QLineEdit*, easy::kPulseBoxes> boxes_{};  // Text2 to Text6
};

}  // namespace servo::tools
