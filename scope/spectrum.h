// The amplitude spectrum of the visible window of a curve.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace servo::scope {

enum class SpectrumWindow : std::uint8_t { kRectangle, kHann, kHamming, kBlackman, kFlatTop };

struct Spectrum {
    double step_hz = 0.0;            // between two lines
    std::vector<double> amplitudes;  // peak amplitude of each line, from 0 Hz up, in display units
};

// Corrected for the window's gain, so that a sine that falls on a line reads its amplitude. The
// mean is taken off first unless `keep_mean`. Any length: no padding and no cutting.
Spectrum spectrum_of(std::span<const double> values, double period_us, SpectrumWindow window,
                     bool keep_mean = false);

}  // namespace servo::scope
