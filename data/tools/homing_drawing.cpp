#include "data/tools/homing_drawing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "tools/homing_travel_texts.h"

namespace servo::data {

namespace {

using base::Text;
using tools::HomingAxis;
using tools::HomingEvent;
using tools::HomingStep;
using tools::HomingTravel;

constexpr double kWidth = 640;
constexpr double kHeight = 360;
constexpr double kMargin = 14;
constexpr double kAxisLeft = 124;
constexpr double kAxisRight = 612;
constexpr double kHeaderBottom = 52;
constexpr double kBottom = 350;
constexpr double kRailRoom = 44;      // directions, rail and switches
constexpr double kLargestLane = 32;   // from one line of travel to the next
constexpr double kStartGap = 0.6;     // between two starts, in lanes
constexpr double kLanesBottom = 18;   // below the last line of travel
constexpr double kLargestTrack = 44;  // a signal
constexpr double kSmallestTrack = 27;
constexpr double kLevel = 14;  // between off and on
constexpr double kPulse = 4;   // width of an index pulse
constexpr double kRamp = 12;   // of the current at a stop
constexpr double kDot = 3.5;
constexpr double kHead = 8;  // length of an arrow's head
constexpr double kTextSize = 12.5;
constexpr double kTitleSize = 16;

double x_of(double position) {
    return kAxisLeft + position / 1000 * (kAxisRight - kAxisLeft);
}

// Steps that go on in one direction are one line.
struct Run {
    double from;
    double to;
    int direction;
};
std::vector<Run> runs_of(const std::vector<HomingStep>& steps) {
    std::vector<Run> runs;
    for (const HomingStep& step : steps) {
        if (!runs.empty() && runs.back().direction == step.leg.direction)
            runs.back().to = step.to;
        else
            runs.push_back({step.from, step.to, step.leg.direction});
    }
    return runs;
}

struct Track {
    Text name;
    Ink ink;
    const HomingAxis::Range* on;  // null: pulses, or the current
    bool pulses;
    bool home;  // its edge or pulse is the home position
};

class Drawer {
  public:
    Drawer(const HomingTravel& travel, base::Language language)
        : travel_(travel), axis_(tools::homing_axis(travel)), language_(language) {
        drawing_.width = kWidth;
        drawing_.height = kHeight;
        for (const tools::HomingStart& start : travel.zones()) {
            const auto steps = tools::travel_from(axis_, tools::homing_legs(start.legs),
                                                  tools::start_position(travel, start.zone));
            if (steps && !steps->empty()) starts_.push_back(*steps);
        }
        find_tracks();
        measure();
    }

    Drawing draw() {
        header();
        guides();
        rail();
        double y = lanes_top_ + kHomeCircleRadius;
        for (const auto& steps : starts_)
            y = path(steps, y) + lane_ * (1 + kStartGap);
        for (std::size_t i = 0; i < tracks_.size(); ++i)
            track(tracks_[i], tracks_top_ + static_cast<double>(i) * track_);
        return std::move(drawing_);
    }

  private:
    void find_tracks() {
        const HomingEvent last = last_event();
        const bool index = last == HomingEvent::kIndex;
        if (index)
            tracks_.push_back({{"索引信号", "Index pulse"}, Ink::kIndex, nullptr, true, true});
        if (!axis_.home.empty())
            tracks_.push_back(
                {{"原点开关", "Home switch"}, Ink::kHomeSwitch, &axis_.home, false, !index});
        if (!axis_.negative_limit.empty())
            tracks_.push_back({{"负限位", "Negative limit"},
                               Ink::kLimit,
                               &axis_.negative_limit,
                               false,
                               last == HomingEvent::kNegativeLimitOff});
        if (!axis_.positive_limit.empty())
            tracks_.push_back({{"正限位", "Positive limit"},
                               Ink::kLimit,
                               &axis_.positive_limit,
                               false,
                               last == HomingEvent::kPositiveLimitOff});
        if (travel_.uses(HomingEvent::kStop))
            tracks_.push_back({{"电机电流", "Current"}, Ink::kCurrent, nullptr, false, !index});
    }

    HomingEvent last_event() const {
        return starts_.empty() ? HomingEvent::kIndex : starts_.front().back().leg.until;
    }

    // Everything finds its room between the header and the lower edge, in the middle of it.
    void measure() {
        double lanes = 0;
        for (const auto& steps : starts_)
            lanes += static_cast<double>(runs_of(steps).size());
        lanes += kStartGap * static_cast<double>(starts_.size() - 1) - 1;
        const auto tracks = static_cast<double>(tracks_.size());
        const double room =
            kBottom - kHeaderBottom - kRailRoom - kLanesBottom - 2 * kHomeCircleRadius;
        lane_ = std::min(kLargestLane, (room - tracks * kSmallestTrack) / std::max(lanes, 1.0));
        track_ = std::min(kLargestTrack, (room - lanes * lane_) / tracks);
        const double left = room - lanes * lane_ - tracks * track_;
        rail_y_ = kHeaderBottom + left / 2 + kRailRoom - 16;
        lanes_top_ = kHeaderBottom + left / 2 + kRailRoom;
        tracks_top_ = lanes_top_ + 2 * kHomeCircleRadius + lanes * lane_ + kLanesBottom;
    }

