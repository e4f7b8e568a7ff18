// Reads the whole visible state off the running program.
#pragma once

#include "app/shell_access.h"
#include "app/state_document.h"

namespace servo::app {

// Every window of the list is looked at, those that have never been opened too.
StateDocument read_state(ShellAccess& shell);

}  // namespace servo::app
