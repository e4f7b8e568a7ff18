#include "tools/position_table_findings.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/number.h"
#include "tools/position_table_register.h"
#include "tools/position_table_transfer.h"

namespace servo::tools {

namespace {

using enum Severity;

constexpr std::uint16_t kUnusedBits = 0x00E0;
constexpr int kBothIndexes = 255;
constexpr double kCountRange = 65535;
constexpr double kWideLow = -2147483648.0;
constexpr double kWideHigh = 2147483647.0;

class Finder {
  public:
    Finder(const PositionGrids& grids, const PositionProgram& program, const Flow& flow,
           double resolution)
        : grids_(grids), program_(program), flow_(flow), resolution_(resolution) {}

    std::vector<Finding> run() {
        for (int index = 0; index < kPositionSteps; ++index) {
            look_at_texts(index);
            if (!flow_.step(index).drawn) continue;
            look_at_links(index);
            if (program_.step(index).empty) continue;
            look_at_conditions(index);
            look_at_motion(index);
        }
        for (int index = 0; index < kPositionRamps; ++index)
            look_at_ramp(index);
        look_at_loops();
        std::ranges::stable_sort(found_, {}, [](const Finding& finding) {
            return static_cast<int>(finding.severity) * kPositionSteps * 2 + finding.step;
        });
        return std::move(found_);
    }

  private:
    void add(Severity severity, int step, base::Text pattern, std::string first = {},
             std::string second = {}) {
        found_.push_back({severity, step, -1, pattern, std::move(first), std::move(second)});
    }

    void look_at_links(int index) {
        const PositionStep& step = program_.step(index);
        const FlowStep& flow = flow_.step(index);
        if (index == flow_.start && step.empty) {
            add(kFault, index,
                {"起始段为空：没有动作。", "the start step is empty: nothing moves."});
            return;
        }
        if (step.empty) return;
        if (!flow.reached)
            add(kWarning, index, {"从第 {0} 段开始永远执行不到。", "never reached from step {0}."},
                std::to_string(flow_.start));
        const std::string next = std::to_string(step.next());
        switch (flow.link) {
            case FlowLink::kStops:
                if (step.next() != 0)
                    add(kWarning, index,
                        {"下一段为 {0}，但位 8 为 0：位置表在此停止。",
                         "next index {0} is set, but bit 8 is 0: the table stops here."},
                        next);
                else if (flow.reached)
                    add(kNote, index, {"位置表在此停止。", "the table stops here."});
                break;
            case FlowLink::kToNothing:
                add(kFault, index,
                    {"转到第 {0} 段，该段为空。", "goes on to step {0}, which is empty."}, next);
                break;
            case FlowLink::kToItself:
                if (step.start() == StepStart::kInterrupt && step.has_condition())
                    add(kFault, index,
                        {"中断自身：条件满足期间不断重新开始。",
                         "interrupts itself: it begins anew as long as its condition holds."});
                else
                    add(kWarning, index,
                        {"转到自身：无休止地重复。", "goes on to itself: it repeats without end."});
                break;
            case FlowLink::kGoesOn:
                break;
        }
    }

    void look_at_conditions(int index) {
        const PositionStep& step = program_.step(index);
        switch (step.start()) {
            case StepStart::kIgnore:
                if (step.has_condition())
                    add(kNote, index,
                        {"选择了条件，但触发方式为“忽略”。",
                         "has a condition, but the start condition is Ignore."});
                break;
            case StepStart::kWait:
                if (!step.has_condition())
                    add(kWarning, index,
                        {"等待条件，但没有选择条件。", "waits, but no condition is chosen."});
                break;
            case StepStart::kInterrupt:
                if (!step.has_condition())
                    add(kWarning, index,
                        {"由条件中断触发，但没有选择条件。",
                         "starts by interrupt, but no condition is chosen."});
                break;
            case StepStart::kUndefined:
                add(kFault, index,
                    {"位 14-15 为 3，未定义。", "bits 14 and 15 are 3: not defined."});
                break;
        }
        if (step.mode() == StepMode::kUndefined)
            add(kFault, index, {"位 12-13 为 3，未定义。", "bits 12 and 13 are 3: not defined."});
        if ((step.control & kUnusedBits) != 0)
            add(kNote, index,
                {"位 5 至 7 已置位，本程序不知道其含义。",
                 "bits 5 to 7 are set; what they do is not known here."});
    }

    // A step needs a speed and ramps, also where there is no way to go.
    void look_at_motion(int index) {
        const PositionStep& step = program_.step(index);
        if (step.speed == 0)
            add(kFault, index, {"速度为 0：该段不能执行。", "speed 0: the step cannot run."});
        if (step.speed < 0)
            add(kWarning, index,
                {"速度为负；方向由目标决定。",
                 "the speed is negative; the direction follows from the target."});
        check_ramp(index, step.acceleration, &PositionRamp::acceleration,
                   {"加速度索引 {0} 不存在。", "Acc idx {0} does not exist."},
                   {"加速度表第 {0} 项不大于 0。", "acceleration {0} is not above 0."});
        check_ramp(index, step.deceleration, &PositionRamp::deceleration,
                   {"减速度索引 {0} 不存在。", "Dec idx {0} does not exist."},
                   {"减速度表第 {0} 项不大于 0。", "deceleration {0} is not above 0."});
    }

