// The whole visible state of the program as plain values, and as the JSON text that a walkthrough's
// `state` writes. Texts are UTF-8 as they stand on screen.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace servo::app {

// A member of the engine by its name.
using EngineValue = std::variant<std::int64_t, std::string>;
using EngineMembers = std::vector<std::pair<std::string, EngineValue>>;

// Text of a member, as a walkthrough's target gives it.
std::string engine_text(const EngineValue& value);

struct ControlState {
    std::string name;
    std::string type;  // "CommandButton", "CheckBox", "TextBox" ..., see control_text.h
    std::string text;  // caption of a check or option button, picture name of an image
    bool enabled = false;
    bool visible = false;
    std::optional<bool> checked;
    std::optional<std::vector<std::string>> items;
    std::optional<int> current;  // position in items, -1 for none
};

struct CellColor {
    int row = 0;
    int column = 0;
    std::string color;  // "#RRGGBB"
};

struct GridState {
    std::string name;
    std::vector<std::vector<std::string>> rows;  // header first, hidden columns included
    std::vector<CellColor> colors;               // cells whose background is not the grid's own
};

struct WindowState {
    std::string name;
    std::string caption;
    bool visible = false;
    std::vector<ControlState> controls;
    std::vector<GridState> grids;
};

struct MenuState {
    std::string item;
    std::string caption;
    bool visible = false;
    bool enabled = false;
};

struct StateDocument {
    int language = 1;  // 0 Chinese, 1 English
    std::string title;
    std::vector<std::pair<std::string, std::string>> toolbar;   // key to picture
    std::vector<std::pair<std::string, std::string>> tooltips;  // key to text
    std::vector<MenuState> menus;
    EngineMembers engine;
    std::vector<WindowState> windows;  // in the order of the window list
};

// One JSON object, keys in the order above, indented, with a line feed at its end. Bytes that are
// no UTF-8 are shown as U+FFFD.
std::string state_json(const StateDocument& state);

}  // namespace servo::app
