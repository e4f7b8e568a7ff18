// Motion: what the digital inputs do.
#include <algorithm>
#include <cmath>
#include <utility>

#include "sim/motion.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

using F = InputFunction;

// What a multifunction input can do; the other numbers do nothing here.
constexpr std::int64_t kMultiClearPosition = 1;
constexpr std::int64_t kMultiHalt = 2;
constexpr std::int64_t kMultiCapture = 5;
constexpr std::int64_t kMultiClearHome = 6;

constexpr std::int64_t kLimitFaults = 1;  // of a limit's actions
constexpr std::int64_t kLimitIgnored = 2;

constexpr std::int64_t kStartsMove = 0;  // of the styles of "activate command"
constexpr std::int64_t kStartsDinPosition = 1;

constexpr std::int64_t kByInputOnly = 1;  // of the enable's sources
constexpr double kAtOnce = 1e12;          // counts/s2

F multi_input(std::size_t number) {
    constexpr std::array kInputs{F::kMultifunction0, F::kMultifunction1, F::kMultifunction2};
    return kInputs[number];
}

F fast_input(std::size_t number) {
    return number == 0 ? F::kFastCapture1 : F::kFastCapture2;
}

}  // namespace

void Motion::power_up_io() {
    io_.inputs.power_up(step_);
    io_.speeds.index.set(io_.inputs);
    io_.positions.index.set(io_.inputs);
    io_.positions.waits = false;
    io_.motor_error_since = -1;
    io_.outputs.power_up();
    io_.brake.power_up();
    io_.table.power_up();
    io_.reached_until = step_;
    io_.index_until = step_;
    io_.reached_before = false;
    io_.turns_seen = axis_.plant().turns();
    for (std::size_t i = 0; i < io_.fast_seen.size(); ++i)
        io_.fast_seen[i] = io_.inputs.active_at_once(fast_input(i));
}

void Motion::act_on_inputs() {
    disturbed_ = true;
    configure();
    capture();
    if (io_.inputs.rises(F::kResetErrors)) reset_faults();
    if (io_.inputs.rises(F::kQuickStop)) command(Command::kQuickStop);
    act_on_enable();
    act_on_limit(F::kPositiveLimit, io_.does.positive_action, fault2::kPositiveLimit);
    act_on_limit(F::kNegativeLimit, io_.does.negative_action, fault2::kNegativeLimit);
    if (io_.inputs.rises(F::kModeSelect) || io_.inputs.falls(F::kModeSelect)) {
        const bool on = io_.inputs.active(F::kModeSelect);
        const Object& choice = on ? io_.does.mode_select1 : io_.does.mode_select0;
        if (mode_of(choice.value)) table_.store(parameters_.mode, choice.value);
    }
    for (std::size_t i = 0; i < io_.does.multi.size(); ++i) {
        if (io_.inputs.rises(multi_input(i))) act_on_multi(io_.does.multi[i]->value);
    }
    halted_ = halt_asked();
    if (io_.inputs.rises(F::kAbortTable)) abort_table();
    if (io_.inputs.rises(F::kStartTable)) start_table();
    if (io_.inputs.rises(F::kStartHoming)) home_by_input();
    if (io_.inputs.rises(F::kActivateCommand)) activate();
    look_at_indexes();
}

// Levels, once a millisecond.
void Motion::tend_inputs() {
    const bool level_reset = io_.does.reset_style.value == 1;
    if (level_reset && supervision_.faulty() && io_.inputs.active(F::kResetErrors)) reset_faults();
    if (io_.does.enable_style.value == 0 && io_.inputs.active(F::kEnable)) enable_by_input(false);
    if (!io_.inputs.active(F::kMotorError)) {
        io_.motor_error_since = -1;
    } else if (io_.motor_error_since < 0) {
        io_.motor_error_since = step_;
    }
    look_at_indexes();
    if (io_.positions.waits && modes_.arrived()) start_din_position();
}

bool Motion::motor_error() const {
    const std::int64_t wait = io_.does.motor_error_delay.value * kStepsPerMillisecond;
    return io_.motor_error_since >= 0 && step_ - io_.motor_error_since >= wait;
}

