#include "tools/position_table_flow.h"

#include <algorithm>
#include <bitset>
#include <cstddef>

namespace servo::tools {

namespace {

using StepSet = std::bitset<kPositionSteps>;

std::size_t at(int step) {
    return static_cast<std::size_t>(step);
}

FlowLink link_of(const PositionProgram& program, int index) {
    const PositionStep& step = program.step(index);
    if (!step.goes_on()) return FlowLink::kStops;
    if (step.next() == index) return FlowLink::kToItself;
    return program.step(step.next()).empty ? FlowLink::kToNothing : FlowLink::kGoesOn;
}

void find_links(const PositionProgram& program, Flow& flow) {
    for (int index = 0; index < kPositionSteps; ++index) {
        FlowStep& step = flow.steps[at(index)];
        step.link = link_of(program, index);
        if (step.link != FlowLink::kStops) step.next = program.step(index).next();
        step.drawn = step.drawn || !program.step(index).empty || index == flow.start;
        if (step.next >= 0) flow.steps[at(step.next)].drawn = true;
    }
}

void find_reached(Flow& flow) {
    for (int index = flow.start; index >= 0 && !flow.steps[at(index)].reached;
         index = flow.steps[at(index)].next)
        flow.steps[at(index)].reached = true;
}

// The steps of the loop that a walk from `from` ends in; empty when it ends.
std::vector<int> loop_behind(const Flow& flow, int from) {
    StepSet seen;
    int index = from;
    while (index >= 0 && !seen.test(at(index))) {
        seen.set(at(index));
        index = flow.step(index).next;
    }
    std::vector<int> loop;
    if (index < 0) return loop;
    for (int step = index; loop.empty() || step != index; step = flow.step(step).next)
        loop.push_back(step);
    return loop;
}

void find_loops(Flow& flow) {
    for (int index = 0; index < kPositionSteps; ++index) {
        if (!flow.step(index).drawn || flow.step(index).in_loop) continue;
        std::vector<int> loop = loop_behind(flow, index);
        if (loop.empty() || flow.step(loop.front()).in_loop) continue;
        for (const int step : loop)
            flow.steps[at(step)].in_loop = true;
        if (loop.size() < 2) continue;
        // Told from where the table comes in, or from the lowest step.
        if (!flow.step(loop.front()).reached)
            std::rotate(loop.begin(), std::ranges::min_element(loop), loop.end());
        flow.loops.push_back(std::move(loop));
    }
}

class ChainBuilder {
  public:
    explicit ChainBuilder(Flow& flow) : flow_(flow) {}

    void build() {
        add(flow_.start);
        // Chains that nobody leads into, then loops that nobody enters.
        for (int index = 0; index < kPositionSteps; ++index)
            if (waits(index) && !has_waiting_predecessor(index)) add(index);
        for (int index = 0; index < kPositionSteps; ++index)
            if (waits(index)) add(index);
    }

  private:
    bool waits(int index) const { return flow_.step(index).drawn && !placed_.test(at(index)); }

    bool has_waiting_predecessor(int index) const {
        for (int other = 0; other < kPositionSteps; ++other)
            if (other != index && waits(other) && flow_.step(other).next == index) return true;
        return false;
    }

    void add(int from) {
        FlowChain chain;
        int index = from;
        while (index >= 0 && !placed_.test(at(index))) {
            placed_.set(at(index));
            chain.steps.push_back(index);
            index = flow_.step(index).next;
        }
        chain.leads_to = index;
        flow_.chains.push_back(std::move(chain));
    }

    Flow& flow_;
    StepSet placed_;
};

}  // namespace

Flow analyse_flow(const PositionProgram& program, int start) {
    Flow flow;
    flow.start = std::clamp(start, 0, kPositionSteps - 1);
    find_links(program, flow);
    find_reached(flow);
    find_loops(flow);
    ChainBuilder(flow).build();
    return flow;
}

}  // namespace servo::tools
