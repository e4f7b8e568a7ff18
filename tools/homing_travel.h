// What the axis does while it homes: for each method the switches that take part and, from every
// zone where it may stand at the start, the legs of its travel. Pictures, descriptions and the
// window's list of steps are all made from this one table.
//
// A leg is two characters: the direction and what ends it.
//   +  -   positive, negative direction
//   H  h   the home switch turns on, off (an edge: a switch may have to be crossed for it)
//   N  n   the negative limit switch is on, off
//   P  p   the positive limit switch is on, off
//   I      the next index pulse
//   S      the mechanical stop: the homing current is reached
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace servo::tools {

enum class HomingEvent : std::uint8_t {
    kHomeOn,
    kHomeOff,
    kNegativeLimitOn,
    kNegativeLimitOff,
    kPositiveLimitOn,
    kPositiveLimitOff,
    kIndex,
    kStop,
};

struct HomingLeg {
    int direction;  // +1 or -1
    HomingEvent until;
    bool operator==(const HomingLeg&) const = default;
};

// Where the home switch is on.
enum class HomeSwitch : std::uint8_t {
    kNone,
    kPositiveSide,  // from its edge on to the positive end
    kNegativeSide,  // from the negative end to its edge
    kPiece,         // on a piece of the way
};

enum class StartZone : std::uint8_t {
    kAnywhere,
    kOffLimit,
    kOnNegativeLimit,
    kOnPositiveLimit,
    kOffSwitch,
    kOnSwitch,
    kBelowSwitch,  // on the negative side of it
    kAboveSwitch,
};

struct HomingStart {
    StartZone zone;
    std::string_view legs;  // "+H +I"
};

struct HomingTravel {
    int method;
    HomeSwitch home;
    std::array<HomingStart, 3> starts;
    std::size_t start_count;

    std::span<const HomingStart> zones() const { return std::span(starts).first(start_count); }
    bool uses(HomingEvent event) const;  // in any leg
    bool uses_negative_limit() const;
    bool uses_positive_limit() const;
};

std::span<const HomingTravel> homing_travels();
const HomingTravel* find_homing_travel(int method);  // null for a number that is no method

std::vector<HomingLeg> homing_legs(std::string_view legs);

// An axis to show a method on. Positions run from 0 to 1000; a range is empty where first > last.
struct HomingAxis {
    struct Range {
        double first = 1;
        double last = 0;
        bool empty() const { return first > last; }
        bool holds(double position) const { return position >= first && position <= last; }
    };
    Range home;
    Range negative_limit;
    Range positive_limit;
    double negative_end = 0;  // mechanical
    double positive_end = 1000;
    double first_index = 65;
    double index_pitch = 110;  // one turn of the motor
};
HomingAxis homing_axis(const HomingTravel& travel);

// A place of the axis in a zone, clear of every edge.
double start_position(const HomingTravel& travel, StartZone zone);

// How far the axis runs on behind a switch before it turns round.
inline constexpr double kHomingRunOn = 60;

struct HomingStep {
    HomingLeg leg;
    double from;
    double event;  // where its end was met
    double to;     // the same, or behind it where the axis turns round
};
// The steps from a position; nothing when the end of a leg is never met. The last one's `event` is
// the home position.
std::optional<std::vector<HomingStep>> travel_from(const HomingAxis& axis,
                                                   std::span<const HomingLeg> legs, double start);

}  // namespace servo::tools
