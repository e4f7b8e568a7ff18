#include "tuner/picture_scene.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <span>

#include "base/number.h"
#include "tuner/curve_values.h"

namespace servo::tuner {

namespace {

constexpr int kHalfTurn = 180;
constexpr int kPhaseStep = 90;     // degrees between lines
constexpr int kDivisions = 2;      // of gainRange: "20dB" and "40dB" name one of them
constexpr int kMostDivisions = 8;  // over the whole height, and some more that the loop looks at
constexpr double kHalfPower = 0.70794578438413791;  // -3 dB

double ratio_of(double decibels_told) {
    return std::pow(10.0, decibels_told / 20.0);
}

bool drawable(double gain) {
    return gain > 0.0 && std::isfinite(gain);
}

// With few decimals where the number is large.
std::string figure(double value) {
    return std::fabs(value) < 99.95 ? base::format_up_to(value, 1) : base::format_whole(value);
}

std::string hertz(double frequency) {
    return figure(frequency) + " Hz";
}

std::string signed_decibels(double value) {
    return (value > 0.0 ? "+" : "") + figure(value) + " dB";
}

// --- Areas and grid

// The gain area ends where the phase area begins, when both are shown.
void place_areas(PictureScene& scene, const Choices& choices) {
    const Surface& surface = scene.surface;
    const int phase_top = phase_y(surface, kHalfTurn);
    scene.phase = {choices.Check16, phase_top, phase_y(surface, -kHalfTurn)};
    const bool below = choices.Check16 && phase_top > surface.height / 4;
    scene.gain = {choices.Check15, 0, below ? phase_top : surface.height};
}

GridRank rank_of(int frequency) {
    int leading = frequency;
    while (leading >= 10)
        leading /= 10;
    if (leading == 1) return GridRank::kDecade;
    return leading == 2 || leading == 5 ? GridRank::kMiddle : GridRank::kOther;
}

void add_grid(PictureScene& scene) {
    const Surface& surface = scene.surface;
    scene.label_y = surface.height - kLabelsAboveBottom;
    for (const int frequency : grid_frequencies())
        scene.frequencies.push_back(
            {frequency_x(surface, frequency), std::to_string(frequency), rank_of(frequency)});
    const int division = surface.gain_range / kDivisions;
    if (scene.gain.shown)
        for (int step = kMostDivisions; step >= -kMostDivisions; --step) {
            const int y = gain_y(surface, ratio_of(step * division));
            if (y < scene.gain.top || y > scene.gain.bottom) continue;
            scene.gains.push_back({y, std::to_string(step * division) + (step == 0 ? " dB" : ""),
                                   step == 0 ? GridRank::kDecade : GridRank::kMiddle});
        }
    if (!scene.phase.shown) return;
    for (int degrees = kHalfTurn; degrees >= -kHalfTurn; degrees -= kPhaseStep)
        scene.phases.push_back(
            {phase_y(surface, degrees), std::to_string(degrees) + "\u00b0",
             std::abs(degrees) == kHalfTurn ? GridRank::kDecade : GridRank::kMiddle});
}

// --- Curves

// Adds points to polylines and leaves out those that nobody could tell from the line without them:
// it is the number of points that costs time when they are drawn.
class LineBuilder {
  public:
    explicit LineBuilder(std::vector<ScenePolyline>& lines) : lines_(lines) {}

    void add(ScenePoint point) {
        if (!drawing_) {
            lines_.emplace_back();
            drawing_ = true;
        }
        ScenePolyline& line = lines_.back();
        const std::size_t size = line.size();
        if (size >= 2) {
            const ScenePoint& before = line[size - 2];
            ScenePoint& last = line[size - 1];
            const bool level = before.y == last.y && last.y == point.y;
            if (level || near(before, last, point)) {
                last = point;
                return;
            }
        }
        line.push_back(point);
    }
    void end() { drawing_ = false; }

  private:
    static constexpr int kNear = kUnitsPerPixel / 2;

    // The three are within half a pixel of each other.
    static bool near(const ScenePoint& before, const ScenePoint& last, const ScenePoint& point) {
        return point.x - before.x <= kNear && std::abs(last.y - before.y) <= kNear &&
               std::abs(point.y - before.y) <= kNear;
    }

