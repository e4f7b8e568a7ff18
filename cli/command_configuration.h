// pull, push: the batch jobs of the configuration window.
#pragma once

#include "cli/configuration_input.h"
#include "cli/exit_status.h"
#include "cli/link_session.h"
#include "cli/options.h"
#include "cli/output.h"
#include "dictionary/store.h"
#include "link/engine.h"

namespace servo::cli {

// What is read before the link is opened. With anything but kDone a message has been printed.
struct TransferPlan {
    ExitStatus status = ExitStatus::kFile;
    ConfigurationInput<tools::SourceRow> source;     // push
    ConfigurationInput<tools::DriverRow> template_;  // pull
};
TransferPlan plan_transfer(const Options& options, const dictionary::Store& dictionary,
                           const Output& output);

// One job: progress and failed rows on standard error, "Finished! Fail:N" on standard output. kNo
// when a row failed, or when the file breaks off and what is behind the break was left out. A read
// that has come to its end is written to the file with its failed rows; one that has not leaves the
// file as it was. A dry run reads what the drive holds and prints what would change; kNo when
// anything would.
ExitStatus run_transfer(const Options& options, TransferPlan plan,
                        const dictionary::Store& dictionary, link::Engine& engine,
                        LinkSession& session, const Output& output);

}  // namespace servo::cli
