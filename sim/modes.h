// The modes of operation: from targets to the set-point of each step.
#pragma once

#include <cstdint>
#include <optional>

#include "sim/auto_reverse.h"
#include "sim/model/axis.h"
#include "sim/model/profile.h"

namespace servo::sim {

enum class Mode : std::int8_t {
    kPulse = -4,           // follows pulses; none come, so it holds its place
    kImmediateSpeed = -3,  // the target speed at once, without a ramp
    kAutoReverse = -1,     // turns to and fro
    kNone = 0,             // holds its place
    kProfilePosition = 1,
    kProfileSpeed = 3,
    kTorque = 4,
    kHoming = 6,
    kInterpolated = 7,
    kCyclicPosition = 8,
    kCyclicSpeed = 9,
    kCyclicTorque = 10,
};

std::optional<Mode> mode_of(std::int64_t number);

// The axis is steered to a place and not just to a speed or a torque.
bool holds_position(Mode mode);
bool holds_torque(Mode mode);

// Targets and limits, in the units of the axis: counts, counts/s, counts/s2, A.
struct Targets {
    double position = 0.0;      // of the cyclic mode
    double interpolated = 0.0;  // of the interpolated mode
    double cycle = 1e-3;        // s; between two targets of these
    double speed = 0.0;
    double current = 0.0;
    double current_slope = 0.0;        // A/s; 0: at once
    double current_speed_limit = 0.0;  // of the torque modes; 0: none
    ProfileLimits profile;             // of a positioning
    ProfileLimits speed_profile;       // of the speed mode
    double quick_deceleration = 0.0;
    double position_forward = 0.0;  // A per count/s2 fed forward, by kind of mode
    double speed_forward = 0.0;
    AutoReverseTargets to_and_fro;
    std::optional<double> lowest;  // limits of position
    std::optional<double> highest;
};

// Directions in which a limit switch lets nothing move, and how fast a motion there comes to rest.
struct SwitchLimits {
    bool positive = false;
    bool negative = false;
    double deceleration = 0.0;
};

class Modes {
  public:
    void configure(const Targets& targets);
    const Targets& targets() const { return targets_; }

    // Power comes on, or another mode is chosen under power: it goes on from this place and motion.
    void start(Mode mode, const Axis& axis);
    Mode mode() const { return mode_; }

    SetPoint step(const Axis& axis);

    // One step of coming to rest; stopped() once it rests.
    SetPoint stop(const Axis& axis, double deceleration);
    bool stopped() const { return stopped_; }

    // Positioning. A target that is taken at once replaces the one under way; another waits until
    // that is reached. False when one waits already.
    bool take_target(double position, bool at_once, bool relative, const Axis& axis);
    bool target_waits() const { return waiting_.has_value(); }
    bool arrived() const { return !moving_; }
    double target() const { return target_; }
    // A move with speed and ramps of its own, at once; and its end, at rest.
    void move(double target, const ProfileLimits& limits);
    void end_move(double deceleration);
    // Where the generator is.
    double demand() const { return profile_.position(); }

    void set_switches(const SwitchLimits& switches) { switches_ = switches; }
    // A limit switch stands in the way of what the target asks for.
    bool blocked() const { return blocked_; }

    const AutoReverse& auto_reverse() const { return auto_reverse_; }

    // The generator's own speed stands at its target.
    bool speed_reached() const { return speed_reached_; }
    // A limit of position holds the axis back.
    bool held_by_limit() const { return held_; }

    // At rest, exactly there.
    void hold_at(double position);

    // The place is called something else from now on.
    void shift(double counts);

  private:
    SetPoint position_step();
    SetPoint cyclic_step(double target);
    SetPoint speed_step(const Axis& axis, bool ramp);
    SetPoint torque_step(const Axis& axis);
    SetPoint to_and_fro_step(const Axis& axis);
    bool blocks(double direction) const;
    void brake_at_switch();
    bool steers_place() const;
    double bounded(double position);
    SetPoint position_set_point(double speed_before) const;
    SetPoint speed_set_point(double speed_before) const;

    Mode mode_ = Mode::kNone;
    Targets targets_;
    Profile profile_;
    AutoReverse auto_reverse_;
    double target_ = 0.0;
    std::optional<double> waiting_;
    std::optional<ProfileLimits> own_limits_;  // of the move under way
    SwitchLimits switches_;
    double current_ = 0.0;
    double cyclic_seen_ =
        0.0;  // the target as last told: until it changes the axis holds its place
    double cyclic_from_ = 0.0;
    double cyclic_to_ = 0.0;
    double cyclic_part_ = 1.0;
    bool moving_ = false;
    bool stopped_ = false;
    bool speed_reached_ = false;
    bool held_ = false;
    bool blocked_ = false;
};

}  // namespace servo::sim
