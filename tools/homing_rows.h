// Which row of the form `Homing2` belongs to which control, and the formulas of those that have a
// unit. Part of the form; nothing else includes it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tools/homing.h"

namespace servo::tools::homing {

inline constexpr std::size_t kRows = 9;
inline constexpr std::size_t kLabel3Row = 1;
inline constexpr std::size_t kCheck4Row = 4;
inline constexpr std::array<std::size_t, kHomingListSizes.size()> kListRows{7, 8};

inline constexpr std::string_view kPlain = "[DEC]N*1";
inline constexpr std::string_view kPlainUnit = "DEC";

struct EntryRule {
    std::size_t row;
    std::string_view unit;     // empty: plain decimal
    std::string_view formula;  // from the drive's value
    std::string_view inverse;  // from the entry

    constexpr std::string_view unit_word() const { return unit.empty() ? kPlainUnit : unit; }
};

constexpr EntryRule speed_rule(std::size_t row) {
    return {row, "rpm", "[DEC rpm]N*1875/512/[64100320]", "[rpm DEC]N/1875*512*[64100320]"};
}

// In the order of HomingEntry. These formulas are the form's own: the dictionary may offer others.
inline constexpr std::array<EntryRule, kHomingEntries.size()> kEntryRules{
    speed_rule(2), EntryRule{0, "", kPlain, kPlain}, speed_rule(3),
    EntryRule{5, "rps/s", "[DEC rps/s]N*1000*4000/65536/[64100320]",
              "[rps/s DEC]N/1000/4000*65536*[64100320]"},
    EntryRule{6, "Ap", "[DEC Ap]N/2048*[65100310]/10", "[Ap DEC]N*2048/[65100310]*10"}};

constexpr std::size_t place(HomingEntry entry) {
    return static_cast<std::size_t>(entry);
}
constexpr std::size_t place(HomingList list) {
    return static_cast<std::size_t>(list);
}
constexpr const EntryRule& rule(HomingEntry entry) {
    return kEntryRules[place(entry)];
}

}  // namespace servo::tools::homing
