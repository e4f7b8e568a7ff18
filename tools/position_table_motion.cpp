#include "tools/position_table_motion.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>

namespace servo::tools {

namespace {

constexpr double kSecondsPerMinute = 60.0;
constexpr double kMillisecondsPerSecond = 1000.0;
constexpr double kLongestMove = 1e7;  // s; what takes longer never arrives

constexpr std::array kAssumptions{
    base::Text{"条件视为总是满足，因此没有等待，也没有中断。",
               "Conditions are taken as met: nothing waits, nothing is interrupted."},
    base::Text{"轴无误差地跟随给定，因此 RN 与 RA 相同；每一段结束时静止。",
               "The axis follows its demand exactly, so RN and RA are the same; every step ends at "
               "rest."},
    base::Text{"从位置 0 静止开始；循环次数 0 和 1 都是执行一次；每次执行后都有延时。",
               "It starts at rest at position 0; loops of 0 and 1 are both once; the delay comes "
               "behind each run."},
    base::Text{"最多显示循环的两圈和 300 次执行。",
               "Up to two rounds of a loop and 300 runs of steps are shown."},
};

class Simulation {
  public:
    Simulation(const PositionProgram& program, double resolution)
        : program_(program), resolution_(resolution) {}

    Motion run(int start) {
        int index = start;
        while (enter(index))
            index = program_.step(index).next();
        motion_.duration = time_;
        return std::move(motion_);
    }

  private:
    bool stop(MotionEnd end, int step) {
        motion_.end = end;
        motion_.end_step = step;
        return false;
    }

    // All runs of a step. False when the motion ends with it.
    bool enter(int index) {
        const PositionStep& step = program_.step(index);
        if (step.empty) return stop(MotionEnd::kEmptyStep, index);
        int& entered = entered_.at(static_cast<std::size_t>(index));
        if (entered == kShownRounds) return stop(MotionEnd::kRepeats, index);
        ++entered;
        const int runs = std::max<int>(1, step.loops);
        for (int run = 0; run < runs; ++run) {
            if (motion_.visits.size() >= kMostVisits) return stop(MotionEnd::kLimit, index);
            if (step.mode() == StepMode::kUndefined) return stop(MotionEnd::kUndefined, index);
            if (!visit(index)) return stop(MotionEnd::kCannotRun, index);
        }
        return step.goes_on() || stop(MotionEnd::kStops, index);
    }

    bool visit(int index) {
        const PositionStep& step = program_.step(index);
        const double target =
            step.mode() == StepMode::kAbsolute ? step.target : position_ + step.target;
        MotionVisit visit{.step = index, .begin = time_, .from = position_, .to = target};
        if (!move(step, target)) return false;
        visit.motion_end = time_;
        if (step.delay > 0) add(step.delay / kMillisecondsPerSecond, 0, 0);
        visit.end = time_;
        motion_.visits.push_back(visit);
        return true;
    }

    bool move(const PositionStep& step, double target) {
        const double distance = std::fabs(target - position_);
        const PositionRamp* up = program_.ramp(step.acceleration);
        const PositionRamp* down = program_.ramp(step.deceleration);
        if (up == nullptr || down == nullptr) return false;
        const double top = std::fabs(step.speed) / kSecondsPerMinute * resolution_;
        const double rise = up->acceleration * resolution_;
        const double fall = down->deceleration * resolution_;
        if (!(top > 0) || !(rise > 0) || !(fall > 0)) return false;
        if (distance == 0) return true;
        // Short distances never see the top speed.
        const double peak = std::min(top, std::sqrt(2 * distance * rise * fall / (rise + fall)));
        const double ramps = peak * peak / 2 * (1 / rise + 1 / fall);
        const double sign = target > position_ ? 1 : -1;
        if (!(peak / rise + peak / fall + distance / peak < kLongestMove)) return false;
        add(peak / rise, 0, sign * rise);
        if (const double flat = distance - ramps; flat > 0) add(flat / peak, sign * peak, 0);
        add(peak / fall, sign * peak, -sign * fall);
        position_ = target;
        return true;
    }

    void add(double duration, double speed, double acceleration) {
        double position = position_;
        if (!motion_.parts.empty() && speed != 0) {
            const MotionPart& before = motion_.parts.back();
            position = before.position + before.speed * before.duration +
                       before.acceleration * before.duration * before.duration / 2;
        }
        motion_.parts.push_back({.begin = time_,
                                 .duration = duration,
                                 .position = position,
                                 .speed = speed,
                                 .acceleration = acceleration});
        time_ += duration;
    }

    const PositionProgram& program_;
    double resolution_;
    double time_ = 0;
    double position_ = 0;
    std::array<int, kPositionSteps> entered_{};
    Motion motion_;
};

const MotionPart* part_at(const Motion& motion, double time) {
    const auto behind = std::ranges::upper_bound(motion.parts, time, {}, &MotionPart::begin);
    return behind == motion.parts.begin() ? nullptr : &*std::prev(behind);
}

}  // namespace

Motion simulate_motion(const PositionProgram& program, int start, double resolution) {
    return Simulation(program, resolution).run(std::clamp(start, 0, kPositionSteps - 1));
}

double Motion::position_at(double time) const {
    const MotionPart* part = part_at(*this, time);
    if (part == nullptr) return 0;
    const double since = std::min(time - part->begin, part->duration);
    return part->position + part->speed * since + part->acceleration * since * since / 2;
}

double Motion::speed_at(double time) const {
    const MotionPart* part = part_at(*this, time);
    if (part == nullptr || time > part->begin + part->duration) return 0;
    return part->speed + part->acceleration * (time - part->begin);
}

int Motion::step_at(double time) const {
    const auto behind = std::ranges::upper_bound(visits, time, {}, &MotionVisit::begin);
    return behind == visits.begin() ? -1 : std::prev(behind)->step;
}

std::string motion_end_text(const Motion& motion, base::Language language) {
    const auto say = [&](base::Text text) {
        return fmt::format(fmt::runtime(text.in(language)), motion.end_step);
    };
    switch (motion.end) {
        case MotionEnd::kStops:
            return say({"在第 {} 段停止。", "Stops behind step {}."});
        case MotionEnd::kRepeats:
            return say(
                {"从第 {} 段起重复，显示两圈。", "Repeats from step {}; two rounds are shown."});
        case MotionEnd::kLimit:
            return say({"在第 {} 段达到显示上限（300 次执行）。",
                        "Shown up to step {}: 300 runs of steps are the limit."});
        case MotionEnd::kEmptyStep:
            return say({"到达第 {} 段，该段为空。", "Comes to step {}, which is empty."});
        case MotionEnd::kCannotRun:
            return say({"第 {} 段没有速度、加速度或减速度，不能执行。",
                        "Step {} has no speed, acceleration or deceleration: it cannot run."});
        case MotionEnd::kUndefined:
            return say({"第 {} 段的模式未定义。", "The mode of step {} is not defined."});
    }
    return {};
}

std::span<const base::Text> motion_assumptions() {
    return kAssumptions;
}

}  // namespace servo::tools
