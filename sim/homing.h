// A homing run: the way over switches, stops and index pulses to the home point, by any method.
//
// It searches with the speed loop and ends with the position loop. What becomes of the coordinates
// at the home point, and who may start a run, is Motion's.
#pragma once

#include <cstdint>
#include <optional>

#include "sim/homing_methods.h"
#include "sim/model/axis.h"
#include "sim/model/profile.h"

namespace servo::sim {

// Inputs as they are at this step.
struct HomingSignals {
    bool negative_limit = false;
    bool positive_limit = false;
    bool home = false;
};

struct HomingPlan {
    HomingMethod method;
    double search_speed = 0.0;  // counts/s
    double zero_speed = 0.0;
    double acceleration = 0.0;      // counts/s2
    double blind = 0.0;             // counts behind the edge in which no index counts
    double travel = 0.0;            // counts from the start; 0: no limit
    std::int64_t stop_steps = 1;    // the current stands at its limit for so long at a stop
    std::int64_t most_steps = 0;    // of the search; 0: no limit
    double window = 0.0;            // counts around the end; it is reached after that many steps
    std::int64_t window_steps = 0;  // within
};

// As it is read.
enum class HomingStep : std::uint8_t {
    kIdle = 0,
    kSearch = 1,
    kLeave = 2,
    kIndex = 3,
    kStop = 4,
    kEnd = 5,
};

class Homing {
  public:
    void start(const HomingPlan& plan, const Axis& axis, const HomingSignals& signals);
    bool active() const { return phase_ != Phase::kIdle; }

    // The motor comes to rest with the following steps, and the run is over.
    void interrupt();
    // Over at once: somebody else has the motor now.
    void leave() { phase_ = Phase::kIdle; }

    // The set-point of the next step. Once active() is false the motor stands.
    SetPoint step(const Axis& axis, const HomingSignals& signals);

    // The home point, once, as soon as it is found. run_to() must follow.
    std::optional<double> take_home();
    void run_to(double target);
    double target() const { return target_; }

    // The place is called something else from now on.
    void shift(double counts);

    // Since the start: the run is lost.
    bool failed() const { return failed_; }
    HomingStep shown() const;
    // From the edge to the latest index pulse, counts.
    double index_distance() const { return index_distance_; }
    std::int64_t steps() const { return steps_; }

  private:
    // kBackOff goes away from the switch, kApproach comes back to it, kRelax lets go of a stop.
    enum class Phase : std::uint8_t {
        kIdle,
        kSearch,
        kBackOff,
        kApproach,
        kLeave,
        kIndex,
        kStop,
        kRelax,
        kEnd,
        kRest,
    };

    bool active_signal(const HomingSignals& signals) const;
    bool at_limit(const HomingSignals& signals) const;
    void search(const HomingSignals& signals);
    void found_signal();
    void wait_for_edge(const Axis& axis, bool coming);
    void pass_edge(Phase next);
    void look_for_index(const Axis& axis);
    void begin_relaxing(const Axis& axis);
    void relax();
    void end_at(double home);
    void fail();
    bool watch(const Axis& axis, const HomingSignals& signals);
    SetPoint turn(double speed);
    SetPoint go(const Axis& axis);
    SetPoint let_go();
    SetPoint run_to_end();
    SetPoint come_to_rest(const Axis& axis);

    Phase phase_ = Phase::kIdle;
    HomingPlan plan_;
    Profile profile_;
    Direction direction_ = Direction::kPositive;
    bool turned_ = false;
    bool failed_ = false;
    bool interrupted_ = false;
    bool signal_now_ = false;
    bool signal_before_ = false;
    double place_ = 0.0;
    double start_ = 0.0;
    double edge_ = 0.0;
    double target_ = 0.0;
    double index_distance_ = 0.0;
    double pressed_current_ = 0.0;
    std::int64_t turns_seen_ = 0;
    std::int64_t pressed_ = 0;  // steps at the limit of the current
    std::int64_t wait_ = 0;
    std::int64_t within_ = 0;  // steps in the window of the end
    std::int64_t steps_ = 0;
    std::optional<double> home_;
};

}  // namespace servo::sim
