// The travel of each method, held against what the method is: which edge, from which side, and
// whether an index pulse follows. The axis here moves in small steps and knows signals only by
// their level, so nothing of the searching under test is shared.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "tools/homing_method.h"
#include "tools/homing_travel.h"
#include "tools/homing_travel_texts.h"

namespace servo::tools {
namespace {

using base::Language;

enum class Edge {
    kNone,
    kNegativeLimit,
    kPositiveLimit,
    kHomeNegativeSide,
    kHomePositiveSide,
    kNegativeStop,
    kPositiveStop
};

// What CiA 402 and the drive's own methods say of the home position: the edge (of the home switch,
// on its negative or positive side), the direction of the last move, and the index.
struct Told {
    int method;
    HomeSwitch home;
    Edge edge;
    int direction;
    bool index;
};
constexpr std::array kTold{
    Told{1, HomeSwitch::kNone, Edge::kNegativeLimit, +1, true},
    Told{2, HomeSwitch::kNone, Edge::kPositiveLimit, -1, true},
    Told{3, HomeSwitch::kPositiveSide, Edge::kHomeNegativeSide, -1, true},
    Told{4, HomeSwitch::kPositiveSide, Edge::kHomeNegativeSide, +1, true},
    Told{5, HomeSwitch::kNegativeSide, Edge::kHomePositiveSide, +1, true},
    Told{6, HomeSwitch::kNegativeSide, Edge::kHomePositiveSide, -1, true},
    Told{7, HomeSwitch::kPiece, Edge::kHomeNegativeSide, -1, true},
    Told{8, HomeSwitch::kPiece, Edge::kHomeNegativeSide, +1, true},
    Told{9, HomeSwitch::kPiece, Edge::kHomePositiveSide, -1, true},
    Told{10, HomeSwitch::kPiece, Edge::kHomePositiveSide, +1, true},
    Told{11, HomeSwitch::kPiece, Edge::kHomePositiveSide, +1, true},
    Told{12, HomeSwitch::kPiece, Edge::kHomePositiveSide, -1, true},
    Told{13, HomeSwitch::kPiece, Edge::kHomeNegativeSide, +1, true},
    Told{14, HomeSwitch::kPiece, Edge::kHomeNegativeSide, -1, true},
    Told{17, HomeSwitch::kNone, Edge::kNegativeLimit, +1, false},
    Told{18, HomeSwitch::kNone, Edge::kPositiveLimit, -1, false},
    Told{19, HomeSwitch::kPositiveSide, Edge::kHomeNegativeSide, -1, false},
    Told{20, HomeSwitch::kPositiveSide, Edge::kHomeNegativeSide, +1, false},
    Told{21, HomeSwitch::kNegativeSide, Edge::kHomePositiveSide, +1, false},
    Told{22, HomeSwitch::kNegativeSide, Edge::kHomePositiveSide, -1, false},
    Told{23, HomeSwitch::kPiece, Edge::kHomeNegativeSide, -1, false},
    Told{24, HomeSwitch::kPiece, Edge::kHomeNegativeSide, +1, false},
    Told{25, HomeSwitch::kPiece, Edge::kHomePositiveSide, -1, false},
    Told{26, HomeSwitch::kPiece, Edge::kHomePositiveSide, +1, false},
    Told{27, HomeSwitch::kPiece, Edge::kHomePositiveSide, +1, false},
    Told{28, HomeSwitch::kPiece, Edge::kHomePositiveSide, -1, false},
    Told{29, HomeSwitch::kPiece, Edge::kHomeNegativeSide, +1, false},
    Told{30, HomeSwitch::kPiece, Edge::kHomeNegativeSide, -1, false},
    Told{33, HomeSwitch::kNone, Edge::kNone, -1, true},
    Told{34, HomeSwitch::kNone, Edge::kNone, +1, true},
    Told{-17, HomeSwitch::kNone, Edge::kNegativeStop, -1, false},
    Told{-18, HomeSwitch::kNone, Edge::kPositiveStop, +1, false},
    Told{-20, HomeSwitch::kNone, Edge::kNegativeStop, +1, true},
    Told{-21, HomeSwitch::kNone, Edge::kPositiveStop, -1, true},
};

// In which direction the axis sets out where neither the switch nor a limit is on.
int first_direction(int method) {
    const int like = method >= 17 && method <= 30 ? method - 16 : method;
    if (like == 1 || like == 5 || like == 6 || (like >= 11 && like <= 14)) return -1;
    if (like == 2 || like == 3 || like == 4 || (like >= 7 && like <= 10)) return +1;
    return like == 33 || like == -17 || like == -20 ? -1 : +1;
}

double place_of(Edge edge, const HomingAxis& axis) {
    switch (edge) {
        case Edge::kNone:
            return std::nan("");
        case Edge::kNegativeLimit:
            return axis.negative_limit.last;
        case Edge::kPositiveLimit:
            return axis.positive_limit.first;
        case Edge::kHomeNegativeSide:
            return axis.home.first;
        case Edge::kHomePositiveSide:
            return axis.home.last;
        case Edge::kNegativeStop:
            return axis.negative_end;
        case Edge::kPositiveStop:
            return axis.positive_end;
    }
    return 0;
}

double index_behind(const HomingAxis& axis, double from, int direction) {
    double found = axis.first_index;
    if (direction > 0) {
        while (found <= from)
            found += axis.index_pitch;
    } else {
        while (found < from)
            found += axis.index_pitch;
        found -= axis.index_pitch;
    }
    return found;
}

double told_home(const Told& told, const HomingAxis& axis, double start) {
    const double edge = told.edge == Edge::kNone ? start : place_of(told.edge, axis);
    return told.index ? index_behind(axis, edge, told.direction) : edge;
}

// Small steps, levels before and after.
class SteppedAxis {
  public:
    SteppedAxis(const HomingAxis& axis, double position) : axis_(axis), position_(position) {}

