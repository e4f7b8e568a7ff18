#pragma once

#include <cstdint>

namespace servo::sim {

// Counted since the drive was made; a restart does not clear them.
struct Statistics {
    std::uint64_t frames = 0;        // good frames for this drive
    std::uint64_t bad_checksum = 0;  // ten bytes with a wrong sum
    std::uint64_t foreign = 0;       // good frames for another ID
    std::uint64_t broken = 0;        // incomplete frames ended by silence
    std::uint64_t overruns = 0;      // good frames lost because the request queue was full
    std::uint64_t answers = 0;       // answers made, before any fault of the line
    std::uint64_t aborts = 0;        // of these, refusals
    std::uint64_t dropped = 0;       // answers not sent: dropped, mute or silent
    std::uint64_t foreign_sent = 0;
    std::uint64_t corrupted = 0;
    std::uint64_t unseen = 0;  // of these, frames whose sum is right all the same
    std::uint64_t doubled = 0;
    std::uint64_t lost_bytes = 0;
    std::uint64_t doubled_bytes = 0;
    // Of the bootloader.
    std::uint64_t commands = 0;    // lines that it took as a command or a type word
    std::uint64_t blocks = 0;      // blocks that it stored
    std::uint64_t refusals = 0;    // commands and blocks that it refused
    std::uint64_t lost_input = 0;  // bytes that found its receive buffer full
    std::uint64_t texts = 0;       // replies made, before any fault of the line
};

}  // namespace servo::sim
