// Motion: the frequency scan. It has the motor for itself, and switches the power on and off again
// if nobody else has.
#include <utility>

#include "sim/motion.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// States from which the drive may power the motor by itself.
bool ready_for_power(DriveState state) {
    switch (state) {
        case DriveState::kSwitchOnDisabled:
        case DriveState::kReadyToSwitchOn:
        case DriveState::kSwitchedOn:
            return true;
        case DriveState::kNotReady:
        case DriveState::kOperationEnabled:
        case DriveState::kQuickStopActive:
        case DriveState::kFaultReactionActive:
        case DriveState::kFault:
            return false;
    }
    return false;
}

}  // namespace

void Motion::command_scan(std::int64_t command) {
    if (command == kScan) {
        // Asked for once more, since the answer was lost, the one under way goes on. With another
        // plan it begins anew: its points would be taken for those of the other plan.
        if (scan_.active()) {
            if (!scan_.is_outdated()) return;
            scan_.stop(ScanResult::kStopped);
        }
        start_scan();
    } else {
        scan_.stop(ScanResult::kStopped);
    }
}

void Motion::start_scan() {
    const bool enabled = state_ == DriveState::kOperationEnabled;
    const bool busy = stop_ || halted_ || io_.table.running() || homing_.active();
    const bool free = enabled ? !busy : ready_for_power(state_) && !enable_barred();
    if (scan_.check() != Abort::kNone || supervision_.faulty() || motor_.wrong || !free) {
        scan_.refuse();
        return;
    }
    ScanUnits units;
    units.ampere = motor_.peak_current / kCurrentFullScale;
    units.speed = kCountsPerSpeed;
    units.gain = MotionParameters::velocity_unit(motor_);
    units.resolution = motor_.resolution;
    units.acceleration = motor_.torque_constant / motor_.inertia * motor_.resolution / (2.0 * kPi);
    units.most_speed = targets_.speed_profile.speed;
    if (!scan_.active()) after_scan_ = state_;
    // Power for a scan is not the first enabling that homes.
    const bool home_later = std::exchange(home_when_enabled_, false);
    set_state(DriveState::kOperationEnabled);
    home_when_enabled_ = home_later;
    scan_.start(units, axis_);
}

SetPoint Motion::scan_step() {
    const SwitchLimits switches = switch_limits();
    if (switches.positive || switches.negative) scan_.stop(ScanResult::kTooFar);
    if (halted_) scan_.stop(ScanResult::kStopped);
    const SetPoint out = scan_.step(axis_);
    axis_.inject_current(scan_.injection());
    if (scan_.active()) return out;
    modes_.start(modes_.mode(), axis_);
    if (after_scan_ != state_) set_state(after_scan_);
    return powered(state_) ? modes_.step(axis_) : SetPoint{};
}

// Somebody else takes the motor as it turns.
void Motion::end_scan(ScanResult result) {
    if (!scan_.active()) return;
    scan_.leave(result);
    axis_.inject_current(0.0);
    if (powered(state_)) modes_.start(modes_.mode(), axis_);
}

void Motion::show_scan() {
    show(ids::kScanCommand, Type::kUint8,
         [](const Motion& m) { return m.scan_.active() ? static_cast<double>(kScan) : 0.0; });
}

}  // namespace servo::sim
