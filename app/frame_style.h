// The toolkit's Fusion style with flat frames for the windows inside of the main window: a plain
// title, small strokes for its buttons, one line around; and with a little more air in menus.
// Everything else stays as it is.
#pragma once

#include <QProxyStyle>

namespace servo::app {

class FrameStyle final : public QProxyStyle {
    Q_OBJECT

  public:
    FrameStyle();

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    // The mark of menus and bars that have more than fits is one of our pictures. The toolkit's own
    // would load every picture format there is, at the start of each run.
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
};

}  // namespace servo::app
