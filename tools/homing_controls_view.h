// What the panels of the window `Homing2` are made of.
//
// A caption in both languages, "Chinese/English", stands in the property "Tag", where the walk
// through a window's texts finds it; a text that is no pair (a value, a unit) has the tag "-". Tool
// tips, which are the spoken names as well, are kept in HomingTips.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QString>
#include <functional>
#include <string_view>
#include <vector>

#include "base/language.h"

namespace servo::tools::homing {

inline constexpr int kGap = 8;  // the grid that everything stands on
inline constexpr int kInnerGap = 5;

QString qt(std::string_view text);

// Tool tips by language, each the control's spoken name too.
class HomingTips {
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
QLabel* make_caption(QWidget* parent, const char* name, std::string_view pair);
QLabel* make_heading(QWidget* parent, const char* name, std::string_view pair);
QLabel* make_value(QWidget* parent, const char* name, std::string_view text = {});
QRadioButton* make_option(QWidget* parent, const QString& name, std::string_view pair);
QCheckBox* make_check(QWidget* parent, const char* name, std::string_view pair);
QPushButton* make_command(QWidget* parent, const char* name, std::string_view pair);
QGroupBox* make_frame(QWidget* parent, const char* name, std::string_view pair);

void make_quiet(QLabel* label);
void show_text(QLabel* label, std::string_view text);
void show_text(QLineEdit* box, std::string_view text);

// A frame without a line or a title: it only holds what belongs together.
class HomingFrame final : public QGroupBox {
    Q_OBJECT

  public:
    HomingFrame(const char* name, QWidget* parent);

  protected:
    void paintEvent(QPaintEvent*) override {}
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
};

// A box that shows each character to the form before it takes it (Enter as 13, Escape as 27).
// Whoever comes to it with the keyboard or the mouse finds its text selected.
class HomingBox final : public QLineEdit {
    Q_OBJECT

  public:
    explicit HomingBox(const char* name, QWidget* parent);

    std::function<bool(char32_t key)> pressed;  // true: the key is swallowed
    std::function<void(bool here)> focus_changed;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool came_by_mouse_ = false;
};

// A list that a turn of the wheel does not change: each pick of it is written to the drive.
class HomingListBox final : public QComboBox {
    Q_OBJECT

  public:
    explicit HomingListBox(const char* name, QWidget* parent);

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

// A column of controls that keeps its width and gives way in height.
class HomingColumn final : public QScrollArea {
    Q_OBJECT

  public:
    HomingColumn(QWidget* column, QWidget* parent);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace servo::tools::homing
