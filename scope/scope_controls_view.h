// What the oscilloscope's panels are made of: named controls whose texts follow the language.
//
// Captions of labels, push buttons and boxes are in their property "Tag" ("Chinese/English"), where
// the walk through a window's texts finds them. Tool tips and spoken names are in ControlTexts.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QToolButton>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "scope/oscilloscope.h"

namespace servo::scope {

inline constexpr int kGap = 8;  // the grid that everything stands on
inline constexpr int kIconSize = 20;

// Name of the dynamic property that says which picture an image control shows.
inline constexpr const char* kPictureProperty = "picture";

// What every panel works with. A panel tells `acted` behind each thing that the operator did, so
// that its outcome is seen at once and not at the next refresh.
struct PanelContext {
    Oscilloscope& scope;
    std::function<void()> acted;
};

// Tool tips and spoken names of a panel's controls.
class ControlTexts {
  public:
    // The key that does the same stands behind the tip. Without a tip the name is the tip.
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

QString to_qt(std::string_view text);
std::string numbered(const char* name, int index);  // "Label15(2)"

template <typename Control>
Control* named(Control* control, std::string_view name) {
    control->setObjectName(to_qt(name));
    return control;
}

// A caption in both languages.
QLabel* make_caption(QWidget* parent, std::string_view name, base::Text text);
// The caption above a group of controls.
QLabel* make_heading(QWidget* parent, std::string_view name, base::Text text);
QCheckBox* make_check(QWidget* parent, std::string_view name, base::Text text);
QPushButton* make_command(QWidget* parent, std::string_view name, base::Text text);
// A flat button that shows a picture only.
QToolButton* make_tool(QWidget* parent, std::string_view name, const char* icon);
// The same, lower: for rows of boxes.
QToolButton* make_row_tool(QWidget* parent, std::string_view name, const char* icon);
QLineEdit* make_number_box(QWidget* parent, std::string_view name);

void set_tag(QWidget* control, base::Text text);
void make_quiet(QWidget* control);  // second in rank
void set_picture(QWidget* control, const char* picture);

// Only what differs is set: setting the same again would lay out the window, or move the caret of
// somebody who is typing.
void show_text(QLabel* label, std::string_view text);
void show_text(QLineEdit* box, std::string_view text);
void show_check(QAbstractButton* box, bool on);

// The number with six significant digits, without an exponent where that reads better.
std::string short_number(double value);

}  // namespace servo::scope
