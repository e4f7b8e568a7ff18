#include "scope/spectrum.h"

#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>

#include "scope/compensated_sum.h"
#include "scope/fourier.h"
#include "scope/statistics.h"

namespace servo::scope {

namespace {

// A window is a sum of cosines with alternating signs; these are their heights.
using Cosines = std::array<double, 5>;

Cosines cosines_of(SpectrumWindow window) {
    switch (window) {
        case SpectrumWindow::kRectangle:
            return {1.0};
        case SpectrumWindow::kHann:
            return {0.5, 0.5};
        case SpectrumWindow::kHamming:
            return {0.54, 0.46};
        case SpectrumWindow::kBlackman:
            return {0.42, 0.5, 0.08};
        case SpectrumWindow::kFlatTop:
            return {0.21557895, 0.41663158, 0.277263158, 0.083578947, 0.006947368};
    }
    return {1.0};
}

// In the periodic form: the sample that would follow the last one is the first of the next period,
// so that sines that fall on a line stay on few lines.
std::vector<double> window_of(SpectrumWindow window, std::size_t length) {
    std::vector<double> weights(length, 1.0);
    if (length == 1) return weights;  // a single sample has no shape, and most windows are 0 there
    const Cosines heights = cosines_of(window);
    for (std::size_t i = 0; i < length; ++i) {
        const double angle =
            2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(length);
        double weight = 0;
        double sign = 1;
        for (std::size_t k = 0; k < heights.size(); ++k, sign = -sign)
            weight += sign * heights[k] * std::cos(static_cast<double>(k) * angle);
        weights[i] = weight;
    }
    return weights;
}

}  // namespace

Spectrum spectrum_of(std::span<const double> values, double period_us, SpectrumWindow window,
                     bool keep_mean) {
    Spectrum result;
    const auto statistics = statistics_of(values);
    if (!statistics) return result;
    const std::size_t count = values.size();
    if (period_us > 0) result.step_hz = 1e6 / (period_us * static_cast<double>(count));

    std::vector<double> weighted = window_of(window, count);
    const double mean = keep_mean ? 0.0 : statistics->mean;
    CompensatedSum gain;
    for (std::size_t i = 0; i < count; ++i) {
        gain.add(weighted[i]);
        weighted[i] *= values[i] - mean;
    }
    const std::vector<std::complex<double>> lines = fourier_transform(weighted);
    result.amplitudes.resize(count / 2 + 1);
    for (std::size_t k = 0; k < result.amplitudes.size(); ++k) {
        // The first line, and the last one of an even count, have no mirror image above them that
        // holds the other half.
        const bool alone = k == 0 || 2 * k == count;
        result.amplitudes[k] = std::abs(lines[k]) * (alone ? 1.0 : 2.0) / gain.value();
    }
    return result;
}

}  // namespace servo::scope
