// What the recorder is asked to do: its objects, and the set-up that they make up.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/object_table.h"
#include "sim/subsystem.h"

namespace servo::sim {

inline constexpr std::size_t kRecorderBytes = 8192;  // of the buffer
inline constexpr std::size_t kRecorderChannels = 4;

struct RecorderObjects {
    explicit RecorderObjects(ObjectTable& table);

    // A to D, for channels 1 to 4 where their objects have 8 or 16 bits.
    std::array<Object*, kRecorderChannels> slots;
    // For an object of 32 bits, one for channels 1 and 2, one for channels 3 and 4.
    std::array<Object*, kRecorderChannels / 2> wide_slots;
    Object& command;  // written: 1 starts, 0 stops; read: the state
    Object& period;   // steps of the loop
    Object& offset;   // rows before the trigger
    Object& count;    // rows
    Object& edge;     // 1 rising, 0 falling
    Object& trigger;
    Object& level;
    Object& taken;
    Object& trigger_position;
    Object& row_bytes;
    Object& buffer_bytes;
    Object& stop_at_fault;
    Object& buffer;
};

struct RecorderSetup {
    std::vector<Object*> sources;  // in the order in which they stand in a row
    std::size_t row_bytes = 0;
    std::int64_t period = 1;
    std::int64_t offset = 0;  // 0 where nothing is waited for
    std::int64_t count = 0;
    Object* trigger = nullptr;  // null: the first row is the trigger
    std::int64_t level = 0;     // as a number of the trigger's own type
    bool rising = true;
};

// The slots' sources in the order of a row, and their bytes. A row has the channels' values in
// their order, those without an object left out. A wide slot in use stands in the place of the
// first channel of its pair, whatever that channel's narrow slot holds: whoever changes a channel
// from a narrow object to a wide one need not empty the narrow slot. So a wide object of the second
// channel has its own place only where the first channel has none, which makes no difference to the
// row.
Abort read_sources(ObjectTable& table, const RecorderObjects& objects, RecorderSetup& setup);

// The whole set-up as the objects stand, or why it cannot be recorded:
//   kNotMappable   a source or the trigger isn't an object that can be read, or has another width
//                  than told, or one that its slot does not take
//   kMappedTooLong the rows do not fit the buffer
//   kIncompatible  no source, no rows, no period, or no row left for the trigger
Abort read_setup(ObjectTable& table, const RecorderObjects& objects, RecorderSetup& setup);

}  // namespace servo::sim
