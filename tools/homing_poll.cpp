// What the form `Homing2` asks the poller for, and what it does with the values that come.
#include "base/number.h"
#include "params/codec.h"
#include "params/formula.h"
#include "tools/homing.h"
#include "tools/homing_rows.h"

namespace servo::tools {

using namespace homing;

link::Identity Homing2::get_ods(int row) const {
    return row < 0 || row > get_ODS_Num() ? 0 : rows_[static_cast<std::size_t>(row)].key;
}

// The dictionary may be loaded behind the rows, so a type is looked up when it is first asked for.
std::string_view Homing2::get_odtype(int row) const {
    if (row < 0 || row > get_ODS_Num()) return {};
    const Row& asked = rows_[static_cast<std::size_t>(row)];
    if (asked.type.empty())
        asked.type = params::strip_blanks(services_.dictionary.get_record(asked.key).type);
    return asked.type;
}

void Homing2::set_ods(int row, double value) {
    if (row < 0 || row > get_ODS_Num()) return;
    const auto at = static_cast<std::size_t>(row);
    const int size_code = params::decoder_size(get_odtype(row));
    if (at == kLabel3Row) {
        const auto text =
            params::value_to_text(value, kPlainUnit, kPlain, size_code, services_.operands);
        if (!text || *text == data_.Label3) return;
        data_.Label3 = *text;
        changed();
        return;
    }
    if (at == kCheck4Row) {
        if (data_.Check4 == (value != 0)) return;
        data_.Check4 = value != 0;
        changed();
        return;
    }
    for (const HomingList list : {HomingList::Combo1, HomingList::Combo2})
        if (at == kListRows[place(list)]) poll_list(list, value);
    for (const HomingEntry entry : kHomingEntries)
        if (at == rule(entry).row) poll_entry(entry, value, size_code);
}

void Homing2::poll_entry(HomingEntry entry, double value, int size_code) {
    const EntryRule& rules = rule(entry);
    const auto text = params::value_to_text(value, rules.unit_word(), rules.formula, size_code,
                                            services_.operands);
    if (!text) return;
    Entry& held = entries_[place(entry)];
    held.drive_text = *text;
    std::string& shown = data_.entries[place(entry)];
    if (held.focus || held.typed || shown == *text) return;
    shown = *text;
    changed();
}

// The index that is shown is the one stored last, by the drive or by a click; only another one is
// taken, so that a list which somebody has open is left alone. An index without an item shows none:
// the item of before would be a wrong one.
void Homing2::poll_list(HomingList list, double value) {
    const int count = kHomingListSizes[place(list)];
    const int index = value >= 0 && value < count ? static_cast<int>(value) : -1;
    int& stored = data_.lists[place(list)];
    if (index == stored) return;
    stored = index;
    changed();
}

}  // namespace servo::tools
