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

}  // namespace servo::app
