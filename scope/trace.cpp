#include "scope/trace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

#include "base/number.h"
#include "dictionary/keys.h"
#include "params/compiled_formula.h"
#include "params/formula.h"
#include "scope/cursors.h"
#include "scope/scale_steps.h"

namespace servo::scope {

namespace {

constexpr base::Text kZoomDepth{"缩放等级:", "Zoom Depth:"};
constexpr base::Text kTimeGrid{";时间栅格:", ";Time Grid:"};
constexpr int kTimeLabels = 4;
constexpr std::size_t kTimeUnit = 4;  // the last of Label15
constexpr int kLabelDecimals = 14;
constexpr int kMiddleLine = kDivisions / 2;

// How the values of one row lie in the buffer: the enabled channels in their order, each with its
// decoder's size code.
class RowLayout {
  public:
    explicit RowLayout(const ScopeData& data) {
        for (std::size_t channel = 0; channel < kCurves; ++channel) {
            if (!data.channels[channel].enable) continue;
            places_[count_++] = {channel,
                                 dictionary::decoder_size(data.channels[channel].picked_type())};
        }
    }

    bool empty() const { return count_ == 0; }
    std::size_t channel() const { return places_[at_].channel; }
    int size_code() const { return places_[at_].size_code; }
    std::size_t width() const { return static_cast<std::size_t>(size_code() % 10); }
    void next() { at_ = at_ + 1 == count_ ? 0 : at_ + 1; }

  private:
    struct Place {
        std::size_t channel = 0;
        int size_code = 0;
    };
    std::array<Place, kCurves> places_{};
    std::size_t count_ = 0;
    std::size_t at_ = 0;
};

// Little-endian. Values of 32 bits are shown signed whatever their type says: a trace holds signed
// numbers.
std::int32_t decode(const std::uint8_t* bytes, int size_code) {
    switch (size_code) {
        case 1:
            return bytes[0];
        case 11:
            return static_cast<std::int8_t>(bytes[0]);
        case 2:
            return bytes[0] | bytes[1] << 8;
        case 12:
            return static_cast<std::int16_t>(bytes[0] | bytes[1] << 8);
        default:
            return static_cast<std::int32_t>(
                std::uint32_t{bytes[0]} | std::uint32_t{bytes[1]} << 8 |
                std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[3]} << 24);
    }
}

// Adds the sample that stands at the channel's total.
void count_sample(ScopeChannel& channel) {
    const std::int32_t value = channel.samples[static_cast<std::size_t>(channel.sampleTotal)];
    if (channel.sampleTotal == 0) {
        channel.rawMax = value;
        channel.rawMin = value;
    }
    channel.rawMax = std::max(channel.rawMax, value);
    channel.rawMin = std::min(channel.rawMin, value);
    ++channel.sampleTotal;
}

// Goes through the buffer value by value. An upload that ends in the middle of a row still fills
// the first channels of that row, and a value that the end cuts takes its missing bytes from what
// the buffer holds there. False at the first byte or sample that has no place.
bool walk(ScopeData& data, RowLayout row) {
    const auto length = static_cast<std::size_t>(std::max<std::int32_t>(data.rawLength, 0));
    for (std::size_t at = 0; at < length; at += row.width(), row.next()) {
        // Bytes of an object without a number are passed over and the channel stays, so nothing
        // behind them is decoded.
        if (row.width() == 0) return true;
        ScopeChannel& channel = data.channels[row.channel()];
        const auto index = static_cast<std::size_t>(channel.sampleTotal);
        if (index >= channel.samples.size()) return false;
        if (!data.importMode) {
            if (at + row.width() > data.rawBytes.size()) return false;
            channel.samples[index] = decode(&data.rawBytes[at], row.size_code());
        }
        count_sample(channel);
    }
    return true;
}

// The whole recording becomes the first window. Only its last index is rounded when the upload
// ended within a row; an empty upload gives -1. False when there is no such window.
bool show_all(ScopeData& data) {
    data.zoomDepth = 0;
    if (data.rowBytes <= 0) return false;
    const std::int64_t last =
        base::round_half_even(static_cast<double>(data.rawLength) / data.rowBytes - 1);
    if (last < -1 || last >= static_cast<std::int64_t>(kMaxSamples)) return false;
    data.zoomWindow[0] = {0, static_cast<std::int16_t>(last)};
    return true;
}

void find_extremes(ScopeChannel& channel, const ZoomWindow& window) {
    const auto first = static_cast<std::size_t>(window.first);
    channel.rawMax = channel.samples[first];
    channel.rawMin = channel.samples[first];
    if (window.last < window.first) return;
    const auto [low, high] = std::minmax_element(channel.samples.begin() + window.first,
                                                 channel.samples.begin() + window.last + 1);
    channel.rawMin = *low;
    channel.rawMax = *high;
}

void scale_curve(ScopeChannel& channel, const link::FormulaOperands& operands) {
    const auto a = display_value(channel, channel.rawMax, operands);
    const auto b = display_value(channel, channel.rawMin, operands);
    if (!a || !b) return;
    channel.centre = (*a + *b) / 2;
    channel.span = std::fabs(*a - *b);
    if (channel.span == 0) channel.span = 1.0;
    if (!channel.autoScale) {
        channel.scale = base::leading_number(channel.scaleText);
        return;
    }
    const ScaleStep step = scale_for_span(channel.span);
    channel.autoOffset = channel.centre;
    channel.autoScaleValue = step.value();
    channel.scaleText = step.text();
    channel.scale = channel.autoScaleValue;
    // The text says how far the curve is moved up.
    channel.offsetText = auto_offset_text(-channel.autoOffset);
}

double samples_across(const ScopeData& data) {
    return data.window().last - data.window().first;
}

}  // namespace

