// The choices of the window `Homing2`: what triggers the home position, and the frame that goes
// with it.
#pragma once

#include <QRadioButton>
#include <QStackedWidget>
#include <QWidget>
#include <array>
#include <functional>

#include "tools/homing.h"
#include "tools/homing_controls_view.h"

class QGridLayout;

namespace servo::tools {

class HomingChoiceWidget final : public QWidget {
    Q_OBJECT

  public:
    // `acted` is told behind each click.
    HomingChoiceWidget(Homing2& form, std::function<void()> acted, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

  private:
    void make_triggers(QGroupBox* frame);
    QGroupBox* make_index_frame();
    QGroupBox* make_limit_frame();
    QGroupBox* make_home_frame();
    QGroupBox* make_special_frame();
    QGroupBox* make_stop_frame(QWidget* parent);
    QGroupBox* make_disabled_frame();
    void add_tips();

    // One of the pairs of options, side by side.
    void put_pair(QGridLayout* grid, int row, HomingChoice first, std::string_view first_text,
                  HomingChoice second, std::string_view second_text);
    QRadioButton* option(QWidget* parent, HomingChoice choice, std::string_view pair);
    QCheckBox* check(QWidget* parent, HomingChoice choice, std::string_view pair);

    Homing2& form_;
    std::function<void()> acted_;
    form::Tips tips_;
    // Option1(0) index signal, (1) limit switch, (2) home switch, (3) special, (4) disabled
    std::array<QRadioButton*, kHomingTriggers> Option1_{};
    QStackedWidget* frames_ = nullptr;  // Frame11 to Frame15
    QGroupBox* Frame2_ = nullptr;       // search direction
    QLabel* direction_ = nullptr;       // its caption, as wide as the boxes below
    QGroupBox* Frame10_ = nullptr;      // mechanical stop
    // Check1 to Check7 and Option2 to Option21, at the places of HomingChoice.
    std::array<QAbstractButton*, kHomingChoices> choices_{};
};

}  // namespace servo::tools
