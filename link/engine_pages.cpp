// Page rows: what a send tick does while Com_Change is 1.
#include "link/engine.h"

namespace servo::link {

namespace {
constexpr int kRotations = 3;
constexpr int kCustomDrainTicks = 4;  // positions behind the last row of a custom window
constexpr int kGridDrainTicks = 5;    // positions behind the row count of a grid page
}  // namespace

void Engine::send_page_row() {
    if (!find_visible_page()) {
        state.Com_Change = 0;
        state.status_lane = 0;
        state.sub_Pointer = 0;
        return;
    }
    if (state.allow_add_pointer == 1) {
        ++state.sub_Pointer;
        state.allow_add_pointer = 0;
    }
    if (!operands_known()) read_without_operands_ = true;
    PollWindow& window = *poll_windows[state.page];
    if (window.custom()) {
        send_custom_row(window);
    } else {
        send_grid_row(window);
    }
}

// Leaves `page` on a visible window. The position in it begins anew only when the window changes.
bool Engine::find_visible_page() {
    const auto visible = [this](std::size_t place) {
        return poll_windows[place] != nullptr && poll_windows[place]->visible();
    };
    if (visible(state.page)) return true;
    for (std::size_t step = 1; step < poll_windows.size(); ++step) {
        const std::size_t place = (state.page + step) % poll_windows.size();
        if (!visible(place)) continue;
        state.page = static_cast<std::uint8_t>(place);
        state.allow_add_pointer = 0;
        state.sub_Pointer = poll_windows[place]->custom() ? 0 : 1;
        return true;
    }
    return false;
}

void Engine::send_custom_row(PollWindow& window) {
    const int last = window.get_ODS_Num();
    if (state.sub_Pointer > last + kCustomDrainTicks) {
        end_of_pass();
        return;
    }
    if (state.sub_Pointer >= 0 && state.sub_Pointer <= last) {
        const Identity object = window.get_ods(state.sub_Pointer);
        const std::uint8_t size = dictionary::wire_size(window.get_odtype(state.sub_Pointer));
        // A row without an object, such as an empty list entry, asks nothing.
        if (object != 0) sendata2(static_cast<WireKey>(object) << 8 | size, 0, 1);
    }
    ++state.sub_Pointer;
}

void Engine::send_grid_row(PollWindow& window) {
    const int rows = window.rows();
    if (state.sub_Pointer > rows + kGridDrainTicks) {
        end_of_pass();
        return;
    }
    // Row 0 is the header and asks nothing; behind the last row late answers come in.
    if (state.sub_Pointer < 1 || state.sub_Pointer >= rows) {
        ++state.sub_Pointer;
        return;
    }
    const PollRow row = window.row(state.sub_Pointer);
    const WireKey key = dictionary::read_key(row.index, row.type);
    const Identity object = dictionary::identity_of(key);
    // The cell of a string fills while it is being read, which must not end the reading.
    const bool reading = state.is_access_str != 0 && string_window_ == &window &&
                         string_row_ == state.sub_Pointer && string_object_ == object;
    const bool wanted =
        reading || !row.number.ends_with('*') || window.must_fresh || row.value.empty();
    if (!wanted || object == 0) {
        ++state.sub_Pointer;
    } else if (row.type == "String") {
        // The position moves on when the string has ended.
        if (!reading) begin_string(window, object);
        // At 38400 baud an answer comes a turn later than its request. Segments are asked for at a
        // pace, or each would be asked for twice and its characters taken twice.
        if (state.str_read_step == 0) {
            sendata2(key, 0, 1);
        } else {
            sendata(key, 0, 1);
        }
    } else {
        sendata2(key, 0, 1);
        ++state.sub_Pointer;
    }
}

void Engine::begin_string(PollWindow& window, Identity object) {
    string_window_ = &window;
    string_object_ = object;
    string_row_ = state.sub_Pointer;
    state.is_access_str = 1;
    state.str_read_step = 0;
    state.segment_pace = 0;
    state.str_temp_string.clear();
}

void Engine::end_of_pass() {
    if (++state.rotation >= kRotations) {
        state.Com_Change = 0;
        state.rotation = 0;
        state.status_lane = 0;
    }
    state.sub_Pointer = 0;
    state.Form_Now = 0;
    state.Form_Last = 0;
    // The window that loses its mark is the one at this position in the list of all windows. The
    // two lists agree in their first six places only, so most pages keep reading their read-once
    // rows until the page stands at their own place in the other list; drives and users know it
    // this way.
    if (Window* window = all_windows[state.page]) window->must_fresh = false;
    state.page = static_cast<std::uint8_t>((state.page + 1U) % poll_windows.size());
}

}  // namespace servo::link
