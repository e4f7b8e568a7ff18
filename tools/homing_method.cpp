#include "tools/homing_method.h"

#include <algorithm>
#include <string_view>

namespace servo::tools {

namespace {

using enum HomingChoice;

constexpr std::array kPairs{OptionPair{Option2, Option3},   OptionPair{Option5, Option4},
                            OptionPair{Option6, Option7},   OptionPair{Option8, Option9},
                            OptionPair{Option11, Option10}, OptionPair{Option12, Option13},
                            OptionPair{Option15, Option14}, OptionPair{Option16, Option17},
                            OptionPair{Option19, Option18}, OptionPair{Option20, Option21}};

// A row holds a character for each column of its table: '1' on, '0' off, '-' does not matter.
struct MethodRow {
    std::string_view cells;
    int method;
};

constexpr std::array kIndexColumns{Check1, Check2, Option2, Option6, Option5};
constexpr std::array kIndexRows{
    MethodRow{"001--", 34}, MethodRow{"000--", 33}, MethodRow{"10--1", 2},  MethodRow{"10--0", 1},
    MethodRow{"0111-", 4},  MethodRow{"0110-", 5},  MethodRow{"0101-", 3},  MethodRow{"0100-", 6},
    MethodRow{"11111", 8},  MethodRow{"11110", 13}, MethodRow{"11101", 10}, MethodRow{"11100", 11},
    MethodRow{"11011", 7},  MethodRow{"11010", 14}, MethodRow{"11001", 9},  MethodRow{"11000", 12}};

constexpr std::array kLimitColumns{Option8};
constexpr std::array kLimitRows{MethodRow{"1", 18}, MethodRow{"0", 17}};

constexpr std::array kHomeColumns{Check5, Option16, Option15, Option12};
constexpr std::array kHomeRows{MethodRow{"1111", 24}, MethodRow{"1110", 26}, MethodRow{"1101", 29},
                               MethodRow{"1100", 27}, MethodRow{"1011", 23}, MethodRow{"1010", 25},
                               MethodRow{"1001", 30}, MethodRow{"1000", 28}, MethodRow{"01-1", 20},
                               MethodRow{"01-0", 21}, MethodRow{"00-1", 19}, MethodRow{"00-0", 22}};

constexpr std::array kSpecialColumns{Option19, Option20, Check7};
constexpr std::array kSpecialRows{MethodRow{"1--", 35}, MethodRow{"010", -18},
                                  MethodRow{"011", -21}, MethodRow{"000", -17},
                                  MethodRow{"001", -20}};

struct MethodTable {
    int Option1;
    std::span<const HomingChoice> columns;
    std::span<const MethodRow> rows;
};
// The last trigger has no table: its method is typed.
constexpr std::array kTables{MethodTable{kTriggerIndex, kIndexColumns, kIndexRows},
                             MethodTable{kTriggerLimit, kLimitColumns, kLimitRows},
                             MethodTable{kTriggerHomeSwitch, kHomeColumns, kHomeRows},
                             MethodTable{kTriggerSpecial, kSpecialColumns, kSpecialRows}};

bool fits(const MethodTable& table, const MethodRow& row, const HomingChoices& choices) {
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        if (row.cells[i] != '-' && choices.on(table.columns[i]) != (row.cells[i] == '1'))
            return false;
    return true;
}

const OptionPair* pair_of(HomingChoice choice) {
    const auto* const found = std::ranges::find_if(kPairs, [choice](const OptionPair& pair) {
        return pair.first == choice || pair.second == choice;
    });
    return found == kPairs.end() ? nullptr : found;
}

struct Description {
    int first;
    int last;
    std::string_view name;
    bool typed;  // also in the list of typed methods
};
// Looked through from the top; the ranges hold numbers that are no method, such as none here below
// 17 and 0.
constexpr std::array kDescriptions{
    Description{1, 1, "1", true},          Description{2, 2, "2", true},
    Description{35, 35, "35", true},       Description{3, 4, "3-4", true},
    Description{5, 6, "5-6", true},        Description{7, 14, "7-14", true},
    Description{17, 30, "17-30", true},    Description{33, 34, "33-34", true},
    Description{-18, -17, "-17-18", true}, Description{-21, -20, "-20-21", false}};

std::string with_ending(std::string_view name, std::string_view ending, base::Language language) {
    std::string file(name);
    if (language == base::Language::kEnglish) file += "_EN";
    return file += ending;
}

}  // namespace

std::span<const OptionPair> homing_option_pairs() {
    return kPairs;
}

HomingChoices::HomingChoices() {
    for (const OptionPair& pair : kPairs)
        set(pair.first, true);
}

void HomingChoices::set(HomingChoice choice, bool on) {
    on_[static_cast<std::size_t>(choice)] = on;
    if (const OptionPair* pair = pair_of(choice)) {
        const HomingChoice other = pair->first == choice ? pair->second : pair->first;
        on_[static_cast<std::size_t>(other)] = !on;
    }
}

void HomingChoices::Option1_Click(int index) {
    if (index >= 0 && index < kHomingTriggers) Option1_ = index;
}

void HomingChoices::click(HomingChoice choice) {
    set(choice, pair_of(choice) != nullptr || !on(choice));
    // The way to a limit switch is a matter of which one it is.
    if (choice == Option4 && limit_alone()) set(Option3, true);
    if (choice == Option5 && limit_alone()) set(Option2, true);
    if (choice == Option8) set(Option11, true);
    if (choice == Option9) set(Option10, true);
}

bool HomingChoices::take(int method) {
    for (const MethodTable& table : kTables) {
        const auto row = std::ranges::find(table.rows, method, &MethodRow::method);
        if (row == table.rows.end()) continue;
        Option1_ = table.Option1;
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            if (row->cells[i] != '-') set(table.columns[i], row->cells[i] == '1');
        // What a click would have taken along.
        if (table.Option1 == kTriggerIndex && limit_alone()) set(Option2, on(Option5));
        if (table.Option1 == kTriggerLimit) set(Option11, on(Option8));
        return true;
    }
    return false;
}

int Get_Home_Method(const HomingChoices& choices) {
    for (const MethodTable& table : kTables) {
        if (table.Option1 != choices.Option1()) continue;
        for (const MethodRow& row : table.rows)
            if (fits(table, row, choices)) return row.method;
    }
    return 0;
}

std::span<const int> homing_methods() {
    static constexpr auto kMethods = [] {
        std::array<int,
                   kIndexRows.size() + kLimitRows.size() + kHomeRows.size() + kSpecialRows.size()>
            methods{};
        auto* place = methods.begin();
        for (const MethodTable& table : kTables)
            for (const MethodRow& row : table.rows)
                *place++ = row.method;
        std::ranges::sort(methods);
        return methods;
    }();
    return kMethods;
}

bool is_typed_method(double number) {
    return number == 0 || std::ranges::any_of(homing_methods(), [number](int method) {
               return static_cast<double>(method) == number;
           });
}

std::optional<std::string> homing_picture_file(int method, base::Language language) {
    if (method == 0 || method == 35) return std::nullopt;
    return with_ending(std::to_string(method), ".jpg", language);
}

std::optional<std::string> homing_description_file(int method, HomingOrigin origin,
                                                   base::Language language) {
    for (const Description& each : kDescriptions) {
        if (method < each.first || method > each.last) continue;
        if (origin == HomingOrigin::kTyped && !each.typed) return std::nullopt;
        return with_ending(each.name, ".txt", language);
    }
    return std::nullopt;
}

}  // namespace servo::tools
