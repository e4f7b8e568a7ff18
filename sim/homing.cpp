#include "sim/homing.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace servo::sim {

namespace {

// A motor that presses against a stop loses its torque over this time, so slowly that shaft and
// stop do not throw it back; then it stands for a while.
constexpr std::int64_t kRelaxSteps = 100 * kStepsPerMillisecond;
constexpr std::int64_t kRelaxedSteps = 50 * kStepsPerMillisecond;

// The shaft has that long to reach the end, or to come to rest, once the demand has.
constexpr std::int64_t kPatience = 500 * kStepsPerMillisecond;

constexpr Direction opposite(Direction direction) {
    return direction == Direction::kPositive ? Direction::kNegative : Direction::kPositive;
}

constexpr double sign(Direction direction) {
    return static_cast<double>(direction);
}

bool is_stop(HomingSignal signal) {
    return signal == HomingSignal::kNegativeStop || signal == HomingSignal::kPositiveStop;
}

}  // namespace

void Homing::start(const HomingPlan& plan, const Axis& axis, const HomingSignals& signals) {
    plan_ = plan;
    place_ = static_cast<double>(axis.position_now());
    profile_.set(place_, axis.speed());
    start_ = place_;
    edge_ = place_;
    index_distance_ = 0.0;
    turns_seen_ = axis.plant().turns();
    pressed_ = 0;
    steps_ = 0;
    turned_ = false;
    failed_ = false;
    interrupted_ = false;
    home_.reset();
    direction_ = plan.method.search;
    signal_now_ = active_signal(signals);
    signal_before_ = signal_now_;
    if (plan.search_speed <= 0.0 || plan.zero_speed <= 0.0) {
        fail();
    } else if (is_stop(plan.method.signal)) {
        phase_ = Phase::kStop;
    } else if (plan.method.signal == HomingSignal::kNone) {
        direction_ = plan.method.approach;
        phase_ = Phase::kIndex;
    } else if (signal_now_) {
        found_signal();
    } else {
        phase_ = Phase::kSearch;
    }
}

bool Homing::active_signal(const HomingSignals& signals) const {
    switch (plan_.method.signal) {
        case HomingSignal::kNegativeLimit:
            return signals.negative_limit;
        case HomingSignal::kPositiveLimit:
            return signals.positive_limit;
        case HomingSignal::kHome:
            return signals.home;
        case HomingSignal::kNone:
        case HomingSignal::kNegativeStop:
        case HomingSignal::kPositiveStop:
            return false;
    }
    return false;
}

// Of the way that the motor goes.
bool Homing::at_limit(const HomingSignals& signals) const {
    return direction_ == Direction::kPositive ? signals.positive_limit : signals.negative_limit;
}

// The signal is there, or was from the start: how to its edge from here.
void Homing::found_signal() {
    const bool towards = direction_ == plan_.method.approach;
    const bool searching = phase_ == Phase::kSearch;
    if (!plan_.method.enters) {
        direction_ = plan_.method.approach;
        phase_ = Phase::kLeave;
    } else if (searching && towards && plan_.method.index) {
        // Only the index behind it must be exact, so the edge may be passed quickly.
        pass_edge(Phase::kIndex);
    } else {
        direction_ = opposite(plan_.method.approach);
        phase_ = Phase::kBackOff;
    }
}

void Homing::search(const HomingSignals& signals) {
    if (signal_now_) {
        found_signal();
    } else if (at_limit(signals)) {
        if (!plan_.method.turns || turned_) {
            fail();
            return;
        }
        turned_ = true;
        direction_ = opposite(direction_);
    }
}

