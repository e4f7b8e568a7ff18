// A walkthrough: a text file of commands, one a line, that are played through the real controls of
// the program. Here the text becomes a list of commands; nothing is looked up yet.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/walk_keys.h"

namespace servo::app {

enum class WalkVerb : std::uint8_t {
    kBad,  // the line could not be read; `text` says why
    kMenu,
    kTool,
    kOpen,
    kClose,
    kClick,
    kCheck,
    kChoose,
    kTab,
    kType,
    kKey,
    kCell,
    kEdit,
    kDrag,
    kPopup,
    kFile,
    kAnswer,
    kWait,
    kUntil,
    kExpect,
    kExpectMessage,
    kPrint,
    kPlace,
    kShot,
    kState,
    kSimulator,
    kQuit,
};

enum class WalkButton : std::uint8_t { kLeft, kRight, kDouble };

enum class TargetKind : std::uint8_t {
    kText,            // WINDOW.CONTROL
    kCell,            // WINDOW.GRID[ROW,COL]
    kRow,             // WINDOW.GRID.row
    kEnabled,         // WINDOW.CONTROL.enabled
    kControlVisible,  // WINDOW.CONTROL.visible
    kCaption,         // WINDOW.caption
    kWindowVisible,   // WINDOW.visible
    kToolbar,         // toolbar.KEY
    kEngine,          // engine.MEMBER
};

// What can be looked at.
struct WalkTarget {
    TargetKind kind = TargetKind::kText;
    std::string window;   // empty for kToolbar and kEngine
    std::string control;  // control or grid; key or member for kToolbar and kEngine
    int row = 0;
    int column = 0;
    bool operator==(const WalkTarget&) const = default;
};

struct WalkCommand {
    int line = 0;  // from 1
    WalkVerb verb = WalkVerb::kBad;
    std::string window;  // of the control; for kOpen, kClose, kPlace, kShot the window itself
    std::string control;
    std::string text;             // TEXT, ITEM, KEY of a tool, PATH or FILE
    std::vector<KeyStroke> keys;  // kKey
    int number = 0;               // list position or tab from 0; milliseconds of kWait and kUntil
    int row = 0;
    int column = 0;
    std::array<int, 4> points{};  // kDrag: x1 y1 x2 y2 in parts of 1000; kPlace: x y width height
    WalkButton button = WalkButton::kLeft;
    bool on = false;  // kCheck: on; kAnswer: ok
    WalkTarget target;
};

inline constexpr int kUntilMilliseconds = 10'000;  // limit of an `until` that names none

// Every command of the text in its order. Never fails as a whole: a line that cannot be read
// becomes a kBad command, so that it is reported in its place and the others are still played.
std::vector<WalkCommand> parse_walk(std::string_view text);

// One line of output or comparison for a text of several: line breaks (CR LF, CR, LF) become "\n".
std::string one_line(std::string_view text);

// Whether a text on screen equals the TEXT of a line. Line breaks are compared as "\n"; blanks at
// both ends do not count, as nobody sees them in the file or on the screen.
bool same_text(std::string_view shown, std::string_view wanted);

}  // namespace servo::app
