#include "sim/digital_io.h"

#include <algorithm>
#include <utility>

#include "sim/model/plant.h"
#include "sim/object_ids.h"

namespace servo::sim {

namespace {

constexpr unsigned kFirstMask = 0x7FFF;
constexpr unsigned kNextMask = 0x0FFF;
constexpr unsigned kLastOfFirst = 0x8000;  // belongs to the first group by its value

// 0 for the first group, 1 and 2 for the codes from 0x8000 and from 0x9000; nothing lies above.
constexpr std::size_t kNoGroup = 3;

std::size_t group_of(std::uint16_t value) {
    if (value <= kLastOfFirst) return 0;
    const std::size_t group = (value >> 12U) - 7U;
    return std::min(group, kNoGroup);
}

unsigned bits_of(std::uint16_t value) {
    return value & (value <= kLastOfFirst ? kFirstMask : kNextMask);
}

std::uint8_t bit(int pin) {
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(pin));
}

bool is_pin(int pin) {
    return pin >= 0 && pin < kInputPins;
}

std::int64_t steps_of_tenths(std::int64_t tenths) {
    return tenths * kStepsPerMillisecond / 10;
}

}  // namespace

bool names_function(std::uint16_t value, std::uint16_t code) {
    const std::size_t group = group_of(value);
    return group != kNoGroup && group == group_of(code) && (bits_of(value) & bits_of(code)) != 0;
}

DigitalInputs::DigitalInputs(ObjectTable& t)
    : simulate_(t.bind(ids::kInputSimulate, Type::kUint16)),
      polarity_(t.bind(ids::kInputPolarity, Type::kUint16, 0xFF)),
      filter_time_(t.bind(ids::kInputFilter, Type::kUint16)),
      standard_(t.bind(ids::kStandardInputs, Type::kUint32)),
      last_changed_(t.bind(ids::kLastInput, Type::kUint8)) {
    for (int i = 0; i < kInputPins; ++i) {
        const dictionary::Identity id = i < 7 ? ids::kInputFunctions + i : ids::kInputFunction8;
        functions_[static_cast<std::size_t>(i)] = &t.bind(id, Type::kUint16);
    }
    for (int i = 0; i < 4; ++i)
        counters_.push_back(&t.bind(ids::kInputCounters + i, Type::kUint32));
    for (Object* const object : functions_)
        object->owner = this;
    simulate_.owner = this;
    polarity_.owner = this;
    filter_time_.owner = this;
    standard_.owner = this;
    t.bind(ids::kInputState, Type::kUint16).owner = this;
    t.bind(ids::kInputLevels, Type::kUint16).owner = this;
}

void DigitalInputs::power_up(std::int64_t step) {
    seen_ = levels_;
    accepted_ = levels_;
    since_.fill(step);
    state_ = effective(accepted_);
    now_ = functions(state_);
    before_ = now_;
    at_once_ = now_;
    reassigned_ = true;  // who acts on levels has to hear of them
    wake();
}

void DigitalInputs::put(int pin, bool high) {
    const std::uint8_t mask = bit(pin);
    levels_ = static_cast<std::uint8_t>(high ? levels_ | mask : levels_ & ~mask);
    wake();
}

void DigitalInputs::set_pin(int pin, bool high) {
    if (!is_pin(pin)) return;
    pulses_[static_cast<std::size_t>(pin)] = {};
    // Machines set their switches at every step.
    if (this->pin(pin) != high) put(pin, high);
}

void DigitalInputs::pulse_pin(int pin, std::int64_t steps) {
    if (!is_pin(pin) || steps <= 0) return;
    Pulse& pulse = pulses_[static_cast<std::size_t>(pin)];
    // One that is under way begins anew.
    if (pulse.steps == 0) put(pin, !this->pin(pin));
    pulse = {steps, kNever};
    wake();
}

std::uint8_t DigitalInputs::pins_with(InputFunction function) const {
    unsigned pins = 0;
    for (int i = 0; i < kInputPins; ++i) {
        const auto value =
            static_cast<std::uint16_t>(functions_[static_cast<std::size_t>(i)]->value);
        if (names_function(value, static_cast<std::uint16_t>(function))) pins |= bit(i);
    }
    return static_cast<std::uint8_t>(pins);
}

void DigitalInputs::drive_function(InputFunction function, bool active) {
    const std::uint8_t pins = pins_with(function);
    for (int i = 0; i < kInputPins; ++i) {
        if ((pins & bit(i)) == 0) continue;
        const bool active_high = (polarity_.value & bit(i)) != 0;
        set_pin(i, active == active_high);
    }
}

