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

struct BootFault {
    std::string_view name;
    bool BootOptions::*member;
};
constexpr std::array kBootFaults{
    BootFault{"boot-wrong-type", &BootOptions::wrong_type},
    BootFault{"boot-erase-fails", &BootOptions::erase_fails},
    BootFault{"boot-no-switch", &BootOptions::no_switch},
    BootFault{"boot-start-fails", &BootOptions::start_fails},
};

struct BlockFault {
    std::string_view name;
    std::optional<std::uint32_t> BootOptions::*member;
};
constexpr std::array kBlockFaults{
    BlockFault{"boot-refuse", &BootOptions::refused_block},
    BlockFault{"boot-flash", &BootOptions::flash_block},
};

struct BootTime {
    std::string_view name;
    std::chrono::milliseconds BootOptions::*member;
};
constexpr std::array kBootTimes{
    BootTime{"boot-erase", &BootOptions::erase_time},
    BootTime{"boot-programme", &BootOptions::programme_time},
};

struct StepName {
    std::string_view name;
    BootStep step;
};
constexpr std::array kStepNames{
    StepName{"entry", BootStep::kEntry},   StepName{"hi", BootStep::kHi},
    StepName{"type", BootStep::kType},     StepName{"erase", BootStep::kErase},
    StepName{"switch", BootStep::kSwitch}, StepName{"block", BootStep::kBlock},
    StepName{"go", BootStep::kGo},
};

constexpr std::int64_t kMostBlocks = 256;

// An hour: later than that is a mistyped number.
constexpr std::int64_t kLongestDelay = 3'600'000;

std::optional<std::chrono::milliseconds> milliseconds_of(std::string_view text) {
    const auto time = parse_integer(text);
    if (!time || *time < 0 || *time > kLongestDelay) return std::nullopt;
    return std::chrono::milliseconds(*time);
}

std::string wrong_time(std::string_view spec) {
    return fmt::format("{}: milliseconds, 0 to {}, are needed", spec, kLongestDelay);
}

// Nothing for a name that is no fault of the bootloader; else what is wrong, empty when it is good.
std::optional<std::string> add_boot_fault(BootOptions& boot, std::string_view spec,
                                          std::string_view name, std::string_view text) {
    for (const auto& fault : kBootFaults) {
        if (fault.name != spec) continue;
        boot.*fault.member = true;
        return std::string{};
    }
    for (const auto& fault : kBlockFaults) {
        if (fault.name != name) continue;
        const auto block = parse_integer(text);
        if (!block || *block < 1 || *block > kMostBlocks) {
            return fmt::format("{}: a block, 1 to {}, is needed", spec, kMostBlocks);
        }
        boot.*fault.member = static_cast<std::uint32_t>(*block);
        return std::string{};
    }
    for (const auto& time : kBootTimes) {
        if (time.name != name) continue;
        const auto given = milliseconds_of(text);
        if (!given) return wrong_time(spec);
        boot.*time.member = *given;
        return std::string{};
    }
    if (name != "boot-silent") return std::nullopt;
    const auto step = parse_boot_step(text);
    if (!step) {
        return fmt::format("{}: entry, hi, type, erase, switch, block or go is needed", spec);
    }
    boot.silent.insert(*step);
    return std::string{};
}

}  // namespace

std::optional<BootStep> parse_boot_step(std::string_view word) {
    for (const auto& known : kStepNames) {
        if (known.name == word) return known.step;
    }
    return std::nullopt;
}

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
        const auto delay = milliseconds_of(text);
        if (!delay) return wrong_time(spec);
        options.faults.delay = *delay;
        return std::nullopt;
    }
    if (auto wrong = add_boot_fault(options.boot, spec, name, text)) {
        if (wrong->empty()) return std::nullopt;
        return wrong;
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
