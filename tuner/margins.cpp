#include "tuner/margins.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "tuner/closed_loop.h"
#include "tuner/loop_model.h"
#include "tuner/response_curve.h"
#include "tuner/single_precision.h"

namespace servo::tuner {

namespace {

// A place between the points i and i + 1.
struct Between {
    std::size_t i = 0;
    double share = 0.0;  // 0 at i, 1 at i + 1

    double of(const std::vector<double>& values) const {
        return values[i] + share * (values[i + 1] - values[i]);
    }
};

double frequency_of(const ResponseCurve& curve, const Between& place) {
    return std::pow(10.0, place.of(curve.log_frequency));
}

Between passage(const std::vector<double>& values, std::size_t i, double level) {
    return {i, (level - values[i]) / (values[i + 1] - values[i])};
}

// Degrees above -180, from -180 to 180.
double phase_margin(double phase) {
    return std::remainder(phase + 180.0, 360.0);
}

// The turn between two passages through -180 degrees in which a phase lies.
double turn_of(double phase) {
    return std::floor((phase + 180.0) / 360.0);
}

void find_gain_crossings(const ResponseCurve& curve, Margins& m) {
    for (std::size_t i = 0; i + 1 < curve.size(); ++i) {
        const bool above = curve.gain[i] >= 0.0;
        if (above == (curve.gain[i + 1] >= 0.0)) continue;
        const Between place = passage(curve.gain, i, 0.0);
        const double frequency = frequency_of(curve, place);
        m.gain_crossings.push_back({frequency, phase_margin(place.of(curve.phase))});
        if (above && !m.crossover) m.crossover = frequency;
    }
}

// Passages through -180 degrees at a gain above 1, upwards less downwards, are the turns that the
// curve makes around the point -1; a closed loop is stable when there are none.
void find_phase_crossings(const ResponseCurve& curve, Margins& m) {
    double turns = 0.0;
    // A loop that begins beyond -180 degrees has passed them below the range.
    const double begin = curve.phase.front();
    const double beyond = std::remainder(begin - 90.0, 360.0) + 90.0;  // -90 to 270
    if (curve.gain.front() > 0.0 && beyond > 90.0 && beyond < 180.0) turns -= 1.0;
    for (std::size_t i = 0; i + 1 < curve.size(); ++i) {
        const double from = turn_of(curve.phase[i]);
        const double to = turn_of(curve.phase[i + 1]);
        if (from == to) continue;
        const Between place = passage(curve.phase, i, 360.0 * std::max(from, to) - 180.0);
        const double gain = place.of(curve.gain);
        m.phase_crossings.push_back({frequency_of(curve, place), -gain});
        if (gain > 0.0) turns += to - from;
    }
    m.stable = turns == 0.0;
}

std::optional<Reading> nearest_to_zero(const std::vector<Reading>& readings) {
    const auto nearest = std::min_element(
        readings.begin(), readings.end(),
        [](const Reading& a, const Reading& b) { return std::abs(a.value) < std::abs(b.value); });
    if (nearest == readings.end()) return std::nullopt;
    return *nearest;
}

std::optional<Reading> highest_gain(const ResponseCurve& curve) {
    const auto top = std::max_element(curve.gain.begin(), curve.gain.end());
    if (top == curve.gain.end() || *top <= 0.0) return std::nullopt;
    const auto i = static_cast<std::size_t>(top - curve.gain.begin());
    return Reading{std::pow(10.0, curve.log_frequency[i]), *top};
}

// A response that is made point by point.
struct Response {
    std::vector<double> frequency;
    std::vector<float> gain;
    std::vector<float> phase;

    void add(double f, std::complex<double> value) {
        frequency.push_back(f);
        gain.push_back(single(std::abs(value)));
        phase.push_back(single(std::arg(value) * 180.0 / kPi));
    }
    ResponseView view() const { return {frequency, gain, phase}; }
};

LoopFigures figures(const ResponseView& open, const ResponseView& closed_loop) {
    return {margins_of(open), bandwidth_of(closed_loop), highest_gain(curve_of(closed_loop))};
}

LoopFigures velocity_figures(const TunerData& data) {
    const Simulation& s = data.simulation;
    const auto points = static_cast<std::size_t>(s.points);
    const std::vector<double> frequency = frequencies(data, s.points);
    const auto part = [points](const auto& values) {
        return std::span<const float>(values).first(points);
    };
    return figures({frequency, part(s.open_velocity.gain), part(s.open_velocity.phase)},
                   {frequency, part(s.closed_velocity.gain), part(s.closed_velocity.phase)});
}

// A position loop is slow: its crossover often lies below the first measured frequency, where the
// velocity loop does what it is told. So it is looked for from a thousandth of that on, unless the
// velocity loop is already far from 1 there.
LoopFigures position_figures(const TunerData& data) {
    const ClosedVelocity velocity(data);
    if (velocity.empty()) return {};
    constexpr double kFar = 0.5;
    constexpr double kPerDecade = 50.0;
    const double hertz = data.simulation.gains.loopScale;
    Response open;
    Response closed_loop;
    const auto add = [&](double f) {
        const std::complex<double> value = velocity.open_position(f, hertz);
        open.add(f, value);
        closed_loop.add(f, closed(value));
    };
    const double first = velocity.first_frequency();
    if (velocity.gap_below() < kFar)
        for (double k = 3.0 * kPerDecade; k > 0.0; k -= 1.0)
            add(first * std::pow(10.0, -k / kPerDecade));
    for (int point = 0; point < data.simulation.points; ++point)
        if (data.frequency(point) > 0) add(data.frequency(point));
    return figures(open.view(), closed_loop.view());
}

}  // namespace

Margins margins_of(const ResponseView& open_loop) {
    Margins m;
    const ResponseCurve curve = curve_of(open_loop);
    if (curve.size() == 0) return m;
    find_gain_crossings(curve, m);
    find_phase_crossings(curve, m);
    m.phase_margin = nearest_to_zero(m.gain_crossings);
    m.gain_margin = nearest_to_zero(m.phase_crossings);
    return m;
}

std::optional<double> bandwidth_of(const ResponseView& closed_loop) {
    const ResponseCurve curve = curve_of(closed_loop);
    if (curve.size() == 0 || curve.gain[0] < -kHalfPower) return std::nullopt;
    for (std::size_t i = 0; i + 1 < curve.size(); ++i)
        if (curve.gain[i + 1] < -kHalfPower)
            return frequency_of(curve, passage(curve.gain, i, -kHalfPower));
    return std::nullopt;
}

SimulationFigures figures_of(const TunerData& data) {
    if (data.simulation.points == 0) return {};
    return {velocity_figures(data), position_figures(data)};
}

}  // namespace servo::tuner