// Enabling and releasing.

bool Motion::enable_barred() const {
    return io_.inputs.active(F::kQuickStop);
}

bool Motion::bus_may(Command command) const {
    return command != Command::kEnableOperation || io_.does.enable_source.value != kByInputOnly ||
           io_.inputs.active(F::kEnable);
}

void Motion::act_on_enable() {
    if (io_.inputs.rises(F::kEnable)) enable_by_input(true);
    if (!io_.inputs.falls(F::kEnable) || io_.does.enable_source.value == 0) return;
    if (state_ == DriveState::kQuickStopActive) {
        command(Command::kDisableVoltage);
    } else if (state_ != DriveState::kSwitchOnDisabled) {
        command(Command::kShutdown);
    }
}

void Motion::enable_by_input(bool edge) {
    if (io_.does.enable_source.value == 0 || enable_barred()) return;
    if (supervision_.faulty()) return;
    if (state_ == DriveState::kSwitchOnDisabled) command(Command::kShutdown);
    const bool stops = state_ == DriveState::kQuickStopActive || stop_.has_value();
    // By level only a stop that is over may be followed by power; an edge calls one off like the
    // control word.
    if (stops && !edge) return;
    if (state_ != DriveState::kOperationEnabled || stop_) command(Command::kEnableOperation);
}

bool Motion::halt_asked() const {
    if ((control_word_ & control::kHalt) != 0) return true;
    for (std::size_t i = 0; i < io_.does.multi.size(); ++i) {
        const bool halts = io_.does.multi[i]->value == kMultiHalt;
        if (halts && io_.inputs.active(multi_input(i))) return true;
    }
    return false;
}

// Limits.

void Motion::act_on_limit(InputFunction limit, const Object& action, std::uint16_t fault) {
    if (action.value == kLimitFaults && io_.inputs.rises(limit) && powered(state_) &&
        modes_.mode() != Mode::kHoming && !homing_.active()) {
        raise(0, fault);
    }
}

SwitchLimits Motion::switch_limits() const {
    const auto stops = [&](InputFunction limit, const Object& action) {
        return action.value != kLimitIgnored && io_.inputs.active(limit);
    };
    SwitchLimits limits;
    limits.positive = stops(F::kPositiveLimit, io_.does.positive_action);
    limits.negative = stops(F::kNegativeLimit, io_.does.negative_action);
    limits.deceleration = std::max(
        1.0, static_cast<double>(io_.does.limit_deceleration.value) * kCountsPerAcceleration);
    return limits;
}

// What the inputs change of limits and targets.
void Motion::apply_inputs(AxisSetup& setup) {
    if (io_.inputs.active(F::kKviOff)) {
        setup.velocity_ki = 0.0;
        setup.integral_limit = 0.0;
    }
    if (io_.inputs.active(F::kMaxCurrentSwitch)) {
        const double most = static_cast<double>(io_.does.switched_max_current.value) /
                            kCurrentFullScale * motor_.peak_current;
        setup.current_high = std::min(setup.current_high, most);
        setup.current_low = std::max(setup.current_low, -most);
    }
    if (io_.inputs.active(F::kInvertDirection)) {
        targets_.speed = -targets_.speed;
        targets_.current = -targets_.current;
    }
    modes_.set_switches(switch_limits());
    if (!io_.speeds.chosen()) return;
    const auto rate = [](const Object& object) {
        return std::max(1.0, static_cast<double>(object.value) * kCountsPerAcceleration);
    };
    targets_.speed = parameters_.speed_sense() * kCountsPerSpeed *
                     static_cast<double>(io_.speeds.target(io_.inputs));
    targets_.speed_profile.acceleration = rate(io_.speeds.acceleration);
    targets_.speed_profile.deceleration = rate(io_.speeds.deceleration);
    if (targets_.speed == 0.0 && io_.speeds.stop_at_once.value == 1) {
        targets_.speed_profile.deceleration = kAtOnce;
    }
}

