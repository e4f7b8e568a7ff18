#include "sim/din_tables.h"

#include <algorithm>

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

std::array<Object*, kDinEntries> entries(ObjectTable& table, dictionary::Identity first,
                                         std::int64_t factory) {
    std::array<Object*, kDinEntries> all{};
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto id = first + static_cast<dictionary::Identity>(i);
        all[i] = &table.bind(id, Type::kInt32, factory);
    }
    return all;
}

constexpr std::int64_t kFactorySpeed = 1365333;
constexpr std::int64_t kFactoryRate = 16384;

}  // namespace

int DinIndex::read(const DigitalInputs& inputs) const {
    int index = 0;
    for (std::size_t i = 0; i < bits_.size(); ++i)
        index |= inputs.active(bits_[i]) ? 1 << i : 0;
    return index;
}

bool DinIndex::assigned(const DigitalInputs& inputs) const {
    return std::any_of(bits_.begin(), bits_.end(),
                       [&](InputFunction bit) { return inputs.assigned(bit); });
}

bool DinIndex::look(const DigitalInputs& inputs, std::int64_t step, std::int64_t delay) {
    const int now = read(inputs);
    if (now != wanted_) {
        wanted_ = now;
        since_ = step;
    }
    if (wanted_ == taken_ || step - since_ < delay) return false;
    taken_ = wanted_;
    return true;
}

DinSpeeds::DinSpeeds(ObjectTable& t)
    : speeds(entries(t, ids::kDinSpeeds, 0)),
      source(t.bind(ids::kSpeedSource, Type::kUint8)),
      acceleration(t.bind(ids::kDinSpeedAcceleration, Type::kUint32, kFactoryRate)),
      deceleration(t.bind(ids::kDinSpeedDeceleration, Type::kUint32, kFactoryRate)),
      without(t.bind(ids::kDinSpeedWithout, Type::kUint8)),
      delay(t.bind(ids::kDinSpeedDelay, Type::kUint16, 2)),
      inversion(t.bind(ids::kDinSpeedInversion, Type::kUint8, 1)),
      stop_at_once(t.bind(ids::kDinSpeedStop, Type::kUint8)) {}

std::int64_t DinSpeeds::target(const DigitalInputs& inputs) const {
    if (without.value == 1 && !index.assigned(inputs)) return 0;
    const std::int64_t speed = speeds[static_cast<std::size_t>(index.value())]->value;
    const bool inverted = inversion.value == 1 && inputs.active(InputFunction::kInvertDirection);
    return inverted ? -speed : speed;
}

DinPositions::DinPositions(ObjectTable& t)
    : targets(entries(t, ids::kDinPositions, 0)),
      speeds(entries(t, ids::kDinPositionSpeeds, kFactorySpeed)),
      acceleration(t.bind(ids::kDinPositionAcceleration, Type::kUint32, kFactoryRate)),
      deceleration(t.bind(ids::kDinPositionDeceleration, Type::kUint32, kFactoryRate)),
      style(t.bind(ids::kDinPositionStyle, Type::kUint8)),
      trigger(t.bind(ids::kDinPositionTrigger, Type::kUint8)),
      delay(t.bind(ids::kDinPositionDelay, Type::kUint16, 2)),
      interruption(t.bind(ids::kDinPositionInterruption, Type::kUint8, 1)),
      needs_home(t.bind(ids::kDinPositionNeedsHome, Type::kUint8)) {}

}  // namespace servo::sim
