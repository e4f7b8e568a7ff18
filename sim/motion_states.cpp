// Motion: control word, states, set-points of positioning, and what the status word tells.
#include <cmath>
#include <utility>

#include "sim/motion.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// A stop waits that many steps, half a second, for the shaft once the demand is at rest. Then power
// goes off anyway.
constexpr int kStopPatience = 8000;

bool rises(std::uint16_t before, std::uint16_t now, std::uint16_t bit) {
    return (before & bit) == 0 && (now & bit) != 0;
}

}  // namespace

void Motion::control(std::uint16_t word) {
    const std::uint16_t before = control_word_;
    control_word_ = word;
    if (rises(before, word, control::kFaultReset)) reset_faults();
    if (bus_may(command_of(word))) command(command_of(word));
    halted_ = halt_asked();
    // No other command moves a motor that is being measured.
    if (state_ != DriveState::kOperationEnabled || scan_.active()) return;
    const bool fell = rises(word, before, control::kStartHoming);
    if (fell && modes_.mode() == Mode::kHoming) homing_.interrupt();
    if (rises(before, word, control::kNewSetPoint)) {
        if (modes_.mode() == Mode::kProfilePosition) new_set_point(word);
        if (modes_.mode() == Mode::kHoming) start_homing();
    }
    if ((word & control::kNewSetPoint) == 0) target_taken_ = false;
}

void Motion::command(Command command) {
    if (command == Command::kEnableOperation && enable_barred()) return;
    const DriveState next = commanded(state_, command);
    // Power that a scan has switched on stays on for the one who asks for it meanwhile.
    if (scan_.active()) after_scan_ = commanded(after_scan_, command);
    if (state_ == DriveState::kOperationEnabled) {
        if (next == DriveState::kOperationEnabled) {
            // A stop on the way to "switched on" is called off.
            if (stop_) modes_.start(modes_.mode(), axis_);
            stop_.reset();
        } else {
            leave_enabled(next);
        }
        return;
    }
    if (state_ == DriveState::kQuickStopActive && next == DriveState::kOperationEnabled) {
        // Only a quick stop that holds the motor lets it go on.
        if (parameters_.quick_stop_option.value < 5) return;
        stop_.reset();
        modes_.start(modes_.mode(), axis_);
    }
    if (next == DriveState::kOperationEnabled && supervision_.faulty()) return;
    set_state(next);
}

void Motion::leave_enabled(DriveState next) {
    if (next == DriveState::kQuickStopActive) {
        quick_stop();
        return;
    }
    const bool shutdown = next == DriveState::kReadyToSwitchOn;
    const bool disable = next == DriveState::kSwitchedOn;
    const bool ramp = (shutdown && parameters_.shutdown_option.value == 1) ||
                      (disable && parameters_.disable_option.value == 1);
    if (ramp) {
        begin_stop(targets_.speed_profile.deceleration, next);
    } else {
        set_state(next);
    }
}

void Motion::quick_stop() {
    const std::int64_t option = parameters_.quick_stop_option.value;
    if (option == 0) {
        set_state(DriveState::kSwitchOnDisabled);
        return;
    }
    const bool slow = option == 1 || option == 5;
    const DriveState then =
        option >= 5 ? DriveState::kQuickStopActive : DriveState::kSwitchOnDisabled;
    set_state(DriveState::kQuickStopActive);
    begin_stop(slow ? targets_.speed_profile.deceleration : targets_.quick_deceleration, then);
}

void Motion::begin_stop(double deceleration, DriveState then) {
    end_scan(then == DriveState::kFault ? ScanResult::kFault : ScanResult::kStopped);
    end_homing(then == DriveState::kFault);
    io_.table.drop();
    stop_ = Stop{deceleration, then, kStopPatience};
}

void Motion::set_state(DriveState next) {
    if (next == state_) return;
    const bool on = powered(next);
    if (next != DriveState::kOperationEnabled) {
        const bool fault = next == DriveState::kFault || next == DriveState::kFaultReactionActive;
        end_scan(fault ? ScanResult::kFault : ScanResult::kStopped);
        end_homing(fault);
    }
    if (on && !powered(state_)) {
        modes_.start(mode_of(parameters_.mode.value).value_or(Mode::kNone), axis_);
        in_window_ = 0;
        too_far_ = 0;
        target_taken_ = false;
    }
    if (!on || next == DriveState::kOperationEnabled) stop_.reset();
    if (next != DriveState::kOperationEnabled) io_.table.drop();
    state_ = next;
    disturbed_ = true;
    if (next == DriveState::kOperationEnabled && std::exchange(home_when_enabled_, false)) {
        start_homing();
    }
}

void Motion::new_set_point(std::uint16_t word) {
    // The table alone moves the axis while it runs, and so does homing.
    if (io_.table.running() || homing_.active()) return;
    const bool at_once = (word & control::kAtOnce) != 0;
    const bool relative = (word & control::kRelative) != 0;
    if (parameters_.homing_required.value == 1 && !homed_ && !relative) return;
    target_taken_ = modes_.take_target(targets_.position, at_once, relative, axis_);
    in_window_ = 0;
}

