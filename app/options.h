// The command line of servo-workstation.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/language.h"

namespace servo::app {

struct Options {
    std::filesystem::path data;  // the program's folder; empty: that of the executable
    bool simulate = false;       // start drive-sim and open the link to it
    std::string connect;         // device to list, select and open
    std::optional<int> baud;     // one of the dialog's rates
    std::optional<int> id;       // communication ID, 0 to 255
    std::vector<std::string> open;
    std::string walk;  // walkthrough file
    std::optional<base::Language> language;
    bool ready = false;  // say "ready" on standard output when the main window is shown
};

// What came of the arguments: options to run with, or an exit status and what to print.
struct ParsedOptions {
    Options options;
    std::optional<int> exit_status;  // 0 after --help and --version, 2 for wrong use
    std::string output;
    std::string error;
};

ParsedOptions parse_options(int argc, const char* const* argv);

}  // namespace servo::app
