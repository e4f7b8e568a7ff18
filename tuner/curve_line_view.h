// How a curve's line looks: its pen, and a sample of it for legends.
#pragma once

#include <QIcon>
#include <QPen>
#include <QSize>

#include "tuner/tuner_data.h"

namespace servo::tuner {

inline constexpr QSize kCurveIcon{20, 12};

// One pixel of the device wide: such a pen is drawn many times faster than a wider one.
QPen curve_pen(Curve curve);

// As wide as its curve looks on the picture.
void draw_sample(QPainter& painter, const QRectF& place, Curve curve);

QIcon curve_icon(Curve curve);

}  // namespace servo::tuner