    std::vector<ScenePolyline>& lines_;
    bool drawing_ = false;
};

void add_gains(PictureScene& scene, Curve curve, std::span<const float> gains,
               std::span<const int> places) {
    SceneCurve drawn{curve, false, {}};
    LineBuilder builder(drawn.lines);
    for (std::size_t i = 0; i < gains.size(); ++i) {
        const double gain = gains[i];
        if (drawable(gain))
            builder.add({places[i], gain_y(scene.surface, gain)});
        else
            builder.end();
    }
    scene.curves.push_back(std::move(drawn));
}

void add_phases(PictureScene& scene, Curve curve, std::span<const float> phases,
                std::span<const int> places) {
    SceneCurve drawn{curve, true, {}};
    LineBuilder builder(drawn.lines);
    double before = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t i = 0; i < phases.size(); ++i) {
        const double phase = phases[i];
        if (!std::isfinite(phase) || folds_between(before, phase)) builder.end();
        if (std::isfinite(phase)) builder.add({places[i], phase_y(scene.surface, phase)});
        before = phase;
    }
    scene.curves.push_back(std::move(drawn));
}

std::vector<int> places_of(const Surface& surface, const CurveValues& values) {
    std::vector<int> places(values.gains.size());
    for (std::size_t i = 0; i < places.size(); ++i)
        places[i] = frequency_x(surface, std::max(values.frequency(static_cast<int>(i)), 1));
    return places;
}

// The same frequencies serve several curves.
class Places {
  public:
    std::span<const int> of(const Surface& surface, const CurveValues& values) {
        if (values.first != first_ || values.step != step_ ||
            places_.size() < values.gains.size()) {
            first_ = values.first;
            step_ = values.step;
            places_ = places_of(surface, values);
        }
        return places_;
    }

  private:
    int first_ = 0;
    int step_ = 0;
    std::vector<int> places_;
};

void add_curves(PictureScene& scene, const TunerData& data) {
    Places places;
    for (int i = 0; i < kCurves; ++i) {
        const auto curve = static_cast<Curve>(i);
        if (!data.choices.shows(curve)) continue;
        const CurveValues values = curve_values(data, curve);
        if (values.empty()) continue;
        const std::span<const int> at = places.of(scene.surface, values);
        if (scene.gain.shown) add_gains(scene, curve, values.gains, at);
        if (scene.phase.shown && !values.phases.empty())
            add_phases(scene, curve, values.phases, at);
    }
}

// --- Marks

void add_loop_marks(PictureScene& scene, const LoopFigures& loop, Curve open, Curve closed,
                    const Choices& choices, bool has_phase) {
    const Surface& surface = scene.surface;
    const Margins& margins = loop.margins;
    const int unity = gain_y(surface, 1.0);
    if (choices.shows(open) && scene.gain.shown) {
        if (margins.crossover)
            scene.marks.push_back({MarkKind::kCrossover,
                                   open,
                                   {frequency_x(surface, *margins.crossover), unity},
                                   unity,
                                   hertz(*margins.crossover)});
        if (const auto& gain = margins.gain_margin)
            scene.marks.push_back(
                {MarkKind::kGainMargin,
                 open,
                 {frequency_x(surface, gain->frequency), gain_y(surface, ratio_of(-gain->value))},
                 unity,
                 figure(gain->value) + " dB"});
    }
    if (choices.shows(open) && has_phase && scene.phase.shown)
        if (const auto& phase = margins.phase_margin)
            scene.marks.push_back({MarkKind::kPhaseMargin,
                                   open,
                                   {frequency_x(surface, phase->frequency),
                                    phase_y(surface, folded(phase->value - kHalfTurn))},
                                   phase_y(surface, phase->value < 0.0 ? kHalfTurn : -kHalfTurn),
                                   figure(phase->value) + "\u00b0"});
    if (choices.shows(closed) && scene.gain.shown && loop.bandwidth)
        scene.marks.push_back({MarkKind::kBandwidth,
                               closed,
                               {frequency_x(surface, *loop.bandwidth), gain_y(surface, kHalfPower)},
                               0,
                               "-3 dB " + hertz(*loop.bandwidth)});
}

void add_marks(PictureScene& scene, const TunerData& data, const PictureMarks& marks) {
    const Choices& choices = data.choices;
    if (choices.shows(Curve::kPlant) && scene.gain.shown)
        for (const Resonance& peak : marks.resonances) {
            if (!drawable(peak.gain) || !(peak.frequency > 0.0)) continue;
            const bool up = peak.kind == ResonanceKind::kResonance;
            scene.marks.push_back(
                {up ? MarkKind::kResonance : MarkKind::kAntiResonance,
                 Curve::kPlant,
                 {frequency_x(scene.surface, peak.frequency), gain_y(scene.surface, peak.gain)},
                 0,
                 hertz(peak.frequency) + " " + signed_decibels(peak.height)});
        }
    add_loop_marks(scene, marks.figures.velocity, Curve::kOpenVelocity, Curve::kClosedVelocity,
                   choices, true);
    // The position loop has gains only.
    add_loop_marks(scene, marks.figures.position, Curve::kOpenPosition, Curve::kClosedPosition,
                   choices, false);
}

}  // namespace

Surface surface_of(int width_pixels, int height_pixels, const Choices& choices) {
    return {width_pixels * kUnitsPerPixel, height_pixels * kUnitsPerPixel,
            gain_range(choices.Combo2)};
}

PictureMarks marks_of(const TunerData& data) {
    return {figures_of(data), find_resonances(data)};
}

PictureScene picture_scene(const TunerData& data, const Surface& surface,
                           const PictureMarks& marks) {
    PictureScene scene;
    scene.surface = surface;
    place_areas(scene, data.choices);
    add_grid(scene);
    add_curves(scene, data);
    add_marks(scene, data, marks);
    return scene;
}

}  // namespace servo::tuner
