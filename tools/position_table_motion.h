// Addition: the motion that a table describes, position and speed over time.
//
// Taken for granted: conditions hold, so nothing waits and nothing is interrupted; the axis follows
// its demand exactly, so RN and RA are the same; every step ends at rest; a delay comes behind each
// repetition of a step; the motion starts at rest at position 0.
#pragma once

#include <span>
#include <vector>

#include "base/language.h"
#include "tools/position_table_steps.h"

namespace servo::tools {

// A step that runs is tried no longer than this: repetitions and rounds included.
inline constexpr int kMostVisits = 300;
// A loop is shown until each of its steps has begun that often.
inline constexpr int kShownRounds = 2;

struct MotionPart {
    double begin = 0;  // s
    double duration = 0;
    double position = 0;      // inc, at the begin
    double speed = 0;         // inc/s, at the begin
    double acceleration = 0;  // inc/s^2
};

// One run of one step: repetitions of a step are runs of their own.
struct MotionVisit {
    int step = 0;
    double begin = 0;
    double motion_end = 0;  // the delay begins
    double end = 0;
    double from = 0;  // inc
    double to = 0;
};

enum class MotionEnd : std::uint8_t {
    kStops,      // a step does not go on
    kRepeats,    // a loop: shown for some rounds
    kLimit,      // kMostVisits
    kEmptyStep,  // a step that is empty
    kCannotRun,  // no speed, no acceleration or no deceleration
    kUndefined,  // a mode that does not exist
};

struct Motion {
    std::vector<MotionPart> parts;  // back to back
    std::vector<MotionVisit> visits;
    MotionEnd end = MotionEnd::kStops;
    int end_step = 0;
    double duration = 0;

    double position_at(double time) const;  // inc; held before the begin and behind the end
    double speed_at(double time) const;     // inc/s
    int step_at(double time) const;         // -1 without one
};

// `resolution` in encoder increments per turn, above 0.
Motion simulate_motion(const PositionProgram& program, int start, double resolution);

// "The table repeats; two rounds are shown."
std::string motion_end_text(const Motion& motion, base::Language language);
// What is taken for granted, one sentence each.
std::span<const base::Text> motion_assumptions();

}  // namespace servo::tools