    double position() const { return position_; }

    // False when the event does not come before the mechanical end.
    bool run(const HomingLeg& leg) {
        if (leg.until == HomingEvent::kNegativeLimitOn && level(axis_.negative_limit)) return true;
        if (leg.until == HomingEvent::kPositiveLimitOn && level(axis_.positive_limit)) return true;
        for (;;) {
            const bool home = level(axis_.home);
            const bool negative = level(axis_.negative_limit);
            const bool positive = level(axis_.positive_limit);
            const double turn = turns();
            position_ += leg.direction * kStep;
            if (position_ <= axis_.negative_end || position_ >= axis_.positive_end)
                return leg.until == HomingEvent::kStop;
            switch (leg.until) {
                case HomingEvent::kHomeOn:
                    if (!home && level(axis_.home)) return true;
                    break;
                case HomingEvent::kHomeOff:
                    if (home && !level(axis_.home)) return true;
                    break;
                case HomingEvent::kNegativeLimitOn:
                    if (!negative && level(axis_.negative_limit)) return true;
                    break;
                case HomingEvent::kNegativeLimitOff:
                    if (negative && !level(axis_.negative_limit)) return true;
                    break;
                case HomingEvent::kPositiveLimitOn:
                    if (!positive && level(axis_.positive_limit)) return true;
                    break;
                case HomingEvent::kPositiveLimitOff:
                    if (positive && !level(axis_.positive_limit)) return true;
                    break;
                case HomingEvent::kIndex:
                    if (std::floor(turn) != std::floor(turns())) return true;
                    break;
                case HomingEvent::kStop:
                    break;
            }
        }
    }
    void coast(int direction) { position_ += direction * 5; }

    static constexpr double kStep = 0.25;

  private:
    bool level(const HomingAxis::Range& range) const {
        return range.first <= position_ && position_ <= range.last;
    }
    double turns() const { return (position_ - axis_.first_index) / axis_.index_pitch; }

