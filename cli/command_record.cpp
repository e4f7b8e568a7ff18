// record: one recording of the oscilloscope into a .scope file.
#include <fmt/format.h>

#include "cli/commands.h"
#include "cli/recorder_run.h"
#include "cli/result_file.h"
#include "params/codec.h"
#include "params/formula.h"
#include "scope/scope_file.h"

namespace servo::cli {
namespace {

std::optional<std::vector<Target>> find(const Options& options,
                                        std::vector<dictionary::Identity> keys,
                                        const dictionary::Store& dictionary, const Output& output) {
    Options asked = options;
    asked.keys = std::move(keys);
    return find_targets(asked, dictionary, output);
}

RecorderSource source_of(const Target& target) {
    return {target.key, scope::width_of(target.row.type)};
}

RecorderSetup setup_of(const Options& options, const RecordTargets& targets) {
    RecorderSetup setup;
    for (const Target& target : targets.channels)
        setup.channels.push_back(source_of(target));
    setup.period = options.record.period;
    setup.samples = options.record.samples;
    setup.offset = options.record.offset;
    if (targets.trigger) {
        setup.trigger.emplace();
        setup.trigger->source = source_of(*targets.trigger);
        setup.trigger->edge = options.record.trigger->edge;
    }
    return setup;
}

// The recorder takes whole numbers of 8, 16 or 32 bits.
std::optional<std::string> check_targets(const Options& options, const RecordTargets& targets) {
    std::vector<const Target*> sources;
    for (const Target& target : targets.channels)
        sources.push_back(&target);
    if (targets.trigger) sources.push_back(&*targets.trigger);
    for (const Target* source : sources) {
        if (source_of(*source).width == 0)
            return fmt::format("{} can't be recorded, it is no number", key_text(source->key));
    }
    if (targets.trigger) return check_typed(options.record.trigger->level, *targets.trigger);
    return std::nullopt;
}

// The level as the drive counts it. Nothing when it fits into no 32 bits.
std::optional<std::int32_t> raw_level(const Options& options, const Target& trigger,
                                      const link::FormulaOperands& operands) {
    const std::optional<double> value = params::text_to_value(
        options.record.trigger->level, trigger.unit, trigger.row.formula, operands);
    return value ? params::commit_value(*value) : std::nullopt;
}

ExitStatus write_file(const Options& options, scope::ScopeData& data,
                      const link::FormulaOperands& operands, const Output& output) {
    const std::filesystem::path& file = options.record.file;
    if (scope::export_scope(file, data, operands, options.language) != scope::Exported::kWritten)
        return cannot_write(file, output);
    const std::int64_t samples = data.sampleCount;
    if (options.json)
        print_record(output, true, {{"file", file.string()}, {"samples", samples}});
    else
        output.out(fmt::format("{}\n", samples));
    return ExitStatus::kDone;
}

}  // namespace

std::optional<RecordTargets> find_record_targets(const Options& options,
                                                 const dictionary::Store& dictionary,
                                                 const Output& output) {
    RecordTargets targets;
    auto channels = find(options, options.keys, dictionary, output);
    if (!channels) return std::nullopt;
    targets.channels = std::move(*channels);
    if (!options.record.trigger) return targets;
    auto trigger = find(options, {options.record.trigger->key}, dictionary, output);
    if (!trigger) return std::nullopt;
    targets.trigger = std::move(trigger->front());
    return targets;
}

ExitStatus check_record(const Options& options, const RecordTargets& targets,
                        const Output& output) {
    std::optional<std::string> wrong = check_targets(options, targets);
    if (!wrong) wrong = check_setup(setup_of(options, targets));
    if (!wrong && scope::ends_in_xls(options.record.file.string()))
        wrong = "a recording is never written under a name that ends in xls";
    if (wrong) {
        output.message("servoctl: " + *wrong);
        return ExitStatus::kWrongUse;
    }
    return check_result_file(options.record.file, output);
}

ExitStatus run_record(const Options& options, const RecordTargets& targets,
                      const dictionary::Store& dictionary, link::Engine& engine,
                      LinkSession& session, const Output& output) {
    std::vector<Target> scaled = targets.channels;
    if (targets.trigger) scaled.push_back(*targets.trigger);
    Reply reply;
    reply.outcome = wait_for_scaling(scaled, session, options.timeout, output);
    if (reply.outcome == Outcome::kNoAnswer) return ExitStatus::kNo;  // has been said
    if (reply.outcome == Outcome::kDone)
        reply.outcome = wait_for_operands(session, options.timeout, output);
    if (reply.outcome != Outcome::kDone) return report(reply, "", options, output);

    RecorderSetup setup = setup_of(options, targets);
    if (targets.trigger) {
        const auto level = raw_level(options, *targets.trigger, session.operands());
        if (!level) {
            output.message("servoctl: the trigger level is out of range");
            return ExitStatus::kNo;
        }
        setup.trigger->level = *level;
    }
    RecorderRun recorder(
        engine, session, dictionary, options.language,
        [&output](std::string_view text) { output.message("servoctl: " + std::string(text)); });
    const RecorderEnd end = recorder.run(setup, options.timeout);
    if (!end.complaint.empty()) {
        output.message("servoctl: " + end.complaint);
        return ExitStatus::kNo;
    }
    if (!end.good()) return report(end.reply, end.subject, options, output);
    return write_file(options, recorder.data(), session.operands(), output);
}

}  // namespace servo::cli
