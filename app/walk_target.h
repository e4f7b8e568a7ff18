// Reads what a walkthrough looks at.
#pragma once

#include <string>

#include "app/shell_access.h"
#include "app/walk_script.h"

namespace servo::app {

struct TargetText {
    std::string text;
    std::string error;  // not empty: the target names something that does not exist
};

TargetText read_target(ShellAccess& shell, const WalkTarget& target);

// The target as it is written in a file.
std::string target_name(const WalkTarget& target);

}  // namespace servo::app
