// One fault on screen: lamp, box, caption. The pointer over it, the focus in it or a click on it
// asks for its explanation.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QWidget>

#include "dictionary/store.h"
#include "tools/errors.h"

namespace servo::tools {

inline constexpr int kErrorsRowLeft = 4;  // margin of a row, in pixels

// A lamp that differs in shape, not in colour alone: a ring, or a disc with an exclamation mark.
// Its property "picture" is what it shows: "lamp_on" or "lamp_off".
class FaultLamp final : public QWidget {
    Q_OBJECT

  public:
    FaultLamp(QWidget* parent, int fault);

    // `fresh` false: the drive has not confirmed it lately.
    void show_state(bool on, bool fresh);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    bool on_ = false;
    bool fresh_ = false;
};

class ErrorsRowWidget final : public QWidget {
    Q_OBJECT

  public:
    ErrorsRowWidget(Errors& form, int fault, QWidget* parent);

    void refresh();
    // Marks the row whose fault is explained. Lamp and box stay as they are: a click that is under
    // way is for the box that the user has seen.
    void mark(bool explained);
    void apply_language(base::Language language, dictionary::Variant variant);
    // Of the lamps, so that their head fits above them.
    void set_state_width(int width) { Image1_->setFixedWidth(width); }

    QCheckBox* focus_box() const { return Check1_; }

  Q_SIGNALS:
    void pointed(int fault, bool here);
    void selected(int fault);
    void acted();  // the user has changed the mask

  protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void take_click();

    Errors& form_;
    int fault_;
    bool explained_ = false;
    FaultLamp* Image1_ = nullptr;
    QCheckBox* Check1_ = nullptr;
    QLabel* caption_ = nullptr;  // LabelG
};

}  // namespace servo::tools