    HomingAxis axis_;
    double position_;
};

bool in_zone(const HomingAxis& axis, StartZone zone, double position) {
    const bool home = axis.home.first <= position && position <= axis.home.last;
    const bool negative =
        axis.negative_limit.first <= position && position <= axis.negative_limit.last;
    const bool positive =
        axis.positive_limit.first <= position && position <= axis.positive_limit.last;
    switch (zone) {
        case StartZone::kAnywhere:
            return true;
        case StartZone::kOffLimit:
            return !negative && !positive;
        case StartZone::kOnNegativeLimit:
            return negative;
        case StartZone::kOnPositiveLimit:
            return positive;
        case StartZone::kOffSwitch:
            return !home;
        case StartZone::kOnSwitch:
            return home;
        case StartZone::kBelowSwitch:
            return position < axis.home.first;
        case StartZone::kAboveSwitch:
            return position > axis.home.last;
    }
    return false;
}

const HomingTravel& travel_of(int method) {
    const HomingTravel* travel = find_homing_travel(method);
    EXPECT_NE(travel, nullptr) << method;
    return *travel;
}

TEST(HomingTravel, EveryMethodOfTheChoicesHasOneTravel) {
    std::set<int> described;
    for (const HomingTravel& travel : homing_travels())
        EXPECT_TRUE(described.insert(travel.method).second) << travel.method;
    const auto methods = homing_methods();
    EXPECT_EQ(described, std::set<int>(methods.begin(), methods.end()));
    EXPECT_EQ(kTold.size() + 1, methods.size()) << "35 does not move";
    EXPECT_EQ(find_homing_travel(0), nullptr);
    EXPECT_EQ(find_homing_travel(15), nullptr);
}

TEST(HomingTravel, EveryPlaceOfTheAxisBelongsToExactlyOneStart) {
    for (const HomingTravel& travel : homing_travels()) {
        const HomingAxis axis = homing_axis(travel);
        for (double position = axis.negative_end + 1; position < axis.positive_end; position += 3) {
            int zones = 0;
            for (const HomingStart& start : travel.zones())
                zones += in_zone(axis, start.zone, position) ? 1 : 0;
            ASSERT_EQ(zones, 1) << travel.method << " at " << position;
        }
        for (const HomingStart& start : travel.zones())
            EXPECT_TRUE(in_zone(axis, start.zone, start_position(travel, start.zone)))
                << travel.method;
    }
}

// From every place of the axis the legs end where the method says, moving the way it says.
TEST(HomingTravel, EveryMethodEndsAtItsEdgeFromItsSideFromEverywhere) {
    for (const Told& told : kTold) {
        const HomingTravel& travel = travel_of(told.method);
        ASSERT_EQ(travel.home, told.home) << told.method;
        const HomingAxis axis = homing_axis(travel);
        // Far enough from the ends to coast behind a limit that is on already.
        for (double start = axis.negative_end + 8.1; start < axis.positive_end - 8; start += 9.7) {
            // The pulse nearest to the end may lie outside: such a start has no home at all.
            const double home = told_home(told, axis, start);
            if (home <= axis.negative_end || home >= axis.positive_end)
                if (told.edge == Edge::kNone) continue;
            for (const HomingStart& zone : travel.zones()) {
                if (!in_zone(axis, zone.zone, start)) continue;
                const auto legs = homing_legs(zone.legs);
                SteppedAxis stepped(axis, start);
                for (std::size_t i = 0; i < legs.size(); ++i) {
                    ASSERT_TRUE(stepped.run(legs[i]))
                        << told.method << " from " << start << ", leg " << i;
                    if (i + 1 < legs.size() && legs[i + 1].direction != legs[i].direction &&
                        legs[i].until != HomingEvent::kStop)
                        stepped.coast(legs[i].direction);
                }
                EXPECT_NEAR(stepped.position(), home, 2 * SteppedAxis::kStep)
                    << told.method << " from " << start;
                EXPECT_EQ(legs.back().direction, told.direction) << told.method;
                EXPECT_EQ(legs.back().until == HomingEvent::kIndex, told.index) << told.method;
            }
        }
    }
}

TEST(HomingTravel, TheAxisSetsOutInTheDirectionOfTheMethod) {
    for (const Told& told : kTold) {
        const HomingTravel& travel = travel_of(told.method);
        for (const HomingStart& zone : travel.zones()) {
            const int direction = homing_legs(zone.legs).front().direction;
            if (zone.zone == StartZone::kBelowSwitch || zone.zone == StartZone::kAboveSwitch ||
                zone.zone == StartZone::kOffSwitch || zone.zone == StartZone::kOffLimit ||
                zone.zone == StartZone::kAnywhere) {
                EXPECT_EQ(direction, first_direction(told.method)) << told.method;
            }
        }
    }
}

TEST(HomingTravel, OnlyTheToldLimitsTakePart) {
    for (const HomingTravel& travel : homing_travels()) {
        const int like =
            travel.method >= 17 && travel.method <= 30 ? travel.method - 16 : travel.method;
        EXPECT_EQ(travel.uses_negative_limit(), like == 1 || (like >= 11 && like <= 14))
            << travel.method;
        EXPECT_EQ(travel.uses_positive_limit(), like == 2 || (like >= 7 && like <= 10))
            << travel.method;
        EXPECT_EQ(travel.uses(HomingEvent::kStop), like < 0) << travel.method;
    }
}

TEST(HomingTravel, MethodsWithoutIndexMoveLikeThoseWithIt) {
    for (int method = 1; method <= 14; ++method) {
        const HomingTravel& with = travel_of(method);
        const HomingTravel& without = travel_of(method + 16);
        ASSERT_EQ(with.start_count, without.start_count);
        for (std::size_t i = 0; i < with.start_count; ++i)
            EXPECT_EQ(with.starts[i].legs,
                      std::string(without.starts[i].legs) +
                          (with.starts[i].legs.ends_with("+I") ? " +I" : " -I"))
                << method;
    }
}

// The steps that pictures are drawn from end where the small steps do.
TEST(HomingTravel, TheStepsOfThePicturesEndAtHome) {
    for (const Told& told : kTold) {
        const HomingTravel& travel = travel_of(told.method);
        const HomingAxis axis = homing_axis(travel);
        for (const HomingStart& zone : travel.zones()) {
            const double start = start_position(travel, zone.zone);
            const auto steps = travel_from(axis, homing_legs(zone.legs), start);
            ASSERT_TRUE(steps) << told.method;
            ASSERT_FALSE(steps->empty());
            EXPECT_EQ(steps->front().from, start);
            EXPECT_DOUBLE_EQ(steps->back().to, told_home(told, axis, start)) << told.method;
            for (std::size_t i = 1; i < steps->size(); ++i)
                EXPECT_EQ((*steps)[i].from, (*steps)[i - 1].to);
            for (const HomingStep& step : *steps)
                EXPECT_GE((step.to - step.from) * step.leg.direction, 0) << told.method;
        }
    }
}

TEST(HomingTravel, AllStartsOfAMethodEndAtOneHome) {
    for (const HomingTravel& travel : homing_travels()) {
        std::set<double> homes;
        for (const HomingStart& zone : travel.zones()) {
            const auto steps = travel_from(homing_axis(travel), homing_legs(zone.legs),
                                           start_position(travel, zone.zone));
            if (steps && !steps->empty()) homes.insert(steps->back().event);
        }
        EXPECT_EQ(homes.size(), travel.method == 35 ? 0U : 1U) << travel.method;
    }
}

TEST(HomingTravel, ALegWhoseEndNeverComesHasNoSteps) {
    const HomingAxis axis = homing_axis(travel_of(34));  // no switch at all
    EXPECT_FALSE(travel_from(axis, homing_legs("+H"), 500));
    EXPECT_FALSE(travel_from(axis, homing_legs("+P"), 500));
    EXPECT_FALSE(travel_from(axis, homing_legs("+I"), 980)) << "the next pulse is off the axis";
    EXPECT_TRUE(travel_from(axis, homing_legs(""), 500)->empty());
}

TEST(HomingTravel, TheHomePositionInWords) {
    EXPECT_EQ(home_text(travel_of(8), Language::kEnglish),
              "the first index pulse in the positive direction, behind the point where the home "
              "switch turns on in positive travel");
    EXPECT_EQ(home_text(travel_of(8), Language::kChinese),
              "正方向运行时原点开关接通的位置之后，正方向的第一个索引信号");
    EXPECT_EQ(home_text(travel_of(17), Language::kEnglish),
              "the point where the negative limit switch turns off in positive travel");
    EXPECT_EQ(home_text(travel_of(33), Language::kEnglish),
              "the first index pulse in the negative direction");
    EXPECT_EQ(home_text(travel_of(-21), Language::kEnglish),
              "the first index pulse in the negative direction, behind the mechanical stop in the "
              "positive direction");
    EXPECT_EQ(home_text(travel_of(35), Language::kEnglish), "the present position");
}

TEST(HomingTravel, TheTravelInWords) {
    EXPECT_EQ(start_texts(travel_of(8), Language::kEnglish),
              (std::vector<std::string>{
                  "Negative side of the switch: positive until the home switch turns "
                  "on; on to the next index pulse.",
                  "Home switch on: negative until the home switch turns off; back positive until "
                  "the home switch turns on; on to the next index pulse.",
                  "Positive side of the switch: positive until the positive limit "
                  "switch turns on; back negative until the home switch turns off; back positive "
                  "until the home switch turns on; on to the next index pulse."}));
    EXPECT_EQ(start_texts(travel_of(17), Language::kChinese),
              (std::vector<std::string>{
                  "不在限位上：向负方向运行直到负限位接通；反向，向正方向运行直到负限位断开。",
                  "在负限位上：向正方向运行直到负限位断开。"}));
    EXPECT_EQ(start_texts(travel_of(35), Language::kEnglish),
              (std::vector<std::string>{"From anywhere: the axis stays where it is."}));
}

}  // namespace
}  // namespace servo::tools
