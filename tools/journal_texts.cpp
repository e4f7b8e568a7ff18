// What the journal shows, copies and saves.
#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/ascii.h"
#include "link/abort_text.h"
#include "tools/journal.h"

namespace servo::tools {

namespace {

constexpr std::array<base::Text, WriteJournal::kColumns> kHeadings{{
    {"时间", "Time"},
    {"窗口", "Window"},
    {"对象", "Object"},
    {"名称", "Name"},
    {"原值", "Before"},
    {"写入值", "Written"},
    {"结果", "Result"},
}};

constexpr base::Text kSent{"无应答", "no answer"};
constexpr base::Text kTaken{"已接受", "taken"};
constexpr base::Text kRefused{"被拒绝：", "refused: "};
constexpr base::Text kTimes{"，共发送 {} 次", ", sent {} times"};

std::string result_text(const JournalEntry& entry, base::Language language) {
    std::string text;
    switch (entry.state) {
        case JournalEntry::State::kSent:
            text = kSent.in(language);
            break;
        case JournalEntry::State::kTaken:
            text = kTaken.in(language);
            break;
        case JournalEntry::State::kRefused:
            text =
                std::string(kRefused.in(language)) + link::abort_text(entry.abort_code, language);
            break;
    }
    if (entry.times > 1) text += fmt::format(fmt::runtime(kTimes.in(language)), entry.times);
    return text;
}

std::string key_text(const JournalEntry& entry) {
    return fmt::format("{:06X}", static_cast<std::uint32_t>(entry.object()));
}

}  // namespace

std::string_view WriteJournal::heading(int column, base::Language language) {
    return kHeadings.at(static_cast<std::size_t>(column)).in(language);
}

const WriteJournal::Facts& WriteJournal::facts(link::Identity object) const {
    const auto [found, added] = facts_.try_emplace(object);
    if (!added) return found->second;
    if (const auto record = services_.dictionary.get_record(object); record.key != 0)
        found->second = {
            .name_ch = dictionary::trim_tail(record.name_ch),
            .name_en = dictionary::trim_tail(record.name_en),
            .has_sign = base::ascii_lower(dictionary::trim_tail(record.type)).starts_with("int")};
    return found->second;
}

// An integer that the dictionary knows with a sign has one here.
std::string WriteJournal::value_text(const JournalEntry& entry, std::uint32_t bits) const {
    const std::uint32_t width = (entry.key & 0xFFU) * 8;
    const std::int64_t value = bits;
    const bool negative = facts(entry.object()).has_sign && (bits >> (width - 1) & 1U) != 0;
    return fmt::format("{}", negative ? value - (std::int64_t{1} << width) : value);
}

std::string WriteJournal::cell(const JournalEntry& entry, int column) const {
    switch (column) {
        case 0:
            return entry.time;
        case 1:
            return services_.caption ? services_.caption(entry.window) : entry.window;
        case 2:
            return key_text(entry);
        case 3:
            return language() == base::Language::kChinese ? facts(entry.object()).name_ch
                                                          : facts(entry.object()).name_en;
        case 4:
            return entry.before ? value_text(entry, *entry.before) : std::string();
        case 5:
            return value_text(entry, entry.value);
        case 6:
            return result_text(entry, language());
        default:
            return {};
    }
}

std::vector<std::size_t> WriteJournal::find(std::string_view text) const {
    const std::string part = base::ascii_lower(text);
    const auto holds = [this, &part](const JournalEntry& entry) {
        for (int column = 0; column < kColumns; ++column)
            if (base::ascii_lower(cell(entry, column)).find(part) != std::string::npos) return true;
        return false;
    };
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (part.empty() || holds(entries_[i])) found.push_back(i);
    return found;
}

std::string WriteJournal::copy(const std::vector<std::size_t>& chosen) const {
    std::string lines;
    for (const std::size_t i : chosen) {
        for (int column = 0; column < kColumns; ++column) {
            if (column > 0) lines += '\t';
            lines += cell(entries_.at(i), column);
        }
        lines += '\n';
    }
    return lines;
}

std::string WriteJournal::write_cdi(const std::vector<std::size_t>& chosen) const {
    std::vector<std::size_t> kept;  // of each object its last entry
    for (const std::size_t i : chosen) {
        const JournalEntry& entry = entries_.at(i);
        if (entry.state == JournalEntry::State::kRefused || is_command(entry.object())) continue;
        const auto same = std::ranges::find_if(kept, [this, &entry](std::size_t earlier) {
            return entries_[earlier].object() == entry.object();
        });
        if (same == kept.end())
            kept.push_back(i);
        else
            *same = i;
    }
    std::string lines;
    for (const std::size_t i : kept) {
        const JournalEntry& entry = entries_[i];
        lines += fmt::format("{}{:02X},{},True\r\n", key_text(entry), (entry.key & 0xFFU) * 8,
                             value_text(entry, entry.value));
    }
    return lines;
}

}  // namespace servo::tools
