// The drive's states after CiA 402 and the control word's commands. Pure functions: what a stop or
// a state does to the motor is decided elsewhere.
#pragma once

#include <cstdint>

namespace servo::sim {

enum class DriveState : std::uint8_t {
    kNotReady,
    kSwitchOnDisabled,
    kReadyToSwitchOn,
    kSwitchedOn,
    kOperationEnabled,
    kQuickStopActive,
    kFaultReactionActive,
    kFault,
};

enum class Command : std::uint8_t {
    kNone,
    kShutdown,
    kSwitchOn,
    kEnableOperation,
    kDisableVoltage,
    kQuickStop,
};

namespace control {
inline constexpr std::uint16_t kSwitchOn = 0x01;
inline constexpr std::uint16_t kVoltage = 0x02;
inline constexpr std::uint16_t kNoQuickStop = 0x04;
inline constexpr std::uint16_t kEnable = 0x08;
inline constexpr std::uint16_t kNewSetPoint = 0x10;
inline constexpr std::uint16_t kStartHoming = 0x10;
inline constexpr std::uint16_t kAtOnce = 0x20;
inline constexpr std::uint16_t kRelative = 0x40;
inline constexpr std::uint16_t kFaultReset = 0x80;
inline constexpr std::uint16_t kHalt = 0x100;
}  // namespace control

namespace status {
inline constexpr std::uint16_t kVoltage = 0x10;
inline constexpr std::uint16_t kWarning = 0x80;
inline constexpr std::uint16_t kRemote = 0x200;
inline constexpr std::uint16_t kTargetReached = 0x400;
inline constexpr std::uint16_t kLimit = 0x800;
inline constexpr std::uint16_t kSetPointTaken = 0x1000;  // profile position
inline constexpr std::uint16_t kZeroSpeed = 0x1000;      // speed modes
inline constexpr std::uint16_t kHomed = 0x1000;          // homing
inline constexpr std::uint16_t kFollowingError = 0x2000;
inline constexpr std::uint16_t kHomingError = 0x2000;
}  // namespace status

// The command that bits 0 to 3 of a control word give. The fault reset is an edge of bit 7 and is
// seen by comparing two control words.
Command command_of(std::uint16_t control_word);

// The state that a command asks for, the same state if the command means nothing there. From
// "ready" an enable goes through "switched on" at once. Stops on the way are the caller's.
DriveState commanded(DriveState state, Command command);

// Bits 0 to 3, 5 and 6 of the status word.
std::uint16_t state_bits(DriveState state);

// Power flows to the motor.
bool powered(DriveState state);

}  // namespace servo::sim
