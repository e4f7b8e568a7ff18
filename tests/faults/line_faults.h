// Faults of a serial line by name: what can become of a frame of ten bytes between the two ends.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace servo::test {

using Bytes = std::vector<std::uint8_t>;

// What arrives in place of a frame, in order. The first piece is counted from the moment at which
// the frame would have been complete, each further one from the piece before.
struct Piece {
    std::chrono::microseconds after{0};
    Bytes bytes;
};

struct LineFault {
    std::string name;
    // Whether it can make a frame that carries the right ID, a right checksum and a wrong content,
    // by itself, or by chance where bytes of two frames come to stand in one. No receiver can tell
    // such a frame from a true one.
    bool passes_checksum = false;
    int frames = 1;                     // how many frames in a row it hits
    std::chrono::milliseconds dead{0};  // nothing arrives for so long after it
    std::function<std::vector<Piece>(const Bytes& frame, const Bytes& other, std::mt19937_64&)>
        apply;
};

// All of them. `other` is a genuine earlier frame of the same direction, for mixtures.
const std::vector<LineFault>& line_faults();

// The last byte made right for the nine before it.
Bytes with_checksum(Bytes frame);

}  // namespace servo::test
