// Fixed writes that more than one window sends. They are fire and forget: nobody looks at the
// drive's word on them.
#pragma once

#include <cstdint>

#include "link/engine.h"

namespace servo::tools {

inline constexpr link::WireKey kStoreAllKey = 0x10100104;
inline constexpr std::int32_t kStoreAllValue = 0x65766173;  // "save", low byte first
inline constexpr link::WireKey kControlParametersKey = 0x2FF00101;
inline constexpr link::WireKey kMotorParametersKey = 0x2FF00301;
inline constexpr std::int32_t kStoreParameters = 1;
inline constexpr std::int32_t kResetParameters = 10;
inline constexpr link::WireKey kRestartKey = 0x2FFF0002;
// Low half 0xAA55, high half all ones. Two bytes count; the others travel as well.
inline constexpr std::int32_t kRestartValue = static_cast<std::int32_t>(0xFFFFAA55U);

// The command alone.
void send_restart(link::Engine& engine);

// The command, and what the engine knows of the drive is forgotten: every row is read again, the
// operands of the formulas count as unknown (their values stay in use until they are read), the
// wheel begins anew, and the silence of the start does not count as a failure of the link.
void restart_drive(link::Engine& engine);

}  // namespace servo::tools
