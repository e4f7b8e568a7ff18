#include "scope/channel_lists.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "base/gbk.h"
#include "params/formula.h"

namespace servo::scope {

namespace {

constexpr std::uint8_t kWindow = 7;     // entries offered at most
constexpr std::size_t kNameWidth = 64;  // characters

constexpr std::array<dictionary::Identity, 7> kFirstObjects{0x607800, 0x60F60C, 0x60F916, 0x606300,
                                                            0x606B00, 0x60FB08, 0x60FC00};

// As the list shows it: the field without the blanks that fill it.
std::string shown_name(const dictionary::ObjectRecord& entry, base::Language language) {
    const std::string name =
        dictionary::trim_tail(language == base::Language::kChinese ? entry.name_ch : entry.name_en);
    return std::string(base::utf8_prefix(name, kNameWidth));
}

// The first entry and its item go, the others take the places before them. The place behind the
// last of the seven is free for the new entry. A pick stays on its object; one that went is none.
void slide(ScopeChannel& channel) {
    std::move(channel.entries.begin() + 1, channel.entries.end(), channel.entries.begin());
    channel.entries.back() = {};
    PickList& list = channel.objectList;
    list.items.erase(list.items.begin() + 1);
    if (list.ListIndex > 0) --list.ListIndex;
}

}  // namespace

std::optional<std::uint8_t> Add_OD_To_CH(dictionary::Identity key, ScopeChannel& channel,
                                         const dictionary::Store& dictionary,
                                         base::Language language) {
    for (std::uint8_t place = 0; place < channel.entryCount; ++place)
        if (channel.entries[place].key == key) return place;
    if (key == 0 || !dictionary.find(key)) return std::nullopt;

    dictionary::ObjectRecord entry = dictionary.get_record(key);
    std::string name = shown_name(entry, language);
    // entryNext begins again at 0 when the list is full. From then on a new entry still goes to the
    // end, beside its text: item n of the list is always entry n-1.
    std::uint8_t place = channel.entryNext;
    if (channel.entryCount == kWindow) {
        slide(channel);
        place = kWindow - 1;
    } else {
        ++channel.entryCount;
    }
    channel.objectList.items.push_back(std::move(name));
    channel.entries[place] = std::move(entry);
    channel.entryNext =
        channel.entryCount == kWindow ? 0 : static_cast<std::uint8_t>(channel.entryNext + 1);
    return place;
}

void Add_Unit_To_CH(int entryIndex, ScopeChannel& channel) {
    if (entryIndex < 0 || entryIndex >= static_cast<int>(kEntries)) return;
    const dictionary::ObjectRecord& entry = channel.entries[static_cast<std::size_t>(entryIndex)];
    PickList& units = channel.unitList;
    if (entry.key != channel.unitsShown) {
        units = {};
        // Another unit has other numbers: a scale that was set for the old one fits no more.
        if (channel.unitsShown != 0) channel.autoScale = true;
        channel.unitsShown = entry.key;
    }
    const std::string list = dictionary::trim_tail(entry.formula);
    std::string_view rest = list;
    for (bool more = true; more;) {
        const std::size_t end = rest.find('\n');
        std::string unit =
            dictionary::strip_blanks(params::split_formula(rest.substr(0, end)).unit);
        if (std::find(units.items.begin(), units.items.end(), unit) == units.items.end())
            units.items.push_back(std::move(unit));
        more = end != std::string_view::npos;
        if (more) rest.remove_prefix(end + 1);
    }
    // A new list begins with its first unit, so that a curve can be drawn at once.
    if (units.ListIndex < 0) units.ListIndex = 0;
}

void offer_first_objects(ScopeChannel& channel, const dictionary::Store& dictionary,
                         base::Language language) {
    for (const dictionary::Identity object : kFirstObjects)
        Add_OD_To_CH(object, channel, dictionary, language);
}

void rename_objects(ScopeChannel& channel, base::Language language) {
    std::vector<std::string>& items = channel.objectList.items;
    for (std::size_t place = 0; place < channel.entryCount && place + 1 < items.size(); ++place)
        items[place + 1] = shown_name(channel.entries[place], language);
}

}  // namespace servo::scope
