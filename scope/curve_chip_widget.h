// The sign of a channel wherever it is named: its number on its colour, and the shape that stands
// along its curve.
#pragma once

#include <QIcon>
#include <QLabel>

namespace servo::scope {

// The shape alone, for lists.
QIcon shape_icon(int channel);  // 0 to 3

class CurveChip final : public QLabel {
    Q_OBJECT

  public:
    CurveChip(int channel, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int channel_;
};

}  // namespace servo::scope
