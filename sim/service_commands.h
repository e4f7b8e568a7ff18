// Commands that are writes: store, restore, initialise, restart.
//
//   1010:01..04 := "save"   all, communication, standard or maker's objects into memory
//   1011:01..04 := "load"   the same groups' factory values into memory; in force after a restart
//   2FF0:01 := 1 or 10      store the control parameters, and the communication's with them; reset
//                           the control parameters to their factory values
//   2FF0:02, :03 := 1       store the communication, the motor parameters
//   2FFF:00 := 0xAA55       restart; 0x55AA: restart into the bootloader
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "sim/memory.h"
#include "sim/object_table.h"
#include "sim/subsystem.h"

namespace servo::sim {

class ServiceCommands : public Subsystem {
  public:
    ServiceCommands(ObjectTable& table, Memory& memory);

    // What the last commands ask of the drive as a whole.
    struct Wishes {
        bool restart = false;
        bool bootloader = false;  // the restart leads there
        bool memory_failed = false;
        std::chrono::microseconds busy{0};  // the drive does nothing else for that long
    };
    Wishes take_wishes();

    // Puts the memory's values into the objects that are stored; `but` says which are left alone.
    void recall(const std::function<bool(dictionary::Identity)>& but);

    // A stored object differs from what the next restart would bring.
    bool unsaved() const;

    void refresh(Object& object) override;
    Abort accept(const Object& object, std::int64_t value) override;
    void written(Object& object) override;

  private:
    using Group = bool (*)(dictionary::Identity);

    Abort save(Group group);
    Abort restore(Group group);
    void initialise();
    Abort write_memory();
    Abort control_command(const Object& object, std::int64_t value);

    ObjectTable& table_;
    Memory& memory_;
    Object& storage_state_;
    Wishes wishes_;
};

}  // namespace servo::sim
