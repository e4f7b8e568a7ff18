// The menus and the toolbar as tables: names, texts in both languages, what each entry does. The
// window that shows them makes its actions from here and knows no text of its own.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::app {

enum class MenuKind : std::uint8_t {
    kMenu,       // opens a menu
    kNothing,    // has no action of its own
    kOpenPage,   // the opening route with `window`
    kShowForm1,  // the communication dialog on top
    kNewProject,
    kOpenProject,
    kSaveProject,
    kQuit,
    kChinese,
    kEnglish,
    kArrange,     // the icons of minimised child windows
    kErrorTable,  // sys/Errors.xls with the system's handler
};

struct MenuItem {
    std::string_view item = {};
    std::string_view parent = {};  // the menu that holds it; empty for the menu bar
    std::string_view chinese = {};
    std::string_view english = {};
    std::string_view controller = {};  // English in the reduced variant, empty when it is the same
    MenuKind kind = MenuKind::kNothing;
    std::string_view window = {};      // for kOpenPage
    bool hidden_when_reduced = false;  // left out of the reduced variant
};

// The menu bar in its order; an item follows the menu that holds it.
std::span<const MenuItem> menu_table();

// The pop-up menu of a grid row, `xpop`.
std::span<const MenuItem> popup_table();

// nullptr for a name that is none.
const MenuItem* find_menu_item(std::string_view item);

// The text of an item. The item of the language that is on is marked with a leading "*".
std::string menu_caption(const MenuItem& item, base::Language language,
                         dictionary::Variant variant);

bool menu_visible(const MenuItem& item, dictionary::Variant variant);

// Toolbar buttons, left to right. A button either stands for a menu item or has its own kind.
enum class ToolKind : std::uint8_t {
    kMenuItem,       // as the menu item `item`
    kCommunication,  // connects, disconnects, or asks for the settings
    kExport,         // imexport, for writing settings to the drive
    kImport,         // imexport, for reading them
};

struct ToolItem {
    std::string_view key;
    ToolKind kind = ToolKind::kMenuItem;
    std::string_view item = {};  // the menu item that it stands for, or the window that it opens
    std::string_view picture;    // name of the picture at start
    std::string_view chinese = {};
    std::string_view english = {};
    std::string_view controller = {};
    bool new_group = false;  // a separator stands before it
};

std::span<const ToolItem> tool_table();

// Key of toolbar button 4 (link) and button 5 (fault).
inline constexpr std::string_view kLinkTool = "commx";
inline constexpr std::string_view kFaultTool = "Errorx";

std::string_view tool_tip(const ToolItem& item, base::Language language,
                          dictionary::Variant variant);

// Title of the main window.
std::string_view main_title(dictionary::Variant variant);

}  // namespace servo::app
