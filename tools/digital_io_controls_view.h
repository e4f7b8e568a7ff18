// What the panels of the window `DigitalIO` are made of, beside what all forms have.
#pragma once

#include <QFrame>
#include <QIcon>

#include "tools/form_controls_view.h"

namespace servo::tools {

inline constexpr int kIoGap = 6;
inline constexpr int kIoLampSize = 18;
inline constexpr int kIoRowHeight = 23;  // at the usual size of the font
// The height of a row for the font of a control: larger fonts need more.
int io_row_height(const QWidget& control);

QIcon io_icon(const char* name);
void io_paint(QPainter& painter, const QString& picture, const QRectF& place, qreal opacity);

// Muted, as what is looked at second.
void io_quiet(QWidget* control, bool quiet);

// A box whose state is somebody else's: a click is told, and changes nothing by itself. States
// differ in shape, not in colour alone.
class LampBox final : public QCheckBox {
    Q_OBJECT

  public:
    enum class Look : std::uint8_t {
        kTick,   // a square, ticked or clear
        kForce,  // the same; ticked it is a warning triangle
        kLamp,   // a round lamp; nobody clicks it
    };

    LampBox(Look look, QWidget* parent);

    // `known` false: the drive has not said it yet. `fresh` false: it has said so some time ago,
    // and the box is grey and can't be clicked.
    void show_state(bool on, bool known, bool fresh);
    QString picture() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }
    void nextCheckState() override {}

  private:
    Look look_;
    bool known_ = false;
    bool fresh_ = false;
};

// A line in a colour of its own across the window; hidden while it has nothing to say.
class IoNotice final : public QFrame {
    Q_OBJECT

  public:
    IoNotice(const QString& label_name, QWidget* parent);

    void add(QPushButton* button);
    void show_text(const QString& text, const QString& tip);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QLabel* label_;
};

}  // namespace servo::tools
