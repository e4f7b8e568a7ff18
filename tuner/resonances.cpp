#include "tuner/resonances.h"

#include <algorithm>
#include <cmath>

#include "tuner/response_curve.h"

namespace servo::tuner {

namespace {

constexpr double kLeastHeight = 3.0;  // dB out of its surroundings
// A tip must also stand out of the measurement's noise, by so many standard deviations.
constexpr double kNoiseFactor = 5.0;
constexpr std::size_t kLeastPoints = 8;

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// The straight line over the logarithm of the frequency with the least sum of absolute distances,
// every decade counting the same: a rigid load's fall, which resonances do not bend.
std::vector<double> trend_of(const ResponseCurve& curve) {
    const std::vector<double>& x = curve.log_frequency;
    const std::vector<double>& y = curve.gain;
    const std::size_t n = curve.size();
    std::vector<double> weight(n);
    for (std::size_t i = 0; i < n; ++i)
        weight[i] = x[std::min(i + 1, n - 1)] - x[i == 0 ? 0 : i - 1];
    double level = 0.0;
    double slope = 0.0;
    std::vector<double> share = weight;  // the first pass is least squares
    constexpr int kPasses = 40;
    constexpr double kNear = 0.1;  // dB; nearer points do not count more
    for (int pass = 0; pass < kPasses; ++pass) {
        double s0 = 0.0, s1 = 0.0, s2 = 0.0, t0 = 0.0, t1 = 0.0;
        for (std::size_t i = 0; i < n; ++i) {
            s0 += share[i];
            s1 += share[i] * x[i];
            s2 += share[i] * x[i] * x[i];
            t0 += share[i] * y[i];
            t1 += share[i] * x[i] * y[i];
        }
        const double determinant = s0 * s2 - s1 * s1;
        if (!(determinant > 0.0)) break;
        slope = (s0 * t1 - s1 * t0) / determinant;
        level = (t0 - slope * s1) / s0;
        for (std::size_t i = 0; i < n; ++i)
            share[i] = weight[i] / std::max(std::abs(y[i] - level - slope * x[i]), kNear);
    }
    std::vector<double> trend(n);
    for (std::size_t i = 0; i < n; ++i)
        trend[i] = level + slope * x[i];
    return trend;
}

// Standard deviation of what has no likeness from point to point.
double noise_of(const std::vector<double>& values) {
    std::vector<double> bends;
    for (std::size_t i = 1; i + 1 < values.size(); ++i)
        bends.push_back(std::abs(values[i - 1] - 2.0 * values[i] + values[i + 1]));
    // A bend has six times the variance of a value; the median of absolute values is 0.6745
    // standard deviations.
    return median(bends) / 0.6745 / std::sqrt(6.0);
}

// How far one goes down from the tip on one side before it goes higher up, or the curve ends.
double drop(const std::vector<double>& values, std::size_t tip, int direction) {
    double lowest = values[tip];
    for (std::size_t i = tip; i < values.size() && values[i] <= values[tip];
         i += static_cast<std::size_t>(direction))
        lowest = std::min(lowest, values[i]);
    return values[tip] - lowest;
}

struct Tip {
    double x = 0.0;  // log10 of Hz
    double y = 0.0;  // dB over the trend
};

// The top of the parabola through a point and its neighbours.
Tip tip_of(const std::vector<double>& x, const std::vector<double>& y, std::size_t i) {
    const double a = (y[i] - y[i - 1]) / (x[i] - x[i - 1]);
    const double b = (y[i + 1] - y[i]) / (x[i + 1] - x[i]);
    const double bend = (b - a) / (x[i + 1] - x[i - 1]);
    if (!(bend < 0.0)) return {x[i], y[i]};
    const double top = 0.5 * (x[i - 1] + x[i] - a / bend);
    const double clamped = std::clamp(top, x[i - 1], x[i + 1]);
    return {clamped, y[i - 1] + (clamped - x[i - 1]) * (a + bend * (clamped - x[i]))};
}

// Hz from the tip to where the curve is 3 dB below it; nothing when it turns up again before.
std::optional<double> half_width(const std::vector<double>& x, const std::vector<double>& y,
                                 std::size_t i, const Tip& tip, int direction) {
    const double level = tip.y - kHalfPower;
    const auto step = static_cast<std::size_t>(direction);
    double lowest = y[i];
    for (std::size_t from = i, to = i + step; to < y.size(); from = to, to += step) {
        if (y[to] <= level) {
            const double share = (y[from] - level) / (y[from] - y[to]);
            const double at = x[from] + share * (x[to] - x[from]);
            return std::abs(std::pow(10.0, at) - std::pow(10.0, tip.x));
        }
        // Noise may go up a little; another hill may not.
        constexpr double kUp = 1.0;
        if (y[to] > lowest + kUp) return std::nullopt;
        lowest = std::min(lowest, y[to]);
    }
    return std::nullopt;
}

// Half of the relative width 3 dB below the tip. Where only one side shows it, the other counts as
// wide. A tip that is narrower than the points lie apart shows nothing.
std::optional<double> damping_of(const std::vector<double>& x, const std::vector<double>& y,
                                 std::size_t i, const Tip& tip) {
    const auto below = half_width(x, y, i, tip, -1);
    const auto above = half_width(x, y, i, tip, 1);
    if (!below && !above) return std::nullopt;
    const double width = (below ? *below : *above) + (above ? *above : *below);
    const double spacing = std::pow(10.0, x[i + 1]) - std::pow(10.0, x[i]);
    if (width < spacing) return std::nullopt;
    return width / 2.0 / std::pow(10.0, tip.x);
}

void find_tips(const ResponseCurve& curve, const std::vector<double>& trend, ResonanceKind kind,
               double least, std::vector<Resonance>& found) {
    const double sign = kind == ResonanceKind::kResonance ? 1.0 : -1.0;
    std::vector<double> y(curve.size());
    for (std::size_t i = 0; i < y.size(); ++i)
        y[i] = sign * (curve.gain[i] - trend[i]);
    const std::vector<double>& x = curve.log_frequency;
    for (std::size_t i = 1; i + 1 < y.size(); ++i) {
        if (y[i] <= y[i - 1] || y[i] < y[i + 1]) continue;
        if (std::min(drop(y, i, -1), drop(y, i, 1)) < least) continue;
        const Tip tip = tip_of(x, y, i);
        const double slope = (trend[i + 1] - trend[i]) / (x[i + 1] - x[i]);
        Resonance r;
        r.kind = kind;
        r.frequency = std::pow(10.0, tip.x);
        r.height = sign * tip.y;
        r.gain = ratio(trend[i] + slope * (tip.x - x[i]) + r.height);
        r.damping = damping_of(x, y, i, tip);
        found.push_back(r);
    }
}

double rounded(double value, double parts) {
    return std::round(value * parts) / parts;
}

}  // namespace

std::vector<Resonance> find_resonances(const ResponseView& plant) {
    std::vector<Resonance> found;
    const ResponseCurve curve = curve_of(plant);
    if (curve.size() < kLeastPoints) return found;
    const std::vector<double> trend = trend_of(curve);
    const double least = std::max(kLeastHeight, kNoiseFactor * noise_of(curve.gain));
    find_tips(curve, trend, ResonanceKind::kResonance, least, found);
    find_tips(curve, trend, ResonanceKind::kAntiResonance, least, found);
    std::sort(found.begin(), found.end(),
              [](const Resonance& a, const Resonance& b) { return a.frequency < b.frequency; });
    return found;
}

std::vector<Resonance> find_resonances(const TunerData& data) {
    const int points = data.analysed_points();
    const std::vector<double> frequency = frequencies(data, points);
    const auto n = static_cast<std::size_t>(points);
    return find_resonances(ResponseView{frequency,
                                        std::span<const float>(data.analysis.magnitude).first(n),
                                        std::span<const float>(data.analysis.phase).first(n)});
}

const Resonance* highest(const std::vector<Resonance>& resonances) {
    const Resonance* best = nullptr;
    for (const Resonance& r : resonances)
        if (r.kind == ResonanceKind::kResonance && (best == nullptr || r.height > best->height))
            best = &r;
    return best;
}

std::optional<NotchProposal> propose_notch(const Resonance& resonance) {
    if (resonance.kind != ResonanceKind::kResonance || resonance.height < kLeastHeight)
        return std::nullopt;
    // The notch's numerator takes the resonance away when it has the same damping; the denominator
    // puts a better damped one there. More damping than that, or a deeper notch, would only cost
    // phase at the crossover.
    constexpr double kUnknown = 0.05;
    constexpr double kLeastDamping = 0.01;
    constexpr double kMostDamping = 0.3;
    constexpr double kBest = 0.7;
    constexpr double kDeepest = 30.0;
    const double numerator =
        std::clamp(resonance.damping.value_or(kUnknown), kLeastDamping, kMostDamping);
    const double depth = std::min({resonance.height, decibels(kBest / numerator), kDeepest});
    const double denominator = numerator * ratio(depth);
    NotchProposal notch;
    notch.frequency = rounded(resonance.frequency, 1.0);
    notch.width =
        std::max(rounded(resonance.frequency * std::sqrt(numerator * denominator), 1.0), 1.0);
    notch.depth = rounded(depth, 10.0);
    notch.damping = rounded(denominator, 100.0);
    return notch;
}

}  // namespace servo::tuner
