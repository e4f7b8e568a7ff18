#include "tools/init_save.h"

#include <algorithm>

#include "tools/drive_commands.h"

namespace servo::tools {

InitSave::InitSave(link::Engine& engine, const base::Language& language)
    : link::Window("InitSave"), engine_(engine), language_(language) {
    engine_.add_listener(*this);
}

InitSave::~InitSave() {
    engine_.remove_listener(*this);
}

void InitSave::Command1_Click() {
    run(InitSaveCommand::kStoreControl);
}

void InitSave::Command2_Click() {
    run(InitSaveCommand::kStoreMotor);
}

void InitSave::Command3_Click() {
    run(InitSaveCommand::kResetControl);
}

void InitSave::Command4_Click() {
    run(InitSaveCommand::kRestart);
}

void InitSave::Command5_Click() {
    run(InitSaveCommand::kRestartAlone);
}

// Nobody waits for the drive's word on a command. Without a link nothing leaves, and all the rest
// happens the same.
void InitSave::run(InitSaveCommand command) {
    const std::uint64_t sent = engine_.counters.sends;
    send(command);
    last_ = command;
    last_left_ = engine_.counters.sends != sent;
    last_kept_back_ = !last_left_ && engine_.port().is_open();
    const bool restarts =
        command == InitSaveCommand::kRestart || command == InitSaveCommand::kRestartAlone;
    restart_.forget();
    if (restarts && last_left_) restart_.begin(engine_.clock().now(), engine_.counters.frames);
    if (command != InitSaveCommand::kRestartAlone) {
        locked_ = true;
        locked_at_ = engine_.clock().now();
    }
    tell();
}

void InitSave::send(InitSaveCommand command) {
    switch (command) {
        case InitSaveCommand::kStoreControl:
            engine_.sendata2(kControlParametersKey, kStoreParameters, 0);
            break;
        case InitSaveCommand::kStoreMotor:
            engine_.sendata2(kMotorParametersKey, kStoreParameters, 0);
            break;
        case InitSaveCommand::kResetControl:
            engine_.sendata2(kControlParametersKey, kResetParameters, 0);
            break;
        case InitSaveCommand::kRestart:
            restart_drive(engine_);
            break;
        case InitSaveCommand::kRestartAlone:
            send_restart(engine_);
            break;
    }
}

void InitSave::Timer1_Timer() {
    locked_ = false;
    tell();
}

std::chrono::milliseconds InitSave::lock_left() const {
    if (!locked_) return {};
    const auto passed =
        std::chrono::duration_cast<std::chrono::milliseconds>(engine_.clock().now() - locked_at_);
    return std::max(std::chrono::milliseconds(kLockMilliseconds) - passed,
                    std::chrono::milliseconds(0));
}

void InitSave::look() {
    if (restart_.look(engine_.clock().now(), engine_.counters.frames)) tell();
}

// A link that is opened again begins a new story.
void InitSave::link_changed(bool open) {
    if (open)
        restart_.forget();
    else
        restart_.link_closed();
    tell();
}

}  // namespace servo::tools
