// An object named on the command line, with all that reading and writing it as a page would needs.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/link_session.h"
#include "cli/options.h"
#include "cli/output.h"
#include "dictionary/store.h"
#include "link/drive_values.h"
#include "params/row.h"

namespace servo::cli {

struct Target {
    dictionary::Identity key = 0;
    params::Row row;   // as on a page
    std::string unit;  // the one asked for, else the first of the object
};

// The objects of the command line in their order. Nothing, and a message, when one is not in the
// dictionary, has no type, or does not know the unit.
std::optional<std::vector<Target>> find_targets(const Options& options,
                                                const dictionary::Store& dictionary,
                                                const Output& output);

// Whether the formula list says how a typed number in this unit becomes a raw one.
bool has_way_back(std::string_view unit, std::string_view formula_list);

// What is wrong with a text typed for this target: a unit without a way back, or a character that a
// page's editor would swallow. A page can show that it does; here a swallowed character would make
// another number than the one that stands in the script.
std::optional<std::string> check_typed(std::string_view text, const Target& target);

// Waits until the drive objects that the formulas of these targets refer to have been read, so that
// no value is shown with a wrong scale. The one operand without which a page shows "?????" is
// waited for, but not insisted on. On kNoAnswer a message has been printed.
Outcome wait_for_scaling(const std::vector<Target>& targets, LinkSession& session,
                         std::chrono::milliseconds limit, const Output& output);

// Waits until all five have been read, for what is to be shown without the drive later. One that
// does not come is said and counts as 0; the one that not every drive has is not even said.
Outcome wait_for_operands(LinkSession& session, std::chrono::milliseconds limit,
                          const Output& output);

// A value as the page's cell shows it.
std::string value_text(const Target& target, const Reply& reply,
                       const link::FormulaOperands& operands);

// Status of a command that ended with this, with a message when it did not end well. `subject` is
// the object or "" for the link as a whole.
ExitStatus report(const Reply& reply, std::string_view subject, const Options& options,
                  const Output& output);

}  // namespace servo::cli
