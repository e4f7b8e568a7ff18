#include "cli/target.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/gbk.h"
#include "dictionary/keys.h"
#include "link/abort_text.h"
#include "params/formula.h"
#include "params/page_editor.h"

namespace servo::cli {
namespace {

// Units that need no line of a formula list.
bool is_format_word(std::string_view unit) {
    return params::is_decimal_unit(unit) || unit == "HEX" || unit == "ASCII";
}

struct OperandName {
    std::string_view reference;
    std::string_view object;
    link::Operand link::FormulaOperands::*operand;
    bool required;
};

constexpr std::array kOperands{
    OperandName{"[64100320]", "641003", &link::FormulaOperands::o64100320, true},
    OperandName{"[65100310]", "651003", &link::FormulaOperands::o65100310, true},
    OperandName{"[30400710]", "304007", &link::FormulaOperands::o30400710, false},
    OperandName{"[60F61310]", "60F613", &link::FormulaOperands::o60F61310, true},
    OperandName{"[60F61110]", "60F611", &link::FormulaOperands::o60F61110, true},
};

std::string known_units(const params::Row& row) {
    std::string units;
    for (const std::string& unit : params::unit_items(row.formula))
        units += (units.empty() ? "" : ", ") + unit;
    return units;
}

bool unit_known(std::string_view unit, const params::Row& row) {
    if (is_format_word(unit)) return true;
    const std::vector<std::string> units = params::unit_items(row.formula);
    return std::find(units.begin(), units.end(), unit) != units.end();
}

// Null when the operand is of no use to the targets.
bool refers_to(const std::vector<Target>& targets, std::string_view reference) {
    return std::any_of(targets.begin(), targets.end(), [&](const Target& target) {
        return !is_format_word(target.unit) &&
               target.row.formula.find(reference) != std::string::npos;
    });
}

// The first character that a page's editor would swallow.
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

}  // namespace

std::optional<std::vector<Target>> find_targets(const Options& options,
                                                const dictionary::Store& dictionary,
                                                const Output& output) {
    std::vector<Target> targets;
    for (const dictionary::Identity key : options.keys) {
        const std::string name = key_text(key);
        if (dictionary.get_record(key).key == 0) {
            output.message(fmt::format("servoctl: {} is not in the dictionary", name));
            return std::nullopt;
        }
        Target target;
        target.key = key;
        target.row = params::build_row(dictionary, key, 1, options.language);
        target.unit = options.unit.empty() ? target.row.unit : options.unit;
        if (dictionary::wire_size(target.row.type) == 0) {
            output.message(fmt::format("servoctl: {} has no type that can be read", name));
            return std::nullopt;
        }
        if (!unit_known(target.unit, target.row)) {
            output.message(fmt::format("servoctl: {} has no unit '{}'; its units are {}", name,
                                       target.unit, known_units(target.row)));
            return std::nullopt;
        }
        targets.push_back(std::move(target));
    }
    return targets;
}

bool has_way_back(std::string_view unit, std::string_view formula_list) {
    if (is_format_word(unit)) return true;
    return formula_list.find("[" + std::string(unit)) != std::string_view::npos;
}

std::optional<std::string> check_typed(std::string_view text, const Target& target) {
    if (!has_way_back(target.unit, target.row.formula))
        return fmt::format("{} can't be written in '{}'", key_text(target.key), target.unit);
    if (const auto character = refused_character(text, target.unit))
        return fmt::format("'{}' is no part of a number in {}", *character, target.unit);
    return std::nullopt;
}

Outcome wait_for_scaling(const std::vector<Target>& targets, LinkSession& session,
                         std::chrono::milliseconds limit, const Output& output) {
    for (const OperandName& name : kOperands) {
        if (!refers_to(targets, name.reference)) continue;
        const link::Operand& operand = session.operands().*name.operand;
        const Outcome outcome = session.wait([&operand] { return operand.seen; }, limit);
        if (outcome == Outcome::kDone) continue;
        if (outcome != Outcome::kNoAnswer) return outcome;
        if (!name.required) continue;  // shown as "?????"
        output.message(fmt::format(
            "servoctl: the drive does not give {}, which the unit is computed with", name.object));
        return outcome;
    }
    return Outcome::kDone;
}

Outcome wait_for_operands(LinkSession& session, std::chrono::milliseconds limit,
                          const Output& output) {
    for (const OperandName& name : kOperands) {
        const link::Operand& operand = session.operands().*name.operand;
        if (!name.required) {
            // The status lanes ask for it too, but they do not tell silence from a refusal.
            const dictionary::Identity key = parse_key(name.object).value_or(0);
            const Outcome there = session.read(key, "int32", limit).outcome;
            if (there == Outcome::kLinkLost || there == Outcome::kInterrupted) return there;
            if (there != Outcome::kDone) continue;
        }
        const Outcome outcome = session.wait([&operand] { return operand.seen; }, limit);
        if (outcome == Outcome::kDone) continue;
        if (outcome != Outcome::kNoAnswer) return outcome;
        if (name.required)
            output.message(fmt::format(
                "servoctl: the drive does not give {}; the file holds 0 for it", name.object));
    }
    return Outcome::kDone;
}

std::string value_text(const Target& target, const Reply& reply,
                       const link::FormulaOperands& operands) {
    if (reply.outcome != Outcome::kDone) return std::string(params::kUnknownText);
    if (target.row.type == "String") return base::gbk_to_utf8(reply.bytes);
    return params::value_to_text(reply.number, target.unit, target.row.formula,
                                 dictionary::decoder_size(target.row.type), operands)
        .value_or(std::string(params::kUnknownText));
}

ExitStatus report(const Reply& reply, std::string_view subject, const Options& options,
                  const Output& output) {
    switch (reply.outcome) {
        case Outcome::kDone:
            return ExitStatus::kDone;
        case Outcome::kRefused:
            output.message(fmt::format("servoctl: the drive refuses {}: {}", subject,
                                       link::abort_text(reply.abort_code, options.language)));
            return ExitStatus::kNo;
        case Outcome::kNoAnswer:
            output.message(fmt::format("servoctl: no answer to {} within {} s", subject,
                                       static_cast<double>(options.timeout.count()) / 1000.0));
            return ExitStatus::kNo;
        case Outcome::kLinkLost:
            output.message("servoctl: the link is lost, the drive does not answer");
            return ExitStatus::kNoLink;
        case Outcome::kInterrupted:
            output.message("servoctl: interrupted");
            return ExitStatus::kNo;
    }
    return ExitStatus::kNo;
}

}  // namespace servo::cli
