// Colours of the position table's window beyond those of every grid, as 0xAARRGGBB. Text and lines
// have a contrast of 4.5 to 1 or more on what they stand on; no colour says anything alone.
#pragma once

#include <cstdint>

namespace servo::tools::position_palette {

inline constexpr std::uint32_t kPaper = 0xffffffff;
inline constexpr std::uint32_t kFixedCell = 0xfff6f8fa;  // cannot be edited in place
inline constexpr std::uint32_t kRunning = 0xffdff2e6;    // the step that runs
inline constexpr std::uint32_t kRunningEdge = 0xff1d7a45;
inline constexpr std::uint32_t kBox = 0xffffffff;
inline constexpr std::uint32_t kBoxEdge = 0xff46535e;
inline constexpr std::uint32_t kUnreached = 0xfff2f4f6;
inline constexpr std::uint32_t kArrow = 0xff46535e;
inline constexpr std::uint32_t kBackArrow = 0xff94408f;
inline constexpr std::uint32_t kPosition = 0xff0067a5;
inline constexpr std::uint32_t kSpeed = 0xffb84a00;
inline constexpr std::uint32_t kBand = 0xfff1f5f9;  // every other step
inline constexpr std::uint32_t kSelectedBand = 0xffdce9f5;
inline constexpr std::uint32_t kTick = 0xffe3e8ec;
inline constexpr std::uint32_t kLabelGround = 0xd9ffffff;

}  // namespace servo::tools::position_palette
