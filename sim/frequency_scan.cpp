#include "sim/frequency_scan.h"

#include <algorithm>
#include <cmath>

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// At high frequencies a few periods would be over before anything averages out.
constexpr double kLeastMeasuring = 0.05;  // s

// A response of less units of speed than that drowns in them; then the window becomes longer.
constexpr double kWeakResponse = 2.0;
constexpr std::int64_t kLonger = 4;

// Time for the loop to settle, in time constants of its own: after another frequency, which comes
// without a jump; after another amplitude; after the bias has changed its side, and friction too.
constexpr double kSettleDecays = 2.0;
constexpr double kTryDecays = 5.0;
constexpr double kTurnDecays = 10.0;
constexpr double kMostSettling = 0.5;  // s

// The bias speed is reached, and lost, within this time.
constexpr double kTurnSeconds = 0.025;

// The shaft counts as standing that long after the demand does.
constexpr std::int64_t kRunDownSteps = 50 * kStepsPerMillisecond;

// The swing of the speed stays below this part of the bias, so that neither motor nor load ever
// turns round and friction stays constant. Where it is too wide it is made kGoodSwing.
constexpr double kMostSwing = 0.7;
constexpr double kGoodSwing = 0.5;
constexpr double kAmplitudeGrowth = 1.2;  // from one point to the next, as far as was set
constexpr std::int64_t kMostTries = 8;

// The loop's steps show nothing sensible above, Hz.
constexpr std::int64_t kHighest = 4000;

// Less of the command than this part of what was injected is none.
constexpr double kLeastCommand = 1e-6;

// Of the slower one of the loop's two modes, roughly, 1/s: by gain and inertia, by the two gains.
double decay_of(const AxisSetup& loop, double acceleration) {
    double decay = loop.velocity_kp * acceleration / 2.0;
    if (loop.velocity_ki > 0.0) {
        decay = std::min(decay, loop.velocity_ki / std::max(loop.velocity_kp, 1e-12));
    }
    return std::max(decay, 1.0);
}

}  // namespace

FrequencyScan::FrequencyScan(ObjectTable& t)
    : first_(t.bind(ids::kScanFirst, Type::kUint16, 4)),
      last_(t.bind(ids::kScanLast, Type::kUint16, 60)),
      step_(t.bind(ids::kScanStep, Type::kUint16, 3)),
      window_(t.bind(ids::kScanWindow, Type::kUint32)),
      frequency_(t.bind(ids::kScanFrequency, Type::kUint16)),
      done_object_(t.bind(ids::kScanDone, Type::kUint16)),
      settle_(t.bind(ids::kScanSettle, Type::kUint8, 2)),
      shift_(t.bind(ids::kScanShift, Type::kUint8)),
      measure_(t.bind(ids::kScanMeasure, Type::kUint8, 4)),
      bias_(t.bind(ids::kScanBias, Type::kInt32, 273067)),
      travel_(t.bind(ids::kScanTravel, Type::kUint32, 100000)),
      result_object_(t.bind(ids::kScanResult, Type::kUint8)),
      injection_point_(t.bind(ids::kScanInjection, Type::kUint8)),
      most_points_(t.bind(ids::kScanMostPoints, Type::kUint16, kScanPoints)),
      amplitude_(t.bind(ids::kScanAmplitude, Type::kUint16, 60)) {
    for (Object* const object :
         {&window_, &frequency_, &done_object_, &shift_, &result_object_, &most_points_}) {
        object->owner = this;
    }
}

void FrequencyScan::reset() {
    phase_ = Phase::kIdle;
    result_ = ScanResult::kNone;
    results_ = {};
    injection_ = 0.0;
    done_ = 0;
    address_ = 0;
}

Abort FrequencyScan::check() const {
    const std::int64_t range = last_.value - first_.value;
    if (first_.value < 1 || step_.value < 1 || range < 0) return Abort::kIncompatible;
    if (last_.value > kHighest) return Abort::kIncompatible;
    return range / step_.value + 1 > kScanPoints ? Abort::kMappedTooLong : Abort::kNone;
}

