// What the plot shows, made ready once for each change: curves in display units with their scales,
// references, texts. Painting only paints it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/language.h"
#include "link/drive_values.h"
#include "scope/plot_geometry.h"
#include "scope/recording.h"
#include "scope/scope_data.h"

namespace servo::scope {

struct SceneCurve {
    int channel = 0;             // 0 to 3
    bool picked = false;         // the one that cursors and steps work on: drawn over the others
    std::vector<double> values;  // in the picked unit; raw numbers without one
    SampleTimes times;           // where they stand in the recording
    CurveTransform transform;
    std::string object;
    std::string unit;
    double marker = 0.0;  // height of the zero line from the top, in picture units; may lie outside
};

struct SceneReference {
    std::string name;
    int channel = 0;
    std::vector<double> values;
    SampleTimes times;
    CurveTransform transform;  // that of the channel
};

struct PlotScene {
    bool valid = false;  // there is a recording
    bool waits = false;  // there is none, but it is under way
    base::Language language = base::Language::kEnglish;
    ZoomWindow window;
    double period_us = 0.0;
    std::vector<SceneCurve> curves;          // back to front
    std::vector<SceneReference> references;  // behind all curves
    int labelled = -1;                       // the channel of y_labels
    std::array<std::string, kDivisions> y_labels;
    std::array<std::string, 5> times;  // Label15
    std::string zoom;                  // Label44
    std::array<CursorPlace, kCursors> cursors{};
};

PlotScene plot_scene(const ScopeData& data, const link::FormulaOperands& operands,
                     const References& references, base::Language language);

// The two lines of the plot before the first recording; `waits`: it is under way.
std::array<std::string, 2> empty_texts(bool waits, base::Language language);

// What is read under the pointer, at the sample nearest to abscissa `x`.
struct HoverValue {
    int channel = 0;
    std::string text;  // number and unit
    double y = 0.0;    // picture units; may lie outside
};
struct HoverReadout {
    int sample = 0;
    double x = 0.0;  // of that sample, picture units
    std::string time;
    std::vector<HoverValue> values;  // in the order of the channels
};
// Nothing without a recording, or beside its samples.
std::optional<HoverReadout> hover_readout(const PlotScene& scene, double x);

// "250 us", "1.5 ms", "2 s".
std::string duration_text(double microseconds);

}  // namespace servo::scope
