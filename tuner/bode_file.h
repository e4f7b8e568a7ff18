// A frequency scan as a text file, `.bode`. Lines end in CR LF.
#pragma once

#include <string>
#include <string_view>

#include "tuner/tuner_data.h"

namespace servo::tuner {

// The file's bytes. Pairs of values stand mixed in it: 2x + y and 2y + x.
std::string write_bode(const ScanSettings& settings, const ScanBuffers& buffers);

// How far a file could be taken over. Reading goes from top to bottom and has taken over, at each
// point of failure, what stood above.
struct BodeReading {
    bool fields = false;   // the nine fields of the first line were there: settings hold
    bool length = false;   // the number of points fits them
    bool buffers = false;  // all of it
};

// Reads into `settings` and `buffers`; a file that is wrong in its first line changes nothing.
BodeReading read_bode(std::string_view bytes, ScanSettings& settings, ScanBuffers& buffers);

inline constexpr std::string_view kBodeWrong = "the bode file is wrong!";

}  // namespace servo::tuner
