#include "tools/configuration_compare.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>

#include "base/number.h"
#include "params/formula.h"

namespace servo::tools {

namespace {

constexpr base::Text kNotRead{"（未读出）", "(not read)"};
constexpr base::Text kNotListed{"（未列出）", "(not listed)"};
constexpr std::string_view kRawUnit = "DEC";

// One object of a list.
struct Entry {
    std::optional<double> value;  // the drive's pattern, unsigned
    std::size_t order = 0;        // of its first row
};
using Entries = std::map<dictionary::WireKey, Entry>;

int width_of(dictionary::WireKey key) {
    return static_cast<int>(key & 0xFF);
}

// What the object would hold: the number without what its width cannot keep.
std::optional<double> pattern_of(const ConfigurationValue& value, int width) {
    if (!value.known) return std::nullopt;
    const auto number = source_number(value.value);
    if (!number) return std::nullopt;
    const auto bits = static_cast<std::uint32_t>(*number);
    const std::uint32_t mask = width == 4 ? 0xFFFFFFFFU : (1U << (8 * width)) - 1;
    return bits & mask;
}

Entries entries_of(const std::vector<ConfigurationValue>& list, std::size_t& unusable) {
    Entries entries;
    for (std::size_t row = 0; row < list.size(); ++row) {
        const auto key = row_key(list[row].Index);
        if (!key) {
            ++unusable;
            continue;
        }
        const auto [entry, first] = entries.try_emplace(*key);
        if (first) entry->second.order = row;
        const auto value = pattern_of(list[row], width_of(*key));
        if (value) entry->second.value = value;
    }
    return entries;
}

// The five values that formulas refer to, as a list has them.
link::FormulaOperands operands_of(const Entries& list, const Entries& other,
                                  link::FormulaOperands operands) {
    const auto take = [&](dictionary::WireKey key, link::Operand& operand) {
        for (const Entries* entries : {&list, &other}) {
            const auto found = entries->find(key);
            if (found == entries->end() || !found->second.value) continue;
            const auto bits = static_cast<std::uint32_t>(*found->second.value);
            operand = {width_of(key) == 2 ? static_cast<std::int16_t>(bits)
                                          : static_cast<std::int32_t>(bits),
                       true};
            return;
        }
    };
    take(0x64100304, operands.o64100320);
    take(0x65100302, operands.o65100310);
    take(0x30400704, operands.o30400710);
    take(0x60F61302, operands.o60F61310);
    take(0x60F61102, operands.o60F61110);
    return operands;
}

bool operands_known(std::string_view expression, const link::FormulaOperands& operands) {
    const auto known = [&](std::string_view reference, const link::Operand& operand) {
        return operand.seen || expression.find(reference) == std::string_view::npos;
    };
    return known("[64100320]", operands.o64100320) && known("[65100310]", operands.o65100310) &&
           known("[30400710]", operands.o30400710) && known("[60F61310]", operands.o60F61310) &&
           known("[60F61110]", operands.o60F61110);
}

// How an object is shown.
struct Look {
    int decoder = 0;  // of the dictionary's type; 0 where it does not fit the row's length
    std::string unit{kRawUnit};
    std::string formula;  // the object's list
};

Look look_of(const dictionary::ObjectRecord& record, dictionary::WireKey key) {
    Look look;
    const int decoder = dictionary::decoder_size(dictionary::strip_blanks(record.type));
    if (record.key == 0 || decoder % 10 != width_of(key)) return look;
    look.decoder = decoder;
    look.formula = dictionary::trim_tail(record.formula);
    look.unit = params::split_formula(params::first_line(look.formula)).unit;
    return look;
}

double signed_value(double pattern, const Look& look) {
    const bool is_signed = look.decoder > 10;
    const double half = look.decoder == 11 ? 128.0 : look.decoder == 12 ? 32768.0 : 2147483648.0;
    return is_signed && pattern >= half ? pattern - 2 * half : pattern;
}

bool can_show(const Look& look, const link::FormulaOperands& operands) {
    const auto expression = params::unit_expression(look.unit, look.formula);
    return !expression || operands_known(*expression, operands);
}

ComparedValue shown_value(const Entries& entries, dictionary::WireKey key, const Look& look,
                          const link::FormulaOperands& operands) {
    const auto entry = entries.find(key);
    if (entry == entries.end()) return {};
    if (!entry->second.value) return {.side = ComparedSide::kUnread, .raw = {}, .shown = {}};
    const double value = signed_value(*entry->second.value, look);
    ComparedValue shown{
        .side = ComparedSide::kValue, .raw = base::format_whole(value), .shown = {}};
    const auto text = params::value_to_text(value, look.unit, look.formula, look.decoder, operands);
    shown.shown = text && !text->empty() ? *text : shown.raw;
    return shown;
}

std::vector<dictionary::WireKey> in_order(const Entries& entries) {
    std::vector<dictionary::WireKey> keys;
    keys.reserve(entries.size());
    for (const auto& [key, entry] : entries)
        keys.push_back(key);
    std::ranges::sort(keys, {}, [&](dictionary::WireKey key) { return entries.at(key).order; });
    return keys;
}

class Comparer {
  public:
    Comparer(const std::vector<ConfigurationValue>& A, const std::vector<ConfigurationValue>& B,
             const dictionary::Store& dictionary, const link::FormulaOperands& operands)
        : A_(entries_of(A, result_.unusable)),
          B_(entries_of(B, result_.unusable)),
          A_operands_(operands_of(A_, B_, operands)),
          B_operands_(operands_of(B_, A_, operands)),
          dictionary_(dictionary) {}

