#include "tuner/analysis.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number.h"

namespace servo::tuner {

namespace {

constexpr std::int32_t kLoopRate = 16000;     // Hz, at which the drive samples
constexpr std::int32_t kLongestPeriod = 300;  // samples that the drive keeps of one period
constexpr int kResponseScale = 512;           // the drive's sums stand shifted left by nine bits
constexpr double kSpeedScale = 576.0;         // of the drive's speed feedback
constexpr int kEstimatePoints = 4;            // the lowest frequencies, where only inertia counts
constexpr int kMostAnalysed = (kResponseSize - 1) / 2;

template <typename Integer>
Integer clamped(double value) {
    return static_cast<Integer>(
        std::clamp<double>(value, static_cast<double>(std::numeric_limits<Integer>::min()),
                           static_cast<double>(std::numeric_limits<Integer>::max())));
}

double or_one(double value) {
    return value == 0 ? 1.0 : value;
}

double length(double x, double y) {
    return std::sqrt(x * x + y * y);
}

bool fits_single(double value) {
    return std::abs(value) <= std::numeric_limits<float>::max();
}

// One point; false when it can't be computed.
bool analyse_point(std::size_t i, std::int32_t frequency, const ScanSettings& settings,
                   const ScanBuffers& buffers, Analysis& analysis) {
    if (frequency == 0 || settings.magCurrent == 0) return false;
    const Window window = correlation_window(frequency);
    if (window.samples == 0) return false;  // no whole sample within a period
    const auto response = [&](std::size_t entry) {
        return std::ldexp(static_cast<double>(buffers.response[entry]), settings.scaleShift) /
               kResponseScale / window.samples / window.decimation;
    };
    const double x = response(2 * i);
    const double y = response(2 * i + 1);
    if (!fits_single(x) || !fits_single(y)) return false;
    analysis.respX[i] = static_cast<float>(x);
    analysis.respY[i] = static_cast<float>(y);
    const double a = buffers.commandA[i];
    const double b = buffers.commandB[i];
    analysis.commandMag[i] = static_cast<float>(or_one(length(a, b) / settings.magCurrent));
    const double q = or_one(length(analysis.respX[i], analysis.respY[i]));
    analysis.commandPhase[i] = angle(static_cast<float>(b), static_cast<float>(a));
    const float r = angle(analysis.respX[i], analysis.respY[i]);
    analysis.phase[i] = r - analysis.commandPhase[i];
    const double command = static_cast<double>(settings.magCurrent) * analysis.commandMag[i];
    const double magnitude = q * 100 / command / kSpeedScale;
    if (!fits_single(magnitude)) return false;
    analysis.magnitude[i] = static_cast<float>(magnitude);
    return true;
}

// How much current one unit of speed and frequency takes, from the first point to this one.
std::int32_t with_estimate_of(std::size_t i, std::int32_t frequency, const ScanSettings& settings,
                              const Analysis& analysis, std::int32_t acc) {
    const double q = or_one(length(analysis.respX[i], analysis.respY[i]));
    const double command = static_cast<double>(analysis.commandMag[i]) * 4 * settings.magCurrent;
    const double sum = acc + command * 64 / (q / kSpeedScale * 4) / frequency;
    return clamped<std::int32_t>(std::trunc(sum));
}

}  // namespace

std::optional<std::int16_t> checked_point_count(const ScanSettings& settings) {
    if (settings.stepFreq == 0) return std::nullopt;
    const double span = static_cast<double>(settings.stopFreq) - settings.startFreq;
    const std::int64_t count = base::round_half_even(span / settings.stepFreq + 1);
    const auto narrow = static_cast<std::int16_t>(count);
    return narrow == count ? std::optional(narrow) : std::nullopt;
}

std::int16_t point_count(const ScanSettings& settings) {
    return checked_point_count(settings).value_or(0);
}

Window correlation_window(std::int32_t frequency) {
    Window window;
    window.samples = kLoopRate / frequency;
    while (window.samples > kLongestPeriod) {
        window.samples /= 2;
        window.decimation *= 2;
    }
    return window;
}

std::int16_t angle(float x, float y) {
    double a = 0;
    if (x == 0) {
        a = y > 0 ? kPi / 2 : -kPi / 2;
    } else {
        a = std::atan(static_cast<double>(y) / static_cast<double>(x));
    }
    if (x < 0) a -= kPi;
    return static_cast<std::int16_t>(base::round_half_even(a * 180 / kPi));
}

bool FirstAnalyse(const ScanSettings& settings, const ScanBuffers& buffers, Analysis& analysis) {
    analysis = {};
    const int points = std::min(buffers.pointCount - 1, kMostAnalysed);
    std::int32_t acc = 0;
    for (int point = 0; point < points; ++point) {
        const auto i = static_cast<std::size_t>(point);
        const std::int32_t frequency = settings.startFreq + point * settings.stepFreq;
        if (!analyse_point(i, frequency, settings, buffers, analysis)) return false;
        if (point < kEstimatePoints) acc = with_estimate_of(i, frequency, settings, analysis, acc);
    }
    // Clamped like its parts: an estimate beyond the integer says no more than "very stiff".
    analysis.plantEstimate = clamped<std::int32_t>(acc * 64.0 / 4);
    return true;
}

}  // namespace servo::tuner
