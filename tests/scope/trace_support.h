// What the tests of traces, scales and cursors set up: channels with an object and a unit, and the
// bytes of a recording.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "scope/scope_data.h"

namespace servo::scope::test {

inline constexpr std::string_view kSpeedFormula = "[DEC]N*1\n[DEC rpm]N*1875/512/[64100320]";

inline link::FormulaOperands drive_operands() {
    link::FormulaOperands operands;
    operands.o64100320 = {10000, true};
    operands.o65100310 = {480, true};
    return operands;
}

// Ticks the channel, with an object of that type shown in that unit.
inline ScopeChannel& use(ScopeData& data, int channel, std::string_view type,
                         std::string_view formula = "[DEC]N*1", std::string_view unit = "DEC") {
    ScopeChannel& used = data.channels.at(static_cast<std::size_t>(channel));
    dictionary::ObjectRecord& entry = used.entries[0];
    entry.key = 0x606c00 + channel;
    entry.type = type;
    entry.formula = formula;
    used.entryCount = 1;
    used.objectList = {{"", "object"}, 1};
    used.unitList = {{std::string(unit)}, 0};
    used.enable = true;
    return used;
}

// What an upload of these bytes leaves. The row is that of the channels as they are ticked.
inline void upload(ScopeData& data, std::span<const std::uint8_t> bytes) {
    std::copy(bytes.begin(), bytes.end(), data.rawBytes.begin());
    data.rawLength = static_cast<std::int32_t>(bytes.size());
    data.rowBytes = 0;
    for (int i = 0; i < kCurves; ++i) {
        const ScopeChannel& channel = data.channels[static_cast<std::size_t>(i)];
        if (channel.enable) data.rowBytes += width_of(channel.picked_type());
    }
}

inline void upload(ScopeData& data, std::initializer_list<std::uint8_t> bytes) {
    upload(data, std::span(bytes.begin(), bytes.size()));
}

// One channel of 16 bits with these samples, as decoded by Movingdata's caller.
inline std::vector<std::uint8_t> bytes_of(const std::vector<std::int16_t>& samples) {
    std::vector<std::uint8_t> bytes;
    for (const std::int16_t sample : samples) {
        const auto raw = static_cast<std::uint16_t>(sample);
        bytes.push_back(static_cast<std::uint8_t>(raw & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(raw >> 8));
    }
    return bytes;
}

inline std::vector<std::int32_t> first_samples(const ScopeData& data, int channel,
                                               std::size_t count) {
    const auto& samples = data.channels.at(static_cast<std::size_t>(channel)).samples;
    return {samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count)};
}

}  // namespace servo::scope::test
