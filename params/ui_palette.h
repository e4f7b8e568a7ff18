// The colours of grids, as 0xAARRGGBB. The shell's own are in app/palette.h and fit these. Text has
// a contrast of 4.5 to 1 or more on white and on the read-only colour, the outline 3 to 1.
#pragma once

#include <cstdint>

namespace servo::params::palette {

inline constexpr std::uint32_t kCell = 0xffffffff;
inline constexpr std::uint32_t kReadOnlyCell = 0xffd1d8c8;       // told: RGB(209, 216, 200)
inline constexpr std::uint32_t kSelectedCell = 0xffdce9f5;       // of a list
inline constexpr std::uint32_t kQuietSelectedCell = 0xffe6eaee;  // while the focus is elsewhere
inline constexpr std::uint32_t kHeader = 0xffe8ecf0;
inline constexpr std::uint32_t kText = 0xff1d2730;
inline constexpr std::uint32_t kMutedText = 0xff46535e;  // what is looked at second
inline constexpr std::uint32_t kLine = 0xffe3e8ec;
inline constexpr std::uint32_t kReadOnlyLine = 0xffc2cab7;
inline constexpr std::uint32_t kFrame = 0xffc3ccd4;
inline constexpr std::uint32_t kAccent = 0xff1a64a3;  // current cell, static mark
inline constexpr std::uint32_t kQuietAccent =
    0xff6b7884;                                       // current cell while the focus is elsewhere
inline constexpr std::uint32_t kNotice = 0xffe4eff9;  // a line that says what comes next
inline constexpr std::uint32_t kNoticeFrame = 0xffa9c8e4;
inline constexpr std::uint32_t kWarningText = 0xff9c2f1f;

}  // namespace servo::params::palette
