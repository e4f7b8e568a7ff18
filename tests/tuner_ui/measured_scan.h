// A scan as a file would hold it, of a motor with a load behind a soft coupling.
#pragma once

#include <cmath>
#include <complex>
#include <memory>
#include <numbers>

#include "tuner/analysis.h"
#include "tuner/tuner_data.h"

namespace servo::tuner::test {

inline constexpr double kAntiResonance = 120.0;  // Hz
inline constexpr double kResonance = 190.0;      // Hz
inline constexpr double kCrossover = 40.0;       // Hz, with a gain of 100 and nothing else

// Speed for current, with which a gain of 100 crosses 0 dB at about kCrossover.
inline std::complex<double> two_masses(double frequency) {
    const std::complex<double> s{0.0, frequency};
    const auto pair = [&](double at, double damping) {
        return 1.0 + 2.0 * damping * s / at + (s / at) * (s / at);
    };
    const std::complex<double> lag =
        std::exp(std::complex<double>(0.0, -2.0 * std::numbers::pi * frequency * 250e-6));
    return 0.01 * kCrossover / s * pair(kAntiResonance, 0.03) / pair(kResonance, 0.02) * lag;
}

struct MeasuredScan {
    ScanSettings settings;
    std::unique_ptr<ScanBuffers> buffers = std::make_unique<ScanBuffers>();
};

// The blocks of a drive that measures that plant.
inline MeasuredScan measured_scan(int start = 4, int step = 3, int stop = 1000) {
    MeasuredScan scan;
    scan.settings = {.startFreq = static_cast<std::int16_t>(start),
                     .stopFreq = static_cast<std::int16_t>(stop),
                     .stepFreq = static_cast<std::int16_t>(step),
                     .velocityGain1 = 100.0F,
                     .magCurrent = 60,
                     .encoderCounts = 65536,
                     .feedbackConstant = 1,
                     .velocityGain2 = 2.0F,
                     .scaleShift = 6};
    scan.buffers->pointCount = point_count(scan.settings);
    for (int i = 0; i < scan.buffers->pointCount; ++i) {
        const int frequency = start + i * step;
        const Window window = correlation_window(frequency);
        const double factor = 60.0 * 576.0 * 512.0 * window.samples * window.decimation / 64.0;
        const std::complex<double> sums = two_masses(frequency) * factor;
        const auto k = static_cast<std::size_t>(i);
        scan.buffers->commandB[k] = 60;
        scan.buffers->response[2 * k] = static_cast<std::int32_t>(std::lround(sums.real()));
        scan.buffers->response[2 * k + 1] = static_cast<std::int32_t>(std::lround(sums.imag()));
    }
    return scan;
}

}  // namespace servo::tuner::test
