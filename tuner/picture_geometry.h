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
int gain_y(const Surface& surface, double gain);            // linear; 0 and below: far down
// The gain area is the upper half of the surface, from `gain_range` dB to as much below 0 dB; the
// phase area is the lower half: 180 degrees on the middle line, 0 three quarters down, -180 at the
// lower edge. Phases are drawn folded: what lies outside of -180 to 180 is brought inside.
int phase_y(const Surface& surface, double degrees);

// Folded to -180 to 180 degrees; both ends stay what they are.
double folded(double degrees);
// Whether a curve that goes from the one phase to the other leaves the area at one edge and comes
// back at the other, so that no line is drawn between them.
bool folds_between(double degrees, double next_degrees);

// 1 to 10 by 1, 20 to 100 by 10, 200 to 1000 by 100.
const std::vector<int>& grid_frequencies();

// The inverse, for the pointer.
double frequency_at(const Surface& surface, int x);  // Hz
double gain_at(const Surface& surface, int y);       // dB
double phase_at(const Surface& surface, int y);      // degrees

// Texts under the pointer.
struct PointerTexts {
    std::string Label15;  // "123.4 Hz"
    std::string Label14;  // "-12.3dB"
    std::string Label37;  // "-90.0°"
};
PointerTexts pointer_texts(const Surface& surface, int x, int y);

}  // namespace servo::tuner
