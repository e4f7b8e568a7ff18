#include "tuner/response_curve.h"

#include <algorithm>
#include <cmath>

namespace servo::tuner {

double decibels(double gain) {
    constexpr double kLeast = 1e-12;
    return 20.0 * std::log10(std::max(gain, kLeast));
}

double ratio(double decibels) {
    return std::pow(10.0, decibels / 20.0);
}

std::vector<double> frequencies(const TunerData& data, int points) {
    std::vector<double> all(static_cast<std::size_t>(points));
    for (int point = 0; point < points; ++point)
        all[static_cast<std::size_t>(point)] = data.frequency(point);
    return all;
}

ResponseCurve curve_of(const ResponseView& view) {
    ResponseCurve curve;
    const std::size_t points =
        std::min({view.frequency.size(), view.gain.size(), view.phase.size()});
    for (std::size_t i = 0; i < points; ++i) {
        const double frequency = view.frequency[i];
        if (!(frequency > 0.0) || !std::isfinite(view.gain[i]) || !std::isfinite(view.phase[i]))
            continue;
        const double logarithm = std::log10(frequency);
        if (curve.size() > 0 && logarithm <= curve.log_frequency.back()) continue;
        const double phase = view.phase[i];
        const double before = curve.size() > 0 ? curve.phase.back() : std::remainder(phase, 360.0);
        curve.log_frequency.push_back(logarithm);
        curve.gain.push_back(decibels(view.gain[i]));
        curve.phase.push_back(before + std::remainder(phase - before, 360.0));
    }
    return curve;
}

}  // namespace servo::tuner
