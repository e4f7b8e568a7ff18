// The commands. Each prints its results and gives the status of the program.
#pragma once

#include <iosfwd>
#include <optional>
#include <vector>

#include "cli/exit_status.h"
#include "cli/link_session.h"
#include "cli/options.h"
#include "cli/output.h"
#include "cli/target.h"
#include "dictionary/store.h"
#include "link/engine.h"
#include "link/port.h"

namespace servo::cli {

// COM text, device, description.
ExitStatus run_ports(const Options& options, const std::vector<link::PortDirectory::Entry>& ports,
                     const Output& output);

// Key, type, attribute, name. kNo when nothing matches.
ExitStatus run_dict_find(const Options& options, const dictionary::Store& dictionary,
                         const Output& output);
ExitStatus run_dict_show(const Options& options, const dictionary::Store& dictionary,
                         const Output& output);

// Key, raw, text, unit.
ExitStatus run_read(const Options& options, const std::vector<Target>& targets,
                    LinkSession& session, const Output& output);

// A write that a page's editor would not let through; found before the link is opened.
struct WriteRefusal {
    ExitStatus status = ExitStatus::kWrongUse;
    std::string text;
};
std::optional<WriteRefusal> check_write(const Options& options, const Target& target);
ExitStatus run_write(const Options& options, const Target& target, LinkSession& session,
                     const Output& output);
// What `write` prints when it is refused before or by the drive.
void print_refusal(const Options& options, std::string_view text, const Output& output);

// Time in seconds since the first round, key, raw, text, unit.
ExitStatus run_watch(const Options& options, const std::vector<Target>& targets,
                     LinkSession& session, const Output& output);

// What `record` asks for, found in the dictionary.
struct RecordTargets {
    std::vector<Target> channels;
    std::optional<Target> trigger;
};
// Nothing, and a message, when a key is none of the dictionary.
std::optional<RecordTargets> find_record_targets(const Options& options,
                                                 const dictionary::Store& dictionary,
                                                 const Output& output);
// What is wrong before the link is opened; kDone when nothing is. Prints a message.
ExitStatus check_record(const Options& options, const RecordTargets& targets, const Output& output);
// One recording into the file; prints the number of samples.
ExitStatus run_record(const Options& options, const RecordTargets& targets,
                      const dictionary::Store& dictionary, link::Engine& engine,
                      LinkSession& session, const Output& output);

// What is wrong with the image before the link is opened; kDone when nothing is. Prints a message.
ExitStatus check_flash(const Options& options, const Output& output);
// The firmware transfer: steps and blocks on standard error, the final message on standard output.
ExitStatus run_flash(const Options& options, link::Engine& engine, LinkSession& session,
                     const Output& output);

// Word (1 or 2), bit mask, text: one row for each fault.
ExitStatus run_faults(const Options& options, LinkSession& session, const Output& output);

// One answer for each line of the input; with JSON a list of texts.
ExitStatus run_formula(const Options& options, std::istream& in, const Output& output);

}  // namespace servo::cli
