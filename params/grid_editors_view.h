// The two editors that lie over a cell of a grid.
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <functional>

namespace servo::params {

// The character of a key press as an editor's filter takes it, control characters included; 0 for a
// key that is none (arrows, Home, Delete).
char32_t key_character(const QKeyEvent& event);

// `textbox1`. Nothing is typed into it that the filter does not let through.
class TextBox final : public QLineEdit {
    Q_OBJECT

  public:
    explicit TextBox(QWidget* parent);

    // Gives back the character that goes into the box, or 0.
    std::function<char32_t(char32_t)> filter;

  Q_SIGNALS:
    void focus_lost();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

// `Combobox1`. A choice counts only when it is picked from the list that is open: turning the wheel
// or pressing an arrow key over a closed one would write every value on the way to the drive.
class ListBox final : public QComboBox {
    Q_OBJECT

  public:
    explicit ListBox(QWidget* parent);

    std::function<char32_t(char32_t)> filter;

    void showPopup() override;

  Q_SIGNALS:
    void focus_lost();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool filter_key(QKeyEvent& event);
};

}  // namespace servo::params
