// Engine, line and dialog in virtual time. Put a drive on `line` (FakeDrive, or SimDriveOnLine of
// sim_bench.h), add windows and jobs to `engine`, then let time pass.
#pragma once

#include <chrono>
#include <functional>

#include "base/temp_folder.h"
#include "link/communication.h"
#include "link/drive_values.h"
#include "link/engine.h"
#include "support/fakes.h"
#include "support/virtual_line.h"
#include "support/virtual_time.h"

namespace servo::test {

class VirtualBench {
  public:
    VirtualBench();

    // Opens the link through the dialog, on COM1 at 38400 baud unless something else was picked.
    void open_link();

    // Ticks, bytes and sleeps for so long.
    void run_for(std::chrono::microseconds duration);
    // Until `done` holds behind a tick, for `limit` at the most. Returns whether it does.
    bool run_until(const std::function<bool()>& done, std::chrono::microseconds limit = 60s);
    void run_ticks(int count);

    // Settings are kept in a folder of this bench's own.
    TempFolder folder;
    VirtualTime time;
    VirtualClock clock{time};
    VirtualTimer timer{time};
    VirtualLine line{time};
    VirtualPort port{line};
    VirtualDirectory directory;
    RecordedNotice notice;
    link::DriveValues values;
    link::Engine engine{port, clock, timer, values};
    link::Communication communication;

  private:
    bool step(VirtualTime::Duration end);
};

}  // namespace servo::test
