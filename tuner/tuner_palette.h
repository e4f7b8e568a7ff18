// The colours of the picture, as 0xAARRGGBB, and the dashes of its curves. Every curve has a
// contrast of 4.5 to 1 or more on the picture. No two have the same dashes, so that they stay apart
// in grey and for eyes that do not see red or green apart.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "tuner/tuner_data.h"

namespace servo::tuner::palette {

inline constexpr std::uint32_t kPicture = 0xffffffff;
inline constexpr std::uint32_t kGrid = 0xffe6eaee;
inline constexpr std::uint32_t kDecade = 0xffc8d0d8;  // 1, 10, 100, 1000 Hz
inline constexpr std::uint32_t kMiddle = 0xffa5b0ba;  // 0 dB, -180 degrees
inline constexpr std::uint32_t kFrame = 0xffc3ccd4;
inline constexpr std::uint32_t kText = 0xff1d2730;
inline constexpr std::uint32_t kMutedText = 0xff46535e;
inline constexpr std::uint32_t kCross = 0xff6b7884;
inline constexpr std::uint32_t kMark = 0xff1d2730;  // margins
inline constexpr std::uint32_t kPeak = 0xff9c2f1f;  // resonances
inline constexpr std::uint32_t kMarkBack = 0xe6ffffff;

// Lengths of strokes and gaps in pixels, none for a line without gaps.
inline constexpr std::size_t kMostDashes = 6;
struct CurveStyle {
    std::uint32_t colour = kText;
    std::array<std::uint8_t, kMostDashes> dashes{};  // up to the first 0
};

inline constexpr std::array<CurveStyle, kCurves> kStyles{{
    {0xff1d2730, {}},                  // motor and load
    {0xff0067a5, {7, 3}},              // open velocity loop
    {0xffb84a00, {9, 3, 2, 3}},        // closed velocity loop
    {0xff46535e, {2, 2}},              // current loop
    {0xff94408f, {4, 3}},              // open position loop
    {0xff00745a, {7, 2, 2, 2, 2, 2}},  // closed position loop
    {0xff2050c8, {12, 3}},             // filters 1 to 6
    {0xffa02860, {3, 5}},
    {0xff5b6b00, {8, 2, 4, 2}},
    {0xff00708a, {5, 2, 2, 2}},
    {0xff8a5a00, {2, 4}},
    {0xff6a3fb5, {12, 2, 2, 2}},
}};

constexpr const CurveStyle& style_of(Curve curve) {
    return kStyles[static_cast<std::size_t>(curve)];
}

}  // namespace servo::tuner::palette
