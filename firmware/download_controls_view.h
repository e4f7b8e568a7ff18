// What the panels of the window `Download` are made of, beside what all windows have: boxes and
// labels that behave as this form's do.
#pragma once

#include <QBoxLayout>
#include <QFrame>
#include <functional>
#include <string_view>

#include "firmware/download.h"
#include "params/named_controls_view.h"

namespace servo::firmware {

using params::controls::ControlTexts;
using params::controls::make_caption;
using params::controls::make_command;
using params::controls::make_heading;
using params::controls::make_quiet;
using params::controls::named;
using params::controls::show_line;
using params::controls::show_text;
using params::controls::to_qt;

inline constexpr int kGap = 8;  // the grid that everything stands on
inline constexpr int kHeadingHeight = 24;
inline constexpr int kGroupGap = 20;  // between two groups

// What every panel works with. A panel tells `acted` behind each thing that the operator did, so
// that its outcome is seen at once and not at the next refresh.
struct PanelContext {
    Download& form;
    std::function<void()> acted;
};

// One of the form's controls with the text that the form gives it; a label without one shows
// values.
QLabel* make_label(QWidget* parent, const char* name);
QPushButton* make_command(QWidget* parent, const char* name);

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
