// Lines of text for a running drive, as its program reads them from standard input. Those that
// move its pins:
//
//   din 3 1         input 3 goes high
//   din 3 0         input 3 goes low
//   din 5 pulse 50  input 5 has the other level for 50 ms
//   din 00000101    all inputs, input 8 first
//   din             shows inputs and outputs
//
// those of fault_lines.h, and "help".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace servo::sim {

class Drive;

// Levels of all inputs, input 8 first, bit 0 of the result being input 1.
std::optional<std::uint8_t> parse_pins(std::string_view text);

struct LineAnswer {
    bool good = true;
    std::string text;  // for the reader; empty: nothing to say
};

// Does what one line says. Empty lines and those that begin with "#" say nothing.
LineAnswer obey_line(Drive& drive, std::string_view line);

// Cuts what comes in into lines. One that is too long is given up as a whole.
class LineCutter {
  public:
    void put(std::string_view bytes) { waiting_ += bytes; }
    // The next line without its end; nothing when there is no whole one.
    std::optional<std::string> next();

  private:
    std::string waiting_;
    bool skipping_ = false;
};

}  // namespace servo::sim
