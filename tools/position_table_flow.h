// Addition: where each step leads. Every step has one successor at the most, so the table falls
// into chains: the one from the start step, and what is never reached from there.
#pragma once

#include <array>
#include <vector>

#include "tools/position_table_steps.h"

namespace servo::tools {

enum class FlowLink : std::uint8_t {
    kStops,      // bit 8 is 0
    kGoesOn,     // to a step that is defined
    kToItself,   // repeats without end
    kToNothing,  // to a step that is empty
};

struct FlowStep {
    bool drawn = false;    // defined, the start, or somebody's successor
    bool reached = false;  // from the start
    bool in_loop = false;
    FlowLink link = FlowLink::kStops;
    int next = -1;  // -1 when it stops
};

// A run of steps, each but the last followed by the next one.
struct FlowChain {
    std::vector<int> steps;
    int leads_to = -1;  // the step behind the last one, which stands in this or an earlier chain
};

struct Flow {
    int start = 0;
    std::array<FlowStep, kPositionSteps> steps;
    std::vector<FlowChain> chains;        // the first one begins with the start
    std::vector<std::vector<int>> loops;  // those of one step are not here

    const FlowStep& step(int index) const { return steps.at(static_cast<std::size_t>(index)); }
};

// `start` from 0 to 31.
Flow analyse_flow(const PositionProgram& program, int start);

}  // namespace servo::tools
