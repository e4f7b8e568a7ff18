// Lines of text that give the drive causes of faults and take them away:
//
//   fault 1 0200       bit 0200 of fault word 1 has a cause from now on
//   fault 1 0200 once  a cause comes and goes: a reset clears the fault
//   fault clear 1 0200 that cause is gone; the fault stays until it is reset
//   fault clear        all that were given are gone
//   fault              shows words, masks and causes
//   load 1.3           the machine's torque against the motor, in Nm
//   clamp on, off      the load is held, is let go
#pragma once

#include <span>
#include <string_view>

#include "sim/input_lines.h"

namespace servo::sim {

// The words of a line whose first one is `fault`.
LineAnswer obey_fault(Drive& drive, std::span<const std::string_view> words);

// Of `load` and `clamp`: what makes a motor late, overloaded, or stand still.
LineAnswer obey_load(Drive& drive, std::span<const std::string_view> words);

}  // namespace servo::sim
