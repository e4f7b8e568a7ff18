// What stands on the picture, as data: grid, curves, marks. Places are in units of the surface,
// kUnitsPerPixel of them to a pixel, y downwards: margin and label height of the geometry are told
// in such units.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/language.h"
#include "tuner/margins.h"
#include "tuner/picture_geometry.h"
#include "tuner/resonances.h"
#include "tuner/tuner_data.h"

namespace servo::tuner {

inline constexpr int kUnitsPerPixel = 15;  // of a pixel at 100 percent: 1440 units an inch

Surface surface_of(int width_pixels, int height_pixels, const Choices& choices);

struct ScenePoint {
    int x = 0;
    int y = 0;
    bool operator==(const ScenePoint&) const = default;
};

// Points that belong together; a curve breaks where it has no value and where its phase leaps from
// one end of the scale to the other.
using ScenePolyline = std::vector<ScenePoint>;

struct SceneCurve {
    Curve curve = Curve::kPlant;
    bool phase = false;  // of the phase area
    std::vector<ScenePolyline> lines;
};

// How much a grid line matters: where there is no room for all labels, those of the first rank
// stay.
enum class GridRank : std::uint8_t { kDecade, kMiddle, kOther };

struct GridLine {
    int place = 0;  // x of a frequency, y of a gain or phase
    std::string label;
    GridRank rank = GridRank::kOther;
};

struct SceneArea {
    bool shown = false;
    int top = 0;
    int bottom = 0;
};

enum class MarkKind : std::uint8_t {
    kCrossover,    // a dot at 0 dB
    kGainMargin,   // a span from the curve to 0 dB
    kPhaseMargin,  // a span from -180 degrees to the curve, in the phase area
    kBandwidth,    // a dot at -3 dB
    kResonance,    // a tip upwards
    kAntiResonance,
};

struct SceneMark {
    MarkKind kind = MarkKind::kCrossover;
    Curve curve = Curve::kPlant;
    ScenePoint at;
    int to_y = 0;  // other end of a span
    std::string text;
};

struct PictureScene {
    Surface surface;
    SceneArea gain;
    SceneArea phase;
    int label_y = 0;  // of the frequencies' labels: their upper edge
    std::vector<GridLine> frequencies;
    std::vector<GridLine> gains;   // in the gain area
    std::vector<GridLine> phases;  // in the phase area
    std::vector<SceneCurve> curves;
    std::vector<SceneMark> marks;
};

// What is marked beside the curves; made once for a simulation, not for each repaint.
struct PictureMarks {
    SimulationFigures figures;
    std::vector<Resonance> resonances;
};
PictureMarks marks_of(const TunerData& data);

PictureScene picture_scene(const TunerData& data, const Surface& surface,
                           const PictureMarks& marks);

}  // namespace servo::tuner
