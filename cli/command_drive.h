// save, restart, reset: the commands of the init and save window.
#pragma once

#include "cli/exit_status.h"
#include "cli/link_session.h"
#include "cli/options.h"
#include "cli/output.h"
#include "link/engine.h"

namespace servo::cli {

// The same frames as from the window. The window does not look at the drive's word on them; a
// script has nobody who looks at the lamps afterwards, so here "ok" means that the drive has
// acknowledged, and a refusal is printed like one of `write`.
ExitStatus run_drive_command(const Options& options, link::Engine& engine, LinkSession& session,
                             const Output& output);

}  // namespace servo::cli
