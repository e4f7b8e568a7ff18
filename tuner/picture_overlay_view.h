// What follows the pointer on the picture: a cross, and a box with the curves' values at its
// frequency.
#pragma once

#include <QFont>
#include <QPainter>
#include <vector>

#include "tuner/curve_values.h"
#include "tuner/picture_paint_view.h"

namespace servo::tuner {

struct PictureOverlay {
    bool shown = false;
    ScenePoint at;
    std::vector<CurveReading> readings;
};

void paint_overlay(QPainter& painter, const PictureScene& scene, const PictureFrame& frame,
                   const PictureOverlay& overlay, const QFont& font);

// "-12.3 dB  -143.0°"; a value that does not exist is a dash.
std::string reading_text(const CurveReading& reading);

}  // namespace servo::tuner
