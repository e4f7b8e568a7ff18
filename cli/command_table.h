// table read, table write: the position table jobs.
#pragma once

#include "cli/exit_status.h"
#include "cli/link_session.h"
#include "cli/options.h"
#include "cli/output.h"
#include "link/engine.h"

namespace servo::cli {

// What is wrong with the file or the list of objects before the link is opened; kDone when nothing
// is. Prints a message.
ExitStatus check_table(const Options& options, const Output& output);

// One job: progress on standard error, "finished" or "failed" on standard output. A file that does
// not hold all rows is written over what the drive holds, so that no row is cleared by its absence.
ExitStatus run_table(const Options& options, link::Engine& engine, LinkSession& session,
                     const Output& output);

}  // namespace servo::cli
