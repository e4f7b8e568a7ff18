// The list of past faults: eight records, the newest first, and the standard's list of error codes.
// It is written into the non-volatile memory with every fault, so a restart doesn't lose it.
#pragma once

#include <array>
#include <cstdint>

#include "sim/memory.h"
#include "sim/object_table.h"
#include "sim/subsystem.h"

namespace servo::sim {

// What one record holds, in the units of its objects.
struct FaultRecord {
    std::uint16_t word1 = 0;
    std::uint16_t word2 = 0;
    std::uint32_t minutes = 0;
    std::uint16_t extended = 0;
    std::int64_t bus = 0;
    std::int64_t speed = 0;
    std::int64_t current = 0;
    std::int64_t temperature = 0;
    std::int64_t mode = 0;
    std::int64_t status_word = 0;
};

class FaultHistory : public Subsystem {
  public:
    FaultHistory(ObjectTable& table, Memory& memory);

    // Takes the records over from the memory.
    void power_up();

    // False when the memory could not be written.
    bool add(const FaultRecord& record, std::uint16_t error_code);

    void refresh(Object& object) override;
    void written(Object& object) override;

  private:
    static constexpr std::size_t kRecords = 8;
    static constexpr std::size_t kFields = 10;

    bool keep();
    void clear();

    Memory& memory_;
    Object& count_;
    Object& clear_;
    Object& in_all_;
    Object& error_count_;
    std::array<std::array<Object*, kFields>, kRecords> records_{};
    std::array<Object*, kRecords> errors_{};
};

}  // namespace servo::sim
