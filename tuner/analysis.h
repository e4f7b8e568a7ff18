// From the drive's correlation sums to gain and phase. Single precision and whole degrees, as this
// system has always computed them: scans that were kept in files must give the same curves again.
#pragma once

#include <cstdint>
#include <optional>

#include "tuner/tuner_data.h"

namespace servo::tuner {

// As point_count. Nothing without a step, or when it is no 16-bit number.
std::optional<std::int16_t> checked_point_count(const ScanSettings& settings);

// How the drive samples a period at its 16 kHz: `samples` of them, every `decimation`-th step.
struct Window {
    std::int32_t samples = 0;     // n, at most 300
    std::int32_t decimation = 1;  // d, a power of two
};
// Hz, not 0. No sample above 16 kHz.
Window correlation_window(std::int32_t frequency);

// The angle of (x, y) in whole degrees, from -270 to 90: vectors on the left side are not folded.
std::int16_t angle(float x, float y);

// Fills `analysis` for the points 0 to pointCount - 2. False when that can't be done: a frequency
// without a whole sample, no excitation, a number beyond single precision. A scan's limits rule
// that out; a file may hold anything. Then nothing of `analysis` may be shown.
bool FirstAnalyse(const ScanSettings& settings, const ScanBuffers& buffers, Analysis& analysis);

}  // namespace servo::tuner
