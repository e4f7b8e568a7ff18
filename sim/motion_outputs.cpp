// Motion: what the digital outputs tell.
#include <cmath>

#include "sim/motion.h"

namespace servo::sim {

namespace {

using F = OutputFunction;

constexpr std::int64_t kReadyWithBus = 1;  // of the conditions of "ready"
constexpr std::int64_t kReadyEnabled = 2;

constexpr std::int64_t kTorqueAllowed = 3;  // both channels closed

// A demand that close to its limit is at it.
constexpr double kAtLimit = 0.999;

}  // namespace

bool Motion::ready() const {
    const std::int64_t condition = io_.tells.ready_condition.value;
    if (condition == kReadyEnabled) return state_ == DriveState::kOperationEnabled;
    if (supervision_.faulty()) return false;
    return condition != kReadyWithBus || supervision_.bus_right(axis_.bus_voltage());
}

bool Motion::at_speed_limit() const {
    if (!powered(state_)) return false;
    if (axis_.loop() == Loop::kCurrent) {
        const double limit = targets_.current_speed_limit;
        return limit > 0.0 && std::abs(axis_.speed()) >= kAtLimit * limit;
    }
    return std::abs(axis_.speed_demand()) >= kAtLimit * targets_.speed_profile.speed;
}

bool Motion::current_warning() const {
    const double level = static_cast<double>(io_.tells.current_warning.value) / 100.0;
    return std::sqrt(supervision_.mean_square_current()) > level * motor_.rated_current;
}

// The signal stays for a while, so that a slow controller sees it.
bool Motion::position_reached() {
    const bool reached = holds_position(modes_.mode()) && target_reached();
    const std::int64_t hold = io_.tells.reached_hold.value * kStepsPerMillisecond;
    if (reached && !io_.reached_before) io_.reached_until = step_ + hold;
    io_.reached_before = reached;
    return reached || step_ < io_.reached_until;
}

// The index stands where a turn begins.
bool Motion::index_passed() {
    const std::int64_t turns = axis_.plant().turns();
    if (turns != io_.turns_seen) {
        io_.index_until = step_ + io_.tells.index_width.value * kStepsPerMillisecond;
    }
    io_.turns_seen = turns;
    return step_ < io_.index_until;
}

// Once a millisecond.
void Motion::tend_outputs() {
    const bool speeds = !holds_position(modes_.mode()) && !holds_torque(modes_.mode());
    io_.brake.look(powered(state_), rpm(axis_.speed()), step_);
    const SwitchLimits switches = switch_limits();
    OutputFunctions on;
    on.set(F::kReady, ready());
    on.set(F::kError, supervision_.faulty());
    on.set(F::kPositionReached, position_reached());
    on.set(F::kZeroSpeed, zero_speed());
    on.set(F::kMotorBrake, io_.brake.open());
    on.set(F::kSpeedReached, speeds && target_reached());
    on.set(F::kEncoderIndex, index_passed());
    on.set(F::kSpeedLimit, at_speed_limit());
    on.set(F::kDriverEnabled, state_ == DriveState::kOperationEnabled);
    on.set(F::kPositionLimit, switches.positive || switches.negative || modes_.held_by_limit());
    on.set(F::kHomeFound, homed_);
    on.set(F::kCurrentLimit, current_warning());
    on.set(F::kTableActive, io_.table.running());
    on.set(F::kTorqueOff, io_.tells.torque_off_state.value != kTorqueAllowed);
    io_.outputs.look(on, step_);
}

// The next step at which inputs or outputs change by themselves, also with the motor at rest.
std::int64_t Motion::io_due() const {
    const bool timed = !zero_speed() || io_.brake.waits() || step_ < io_.reached_until ||
                       step_ < io_.index_until || (io_.motor_error_since >= 0 && !motor_error());
    const std::int64_t own = timed ? last_look_ + kStepsPerMillisecond : io_.outputs.due();
    return std::min({io_.inputs.due(), io_.outputs.due(), own});
}

}  // namespace servo::sim
