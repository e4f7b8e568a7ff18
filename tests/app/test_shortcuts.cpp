#include "app/shortcuts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>

#include "app/first_steps.h"
#include "app/menu_hints.h"
#include "app/menu_table.h"
#include "app/window_entries.h"

namespace servo::app {
namespace {

using base::Language;
using dictionary::Variant;

std::vector<std::string> all_keys() {
    std::vector<std::string> keys;
    for (const Shortcut& shortcut : shortcut_table())
        for (const std::string_view key : shortcut.keys)
            if (!key.empty()) keys.emplace_back(key);
    for (int i = 0; i < 9; ++i)
        keys.push_back(window_key(i));
    return keys;
}

TEST(Shortcuts, EachNamesAnItemOrAToolThatExists) {
    for (const Shortcut& shortcut : shortcut_table()) {
        EXPECT_FALSE(shortcut.keys[0].empty()) << shortcut.name;
        if (shortcut.kind == ShortcutKind::kMenuItem) {
            const MenuItem* item = find_menu_item(shortcut.name);
            ASSERT_NE(item, nullptr) << shortcut.name;
            EXPECT_NE(item->kind, MenuKind::kMenu) << shortcut.name;
        } else if (shortcut.kind == ShortcutKind::kTool) {
            EXPECT_NE(std::ranges::find(tool_table(), shortcut.name, &ToolItem::key),
                      tool_table().end())
                << shortcut.name;
        }
    }
}

TEST(Shortcuts, NoKeyIsThereTwice) {
    std::set<std::string> seen;
    for (const std::string& key : all_keys())
        EXPECT_TRUE(seen.insert(key).second) << key;
}

TEST(Shortcuts, KeysOfGridsAndEditorsAreLeftAlone) {
    const std::set<std::string> taken{
        "Return",   "Enter",        "Esc",          "F2",        "F4",        "F10",    "Shift+F10",
        "Space",    "Tab",          "Del",          "Ins",       "Backspace", "Home",   "End",
        "Up",       "Down",         "Left",         "Right",     "PgUp",      "PgDown", "Ctrl+A",
        "Ctrl+C",   "Ctrl+V",       "Ctrl+X",       "Ctrl+Y",    "Ctrl+Z",    "Ctrl+F", "Ctrl+H",
        "Ctrl+I",   "Ctrl+J",       "Ctrl+K",       "Ctrl+M",    "Ctrl+U",    "Ctrl+P", "Ctrl+Home",
        "Ctrl+End", "Ctrl+Shift+Z", "Ctrl+Shift+A", "Ctrl+Space"};
    for (const std::string& key : all_keys())
        EXPECT_FALSE(taken.contains(key)) << key;
}

TEST(Shortcuts, AltBelongsToTheMenusOfBothLanguages) {
    std::set<char> access;
    for (const MenuItem& item : menu_table())
        if (item.parent.empty())
            for (const Language language : {Language::kChinese, Language::kEnglish})
                for (const Variant variant : {Variant::kReduced, Variant::kAllItems}) {
                    const std::string caption = menu_caption(item, language, variant);
                    const auto mark = caption.find('&');
                    ASSERT_NE(mark, std::string::npos) << caption;
                    access.insert(static_cast<char>(
                        std::toupper(static_cast<unsigned char>(caption[mark + 1]))));
                }
    for (const std::string& key : all_keys()) {
        if (!key.starts_with("Alt+")) continue;
        EXPECT_FALSE(access.contains(key.back())) << key;
        EXPECT_TRUE(std::isdigit(static_cast<unsigned char>(key.back()))) << key;
    }
}

TEST(Shortcuts, EveryPlainKeyIsAFunctionKey) {
    for (const std::string& key : all_keys())
        EXPECT_TRUE(key[0] == 'F' || key.starts_with("Ctrl+") || key.starts_with("Alt+") ||
                    key.starts_with("Shift+F"))
            << key;
}

TEST(Shortcuts, TheFirstNineWindowsHaveAKey) {
    EXPECT_EQ(window_key(0), "Alt+1");
    EXPECT_EQ(window_key(8), "Alt+9");
    EXPECT_EQ(window_key(9), "");
    EXPECT_EQ(window_key(-1), "");
}

const ShortcutLine* line_of(const std::vector<ShortcutGroup>& groups, const std::string& title,
                            const std::string& command) {
    for (const ShortcutGroup& group : groups)
        if (group.title == title)
            for (const ShortcutLine& line : group.lines)
                if (line.command == command) return &line;
    return nullptr;
}

TEST(ShortcutList, IsGroupedByMenuInBothLanguages) {
    const auto english = shortcut_list(Language::kEnglish, Variant::kAllItems);
    ASSERT_FALSE(english.empty());
    EXPECT_EQ(english.front().title, "File");
    const ShortcutLine* save = line_of(english, "File", "Save");
    ASSERT_NE(save, nullptr);
    EXPECT_EQ(save->keys, "Ctrl+S");
    ASSERT_NE(line_of(english, "Driver", "Position Loop"), nullptr);  // two menus deep
    ASSERT_NE(line_of(english, "Windows", "Next Window"), nullptr);
    EXPECT_EQ(line_of(english, "Windows", "Next Window")->keys, "Ctrl+Tab, Ctrl+F6");
    ASSERT_NE(line_of(english, "Toolbar", "Connect or disconnect"), nullptr);
    ASSERT_NE(line_of(english, "Help", "Keyboard Shortcuts"), nullptr);
    const auto chinese = shortcut_list(Language::kChinese, Variant::kAllItems);
    ASSERT_NE(line_of(chinese, "文件", "保存"), nullptr);
    ASSERT_NE(line_of(chinese, "帮助", "键盘快捷键"), nullptr);
}

TEST(ShortcutList, TellsTheKeysOfThePlot) {
    const auto english = shortcut_list(Language::kEnglish, Variant::kAllItems);
    ASSERT_NE(line_of(english, "Plot of the scope", "Start or stop"), nullptr);
    EXPECT_EQ(line_of(english, "Plot of the scope", "Start or stop")->keys, "Space");
    const auto chinese = shortcut_list(Language::kChinese, Variant::kAllItems);
    ASSERT_NE(line_of(chinese, "示波器曲线图", "开始或停止"), nullptr);
}

TEST(ShortcutList, HoldsEveryKeyOfTheTable) {
    std::string text;
    for (const ShortcutGroup& group : shortcut_list(Language::kEnglish, Variant::kAllItems))
        for (const ShortcutLine& line : group.lines) {
            EXPECT_FALSE(line.command.empty());
            text += " " + line.keys + ",";
        }
    for (const Shortcut& shortcut : shortcut_table())
        for (const std::string_view key : shortcut.keys)
            if (!key.empty()) {
                EXPECT_NE(text.find(" " + std::string(key) + ","), std::string::npos) << key;
            }
}

TEST(ShortcutList, TheReducedVariantHasItsWordsAndLeavesHiddenItemsOut) {
    const auto list = shortcut_list(Language::kEnglish, Variant::kReduced);
    EXPECT_EQ(line_of(list, "Controller", "Advanced Tuner"), nullptr);
    EXPECT_NE(line_of(list, "Controller", "Controller Configuration"), nullptr);
    EXPECT_NE(line_of(list, "Toolbar", "Write Settings to Controller"), nullptr);
}

TEST(MenuHints, EveryItemThatDoesSomethingHasOneInBothLanguages) {
    for (const MenuItem& item : menu_table()) {
        const bool acts = item.kind != MenuKind::kMenu && item.kind != MenuKind::kNothing;
        for (const Language language : {Language::kChinese, Language::kEnglish})
            EXPECT_EQ(!menu_hint(item.item, language, Variant::kAllItems).empty(), acts)
                << item.item;
    }
    EXPECT_EQ(menu_hint("Download_Tool", Language::kEnglish, Variant::kReduced),
              "Load firmware into the controller");
    EXPECT_EQ(menu_hint("nothing", Language::kEnglish, Variant::kAllItems), "");
}

TEST(FirstSteps, NameKeysThatTheTableHas) {
    for (const Language language : {Language::kChinese, Language::kEnglish}) {
        std::string text;
        for (const bool open : {false, true})
            for (const std::string_view line :
                 first_steps(language, Variant::kAllItems, open).lines)
                text += std::string(line) + "\n";
        EXPECT_EQ(shortcut_of(ShortcutKind::kMenuItem, "Communication_Settings")->keys[0],
                  "Ctrl+F5");
        EXPECT_EQ(shortcut_of(ShortcutKind::kMenuItem, "Basic_Operation")->keys[0], "Ctrl+B");
        EXPECT_EQ(shortcut_of(ShortcutKind::kMenuItem, "Real_time_error")->keys[0], "F8");
        EXPECT_EQ(shortcut_of(ShortcutKind::kMenuItem, "Scopex")->keys[0], "F7");
        for (const char* key : {"Ctrl+F5", "Ctrl+B", "F8", "F7", "F1"})
            EXPECT_NE(text.find(key), std::string::npos) << key;
    }
}

TEST(WindowEntries, HaveNumbersAndShowEveryCharacter) {
    EXPECT_EQ(entry_text(0, "Basic Operation"), "&1 Basic Operation");
    EXPECT_EQ(entry_text(8, "x"), "&9 x");
    EXPECT_EQ(entry_text(9, "x"), "x");
    EXPECT_EQ(entry_text(1, "DI/DO & Operation"), "&2 DI/DO && Operation");
}

TEST(WindowEntries, TheNextOneGoesRoundAndPassesMinimisedOnes) {
    EXPECT_EQ(next_window({}, true), -1);
    const std::vector<OpenWindow> three{
        {"a", "", false, false}, {"b", "", true, false}, {"c", "", false, false}};
    EXPECT_EQ(next_window(three, true), 2);
    EXPECT_EQ(next_window(three, false), 0);
    const std::vector<OpenWindow> last{{"a", "", false, false}, {"b", "", true, false}};
    EXPECT_EQ(next_window(last, true), 0);
    const std::vector<OpenWindow> small{
        {"a", "", true, false}, {"b", "", false, true}, {"c", "", false, false}};
    EXPECT_EQ(next_window(small, true), 2);
    const std::vector<OpenWindow> none{{"a", "", false, false}, {"b", "", false, false}};
    EXPECT_EQ(next_window(none, true), 0);
    EXPECT_EQ(next_window(none, false), 1);
    const std::vector<OpenWindow> all_small{{"a", "", true, true}, {"b", "", false, true}};
    EXPECT_EQ(next_window(all_small, true), 1);
}

}  // namespace
}  // namespace servo::app
