// What the panels of the window `Download` are made of: named controls whose texts follow the
// language, and boxes and labels that behave as this form's do.
//
// A caption in both languages stands in the property "Tag", where the walk through a window's texts
// finds it. A text that is no pair (a path, a value) carries the tag "-".
#pragma once

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <functional>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "firmware/download.h"

namespace servo::firmware {

inline constexpr int kGap = 8;  // the grid that everything stands on
inline constexpr int kHeadingHeight = 24;
inline constexpr int kGroupGap = 20;  // between two groups

// What every panel works with. A panel tells `acted` behind each thing that the operator did, so
// that its outcome is seen at once and not at the next refresh.
struct PanelContext {
    Download& form;
    std::function<void()> acted;
};

QString to_qt(std::string_view text);

// Tool tips and spoken names, by language. Without a tip the name is the tip.
class ControlTexts {
  public:
    void add(QWidget* control, base::Text name, base::Text tip = {});
    void apply(base::Language language) const;

  private:
    struct Entry {
        QWidget* control;
        base::Text name;
        base::Text tip;
    };
    std::vector<Entry> entries_;
};

template <typename Control>
Control* named(Control* control, const char* name) {
    control->setObjectName(QLatin1String(name));
    return control;
}

// One of the form's controls with the text that the form gives it; a label without one shows
// values.
QLabel* make_label(QWidget* parent, const char* name);
QPushButton* make_command(QWidget* parent, const char* name);
// Additions, with a text of their own.
QLabel* make_caption(QWidget* parent, const char* name, base::Text text);
QLabel* make_heading(QWidget* parent, const char* name, base::Text text);
QPushButton* make_command(QWidget* parent, const char* name, base::Text text);

void make_quiet(QLabel* label);
void show_text(QLabel* label, std::string_view text);
void show_text(QLineEdit* box, std::string_view text);
void show_caption(QWidget* label, bool pair, std::string_view tag);

// A label that gives way: what does not fit is cut in the middle, as paths are best. Its text stays
// whole, and is the tip while it does not fit.
class ElidedLabel final : public QLabel {
    Q_OBJECT

  public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

ElidedLabel* make_value(QWidget* parent, const char* name);

// A box that shows each character to somebody before it takes it; Enter is character 13.
class KeyBox final : public QLineEdit {
    Q_OBJECT

  public:
    using QLineEdit::QLineEdit;
    std::function<bool(char32_t key)> pressed;  // true: the key is swallowed

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

// A panel in a colour of its own that says something across the width of the window.
class NoticeFrame final : public QFrame {
    Q_OBJECT

  public:
    enum class Kind : std::uint8_t { kAdvice, kWarning };

    NoticeFrame(Kind kind, const char* label_name, QWidget* parent);

    QLabel* label() const { return label_; }
    void add(QWidget* control) { row_->addWidget(control, 0, Qt::AlignBottom); }
    void show_text(std::string_view text);  // hidden while there is none

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Kind kind_;
    QLabel* label_;
    QHBoxLayout* row_;
};

}  // namespace servo::firmware
