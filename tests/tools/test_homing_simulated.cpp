// The table of travels beside what the simulated drive makes of the same numbers: two readings,
// written apart, that must not drift.
#include <gtest/gtest.h>

#include "sim/homing_methods.h"
#include "tools/homing_method.h"
#include "tools/homing_travel.h"

namespace servo::tools {
namespace {

sim::HomingSignal signal_of(HomingEvent event, int direction) {
    switch (event) {
        case HomingEvent::kHomeOn:
        case HomingEvent::kHomeOff:
            return sim::HomingSignal::kHome;
        case HomingEvent::kNegativeLimitOn:
        case HomingEvent::kNegativeLimitOff:
            return sim::HomingSignal::kNegativeLimit;
        case HomingEvent::kPositiveLimitOn:
        case HomingEvent::kPositiveLimitOff:
            return sim::HomingSignal::kPositiveLimit;
        case HomingEvent::kIndex:
            return sim::HomingSignal::kNone;
        case HomingEvent::kStop:
            return direction > 0 ? sim::HomingSignal::kPositiveStop
                                 : sim::HomingSignal::kNegativeStop;
    }
    return sim::HomingSignal::kNone;
}

TEST(HomingSimulated, BothTablesKnowTheSameNumbers) {
    for (int number = -128; number <= 127; ++number)
        EXPECT_EQ(sim::homing_method(number).has_value(), number != 0 && is_typed_method(number))
            << number;
}

TEST(HomingSimulated, BothTablesTellTheSameEdgeSideAndIndex) {
    for (const HomingTravel& travel : homing_travels()) {
        const auto drive = sim::homing_method(travel.method);
        ASSERT_TRUE(drive) << travel.method;
        EXPECT_EQ(drive->here, travel.method == 35);
        if (drive->here) continue;
        for (const HomingStart& start : travel.zones()) {
            const auto legs = homing_legs(start.legs);
            const bool index = legs.back().until == HomingEvent::kIndex;
            EXPECT_EQ(drive->index, index) << travel.method;
            const HomingLeg& edge = index && legs.size() > 1 ? legs[legs.size() - 2] : legs.back();
            EXPECT_EQ(drive->signal, signal_of(edge.until, edge.direction)) << travel.method;
            // A stop is pressed against one way and left the other; the last move is told by the
            // index alone.
            const bool stop = edge.until == HomingEvent::kStop;
            if (!stop || index) {
                EXPECT_EQ(static_cast<int>(drive->approach), legs.back().direction)
                    << travel.method;
            }
            if (travel.home != HomeSwitch::kNone) {
                EXPECT_EQ(drive->enters, edge.until == HomingEvent::kHomeOn) << travel.method;
            }
        }
        const bool limit = travel.home == HomeSwitch::kPiece;
        EXPECT_EQ(drive->turns, limit) << travel.method;
        EXPECT_EQ(static_cast<int>(drive->search),
                  homing_legs(travel.zones().front().legs).front().direction)
            << travel.method;
    }
}

}  // namespace
}  // namespace servo::tools
