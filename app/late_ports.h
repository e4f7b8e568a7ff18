// The machine's ports for the communication dialog, asked for when the main window is up: looking
// through the devices takes longer than reading the dictionary, and nobody sees the list before.
#pragma once

#include <vector>

#include "link/port.h"

namespace servo::app {

class LatePorts final : public link::PortDirectory {
  public:
    explicit LatePorts(link::PortDirectory& machine) : machine_(machine) {}

    // From now on the list is that of the machine; until then it is empty.
    void begin() { begun_ = true; }

    bool list(std::vector<Entry>& into) override {
        into.clear();
        return !begun_ || machine_.list(into);
    }

  private:
    link::PortDirectory& machine_;
    bool begun_ = false;
};

}  // namespace servo::app
