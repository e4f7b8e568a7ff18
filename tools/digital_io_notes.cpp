#include "tools/digital_io_notes.h"

#include <fmt/format.h>

#include "base/number.h"

namespace servo::tools {

namespace {

using base::Language;
using base::Text;

// A message with places for its parts.
template <typename... Parts>
std::string say(Text text, Language language, const Parts&... parts) {
    return fmt::format(fmt::runtime(text.in(language)), parts...);
}

bool simulated(const DigitalIOData& data, int row) {
    return data.box(row, IoColumn::kSimulate);
}

const IoFunctions& functions_of(const DigitalIOData& data, int row) {
    return data.functions(side_of(row));
}

std::string names_of(const DigitalIOData& data, int row, Language language) {
    return functions_of(data, row).names(data.value(row), language);
}

void add_simulated_limits(const DigitalIOData& data, Language language,
                          std::vector<IoWarningText>& into) {
    constexpr Text kText{"{}：限位开关“{}”处于仿真状态，不再起保护作用",
                         "{}: the limit switch {} is simulated and protects nothing"};
    const IoFunctions& inputs = data.list.inputs;
    for (int row = 0; row < kInputPins; ++row) {
        if (!simulated(data, row)) continue;
        const std::vector<bool> active = inputs.decode(data.value(row));
        for (int index = 0; index < inputs.count(); ++index) {
            const std::uint16_t code = inputs.at(index).code;
            if (!active[static_cast<std::size_t>(index)]) continue;
            if (code != kPositiveLimit && code != kNegativeLimit) continue;
            into.push_back(
                {IoWarning::kLimitSimulated, say(kText, language, pin_name(row, language),
                                                 name_of(inputs.at(index), language))});
        }
    }
}

void add_unknown_values(const DigitalIOData& data, Language language,
                        std::vector<IoWarningText>& into) {
    constexpr Text kText{"{}：数值 {} 含有功能表中没有的功能",
                         "{}: the value {} holds a function that the list does not name"};
    for (int row = 0; row < kPinlessRow; ++row) {
        const std::uint16_t value = data.value(row);
        if (functions_of(data, row).unnamed_bits(value) == 0) continue;
        into.push_back({IoWarning::kUnknownValue,
                        say(kText, language, pin_name(row, language), code_text(value))});
    }
}

// One warning for a function, however many pins carry it.
void add_doubled(const DigitalIOData& data, Language language, IoSide side,
                 std::vector<IoWarningText>& into) {
    constexpr Text kText{"{}都分配了“{}”", "{} carry the same function: {}"};
    constexpr Text kAnd{"和", " and "};
    const IoFunctions& functions = data.functions(side);
    std::vector<std::string> carriers(static_cast<std::size_t>(functions.count()));
    std::vector<int> counts(carriers.size(), 0);
    for (int row = first_row(side); row < first_row(side) + pins_of(side); ++row) {
        const std::vector<bool> active = functions.decode(data.value(row));
        for (std::size_t index = 0; index < active.size(); ++index) {
            if (!active[index]) continue;
            if (counts[index]++ > 0) carriers[index] += kAnd.in(language);
            carriers[index] += pin_name(row, language);
        }
    }
    for (std::size_t index = 0; index < counts.size(); ++index)
        if (counts[index] > 1)
            into.push_back({IoWarning::kDoubled,
                            say(kText, language, carriers[index],
                                name_of(functions.at(static_cast<int>(index)), language))});
}

std::string duration_text(std::chrono::seconds duration, Language language) {
    constexpr std::int64_t kMinute = 60;
    constexpr std::int64_t kHour = 3600;
    const std::int64_t seconds = duration.count();
    if (seconds < kMinute) return say({"{} 秒", "{} s"}, language, seconds);
    if (seconds < kHour) return say({"{} 分钟", "{} min"}, language, seconds / kMinute);
    return say({"{} 小时", "{} h"}, language, seconds / kHour);
}

}  // namespace

std::string pin_name(int row, Language language) {
    const IoSide side = side_of(row);
    return fmt::format("{} {}", pin_word(side).in(language), row - first_row(side) + 1);
}

std::string code_text(std::uint16_t code) {
    const std::string digits = base::hex_text(code);
    return "0x" + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
}

std::vector<IoWarningText> warnings_of(const DigitalIOData& data, Language language) {
    constexpr Text kBadLines{"功能表 DigitIOSettings.ini 第 {} 行不是功能",
                             "Line {} of the list DigitIOSettings.ini holds no function"};
    std::vector<IoWarningText> warnings;
    add_simulated_limits(data, language, warnings);
    add_unknown_values(data, language, warnings);
    for (const IoSide side : kIoSides)
        add_doubled(data, language, side, warnings);
    if (!data.list.bad_lines.empty())
        warnings.push_back(
            {IoWarning::kBadLines, say(kBadLines, language, data.list.bad_lines.front())});
    return warnings;
}

std::string warning_line(const std::vector<IoWarningText>& warnings) {
    if (warnings.empty()) return {};
    if (warnings.size() == 1) return warnings.front().text;
    return fmt::format("{} (+{})", warnings.front().text, warnings.size() - 1);
}

std::string warning_tip(const std::vector<IoWarningText>& warnings) {
    constexpr std::size_t kMostLines = 20;
    std::string tip;
    for (std::size_t i = 0; i < warnings.size() && i < kMostLines; ++i) {
        if (i > 0) tip += '\n';
        tip += warnings[i].text;
    }
    return tip;
}

std::string simulated_text(const DigitalIOData& data, Language language) {
    constexpr Text kHead{"仿真中：", "Simulated: "};
    constexpr Text kComma{"、", ", "};
    std::string text;
    for (int row = 0; row < kPinlessRow; ++row) {
        if (!simulated(data, row)) continue;
        text += text.empty() ? kHead.in(language) : kComma.in(language);
        text += pin_name(row, language);
        const std::string names = names_of(data, row, language);
        if (!names.empty()) text += fmt::format(" ({})", names);
    }
    return text;
}

bool states_old(const DigitalIOData& data, std::optional<std::chrono::seconds> age) {
    return !data.link_open || !age || *age >= kOldAfter;
}

std::string age_text(const DigitalIOData& data, std::optional<std::chrono::seconds> age,
                     Language language) {
    if (!age) {
        if (!data.link_open)
            return say({"通信未打开，状态未知", "The link is closed; the states are not known"},
                       language);
        return say({"等待驱动器应答", "Waiting for the drive"}, language);
    }
    const std::string old = duration_text(*age, language);
    if (!data.link_open)
        return say({"通信未打开，显示的是 {}前的状态，修改不会写入",
                    "The link is closed: states of {} ago, and nothing is written"},
                   language, old);
    if (*age >= kOldAfter) return say({"显示的是 {}前的状态", "States of {} ago"}, language, old);
    return say({"实时状态", "Live"}, language);
}

std::string row_tip(const DigitalIOData& data, int row, Language language) {
    constexpr Text kUnknown{"{}：尚未读取", "{}: not read yet"};
    constexpr Text kNone{"无功能", "no function"};
    constexpr Text kWaiting{"已写入，等待读回", "written, not read back yet"};
    if (!data.rows[static_cast<std::size_t>(row)].seen)
        return say(kUnknown, language, pin_name(row, language));
    std::string names = names_of(data, row, language);
    if (names.empty()) names = kNone.in(language);
    const std::uint32_t object = key_of_tag(tag_of(row)) >> 8;
    std::string tip = fmt::format("{}: {}\n{}:{} = {}", pin_name(row, language), names,
                                  base::hex_text(object >> 8),
                                  code_text(static_cast<std::uint16_t>(object & 0xFFU)).substr(4),
                                  code_text(data.value(row)));
    if (data.rows[static_cast<std::size_t>(row)].waiting)
        tip += '\n' + std::string(kWaiting.in(language));
    return tip;
}

std::string function_tip(const IoFunctions& functions, int index, Language language) {
    constexpr Text kText{"{}\n代码 {}，第 {} 组", "{}\nCode {}, group {}"};
    const IoFunction& function = functions.at(index);
    return say(kText, language, name_of(function, language), code_text(function.code),
               functions.group_of(index) + 1);
}

std::string chosen_text(const Encoded& chosen, Language language) {
    constexpr Text kTwo{"不同组的功能不能同时分配给一个端子",
                        "Functions of two groups can't share a pin"};
    constexpr Text kNone{"未选择功能：写入 0x0000", "No function: writes 0x0000"};
    constexpr Text kValue{"写入 {}", "Writes {}"};
    if (chosen.groups > 1) return std::string(kTwo.in(language));
    if (chosen.groups == 0) return std::string(kNone.in(language));
    return say(kValue, language, code_text(chosen.value));
}

}  // namespace servo::tools
