#include "app/shortcuts.h"

#include <algorithm>

#include "app/menu_table.h"
#include "tools/journal.h"

namespace servo::app {

namespace {

using base::Language;
using base::Text;
using enum ShortcutKind;

constexpr std::array kShortcuts{
    Shortcut{kMenuItem, "new1", {"Ctrl+N"}},
    Shortcut{kMenuItem, "open1", {"Ctrl+O"}},
    Shortcut{kMenuItem, "save1", {"Ctrl+S"}},
    Shortcut{kMenuItem, "quit1", {"Ctrl+Q"}},
    Shortcut{kMenuItem, "Communication_Settings", {"Ctrl+F5"}},
    Shortcut{kMenuItem, "Basic_Operation", {"Ctrl+B"}},
    Shortcut{kMenuItem, "PosLoop", {"Ctrl+1"}},
    Shortcut{kMenuItem, "SPDLoop", {"Ctrl+2"}},
    Shortcut{kMenuItem, "CurLoop", {"Ctrl+3"}},
    Shortcut{kMenuItem, "IO_Port_settings", {"F6"}},
    Shortcut{kMenuItem, "ODs", {"Ctrl+D"}},
    Shortcut{kMenuItem, "Driver_Configrations", {"Ctrl+5"}},
    Shortcut{kMenuItem, "Scopex", {"F7"}},
    Shortcut{kMenuItem, "tunner", {"Ctrl+T"}},
    Shortcut{kMenuItem, "Real_time_error", {"F8"}},
    Shortcut{kMenuItem, "ErrHistory1", {"Shift+F8"}},
    Shortcut{kMenuItem, "Initandsave", {"Ctrl+R"}},
    Shortcut{kMenuItem, "driver_propertyx", {"Ctrl+6"}},
    Shortcut{kMenuItem, "Motor_Config", {"Ctrl+4"}},
    Shortcut{kMenuItem, "errorcode", {"Ctrl+F8"}},
    Shortcut{kMenuItem, "fastset", {"F12"}},
    Shortcut{kTool, "commx", {"F5"}},
    Shortcut{kTool, "exportx", {"Ctrl+Shift+W"}},
    Shortcut{kTool, "importx", {"Ctrl+Shift+R"}},
    Shortcut{kOtherLanguage, "", {"Ctrl+L"}},
    Shortcut{kJournal, "", {"Ctrl+Shift+J"}},
    Shortcut{kKeyList, "", {"F1"}},
    Shortcut{kNextWindow, "", {"Ctrl+Tab", "Ctrl+F6"}},
    Shortcut{kPreviousWindow, "", {"Ctrl+Shift+Tab", "Ctrl+Shift+F6"}},
    Shortcut{kCloseWindow, "", {"Ctrl+W", "Ctrl+F4"}},
};

constexpr int kKeyedWindows = 9;

constexpr Text kConnect{"打开或关闭通信", "Connect or disconnect"};
constexpr Text kOtherLanguageCaption{"切换到另一种语言", "Switch to the other language"};
constexpr Text kWindowNumber{"第 1 至第 9 个窗口", "Window 1 to 9"};

struct FixedLine {
    Text command;
    std::string_view keys;
};

// What a page's grid does with keys.
constexpr std::array kGridLines{
    FixedLine{{"编辑数值", "Edit the value"}, "Enter, F2"},
    FixedLine{{"放弃编辑", "Leave the editor"}, "Esc"},
    FixedLine{{"打开下拉列表", "Open the list of a cell"}, "F4"},
    FixedLine{{"复制单元格", "Copy the cell"}, "Ctrl+C"},
    FixedLine{{"行的弹出菜单", "Menu of the row"}, "Menu, Shift+F10"},
};

// What the keys do while the oscilloscope's plot has the focus.
constexpr std::array kPlotLines{
    FixedLine{{"开始或停止", "Start or stop"}, "Space"},
    FixedLine{{"开关游标 X1、X2、Y1、Y2", "Cursor X1, X2, Y1, Y2 on or off"}, "1, 2, 3, 4"},
    FixedLine{{"选择下一个游标", "Pick the next cursor"}, "Tab"},
    FixedLine{{"移动 X 游标", "Move the X cursor"}, "Left, Right"},
    FixedLine{{"移动 Y 游标", "Move the Y cursor"}, "Up, Down"},
    FixedLine{{"移动十步", "Move it ten steps"}, "Ctrl+Left … Ctrl+Down"},
    FixedLine{{"放大，缩小，整个记录", "Zoom in, zoom out, whole recording"}, "+, -, 0"},
    FixedLine{{"平移", "Move along the recording"}, "PgUp, PgDown, Home, End"},
    FixedLine{{"自动选择所有曲线的刻度", "Fit all curves in height"}, "F"},
    FixedLine{{"手形工具", "Hand tool"}, "H"},
    FixedLine{{"统计，频谱，参考记录", "Statistics, spectrum, references"}, "S, P, G"},
    FixedLine{{"保留为参考记录", "Keep as a reference"}, "R"},
    FixedLine{{"保存图片", "Save the picture"}, "Ctrl+Shift+P"},
    FixedLine{{"把数据保存为 CSV", "Save the data as CSV"}, "Ctrl+Shift+D"},
};

// Chinese captions carry their access key behind the text ("文件&F"), where it is no part of it.
std::string without_marks(std::string_view caption) {
    if (caption.size() >= 3 && caption[caption.size() - 2] == '&' && (caption[0] & 0x80) != 0)
        caption.remove_suffix(2);
    std::string plain;
    for (const char character : caption)
        if (character != '&' && character != '*') plain += character;
    return plain;
}

std::string_view top_menu(const MenuItem& item) {
    const MenuItem* menu = &item;
    while (!menu->parent.empty()) {
        const MenuItem* parent = find_menu_item(menu->parent);
        if (parent == nullptr) break;
        menu = parent;
    }
    return menu->item;
}

std::string keys_text(const Shortcut& shortcut) {
    std::string text(shortcut.keys[0]);
    if (!shortcut.keys[1].empty()) text.append(", ").append(shortcut.keys[1]);
    return text;
}

// The list is made for one language and one variant.
class ListMaker {
  public:
    ListMaker(Language language, dictionary::Variant variant)
        : language_(language), variant_(variant) {}

