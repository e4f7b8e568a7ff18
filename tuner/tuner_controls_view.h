// What the panels of the window `ADVtunner` are made of, beside what all windows have.
#pragma once

#include <QComboBox>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "params/named_controls_view.h"
#include "tuner/advanced_tuner.h"

namespace servo::tuner {

using params::controls::ControlTexts;
using params::controls::make_caption;
using params::controls::make_check;
using params::controls::make_command;
using params::controls::make_heading;
using params::controls::make_quiet;
using params::controls::named;
using params::controls::numbered;
using params::controls::show_check;
using params::controls::show_number;
using params::controls::show_text;
using params::controls::to_qt;

inline constexpr int kGap = 8;  // the grid that everything stands on

// What every panel works with. A panel tells `acted` behind each thing that the operator did, so
// that its outcome is seen at once and not at the next refresh.
struct PanelContext {
    AdvancedTuner& tuner;
    std::function<void()> acted;
};

QLabel* make_value(QWidget* parent, std::string_view name);  // for a text that is no pair
QLineEdit* make_number_box(QWidget* parent, std::string_view name, int characters);

// A key that clicks the button from anywhere in the window. (A button's own shortcut is lost when
// its text changes.)
void add_key(QPushButton* button, const QKeySequence& key);

void make_small(QWidget* control);
void make_low(QWidget* control);  // a box of a dense row
// A button in the accent's colour: what comes next.
void show_accent(QPushButton* button, bool on);
// As wide as the widest of the texts, so that a change of the text moves nothing.
void fit_texts(QLabel* label, std::initializer_list<std::string_view> texts);

// Only what differs is set.
void show_position(QComboBox* list, int position);
void show_enabled(QWidget* control, bool on);

// A drop-down that only a deliberate act changes: the wheel passes by.
class PickList final : public QComboBox {
    Q_OBJECT

  public:
    PickList(std::string_view name, QWidget* parent);
    std::function<void(int)> picked;  // by the operator, with the position

    // The items in another language; the position stays.
    void show_items(const std::vector<std::string_view>& items);
    // The widest item is shown whole; some styles are a pixel or two short of that.
    QSize sizeHint() const override { return QComboBox::sizeHint() + QSize(2, 0); }
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace servo::tuner