FrequencyScan::Plan FrequencyScan::written_plan() const {
    Plan plan;
    plan.first = first_.value;
    plan.step = step_.value;
    plan.points = (last_.value - first_.value) / step_.value + 1;
    plan.amplitude = static_cast<double>(amplitude_.value) * units_.ampere;
    plan.bias = std::clamp(static_cast<double>(bias_.value) * units_.speed, -units_.most_speed,
                           units_.most_speed);
    plan.travel = static_cast<double>(travel_.value);
    plan.settle_periods = std::max<std::int64_t>(settle_.value, 1);
    plan.measure_periods = std::max<std::int64_t>(measure_.value, 1);
    plan.into_speed = injection_point_.value == 1;
    return plan;
}

void FrequencyScan::start(const ScanUnits& units, const Axis& axis) {
    units_ = units;
    plan_ = written_plan();
    results_.begin(amplitude_.value);
    result_ = ScanResult::kNone;
    done_ = 0;
    start_ = static_cast<double>(axis.position());
    share_ = 1.0;
    phase_of_sine_ = 0.0;
    decay_ = decay_of(axis.setup(), units_.acceleration);
    turning_.set(0.0, axis.speed());
    wanted_speed_ = plan_.bias;
    begin_point(axis);
    phase_ = Phase::kTurn;
}

void FrequencyScan::refuse() {
    results_.begin(0);
    results_.finish();
    done_ = 0;
    result_ = ScanResult::kNotEnabled;
}

void FrequencyScan::end_measuring(ScanResult result) {
    if (phase_ == Phase::kIdle || phase_ == Phase::kRunDown) return;
    result_ = result;
    injection_ = 0.0;
    results_.finish();
    phase_ = Phase::kRunDown;
    wait_ = kRunDownSteps;
}

void FrequencyScan::stop(ScanResult result) {
    end_measuring(result);
}

void FrequencyScan::leave(ScanResult result) {
    end_measuring(result);
    phase_ = Phase::kIdle;
}

double FrequencyScan::steps_per_period() const {
    return kStepsPerSecond / static_cast<double>(hertz());
}

// Turns back where the axis has gone too far in one direction, so that a long scan stays where it
// began.
void FrequencyScan::begin_point(const Axis& axis) {
    tries_ = 0;
    longer_ = false;
    share_ = std::min(1.0, share_ * kAmplitudeGrowth);
    const double moved = static_cast<double>(axis.position()) - start_;
    double most = units_.resolution;
    if (plan_.travel > 0.0) most = std::min(most, plan_.travel / 4.0);
    if (std::abs(moved) > most && moved * wanted_speed_ > 0.0) {
        wanted_speed_ = -wanted_speed_;
        phase_ = Phase::kTurn;
    } else {
        begin_settling(kSettleDecays);
    }
}

void FrequencyScan::begin_settling(double least_decays) {
    const double periods = static_cast<double>(plan_.settle_periods) * steps_per_period();
    const double least = std::min(least_decays / decay_, kMostSettling) * kStepsPerSecond;
    wait_ = std::llround(std::max(periods, least));
    speed_ = {};
    command_ = {};
    phase_ = Phase::kSettle;
}

// Of the motor as it is seen; of the load, which is not seen and swings widely where the motor
// hardly moves, as much as the command would move motor and load together.
double FrequencyScan::swing() const {
    const double corner = 2.0 * kPi * static_cast<double>(hertz());
    return std::max(speed_.swing(), command_.swing() * units_.acceleration / corner);
}

SetPoint FrequencyScan::step(const Axis& axis) {
    const double moved = std::abs(static_cast<double>(axis.position()) - start_);
    if (plan_.travel > 0.0 && moved > plan_.travel) end_measuring(ScanResult::kTooFar);
    switch (phase_) {
        case Phase::kIdle:
            return {};
        case Phase::kTurn:
            turn_step();
            break;
        case Phase::kSettle:
            settle_step(axis);
            break;
        case Phase::kMeasure:
            measure_step(axis);
            break;
        case Phase::kRunDown:
            run_down_step();
            break;
    }
    return excited(axis);
}

