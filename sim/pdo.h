// The set-up of the eight receive and eight transmit PDOs, with the rules of CiA 301 by which it
// may be changed. The bus itself is not there: no PDO travels.
//
//   1400.., 1800..  communication: identifier (COB-ID), transmission type, times
//   1600.., 1A00..  mapping: count, and up to eight objects of 64 bits in all
//
// A write of the value that is there already changes nothing and is taken in every state, so a set
// of parameters can be written back to the drive that it was read from.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "sim/object_table.h"
#include "sim/subsystem.h"

namespace servo::sim {

inline constexpr std::size_t kPdos = 8;  // of each direction
inline constexpr std::size_t kPdoEntries = 8;
inline constexpr std::size_t kPdoBits = 64;

class PdoSetup final : public Subsystem {
  public:
    explicit PdoSetup(ObjectTable& table);

    Abort accept(const Object& object, std::int64_t value) override;

  private:
    struct Pdo {
        bool transmits = false;
        Object* cob_id = nullptr;
        Object* count = nullptr;
        std::array<Object*, kPdoEntries> entries{};

        bool valid() const;
    };
    enum class Part : std::uint8_t { kCobId, kType, kInhibit, kSyncStart, kCount, kEntry };
    struct Place {
        const Pdo* pdo = nullptr;
        Part part = Part::kCobId;
    };

    void add(Pdo& pdo, dictionary::Identity communication, dictionary::Identity mapping);
    void own(const Pdo& pdo, Object& object, Part part);

    // Why a new value of that part is refused.
    static Abort accept_cob_id(const Pdo& pdo, std::int64_t value);
    static Abort accept_type(const Pdo& pdo, std::int64_t value);
    Abort accept_count(const Pdo& pdo, std::int64_t value);
    Abort accept_entry(const Pdo& pdo, std::int64_t value);
    Abort may_map(const Pdo& pdo, std::int64_t value);

    ObjectTable& table_;
    std::array<Pdo, 2 * kPdos> pdos_;
    std::unordered_map<dictionary::Identity, Place> places_;
};

}  // namespace servo::sim
