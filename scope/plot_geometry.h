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

    // Always a number: a scale of 0 sends values to kFarAway, and what cannot be said at all stands
    // at mid height.
    double y(double value, const PlotArea& area) const;
    // At the left edge for a window of one sample.
    double x(int index, const PlotArea& area) const;
    // The same for a place between samples; `index` counts from the recording's first.
    double x(double index, const PlotArea& area) const;
};

// No height is further from the area's middle, in pixels.
inline constexpr double kFarAway = 1e7;

// Height of a curve's zero line, in pixels of the area.
double marker_height(const CurveTransform& transform, const PlotArea& area);

// The polyline of a curve: every point where the pixels can show it, else four points for each
// column of pixels (first, lowest, highest, last), which paint the same pixels. `values` are those
// of the window, first to last. Heights far outside of the area are drawn in to where the surface
// clips them anyway.
std::vector<PlotPoint> curve_points(std::span<const double> values, const CurveTransform& transform,
                                    const PlotArea& area);

// The same for values that have their own time: value k stands at sample first_at + k * step of the
// window's recording. `columns_per_pixel` is for surfaces that show parts of pixels.
struct SampleTimes {
    double first_at = 0.0;
    double step = 1.0;
};
std::vector<PlotPoint> curve_points(std::span<const double> values, SampleTimes times,
                                    const CurveTransform& transform, const PlotArea& area,
                                    int columns_per_pixel);

// The heights of values for the raster, in pixels of the area; `out` is made to fit.
void curve_heights(std::span<const double> values, const CurveTransform& transform,
                   const PlotArea& area, std::vector<float>& out);

// The sample of the window nearest to an abscissa in picture units; -1 for a window without
// samples. Behind the ends it is the one at the end.
int nearest_sample(const ZoomWindow& window, double x);

// Abscissa of a sample in picture units.
double sample_abscissa(const ZoomWindow& window, int index);

}  // namespace servo::scope
