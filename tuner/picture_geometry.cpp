#include "tuner/picture_geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number.h"

namespace servo::tuner {

namespace {

constexpr double kDecades = 1000.0;  // the axis ends at this many Hz
// Below it a frequency stands far to the left, and a gain far down, instead of nowhere.
constexpr double kLowestFrequency = 1e-6;
constexpr double kLowestGain = std::numeric_limits<float>::min();
constexpr double kHighestGain = std::numeric_limits<float>::max();
constexpr double kHalfTurn = 180.0;

// To the next whole number downwards, also below 0.
int rounded_down(double value) {
    constexpr double kFarthest = 1e9;
    return static_cast<int>(std::floor(std::clamp(value, -kFarthest, kFarthest)));
}

int quarter(const Surface& surface) {
    return rounded_down(surface.height / 4.0);
}

std::vector<int> make_grid() {
    std::vector<int> grid;
    for (const int decade : {1, 10, 100})
        for (int i = 1; i <= 9; ++i)
            grid.push_back(i * decade);
    grid.push_back(1000);
    return grid;
}

}  // namespace

int frequency_x(const Surface& surface, double frequency) {
    const double f = frequency > kLowestFrequency ? frequency : kLowestFrequency;
    return kLeftMargin +
           rounded_down(std::log(f) / std::log(kDecades) * (surface.width - kLeftMargin));
}

int gain_y(const Surface& surface, double gain) {
    const double v = gain > kLowestGain ? std::min(gain, kHighestGain) : kLowestGain;
    const double range = std::max(surface.gain_range, 1);
    return quarter(surface) - rounded_down(std::log10(v) * quarter(surface) / range * 20.0);
}

int phase_y(const Surface& surface, double degrees) {
    return 3 * quarter(surface) - rounded_down(folded(degrees) * quarter(surface) / kHalfTurn);
}

double folded(double degrees) {
    if (std::abs(degrees) <= kHalfTurn) return degrees;
    return std::isfinite(degrees) ? std::remainder(degrees, 2.0 * kHalfTurn) : 0.0;
}

bool folds_between(double degrees, double next_degrees) {
    return std::abs(folded(next_degrees) - folded(degrees)) > kHalfTurn;
}

const std::vector<int>& grid_frequencies() {
    static const std::vector<int> kGrid = make_grid();
    return kGrid;
}

double frequency_at(const Surface& surface, int x) {
    const double width = std::max(surface.width - kLeftMargin, 1);
    // A pointer far outside stays a number.
    constexpr double kFarthest = 10.0;
    return std::pow(kDecades, std::clamp((x - kLeftMargin) / width, -kFarthest, kFarthest));
}

double gain_at(const Surface& surface, int y) {
    const int scale = std::max(quarter(surface), 1);
    return static_cast<double>(quarter(surface) - y) * surface.gain_range / scale;
}

double phase_at(const Surface& surface, int y) {
    const int scale = std::max(quarter(surface), 1);
    return (3 * quarter(surface) - y) * kHalfTurn / scale;
}

PointerTexts pointer_texts(const Surface& surface, int x, int y) {
    return {base::format_fixed(frequency_at(surface, x), 1) + " Hz",
            base::format_fixed(gain_at(surface, y), 1) + "dB",
            base::format_fixed(phase_at(surface, y), 1) + "°"};
}

}  // namespace servo::tuner
