#include "scope/channel.h"

namespace servo::scope {

std::string_view PickList::text() const {
    if (ListIndex < 0 || ListIndex >= static_cast<int>(items.size())) return {};
    return items[static_cast<std::size_t>(ListIndex)];
}

const dictionary::ObjectRecord* ScopeChannel::picked() const {
    const int entry = objectList.ListIndex - 1;
    if (entry < 0 || entry >= static_cast<int>(entries.size())) return nullptr;
    return &entries[static_cast<std::size_t>(entry)];
}

std::string ScopeChannel::picked_type() const {
    const dictionary::ObjectRecord* entry = picked();
    return entry == nullptr ? std::string() : dictionary::strip_blanks(entry->type);
}

int width_of(std::string_view short_type) {
    return dictionary::decoder_size(short_type) % 10;
}

}  // namespace servo::scope
