// Addition: where the boxes and arrows of the table's flow stand. Chains run from left to right,
// row below row; an arrow that leads back keeps to the gaps between the rows and to the left
// margin, so no box is crossed. What is told by a colour is also told by a shape and by text.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "base/language.h"
#include "tools/position_table_flow.h"

namespace servo::tools {

struct PicturePoint {
    double x = 0;
    double y = 0;
    bool operator==(const PicturePoint&) const = default;
};
struct PictureRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double right() const { return x + width; }
    double bottom() const { return y + height; }
    double middle_x() const { return x + width / 2; }
    double middle_y() const { return y + height / 2; }
    bool contains(PicturePoint at) const {
        return at.x >= x && at.x < right() && at.y >= y && at.y < bottom();
    }
};

// Follows the font.
struct FlowSizes {
    double box_width = 132;
    double box_height = 78;
    double gap_x = 26;
    double gap_y = 34;
    double margin = 36;
    double heading = 26;
};

inline constexpr std::size_t kFlowLines = 4;

struct FlowBox {
    int step = 0;
    PictureRect rect;
    // Step and mode; target; speed and delay; loops and condition.
    std::array<std::string, kFlowLines> lines;
    std::string tag;  // "start", "stops here", "empty", "to itself"; may be empty
    bool start = false;
    bool reached = false;
    bool empty = false;
    bool stops = false;
    bool in_loop = false;
};

enum class ArrowKind : std::uint8_t {
    kNext,  // to the next box of the chain
    kBack,  // to a box that stands already: closes a loop, or joins another chain
    kItself,
};
struct FlowArrow {
    int from = 0;
    int to = 0;
    ArrowKind kind = ArrowKind::kNext;
    bool interrupts = false;           // the step it leads to may begin before this one has ended
    std::vector<PicturePoint> points;  // horizontal and vertical lines; the head at the last
};

struct FlowHeading {
    PicturePoint at;  // its lower left corner
    std::string text;
};

struct FlowPicture {
    std::vector<FlowBox> boxes;
    std::vector<FlowArrow> arrows;
    std::vector<FlowHeading> headings;
    double width = 0;
    double height = 0;

    int step_at(PicturePoint at) const;  // -1 beside the boxes
};

// `width` is what there is; a picture is at least one box wide.
FlowPicture flow_picture(const PositionProgram& program, const Flow& flow, double width,
                         const FlowSizes& sizes, base::Language language);

// "wait C0 and C1"; empty when conditions are not looked at.
std::string condition_text(const PositionStep& step, base::Language language);
// The whole flow in words, for a screen reader: "0, 1, 2, then 0 again".
std::string flow_summary(const Flow& flow, base::Language language);

}  // namespace servo::tools
