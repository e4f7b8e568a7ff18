#include "sim/digital_outputs.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "sim/model/plant.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

constexpr unsigned kAllPins = (1U << kOutputPins) - 1U;
constexpr unsigned kBusPinsFrom = 16;  // in 60FE; bit 0 is the brake
constexpr unsigned kBusBrake = 1;
constexpr unsigned kSourceBits = 8;

std::int64_t steps_of(const Object& milliseconds) {
    return milliseconds.value * kStepsPerMillisecond;
}

}  // namespace

DigitalOutputs::Comparison DigitalOutputs::comparison(int number) {
    const dictionary::Identity first = ids::kMultiOutputs + number * 4;
    return {table_.bind(first, Type::kUint32), table_.bind(first + 1, Type::kInt32),
            table_.bind(first + 2, Type::kInt32), table_.bind(first + 3, Type::kUint8)};
}

DigitalOutputs::DigitalOutputs(ObjectTable& t)
    : table_(t),
      simulate_(t.bind(ids::kOutputSimulate, Type::kUint16)),
      polarity_(t.bind(ids::kOutputPolarity, Type::kUint16, 0xFF)),
      by_bus_(t.bind(ids::kStandardOutputs, Type::kUint32)),
      bus_mask_(t.bind(ids::kStandardOutputMask, Type::kUint32)),
      hold_(t.bind(ids::kOutputHold, Type::kUint16)),
      last_changed_(t.bind(ids::kLastOutput, Type::kUint8)),
      comparisons_{comparison(0), comparison(1), comparison(2)} {
    for (int i = 0; i < kOutputPins; ++i) {
        const dictionary::Identity id =
            i < 5 ? ids::kOutputFunctions + i : ids::kOutputFunctions6 + (i - 5);
        functions_[static_cast<std::size_t>(i)] = &t.bind(id, Type::kUint16);
    }
    t.bind(ids::kOutputPins, Type::kUint16).owner = this;
    t.bind(ids::kOutputState, Type::kUint16).owner = this;
}

void DigitalOutputs::power_up() {
    state_ = 0;
    held_until_.fill(0);
    due_ = 0;
}

// An object that is not there, or is no number, is never between the levels.
bool DigitalOutputs::compare(const Comparison& c) {
    Object* const object =
        table_.find(static_cast<dictionary::Identity>(c.source.value >> kSourceBits));
    if (object == nullptr || !object->is_number()) return false;
    std::int64_t value = table_.read(*object);
    if (c.style.value == 1) value = std::abs(value);
    return value >= c.low.value && value <= c.high.value;
}

void DigitalOutputs::look(OutputFunctions active, std::int64_t step) {
    due_ = kNever;
    std::uint16_t code = static_cast<std::uint16_t>(OutputFunction::kMulti0);
    for (const Comparison& c : comparisons_) {
        if (c.source.value != 0) {
            active.set(static_cast<OutputFunction>(code), compare(c));
            due_ = step + kStepsPerMillisecond;
        }
        code = static_cast<std::uint16_t>(code << 1U);
    }
    const auto brake = static_cast<std::uint16_t>(OutputFunction::kMotorBrake);
    const auto mask = static_cast<std::uint32_t>(bus_mask_.value);
    const auto by_bus = static_cast<std::uint32_t>(by_bus_.value);
    for (unsigned i = 0; i < kOutputPins; ++i) {
        const auto value = static_cast<std::uint16_t>(functions_[i]->value);
        bool on = active.any_of(value);
        if ((mask & kBusBrake) != 0 && value <= 0x8000U && (value & brake) != 0) {
            on = active.any_of(static_cast<std::uint16_t>(value & ~brake)) ||
                 (by_bus & kBusBrake) != 0;
        }
        if ((mask >> (kBusPinsFrom + i) & 1U) != 0) on = (by_bus >> (kBusPinsFrom + i) & 1U) != 0;
        if (on == ((state_ >> i & 1U) != 0)) continue;
        if (step < held_until_[i]) {
            due_ = std::min(due_, held_until_[i]);
            continue;
        }
        state_ = static_cast<std::uint8_t>(state_ ^ 1U << i);
        held_until_[i] = step + steps_of(hold_);
        last_changed_.value = i + 1;
    }
}

std::uint8_t DigitalOutputs::pins() const {
    const auto polarity = static_cast<unsigned>(polarity_.value);
    const auto simulate = static_cast<unsigned>(simulate_.value);
    return static_cast<std::uint8_t>((~(state_ ^ polarity) | simulate) & kAllPins);
}

void DigitalOutputs::refresh(Object& object) {
    if (object.id == ids::kOutputPins) object.value = pins();
    if (object.id == ids::kOutputState) object.value = state_;
}

BrakeSignal::BrakeSignal(ObjectTable& t)
    : release_(t.bind(ids::kBrakeRelease, Type::kUint16, 20)),
      speed_(t.bind(ids::kBrakeSpeed, Type::kUint16, 30)),
      longest_(t.bind(ids::kBrakeLongest, Type::kUint16, 500)),
      by_hand_(t.bind(ids::kBrakeByHand, Type::kUint8)) {}

void BrakeSignal::look(bool powered, double rpm, std::int64_t step) {
    if (by_hand_.value != 0) {
        wanted_ = by_hand_.value == 1;
        open_ = wanted_;
        return;
    }
    if (powered != wanted_) {
        wanted_ = powered;
        since_ = step;
    }
    if (open_ == wanted_) return;
    const std::int64_t waited = step - since_;
    const bool now = wanted_ ? waited >= steps_of(release_)
                             : std::abs(rpm) <= static_cast<double>(speed_.value) ||
                                   waited >= steps_of(longest_);
    if (now) open_ = wanted_;
}

}  // namespace servo::sim
