#include "tuner/step_response.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>

#include "tuner/closed_loop.h"
#include "tuner/loop_model.h"
#include "tuner/margins.h"

namespace servo::tuner {

namespace {

constexpr std::size_t kValues = 501;
constexpr double kLengths = 3.0;  // periods of the crossover that are shown
constexpr double kShortest = 0.005;
constexpr double kLongest = 5.0;       // s
constexpr double kNoCrossover = 20.0;  // Hz, instead of it
constexpr double kBeyond = 100.0;      // crossovers; what is faster does not show
constexpr double kTail = 4.0;          // times the last frequency, likewise
constexpr double kRepeats = 8.0;       // lengths after which the sum would begin again
constexpr double kGainLeft = 0.2;      // at the last frequency
constexpr double kFarFromOne = 0.3;    // at the first one
constexpr std::size_t kMostNodes = 20000;

std::complex<double> closed_at(const ClosedVelocity& velocity, LoopKind loop, double frequency,
                               double hertz) {
    switch (loop) {
        case LoopKind::kVelocity:
            return velocity.at(frequency);
        case LoopKind::kPosition:
            return frequency > 0.0 ? closed(velocity.open_position(frequency, hertz)) : 1.0;
    }
    return 0.0;
}

// Real parts at 0, 1, 2 ... times `spacing`, each over its number; that at 0 as it is.
std::vector<double> sine_shares(const ClosedVelocity& velocity, LoopKind loop, double hertz,
                                double spacing, double end) {
    const auto nodes = std::min(static_cast<std::size_t>(std::ceil(end / spacing)) + 1, kMostNodes);
    std::vector<double> shares(nodes);
    for (std::size_t k = 0; k < nodes; ++k) {
        const auto number = static_cast<double>(k);
        shares[k] =
            closed_at(velocity, loop, number * spacing, hertz).real() / std::max(number, 1.0);
    }
    return shares;
}

// 2/pi times the integral of Re T sin(wt)/w, by the trapezoidal rule; the sum of sines by
// Clenshaw's recurrence. Several times go side by side, since each step of it waits for the one
// before.
constexpr std::size_t kLanes = 8;
using Lanes = std::array<double, kLanes>;

Lanes values_at(const std::vector<double>& shares, const Lanes& angles) {
    Lanes twice{};
    Lanes b1{};
    Lanes b2{};
    for (std::size_t lane = 0; lane < kLanes; ++lane)
        twice[lane] = 2.0 * std::cos(angles[lane]);
    for (std::size_t k = shares.size() - 1; k > 0; --k)
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            const double b = shares[k] + twice[lane] * b1[lane] - b2[lane];
            b2[lane] = b1[lane];
            b1[lane] = b;
        }
    Lanes values{};
    for (std::size_t lane = 0; lane < kLanes; ++lane)
        values[lane] =
            2.0 / kPi * (shares[0] * angles[lane] / 2.0 + b1[lane] * std::sin(angles[lane]));
    return values;
}

std::vector<double> values_over(const std::vector<double>& shares, double angle_step) {
    std::vector<double> values;
    values.reserve(kValues + kLanes);
    while (values.size() < kValues) {
        Lanes angles{};
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            angles[lane] = angle_step * static_cast<double>(values.size() + lane);
        const Lanes next = values_at(shares, angles);
        values.insert(values.end(), next.begin(), next.end());
    }
    values.resize(kValues);
    return values;
}

// The time at which the curve first reaches the level.
std::optional<double> reached(const StepResponse& r, double level) {
    for (std::size_t i = 1; i < r.values.size(); ++i) {
        if (r.values[i] < level) continue;
        const double before = r.values[i - 1];
        const double rise = r.values[i] - before;
        const double share = rise > 0.0 ? std::clamp((level - before) / rise, 0.0, 1.0) : 1.0;
        return (static_cast<double>(i - 1) + share) * r.time_step;
    }
    return std::nullopt;
}

void read_figures(StepResponse& r) {
    r.overshoot = std::max(0.0, *std::max_element(r.values.begin(), r.values.end()) - 1.0);
    const auto begin = reached(r, 0.1);
    const auto end = reached(r, 0.9);
    if (begin && end) r.rise = *end - *begin;
    constexpr double kBand = 0.02;
    const auto outside = std::find_if(r.values.rbegin(), r.values.rend(),
                                      [](double v) { return !(std::abs(v - 1.0) <= kBand); });
    if (outside == r.values.rbegin()) return;
    r.settling = static_cast<double>(r.values.rend() - outside) * r.time_step;
}

}  // namespace

StepResponse step_response(const TunerData& data, LoopKind loop) {
    StepResponse r;
    constexpr int kLeastPoints = 4;
    const ClosedVelocity velocity(data);
    if (data.simulation.points < kLeastPoints || velocity.empty()) return r;

    const SimulationFigures all = figures_of(data);
    const LoopFigures& figures = loop == LoopKind::kVelocity ? all.velocity : all.position;
    const double crossover =
        figures.margins.crossover.value_or(figures.bandwidth.value_or(kNoCrossover));
    const double length = std::clamp(kLengths / crossover, kShortest, kLongest);
    const double spacing = 1.0 / (kRepeats * length);
    const double last = velocity.last_frequency();
    const double hertz = data.simulation.gains.loopScale;
    const std::vector<double> shares =
        sine_shares(velocity, loop, hertz, spacing, std::min(kTail * last, kBeyond * crossover));
    r.time_step = length / static_cast<double>(kValues - 1);
    r.values = values_over(shares, 2.0 * kPi * spacing * r.time_step);
    read_figures(r);

    r.unstable = !all.velocity.margins.stable || !figures.margins.stable;
    r.fast_part_missing = std::abs(closed_at(velocity, loop, last, hertz)) > kGainLeft;
    r.slow_part_missing = velocity.gap_below() > kFarFromOne;
    return r;
}

}  // namespace servo::tuner
