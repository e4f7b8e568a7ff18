// The colours of the plot, as 0xAARRGGBB. The four of the curves stay apart for eyes that do not
// see red or green apart, and each has a contrast of 4.5 to 1 or more on the plot, so that text may
// have it; curves also carry shapes and numbers.
#pragma once

#include <array>
#include <cstdint>

namespace servo::scope::palette {

inline constexpr std::uint32_t kPlot = 0xffffffff;
inline constexpr std::uint32_t kGrid = 0xffe6eaee;
inline constexpr std::uint32_t kMiddle = 0xffa5b0ba;  // the zero line of the picture
inline constexpr std::uint32_t kTick = 0xffc3ccd4;
inline constexpr std::uint32_t kFrame = 0xffc3ccd4;
inline constexpr std::uint32_t kText = 0xff1d2730;
inline constexpr std::uint32_t kMutedText = 0xff46535e;
inline constexpr std::uint32_t kCursor = 0xff1d2730;
inline constexpr std::uint32_t kCursorText = 0xffffffff;
inline constexpr std::uint32_t kCrosshair = 0xff6b7884;
inline constexpr std::uint32_t kBox = 0xf5ffffff;
inline constexpr std::uint32_t kZoomEdge = 0xff1a64a3;
inline constexpr std::uint32_t kZoomArea = 0x241a64a3;

inline constexpr std::array<std::uint32_t, 4> kCurves{0xff0067a5,   // blue, circle
                                                      0xffb84a00,   // orange, square
                                                      0xff00745a,   // green, triangle
                                                      0xff94408f};  // purple, diamond

// The same for reference recordings: behind the live ones, and told apart from them by paleness.
inline constexpr std::array<std::uint32_t, 4> kReferences{0xff8fbbd8, 0xffe3b48f, 0xff8cc4b4,
                                                          0xffcda6cb};

}  // namespace servo::scope::palette
