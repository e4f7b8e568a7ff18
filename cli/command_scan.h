// scan: one frequency scan of the drive's velocity loop into a .bode file.
#pragma once

#include "cli/exit_status.h"
#include "cli/link_session.h"
#include "cli/options.h"
#include "cli/output.h"
#include "link/engine.h"

namespace servo::cli {

// What is wrong before the link is opened; kDone when nothing is. Prints a message.
ExitStatus check_scan(const Options& options, const Output& output);

// Steps and progress on standard error, "Finished" on standard output.
ExitStatus run_scan(const Options& options, link::Engine& engine, LinkSession& session,
                    const Output& output);

}  // namespace servo::cli
