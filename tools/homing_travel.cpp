#include "tools/homing_travel.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace servo::tools {

namespace {

using enum StartZone;

constexpr HomingTravel on_limit(int method, HomingStart off, HomingStart on) {
    return {method, HomeSwitch::kNone, {off, on}, 2};
}
constexpr HomingTravel on_edge(int method, HomeSwitch home, std::string_view off,
                               std::string_view on) {
    return {method, home, {HomingStart{kOffSwitch, off}, HomingStart{kOnSwitch, on}}, 2};
}
constexpr HomingTravel on_piece(int method, std::string_view below, std::string_view on,
                                std::string_view above) {
    return {method,
            HomeSwitch::kPiece,
            {HomingStart{kBelowSwitch, below}, HomingStart{kOnSwitch, on},
             HomingStart{kAboveSwitch, above}},
            3};
}
constexpr HomingTravel plain(int method, std::string_view legs) {
    return {method, HomeSwitch::kNone, {HomingStart{kAnywhere, legs}}, 1};
}

constexpr std::array kTravels{
    on_limit(1, {kOffLimit, "-N +n +I"}, {kOnNegativeLimit, "+n +I"}),
    on_limit(2, {kOffLimit, "+P -p -I"}, {kOnPositiveLimit, "-p -I"}),
    on_edge(3, HomeSwitch::kPositiveSide, "+H -h -I", "-h -I"),
    on_edge(4, HomeSwitch::kPositiveSide, "+H +I", "-h +H +I"),
    on_edge(5, HomeSwitch::kNegativeSide, "-H +h +I", "+h +I"),
    on_edge(6, HomeSwitch::kNegativeSide, "-H -I", "+h -H -I"),
    on_piece(7, "+H -h -I", "-h -I", "+P -h -I"),
    on_piece(8, "+H +I", "-h +H +I", "+P -h +H +I"),
    on_piece(9, "+h -H -I", "+h -H -I", "+P -H -I"),
    on_piece(10, "+h +I", "+h +I", "+P -H +h +I"),
    on_piece(11, "-N +h +I", "+h +I", "-H +h +I"),
    on_piece(12, "-N +h -H -I", "+h -H -I", "-H -I"),
    on_piece(13, "-N +H +I", "-h +H +I", "-h +H +I"),
    on_piece(14, "-N +H -h -I", "-h -I", "-h -I"),
    on_limit(17, {kOffLimit, "-N +n"}, {kOnNegativeLimit, "+n"}),
    on_limit(18, {kOffLimit, "+P -p"}, {kOnPositiveLimit, "-p"}),
    on_edge(19, HomeSwitch::kPositiveSide, "+H -h", "-h"),
    on_edge(20, HomeSwitch::kPositiveSide, "+H", "-h +H"),
    on_edge(21, HomeSwitch::kNegativeSide, "-H +h", "+h"),
    on_edge(22, HomeSwitch::kNegativeSide, "-H", "+h -H"),
    on_piece(23, "+H -h", "-h", "+P -h"),
    on_piece(24, "+H", "-h +H", "+P -h +H"),
    on_piece(25, "+h -H", "+h -H", "+P -H"),
    on_piece(26, "+h", "+h", "+P -H +h"),
    on_piece(27, "-N +h", "+h", "-H +h"),
    on_piece(28, "-N +h -H", "+h -H", "-H"),
    on_piece(29, "-N +H", "-h +H", "-h +H"),
    on_piece(30, "-N +H -h", "-h", "-h"),
    plain(33, "-I"),
    plain(34, "+I"),
    plain(35, ""),
    plain(-17, "-S"),
    plain(-18, "+S"),
    plain(-20, "-S +I"),
    plain(-21, "+S -I"),
};

constexpr std::array<std::pair<char, HomingEvent>, 8> kEvents{
    {{'H', HomingEvent::kHomeOn},
     {'h', HomingEvent::kHomeOff},
     {'N', HomingEvent::kNegativeLimitOn},
     {'n', HomingEvent::kNegativeLimitOff},
     {'P', HomingEvent::kPositiveLimitOn},
     {'p', HomingEvent::kPositiveLimitOff},
     {'I', HomingEvent::kIndex},
     {'S', HomingEvent::kStop}}};

// Edges stand clear of the index pulses (65, 175, ... 945), and two of these lie on the piece, so
// that its ends have one each.
constexpr HomingAxis::Range kNegativeLimit{0, 120};
constexpr HomingAxis::Range kPositiveLimit{880, 1000};
constexpr double kPositiveSideEdge = 545;
constexpr double kNegativeSideEdge = 455;
constexpr HomingAxis::Range kPiece{420, 680};
constexpr double kStopsIn = 100;  // from the ends, where they are the target

// Where moving from `from` in a direction first leaves or enters a range; nothing if it does not.
std::optional<double> edge_ahead(const HomingAxis::Range& range, double from, int direction,
                                 bool entering) {
    if (range.empty()) return std::nullopt;
    const double edge = (direction > 0) == entering ? range.first : range.last;
    const bool ahead = direction > 0 ? edge > from : edge < from;
    return ahead ? std::optional(edge) : std::nullopt;
}

// A limit is asked for its state, so that an axis which stands on it turns at once.
std::optional<double> limit_state(const HomingAxis::Range& range, double from, int direction,
                                  bool on) {
    if (range.holds(from) == on) return from;
    return edge_ahead(range, from, direction, on);
}

double next_index(const HomingAxis& axis, double from, int direction) {
    const double turns = (from - axis.first_index) / axis.index_pitch;
    const double next = direction > 0 ? std::floor(turns) + 1 : std::ceil(turns) - 1;
    return axis.first_index + next * axis.index_pitch;
}

std::optional<double> event_ahead(const HomingAxis& axis, const HomingLeg& leg, double from) {
    switch (leg.until) {
        case HomingEvent::kHomeOn:
            return edge_ahead(axis.home, from, leg.direction, true);
        case HomingEvent::kHomeOff:
            return edge_ahead(axis.home, from, leg.direction, false);
        case HomingEvent::kNegativeLimitOn:
            return limit_state(axis.negative_limit, from, leg.direction, true);
        case HomingEvent::kNegativeLimitOff:
            return limit_state(axis.negative_limit, from, leg.direction, false);
        case HomingEvent::kPositiveLimitOn:
            return limit_state(axis.positive_limit, from, leg.direction, true);
        case HomingEvent::kPositiveLimitOff:
            return limit_state(axis.positive_limit, from, leg.direction, false);
        case HomingEvent::kIndex:
            return next_index(axis, from, leg.direction);
        case HomingEvent::kStop:
            return leg.direction > 0 ? axis.positive_end : axis.negative_end;
    }
    return std::nullopt;
}

}  // namespace

