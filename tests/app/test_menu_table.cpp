#include "app/menu_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace servo::app {
namespace {

using base::Language;
using dictionary::Variant;

std::string caption(std::string_view item, Language language, Variant variant) {
    const MenuItem* found = find_menu_item(item);
    EXPECT_NE(found, nullptr) << item;
    return found == nullptr ? "" : menu_caption(*found, language, variant);
}

TEST(MenuTable, HoldsEveryItemOnceBehindItsMenu) {
    std::set<std::string_view> seen;
    for (const MenuItem& item : menu_table()) {
        EXPECT_TRUE(seen.insert(item.item).second) << item.item;
        EXPECT_TRUE(item.parent.empty() || seen.contains(item.parent)) << item.item;
    }
    EXPECT_EQ(seen.size(), 62U);
}

TEST(MenuTable, TheMenuBarHasSevenMenus) {
    std::vector<std::string_view> bar;
    for (const MenuItem& item : menu_table())
        if (item.parent.empty()) bar.push_back(item.item);
    EXPECT_EQ(bar, (std::vector<std::string_view>{"file", "Communication", "DirverSettings",
                                                  "MotorSettings", "Tools", "View", "help"}));
}

TEST(MenuTable, MenusHoldItemsAndItemsWithAWindowOpenOne) {
    for (const MenuItem& item : menu_table()) {
        const bool holds = std::ranges::any_of(
            menu_table(), [&](const MenuItem& other) { return other.parent == item.item; });
        EXPECT_EQ(holds, item.kind == MenuKind::kMenu) << item.item;
        EXPECT_EQ(item.window.empty(), item.kind != MenuKind::kOpenPage) << item.item;
    }
}

TEST(MenuTable, CaptionsInBothLanguages) {
    const auto v = Variant::kAllItems;
    EXPECT_EQ(caption("file", Language::kChinese, v), "文件&F");
    EXPECT_EQ(caption("file", Language::kEnglish, v), "&File");
    EXPECT_EQ(caption("RS485X", Language::kChinese, v), "485 配置");
    EXPECT_EQ(caption("RS485X", Language::kEnglish, v), "485 Configuration");
    EXPECT_EQ(caption("tunner", Language::kChinese, v), "整定器/专家模式");
    EXPECT_EQ(caption("F002x", Language::kChinese, v), "A");
    EXPECT_EQ(caption("showminx", Language::kEnglish, v), "Rearrange Min Form");
    EXPECT_EQ(caption("adding", Language::kChinese, v), "添加");
    EXPECT_EQ(caption("pasteline", Language::kEnglish, v), "Paste Row");
}

TEST(MenuTable, TheEnglishWordFollowsTheVariant) {
    struct Pair {
        std::string_view item, driver, controller;
    };
    for (const Pair& pair :
         {Pair{"DirverSettings", "&Driver", "Co&ntroller"},
          Pair{"Driver_Configrations", "Driver Configuration", "Controller Configuration"},
          Pair{"driver_propertyx", "Driver Properties", "Controller Properties"},
          Pair{"import_export", "R/W Driver Configuration", "R/W Controller Configuration"}}) {
        EXPECT_EQ(caption(pair.item, Language::kEnglish, Variant::kAllItems), pair.driver);
        EXPECT_EQ(caption(pair.item, Language::kEnglish, Variant::kReduced), pair.controller);
        EXPECT_EQ(caption(pair.item, Language::kChinese, Variant::kReduced),
                  caption(pair.item, Language::kChinese, Variant::kAllItems));
    }
}

TEST(MenuTable, TheLanguageThatIsOnIsMarked) {
    const auto v = Variant::kAllItems;
    EXPECT_EQ(caption("chinese", Language::kChinese, v), "*中文");
    EXPECT_EQ(caption("English", Language::kChinese, v), "English");
    EXPECT_EQ(caption("chinese", Language::kEnglish, v), "中文");
    EXPECT_EQ(caption("English", Language::kEnglish, v), "*English");
}

TEST(MenuTable, WithAllItemsNothingIsHidden) {
    for (const MenuItem& item : menu_table())
        EXPECT_TRUE(menu_visible(item, Variant::kAllItems)) << item.item;
}

TEST(MenuTable, TheReducedVariantLeavesFiveItemsOut) {
    std::set<std::string_view> hidden;
    for (const MenuItem& item : menu_table())
        if (!menu_visible(item, Variant::kReduced)) hidden.insert(item.item);
    EXPECT_EQ(hidden,
              (std::set<std::string_view>{"reverse", "tunner", "Ecan", "RS485X", "Ptable"}));
}

TEST(MenuTable, TheTitleFollowsTheVariant) {
    EXPECT_EQ(main_title(Variant::kReduced), "ZARN Configurator");
    EXPECT_EQ(main_title(Variant::kAllItems), "QRL Servo");
}

TEST(ToolTable, ButtonsFourAndFiveAreLinkAndFault) {
    ASSERT_EQ(tool_table().size(), 10U);
    EXPECT_EQ(tool_table()[3].key, kLinkTool);
    EXPECT_EQ(tool_table()[3].picture, "Commpic");
    EXPECT_EQ(tool_table()[4].key, kFaultTool);
    EXPECT_EQ(tool_table()[4].picture, "errorgray");
}

TEST(ToolTable, TipsInBothLanguages) {
    std::vector<std::string_view> chinese;
    std::vector<std::string_view> english;
    for (const ToolItem& item : tool_table().first(9)) {
        chinese.push_back(tool_tip(item, Language::kChinese, Variant::kAllItems));
        english.push_back(tool_tip(item, Language::kEnglish, Variant::kReduced));
    }
    EXPECT_EQ(chinese, (std::vector<std::string_view>{"新建", "打开", "保存", "通信设置",
                                                      "故障显示", "数字IO设置", "示波器",
                                                      "写驱动器配置", "读驱动器配置"}));
    EXPECT_EQ(english, (std::vector<std::string_view>{
                           "New", "Open", "Save", "Communication Settings", "Error Display",
                           "Digital IO Functions", "Scope", "Write Settings to Controller",
                           "Read Settings from Controller"}));
}

TEST(ToolTable, EachButtonForAMenuItemNamesOneThatExists) {
    for (const ToolItem& item : tool_table()) {
        if (item.kind == ToolKind::kMenuItem) {
            EXPECT_NE(find_menu_item(item.item), nullptr) << item.key;
        }
    }
}

}  // namespace
}  // namespace servo::app
