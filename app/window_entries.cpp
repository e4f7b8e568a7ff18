#include "app/window_entries.h"

#include <algorithm>

namespace servo::app {

namespace {

constexpr int kNumbered = 9;

}  // namespace

std::string entry_text(int position, std::string_view caption) {
    std::string text;
    if (position >= 0 && position < kNumbered) text = "&" + std::to_string(position + 1) + " ";
    for (const char character : caption) {
        if (character == '&') text += '&';
        text += character;
    }
    return text;
}

int next_window(const std::vector<OpenWindow>& windows, bool forward) {
    const int count = static_cast<int>(windows.size());
    if (count == 0) return -1;
    const auto active = std::ranges::find(windows, true, &OpenWindow::active);
    // From before the first, or from behind the last, when none is active.
    int position = forward ? -1 : count;
    if (active != windows.end()) position = static_cast<int>(active - windows.begin());
    const bool all_small = std::ranges::all_of(windows, &OpenWindow::minimized);
    for (int step = 0; step < count; ++step) {
        position = (position + (forward ? 1 : -1) + count) % count;
        if (all_small || !windows[static_cast<std::size_t>(position)].minimized) return position;
    }
    return -1;
}

}  // namespace servo::app
