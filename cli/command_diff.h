// diff: two configuration files, without a drive.
#pragma once

#include "cli/exit_status.h"
#include "cli/options.h"
#include "cli/output.h"
#include "dictionary/store.h"

namespace servo::cli {

// Key, name, A, B: one row for each object that differs; kNo when any does. A and B are raw values
// (or, with the option, as a page shows them), and "(not read)" or "(not listed)" in their place.
ExitStatus run_diff(const Options& options, const dictionary::Store& dictionary,
                    const Output& output);

}  // namespace servo::cli