std::span<const HomingTravel> homing_travels() {
    return kTravels;
}

const HomingTravel* find_homing_travel(int method) {
    const auto* const found = std::ranges::find(kTravels, method, &HomingTravel::method);
    return found == kTravels.end() ? nullptr : found;
}

bool HomingTravel::uses(HomingEvent event) const {
    return std::ranges::any_of(zones(), [event](const HomingStart& start) {
        return std::ranges::any_of(homing_legs(start.legs),
                                   [event](const HomingLeg& leg) { return leg.until == event; });
    });
}

bool HomingTravel::uses_negative_limit() const {
    return uses(HomingEvent::kNegativeLimitOn);
}

bool HomingTravel::uses_positive_limit() const {
    return uses(HomingEvent::kPositiveLimitOn);
}

std::vector<HomingLeg> homing_legs(std::string_view legs) {
    std::vector<HomingLeg> found;
    for (std::size_t at = 0; at + 1 < legs.size(); at += 3) {
        const auto* const event =
            std::ranges::find(kEvents, legs[at + 1], &std::pair<char, HomingEvent>::first);
        if (event != kEvents.end()) found.push_back({legs[at] == '+' ? 1 : -1, event->second});
    }
    return found;
}

HomingAxis homing_axis(const HomingTravel& travel) {
    HomingAxis axis;
    if (travel.uses_negative_limit()) axis.negative_limit = kNegativeLimit;
    if (travel.uses_positive_limit()) axis.positive_limit = kPositiveLimit;
    switch (travel.home) {
        case HomeSwitch::kNone:
            break;
        case HomeSwitch::kPositiveSide:
            axis.home = {kPositiveSideEdge, axis.positive_end};
            break;
        case HomeSwitch::kNegativeSide:
            axis.home = {axis.negative_end, kNegativeSideEdge};
            break;
        case HomeSwitch::kPiece:
            axis.home = kPiece;
            break;
    }
    if (travel.uses(HomingEvent::kStop)) {
        axis.negative_end += kStopsIn;
        axis.positive_end -= kStopsIn;
    }
    return axis;
}

double start_position(const HomingTravel& travel, StartZone zone) {
    switch (zone) {
        case kAnywhere:
            // Nearly a turn away from the pulse where methods of one index end.
            return travel.starts.front().legs.starts_with('-') ? 600 : 520;
        case kOffLimit:
            return 480;
        case kOnNegativeLimit:
            return 45;
        case kOnPositiveLimit:
            return 955;
        case kOffSwitch:
            return travel.home == HomeSwitch::kNegativeSide ? 770 : 230;
        case kOnSwitch:
            if (travel.home == HomeSwitch::kPiece) return 550;
            return travel.home == HomeSwitch::kNegativeSide ? 230 : 770;
        case kBelowSwitch:
            return 235;
        case kAboveSwitch:
            return 785;
    }
    return 0;
}

std::optional<std::vector<HomingStep>> travel_from(const HomingAxis& axis,
                                                   std::span<const HomingLeg> legs, double start) {
    std::vector<HomingStep> steps;
    double position = start;
    for (std::size_t i = 0; i < legs.size(); ++i) {
        const auto event = event_ahead(axis, legs[i], position);
        if (!event || *event < axis.negative_end || *event > axis.positive_end) return std::nullopt;
        double to = *event;
        const bool turns = i + 1 < legs.size() && legs[i + 1].direction != legs[i].direction;
        // Against a stop nothing runs on.
        if (turns && legs[i].until != HomingEvent::kStop) to += legs[i].direction * kHomingRunOn;
        steps.push_back({legs[i], position, *event, to});
        position = to;
    }
    return steps;
}

}  // namespace servo::tools
