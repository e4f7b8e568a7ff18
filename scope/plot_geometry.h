// Where a sample, a marker, a cursor or a grid line stands in picture units, and which of a curve's
// points matter for a surface of so many pixels.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "scope/scope_data.h"

namespace servo::scope {

struct PlotPoint {
    double x = 0.0;
    double y = 0.0;
    bool operator==(const PlotPoint&) const = default;
};

// A rectangle of the surface on screen, in device pixels.
struct PlotArea {
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
};

// From a display value to pixels: one division is a tenth of the area's height.
struct CurveTransform {
    double offset = 0.0;  // display value at mid height
    double scale = 1.0;   // display units per division
    ZoomWindow window;

    double y(double value, const PlotArea& area) const;
    double x(int index, const PlotArea& area) const;
};

// Height of a curve's zero line, in pixels of the area.
double marker_height(const CurveTransform& transform, const PlotArea& area);

// The polyline of a curve: every point where the pixels can show it, else four points for each
// column of pixels (first, lowest, highest, last), which paint the same pixels. `values` are those
// of the window, first to last. Heights far outside of the area are drawn in to where the surface
// clips them anyway.
std::vector<PlotPoint> curve_points(std::span<const double> values, const CurveTransform& transform,
                                    const PlotArea& area);

}  // namespace servo::scope