    void check_ramp(int index, int at, double PositionRamp::*value, base::Text missing,
                    base::Text zero) {
        const PositionRamp* ramp = program_.ramp(at);
        if (ramp == nullptr)
            add(kFault, index, missing, std::to_string(at));
        else if (!(ramp->*value > 0))
            add(kFault, index, zero, std::to_string(at));
    }

    // What the drive gets, where that is not what the cell says.
    void look_at_texts(int index) {
        using namespace step_column;
        for (const int column : {kPos, kSpeed, kDelay, kAccIdx, kDecIdx, kLoops})
            check_number(index, grids_.MSHFlexGrid2.at(index + 1, column),
                         grids_.MSHFlexGrid2.at(0, column));
        check_width(index, kPos, 1, kWideLow, kWideHigh);
        check_width(index, kDelay, 1, 0, kCountRange);
        check_width(index, kLoops, 1, 0, kCountRange);
        if (resolution_ != 0)
            check_width(index, kSpeed, speed_to_drive(1, resolution_), kWideLow, kWideHigh);
        const double indexes =
            base::leading_number(grids_.MSHFlexGrid2.at(index + 1, kAccIdx)) * 16 +
            base::leading_number(grids_.MSHFlexGrid2.at(index + 1, kDecIdx));
        if (indexes < 0 || indexes > kBothIndexes)
            add(kFault, index,
                {"加减速索引放不进一个字节。", "Acc idx and Dec idx do not fit their byte."});
    }

    // Plain digits read back as they stand.
    static bool plain_number(std::string_view text) {
        if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
        const bool digits =
            std::ranges::all_of(text, [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
        return digits && !text.empty() && text != "." && std::ranges::count(text, '.') <= 1;
    }

    void check_number(int index, const std::string& text, const std::string& heading) {
        if (plain_number(text)) return;
        add(kWarning, index,
            {"{0} 不是数字，读作 {1}。", "{0} is no plain number and reads as {1}."}, heading,
            base::number_text(base::leading_number(text)));
    }

    void check_width(int index, int column, double factor, double low, double high) {
        const double value =
            base::leading_number(grids_.MSHFlexGrid2.at(index + 1, column)) * factor;
        // What rounds into the range fits.
        if (value >= low - 0.5 && value < high + 0.5) return;
        add(kFault, index, {"{0} 超出驱动器的范围。", "{0} is beyond what the drive can hold."},
            grids_.MSHFlexGrid2.at(0, column));
    }

    void look_at_ramp(int index) {
        if (resolution_ == 0) return;
        const PositionRamp& ramp = *program_.ramp(index);
        for (const double value : {ramp.acceleration, ramp.deceleration}) {
            if (std::fabs(ramp_to_drive(value, resolution_)) <= kWideHigh) continue;
            Finding finding{kFault,
                            -1,
                            index,
                            {"加减速表第 {0} 项超出驱动器的范围。",
                             "entry {0} of the ramps is beyond what the drive can hold."},
                            std::to_string(index),
                            {}};
            found_.push_back(std::move(finding));
        }
    }

    void look_at_loops() {
        for (const std::vector<int>& loop : flow_.loops) {
            std::string steps;
            for (const int step : loop)
                steps += std::to_string(step) + " → ";
            steps += std::to_string(loop.front());
            add(kNote, loop.front(), {"循环：{0}，没有终点。", "loop: {0}, without an end."},
                steps);
            look_at_travel(loop);
        }
        for (int index = 0; index < kPositionSteps; ++index)
            if (flow_.step(index).link == FlowLink::kToItself && !program_.step(index).empty)
                look_at_travel({index});
    }

    // A round that leads elsewhere leads out of the machine in the end.
    void look_at_travel(const std::vector<int>& loop) {
        double travel = 0;
        for (const int index : loop) {
            const PositionStep& step = program_.step(index);
            if (step.mode() == StepMode::kAbsolute || step.mode() == StepMode::kUndefined) return;
            travel += static_cast<double>(step.target) * std::max<int>(1, step.loops);
        }
        if (travel == 0) return;
        add(kWarning, loop.front(),
            {"每圈累计移动 {0} inc，位置会一直漂移。",
             "each round moves {0} inc further: the axis runs away."},
            base::format_whole(travel));
    }

    const PositionGrids& grids_;
    const PositionProgram& program_;
    const Flow& flow_;
    double resolution_;
    std::vector<Finding> found_;
};

}  // namespace

std::vector<Finding> find_faults(const PositionGrids& grids, const PositionProgram& program,
                                 const Flow& flow, double resolution) {
    return Finder(grids, program, flow, resolution).run();
}

std::string finding_text(const Finding& finding, base::Language language) {
    std::string what =
        fmt::format(fmt::runtime(finding.pattern.in(language)), finding.first, finding.second);
    if (finding.step < 0) return what;
    const base::Text subject{"第 {} 段：{}", "Step {}: {}"};
    return fmt::format(fmt::runtime(subject.in(language)), finding.step, what);
}

std::string_view severity_word(Severity severity, base::Language language) {
    switch (severity) {
        case Severity::kFault:
            return base::Text{"✖ 错误", "✖ Fault"}.in(language);
        case Severity::kWarning:
            return base::Text{"▲ 警告", "▲ Warning"}.in(language);
        case Severity::kNote:
            return base::Text{"● 说明", "● Note"}.in(language);
    }
    return {};
}

}  // namespace servo::tools
