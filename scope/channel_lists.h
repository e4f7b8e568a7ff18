// The pick lists of a channel: the objects used recently, and the units of the one picked.
#pragma once

#include <cstdint>
#include <optional>

#include "base/language.h"
#include "dictionary/keys.h"
#include "dictionary/store.h"
#include "scope/channel.h"

namespace servo::scope {

// Index of the object's entry, added if it is not there; nothing for an object that the dictionary
// does not have: it is left out of the list. The list is a window of the most recent seven: an
// eighth pushes the first one out, and entries 0 to 6 take the place of their neighbours.
std::optional<std::uint8_t> Add_OD_To_CH(dictionary::Identity key, ScopeChannel& channel,
                                         const dictionary::Store& dictionary,
                                         base::Language language);

// Lists the units of that entry. The list is cleared first when it shows another object's, and
// automatic scaling begins anew.
void Add_Unit_To_CH(int entryIndex, ScopeChannel& channel);

// The objects that every channel offers from the start, in their order.
void offer_first_objects(ScopeChannel& channel, const dictionary::Store& dictionary,
                         base::Language language);

// The names in the list in another language. Picks stay.
void rename_objects(ScopeChannel& channel, base::Language language);

}  // namespace servo::scope
