// Answers to page rows. They are matched by their identity alone.
#include <algorithm>

#include "base/number.h"
#include "link/engine.h"

namespace servo::link {

namespace {

constexpr std::string_view kRefused = "?????";
constexpr std::uint8_t kLastSegmentCommand = 0x1F;  // segments are 000t nnnc

Identity row_identity(const PollRow& row) {
    return static_cast<Identity>(base::scan_hex(row.index));
}

int find_row(const PollWindow& window, Identity object) {
    for (int row = 1; row < window.rows(); ++row)
        if (row_identity(window.row(row)) == object) return row;
    return 0;
}

// Characters in a last segment; `full` is the command of one that has seven and is the last.
std::size_t characters(int command, int full) {
    return static_cast<std::size_t>(std::clamp(7 - (command - full) / 2, 0, 7));
}

// Characters in an answer that carries them at once, for short texts.
std::size_t expedited_characters(std::uint8_t command) {
    const bool size_told = (command & 1U) != 0;
    return size_told ? 4U - ((command >> 2U) & 3U) : 4U;
}

}  // namespace

void Engine::take_page_answer() {
    PollWindow* window = poll_windows[state.page];
    if (reply_[0] <= kLastSegmentCommand) {
        take_segment();
    } else if (window == nullptr) {
        return;
    } else if (window->custom()) {
        take_custom_answer(*window);
    } else {
        take_grid_answer(*window);
    }
}

// A segment carries no identity: it belongs to the string that is being read, or to nobody.
void Engine::take_segment() {
    if (state.is_access_str == 0 || string_window_ == nullptr) return;
    const std::uint8_t command = reply_[0];
    if (state.str_read_step == 1) {
        if (command == 0x00) {
            append_string(7);
            state.str_read_step = 2;
            state.segment_pace = 0;
        } else if (command == 0x10) {
            append_string(7);  // a repeated answer to the other toggle
        } else {
            append_string(characters(command, 0x01));
            end_string();
        }
    } else if (state.str_read_step == 2) {
        if (command == 0x10) {
            append_string(7);
            state.str_read_step = 1;
            state.segment_pace = 0;
        } else if (command == 0x00) {
            append_string(7);
        } else {
            append_string(characters(command, 0x11));
            end_string();
        }
    }
}

void Engine::append_string(std::size_t count) {
    // Rows can be added and removed while a string comes in; its row is found by its object.
    const int row = find_row(*string_window_, string_object_);
    for (std::size_t i = 0; i < count; ++i)
        state.str_temp_string.push_back(static_cast<char>(reply_[1 + i]));
    if (row > 0) string_window_->set_text(row, state.str_temp_string);
}

// The row is finished: the next send tick steps to the one behind it.
void Engine::end_string() {
    const bool still_there =
        poll_windows[state.page] == string_window_ && state.sub_Pointer == string_row_;
    if (still_there) state.allow_add_pointer = 1;
    state.is_access_str = 0;
    state.str_read_step = 0;
    string_window_ = nullptr;
}

void Engine::take_grid_answer(PollWindow& window) {
    const int row = find_row(window, reply_key());
    if (row == 0) return;
    const bool reading =
        state.is_access_str != 0 && string_window_ == &window && string_object_ == reply_key();
    const std::string type(window.row(row).type);
    if (reply_[0] == kAbort) {
        window.set_text(row, kRefused);
        if (reading) end_string();
    } else if (reply_[0] == kAnswerSegmented) {
        if (type == "String" && !reading) return;  // late, of a string that is no longer asked for
        state.str_read_step = 1;
        state.str_temp_string.clear();
        window.set_text(row, {});
    } else if (type == "String") {
        if (reading) take_string_answer(window, row);
    } else if (const int code = dictionary::decoder_size(type); code != 0) {
        window.set_value(row, reply_value(code), code);
    }
}

// A text of up to four characters may come at once. Anything else, such as the line's echo of a
// segment request, is no part of the string.
void Engine::take_string_answer(PollWindow& window, int row) {
    if (reply_[0] >> 4 != 4) return;
    state.str_temp_string.assign(reply_.begin() + 4,
                                 reply_.begin() + 4 + expedited_characters(reply_[0]));
    window.set_text(row, state.str_temp_string);
    end_string();
}

void Engine::take_custom_answer(PollWindow& window) {
    if (reply_[0] == kAbort)
        return;  // there is no cell for "?????", and the abort code is no value
    for (int row = 0; row <= window.get_ODS_Num(); ++row) {
        const Identity object = window.get_ods(row);
        if (object == 0 || object != reply_key()) continue;
        window.set_ods(row, reply_value(dictionary::decoder_size(window.get_odtype(row))));
        return;
    }
}

}  // namespace servo::link
