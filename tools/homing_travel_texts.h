// The travel of a method in words, in both languages.
#pragma once

#include <string>
#include <vector>

#include "base/language.h"
#include "tools/homing_travel.h"

namespace servo::tools {

// "Method 8": how a line about a method begins in its description.
std::string method_text(int method, base::Language language);

// Where the home position is: "the first index pulse in the positive direction behind the point
// where the home switch turns on".
std::string home_text(const HomingTravel& travel, base::Language language);

// A line for each zone where the axis may stand: "Beside the switch, negative side: positive until
// the home switch turns on; on to the next index pulse."
std::vector<std::string> start_texts(const HomingTravel& travel, base::Language language);

}  // namespace servo::tools
