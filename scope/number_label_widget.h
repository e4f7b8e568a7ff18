// A label for a number that may have more digits than there is room. The text is the whole number;
// what is painted is rounded until it fits, and the tool tip has all of it. So a long number
// neither is cut nor moves the layout.
#pragma once

#include <QLabel>

namespace servo::scope {

class NumberLabel final : public QLabel {
    Q_OBJECT

  public:
    // `widest` is a text of the width that the label has at least.
    NumberLabel(const char* widest, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // The text with as many decimals as fit; dots at its end when it is no number or fits with no
    // decimal.
    static QString fitting(const QString& text, const QFontMetrics& metrics, int width);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QString widest_;
};

}  // namespace servo::scope
