// The values of the window `Homing2`: the method and its write, speeds, acceleration, current and
// options.
#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "tools/homing.h"
#include "tools/homing_controls_view.h"

class QGridLayout;

namespace servo::tools {

class HomingValuesWidget final : public QWidget {
    Q_OBJECT

  public:
    // `acted` is told behind each click and key.
    HomingValuesWidget(Homing2& form, std::function<void()> acted, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

  private:
    QWidget* make_method();
    QWidget* make_values();
    void make_boxes();
    void make_lists();
    void connect_method();
    void add_tips();
    void put_box(QGridLayout* grid, int row, int column, const char* label, std::string_view pair,
                 QWidget* box, const char* unit_name, std::string_view unit);
    void put_wide(QGridLayout* grid, int row, const char* label, std::string_view pair,
                  QWidget* box);

    Homing2& form_;
    std::function<void()> acted_;
    form::Tips tips_;
    homing::HomingBox* Text1_ = nullptr;  // number of the method
    QPushButton* Command1_ = nullptr;     // writes it
    QLabel* Label3_ = nullptr;            // the method in the drive
    QPushButton* take_ = nullptr;         // makes the choices stand for it
    std::array<homing::HomingBox*, kHomingEntries.size()> entries_{};  // Text2 to Text6
    QCheckBox* Check4_ = nullptr;                                      // home at power-up
    std::array<QComboBox*, kHomingListSizes.size()> lists_{};          // Combo1, Combo2
};

}  // namespace servo::tools
