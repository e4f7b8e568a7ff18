// The grids `MSHFlexGrid1` of windows that are no pages, as project files see them.
#pragma once

#include <memory>

#include "app/project.h"
#include "dictionary/store.h"

namespace servo::app {

// The active tab of TPDOSet and RPDOSet, as the poller and the editors take it.
std::unique_ptr<ProjectGrid> find_tab_grid(link::Window& window);

// The Modbus list. A project file keeps what stands in its columns 1, 4 and 5: index, English name
// and attribute. It is never filled from one.
std::unique_ptr<ProjectGrid> find_modbus_grid(link::Window& window,
                                              const dictionary::Store& dictionary);

// The ramps of the position table: column 1 is the acceleration, columns 4 and 5 do not exist.
// Shown on open, and never filled from a file.
std::unique_ptr<ProjectGrid> find_ramp_grid(link::Window& window);

// The pins of EASY1, whose functions are empty. They are fixed, so a file does not change them.
std::unique_ptr<ProjectGrid> find_pin_grid(link::Window& window);

}  // namespace servo::app
