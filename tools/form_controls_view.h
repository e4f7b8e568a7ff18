// What small forms are made of: named controls whose texts follow the language.
//
// A caption in both languages, "Chinese/English", stands in the property "Tag", where the walk
// through a window's texts finds it; a text that is no pair (a value, a unit) has the tag "-". Tool
// tips, which are the spoken names as well, are kept in Tips.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QString>
#include <string_view>
#include <vector>

#include "base/language.h"

namespace servo::tools::form {

inline constexpr int kGap = 8;  // the grid that everything stands on

QString qt(std::string_view text);
// "Check1(3)"
QString array_name(const char* control, int index);
// The part of a pair in the language; all of a text that is none.
QString half_of(std::string_view pair, base::Language language);

// Tool tips by language, each the control's spoken name too.
class Tips {
  public:
    void add(QWidget* control, base::Text tip) { entries_.push_back({control, tip}); }
    void apply(base::Language language) const;

  private:
    struct Entry {
        QWidget* control;
        base::Text tip;
    };
    std::vector<Entry> entries_;
};

// `pair` is "Chinese/English".
QLabel* make_label(QWidget* parent, const QString& name, std::string_view pair);
// Wraps, and can be copied from.
QLabel* make_text(QWidget* parent, const QString& name, std::string_view pair = "-");
QLabel* make_value(QWidget* parent, const QString& name, std::string_view text = {});
QRadioButton* make_option(QWidget* parent, const QString& name, std::string_view pair);
QCheckBox* make_check(QWidget* parent, const QString& name, std::string_view pair);
QPushButton* make_command(QWidget* parent, const QString& name, std::string_view pair);
QGroupBox* make_frame(QWidget* parent, const QString& name, std::string_view pair);

enum class Weight : std::uint8_t { kPlain, kQuiet, kWarning };
void set_weight(QLabel* label, Weight weight);
void set_bold(QWidget* control, bool bold);
// Setting the text that is there already would lay the form out anew.
void show_text(QLabel* label, std::string_view text);

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
