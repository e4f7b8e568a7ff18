#include "sim/recorder_setup.h"

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

constexpr std::int64_t kFactoryPeriod = 1;
constexpr std::int64_t kFactoryOffset = 250;
constexpr std::int64_t kFactoryCount = 500;
constexpr std::int64_t kRising = 1;
constexpr std::int64_t kFactoryLevel = 500;

constexpr std::size_t kNarrowBytes = 2;
constexpr std::size_t kWideBytes = 4;

// The object that a slot's value names: index and sub-index above its width in bits. Null where it
// cannot be recorded.
Object* source_of(ObjectTable& table, std::int64_t value) {
    Object* const object = table.find(static_cast<dictionary::Identity>(value >> 8));
    if (object == nullptr || !object->is_number() || object->flags.write_only) return nullptr;
    const auto bits = static_cast<std::size_t>(value & 0xFF);
    return width(object->type) * 8 == bits ? object : nullptr;
}

Abort add_source(ObjectTable& table, std::int64_t value, bool wide, RecorderSetup& setup) {
    Object* const object = source_of(table, value);
    if (object == nullptr) return Abort::kNotMappable;
    const std::size_t bytes = width(object->type);
    if (wide ? bytes != kWideBytes : bytes > kNarrowBytes) return Abort::kNotMappable;
    setup.sources.push_back(object);
    setup.row_bytes += bytes;
    return Abort::kNone;
}

Abort read_trigger(ObjectTable& table, const RecorderObjects& objects, RecorderSetup& setup) {
    setup.trigger = source_of(table, objects.trigger.value);
    if (setup.trigger == nullptr) return Abort::kNotMappable;
    setup.rising = objects.edge.value == kRising;
    setup.offset = objects.offset.value;
    // The level's object is signed; the upper half of an unsigned source comes as negative there.
    setup.level = objects.level.value;
    if (setup.trigger->type == Type::kUint32) setup.level = cut(Type::kUint32, setup.level);
    return setup.offset < setup.count ? Abort::kNone : Abort::kIncompatible;
}

}  // namespace

RecorderObjects::RecorderObjects(ObjectTable& table)
    : slots{&table.bind(ids::kRecorderSlots, Type::kUint32),
            &table.bind(ids::kRecorderSlots + 1, Type::kUint32),
            &table.bind(ids::kRecorderSlots + 2, Type::kUint32),
            &table.bind(ids::kRecorderSlots + 3, Type::kUint32)},
      wide_slots{&table.bind(ids::kRecorderWideSlots, Type::kUint32),
                 &table.bind(ids::kRecorderWideSlots + 1, Type::kUint32)},
      command(table.bind(ids::kRecorderCommand, Type::kUint8)),
      period(table.bind(ids::kRecorderPeriod, Type::kUint16, kFactoryPeriod)),
      offset(table.bind(ids::kRecorderOffset, Type::kUint16, kFactoryOffset)),
      count(table.bind(ids::kRecorderCount, Type::kUint16, kFactoryCount)),
      edge(table.bind(ids::kRecorderEdge, Type::kUint8, kRising)),
      trigger(table.bind(ids::kRecorderTrigger, Type::kUint32)),
      level(table.bind(ids::kRecorderLevel, Type::kInt32, kFactoryLevel)),
      taken(table.bind(ids::kRecorderTaken, Type::kUint16)),
      trigger_position(table.bind(ids::kRecorderTriggerPosition, Type::kUint16)),
      row_bytes(table.bind(ids::kRecorderRowBytes, Type::kUint8)),
      buffer_bytes(table.bind(ids::kRecorderBufferBytes, Type::kUint16, kRecorderBytes)),
      stop_at_fault(table.bind(ids::kRecorderStopAtFault, Type::kUint8)),
      buffer(table.bind(ids::kRecorderBuffer, Type::kString)) {}

Abort read_sources(ObjectTable& table, const RecorderObjects& objects, RecorderSetup& setup) {
    for (std::size_t channel = 0; channel < kRecorderChannels; ++channel) {
        const std::int64_t wide = objects.wide_slots[channel / 2]->value;
        const bool in_wide = channel % 2 == 0 && wide != 0;
        const std::int64_t value = in_wide ? wide : objects.slots[channel]->value;
        if (value == 0) continue;
        const Abort refused = add_source(table, value, in_wide, setup);
        if (refused != Abort::kNone) return refused;
    }
    return Abort::kNone;
}

Abort read_setup(ObjectTable& table, const RecorderObjects& objects, RecorderSetup& setup) {
    const Abort refused = read_sources(table, objects, setup);
    if (refused != Abort::kNone) return refused;
    setup.period = objects.period.value;
    setup.count = objects.count.value;
    if (setup.sources.empty() || setup.count <= 0 || setup.period <= 0) {
        return Abort::kIncompatible;
    }
    if (static_cast<std::size_t>(setup.count) * setup.row_bytes > kRecorderBytes) {
        return Abort::kMappedTooLong;
    }
    if (objects.trigger.value == 0) return Abort::kNone;
    return read_trigger(table, objects, setup);
}

}  // namespace servo::sim