    Comparison take() {
        for (const dictionary::WireKey key : in_order(A_))
            compare(key);
        for (const dictionary::WireKey key : in_order(B_))
            if (!A_.contains(key)) compare(key);
        return std::move(result_);
    }

  private:
    void compare(dictionary::WireKey key) {
        const auto a = A_.find(key);
        const auto b = B_.find(key);
        const auto value_a = a == A_.end() ? std::nullopt : a->second.value;
        const auto value_b = b == B_.end() ? std::nullopt : b->second.value;
        if (value_a == value_b) {
            if (value_a) ++result_.equal;
            return;
        }
        result_.rows.push_back(row_of(key));
    }

    ComparedRow row_of(dictionary::WireKey key) const {
        const auto record = dictionary_.get_record(dictionary::identity_of(key));
        Look look = look_of(record, key);
        if (!can_show(look, A_operands_) || !can_show(look, B_operands_)) look.unit = kRawUnit;
        ComparedRow row;
        row.Index = configuration_index(key);
        if (record.key != 0) {
            row.name_ch = dictionary::trim_tail(record.name_ch);
            row.name_en = dictionary::trim_tail(record.name_en);
        }
        row.unit = look.unit;
        row.A = shown_value(A_, key, look, A_operands_);
        row.B = shown_value(B_, key, look, B_operands_);
        return row;
    }

    Comparison result_;
    Entries A_;
    Entries B_;
    link::FormulaOperands A_operands_;
    link::FormulaOperands B_operands_;
    const dictionary::Store& dictionary_;
};

template <typename Rows, typename Make>
std::vector<ConfigurationValue> values_of(const Rows& rows, Make make) {
    std::vector<ConfigurationValue> values;
    values.reserve(rows.size());
    for (const auto& row : rows)
        values.push_back(make(row));
    return values;
}

}  // namespace

std::string configuration_index(dictionary::WireKey key) {
    return fmt::format("{:06X}{:02X}", key >> 8, width_of(key) * 8);
}

std::vector<ConfigurationValue> configuration_values(const std::vector<SourceRow>& rows) {
    return values_of(rows, [](const SourceRow& row) {
        return ConfigurationValue{row.Index, row.Source_Value,
                                  row.Result != kInvalidWord && row.Result != kIllegalWord};
    });
}

std::vector<ConfigurationValue> configuration_values(const std::vector<DriverRow>& rows) {
    return values_of(rows, [](const DriverRow& row) {
        return ConfigurationValue{row.Index, row.Driver_Value, row.Result == kTrueWord};
    });
}

Comparison compare_configurations(const std::vector<ConfigurationValue>& A,
                                  const std::vector<ConfigurationValue>& B,
                                  const dictionary::Store& dictionary,
                                  const link::FormulaOperands& operands) {
    return Comparer(A, B, dictionary, operands).take();
}

std::string compared_text(const ComparedValue& value, const ComparedRow& row,
                          base::Language language) {
    switch (value.side) {
        case ComparedSide::kValue:
            return params::is_decimal_unit(row.unit) || row.unit == "HEX" || row.unit == "ASCII"
                       ? value.shown
                       : fmt::format("{} {}", value.shown, row.unit);
        case ComparedSide::kUnread:
            return std::string(kNotRead.in(language));
        case ComparedSide::kAbsent:
            return std::string(kNotListed.in(language));
    }
    return {};
}

std::string comparison_text(const Comparison& comparison, base::Language language) {
    std::string text;
    for (const ComparedRow& row : comparison.rows)
        text +=
            fmt::format("{}\t{}\t{}\t{}\t{}\n", row.Index, row.name_ch, row.name_en,
                        compared_text(row.A, row, language), compared_text(row.B, row, language));
    return text;
}

}  // namespace servo::tools
