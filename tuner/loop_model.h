// The loops around a measured plant: velocity loop with its filters and PI gains, and the position
// loop around it.
#pragma once

#include <cstdint>

#include "tuner/tuner_data.h"

namespace servo::tuner {

inline constexpr std::uint8_t kModelCode = 0x80;

// out1, out2: gain and phase (degrees) of the open velocity loop; out3, out4: of the closed one;
// out5, out6: gains of the open and the closed position loop with a position gain of 1; the
// caller's loopScale does not come here, see docs/decisions/tuner-model.md.
int Cal_Loop_Mag_Ph_u(std::uint8_t modelCode, float loopGain, float loopIntegral,
                      std::int16_t frequency, float plantRe, float plantIm, FilterRecord filter1,
                      FilterRecord filter2, FilterRecord filter3, FilterRecord filter4, float* out1,
                      float* out2, float* out3, float* out4, float* out5, float* out6);

}  // namespace servo::tuner
