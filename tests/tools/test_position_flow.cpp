// Where steps lead.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "position_grids.h"
#include "tools/position_table_flow.h"

namespace servo::tools {
namespace {

using Steps = std::vector<int>;

Flow flow_of(const PositionGrids& grids, int start = 0) {
    return analyse_flow(read_program(grids), start);
}

TEST(PositionSteps, AreReadAsTheDriveStoresThem) {
    PositionGrids grids = cleared_grids();
    grids.MSHFlexGrid2.cells[1] = {"0", "",  "",     "1.5", "12.25", "65537",
                                   "1", "2", "9F05", "-1",  "0"};
    const PositionStep step = read_program(grids).step(0);
    EXPECT_EQ(step.target, 2);
    EXPECT_EQ(step.speed, 12.25);
    EXPECT_EQ(step.delay, 1) << "cut to 16 bits";
    EXPECT_EQ(step.loops, 65535);
    EXPECT_EQ(step.acceleration, 1);
    EXPECT_EQ(step.deceleration, 2);
    EXPECT_EQ(step.next(), 5);
    EXPECT_TRUE(step.goes_on());
    EXPECT_TRUE(step.condition0());
    EXPECT_TRUE(step.condition1());
    EXPECT_TRUE(step.both_conditions());
    EXPECT_EQ(step.mode(), StepMode::kRelativeToDemand);
    EXPECT_EQ(step.start(), StepStart::kInterrupt);
    EXPECT_FALSE(step.empty);
    EXPECT_TRUE(read_program(grids).step(1).empty);
}

TEST(PositionFlow, AChainEndsWhereItStops) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 0, {.next = 3});
    put_step(grids, 3, {.next = 1});
    put_step(grids, 1, {});
    const Flow flow = flow_of(grids);
    ASSERT_EQ(flow.chains.size(), 1U);
    EXPECT_EQ(flow.chains[0].steps, (Steps{0, 3, 1}));
    EXPECT_EQ(flow.chains[0].leads_to, -1);
    EXPECT_EQ(flow.step(1).link, FlowLink::kStops);
    EXPECT_TRUE(flow.loops.empty());
    EXPECT_FALSE(flow.step(2).drawn);
}

TEST(PositionFlow, ALoopIsToldFromWhereItIsEntered) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 0, {.next = 4});
    put_step(grids, 4, {.next = 2});
    put_step(grids, 2, {.next = 7});
    put_step(grids, 7, {.next = 4});
    const Flow flow = flow_of(grids);
    ASSERT_EQ(flow.loops.size(), 1U);
    EXPECT_EQ(flow.loops[0], (Steps{4, 2, 7}));
    EXPECT_EQ(flow.chains[0].leads_to, 4);
    EXPECT_FALSE(flow.step(0).in_loop);
    EXPECT_TRUE(flow.step(7).in_loop);
}

TEST(PositionFlow, AStepThatLeadsToItselfIsNoLoopOfSeveral) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 0, {.next = 0});
    const Flow flow = flow_of(grids);
    EXPECT_EQ(flow.step(0).link, FlowLink::kToItself);
    EXPECT_TRUE(flow.step(0).in_loop);
    EXPECT_TRUE(flow.loops.empty());
    EXPECT_EQ(flow.chains[0].leads_to, 0);
}

TEST(PositionFlow, ALinkToAnEmptyStepIsSeen) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 0, {.next = 9});
    const Flow flow = flow_of(grids);
    EXPECT_EQ(flow.step(0).link, FlowLink::kToNothing);
    EXPECT_TRUE(flow.step(9).drawn);
    EXPECT_EQ(flow.chains[0].steps, (Steps{0, 9}));
}

TEST(PositionFlow, UnreachedStepsAreChainsOfTheirOwn) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 0, {});
    put_step(grids, 6, {.next = 5});
    put_step(grids, 5, {.next = 0});
    put_step(grids, 10, {.next = 11});
    put_step(grids, 11, {.next = 10});
    const Flow flow = flow_of(grids);
    ASSERT_EQ(flow.chains.size(), 3U);
    EXPECT_EQ(flow.chains[1].steps, (Steps{6, 5}));
    EXPECT_EQ(flow.chains[1].leads_to, 0);
    EXPECT_EQ(flow.chains[2].steps, (Steps{10, 11}));
    EXPECT_FALSE(flow.step(5).reached);
    EXPECT_EQ(flow.loops[0], (Steps{10, 11}));
}

TEST(PositionFlow, TheStartIsDrawnThoughItIsEmpty) {
    const Flow flow = flow_of(cleared_grids(), 4);
    ASSERT_EQ(flow.chains.size(), 1U);
    EXPECT_EQ(flow.chains[0].steps, (Steps{4}));
    EXPECT_TRUE(flow.step(4).reached);
}

TEST(PositionFlow, AnyTableFallsIntoChainsThatHoldEachDrawnStepOnce) {
    EXPECT_TRUE(rc::check([] {
        PositionGrids grids = cleared_grids();
        for (int row = 1; row <= kPositionSteps; ++row)
            grids.MSHFlexGrid2.at(row, step_column::kCtlReg) =
                register_text(*rc::gen::arbitrary<std::uint16_t>());
        const Flow flow = flow_of(grids, *rc::gen::inRange(0, kPositionSteps));
        std::array<int, kPositionSteps> placed{};
        for (const FlowChain& chain : flow.chains) {
            for (std::size_t i = 0; i < chain.steps.size(); ++i) {
                ++placed.at(static_cast<std::size_t>(chain.steps[i]));
                const bool last = i + 1 == chain.steps.size();
                RC_ASSERT(flow.step(chain.steps[i]).next ==
                          (last ? chain.leads_to : chain.steps[i + 1]));
            }
        }
        for (int step = 0; step < kPositionSteps; ++step)
            RC_ASSERT(placed.at(static_cast<std::size_t>(step)) == (flow.step(step).drawn ? 1 : 0));
        for (const auto& loop : flow.loops)
            RC_ASSERT(flow.step(loop.back()).next == loop.front());
    }));
}

}  // namespace
}  // namespace servo::tools
