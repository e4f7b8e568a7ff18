// The reading half of `.scope` files. Texts and fields take effect one by one in the order of the
// file, since a file that breaks off leaves what was read up to there.
#include <array>
#include <cmath>
#include <system_error>
#include <utility>

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"
#include "scope/acquisition.h"
#include "scope/channel_lists.h"
#include "scope/scope_file.h"

namespace servo::scope {

namespace {

// No recording comes near this many bytes; a film that was picked by mistake is not taken into
// memory.
constexpr std::uintmax_t kLongestFile = 64U * 1024U * 1024U;

// The fields of a line in their order. An empty line has none.
class FieldReader {
  public:
    explicit FieldReader(std::string_view line) : rest_(line), ended_(line.empty()) {}

    std::optional<std::string_view> next() {
        if (ended_) return std::nullopt;
        const std::size_t comma = rest_.find(',');
        const std::string_view field = rest_.substr(0, comma);
        ended_ = comma == std::string_view::npos;
        rest_.remove_prefix(ended_ ? rest_.size() : comma + 1);
        return field;
    }

  private:
    std::string_view rest_;
    bool ended_;
};

// The number at the start of a field, rounded; nothing for a field that is not there and for a
// number that does not fit.
template <class Integer>
std::optional<Integer> whole_number(std::optional<std::string_view> field) {
    if (!field) return std::nullopt;
    const std::int64_t number = base::round_half_even(base::leading_number(*field));
    if (!std::in_range<Integer>(number)) return std::nullopt;
    return static_cast<Integer>(number);
}

class ScopeReader {
  public:
    ScopeReader(ScopeData& data, link::FormulaOperands& operands,
                const dictionary::Store& dictionary, base::Language language)
        : data_(data), operands_(operands), dictionary_(dictionary), language_(language) {}

    Imported read(std::string_view text) {
        base::LineReader lines(text);
        const auto first = lines.next();
        if (!first || !has_two_fields(*first)) return Imported::kRefused;
        if (!read_settings(*first)) return Imported::kBroken;
        const auto second = lines.next();
        if (!second || !read_operands(*second)) return Imported::kBroken;
        for (std::size_t channel = 0; channel < kCurves; ++channel) {
            const auto line = lines.next();
            if (!line || !read_channel(*line, channel)) return Imported::kBroken;
        }
        if (!read_samples(lines)) return Imported::kBroken;
        if (!second->empty()) {
            for (link::Operand* operand : in_file_order())
                operand->seen = true;
        }
        return Imported::kDone;
    }

  private:
    // An empty first line is let through.
    static bool has_two_fields(std::string_view line) {
        const std::size_t comma = line.find(',');
        if (comma == std::string_view::npos) return line.empty();
        return line.find(',', comma + 1) == std::string_view::npos;
    }

    bool read_settings(std::string_view line) {
        if (line.empty()) return true;
        FieldReader fields(line);
        data_.Text1 = base::gbk_to_utf8(*fields.next());
        data_.Text3 = base::gbk_to_utf8(*fields.next());
        const double multiple = base::leading_number(data_.Text1);
        if (!std::isfinite(multiple)) return false;
        data_.Label18 = Acquisition::period_text(multiple);
        return true;
    }

    std::array<link::Operand*, 5> in_file_order() const {
        return {&operands_.o64100320, &operands_.o65100310, &operands_.o30400710,
                &operands_.o60F61310, &operands_.o60F61110};
    }

    bool read_operands(std::string_view line) {
        if (line.empty()) return true;
        FieldReader fields(line);
        for (link::Operand* operand : in_file_order()) {
            const auto field = fields.next();
            const auto number = operand == &operands_.o65100310
                                    ? std::optional<std::int32_t>(whole_number<std::int16_t>(field))
                                    : whole_number<std::int32_t>(field);
            if (!number) return false;
            // Not seen until the file has been read to its end: so far it is neither the drive's
            // number nor that of a recording that is shown.
            *operand = {*number, false};
        }
        return true;
    }

    bool read_channel(std::string_view line, std::size_t index) {
        const auto name = FieldReader(line).next();
        if (!name) return false;
        ScopeChannel& channel = data_.channels[index];
        data_.curvesChanged = true;
        // What the refresh has collected so far no longer belongs together.
        data_.driveConfigNext = 0;
        if (*name == "NULL") {
            channel.enable = false;
            data_.driveConfigValues[index] = 0;
            return true;
        }
        const std::size_t comma = line.rfind(',');
        if (comma == std::string_view::npos) return false;
        const auto key = whole_number<dictionary::Identity>(line.substr(comma + 1));
        if (!key) return false;
        pick(channel, index, *key);
        return true;
    }

    void pick(ScopeChannel& channel, std::size_t index, dictionary::Identity key) {
        const auto entry = Add_OD_To_CH(key, channel, dictionary_, language_);
        channel.enable = entry.has_value();
        channel.objectList.ListIndex = entry ? *entry + 1 : 0;
        if (entry) Add_Unit_To_CH(*entry, channel);
        data_.lastObjectPick[index] = static_cast<std::uint8_t>(channel.objectList.ListIndex);
    }

    bool read_samples(base::LineReader& lines) {
        std::size_t count = 0;
        bool empty = false;  // a line before this one was
        while (const auto line = lines.next()) {
            if (line->empty()) {
                empty = true;
                continue;
            }
            if (empty || count == kMaxSamples || !read_sample(*line, count)) return false;
            ++count;
        }
        return true;
    }

    bool read_sample(std::string_view line, std::size_t index) {
        FieldReader fields(line);
        for (std::size_t channel = 0; channel < kCurves; ++channel) {
            const auto number = whole_number<std::int32_t>(fields.next());
            if (!number) return false;
            data_.channels[channel].samples[index] = *number;
        }
        return true;
    }

    ScopeData& data_;
    link::FormulaOperands& operands_;
    const dictionary::Store& dictionary_;
    base::Language language_;
};

}  // namespace

Imported read_scope(std::string_view text, ScopeData& data, link::FormulaOperands& operands,
                    const dictionary::Store& dictionary, base::Language language) {
    return ScopeReader(data, operands, dictionary, language).read(text);
}

Imported import_scope(const std::filesystem::path& file, ScopeData& data,
                      link::FormulaOperands& operands, const dictionary::Store& dictionary,
                      base::Language language) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > kLongestFile) return Imported::kUnreadable;
    const std::optional<std::string> text = base::read_file(file);
    if (!text) return Imported::kUnreadable;
    return read_scope(*text, data, operands, dictionary, language);
}

}  // namespace servo::scope
