#include "sim/position_table.h"

#include <algorithm>
#include <cmath>

#include "sim/model/plant.h"
#include "sim/motion_parameters.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// Fields of the control register.
constexpr unsigned kNext = 0x1F;
constexpr unsigned kGoesOn = 0x0100;
constexpr unsigned kUses0 = 0x0200;
constexpr unsigned kUses1 = 0x0400;
constexpr unsigned kBoth = 0x0800;
constexpr unsigned kReferenceAt = 12;
constexpr unsigned kStartAt = 14;
constexpr unsigned kTwoBits = 3;
constexpr unsigned kNoMeaning = 3;  // of a field of two bits

constexpr unsigned kNibble = 4;

std::vector<const Object*> bind(ObjectTable& table, dictionary::Identity first, int count,
                                Type type, std::int64_t factory = 0) {
    std::vector<const Object*> objects;
    objects.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        objects.push_back(&table.bind(first + i, type, factory));
    return objects;
}

}  // namespace

PositionTable::PositionTable(ObjectTable& t)
    : accelerations_(bind(t, ids::kTableAccelerations, kTableRampEntries, Type::kInt32, 16384)),
      decelerations_(bind(t, ids::kTableDecelerations, kTableRampEntries, Type::kInt32, 16384)),
      targets_(bind(t, ids::kTableTargets, kTableSteps, Type::kInt32)),
      speeds_(bind(t, ids::kTableSpeeds, kTableSteps, Type::kInt32)),
      delays_(bind(t, ids::kTableDelays, kTableSteps, Type::kUint16)),
      controls_(bind(t, ids::kTableControls, kTableSteps, Type::kUint16)),
      loops_(bind(t, ids::kTableLoops, kTableSteps, Type::kUint16)),
      ramps_(bind(t, ids::kTableRamps, kTableSteps, Type::kUint8)),
      start_index_(t.bind(ids::kTableStartIndex, Type::kUint8)),
      stop_ramp_(t.bind(ids::kTableStopRamp, Type::kUint32, 32768)),
      enable_(t.bind(ids::kTableEnable, Type::kUint8, 1)),
      needs_home_(t.bind(ids::kTableNeedsHome, Type::kUint8)),
      runs_(t.bind(ids::kTableRuns, Type::kUint32)) {}

void PositionTable::power_up() {
    state_ = State::kIdle;
    index_ = 0;
    loops_left_ = 0;
    error_step_.reset();
    paused_ = false;
}

void PositionTable::start(int step) {
    index_ = std::clamp(step, 0, kTableSteps - 1);
    error_step_.reset();
    paused_ = false;
    entered_ = true;
    // The first look finds out what the step waits for.
    state_ = State::kWaiting;
}

TableOrder PositionTable::stop_order(double deceleration) const {
    TableOrder order;
    order.stop = true;
    order.limits.deceleration = deceleration;
    return order;
}

TableOrder PositionTable::abort() {
    drop();
    return stop_order(static_cast<double>(stop_ramp_.value) * kCountsPerAcceleration);
}

void PositionTable::drop() {
    if (!running()) return;
    state_ = State::kAborted;
    loops_left_ = 0;
    paused_ = false;
}

TableOrder PositionTable::fail() {
    error_step_ = index_;
    return abort();
}

TableOrder PositionTable::pause() {
    paused_ = true;
    return stop_order(now_.limits.deceleration);
}

std::optional<TableOrder> PositionTable::go_on() {
    paused_ = false;
    if (state_ != State::kRunning) return std::nullopt;
    TableOrder order;
    order.target = target_;
    order.limits = now_.limits;
    return order;
}

std::int64_t PositionTable::entry(const Entries& entries, int step) {
    return entries[static_cast<std::size_t>(step)]->value;
}

// 0 for an index that is none, and for an acceleration that is none.
double PositionTable::ramp(const Entries& entries, unsigned index) {
    if (index >= kTableRampEntries) return 0.0;
    const std::int64_t raw = entry(entries, static_cast<int>(index));
    return raw > 0 ? static_cast<double>(raw) * kCountsPerAcceleration : 0.0;
}

std::optional<PositionTable::Trigger> PositionTable::trigger_of(unsigned control) {
    const unsigned start = control >> kStartAt & kTwoBits;
    if (start == kNoMeaning) return std::nullopt;
    Trigger trigger;
    trigger.start = static_cast<Start>(start);
    trigger.uses0 = (control & kUses0) != 0;
    trigger.uses1 = (control & kUses1) != 0;
    trigger.both = (control & kBoth) != 0;
    return trigger;
}

