// What a control engineer reads off the loops: crossover, margins, bandwidth. All of it from gain
// and phase at measured points, straight lines between them over the logarithm of the frequency
// (gain in dB, phase in degrees, unwrapped from point to point).
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "tuner/tuner_data.h"

namespace servo::tuner {

// A place on a curve: `value` is degrees, dB or a ratio, as told at its use.
struct Reading {
    double frequency = 0.0;  // Hz
    double value = 0.0;
};

// Gain (linear) and phase (degrees, folded or not) at rising frequencies; all of one length.
struct ResponseView {
    std::span<const double> frequency;  // Hz
    std::span<const float> gain;
    std::span<const float> phase;
};

struct Margins {
    // Every passage of the gain through 0 dB, with the phase margin there: degrees above -180,
    // from -180 to 180.
    std::vector<Reading> gain_crossings;
    // Every passage of the phase through -180 degrees, with the gain margin there: dB below 0.
    std::vector<Reading> phase_crossings;

    std::optional<double> crossover;      // Hz, the first passage of the gain downwards
    std::optional<Reading> phase_margin;  // the one nearest to 0 degrees counts
    std::optional<Reading> gain_margin;   // the one nearest to 0 dB counts
    // Nyquist's criterion over the measured range, for a plant that is stable by itself: the
    // closed loop is stable. What lies outside of the range is not known.
    bool stable = true;
};

Margins margins_of(const ResponseView& open_loop);

// The first passage of the gain through -3 dB (1/sqrt 2) downwards, in Hz. Nothing when the gain
// does not pass it in the range, or begins below it.
std::optional<double> bandwidth_of(const ResponseView& closed_loop);

struct LoopFigures {
    Margins margins;
    std::optional<double> bandwidth;  // Hz, of the closed loop
    std::optional<Reading> peak;      // the closed loop's highest gain, in dB, when above 0 dB
};
struct SimulationFigures {
    LoopFigures velocity;
    LoopFigures position;
};

// Of the simulation in `data`; all empty before the first one.
SimulationFigures figures_of(const TunerData& data);

}  // namespace servo::tuner
