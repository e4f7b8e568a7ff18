// Motion: homing. A run has the motor for itself; what its end means for the coordinates is decided
// here.
#include <algorithm>
#include <cmath>

#include "sim/motion.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

constexpr std::int64_t kStopAtTrigger = 1;  // of the offset modes

// Turns behind the edge in which no index counts.
constexpr double kBlindUnit = 0.25;

}  // namespace

HomingSignals Motion::homing_signals() const {
    // Without the filter, which would be late by a way that depends on the speed.
    HomingSignals signals;
    signals.negative_limit = io_.inputs.active_at_once(InputFunction::kNegativeLimit);
    signals.positive_limit = io_.inputs.active_at_once(InputFunction::kPositiveLimit);
    signals.home = io_.inputs.active_at_once(InputFunction::kHomeSignal);
    return signals;
}

HomingPlan Motion::homing_plan(const HomingMethod& method) const {
    const HomingObjects& o = parameters_;
    const auto plain = [](const Object& object) { return static_cast<double>(object.value); };
    HomingPlan plan;
    plan.method = method;
    const double most = targets_.speed_profile.speed;
    plan.search_speed = std::min(plain(o.homing_speed) * kCountsPerSpeed, most);
    plan.zero_speed = std::min(plain(o.homing_zero_speed) * kCountsPerSpeed, most);
    plan.acceleration = std::max(plain(o.homing_acceleration), 1.0) * kCountsPerAcceleration;
    plan.blind = plain(o.homing_blind) * kBlindUnit * motor_.resolution;
    plan.travel = plain(o.homing_travel);
    plan.stop_steps = std::max<std::int64_t>(o.homing_stop_time.value, 1) * kStepsPerMillisecond;
    plan.most_steps = o.homing_timeout.value * 1000 * kStepsPerMillisecond;
    plan.window = plain(parameters_.position_window);
    plan.window_steps = parameters_.position_window_time.value * kStepsPerMillisecond;
    return plan;
}

void Motion::start_homing() {
    if (homing_.active() || scan_.active() || stop_ || halted_) return;
    homed_ = false;
    homing_failed_ = false;
    const auto method = homing_method(parameters_.homing_method.value);
    if (!method) {
        homing_failed_ = true;
    } else if (method->here) {
        homed_ = true;
        shift_position(home_coordinate() - axis_.position());
    } else {
        io_.table.drop();
        homing_.start(homing_plan(*method), axis_, homing_signals());
    }
    configure();
}

std::int64_t Motion::home_coordinate() const {
    const auto offset = static_cast<double>(parameters_.home_offset.value);
    return std::llround(parameters_.position_sense() * offset);
}

// The current of a run has a limit of its own; 0 is none.
void Motion::limit_homing(AxisSetup& setup) const {
    const auto raw = static_cast<double>(parameters_.homing_current.value);
    if (!homing_.active() || raw <= 0.0) return;
    const double most = raw / kCurrentFullScale * motor_.peak_current;
    setup.current_high = std::min(setup.current_high, most);
    setup.current_low = std::max(setup.current_low, -most);
}

SetPoint Motion::homing_step() {
    if (halted_) homing_.interrupt();
    const SetPoint out = homing_.step(axis_, homing_signals());
    if (const auto home = homing_.take_home()) {
        homed_ = true;
        shift_position(home_coordinate() - std::llround(*home));
        const bool stay = parameters_.home_offset_mode.value == kStopAtTrigger;
        homing_.run_to(stay ? static_cast<double>(home_coordinate()) : 0.0);
    }
    if (homing_.active()) return out;
    finish_homing();
    modes_.start(modes_.mode(), axis_);
    // Where it was sent, also if the shaft is still a count beside it.
    if (homed_) modes_.hold_at(homing_.target());
    return modes_.step(axis_);
}

void Motion::finish_homing() {
    homing_failed_ = homing_.failed();
    parameters_.homing_time.value =
        std::min(homing_.steps() / kStepsPerMillisecond, parameters_.homing_time.max);
    configure();
}

// Somebody else takes the motor as it turns.
void Motion::end_homing(bool fault) {
    if (!homing_.active()) return;
    homing_.leave();
    finish_homing();
    if (fault && !homed_) homing_failed_ = true;
    if (powered(state_)) modes_.start(modes_.mode(), axis_);
}

void Motion::shift_position(std::int64_t counts) {
    modes_.shift(static_cast<double>(counts));
    scan_.shift(static_cast<double>(counts));
    homing_.shift(static_cast<double>(counts));
    io_.table.shift(static_cast<double>(counts));
    axis_.shift_position(counts);
}

void Motion::clear_home() {
    if (homing_.active()) return;
    homed_ = false;
    homing_failed_ = false;
    configure();
}

void Motion::show_homing() {
    show(ids::kHomingState, Type::kUint8, [](const Motion& m) {
        if (m.homing_.active() && !m.homing_.failed()) return 1.0;
        if (m.homing_failed_ || m.homing_.active()) return 3.0;
        return m.homed_ ? 2.0 : 0.0;
    });
    show(ids::kHomingStep, Type::kUint8,
         [](const Motion& m) { return static_cast<double>(m.homing_.shown()); });
    show(ids::kHomingIndex, Type::kUint32,
         [](const Motion& m) { return m.homing_.index_distance(); });
}

}  // namespace servo::sim
