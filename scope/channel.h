// One channel of the oscilloscope: what it records, in which unit it is drawn, and its trace.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/keys.h"
#include "dictionary/store.h"

namespace servo::scope {

inline constexpr int kCurves = 4;   // channels 0 to 3
inline constexpr int kTrigger = 4;  // the fifth: lists only, no curve
inline constexpr int kChannels = 5;
inline constexpr std::size_t kEntries = 8;
inline constexpr std::size_t kMaxSamples = 8192;
inline constexpr std::size_t kMaxBytes = 8192;  // of the recorder's buffer

// A drop-down: its items, and the position picked; -1 when none is.
struct PickList {
    std::vector<std::string> items;
    int ListIndex = -1;

    // The text picked; empty when none is.
    std::string_view text() const;
};

struct ScopeChannel {
    // The objects used recently in this channel, as the dictionary gave them.
    std::array<dictionary::ObjectRecord, kEntries> entries;
    std::uint8_t entryCount = 0;
    std::uint8_t entryNext = 0;    // where the next one goes
    PickList objectList{{""}, 0};  // item 0 is the empty choice, item n is entry n-1
    PickList unitList;
    dictionary::Identity unitsShown = 0;  // the object whose units are listed

    bool enable = false;               // the channel is recorded
    bool hide = false;                 // recorded, not drawn
    bool autoScale = true;             // scale and offset follow the recording
    std::string valueLabel;            // value under cursor X1
    std::string scaleText = "1.0E00";  // units per division
    std::string offsetText = "0";      // how far the curve is moved up, in display units

    std::vector<std::int32_t> samples = std::vector<std::int32_t>(kMaxSamples);
    std::int16_t sampleTotal = 0;  // decoded
    std::int32_t rawMax = 0;       // of the visible window
    std::int32_t rawMin = 0;
    double centre = 0.0;  // in display units
    double span = 1.0;
    double autoOffset = 0.0;
    double autoScaleValue = 1.0;
    double scale = 1.0;  // units per division in use

    // The entry picked in objectList; null when none is.
    const dictionary::ObjectRecord* picked() const;
    // Its short type name ("int16"), blanks removed; empty when none is picked.
    std::string picked_type() const;
};

// Bytes of one value in a recording: 1, 2 or 4; 0 for any other type.
int width_of(std::string_view short_type);

}  // namespace servo::scope