void FrequencyScan::turn_step() {
    ProfileLimits limits;
    limits.speed = std::max(std::abs(wanted_speed_), std::abs(turning_.speed()));
    limits.acceleration = std::max(std::abs(plan_.bias), units_.resolution) / kTurnSeconds;
    limits.deceleration = limits.acceleration;
    if (turning_.step_speed(wanted_speed_, limits)) begin_settling(kTurnDecays);
}

void FrequencyScan::settle_step(const Axis& axis) {
    if (static_cast<double>(wait_) <= steps_per_period()) {
        speed_.take(axis.speed());
        command_.take(axis.current_demand());
    }
    if (--wait_ > 0) return;
    const double bias = std::abs(plan_.bias);
    if (bias > 0.0 && swing() > kMostSwing * bias && ++tries_ <= kMostTries) {
        share_ *= kGoodSwing * bias / swing();
        begin_settling(kTryDecays);
        return;
    }
    const double least = kLeastMeasuring * static_cast<double>(hertz());
    const auto periods =
        std::max(plan_.measure_periods, static_cast<std::int64_t>(std::ceil(least)));
    correlator_.begin(hertz(), periods);
    phase_ = Phase::kMeasure;
}

// Command and feedback are those of the step before: the command is all that the loop asks for, the
// sine and what the loop does against it, so that the plant is measured and not the loop.
void FrequencyScan::measure_step(const Axis& axis) {
    correlator_.add(axis.current_demand(), axis.speed());
    if (!correlator_.full()) return;
    const double response = std::abs(correlator_.response());
    if (!longer_ && response < kWeakResponse * Axis::kSpeedUnit) {
        longer_ = true;
        correlator_.extend(kLonger);
        return;
    }
    finish_point();
    if (done_ == plan_.points) {
        end_measuring(ScanResult::kDone);
    } else {
        begin_point(axis);
    }
}

void FrequencyScan::finish_point() {
    const std::complex<double> command = correlator_.command();
    const double least = kLeastCommand * plan_.amplitude;
    if (plan_.amplitude > 0.0 && std::abs(command) > least) {
        results_.add(hertz(), units_.gain * correlator_.response() / command);
    } else {
        results_.add_nothing();
    }
    ++done_;
}

void FrequencyScan::run_down_step() {
    ProfileLimits limits;
    limits.speed = std::abs(turning_.speed());
    limits.deceleration = std::max(std::abs(plan_.bias), units_.resolution) / kTurnSeconds;
    limits.acceleration = limits.deceleration;
    if (turning_.step_speed(0.0, limits) && --wait_ <= 0) phase_ = Phase::kIdle;
}

SetPoint FrequencyScan::excited(const Axis& axis) {
    SetPoint out;
    out.loop = Loop::kVelocity;
    out.speed = turning_.speed();
    const bool on = phase_ != Phase::kRunDown && phase_ != Phase::kIdle;
    const double current = on ? share_ * plan_.amplitude * std::sin(phase_of_sine_) : 0.0;
    if (on) {
        phase_of_sine_ += 2.0 * kPi / steps_per_period();
        if (phase_of_sine_ >= 2.0 * kPi) phase_of_sine_ -= 2.0 * kPi;
    }
    // Into the speed as much as makes this current in the proportional part.
    const double gain = axis.setup().velocity_kp;
    injection_ = plan_.into_speed ? 0.0 : current;
    if (plan_.into_speed && gain > 0.0) out.speed += current / gain;
    return out;
}

void FrequencyScan::refresh(Object& object) {
    const bool measuring = active() && phase_ != Phase::kRunDown;
    if (&object == &window_) {
        object.value = results_.word(address_) | std::int64_t{results_.word(address_ + 1)} << 16;
    } else if (&object == &frequency_) {
        object.value = measuring ? hertz() : 0;
    } else if (&object == &done_object_) {
        object.value = done_;
    } else if (&object == &shift_) {
        object.value = results_.shift();
    } else if (&object == &result_object_) {
        object.value = static_cast<std::int64_t>(result_);
    } else if (&object == &most_points_) {
        object.value = kScanPoints;
    }
}

void FrequencyScan::written(Object& object) {
    if (&object == &window_) address_ = object.value;
}

}  // namespace servo::sim
