#include "cli/run.h"

#include <utility>

#include "cli/command_configuration.h"
#include "cli/command_diff.h"
#include "cli/command_drive.h"
#include "cli/command_scan.h"
#include "cli/command_table.h"
#include "cli/commands.h"

namespace servo::cli {
namespace {

ExitStatus no_dictionary(const Options& options, const Output& output) {
    output.message("servoctl: no dictionary (Servo.dat or qorlan.dat) in " + options.data.string());
    return ExitStatus::kFile;
}

ExitStatus run_on_link(const Options& options, const std::vector<Target>& targets,
                       Environment& environment, const Output& output) {
    const OpenedLink link = environment.open_link(options);
    if (link.session == nullptr) {
        output.message("servoctl: " + link.error);
        return link.status;
    }
    switch (options.command) {
        case CommandName::kRead:
            return run_read(options, targets, *link.session, output);
        case CommandName::kWrite:
            return run_write(options, targets.front(), *link.session, output);
        case CommandName::kWatch:
            return run_watch(options, targets, *link.session, output);
        case CommandName::kFaults:
            return run_faults(options, *link.session, output);
        case CommandName::kPorts:
        case CommandName::kDictFind:
        case CommandName::kDictShow:
        case CommandName::kRecord:
        case CommandName::kFlash:
        case CommandName::kScan:
        case CommandName::kTableRead:
        case CommandName::kTableWrite:
        case CommandName::kPull:
        case CommandName::kPush:
        case CommandName::kDiff:
        case CommandName::kSave:
        case CommandName::kRestart:
        case CommandName::kReset:
        case CommandName::kFormula:
            break;
    }
    return ExitStatus::kWrongUse;
}

// A command that is a job of the engine, on an open link.
template <typename Run>
ExitStatus on_engine(const Options& options, Environment& environment, const Output& output,
                     const Run& run) {
    const OpenedLink opened = environment.open_link(options);
    if (opened.session == nullptr || opened.engine == nullptr) {
        output.message("servoctl: " + opened.error);
        return opened.status;
    }
    return run(*opened.engine, *opened.session);
}

ExitStatus record(const Options& options, const dictionary::Store& dictionary,
                  Environment& environment, const Output& output) {
    const std::optional<RecordTargets> targets = find_record_targets(options, dictionary, output);
    if (!targets) return ExitStatus::kWrongUse;
    const ExitStatus wrong = check_record(options, *targets, output);
    if (wrong != ExitStatus::kDone) return wrong;
    return on_engine(options, environment, output, [&](link::Engine& engine, LinkSession& session) {
        return run_record(options, *targets, dictionary, engine, session, output);
    });
}

ExitStatus flash(const Options& options, Environment& environment, const Output& output) {
    const ExitStatus wrong = check_flash(options, output);
    if (wrong != ExitStatus::kDone) return wrong;
    return on_engine(options, environment, output, [&](link::Engine& engine, LinkSession& session) {
        return run_flash(options, engine, session, output);
    });
}

ExitStatus scan(const Options& options, Environment& environment, const Output& output) {
    const ExitStatus wrong = check_scan(options, output);
    if (wrong != ExitStatus::kDone) return wrong;
    return on_engine(options, environment, output, [&](link::Engine& engine, LinkSession& session) {
        return run_scan(options, engine, session, output);
    });
}

ExitStatus table(const Options& options, Environment& environment, const Output& output) {
    const ExitStatus wrong = check_table(options, output);
    if (wrong != ExitStatus::kDone) return wrong;
    return on_engine(options, environment, output, [&](link::Engine& engine, LinkSession& session) {
        return run_table(options, engine, session, output);
    });
}

ExitStatus transfer(const Options& options, const dictionary::Store& dictionary,
                    Environment& environment, const Output& output) {
    TransferPlan plan = plan_transfer(options, dictionary, output);
    if (plan.status != ExitStatus::kDone) return plan.status;
    return on_engine(options, environment, output, [&](link::Engine& engine, LinkSession& session) {
        return run_transfer(options, std::move(plan), dictionary, engine, session, output);
    });
}

ExitStatus drive_command(const Options& options, Environment& environment, const Output& output) {
    return on_engine(options, environment, output, [&](link::Engine& engine, LinkSession& session) {
        return run_drive_command(options, engine, session, output);
    });
}

bool commands_the_drive(CommandName command) {
    return command == CommandName::kSave || command == CommandName::kRestart ||
           command == CommandName::kReset;
}

// Everything that can be refused by the dictionary alone is refused before a line is touched.
ExitStatus run_on_objects(const Options& options, const dictionary::Store& dictionary,
                          Environment& environment, const Output& output) {
    const std::optional<std::vector<Target>> targets = find_targets(options, dictionary, output);
    if (!targets) return ExitStatus::kWrongUse;
    if (options.command == CommandName::kWrite) {
        if (const std::optional<WriteRefusal> refusal = check_write(options, targets->front())) {
            if (refusal->status == ExitStatus::kWrongUse)
                output.message("servoctl: " + refusal->text);
            else
                print_refusal(options, refusal->text, output);
            return refusal->status;
        }
    }
    return run_on_link(options, *targets, environment, output);
}

}  // namespace

ExitStatus run_command(const Options& options, Environment& environment, const Output& output) {
    if (options.command == CommandName::kPorts)
        return run_ports(options, environment.ports(options), output);
    if (options.command == CommandName::kFaults)
        return run_on_link(options, {}, environment, output);
    if (options.command == CommandName::kFlash) return flash(options, environment, output);
    if (options.command == CommandName::kScan) return scan(options, environment, output);
    if (options.command == CommandName::kTableRead || options.command == CommandName::kTableWrite)
        return table(options, environment, output);
    if (commands_the_drive(options.command)) return drive_command(options, environment, output);
    dictionary::Store dictionary;
    if (!dictionary.open_dat(options.data)) return no_dictionary(options, output);
    if (options.command == CommandName::kDictFind)
        return run_dict_find(options, dictionary, output);
    if (options.command == CommandName::kDictShow)
        return run_dict_show(options, dictionary, output);
    if (options.command == CommandName::kDiff) return run_diff(options, dictionary, output);
    if (options.command == CommandName::kPull || options.command == CommandName::kPush)
        return transfer(options, dictionary, environment, output);
    if (options.command == CommandName::kRecord)
        return record(options, dictionary, environment, output);
    return run_on_objects(options, dictionary, environment, output);
}

}  // namespace servo::cli
