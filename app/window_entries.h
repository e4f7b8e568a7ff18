// The open windows as entries of a menu.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace servo::app {

struct OpenWindow {
    std::string name;
    std::string caption;
    bool active = false;
    bool minimized = false;
};

// "&1 Basic Operation": the number is the access key of the first nine. A "&" of a caption is
// doubled, so that it is shown.
std::string entry_text(int position, std::string_view caption);

// Position of the window behind (or before) the active one, round about, without those that are
// minimised unless all are. -1 when there is none. With no active one: the first, or the last.
int next_window(const std::vector<OpenWindow>& windows, bool forward);

}  // namespace servo::app
