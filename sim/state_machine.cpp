#include "sim/state_machine.h"

namespace servo::sim {

Command command_of(std::uint16_t word) {
    if ((word & control::kVoltage) == 0) return Command::kDisableVoltage;
    if ((word & control::kNoQuickStop) == 0) return Command::kQuickStop;
    if ((word & control::kSwitchOn) == 0) return Command::kShutdown;
    return (word & control::kEnable) == 0 ? Command::kSwitchOn : Command::kEnableOperation;
}

namespace {

DriveState from_enabled(Command command) {
    switch (command) {
        case Command::kShutdown:
            return DriveState::kReadyToSwitchOn;
        case Command::kSwitchOn:
            return DriveState::kSwitchedOn;
        case Command::kDisableVoltage:
            return DriveState::kSwitchOnDisabled;
        case Command::kQuickStop:
            return DriveState::kQuickStopActive;
        case Command::kEnableOperation:
        case Command::kNone:
            return DriveState::kOperationEnabled;
    }
    return DriveState::kOperationEnabled;
}

// Ready and switched on differ in nothing that a command sees.
DriveState from_ready(DriveState state, Command command) {
    switch (command) {
        case Command::kShutdown:
            return DriveState::kReadyToSwitchOn;
        case Command::kSwitchOn:
            return DriveState::kSwitchedOn;
        case Command::kEnableOperation:
            return DriveState::kOperationEnabled;
        case Command::kDisableVoltage:
        case Command::kQuickStop:
            return DriveState::kSwitchOnDisabled;
        case Command::kNone:
            return state;
    }
    return state;
}

}  // namespace

DriveState commanded(DriveState state, Command command) {
    switch (state) {
        case DriveState::kSwitchOnDisabled:
            return command == Command::kShutdown ? DriveState::kReadyToSwitchOn : state;
        case DriveState::kReadyToSwitchOn:
        case DriveState::kSwitchedOn:
            return from_ready(state, command);
        case DriveState::kOperationEnabled:
            return from_enabled(command);
        case DriveState::kQuickStopActive:
            if (command == Command::kEnableOperation) return DriveState::kOperationEnabled;
            return command == Command::kDisableVoltage ? DriveState::kSwitchOnDisabled : state;
        case DriveState::kNotReady:
        case DriveState::kFaultReactionActive:
        case DriveState::kFault:
            return state;
    }
    return state;
}

std::uint16_t state_bits(DriveState state) {
    switch (state) {
        case DriveState::kNotReady:
            return 0x00;
        case DriveState::kSwitchOnDisabled:
            return 0x40;
        case DriveState::kReadyToSwitchOn:
            return 0x21;
        case DriveState::kSwitchedOn:
            return 0x23;
        case DriveState::kOperationEnabled:
            return 0x27;
        case DriveState::kQuickStopActive:
            return 0x07;
        case DriveState::kFaultReactionActive:
            return 0x0F;
        case DriveState::kFault:
            return 0x08;
    }
    return 0x00;
}

bool powered(DriveState state) {
    switch (state) {
        case DriveState::kOperationEnabled:
        case DriveState::kQuickStopActive:
        case DriveState::kFaultReactionActive:
            return true;
        case DriveState::kNotReady:
        case DriveState::kSwitchOnDisabled:
        case DriveState::kReadyToSwitchOn:
        case DriveState::kSwitchedOn:
        case DriveState::kFault:
            return false;
    }
    return false;
}

}  // namespace servo::sim
