// What the windows' panels are made of: named controls whose texts follow the language.
//
// A caption in both languages, "Chinese/English", stands in the property "Tag", where the walk
// through a window's texts finds it; a text that is no pair (a value, a unit) has the tag "-".
// Until that walk has come by, the English half is shown. Tool tips and spoken names are in
// ControlTexts.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "params/qt_text_view.h"

namespace servo::params::controls {

using params::to_qt;

inline constexpr const char* kTag = "Tag";
inline constexpr const char* kNoPair = "-";

// Tool tips and spoken names, by language.
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

std::string numbered(const char* name, int index);  // "Label15(2)"

template <typename Control>
Control* named(Control* control, std::string_view name) {
    control->setObjectName(to_qt(name));
    return control;
}

void set_tag(QWidget* control, base::Text text);  // "-" for an empty text

// A caption in both languages.
QLabel* make_caption(QWidget* parent, std::string_view name, base::Text text);
// The caption above a group of controls.
QLabel* make_heading(QWidget* parent, std::string_view name, base::Text text);
QCheckBox* make_check(QWidget* parent, std::string_view name, base::Text text);
QPushButton* make_command(QWidget* parent, std::string_view name, base::Text text);

void make_bold(QWidget* control);
void make_quiet(QWidget* control);  // second in rank

// Only what differs is set: setting the same again would lay out the window, or move the caret of
// somebody who is typing.
void show_text(QLabel* label, std::string_view text);
void show_line(QLineEdit* box, std::string_view text);
// A number that is longer than its box tells more by its first digits than by its last.
void show_number(QLineEdit* box, std::string_view text);
void show_begin(QLineEdit* box);  // unless somebody is in it
// Without telling that somebody has clicked.
void show_check(QAbstractButton* box, bool on);

}  // namespace servo::params::controls
