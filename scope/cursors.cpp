#include "scope/cursors.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/number.h"
#include "scope/trace.h"

namespace servo::scope {

namespace {

constexpr int kValueDecimals = 2;       // of a height
constexpr int kDifferenceDecimals = 3;  // of dY

const CursorPlace& place(const ScopeData& data, Cursor cursor) {
    return data.cursors[static_cast<std::size_t>(cursor)];
}

// The sample under an X cursor; nothing when it is off or stands on none.
std::optional<int> sample_under(const ScopeData& data, Cursor cursor) {
    if (!data.dataValid || !place(data, cursor).on) return std::nullopt;
    const auto index = cursor_index(data.window(), place(data, cursor).at);
    if (!index || *index >= static_cast<int>(kMaxSamples)) return std::nullopt;
    return index;
}

std::string time_text(const ScopeData& data, std::optional<int> index) {
    if (!index) return {};
    return base::number_text(*index * base::leading_number(data.Text1) * kPeriodMicroseconds);
}

// What was not recorded has no value, whatever its array holds of an earlier run.
std::string sample_text(const ScopeChannel& channel, std::optional<int> index,
                        const link::FormulaOperands& operands) {
    if (!index || !channel.enable) return {};
    const std::int32_t raw = channel.samples[static_cast<std::size_t>(*index)];
    const auto value = display_value(channel, raw, operands);
    return value ? base::number_text(*value) : std::string();
}

std::string height_text(const ScopeChannel& channel, double y) {
    constexpr double kHalf = kPictureHeight / 2.0;
    constexpr double kDivision = static_cast<double>(kPictureHeight) / kDivisions;
    return base::format_fixed((kHalf - y) * channel.scale / kDivision + offset_of(channel),
                              kValueDecimals);
}

// The value of one pair of cursors. A Y cursor that is on takes the read-out from the X cursor: so
// with all four on, times are those of X1 and X2 and values those of Y1 and Y2.
std::string value_text(const ScopeData& data, std::optional<int> index, Cursor y_cursor,
                       const link::FormulaOperands& operands) {
    if (!data.dataValid || data.Combo12 < 0 || data.Combo12 >= kCurves) return {};
    const ScopeChannel& channel = data.channels[static_cast<std::size_t>(data.Combo12)];
    const CursorPlace& y = place(data, y_cursor);
    return y.on ? height_text(channel, y.at) : sample_text(channel, index, operands);
}

// Second less first, of what the two labels say.
std::optional<double> difference(const std::string& first, const std::string& second) {
    if (first.empty() || second.empty()) return std::nullopt;
    return base::leading_number(second) - base::leading_number(first);
}

}  // namespace

std::optional<int> cursor_index(const ZoomWindow& window, double x) {
    if (!std::isfinite(x)) return std::nullopt;
    // Far more than any window has; keeps the product within the integers.
    constexpr double kFar = 1e9;
    const int across = window.last - window.first;
    const auto travel = static_cast<std::int64_t>(across * std::clamp(x, -kFar, kFar));
    const std::int64_t index =
        std::min<std::int64_t>(travel / kPictureWidth + window.first, window.last);
    if (index < 0) return std::nullopt;
    return static_cast<int>(index);
}

double cursor_abscissa(const ZoomWindow& window, int index) {
    const std::int64_t across = window.last - window.first;
    if (across <= 0) return 0.0;
    const std::int64_t step = std::clamp<std::int64_t>(index - window.first, 0, across);
    // Up to the next whole unit, where the division of cursor_index has reached the sample.
    const std::int64_t x = (step * kPictureWidth + across - 1) / across;
    return static_cast<double>(x);
}

void read_cursors(ScopeData& data, const link::FormulaOperands& operands) {
    const auto x1 = sample_under(data, Cursor::kX1);
    const auto x2 = sample_under(data, Cursor::kX2);
    CursorTexts& texts = data.cursor_texts;
    texts.Label25 = time_text(data, x1);
    texts.Label27 = time_text(data, x2);
    const auto dx = difference(texts.Label25, texts.Label27);
    texts.Label29 = dx ? base::number_text(*dx) : std::string();

    texts.Label35 = value_text(data, x1, Cursor::kY1, operands);
    texts.Label34 = value_text(data, x2, Cursor::kY2, operands);
    const auto dy = difference(texts.Label35, texts.Label34);
    texts.Label33 = dy ? base::format_fixed(*dy, kDifferenceDecimals) : std::string();
    const bool any_value = !texts.Label34.empty() || !texts.Label35.empty();
    texts.Label32.clear();
    if (any_value) {
        const auto picked = static_cast<std::size_t>(data.Combo12);
        texts.Label32 = data.channels[picked].unitList.text();
    }

    for (std::size_t i = 0; i < kCurves; ++i) {
        ScopeChannel& channel = data.channels[i];
        channel.valueLabel = sample_text(channel, x1, operands);
    }
}

}  // namespace servo::scope
