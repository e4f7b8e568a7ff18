#include "tools/drive_commands.h"

namespace servo::tools {

void send_restart(link::Engine& engine) {
    engine.sendata2(kRestartKey, kRestartValue, 0);
}

void restart_drive(link::Engine& engine) {
    send_restart(engine);
    engine.forget_drive();
}

}  // namespace servo::tools
