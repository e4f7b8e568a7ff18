#include "sim/options.h"

#include <fmt/format.h>

#include <array>

#include "sim/text.h"

namespace servo::sim {

namespace {

struct ProbabilityFault {
    std::string_view name;
    double LineFaults::*member;
};
constexpr std::array kProbabilityFaults{
    ProbabilityFault{"drop", &LineFaults::drop},
    ProbabilityFault{"foreign", &LineFaults::foreign},
    ProbabilityFault{"corrupt", &LineFaults::corrupt},
    ProbabilityFault{"double", &LineFaults::doubled},
    ProbabilityFault{"lose", &LineFaults::lose},
    ProbabilityFault{"stutter", &LineFaults::stutter},
};

struct ObjectFault {
    std::string_view name;
    std::vector<dictionary::Identity> LineFaults::*member;
};
constexpr std::array kObjectFaults{
    ObjectFault{"abort", &LineFaults::abort},
    ObjectFault{"mute", &LineFaults::mute},
};

struct WordFault {
    std::string_view name;
    std::uint16_t Options::*member;
};
constexpr std::array kWordFaults{
    WordFault{"fault1", &Options::fault1},
    WordFault{"fault2", &Options::fault2},
};

// An hour: later than that is a mistyped number.
constexpr std::int64_t kLongestDelay = 3'600'000;

}  // namespace

std::optional<std::string> add_fault(Options& options, std::string_view spec) {
    const std::size_t colon = spec.find(':');
    const std::string_view name = spec.substr(0, colon);
    const std::string_view text =
        colon == std::string_view::npos ? std::string_view{} : spec.substr(colon + 1);
    if (spec == "silent") {
        options.faults.silent = true;
        return std::nullopt;
    }
    for (const auto& fault : kProbabilityFaults) {
        if (fault.name != name) continue;
        const auto probability = parse_decimal(text);
        if (!probability || !(*probability >= 0.0 && *probability <= 1.0)) {
            return fmt::format("{}: a probability from 0 to 1 is needed", spec);
        }
        options.faults.*fault.member = *probability;
        return std::nullopt;
    }
    for (const auto& fault : kObjectFaults) {
        if (fault.name != name) continue;
        const auto object = parse_identity(text);
        if (!object) return fmt::format("{}: six hexadecimal digits are needed", spec);
        (options.faults.*fault.member).push_back(*object);
        return std::nullopt;
    }
    for (const auto& fault : kWordFaults) {
        if (fault.name != name) continue;
        const auto word = parse_hex(text);
        if (!word || *word > 0xFFFF) return fmt::format("{}: up to four hexadecimal digits", spec);
        options.*fault.member = static_cast<std::uint16_t>(*word);
        return std::nullopt;
    }
    if (name == "delay") {
        const auto delay = parse_integer(text);
        if (!delay || *delay < 0 || *delay > kLongestDelay) {
            return fmt::format("{}: milliseconds, 0 to {}, are needed", spec, kLongestDelay);
        }
        options.faults.delay = std::chrono::milliseconds(*delay);
        return std::nullopt;
    }
    return fmt::format("{}: no such fault", spec);
}

std::optional<std::string> add_setting(Options& options, std::string_view spec) {
    const std::size_t equals = spec.find('=');
    if (equals == std::string_view::npos) return fmt::format("{}: KEY=VALUE is needed", spec);
    const auto object = parse_identity(spec.substr(0, equals));
    if (!object) return fmt::format("{}: six hexadecimal digits are needed before \"=\"", spec);
    options.settings.push_back({*object, std::string(spec.substr(equals + 1))});
    return std::nullopt;
}

}  // namespace servo::sim
