// The answer of the simulated loops to a step of their command, from the closed loop's frequency
// response. Method and limits: docs/decisions/tuner-model.md.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tuner/tuner_data.h"

namespace servo::tuner {

struct StepResponse {
    double time_step = 0.0;          // s between two values
    std::vector<double> values;      // from time 0 on; 1 is the command
    double overshoot = 0.0;          // of the command, 0 when there is none
    std::optional<double> rise;      // s from 10 to 90 %
    std::optional<double> settling;  // s until it stays within 2 % of the command

    // Why the curve may be wrong; all false: as good as the measurement.
    bool unstable = false;           // the loop is not stable: there is no such answer
    bool fast_part_missing = false;  // the gain is not small yet at the last frequency: steep
                                     // parts look softer than they are, or ring
    bool slow_part_missing = false;  // the gain is not near 1 yet at the first frequency: the end
                                     // is a guess
};

enum class LoopKind : std::uint8_t { kVelocity, kPosition };

// Empty before the first simulation, or with fewer than 4 points.
StepResponse step_response(const TunerData& data, LoopKind loop);

}  // namespace servo::tuner
