// Where a frequency, a gain and a phase stand on the picture. Units are the surface's own; y grows
// downwards.
#pragma once

#include <string>
#include <vector>

namespace servo::tuner {

inline constexpr int kLeftMargin = 16;
inline constexpr int kLabelsAboveBottom = 200;  // of the frequencies beside their lines

struct Surface {
    int width = 0;
    int height = 0;
    int gain_range = 40;  // 40 or 80
};

int frequency_x(const Surface& surface, double frequency);  // Hz, 1 to 1000
int gain_y(const Surface& surface, double gain);            // linear, above 0
// The phase area is ours to scale: 0 degrees and +-180 degrees, see the .cpp.
int phase_y(const Surface& surface, double degrees);

// 1 to 10 by 1, 20 to 100 by 10, 200 to 1000 by 100.
const std::vector<int>& grid_frequencies();

// The inverse, for the pointer.
double frequency_at(const Surface& surface, int x);  // Hz
double gain_at(const Surface& surface, int y);       // dB
double phase_at(const Surface& surface, int y);      // degrees

// Texts under the pointer.
struct PointerTexts {
    std::string Label15;  // "123.4 Hz"
    std::string Label14;  // gain, "dB"
    std::string Label37;  // phase, degrees
};
PointerTexts pointer_texts(const Surface& surface, int x, int y);

}  // namespace servo::tuner
