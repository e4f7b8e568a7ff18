#include "scope/recording.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

#include "base/number.h"
#include "scope/trace.h"

namespace servo::scope {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnd = "\r\n";
constexpr base::Text kTime{"时间 (us)", "Time (us)"};

// Texts in the lists may carry the blanks of their fields.
std::string trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

// Without a unit the raw numbers are still worth keeping.
std::vector<double> values_of(const ScopeChannel& channel, std::span<const std::int32_t> raw,
                              const link::FormulaOperands& operands) {
    if (channel.unitList.text().empty()) return {raw.begin(), raw.end()};
    return display_values(channel, raw, operands);
}

void append_field(std::string& text, std::string_view field) {
    if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
        text += field;
        return;
    }
    text += '"';
    for (const char c : field) {
        if (c == '"') text += '"';
        text += c;
    }
    text += '"';
}

std::string heading(const RecordedCurve& curve) {
    return curve.unit.empty() ? curve.object : curve.object + " (" + curve.unit + ")";
}

}  // namespace

Recording recording_of(const ScopeData& data, const ZoomWindow& window,
                       const link::FormulaOperands& operands) {
    Recording recording;
    recording.period_us = base::leading_number(data.Text1) * kPeriodMicroseconds;
    // The hand can pull the window over the beginning of the recording.
    const int first = std::max<int>(window.first, 0);
    const int last = std::min<int>(window.last, static_cast<int>(kMaxSamples) - 1);
    if (!data.dataValid || last < first) return recording;
    recording.start_us = first * recording.period_us;
    for (int i = 0; i < kCurves; ++i) {
        const ScopeChannel& channel = data.channels.at(static_cast<std::size_t>(i));
        // The samples of a channel that is ticked without an object belong to no recording.
        if (!channel.enable || channel.picked() == nullptr) continue;
        const std::span raw = std::span(channel.samples)
                                  .subspan(static_cast<std::size_t>(first),
                                           static_cast<std::size_t>(last - first) + 1);
        recording.curves.push_back({i, trimmed(channel.objectList.text()),
                                    trimmed(channel.unitList.text()),
                                    values_of(channel, raw, operands)});
    }
    return recording;
}

std::string csv_text(const Recording& recording, base::Language language) {
    std::string text(kByteOrderMark);
    text += kTime.in(language);
    std::size_t rows = 0;
    for (const RecordedCurve& curve : recording.curves) {
        text += ',';
        append_field(text, heading(curve));
        rows = std::max(rows, curve.values.size());
    }
    text += kLineEnd;
    for (std::size_t row = 0; row < rows; ++row) {
        text +=
            base::number_text(recording.start_us + static_cast<double>(row) * recording.period_us);
        for (const RecordedCurve& curve : recording.curves) {
            text += ',';
            // Curves of one recording have one length; a shorter one leaves its cells empty.
            if (row < curve.values.size()) text += base::number_text(curve.values[row]);
        }
        text += kLineEnd;
    }
    return text;
}

void References::keep(std::string name, Recording recording) {
    if (kept.size() >= kPlaces) kept.erase(kept.begin());
    kept.push_back({std::move(name), std::move(recording)});
}

void References::remove(std::size_t place) {
    if (place < kept.size())
        kept.erase(std::next(kept.begin(), static_cast<std::ptrdiff_t>(place)));
}

}  // namespace servo::scope
