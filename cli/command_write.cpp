#include <fmt/format.h>

#include "base/gbk.h"
#include "cli/commands.h"
#include "cli/drive_texts.h"
#include "dictionary/keys.h"
#include "params/codec.h"
#include "params/formula.h"
#include "params/page_editor.h"

namespace servo::cli {
namespace {

// The first character that a page's editor would swallow. A page can show that it does; here a
// swallowed character would write another number than the one that stands in the script.
std::optional<std::string_view> refused_character(std::string_view text, std::string_view unit) {
    for (std::size_t i = 0; i < text.size();) {
        const std::string_view rest = text.substr(i);
        const std::string_view character = base::utf8_prefix(rest, 1);
        const bool passes =
            character.size() == 1 &&
            params::key_passes(static_cast<unsigned char>(character[0]), text.substr(0, i), unit);
        if (!passes) return character;
        i += character.size();
    }
    return std::nullopt;
}

WriteRefusal refuse(std::string text) {
    return {ExitStatus::kNo, std::move(text)};
}

}  // namespace

std::optional<WriteRefusal> check_write(const Options& options, const Target& target) {
    const std::string key = key_text(target.key);
    if (target.row.type == "String") return refuse("refused: a string can't be written");
    if (target.row.read_only) return refuse("refused: the object is read-only");
    if (!has_way_back(target.unit, target.row.formula))
        return WriteRefusal{ExitStatus::kWrongUse,
                            fmt::format("{} can't be written in '{}'", key, target.unit)};
    if (const auto character = refused_character(options.text, target.unit))
        return WriteRefusal{ExitStatus::kWrongUse, fmt::format("'{}' is no part of a number in {}",
                                                               *character, target.unit)};
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
        print_refusal(options, "refused: " + abort_text(reply.abort_code, options.language),
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
