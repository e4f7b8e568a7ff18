// From a parsed command line to the status of the program. What a machine has (ports, a line, a
// simulated drive) is handed in, so all of it is tested without them.
#pragma once

#include <string>
#include <vector>

#include "cli/link_session.h"
#include "cli/options.h"
#include "cli/output.h"
#include "link/engine.h"
#include "link/port.h"

namespace servo::cli {

// What is opened for a command that needs the drive.
struct OpenedLink {
    LinkSession* session = nullptr;  // owned by the environment; null when there is no link
    link::Engine* engine = nullptr;  // behind the session, for commands that run a job of their own
    std::string error;               // why not
    ExitStatus status = ExitStatus::kNoLink;
};

class Environment {
  public:
    Environment() = default;
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    virtual ~Environment() = default;

    virtual std::vector<link::PortDirectory::Entry> ports(const Options& options) = 0;
    virtual OpenedLink open_link(const Options& options) = 0;
};

// Every command but `formula`, which needs neither of these. `options.data` is set.
ExitStatus run_command(const Options& options, Environment& environment, const Output& output);

}  // namespace servo::cli
