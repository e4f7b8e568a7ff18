// The frequency scan: turns the motor slowly, adds a sine to the velocity loop at one frequency
// after the other, and measures what the loop's command makes of the speed.
//
// Which states allow a scan, and what becomes of the motor before and after, is Motion's.
#pragma once

#include <algorithm>
#include <complex>
#include <cstdint>
#include <limits>

#include "sim/model/axis.h"
#include "sim/model/profile.h"
#include "sim/object_table.h"
#include "sim/scan_correlator.h"
#include "sim/scan_results.h"
#include "sim/subsystem.h"

namespace servo::sim {

// What the command object takes.
inline constexpr std::int64_t kNoScan = 0;
inline constexpr std::int64_t kScan = 14;

// How a scan ended, as it is read.
enum class ScanResult : std::uint8_t {
    kNone = 0,
    kDone = 1,
    kNotEnabled = 2,
    kTooFar = 3,
    kFault = 4,
    kStopped = 5,
};

// The drive's units, as they are when a scan starts.
struct ScanUnits {
    double ampere = 0.0;      // of one unit of raw current
    double speed = 0.0;       // counts/s of one unit of raw speed
    double gain = 0.0;        // A per count/s, of one unit of Kvp
    double resolution = 1.0;  // counts per turn
    double most_speed = 0.0;  // counts/s
    // Of the load that the drive believes in.
    double acceleration = 0.0;  // counts/s2 per A
};

class FrequencyScan : public Subsystem {
  public:
    explicit FrequencyScan(ObjectTable& table);

    // Nothing runs, nothing was ever measured.
    void reset();

    // Why the plan that stands in the objects cannot be scanned.
    Abort check() const;

    // Takes the plan and begins.
    void start(const ScanUnits& units, const Axis& axis);
    // It could not begin.
    void refuse();

    // The motor turns for the scan, be it on the way to its rest.
    bool active() const { return phase_ != Phase::kIdle; }
    // Of one that is active: a start would not be for what it measures, since another plan has been
    // written meanwhile or its measuring is over.
    bool is_outdated() const { return phase_ == Phase::kRunDown || written_plan() != plan_; }

    // Ends the measuring; the motor comes to rest with the following steps.
    void stop(ScanResult result);
    // Ends all at once: somebody else has the motor now.
    void leave(ScanResult result);

    // The set-point of the next step, after the axis has made the one before. Once active() is
    // false the motor stands.
    SetPoint step(const Axis& axis);
    // What is added to the current demand of that step, A.
    double injection() const { return injection_; }

    // The place is called something else from now on.
    void shift(double counts) { start_ += counts; }

    void refresh(Object& object) override;
    void written(Object& object) override;

  private:
    enum class Phase : std::uint8_t { kIdle, kTurn, kSettle, kMeasure, kRunDown };
    struct Plan {
        std::int64_t first = 0;  // Hz
        std::int64_t step = 1;
        std::int64_t points = 0;
        double amplitude = 0.0;  // A
        double bias = 0.0;       // counts/s
        double travel = 0.0;     // counts; 0: no limit
        std::int64_t settle_periods = 0;
        std::int64_t measure_periods = 1;
        bool into_speed = false;
        bool operator==(const Plan&) const = default;
    };

    Plan written_plan() const;
    std::int64_t hertz() const { return plan_.first + done_ * plan_.step; }
    double steps_per_period() const;
    void begin_point(const Axis& axis);
    void turn_step();
    void settle_step(const Axis& axis);
    void measure_step(const Axis& axis);
    void run_down_step();
    void begin_settling(double least_decays);
    double swing() const;
    void finish_point();
    void end_measuring(ScanResult result);
    SetPoint excited(const Axis& axis);

    Object& first_;
    Object& last_;
    Object& step_;
    Object& window_;
    Object& frequency_;
    Object& done_object_;
    Object& settle_;
    Object& shift_;
    Object& measure_;
    Object& bias_;
    Object& travel_;
    Object& result_object_;
    Object& injection_point_;
    Object& most_points_;
    Object& amplitude_;

    Phase phase_ = Phase::kIdle;
    Plan plan_;
    ScanUnits units_;
    ScanResult result_ = ScanResult::kNone;
    ScanResults results_;
    ScanCorrelator correlator_;
    Profile turning_;
    double wanted_speed_ = 0.0;
    double start_ = 0.0;  // counts; where the scan began
    double share_ = 1.0;  // of the set amplitude that is used
    double phase_of_sine_ = 0.0;
    double injection_ = 0.0;
    // Of feedback and command in the last period of the settling.
    struct Range {
        double least = std::numeric_limits<double>::max();
        double most = std::numeric_limits<double>::lowest();
        void take(double value) {
            least = std::min(least, value);
            most = std::max(most, value);
        }
        double swing() const { return (most - least) / 2.0; }
    };
    Range speed_;
    Range command_;
    double decay_ = 0.0;      // of what the loop does with a change, 1/s
    std::int64_t done_ = 0;   // points
    std::int64_t wait_ = 0;   // steps left of settling or running down
    std::int64_t tries_ = 0;  // with less amplitude, at this point
    bool longer_ = false;     // the measuring, at this point
    std::int64_t address_ = 0;
};

}  // namespace servo::sim