// Edges count while the motor moves the way that the method wants. One that it passes on while it
// slows down to turn round does not.
void Homing::wait_for_edge(const Axis& axis, bool coming) {
    const bool edge = signal_now_ != signal_before_ && signal_now_ == coming;
    const double way = sign(direction_);
    if (!edge || profile_.speed() * way <= 0.0 || axis.speed() * way <= 0.0) return;
    if (phase_ == Phase::kBackOff) {
        direction_ = plan_.method.approach;
        phase_ = Phase::kApproach;
        return;
    }
    if (plan_.method.index) {
        pass_edge(Phase::kIndex);
    } else {
        edge_ = place_;
        end_at(place_);
    }
}

void Homing::pass_edge(Phase next) {
    edge_ = place_;
    phase_ = next;
}

// The index stands where a turn begins, and is seen exactly there at any speed.
void Homing::look_for_index(const Axis& axis) {
    const std::int64_t turns = axis.plant().turns();
    const bool up = direction_ == Direction::kPositive;
    if (up ? turns <= turns_seen_ : turns >= turns_seen_) return;
    const auto index = static_cast<double>(axis.position_of_turn(up ? turns : turns + 1));
    index_distance_ = std::abs(index - edge_);
    if (index_distance_ >= plan_.blind) end_at(index);
}

void Homing::begin_relaxing(const Axis& axis) {
    phase_ = Phase::kRelax;
    wait_ = kRelaxSteps + kRelaxedSteps;
    pressed_current_ = axis.current_demand();
}

void Homing::relax() {
    if (--wait_ > 0) return;
    profile_.set(place_, 0.0);
    pressed_ = 0;
    if (failed_ || interrupted_) {
        phase_ = Phase::kIdle;
    } else if (plan_.method.index) {
        direction_ = plan_.method.approach;
        pass_edge(Phase::kIndex);
    } else {
        edge_ = place_;
        end_at(place_);
    }
}

void Homing::end_at(double home) {
    home_ = home;
    target_ = home;
    wait_ = kPatience + plan_.window_steps;
    within_ = 0;
    profile_.set(place_, profile_.speed());
    phase_ = Phase::kEnd;
}

std::optional<double> Homing::take_home() {
    return std::exchange(home_, std::nullopt);
}

void Homing::run_to(double target) {
    target_ = target;
}

void Homing::fail() {
    failed_ = true;
    wait_ = kPatience;
    phase_ = Phase::kRest;
}

void Homing::interrupt() {
    if (phase_ == Phase::kIdle || phase_ == Phase::kRest) return;
    interrupted_ = true;
    if (phase_ == Phase::kRelax) return;  // lets go first
    wait_ = kPatience;
    phase_ = Phase::kRest;
}

void Homing::shift(double counts) {
    profile_.set(profile_.position() + counts, profile_.speed());
    place_ += counts;
    start_ += counts;
    edge_ += counts;
    target_ += counts;
    if (home_) *home_ += counts;
}

// What ends any search without success. True when it did.
bool Homing::watch(const Axis& axis, const HomingSignals& signals) {
    pressed_ = axis.current_limited() ? pressed_ + 1 : 0;
    const bool too_long = plan_.most_steps > 0 && steps_ > plan_.most_steps;
    const bool too_far = plan_.travel > 0.0 && std::abs(place_ - start_) > plan_.travel;
    if (too_long || too_far) {
        fail();
        return true;
    }
    if (phase_ == Phase::kStop) return false;
    if (pressed_ >= plan_.stop_steps) {
        // Something holds the axis that has no business there.
        failed_ = true;
        begin_relaxing(axis);
        return true;
    }
    // The search itself may turn round at a limit.
    const bool blocked = phase_ != Phase::kSearch && at_limit(signals);
    if (blocked) fail();
    return blocked;
}

