// From the drive's correlation sums to gain and phase. Single precision and whole degrees, as this
// system has always computed them: scans that were kept in files must give the same curves again.
#pragma once

#include <cstdint>

#include "tuner/tuner_data.h"

namespace servo::tuner {

// How the drive samples a period at its 16 kHz: `samples` of them, every `decimation`-th step.
struct Window {
    std::int32_t samples = 0;     // n, at most 300
    std::int32_t decimation = 1;  // d, a power of two
};
Window correlation_window(std::int32_t frequency);  // Hz, above 0

// The angle of (x, y) in whole degrees, from -270 to 90: vectors on the left side are not folded.
std::int16_t angle(float x, float y);

// Fills `analysis` for the points 0 to pointCount - 2.
void FirstAnalyse(const ScanSettings& settings, const ScanBuffers& buffers, Analysis& analysis);

}  // namespace servo::tuner