// Indexes, moves and captures.

void Motion::look_at_indexes() {
    const auto steps = [](const Object& ms) { return ms.value * kStepsPerMillisecond; };
    if (io_.speeds.index.look(io_.inputs, step_, steps(io_.speeds.delay))) {
        disturbed_ = true;
        configure();
    }
    const bool other = io_.positions.index.look(io_.inputs, step_, steps(io_.positions.delay));
    if (other && io_.positions.trigger.value == 1) trigger_din_position();
}

void Motion::activate() {
    if (io_.does.activate_style.value == kStartsDinPosition) {
        if (io_.positions.trigger.value == 0) trigger_din_position();
        return;
    }
    const bool positioning = state_ == DriveState::kOperationEnabled && !halted_ &&
                             modes_.mode() == Mode::kProfilePosition;
    if (io_.does.activate_style.value == kStartsMove && positioning) {
        new_set_point(control_word_);
    }
}

void Motion::trigger_din_position() {
    if (modes_.arrived() || io_.positions.interruption.value == 1) {
        start_din_position();
    } else if (io_.positions.interruption.value == 2) {
        io_.positions.waits = true;
    }
}

void Motion::start_din_position() {
    io_.positions.waits = false;
    const bool positioning = state_ == DriveState::kOperationEnabled && !stop_ && !halted_ &&
                             modes_.mode() == Mode::kProfilePosition && !io_.table.running() &&
                             !homing_.active();
    const bool relative = io_.positions.style.value == 1;
    const bool unknown = !relative && io_.positions.needs_home.value == 1 && !homed_;
    if (!positioning || unknown) return;
    const auto rate = [](const Object& object) {
        return std::max(1.0, static_cast<double>(object.value) * kCountsPerAcceleration);
    };
    ProfileLimits limits;
    const double speed = std::abs(static_cast<double>(io_.positions.speed().value));
    limits.speed = std::min(speed * kCountsPerSpeed, targets_.speed_profile.speed);
    limits.acceleration = rate(io_.positions.acceleration);
    limits.deceleration = rate(io_.positions.deceleration);
    const double way =
        parameters_.position_sense() * static_cast<double>(io_.positions.target().value);
    modes_.move(relative ? modes_.demand() + way : way, limits);
    in_window_ = 0;
}

void Motion::act_on_multi(std::int64_t action) {
    if (action == kMultiClearPosition && zero_speed()) define_position(0);
    if (action == kMultiCapture) {
        io_.does.captured.value = shown_position();
    }
    if (action == kMultiClearHome) clear_home();
}

void Motion::capture() {
    for (std::size_t i = 0; i < io_.fast_seen.size(); ++i) {
        const bool now = io_.inputs.active_at_once(fast_input(i));
        const bool was = std::exchange(io_.fast_seen[i], now);
        const bool falling = (io_.does.fast_edges.value >> i & 1) != 0;
        if (now == was || now == falling) continue;
        io_.does.fast_captured[i]->value = shown_position();
    }
}

std::int64_t Motion::shown_position() const {
    return cut(Type::kInt32,
               std::llround(parameters_.position_sense() * static_cast<double>(axis_.position())));
}

void Motion::home_by_input() {
    // The mode does not matter: a machine without a bus homes and then works in its own mode.
    if (state_ == DriveState::kOperationEnabled && !io_.table.running()) start_homing();
}

void Motion::show_inputs() {
    show(ids::kDinSpeedIndex, Type::kUint8,
         [](const Motion& m) { return static_cast<double>(m.io_.speeds.index.value()); });
    show(ids::kDinSpeedTarget, Type::kInt32,
         [](const Motion& m) { return static_cast<double>(m.io_.speeds.target(m.io_.inputs)); });
    show(ids::kDinPositionIndex, Type::kUint8,
         [](const Motion& m) { return static_cast<double>(m.io_.positions.index.value()); });
    show(ids::kDinPositionTarget, Type::kInt32,
         [](const Motion& m) { return static_cast<double>(m.io_.positions.target().value); });
}

}  // namespace servo::sim