SetPoint Homing::step(const Axis& axis, const HomingSignals& signals) {
    ++steps_;
    place_ = static_cast<double>(axis.position_now());
    signal_before_ = std::exchange(signal_now_, active_signal(signals));
    const bool ending = phase_ == Phase::kEnd || phase_ == Phase::kRest || phase_ == Phase::kRelax;
    if (ending || !watch(axis, signals)) {
        switch (phase_) {
            case Phase::kSearch:
                search(signals);
                break;
            case Phase::kApproach:
                wait_for_edge(axis, true);
                break;
            case Phase::kBackOff:
            case Phase::kLeave:
                wait_for_edge(axis, false);
                break;
            case Phase::kIndex:
                look_for_index(axis);
                break;
            case Phase::kStop:
                if (pressed_ >= plan_.stop_steps) begin_relaxing(axis);
                break;
            case Phase::kRelax:
                relax();
                break;
            case Phase::kIdle:
            case Phase::kEnd:
            case Phase::kRest:
                break;
        }
    }
    turns_seen_ = axis.plant().turns();
    return go(axis);
}

SetPoint Homing::go(const Axis& axis) {
    switch (phase_) {
        case Phase::kSearch:
        case Phase::kStop:
            return turn(plan_.search_speed);
        case Phase::kBackOff:
        case Phase::kApproach:
        case Phase::kLeave:
        case Phase::kIndex:
            return turn(plan_.zero_speed);
        case Phase::kRelax:
            return let_go();
        case Phase::kEnd:
            return run_to_end();
        case Phase::kRest:
            return come_to_rest(axis);
        case Phase::kIdle:
            return {};
    }
    return {};
}

SetPoint Homing::turn(double speed) {
    const double wanted = sign(direction_) * speed;
    ProfileLimits limits;
    limits.speed = std::max(std::abs(wanted), std::abs(profile_.speed()));
    limits.acceleration = plan_.acceleration;
    limits.deceleration = plan_.acceleration;
    profile_.step_speed(wanted, limits);
    SetPoint out;
    out.loop = Loop::kVelocity;
    out.speed = profile_.speed();
    return out;
}

SetPoint Homing::let_go() {
    const auto left = static_cast<double>(std::max<std::int64_t>(wait_ - kRelaxedSteps, 0));
    SetPoint out;
    out.loop = Loop::kCurrent;
    out.current = pressed_current_ * left / static_cast<double>(kRelaxSteps);
    return out;
}

SetPoint Homing::run_to_end() {
    ProfileLimits limits;
    limits.speed = std::max(plan_.search_speed, std::abs(profile_.speed()));
    limits.acceleration = plan_.acceleration;
    limits.deceleration = plan_.acceleration;
    const bool there = profile_.step_to(target_, limits);
    const bool within = there && std::abs(place_ - target_) <= plan_.window;
    within_ = within ? within_ + 1 : 0;
    if (there && (within_ > plan_.window_steps || --wait_ <= 0)) phase_ = Phase::kIdle;
    SetPoint out;
    out.loop = Loop::kPosition;
    out.position = profile_.position();
    out.speed = profile_.speed();
    return out;
}

SetPoint Homing::come_to_rest(const Axis& axis) {
    const ProfileLimits limits{std::abs(profile_.speed()), plan_.acceleration, plan_.acceleration};
    const bool demanded = profile_.step_speed(0.0, limits);
    const bool stands = std::abs(axis.speed()) <= 0.01 * plan_.zero_speed + Axis::kSpeedUnit;
    if (demanded && (stands || --wait_ <= 0)) phase_ = Phase::kIdle;
    SetPoint out;
    out.loop = Loop::kVelocity;
    out.speed = profile_.speed();
    return out;
}

HomingStep Homing::shown() const {
    switch (phase_) {
        case Phase::kSearch:
        case Phase::kApproach:
            return HomingStep::kSearch;
        case Phase::kBackOff:
        case Phase::kLeave:
            return HomingStep::kLeave;
        case Phase::kIndex:
            return HomingStep::kIndex;
        case Phase::kStop:
        case Phase::kRelax:
            return HomingStep::kStop;
        case Phase::kEnd:
            return HomingStep::kEnd;
        case Phase::kIdle:
        case Phase::kRest:
            return HomingStep::kIdle;
    }
    return HomingStep::kIdle;
}

}  // namespace servo::sim
