#include "tools/init_save.h"

#include "tools/drive_commands.h"

namespace servo::tools {

void InitSave::Command1_Click() {
    engine_.sendata2(kControlParametersKey, kStoreParameters, 0);
    lock();
}

void InitSave::Command2_Click() {
    engine_.sendata2(kMotorParametersKey, kStoreParameters, 0);
    lock();
}

void InitSave::Command3_Click() {
    engine_.sendata2(kControlParametersKey, kResetParameters, 0);
    lock();
}

void InitSave::Command4_Click() {
    restart_drive(engine_);
    lock();
}

void InitSave::Command5_Click() {
    send_restart(engine_);
}

void InitSave::Timer1_Timer() {
    locked_ = false;
}

}  // namespace servo::tools
