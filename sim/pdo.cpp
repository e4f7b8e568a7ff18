#include "sim/pdo.h"

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// Bits of a COB-ID.
constexpr std::uint32_t kInvalid = 0x80000000;   // the PDO is off
constexpr std::uint32_t kNoRemote = 0x40000000;  // remote requests are not answered
constexpr std::uint32_t kCanId = 0x000007FF;     // the bus of this drive has 11-bit identifiers

constexpr std::int64_t kOff = kInvalid;

// The width of an entry's object, in bits, and the object.
constexpr std::int64_t kBitsMask = 0xFF;
constexpr int kIdentityShift = 8;

bool in(std::int64_t value, std::int64_t low, std::int64_t high) {
    return value >= low && value <= high;
}

// Identifiers that the standard keeps for network management, SDOs and error control.
bool restricted(std::int64_t can_id) {
    return in(can_id, 0x000, 0x07F) || in(can_id, 0x101, 0x180) || in(can_id, 0x581, 0x5FF) ||
           in(can_id, 0x601, 0x67F) || in(can_id, 0x6E0, 0x6FF) || in(can_id, 0x701, 0x7FF);
}

// What a PDO may carry: values of the maker's and the profile's objects, and out of the
// communication's the error registers and the time. Settings of the line, storing and restarting
// come by no PDO.
bool process_data(dictionary::Identity id, bool transmits) {
    const std::int32_t index = id >> 8;
    if (index < 0x2000) {
        return transmits &&
               (id == ids::kErrorRegister || id == ids::kStatusRegister || id == ids::kTimeStamp);
    }
    return index < 0xA000 && (transmits || !in(index, 0x2FE0, 0x2FFF));
}

}  // namespace

bool PdoSetup::Pdo::valid() const {
    return (static_cast<std::uint32_t>(cob_id->value) & kInvalid) == 0;
}

PdoSetup::PdoSetup(ObjectTable& table) : table_(table) {
    for (std::size_t i = 0; i < kPdos; ++i) {
        const auto index = static_cast<dictionary::Identity>(i << 8U);
        pdos_[i].transmits = false;
        add(pdos_[i], ids::kReceivePdo + index, ids::kReceiveMapping + index);
        pdos_[kPdos + i].transmits = true;
        add(pdos_[kPdos + i], ids::kTransmitPdo + index, ids::kTransmitMapping + index);
    }
}

void PdoSetup::add(Pdo& pdo, dictionary::Identity communication, dictionary::Identity mapping) {
    pdo.cob_id = &table_.bind(communication + 1, Type::kUint32, kOff);
    own(pdo, *pdo.cob_id, Part::kCobId);
    own(pdo, table_.bind(communication + 2, Type::kUint8, 255), Part::kType);
    if (pdo.transmits) {
        own(pdo, table_.bind(communication + 3, Type::kUint16), Part::kInhibit);
        own(pdo, table_.bind(communication + 6, Type::kUint8), Part::kSyncStart);
    }
    pdo.count = &table_.bind(mapping, Type::kUint8);
    own(pdo, *pdo.count, Part::kCount);
    for (std::size_t i = 0; i < kPdoEntries; ++i) {
        const auto sub = static_cast<dictionary::Identity>(i + 1);
        pdo.entries[i] = &table_.bind(mapping + sub, Type::kUint32);
        own(pdo, *pdo.entries[i], Part::kEntry);
    }
}

void PdoSetup::own(const Pdo& pdo, Object& object, Part part) {
    object.owner = this;
    places_[object.id] = {&pdo, part};
}

Abort PdoSetup::accept(const Object& object, std::int64_t value) {
    const auto found = places_.find(object.id);
    if (found == places_.end() || value == object.value) return Abort::kNone;
    const Pdo& pdo = *found->second.pdo;
    switch (found->second.part) {
        case Part::kCobId:
            return accept_cob_id(pdo, value);
        case Part::kType:
            return accept_type(pdo, value);
        case Part::kInhibit:
        case Part::kSyncStart:
            return pdo.valid() ? Abort::kState : Abort::kNone;
        case Part::kCount:
            return accept_count(pdo, value);
        case Part::kEntry:
            return accept_entry(pdo, value);
    }
    return Abort::kNone;
}

// The identifier of a PDO that is on is not exchanged under it. One that is off may get another in
// the write that switches it on.
Abort PdoSetup::accept_cob_id(const Pdo& pdo, std::int64_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    if ((bits & ~(kInvalid | kNoRemote | kCanId)) != 0) return Abort::kRange;
    if ((bits & kInvalid) != 0) return Abort::kNone;
    if (restricted(bits & kCanId)) return Abort::kRange;
    const auto before = static_cast<std::uint32_t>(pdo.cob_id->value);
    const bool another = ((bits ^ before) & kCanId) != 0;
    return pdo.valid() && another ? Abort::kState : Abort::kNone;
}

// 241 to 251 are reserved; 252 and 253 mean remote requests, which only a transmitter can answer.
Abort PdoSetup::accept_type(const Pdo& pdo, std::int64_t value) {
    const std::int64_t first_event = pdo.transmits ? 252 : 254;
    return value <= 240 || value >= first_event ? Abort::kNone : Abort::kRange;
}

// The count puts the entries below it in force, so it is here that they must fit together.
Abort PdoSetup::accept_count(const Pdo& pdo, std::int64_t value) {
    if (pdo.valid()) return Abort::kState;
    if (value > static_cast<std::int64_t>(kPdoEntries)) return Abort::kMappedTooLong;
    std::size_t bits = 0;
    for (std::int64_t i = 0; i < value; ++i) {
        const std::int64_t entry = pdo.entries[static_cast<std::size_t>(i)]->value;
        if (entry == 0) return Abort::kNotMappable;
        if (const Abort refused = may_map(pdo, entry); refused != Abort::kNone) return refused;
        bits += static_cast<std::size_t>(entry & kBitsMask);
    }
    return bits > kPdoBits ? Abort::kMappedTooLong : Abort::kNone;
}

Abort PdoSetup::accept_entry(const Pdo& pdo, std::int64_t value) {
    if (pdo.valid() || pdo.count->value != 0) return Abort::kState;
    return value == 0 ? Abort::kNone : may_map(pdo, value);
}

Abort PdoSetup::may_map(const Pdo& pdo, std::int64_t value) {
    const auto id = static_cast<dictionary::Identity>(value >> kIdentityShift);
    const Object* const object = table_.find(id);
    if (object == nullptr) return Abort::kNoObject;
    if (!object->is_number() || !process_data(id, pdo.transmits)) return Abort::kNotMappable;
    const bool barred = pdo.transmits ? object->flags.write_only : object->flags.read_only;
    const auto bits = static_cast<std::int64_t>(width(object->type) * 8);
    return barred || bits != (value & kBitsMask) ? Abort::kNotMappable : Abort::kNone;
}

}  // namespace servo::sim