void Motion::define_position(std::int64_t position) {
    shift_position(position - axis_.position_now());
}

bool Motion::target_reached() const {
    if (state_ != DriveState::kOperationEnabled) return false;
    if (scan_.active() || homing_.active()) return false;
    if (halted_) return modes_.stopped();
    switch (modes_.mode()) {
        case Mode::kProfilePosition:
            return modes_.arrived() && in_window_ > 0 &&
                   in_window_ >= parameters_.position_window_time.value * kStepsPerMillisecond;
        case Mode::kProfileSpeed:
        case Mode::kImmediateSpeed:
        case Mode::kCyclicSpeed:
            return in_speed_window_ > 0 &&
                   in_speed_window_ >= parameters_.speed_window_time.value * kStepsPerMillisecond;
        case Mode::kTorque:
        case Mode::kCyclicTorque:
            return modes_.speed_reached();
        case Mode::kHoming:
            return true;
        case Mode::kAutoReverse:
            return modes_.auto_reverse().phase() == AutoReverse::Phase::kStopped;
        case Mode::kPulse:
        case Mode::kNone:
        case Mode::kInterpolated:
        case Mode::kCyclicPosition:
            return false;
    }
    return false;
}

bool Motion::zero_speed() const {
    return slow_ > 0 && slow_ >= parameters_.speed_threshold_time.value * kStepsPerMillisecond;
}

// Bits 12 and 13.
std::uint16_t Motion::mode_bits() const {
    const auto bit = [](bool on, std::uint16_t mask) { return on ? unsigned{mask} : 0U; };
    switch (modes_.mode()) {
        case Mode::kProfilePosition:
            return static_cast<std::uint16_t>(
                bit(target_taken_ || modes_.target_waits(), status::kSetPointTaken) |
                bit(too_far_ > 0, status::kFollowingError));
        case Mode::kProfileSpeed:
        case Mode::kImmediateSpeed:
        case Mode::kCyclicSpeed:
            return static_cast<std::uint16_t>(bit(zero_speed(), status::kZeroSpeed));
        case Mode::kHoming:
            return static_cast<std::uint16_t>(
                bit(homed_, status::kHomed) |
                bit(homing_failed_ || (homing_.active() && homing_.failed()),
                    status::kHomingError));
        case Mode::kPulse:
        case Mode::kAutoReverse:
        case Mode::kInterpolated:
        case Mode::kCyclicPosition:
            return static_cast<std::uint16_t>(bit(too_far_ > 0, status::kFollowingError));
        case Mode::kNone:
        case Mode::kTorque:
        case Mode::kCyclicTorque:
            return 0;
    }
    return 0;
}

std::uint16_t Motion::status_word() const {
    unsigned word = state_bits(state_) | status::kRemote;
    if (axis_.bus_voltage() > 0.5 * axis_.setup().supply.voltage) word |= status::kVoltage;
    if (supervision_.warnings() != 0) word |= status::kWarning;
    if (state_ == DriveState::kOperationEnabled) {
        if (target_reached()) word |= status::kTargetReached;
        const SwitchLimits switches = switch_limits();
        const bool limited = switches.positive || switches.negative || modes_.held_by_limit();
        if (limited || axis_.current_limited()) word |= status::kLimit;
        word |= mode_bits();
    }
    return static_cast<std::uint16_t>(word);
}

Abort Motion::accept(const Object& object, std::int64_t value) {
    if (object.id == ids::kMode && !mode_of(value)) return Abort::kRange;
    if (object.id == ids::kClearPosition && value == 1 && !zero_speed()) return Abort::kState;
    if (object.id == ids::kTableCommand) return accept_table_command(value);
    if (object.id == ids::kScanCommand) {
        if (value != kNoScan && value != kScan) return Abort::kRange;
        return value == kScan ? scan_.check() : Abort::kNone;
    }
    return Abort::kNone;
}

void Motion::written(Object& object) {
    configure();
    if (object.id == ids::kControlWord) {
        control(static_cast<std::uint16_t>(object.value));
    } else if (object.id == ids::kMode) {
        const auto mode = mode_of(object.value);
        if (mode && powered(state_) && *mode != modes_.mode()) {
            io_.table.drop();
            end_homing(false);
            modes_.start(*mode, axis_);
        }
        homing_failed_ = false;
    } else if (object.id == ids::kTargetPosition) {
        const bool at_once = parameters_.target_at_once.value == 1;
        const bool positioning = state_ == DriveState::kOperationEnabled && !halted_ &&
                                 modes_.mode() == Mode::kProfilePosition;
        if (at_once && positioning) new_set_point(control::kAtOnce);
    } else if (object.id == ids::kTableCommand) {
        table_command(object.value);
    } else if (object.id == ids::kFaultReset) {
        if (object.value == 1) reset_faults();
        object.value = 0;
    } else if (object.id == ids::kClearPosition) {
        if (object.value == 1) define_position(0);
        object.value = 0;
    } else if (object.id == ids::kScanCommand) {
        command_scan(object.value);
    } else if (object.id == ids::kHomingClear) {
        if (object.value == 1) clear_home();
        object.value = 0;
    }
}

}  // namespace servo::sim