std::optional<PositionTable::Step> PositionTable::read(int step,
                                                       const TableSurroundings& around) const {
    const auto control = static_cast<unsigned>(entry(controls_, step));
    const auto ramps = static_cast<unsigned>(entry(ramps_, step));
    const unsigned reference = control >> kReferenceAt & kTwoBits;
    const auto trigger = trigger_of(control);
    if (reference == kNoMeaning || !trigger) return std::nullopt;
    Step s;
    s.target = around.sense * static_cast<double>(entry(targets_, step));
    const auto speed = static_cast<double>(entry(speeds_, step));
    s.limits.speed = std::min(std::abs(speed) * kCountsPerSpeed, around.most_speed);
    s.limits.acceleration = ramp(accelerations_, ramps >> kNibble);
    s.limits.deceleration = ramp(decelerations_, ramps & 0xFU);
    s.delay = entry(delays_, step) * kStepsPerMillisecond;
    s.next = static_cast<int>(control & kNext);
    s.goes_on = (control & kGoesOn) != 0;
    s.reference = static_cast<Reference>(reference);
    s.trigger = *trigger;
    const bool no_home =
        s.reference == Reference::kAbsolute && needs_home_.value == 1 && !around.homed;
    if (s.limits.speed <= 0.0 || s.limits.acceleration <= 0.0 || s.limits.deceleration <= 0.0 ||
        no_home) {
        return std::nullopt;
    }
    return s;
}

// Without a condition that takes part: always.
bool PositionTable::Trigger::met(const TableSurroundings& around) const {
    if (!conditional()) return true;
    if (uses0 && uses1 && both) return around.condition0 && around.condition1;
    return (uses0 && around.condition0) || (uses1 && around.condition1);
}

// Only a condition interrupts: a step that is to interrupt without one begins like any other.
bool PositionTable::interrupted(const TableSurroundings& around) const {
    if (!now_.goes_on) return false;
    const auto trigger = trigger_of(static_cast<unsigned>(entry(controls_, now_.next)));
    return trigger && trigger->start == Start::kInterrupt && trigger->conditional() &&
           trigger->met(around);
}

// The step at index_, for the first time or once more.
std::optional<TableOrder> PositionTable::begin(const TableSurroundings& around) {
    const auto step = read(index_, around);
    if (!step) return fail();
    now_ = *step;
    if (entered_) loops_left_ = std::max<std::int64_t>(entry(loops_, index_), 1) - 1;
    entered_ = false;
    if (now_.trigger.met(around)) return go(around);
    state_ = State::kWaiting;
    return std::nullopt;
}

TableOrder PositionTable::go(const TableSurroundings& around) {
    state_ = State::kRunning;
    double from = 0.0;
    if (now_.reference == Reference::kDemand) from = around.demand;
    if (now_.reference == Reference::kActual) from = static_cast<double>(around.actual);
    target_ = from + now_.target;
    TableOrder order;
    order.target = target_;
    order.limits = now_.limits;
    return order;
}

std::optional<TableOrder> PositionTable::after_move(const TableSurroundings& around) {
    if (now_.delay == 0) return repeat_or_next(around);
    state_ = State::kDelay;
    delay_left_ = now_.delay;
    return std::nullopt;
}

std::optional<TableOrder> PositionTable::repeat_or_next(const TableSurroundings& around) {
    if (loops_left_ == 0) return next(around);
    --loops_left_;
    return begin(around);
}

std::optional<TableOrder> PositionTable::next(const TableSurroundings& around) {
    if (now_.goes_on) {
        index_ = now_.next;
        entered_ = true;
        return begin(around);
    }
    state_ = State::kDone;
    runs_.value = cut(runs_.type, runs_.value + 1);
    return std::nullopt;
}

std::optional<TableOrder> PositionTable::step(const TableSurroundings& around) {
    if (paused_ || !running()) return std::nullopt;
    if (entered_) return begin(around);
    if (state_ == State::kWaiting) {
        if (!now_.trigger.met(around)) return std::nullopt;
        return go(around);
    }
    if (interrupted(around)) return next(around);
    if (state_ == State::kDelay) {
        if (--delay_left_ > 0) return std::nullopt;
        return repeat_or_next(around);
    }
    if (around.blocked) return fail();
    if (!around.at_rest) return std::nullopt;
    return after_move(around);
}

}  // namespace servo::sim