bool DigitalInputs::in(const Groups& groups, InputFunction function) {
    const auto code = static_cast<std::uint16_t>(function);
    return (groups[group_of(code)] & bits_of(code)) != 0;
}

std::uint8_t DigitalInputs::effective(std::uint8_t levels) const {
    const auto polarity = static_cast<unsigned>(polarity_.value);
    const auto simulate = static_cast<unsigned>(simulate_.value);
    return static_cast<std::uint8_t>(~(levels ^ polarity) | simulate);
}

DigitalInputs::Groups DigitalInputs::functions(std::uint8_t state) const {
    Groups all{};
    for (int i = 0; i < kInputPins; ++i) {
        if ((state & bit(i)) == 0) continue;
        const auto value =
            static_cast<std::uint16_t>(functions_[static_cast<std::size_t>(i)]->value);
        const std::size_t group = group_of(value);
        if (group == kNoGroup) continue;
        all[group] = static_cast<std::uint16_t>(all[group] | bits_of(value));
    }
    return all;
}

void DigitalInputs::end_pulses(std::int64_t step) {
    for (int i = 0; i < kInputPins; ++i) {
        Pulse& pulse = pulses_[static_cast<std::size_t>(i)];
        if (pulse.steps == 0) continue;
        if (pulse.ends == kNever) pulse.ends = step + pulse.steps;
        if (step >= pulse.ends) {
            pulse = {};
            levels_ = static_cast<std::uint8_t>(levels_ ^ bit(i));
        } else {
            due_ = std::min(due_, pulse.ends);
        }
    }
}

void DigitalInputs::filter(std::int64_t step) {
    const std::int64_t time = steps_of_tenths(filter_time_.value);
    for (int i = 0; i < kInputPins; ++i) {
        const std::uint8_t mask = bit(i);
        std::int64_t& since = since_[static_cast<std::size_t>(i)];
        if (((levels_ ^ seen_) & mask) != 0) since = step;
        if (((levels_ ^ accepted_) & mask) == 0) continue;
        if (step - since >= time) {
            accepted_ = static_cast<std::uint8_t>(accepted_ ^ mask);
        } else {
            due_ = std::min(due_, since + time);
        }
    }
    seen_ = levels_;
}

void DigitalInputs::count_edges(std::uint8_t before) {
    const unsigned changed = before ^ state_;
    if (changed == 0) return;
    for (int i = 0; i < kInputPins; ++i) {
        if ((changed & bit(i)) == 0) continue;
        last_changed_.value = i + 1;
        const auto place = static_cast<std::size_t>(i);
        if ((state_ & bit(i)) == 0 || place >= counters_.size()) continue;
        Object& counter = *counters_[place];
        counter.value = cut(counter.type, counter.value + 1);
    }
}

bool DigitalInputs::look_now(std::int64_t step) {
    due_ = kNever;
    end_pulses(step);
    const bool reassigned = std::exchange(reassigned_, false);
    // A function that is given to a pin, or taken from one, begins and ends without an edge.
    if (reassigned) now_ = functions(state_);
    filter(step);
    const std::uint8_t state_before = state_;
    state_ = effective(accepted_);
    count_edges(state_before);
    before_ = now_;
    now_ = functions(state_);
    const Groups at_once = functions(effective(levels_));
    const bool changed = reassigned || now_ != before_ || at_once != at_once_;
    at_once_ = at_once;
    return changed;
}

void DigitalInputs::refresh(Object& object) {
    const std::uint8_t state = effective(accepted_);
    if (object.id == ids::kInputState) {
        object.value = state;
    } else if (object.id == ids::kInputLevels) {
        object.value = levels_;
    } else if (object.id == ids::kStandardInputs) {
        const Groups active = functions(state);
        const auto part = [&](InputFunction function, unsigned place) {
            return (in(active, function) ? 1U : 0U) << place;
        };
        object.value = part(InputFunction::kNegativeLimit, 0) |
                       part(InputFunction::kPositiveLimit, 1) |
                       part(InputFunction::kHomeSignal, 2) | static_cast<unsigned>(state) << 16U;
    }
}

void DigitalInputs::written(Object& object) {
    const auto is = [&](const Object* function) { return function == &object; };
    if (std::any_of(functions_.begin(), functions_.end(), is)) reassigned_ = true;
    wake();
}

}  // namespace servo::sim
