#include "sim/input_lines.h"

#include <fmt/format.h>

#include <vector>

#include "sim/digital_io.h"
#include "sim/drive.h"
#include "sim/fault_lines.h"
#include "sim/text.h"

namespace servo::sim {

namespace {

constexpr std::size_t kLongestLine = 200;

// An hour: more is a mistyped number.
constexpr std::int64_t kLongestPulse = 3'600'000;

constexpr std::string_view kHelp =
    "din PIN 1|0         input PIN, 1 to 8, goes high or low\n"
    "din PIN pulse MS    input PIN has the other level for MS milliseconds\n"
    "din LEVELS          all inputs as eight digits, input 8 first\n"
    "din                 shows inputs and outputs\n"
    "fault WORD BITS     bits of fault word 1 or 2, hexadecimal, have a cause from now on\n"
    "fault WORD BITS once  a cause that comes and goes\n"
    "fault clear [WORD BITS]  the causes are gone, all or these\n"
    "fault               shows fault words, masks and causes\n"
    "load NM             torque of the machine against the motor\n"
    "clamp on|off        the load is held, is let go\n"
    "help                shows this";

std::vector<std::string_view> words_of(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r";
    std::vector<std::string_view> words;
    std::size_t at = line.find_first_not_of(kBlanks);
    while (at != std::string_view::npos) {
        const std::size_t end = std::min(line.find_first_of(kBlanks, at), line.size());
        words.push_back(line.substr(at, end - at));
        at = line.find_first_not_of(kBlanks, end);
    }
    return words;
}

LineAnswer wrong(std::string text) {
    return {false, std::move(text)};
}

LineAnswer show(const Drive& drive) {
    return {true,
            fmt::format("inputs {:08b}, outputs {:07b}", drive.input_pins(), drive.output_pins())};
}

LineAnswer move_pin(Drive& drive, const std::vector<std::string_view>& words) {
    const auto number = parse_integer(words[1]);
    if (!number || *number < 1 || *number > kInputPins) {
        return wrong(fmt::format("{}: an input, 1 to {}, is needed", words[1], kInputPins));
    }
    const int pin = static_cast<int>(*number) - 1;
    if (words.size() == 3 && (words[2] == "0" || words[2] == "1")) {
        drive.set_pin(pin, words[2] == "1");
        return {};
    }
    if (words[2] != "pulse") return wrong(fmt::format("{}: 0, 1 or pulse is needed", words[2]));
    const auto time = words.size() == 4 ? parse_integer(words[3]) : std::nullopt;
    if (!time || *time < 1 || *time > kLongestPulse) {
        return wrong(fmt::format("pulse: milliseconds, 1 to {}, are needed", kLongestPulse));
    }
    drive.pulse_pin(pin, std::chrono::milliseconds(*time));
    return {};
}

}  // namespace

std::optional<std::uint8_t> parse_pins(std::string_view text) {
    if (text.size() != kInputPins) return std::nullopt;
    unsigned pins = 0;
    for (const char c : text) {
        if (c != '0' && c != '1') return std::nullopt;
        pins = pins << 1U | (c == '1' ? 1U : 0U);
    }
    return static_cast<std::uint8_t>(pins);
}

LineAnswer obey_line(Drive& drive, std::string_view line) {
    const std::vector<std::string_view> words = words_of(line);
    if (words.empty() || words[0].front() == '#') return {};
    if (words.size() == 1 && words[0] == "help") return {true, std::string(kHelp)};
    if (words[0] == "fault") return obey_fault(drive, words);
    if (words[0] == "load" || words[0] == "clamp") return obey_load(drive, words);
    if (words[0] != "din" || words.size() > 4) {
        return wrong(fmt::format("{}: not understood, see help", line));
    }
    if (words.size() == 1) return show(drive);
    if (words.size() > 2) return move_pin(drive, words);
    const auto pins = parse_pins(words[1]);
    if (!pins) return wrong(fmt::format("{}: eight digits 0 or 1 are needed", words[1]));
    for (int pin = 0; pin < kInputPins; ++pin)
        drive.set_pin(pin, (*pins >> pin & 1U) != 0);
    return {};
}

std::optional<std::string> LineCutter::next() {
    while (true) {
        const std::size_t end = waiting_.find('\n');
        if (end == std::string::npos) {
            if (waiting_.size() > kLongestLine) {
                waiting_.clear();
                skipping_ = true;
            }
            return std::nullopt;
        }
        std::string line = waiting_.substr(0, end);
        waiting_.erase(0, end + 1);
        const bool skipped = skipping_ || line.size() > kLongestLine;
        skipping_ = false;
        if (!skipped) return line;
        return std::string("a line that is too long");
    }
}

}  // namespace servo::sim
