// What the plain half of the program asks of whoever shows its windows. The main window implements
// it; servoctl and plain tests do without (Workstation::screen stays null).
#pragma once

#include <string>

#include "link/window.h"

namespace servo::app {

class Screen {
  public:
    Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    virtual ~Screen() = default;

    // Start-up, each called once and in this order.
    virtual void show_background() = 0;  // full size behind everything, picture by variant
    virtual void apply_variant() = 0;    // title, hidden menu items, wording

    // Brings a window to the top, shown modelessly. Its visible() is true already.
    virtual void show_window(link::Window& window) = 0;
    // Hides it. Its visible() is false already.
    virtual void hide_window(link::Window& window) = 0;

    // The name of the window that its user works in; empty for none.
    virtual std::string active_window() const { return {}; }

    // Every text on screen in the language of the workstation; called after each language click.
    virtual void apply_language() = 0;

    // Every window unloaded, the main window last; the program ends at once.
    virtual void unload_all() = 0;
};

}  // namespace servo::app
