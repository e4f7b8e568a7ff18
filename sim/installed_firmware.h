// Which program the drive starts with, and whether there is one. Kept in the non-volatile memory
// under the keys of the objects that show it.
#pragma once

#include <functional>

#include "sim/block_store.h"
#include "sim/memory.h"
#include "sim/object_table.h"

namespace servo::sim {

class InstalledFirmware {
  public:
    InstalledFirmware(ObjectTable& table, Memory& memory);

    // False from an erase on until another program has been installed.
    bool valid() const;

    // Both write the memory.
    void invalidate();
    void install(const FirmwareImage& image);

    // Puts version and check value into their objects; `but` says which are left alone. A drive
    // that never got another program has the factory's.
    void show(const std::function<bool(dictionary::Identity)>& but);

  private:
    Memory& memory_;
    Object& version_;
    Object& check_value_;
};

}  // namespace servo::sim
