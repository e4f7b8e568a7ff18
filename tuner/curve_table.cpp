#include "tuner/curve_table.h"

#include <cmath>
#include <map>
#include <vector>

#include "base/number.h"
#include "tuner/curve_values.h"

namespace servo::tuner {

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
constexpr std::string_view kLineEnd = "\r\n";
constexpr base::Text kFrequency{"频率 [Hz]", "Frequency [Hz]"};
constexpr base::Text kGain{" 增益 [dB]", " gain [dB]"};
constexpr base::Text kPhase{" 相位 [°]", " phase [°]"};
constexpr int kDecimals = 4;

std::string gain_text(double gain) {
    const auto value = gain_decibels(gain);
    return value ? base::format_up_to(*value, kDecimals) : std::string();
}

std::string phase_text(double phase) {
    return std::isfinite(phase) ? base::format_up_to(phase, kDecimals) : std::string();
}

}  // namespace

std::string curve_table(const TunerData& data, base::Language language) {
    std::string head(kByteOrderMark);
    head += kFrequency.in(language);
    // Rising frequencies; a row is as long as the columns that have reached it.
    std::map<int, std::vector<std::string>> rows;
    std::size_t columns = 0;
    const auto add_column = [&](const CurveValues& values, auto text_of) {
        for (int i = 0; i < values.size(); ++i) {
            std::vector<std::string>& row = rows[values.frequency(i)];
            row.resize(columns + 1);
            row[columns] = text_of(static_cast<std::size_t>(i));
        }
        ++columns;
    };
    for (int i = 0; i < kCurves; ++i) {
        const auto curve = static_cast<Curve>(i);
        const CurveValues values = curve_values(data, curve);
        if (values.empty()) continue;
        const std::string_view name = curve_name(curve).in(language);
        head.append(",").append(name).append(kGain.in(language));
        add_column(values, [&](std::size_t point) { return gain_text(values.gains[point]); });
        if (values.phases.empty()) continue;
        head.append(",").append(name).append(kPhase.in(language));
        add_column(values, [&](std::size_t point) { return phase_text(values.phases[point]); });
    }
    std::string text = head.append(kLineEnd);
    for (auto& [frequency, cells] : rows) {
        cells.resize(columns);
        text += std::to_string(frequency);
        for (const std::string& cell : cells)
            text.append(",").append(cell);
        text += kLineEnd;
    }
    return text;
}

}  // namespace servo::tuner
