// Resonances of the measured plant, and the notch filter that answers the highest one.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tuner/margins.h"
#include "tuner/tuner_data.h"

namespace servo::tuner {

enum class ResonanceKind : std::uint8_t { kResonance, kAntiResonance };

struct Resonance {
    ResonanceKind kind = ResonanceKind::kResonance;
    double frequency = 0.0;         // Hz, between the points
    double gain = 0.0;              // linear, of the curve at its tip; where a mark stands
    double height = 0.0;            // dB over the trend of the curve; below 0 for an anti-resonance
    std::optional<double> damping;  // ratio, from the width 3 dB off the tip; nothing when the
                                    // curve does not show it
};

// By rising frequency. A tip counts when it stands at least 3 dB out of its surroundings.
std::vector<Resonance> find_resonances(const ResponseView& plant);
// Of the analysed scan in `data`; empty without one.
std::vector<Resonance> find_resonances(const TunerData& data);

// The resonance with the greatest height above the trend; null when there is none.
const Resonance* highest(const std::vector<Resonance>& resonances);

// Values for the boxes of a notch filter, rounded to what one would type.
struct NotchProposal {
    double frequency = 0.0;  // Hz
    double width = 0.0;      // Hz
    double depth = 0.0;      // dB, above 0: how far it cuts
    double damping = 0.0;    // ratio, of the denominator; the model does not use it
};
// Nothing for what is no resonance.
std::optional<NotchProposal> propose_notch(const Resonance& resonance);

}  // namespace servo::tuner
