#include "tools/position_table_flow_picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/number.h"

namespace servo::tools {

namespace {

constexpr double kLane = 5;  // between two arrows that lead back
constexpr int kLanes = 4;
constexpr double kEntry = 0.3;  // where an arrow from below meets the box, of its width
constexpr int kDecimals = 2;

constexpr std::array<std::string_view, 4> kModes{"A", "RN", "RA", "?"};

std::string target_text(const PositionStep& step) {
    const bool absolute = step.mode() == StepMode::kAbsolute;
    if (absolute) return fmt::format("→ {} inc", step.target);
    return fmt::format("{}{} inc", step.target < 0 ? "" : "+", step.target);
}

std::string extras_text(const PositionStep& step, base::Language language) {
    std::string text;
    const auto append = [&text](const std::string& part) {
        if (part.empty()) return;
        if (!text.empty()) text += " · ";
        text += part;
    };
    if (step.loops > 1) append(fmt::format("×{}", step.loops));
    append(condition_text(step, language));
    return text;
}

std::string tag_text(const FlowBox& box, FlowLink link, base::Language language) {
    if (box.empty) return std::string(base::Text{"空", "empty"}.in(language));
    if (link == FlowLink::kToItself)
        return std::string(base::Text{"自身循环", "to itself"}.in(language));
    if (box.start) return std::string(base::Text{"起始", "start"}.in(language));
    if (box.stops) return std::string(base::Text{"停止", "stops"}.in(language));
    return {};
}

class Layout {
  public:
    Layout(const PositionProgram& program, const Flow& flow, double width, const FlowSizes& sizes,
           base::Language language)
        : program_(program), flow_(flow), sizes_(sizes), language_(language) {
        const double room = width - 2 * sizes.margin + sizes.gap_x;
        columns_ = std::max(1, static_cast<int>(room / (sizes.box_width + sizes.gap_x)));
    }

    FlowPicture run() {
        y_ = sizes_.gap_y / 2;
        for (std::size_t chain = 0; chain < flow_.chains.size(); ++chain) {
            if (chain == 1) add_heading();
            place(flow_.chains[chain]);
        }
        for (const FlowChain& chain : flow_.chains)
            connect(chain);
        picture_.height = y_;
        for (const FlowBox& box : picture_.boxes)
            picture_.width = std::max(picture_.width, box.rect.right() + sizes_.margin);
        return std::move(picture_);
    }

  private:
    void add_heading() {
        const base::Text text{"从第 {} 段执行不到：", "Never reached from step {}:"};
        y_ += sizes_.heading;
        picture_.headings.push_back({{sizes_.margin, y_ - sizes_.heading / 3},
                                     fmt::format(fmt::runtime(text.in(language_)), flow_.start)});
    }

    void place(const FlowChain& chain) {
        int column = 0;
        for (const int step : chain.steps) {
            if (column == columns_) {
                column = 0;
                y_ += sizes_.box_height + sizes_.gap_y;
            }
            add_box(step, column++);
        }
        y_ += sizes_.box_height + sizes_.gap_y;
    }

    void add_box(int index, int column) {
        const PositionStep& step = program_.step(index);
        const FlowStep& flow = flow_.step(index);
        FlowBox box;
        box.step = index;
        box.rect = {sizes_.margin + column * (sizes_.box_width + sizes_.gap_x), y_,
                    sizes_.box_width, sizes_.box_height};
        box.start = index == flow_.start;
        box.reached = flow.reached;
        box.empty = step.empty;
        box.stops = flow.link == FlowLink::kStops;
        box.in_loop = flow.in_loop;
        box.lines[0] = fmt::format("{}", index);
        if (!step.empty) {
            box.lines[0] += fmt::format("  {}", kModes[static_cast<std::size_t>(step.mode())]);
            box.lines[1] = target_text(step);
            box.lines[2] = base::format_up_to(step.speed, kDecimals) + " rpm";
            if (step.delay > 0) box.lines[2] += fmt::format(" · {} ms", step.delay);
            box.lines[3] = extras_text(step, language_);
        }
        box.tag = tag_text(box, flow.link, language_);
        box_of_.at(static_cast<std::size_t>(index)) = static_cast<int>(picture_.boxes.size());
        picture_.boxes.push_back(std::move(box));
    }

    const PictureRect& rect_of(int step) const {
        const int box = box_of_.at(static_cast<std::size_t>(step));
        return picture_.boxes.at(static_cast<std::size_t>(box)).rect;
    }