    void line(std::vector<Point> points, Ink ink, double width, bool dashed = false) {
        drawing_.shapes.emplace_back(Stroke{std::move(points), ink, width, dashed, false});
    }
    void area(std::vector<Point> points, Ink ink) {
        drawing_.shapes.emplace_back(Stroke{std::move(points), ink, 0, false, true});
    }
    void words(Words given) { drawing_.shapes.emplace_back(std::move(given)); }

    void header() {
        words({.x = kMargin,
               .y = 10,
               .width = 104,
               .height = 34,
               .text = tools::method_text(travel_.method, language_),
               .size = kTitleSize,
               .bold = true});
        words({.x = kAxisLeft,
               .y = 10,
               .width = kAxisRight - kAxisLeft,
               .height = 34,
               .text = std::string(Text{"原点：", "Home: "}.in(language_)) +
                       tools::home_text(travel_, language_),
               .ink = Ink::kQuiet,
               .size = kTextSize});
    }

    // At every edge that ends a leg; the home position is marked up to its signal.
    void guides() {
        std::vector<double> edges;
        for (const auto& steps : starts_)
            for (const HomingStep& step : steps)
                if (step.leg.until != HomingEvent::kIndex) edges.push_back(step.event);
        std::ranges::sort(edges);
        edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
        const double bottom = tracks_top_ + static_cast<double>(tracks_.size()) * track_;
        for (const double edge : edges)
            line({{x_of(edge), rail_y_}, {x_of(edge), bottom}}, Ink::kGuide, 1, true);
        for (std::size_t i = 0; i < tracks_.size(); ++i) {
            if (!tracks_[i].home) continue;
            const double x = x_of(home());
            line({{x, lanes_top_}, {x, level_y(i)}}, Ink::kHome, 1.2, true);
        }
    }

    double home() const { return starts_.front().back().event; }
    double level_y(std::size_t track) const {
        return tracks_top_ + static_cast<double>(track) * track_ + track_ - 6 - kLevel / 2;
    }

    void box_on_rail(const HomingAxis::Range& on, Ink ink) {
        if (on.empty()) return;
        const double left = x_of(std::max(on.first, axis_.negative_end));
        const double right = x_of(std::min(on.last, axis_.positive_end));
        area({{left, rail_y_ - 10},
              {right, rail_y_ - 10},
              {right, rail_y_ - 3},
              {left, rail_y_ - 3}},
             ink);
    }

    void rail() {
        const double left = x_of(axis_.negative_end);
        const double right = x_of(axis_.positive_end);
        line({{left, rail_y_}, {right, rail_y_}}, Ink::kRail, 4);
        for (const auto& [x, out] : {std::pair{left, -1.0}, std::pair{right, 1.0}}) {
            line({{x, rail_y_ - 11}, {x, rail_y_ + 9}}, Ink::kRail, 3);
            for (int i = 0; i < 4; ++i) {
                const double y = rail_y_ - 9 + 5 * i;
                line({{x, y + 3}, {x + out * 6, y - 2}}, Ink::kRail, 1);
            }
        }
        box_on_rail(axis_.home, Ink::kHomeSwitch);
        box_on_rail(axis_.negative_limit, Ink::kLimit);
        box_on_rail(axis_.positive_limit, Ink::kLimit);
        direction({"负方向", "negative"}, -1);
        direction({"正方向", "positive"}, 1);
    }

    // An arrow and a word, at the axis' end.
    void direction(Text text, int sign) {
        const double y = rail_y_ - 21;
        const double tip = sign > 0 ? kAxisRight : kAxisLeft;
        const double tail = tip - sign * 26;
        line({{tail, y}, {tip - sign * kHead, y}}, Ink::kQuiet, 1.4);
        head({tip, y}, sign, Ink::kQuiet);
        const double width = 90;
        words({.x = sign > 0 ? tail - 6 - width : tail + 6,
               .y = y - 9,
               .width = width,
               .height = 18,
               .text = std::string(text.in(language_)),
               .ink = Ink::kQuiet,
               .size = kTextSize,
               .align = sign > 0 ? Align::kRight : Align::kLeft});
    }

    void head(Point tip, int direction, Ink ink) {
        const double back = tip.x - direction * kHead;
        area({tip, {back, tip.y - kHead / 2}, {back, tip.y + kHead / 2}}, ink);
    }

