// What the panels of the window `ADVtunner` are made of: named controls whose texts follow the
// language.
//
// A caption in both languages stands in the property "Tag", where the walk through a window's texts
// finds it; a text that is no pair carries the tag "-". Tool tips and spoken names are in
// ControlTexts.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "tuner/advanced_tuner.h"

namespace servo::tuner {

inline constexpr int kGap = 8;  // the grid that everything stands on

// What every panel works with. A panel tells `acted` behind each thing that the operator did, so
// that its outcome is seen at once and not at the next refresh.
struct PanelContext {
    AdvancedTuner& tuner;
    std::function<void()> acted;
};

QString to_qt(std::string_view text);
std::string numbered(const char* name, int index);  // "ParameterLabel(2)"

// Tool tips and spoken names, by language. Without a tip the name is the tip; the key that does the
// same stands behind it.
class ControlTexts {
  public:
    void add(QWidget* control, base::Text name, base::Text tip = {}, const char* key = nullptr);
    void apply(base::Language language) const;

  private:
    struct Entry {
        QWidget* control;
        base::Text name;
        base::Text tip;
        const char* key;
    };
    std::vector<Entry> entries_;
};

template <typename Control>
Control* named(Control* control, std::string_view name) {
    control->setObjectName(to_qt(name));
    return control;
}

QLabel* make_caption(QWidget* parent, std::string_view name, base::Text text);
QLabel* make_heading(QWidget* parent, std::string_view name, base::Text text);
QLabel* make_value(QWidget* parent, std::string_view name);  // for a text that is no pair
QCheckBox* make_check(QWidget* parent, std::string_view name, base::Text text);
QPushButton* make_command(QWidget* parent, std::string_view name, base::Text text);
QLineEdit* make_number_box(QWidget* parent, std::string_view name, int characters);

// A key that clicks the button from anywhere in the window. (A button's own shortcut is lost when
// its text changes.)
void add_key(QPushButton* button, const QKeySequence& key);

void make_quiet(QWidget* control);  // second in rank
void make_small(QWidget* control);
void make_low(QWidget* control);  // a box of a dense row
// A button in the accent's colour: what comes next.
void show_accent(QPushButton* button, bool on);
// As wide as the widest of the texts, so that a change of the text moves nothing.
void fit_texts(QLabel* label, std::initializer_list<std::string_view> texts);

// Only what differs is set: setting the same again would lay out the window, or move the caret of
// somebody who is typing.
void show_text(QLabel* label, std::string_view text);
void show_text(QLineEdit* box, std::string_view text);
void show_check(QAbstractButton* box, bool on);
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