    void connect(const FlowChain& chain) {
        for (std::size_t i = 0; i + 1 < chain.steps.size(); ++i)
            add_arrow(chain.steps[i], chain.steps[i + 1], ArrowKind::kNext,
                      next_points(rect_of(chain.steps[i]), rect_of(chain.steps[i + 1])));
        if (chain.leads_to < 0) return;
        const int last = chain.steps.back();
        if (last == chain.leads_to)
            add_arrow(last, last, ArrowKind::kItself, itself_points(rect_of(last)));
        else
            add_arrow(last, chain.leads_to, ArrowKind::kBack,
                      back_points(rect_of(last), rect_of(chain.leads_to)));
    }

    void add_arrow(int from, int to, ArrowKind kind, std::vector<PicturePoint> points) {
        const bool interrupts = program_.step(to).start() == StepStart::kInterrupt;
        picture_.arrows.push_back({from, to, kind, interrupts, std::move(points)});
    }

    std::vector<PicturePoint> next_points(const PictureRect& from, const PictureRect& to) const {
        if (from.y == to.y) return {{from.right(), from.middle_y()}, {to.x, to.middle_y()}};
        // To the begin of the next row, through the gap between the two.
        const double gap = from.bottom() + sizes_.gap_y / 2;
        const double right = from.right() + sizes_.gap_x / 2;
        const double left = to.x - sizes_.gap_x / 2;
        return {
            {from.right(), from.middle_y()}, {right, from.middle_y()}, {right, gap}, {left, gap},
            {left, to.middle_y()},           {to.x, to.middle_y()}};
    }

    std::vector<PicturePoint> back_points(const PictureRect& from, const PictureRect& to) {
        const double lane = kLane * (backs_++ % kLanes);
        const double out = from.x + from.width * (1 - kEntry);
        const double in = to.x + to.width * kEntry + lane;
        const double below_from = from.bottom() + sizes_.gap_y / 4 + lane;
        if (from.y == to.y)
            return {{out, from.bottom()}, {out, below_from}, {in, below_from}, {in, to.bottom()}};
        const double margin = sizes_.margin / 2 - lane;
        const double below_to = to.bottom() + sizes_.gap_y / 4 + lane;
        return {{out, from.bottom()}, {out, below_from}, {margin, below_from},
                {margin, below_to},   {in, below_to},    {in, to.bottom()}};
    }

    std::vector<PicturePoint> itself_points(const PictureRect& box) const {
        const double above = box.y - sizes_.gap_y / 3;
        const double right = box.right() - box.width * 0.08;
        const double left = box.right() - box.width * 0.28;
        return {{right, box.y}, {right, above}, {left, above}, {left, box.y}};
    }

    const PositionProgram& program_;
    const Flow& flow_;
    const FlowSizes& sizes_;
    base::Language language_;
    int columns_ = 1;
    double y_ = 0;
    int backs_ = 0;
    std::array<int, kPositionSteps> box_of_{};
    FlowPicture picture_;
};

}  // namespace

std::string condition_text(const PositionStep& step, base::Language language) {
    const bool waits = step.start() == StepStart::kWait;
    if (!waits && step.start() != StepStart::kInterrupt) return {};
    std::string text(waits ? base::Text{"等待", "wait"}.in(language)
                           : base::Text{"中断", "interrupt"}.in(language));
    if (step.condition0()) text += " C0";
    if (step.condition0() && step.condition1())
        text += step.both_conditions() ? base::Text{" 与", " and"}.in(language)
                                       : base::Text{" 或", " or"}.in(language);
    if (step.condition1()) text += " C1";
    if (!step.has_condition()) text += " ?";
    return text;
}

FlowPicture flow_picture(const PositionProgram& program, const Flow& flow, double width,
                         const FlowSizes& sizes, base::Language language) {
    return Layout(program, flow, width, sizes, language).run();
}

int FlowPicture::step_at(PicturePoint at) const {
    const auto found =
        std::ranges::find_if(boxes, [at](const FlowBox& box) { return box.rect.contains(at); });
    return found == boxes.end() ? -1 : found->step;
}

std::string flow_summary(const Flow& flow, base::Language language) {
    if (flow.chains.empty()) return {};
    const FlowChain& main = flow.chains.front();
    std::string text;
    for (const int step : main.steps)
        text += (text.empty() ? "" : " → ") + std::to_string(step);
    if (main.leads_to < 0) {
        text += base::Text{"，停止", ", stop"}.in(language);
    } else {
        const base::Text again{"，回到 {}", ", back to {}"};
        text += fmt::format(fmt::runtime(again.in(language)), main.leads_to);
    }
    return text;
}

}  // namespace servo::tools
