// The loops around a measured plant: velocity loop with its filters and PI gains, and the position
// loop around it. Formulas: docs/decisions/tuner-model.md.
#pragma once

#include <complex>
#include <cstdint>

#include "tuner/tuner_data.h"

namespace servo::tuner {

inline constexpr std::uint8_t kModelCode = 0x80;

// The drive gives the plant in units of its own velocity gain: the measured plant is the open
// velocity loop with a Kvp (60F9:01) of 1 and no integral part, so a Kvp is all that it is
// multiplied with.
inline constexpr double kLoopFactor = 1.0;

// Six results: gain (a ratio) and phase (degrees folded to -180 to 180) of the open velocity loop,
// the same of the closed one, and the gains of the open and the closed position loop with a
// position gain of 1 Hz. loopGain is a Kvp, loopIntegral the corner of the integral part in Hz,
// `frequency` in Hz. Never NaN. Returns 0; or 1 with six zeros for another model than kModelCode, a
// frequency of 0 or below, or a plant that is no number.
int Cal_Loop_Mag_Ph_u(std::uint8_t modelCode, float loopGain, float loopIntegral,
                      std::int16_t frequency, float plantRe, float plantIm, FilterRecord filter1,
                      FilterRecord filter2, FilterRecord filter3, FilterRecord filter4, float* out1,
                      float* out2, float* out3, float* out4, float* out5, float* out6);

// The parts of it. Proportional and integral part, with a proportional gain of 1: the integral is a
// sum at the loops' 16 kHz, `corner` in Hz.
std::complex<double> pi_response(double frequency, double corner);
// What closing a loop makes of it. Never infinite for a loop that is not.
std::complex<double> closed(std::complex<double> open_loop);
// The open position loop with a gain of 1 Hz: an error of one revolution asks for 2 pi revolutions
// a second.
std::complex<double> position_response(double frequency, std::complex<double> closed_velocity);

}  // namespace servo::tuner