    // The lines of one start; returns where its last one stands.
    double path(const std::vector<HomingStep>& steps, double y) {
        const auto runs = runs_of(steps);
        Stroke stroke{{}, Ink::kTravel, 2, false, false};
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const Run& run = runs[i];
            const bool last = i + 1 == runs.size();
            const double radius = lane_ / 2;
            // A line begins where the bend before it ends.
            const double from = x_of(run.from) + (i == 0 ? 0 : run.direction * radius);
            const double to =
                x_of(run.to) - run.direction * (last ? kHomeCircleRadius + kHead / 2 : radius);
            stroke.points.push_back({from, y});
            stroke.points.push_back({to, y});
            if (last)
                head({x_of(run.to) - run.direction * kHomeCircleRadius, y}, run.direction,
                     Ink::kTravel);
            else if (std::abs(to - from) > 3 * kHead)
                head({(from + to) / 2 + run.direction * kHead / 2, y}, run.direction, Ink::kTravel);
            if (last) break;
            bend(stroke, {to, y}, run.direction, radius);
            y += lane_;
        }
        drawing_.shapes.emplace_back(std::move(stroke));
        finish(steps, y - lane_ * static_cast<double>(runs.size() - 1), y);
        return y;
    }

    static void bend(Stroke& stroke, Point from, int direction, double radius) {
        constexpr int kPieces = 12;
        for (int i = 1; i < kPieces; ++i) {
            const double angle = std::numbers::pi * i / kPieces;
            stroke.points.push_back({from.x + direction * radius * std::sin(angle),
                                     from.y + radius - radius * std::cos(angle)});
        }
    }

    void finish(const std::vector<HomingStep>& steps, double first_y, double last_y) {
        const Point start{x_of(steps.front().from), first_y};
        const Point end{x_of(steps.back().event), last_y};
        drawing_.shapes.emplace_back(Disc{start, kDot, Ink::kTravel, Ink::kTravel});
        drawing_.shapes.emplace_back(Disc{end, kHomeCircleRadius, Ink::kHome, Ink::kPaper});
        words({.x = end.x - 2 * kHomeCircleRadius,
               .y = end.y - kHomeCircleRadius,
               .width = 4 * kHomeCircleRadius,
               .height = 2 * kHomeCircleRadius,
               .text = std::to_string(travel_.method),
               .ink = Ink::kHome,
               .size = travel_.method < 0 ? 8.5 : 10.5,
               .bold = true,
               .align = Align::kCentre});
        drawing_.start_dots.push_back(start);
        drawing_.home_circles.push_back(end);
    }

    void track(const Track& shown, double top) {
        const double low = top + track_ - 6;
        const double high = low - kLevel;
        words({.x = kMargin,
               .y = high - 3,
               .width = kAxisLeft - kMargin - 8,
               .height = kLevel + 6,
               .text = std::string(shown.name.in(language_)),
               .ink = shown.ink,
               .size = kTextSize});
        const double left = x_of(axis_.negative_end);
        const double right = x_of(axis_.positive_end);
        std::vector<Point> points{{left, low}};
        const auto step_up = [&](double from, double to) {
            if (from > left)
                points.insert(points.end(), {{from, low}, {from, high}});
            else
                points.back() = {left, high};
            points.push_back({to, high});
            if (to < right) points.push_back({to, low});
        };
        if (shown.on != nullptr)
            step_up(x_of(shown.on->first), x_of(shown.on->last));
        else if (shown.pulses)
            for (double at = axis_.first_index; at < axis_.positive_end; at += axis_.index_pitch) {
                if (at > axis_.negative_end) step_up(x_of(at) - kPulse / 2, x_of(at) + kPulse / 2);
            }
        else
            current(points, low, high);
        if (points.back().x < right) points.push_back({right, low});
        line({{left, low}, {right, low}}, Ink::kGuide, 1);
        line(std::move(points), shown.ink, 1.8);
    }

    // Low while the axis moves, up to the homing current at the stop.
    void current(std::vector<Point>& points, double low, double high) {
        const double left = x_of(axis_.negative_end);
        const double right = x_of(axis_.positive_end);
        const double running = low - 3;
        if (starts_.front().front().leg.direction > 0)
            points = {{left, running}, {right - kRamp, running}, {right, high}};
        else
            points = {{left, high}, {left + kRamp, running}, {right, running}};
    }

    const HomingTravel& travel_;
    HomingAxis axis_;
    base::Language language_;
    std::vector<std::vector<HomingStep>> starts_;
    std::vector<Track> tracks_;
    double rail_y_ = 0;
    double lanes_top_ = 0;
    double lane_ = kLargestLane;
    double tracks_top_ = 0;
    double track_ = kLargestTrack;
    Drawing drawing_;
};

}  // namespace

Drawing draw_homing(const HomingTravel& travel, base::Language language) {
    return Drawer(travel, language).draw();
}

}  // namespace servo::data
