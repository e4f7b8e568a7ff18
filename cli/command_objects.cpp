// read, watch and faults.
#include <cmath>
#include <set>

#include "cli/commands.h"
#include "dictionary/store.h"
#include "tools/fault_table.h"

namespace servo::cli {
namespace {

constexpr base::Text kNoFaults{"servoctl: 没有故障", "servoctl: no faults"};

// A string has no number; neither has a value that did not come.
Field raw_field(const Target& target, const Reply& reply) {
    if (reply.outcome != Outcome::kDone || target.row.type == "String") return std::monostate{};
    return static_cast<std::int64_t>(std::llround(reply.number));
}

// The link is gone, or the user wants to leave: nothing further is asked.
bool ends_command(Outcome outcome) {
    return outcome == Outcome::kLinkLost || outcome == Outcome::kInterrupted;
}

// What could not be scaled is no wrong number but no answer.
ExitStatus scaling_status(Outcome outcome, const Options& options, const Output& output) {
    if (outcome == Outcome::kNoAnswer) return ExitStatus::kNo;  // the message has been printed
    Reply reply;
    reply.outcome = outcome;
    return report(reply, "", options, output);
}

ExitStatus worse(ExitStatus a, ExitStatus b) {
    return a == ExitStatus::kDone ? b : a;
}

// A watch: rounds at fixed distances, each a read of every object.
class Watch {
  public:
    Watch(const Options& options, const std::vector<Target>& targets, LinkSession& session,
          const Output& output)
        : options_(options),
          targets_(targets),
          session_(session),
          output_(output),
          printer_(output, options.json, {"time", "key", "raw", "text", "unit"}) {}

    ExitStatus run() {
        start_ = session_.now();
        std::int64_t round = 0;
        Outcome outcome = Outcome::kDone;
        while (!ends_command(outcome = one_round())) {
            ++round;
            if (options_.count != 0 && round >= options_.count) break;
            if (ends_command(outcome = pause_until(start_ + round * options_.every))) break;
        }
        printer_.finish();
        // Ctrl-C is how a watch is meant to end.
        if (outcome == Outcome::kInterrupted) return status_;
        if (outcome == Outcome::kLinkLost) {
            Reply reply;
            reply.outcome = outcome;
            return report(reply, "", options_, output_);
        }
        return status_;
    }

  private:
    Outcome one_round() {
        for (const Target& target : targets_) {
            const Reply reply = session_.read(target.key, target.row.type, options_.timeout);
            if (ends_command(reply.outcome)) return reply.outcome;
            if (reply.outcome != Outcome::kDone && complained_.insert(target.key).second)
                status_ = worse(status_, report(reply, key_text(target.key), options_, output_));
            const auto time =
                std::chrono::duration_cast<std::chrono::milliseconds>(session_.now() - start_);
            printer_.row({time, key_text(target.key), raw_field(target, reply),
                          value_text(target, reply, session_.operands()), target.unit});
        }
        return Outcome::kDone;
    }

    Outcome pause_until(std::chrono::microseconds moment) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(moment - session_.now());
        if (left.count() <= 0) return Outcome::kDone;
        return session_.wait([] { return false; }, left);
    }

    const Options& options_;
    const std::vector<Target>& targets_;
    LinkSession& session_;
    const Output& output_;
    RowPrinter printer_;
    std::chrono::microseconds start_{0};
    std::set<dictionary::Identity> complained_;  // one message for an object is enough
    ExitStatus status_ = ExitStatus::kDone;
};

}  // namespace

ExitStatus run_read(const Options& options, const std::vector<Target>& targets,
                    LinkSession& session, const Output& output) {
    const Outcome scaling = wait_for_scaling(targets, session, options.timeout, output);
    if (scaling != Outcome::kDone) return scaling_status(scaling, options, output);
    RowPrinter printer(output, options.json, {"key", "raw", "text", "unit"});
    ExitStatus status = ExitStatus::kDone;
    for (const Target& target : targets) {
        const Reply reply = session.read(target.key, target.row.type, options.timeout);
        if (ends_command(reply.outcome)) {
            printer.finish();
            return report(reply, "", options, output);
        }
        printer.row({key_text(target.key), raw_field(target, reply),
                     value_text(target, reply, session.operands()), target.unit});
        status = worse(status, report(reply, key_text(target.key), options, output));
    }
    printer.finish();
    return status;
}

ExitStatus run_watch(const Options& options, const std::vector<Target>& targets,
                     LinkSession& session, const Output& output) {
    const Outcome scaling = wait_for_scaling(targets, session, options.timeout, output);
    if (scaling != Outcome::kDone) return scaling_status(scaling, options, output);
    return Watch(options, targets, session, output).run();
}

ExitStatus run_faults(const Options& options, LinkSession& session, const Output& output) {
    constexpr dictionary::Identity kFaultWords[] = {0x260100, 0x260200};
    const dictionary::Variant variant = dictionary::Store::variant_of(options.data);
    RowPrinter printer(output, options.json, {"word", "mask", "text"});
    ExitStatus status = ExitStatus::kDone;
    bool any = false;
    for (int word = 1; word <= 2; ++word) {
        const dictionary::Identity key = kFaultWords[word - 1];
        const Reply reply = session.read(key, "uint16", options.timeout);
        status = worse(status, report(reply, key_text(key), options, output));
        if (ends_command(reply.outcome)) break;
        if (reply.outcome != Outcome::kDone) continue;
        const auto bits = static_cast<unsigned>(std::llround(reply.number));
        for (int fault = 0; fault < tools::kFaultBits; ++fault) {
            if (tools::word_of(fault) != word || (bits & tools::fault_mask(fault)) == 0) continue;
            any = true;
            printer.row({static_cast<std::int64_t>(word), tools::fault_mask_text(fault),
                         tools::fault_caption_line(fault, variant, options.language)});
        }
    }
    printer.finish();
    if (!any && status == ExitStatus::kDone) output.message(kNoFaults.in(options.language));
    return status;
}

}  // namespace servo::cli
