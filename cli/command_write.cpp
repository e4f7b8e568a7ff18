#include "cli/commands.h"
#include "dictionary/keys.h"
#include "link/abort_text.h"
#include "params/codec.h"
#include "params/formula.h"

namespace servo::cli {
namespace {

WriteRefusal refuse(std::string text) {
    return {ExitStatus::kNo, std::move(text)};
}

}  // namespace

std::optional<WriteRefusal> check_write(const Options& options, const Target& target) {
    if (target.row.type == "String") return refuse("refused: a string can't be written");
    if (target.row.read_only) return refuse("refused: the object is read-only");
    if (std::optional<std::string> wrong = check_typed(options.text, target))
        return WriteRefusal{ExitStatus::kWrongUse, std::move(*wrong)};
    return std::nullopt;
}

void print_refusal(const Options& options, std::string_view text, const Output& output) {
    if (options.json)
        print_record(output, true,
                     {{"key", key_text(options.keys.front())}, {"result", std::string(text)}});
    else
        output.out(std::string(text) + "\n");
}

ExitStatus run_write(const Options& options, const Target& target, LinkSession& session,
                     const Output& output) {
    const Outcome scaling = wait_for_scaling({target}, session, options.timeout, output);
    if (scaling == Outcome::kNoAnswer) return ExitStatus::kNo;
    Reply reply;
    reply.outcome = scaling;
    if (scaling != Outcome::kDone) return report(reply, "", options, output);

    const std::optional<double> value =
        params::text_to_value(options.text, target.unit, target.row.formula, session.operands());
    const std::optional<std::int32_t> raw =
        value ? params::commit_value(*value) : std::optional<std::int32_t>{};
    if (!raw) {
        print_refusal(options, "refused: the value is out of range", output);
        return ExitStatus::kNo;
    }
    reply = session.write(dictionary::write_key(target.row.index, target.row.type), *raw,
                          options.timeout);
    if (reply.outcome == Outcome::kRefused) {
        print_refusal(options, "refused: " + link::abort_text(reply.abort_code, options.language),
                      output);
        return ExitStatus::kNo;
    }
    if (reply.outcome != Outcome::kDone)
        return report(reply, "the write of " + key_text(target.key), options, output);
    if (options.json)
        print_record(output, true, {{"key", key_text(target.key)}, {"result", "ok"}});
    else
        output.out("ok\n");
    return ExitStatus::kDone;
}

}  // namespace servo::cli
