// What the tools' windows are made of: named controls whose texts follow the language, with their
// captions as pairs, "Chinese/English". See params/named_controls_view.h for where a pair stands.
//
// Tool tips, which are the spoken names as well, are kept in Tips, or as pairs with their controls.
#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QScrollArea>
#include <string_view>

#include "base/language.h"
#include "params/named_controls_view.h"

namespace servo::tools::form {

using params::controls::show_text;
// Tool tips by language, each the control's spoken name too.
using Tips = params::controls::ControlTexts;

inline constexpr int kGap = 8;  // the grid that everything stands on

inline QString qt(std::string_view text) {
    return params::to_qt(text);
}
// "Check1(3)"
QString array_name(const char* control, int index);
// The part of a pair in the language; all of a text that is none.
QString half_of(std::string_view pair, base::Language language);
QString half_of(const QString& pair, base::Language language);
// Tool tips take markup when they look like it; names come from files.
QString plain_tip(std::string_view text);

// `pair` is "Chinese/English".
QLabel* make_label(QWidget* parent, const QString& name, std::string_view pair);
// Wraps, and can be copied from.
QLabel* make_text(QWidget* parent, const QString& name, std::string_view pair = "-");
QLabel* make_value(QWidget* parent, const QString& name, std::string_view text = {});
QRadioButton* make_option(QWidget* parent, const QString& name, std::string_view pair);
QCheckBox* make_check(QWidget* parent, const QString& name, std::string_view pair);
QPushButton* make_command(QWidget* parent, const QString& name, std::string_view pair);
QGroupBox* make_frame(QWidget* parent, const QString& name, std::string_view pair);

template <typename Control>
Control* named(Control* control, const QString& name) {
    control->setObjectName(name);
    return control;
}
// For controls that a window makes itself, and gives their texts by apply_pairs().
void set_pair(QWidget* control, std::string_view pair);
void set_tip_pair(QWidget* control, std::string_view pair);
// Every pair below `root` in the language.
void apply_pairs(QWidget& root, base::Language language);

enum class Weight : std::uint8_t { kPlain, kQuiet, kWarning };
void set_weight(QLabel* label, Weight weight);
void set_bold(QWidget* control, bool bold);

// A list that a turn of the wheel does not change.
class ListBox final : public QComboBox {
    Q_OBJECT

  public:
    ListBox(QWidget* parent, const QString& name);

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

// Controls that keep their width and can be scrolled where the window is too low for them.
class ScrolledForm final : public QScrollArea {
    Q_OBJECT

  public:
    ScrolledForm(QWidget* controls, QWidget* parent);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

}  // namespace servo::tools::form