bool Movingdata(ScopeData& data, const link::FormulaOperands& operands, base::Language language) {
    for (std::size_t i = 0; i < kCurves; ++i) {
        ScopeChannel& channel = data.channels[i];
        channel.sampleTotal = 0;
        channel.rawMax = 0;
        channel.rawMin = 0;
        channel.centre = 0;
        channel.span = 0;
    }
    const RowLayout row(data);
    if (row.empty()) return false;
    data.dataValid = true;
    if (!walk(data, row) || !show_all(data)) return false;
    write_time_texts(data, language);
    change_curve_unit(data, operands);
    Print_Pic_Line(data);
    return true;
}

void change_curve_unit(ScopeData& data, const link::FormulaOperands& operands) {
    const ZoomWindow& window = data.window();
    if (window.first < 0) return;
    if (std::max(window.first, window.last) >= static_cast<int>(kMaxSamples)) return;
    for (std::size_t i = 0; i < kCurves; ++i) {
        ScopeChannel& channel = data.channels[i];
        find_extremes(channel, window);
        if (channel.enable) scale_curve(channel, operands);
    }
    read_cursors(data, operands);
}

void write_time_texts(ScopeData& data, base::Language language) {
    const double periods = samples_across(data) * base::leading_number(data.Text1);
    data.Label44 = std::string(kZoomDepth.in(language)) + std::to_string(data.zoomDepth) +
                   std::string(kTimeGrid.in(language)) +
                   base::number_text(periods * kPeriodMicroseconds / kDivisions) + "uS";
    for (int i = 0; i < kTimeLabels; ++i) {
        // Each label chooses its own unit, and the one that is written last names it for all four.
        std::string& label = data.Label15[static_cast<std::size_t>(i)];
        std::string& unit = data.Label15[kTimeUnit];
        const double milliseconds =
            (2 * i + 2) * periods * kPeriodMicroseconds / (kDivisions * 1000.0);
        if (std::trunc(milliseconds) != milliseconds) {
            unit = "(us)";
            label = base::number_text(milliseconds * 1000);
        } else if (const double seconds = milliseconds / 1000; std::trunc(seconds) == seconds) {
            unit = "(s)";
            label = base::number_text(seconds);
        } else {
            unit = "(ms)";
            label = base::number_text(milliseconds);
        }
    }
}

void Print_Pic_Line(ScopeData& data) {
    for (std::size_t i = 0; i < kCurves; ++i) {
        const ScopeChannel& channel = data.channels[i];
        const bool drawn = data.drawn(static_cast<int>(i));
        for (int line = 0; line < kDivisions; ++line) {
            const double value = offset_of(channel) + (line - kMiddleLine) * channel.scale;
            data.y_labels[i][static_cast<std::size_t>(line)] =
                drawn ? base::format_up_to(value, kLabelDecimals) : std::string();
        }
    }
}

std::vector<double> display_values(const ScopeChannel& channel, std::span<const std::int32_t> raw,
                                   const link::FormulaOperands& operands) {
    const dictionary::ObjectRecord* entry = channel.picked();
    const std::string_view unit = channel.unitList.text();
    if (entry == nullptr || unit.empty()) return {};
    std::vector<double> values(raw.size());
    // Samples that fail are 0 already; a curve with a gap says more than none.
    params::CompiledFormula(unit, entry->formula, operands).convert(raw, values);
    return values;
}

std::optional<double> display_value(const ScopeChannel& channel, std::int32_t raw,
                                    const link::FormulaOperands& operands) {
    const dictionary::ObjectRecord* entry = channel.picked();
    const std::string_view unit = channel.unitList.text();
    if (entry == nullptr || unit.empty()) return std::nullopt;
    const int size_code = dictionary::decoder_size(channel.picked_type());
    return params::value_to_unit(raw, unit, entry->formula, size_code, operands).value_or(0);
}

}  // namespace servo::scope