    ShortcutGroup menu(const MenuItem& menu) const {
        ShortcutGroup group{without_marks(menu_caption(menu, language_, variant_)), {}};
        for (const Shortcut& shortcut : kShortcuts) {
            if (shortcut.kind != kMenuItem) continue;
            const MenuItem* item = find_menu_item(shortcut.name);
            if (item == nullptr || top_menu(*item) != menu.item) continue;
            if (!menu_visible(*item, variant_)) continue;
            group.lines.push_back(
                {without_marks(menu_caption(*item, language_, variant_)), keys_text(shortcut)});
        }
        if (menu.item == "Tools") {
            add(group, kJournal, tools::kJournalCaption);
            add(group, kOtherLanguage, kOtherLanguageCaption);
        }
        if (menu.item == "help") add(group, kKeyList, kKeyListCaption);
        return group;
    }

    ShortcutGroup tools() const {
        ShortcutGroup group{text({"工具栏", "Toolbar"}), {}};
        for (const Shortcut& shortcut : kShortcuts) {
            if (shortcut.kind != kTool) continue;
            const auto tool = std::ranges::find(tool_table(), shortcut.name, &ToolItem::key);
            if (tool == tool_table().end()) continue;
            // The tip of the link's button tells where its settings are, not what a press does.
            std::string caption = tool->kind == ToolKind::kCommunication
                                      ? text(kConnect)
                                      : std::string(tool_tip(*tool, language_, variant_));
            group.lines.push_back({std::move(caption), keys_text(shortcut)});
        }
        return group;
    }

    ShortcutGroup windows() const {
        ShortcutGroup group{text({"窗口", "Windows"}), {}};
        add(group, kNextWindow, kNextWindowCaption);
        add(group, kPreviousWindow, kPreviousWindowCaption);
        add(group, kCloseWindow, kCloseWindowCaption);
        group.lines.push_back({text(kWindowNumber), "Alt+1 … Alt+9"});
        return group;
    }

    ShortcutGroup grids() const { return fixed({"表格", "Grids"}, kGridLines); }
    ShortcutGroup plot() const { return fixed({"示波器曲线图", "Plot of the scope"}, kPlotLines); }

  private:
    ShortcutGroup fixed(const Text& title, std::span<const FixedLine> lines) const {
        ShortcutGroup group{text(title), {}};
        for (const FixedLine& line : lines)
            group.lines.push_back({text(line.command), std::string(line.keys)});
        return group;
    }

    std::string text(const Text& pair) const { return std::string(pair.in(language_)); }
    void add(ShortcutGroup& group, ShortcutKind kind, const Text& caption) const {
        if (const Shortcut* found = shortcut_of(kind))
            group.lines.push_back({text(caption), keys_text(*found)});
    }

    Language language_;
    dictionary::Variant variant_;
};

}  // namespace

std::span<const Shortcut> shortcut_table() {
    return kShortcuts;
}

const Shortcut* shortcut_of(ShortcutKind kind, std::string_view name) {
    const auto* found = std::ranges::find_if(kShortcuts, [&](const Shortcut& shortcut) {
        return shortcut.kind == kind && shortcut.name == name;
    });
    return found == kShortcuts.end() ? nullptr : found;
}

std::string window_key(int position) {
    if (position < 0 || position >= kKeyedWindows) return {};
    return "Alt+" + std::to_string(position + 1);
}

std::vector<ShortcutGroup> shortcut_list(Language language, dictionary::Variant variant) {
    const ListMaker maker(language, variant);
    std::vector<ShortcutGroup> groups;
    for (const MenuItem& item : menu_table())
        if (item.parent.empty()) groups.push_back(maker.menu(item));
    groups.push_back(maker.tools());
    groups.push_back(maker.windows());
    groups.push_back(maker.grids());
    groups.push_back(maker.plot());
    std::erase_if(groups, [](const ShortcutGroup& group) { return group.lines.empty(); });
    return groups;
}

}  // namespace servo::app
