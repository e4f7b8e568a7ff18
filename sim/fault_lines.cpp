#include "sim/fault_lines.h"

#include <fmt/format.h>

#include <cmath>
#include <optional>

#include "sim/drive.h"
#include "sim/object_ids.h"
#include "sim/text.h"

namespace servo::sim {

namespace {

// Nm: no machine here stands more, and a clamp is the way to hold it.
constexpr double kGreatestLoad = 1000.0;

LineAnswer wrong(std::string text) {
    return {false, std::move(text)};
}

struct Bits {
    std::uint16_t word1 = 0;
    std::uint16_t word2 = 0;
};

// Number of the word, and its bits as up to four hexadecimal digits.
std::optional<Bits> bits_of(std::string_view word, std::string_view text) {
    const auto bits = text.size() <= 4 ? parse_hex(text) : std::nullopt;
    if (!bits || *bits == 0) return std::nullopt;
    const auto mask = static_cast<std::uint16_t>(*bits);
    if (word == "1") return Bits{mask, 0};
    if (word == "2") return Bits{0, mask};
    return std::nullopt;
}

LineAnswer show(Drive& drive) {
    const auto value = [&drive](dictionary::Identity id) { return drive.value(id).value_or(0); };
    return {true,
            fmt::format("faults {:04X} {:04X}, masked {:04X} {:04X}, causes {:04X} {:04X}",
                        value(ids::kFaultWord1), value(ids::kFaultWord2), value(ids::kFaultMask1),
                        value(ids::kFaultMask2), drive.fault_causes1(), drive.fault_causes2())};
}

void take_away(Drive& drive, Bits bits) {
    drive.set_fault_causes(static_cast<std::uint16_t>(drive.fault_causes1() & ~bits.word1),
                           static_cast<std::uint16_t>(drive.fault_causes2() & ~bits.word2));
}

LineAnswer clear(Drive& drive, std::span<const std::string_view> words) {
    if (words.empty()) {
        drive.set_fault_causes(0, 0);
        return {};
    }
    const auto bits = words.size() == 2 ? bits_of(words[0], words[1]) : std::nullopt;
    if (!bits) return wrong("fault clear: nothing more, or a word, 1 or 2, and its bits");
    take_away(drive, *bits);
    return {};
}

}  // namespace

LineAnswer obey_fault(Drive& drive, std::span<const std::string_view> words) {
    if (words.size() == 1) return show(drive);
    if (words[1] == "clear") return clear(drive, words.subspan(2));
    const bool once = words.size() == 4 && words[3] == "once";
    const auto bits =
        words.size() == 3 || once ? bits_of(words[1], words[2]) : std::optional<Bits>();
    if (!bits) return wrong("fault: a word, 1 or 2, and its bits as hexadecimal digits are needed");
    if (once) {
        drive.provoke_fault(bits->word1, bits->word2);
    } else {
        drive.set_fault_causes(static_cast<std::uint16_t>(drive.fault_causes1() | bits->word1),
                               static_cast<std::uint16_t>(drive.fault_causes2() | bits->word2));
    }
    return {};
}

LineAnswer obey_load(Drive& drive, std::span<const std::string_view> words) {
    if (words.size() == 2 && words[0] == "clamp" && (words[1] == "on" || words[1] == "off")) {
        drive.hold_load(words[1] == "on");
        return {};
    }
    if (words[0] == "clamp") return wrong("clamp: on or off is needed");
    const auto torque = words.size() == 2 ? parse_decimal(words[1]) : std::nullopt;
    if (!torque || !(std::abs(*torque) <= kGreatestLoad)) {
        return wrong(fmt::format("load: a torque in Nm, up to {:.0f}, is needed", kGreatestLoad));
    }
    drive.set_load_torque(*torque);
    return {};
}

}  // namespace servo::sim
