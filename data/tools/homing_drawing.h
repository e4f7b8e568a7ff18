// The picture of a homing method as shapes: the axis with its switches, the travel from every place
// where it may stand, the home position, and the signals along the axis. Plain data, so that it can
// be tested; a painter only has to paint it.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "base/language.h"
#include "tools/homing_travel.h"

namespace servo::data {

// What a shape is part of; the painter gives each a colour.
enum class Ink : std::uint8_t {
    kText,
    kQuiet,  // text of second rank
    kRail,
    kGuide,
    kHomeSwitch,
    kLimit,
    kIndex,
    kCurrent,
    kTravel,
    kHome,
    kPaper,
};

struct Point {
    double x = 0;
    double y = 0;
};

struct Stroke {
    std::vector<Point> points;
    Ink ink = Ink::kText;
    double width = 1;
    bool dashed = false;
    bool filled = false;  // a closed area, without an outline
};

struct Disc {
    Point centre;
    double radius = 1;
    Ink edge = Ink::kText;
    Ink fill = Ink::kPaper;
};

enum class Align : std::uint8_t { kLeft, kCentre, kRight };

// In a box, in the middle of its height; breaks into lines at its width.
struct Words {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    std::string text;
    Ink ink = Ink::kText;
    double size = 12;  // height of the font
    bool bold = false;
    Align align = Align::kLeft;
};

using Shape = std::variant<Stroke, Disc, Words>;

struct Drawing {
    double width = 0;
    double height = 0;
    std::vector<Shape> shapes;        // the later ones over the earlier
    std::vector<Point> home_circles;  // one for each start
    std::vector<Point> start_dots;
};

inline constexpr double kHomeCircleRadius = 10;

Drawing draw_homing(const tools::HomingTravel& travel, base::Language language);

}  // namespace servo::data
