#include "tools/digital_io_list.h"

#include <algorithm>
#include <array>

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"

namespace servo::tools {

namespace {

constexpr std::uint16_t kLowMask = 0x7FFF;
constexpr std::uint16_t kHighMask = 0x0FFF;
constexpr int kGroupSize = 0x1000;
constexpr int kFirstHighGroup = kFirstHighCode / kGroupSize;
constexpr std::size_t kFields = 3;
constexpr std::size_t kMostDigits = 4;
constexpr std::size_t kLongestName = 64;  // characters; no box can show more

constexpr base::Text kReserved{"保留", "Reserved"};

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool is_hex_digit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F') ||
           (character >= 'a' && character <= 'f');
}

std::optional<std::uint16_t> code_of(std::string_view text) {
    if (text.empty() || !std::ranges::all_of(text, is_hex_digit)) return std::nullopt;
    const std::size_t zeros = std::min(text.find_first_not_of('0'), text.size());
    if (text.size() - zeros > kMostDigits) return std::nullopt;
    // Four digits are read as a signed number: 8001 is -32767, and its bits are what counts.
    return static_cast<std::uint16_t>(static_cast<std::int32_t>(base::scan_hex(text)));
}

std::optional<IoFunction> function_of(std::string_view line) {
    const std::string text = base::gbk_to_utf8(line);
    std::array<std::string_view, kFields> fields;
    std::string_view rest(text);
    for (std::size_t i = 0; i < kFields; ++i) {
        const std::size_t comma = rest.find(',');
        if (comma == std::string_view::npos && i + 1 < kFields) return std::nullopt;
        fields[i] = trimmed(rest.substr(0, comma));
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    }
    const auto code = code_of(fields[2]);
    if (!code) return std::nullopt;
    return IoFunction{std::string(base::utf8_prefix(fields[0], kLongestName)),
                      std::string(base::utf8_prefix(fields[1], kLongestName)), *code};
}

std::uint16_t mask_of(std::uint16_t value) {
    return value > kFirstHighCode ? kHighMask : kLowMask;
}

}  // namespace

std::string_view name_of(const IoFunction& function, base::Language language) {
    const bool chinese = language == base::Language::kChinese;
    const std::string& wanted = chinese ? function.chinese : function.english;
    const std::string& other = chinese ? function.english : function.chinese;
    if (!wanted.empty()) return wanted;
    if (!other.empty()) return other;
    return kReserved.in(language);
}

bool IoFunctions::add(IoFunction function) {
    if (count() >= kMostFunctions) return false;
    const int g = function.code / kGroupSize;
    // 1 to 7 never begin a group: they are bits 12 to 14 of the group of fifteen.
    const bool begins = last_.empty() || (g != stored_group_ && (g == 0 || g >= kFirstHighGroup));
    if (begins) {
        last_.push_back(count());
        stored_group_ = g >= kFirstHighGroup ? g : 0;
    } else {
        last_.back() = count();
    }
    functions_.push_back(std::move(function));
    return true;
}

int IoFunctions::last_of(int group) const {
    if (group < 0 || group >= groups()) return -1;
    return last_[static_cast<std::size_t>(group)];
}

int IoFunctions::entries_of(int group) const {
    if (group < 0 || group >= groups()) return 0;
    return last_of(group) - last_of(group - 1);
}

int IoFunctions::group_of(int index) const {
    return static_cast<int>(std::ranges::lower_bound(last_, index) - last_.begin());
}

// The group of fifteen takes all up to 0x8000, so that its three highest bits show as well; a group
// above takes what its twelve bits can hold.
std::optional<int> IoFunctions::group_of_value(std::uint16_t value) const {
    for (int group = 0; group < groups(); ++group) {
        const std::uint16_t first = first_code(group);
        const std::uint16_t end =
            first < kFirstHighCode ? kFirstHighCode : static_cast<std::uint16_t>(first | kHighMask);
        if (value <= end) return group;
    }
    return std::nullopt;
}

std::vector<bool> IoFunctions::decode(std::uint16_t value) const {
    std::vector<bool> active(functions_.size(), false);
    const auto group = group_of_value(value);
    if (!group) return active;
    const int bits = value & mask_of(value);
    for (int index = last_of(*group - 1) + 1; index <= last_of(*group); ++index)
        active[static_cast<std::size_t>(index)] = (bits & at(index).code) != 0;
    return active;
}

std::uint16_t IoFunctions::unnamed_bits(std::uint16_t value) const {
    const auto group = group_of_value(value);
    if (!group) return value;
    unsigned named = value < kFirstHighCode ? 0U : 0xF000U;
    for (int index = last_of(*group - 1) + 1; index <= last_of(*group); ++index)
        named |= at(index).code & unsigned{mask_of(value)};
    // 0x8000 belongs to the group of fifteen, which has no bit 15.
    if (value == kFirstHighCode) named = 0;
    return static_cast<std::uint16_t>(value & ~named);
}

// The bits are joined and not added: two names for one function, both ticked, are that function
// still. The group of fifteen has no number in its top bits, whatever its first code is.
Encoded IoFunctions::encode(const std::vector<bool>& ticks) const {
    Encoded said;
    int counted = -1;
    unsigned value = 0;
    for (int index = 0; index < count() && static_cast<std::size_t>(index) < ticks.size();
         ++index) {
        if (!ticks[static_cast<std::size_t>(index)]) continue;
        const int group = group_of(index);
        const std::uint16_t first = first_code(group);
        if (group != counted) ++said.groups;
        counted = group;
        if (first < kFirstHighCode)
            value |= at(index).code & unsigned{kLowMask};
        else
            value |= (first & 0xF000U) | (at(index).code & unsigned{kHighMask});
    }
    said.value = static_cast<std::uint16_t>(value);
    return said;
}

std::string IoFunctions::names(std::uint16_t value, base::Language language) const {
    std::string joined;
    const std::vector<bool> active = decode(value);
    for (int index = 0; index < count(); ++index) {
        if (!active[static_cast<std::size_t>(index)]) continue;
        if (!joined.empty()) joined += '+';
        joined += name_of(at(index), language);
    }
    return joined;
}

FunctionList parse_function_list(std::string_view content) {
    FunctionList list;
    base::LineReader lines(content);
    const auto head = lines.next();
    if (!head) {
        list.state = ListState::kEmpty;
        return list;
    }
    if (*head != kInputSection) {
        list.state = ListState::kNotRight;
        return list;
    }
    list.state = ListState::kRead;
    IoFunctions* side = &list.inputs;
    for (int number = 2; const auto line = lines.next(); ++number) {
        if (*line == kOutputSection) {
            side = &list.outputs;
        } else if (!trimmed(*line).empty()) {
            auto function = function_of(*line);
            if (!function || !side->add(std::move(*function))) list.bad_lines.push_back(number);
        }
    }
    return list;
}

FunctionList load_function_list(const std::filesystem::path& folder) {
    const auto content = base::read_file(base::find_in(folder, kFunctionListFile));
    if (!content) return {};
    return parse_function_list(*content);
}

}  // namespace servo::tools
