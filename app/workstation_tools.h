// The windows with logic of their own, without their widgets: tool windows and the tuner.
#pragma once

#include <vector>

#include "tools/configuration.h"
#include "tools/digital_io.h"
#include "tools/errors.h"
#include "tools/homing.h"
#include "tools/init_save.h"
#include "tools/pos_flow.h"
#include "tools/rs485.h"
#include "tuner/advanced_tuner.h"

namespace servo::app {

struct Workstation;

struct WorkstationTools {
    // The workstation's engine, dictionary and language are there already.
    explicit WorkstationTools(Workstation& workstation);

    tools::DigitalIO digital_io;
    tools::Errors errors;
    tools::InitSave init_save;
    tools::ImExport configuration;
    tools::PosFlow pos_flow;
    tools::Homing2 homing;
    tools::Rs485 rs485;
    tuner::AdvancedTuner tuner;

    std::vector<link::Window*> windows();

    // Their files, in the order of the window list. False when the list of the digital functions is
    // not right: the user has been told, and the program is about to end.
    bool load(Workstation& workstation);

    // Texts that they compose themselves.
    void apply_language();
};

}  // namespace servo::app
