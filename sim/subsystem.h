// A part of the drive that stands behind some of its objects.
#pragma once

#include <cstdint>
#include <string_view>

#include "sim/object_table.h"

namespace servo::sim {

// Why an access is refused: the codes of CiA 301.
enum class Abort : std::uint32_t {
    kNone = 0,
    kUnknownCommand = 0x05040001,
    kUnsupportedAccess = 0x06010000,
    kWriteOnly = 0x06010001,
    kReadOnly = 0x06010002,
    kNoObject = 0x06020000,
    kNotMappable = 0x06040041,
    kMappedTooLong = 0x06040042,
    kIncompatible = 0x06040043,
    kHardware = 0x06060000,
    kLength = 0x06070010,
    kNoSub = 0x06090011,
    kRange = 0x06090030,
    kTooHigh = 0x06090031,
    kTooLow = 0x06090032,
    kGeneral = 0x08000000,
    kNotStored = 0x08000020,
    kState = 0x08000022,
};

class Subsystem {
  public:
    Subsystem() = default;
    Subsystem(const Subsystem&) = delete;
    Subsystem& operator=(const Subsystem&) = delete;
    virtual ~Subsystem() = default;

    // A read over the line. Refusing one tells nothing of the object.
    virtual Abort may_read(const Object&) { return Abort::kNone; }

    // Before the object's value is read: bring it up to date.
    virtual void refresh(Object&) {}

    // A write over the line, in type and limits already. Refusing leaves the object as it was.
    virtual Abort accept(const Object&, std::int64_t) { return Abort::kNone; }

    // The object has a new value, from whoever.
    virtual void written(Object&) {}
};

}  // namespace servo::sim
