#include "tuner/curve_values.h"

#include <algorithm>
#include <cmath>

#include "tuner/picture_geometry.h"

namespace servo::tuner {

namespace {

constexpr std::array<base::Text, kCurves> kNames{{
    {"电机与负载", "Motor and load"},
    {"速度开环仿真", "Open velocity loop"},
    {"速度闭环仿真", "Closed velocity loop"},
    {"电流闭环", "Current loop"},
    {"位置开环仿真", "Open position loop"},
    {"位置闭环仿真", "Closed position loop"},
    {"滤波器1", "Filter 1"},
    {"滤波器2", "Filter 2"},
    {"滤波器3", "Filter 3"},
    {"滤波器4", "Filter 4"},
    {"滤波器5", "Filter 5"},
    {"滤波器6", "Filter 6"},
}};

template <std::size_t N>
std::span<const float> first_of(const std::array<float, N>& values, int count) {
    return std::span(values).first(static_cast<std::size_t>(std::clamp<int>(count, 0, N)));
}

CurveValues measured(const TunerData& data, const std::array<float, kMostPoints>& gains,
                     const std::array<float, kMostPoints>& phases) {
    const int points = data.analysed_points();
    return {first_of(gains, points), first_of(phases, points), data.settings.startFreq,
            data.settings.stepFreq};
}

CurveValues modelled(const TunerData& data, const ResponsePair<kMostPoints>& pair) {
    const int points = data.simulation.points;
    return {first_of(pair.gain, points), first_of(pair.phase, points), data.settings.startFreq,
            data.settings.stepFreq};
}

CurveValues modelled(const TunerData& data, const std::array<float, kMostPoints>& gains) {
    return {first_of(gains, data.simulation.points),
            {},
            data.settings.startFreq,
            data.settings.stepFreq};
}

CurveValues of_filter(const TunerData& data, std::size_t slot) {
    if (!data.simulation.filter_used.at(slot)) return {};
    const auto& pair = data.simulation.filters.at(slot);
    return {pair.gain, pair.phase, 1, 1};
}

}  // namespace

base::Text curve_name(Curve curve) {
    return kNames.at(static_cast<std::size_t>(curve));
}

CurveValues curve_values(const TunerData& data, Curve curve) {
    const Analysis& analysis = data.analysis;
    switch (curve) {
        case Curve::kPlant:
            return measured(data, analysis.magnitude, analysis.phase);
        case Curve::kOpenVelocity:
            return modelled(data, data.simulation.open_velocity);
        case Curve::kClosedVelocity:
            return modelled(data, data.simulation.closed_velocity);
        case Curve::kCurrent:
            return measured(data, analysis.commandMag, analysis.commandPhase);
        case Curve::kOpenPosition:
            return modelled(data, data.simulation.open_position);
        case Curve::kClosedPosition:
            return modelled(data, data.simulation.closed_position);
        case Curve::kFilter1:
        case Curve::kFilter2:
        case Curve::kFilter3:
        case Curve::kFilter4:
        case Curve::kFilter5:
        case Curve::kFilter6:
            return of_filter(
                data, static_cast<std::size_t>(curve) - static_cast<std::size_t>(Curve::kFilter1));
    }
    return {};
}

std::optional<double> gain_decibels(double gain) {
    if (!(gain > 0.0) || !std::isfinite(gain)) return std::nullopt;
    return 20.0 * std::log10(gain);
}

std::vector<CurveReading> readings_at(const TunerData& data, double frequency) {
    std::vector<CurveReading> readings;
    for (int i = 0; i < kCurves; ++i) {
        const auto curve = static_cast<Curve>(i);
        const CurveValues values = curve_values(data, curve);
        if (!data.choices.shows(curve) || values.empty() || values.step <= 0) continue;
        const double place = (frequency - values.first) / values.step;
        if (!(place > -0.5) || !(place < values.size() - 0.5)) continue;
        const auto point = static_cast<int>(std::lround(std::max(place, 0.0)));
        CurveReading reading{curve, values.frequency(point), {}, {}};
        reading.gain = gain_decibels(values.gains[static_cast<std::size_t>(point)]);
        if (!values.phases.empty()) {
            const double phase = values.phases[static_cast<std::size_t>(point)];
            if (std::isfinite(phase)) reading.phase = folded(phase);
        }
        readings.push_back(reading);
    }
    return readings;
}

}  // namespace servo::tuner
