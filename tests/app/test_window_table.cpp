#include "app/window_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "app/fixed_texts.h"
#include "app/menu_table.h"
#include "app/tag_text.h"
#include "link/engine_state.h"
#include "params/page_table.h"

namespace servo::app {
namespace {

using base::Language;
using dictionary::Variant;

std::string caption(std::string_view name, Language language,
                    Variant variant = Variant::kAllItems) {
    const WindowDefinition* found = find_window_definition(name);
    EXPECT_NE(found, nullptr) << name;
    return found == nullptr ? "" : std::string(caption_of(*found, language, variant));
}

TEST(WindowTable, HoldsAllFortyWindowsInTheirOrder) {
    ASSERT_EQ(window_table().size(), 40U);
    for (std::size_t i = 0; i < window_table().size(); ++i)
        EXPECT_EQ(window_table()[i].name, link::kAllWindowNames.at(i));
}

TEST(WindowTable, TwentyTwoArePagesWithTheirCaptionsFromThePageTable) {
    std::size_t pages = 0;
    for (const WindowDefinition& window : window_table()) {
        const params::PageDefinition* page = params::find_page_definition(window.name);
        EXPECT_EQ(window.page, page != nullptr) << window.name;
        if (page == nullptr) continue;
        ++pages;
        for (const auto variant : {Variant::kAllItems, Variant::kReduced})
            for (const auto language : {Language::kChinese, Language::kEnglish})
                EXPECT_EQ(caption_of(window, language, variant),
                          page->caption_of(variant).in(language));
    }
    EXPECT_EQ(pages, params::kPages);
}

TEST(WindowTable, CaptionsOfTheOtherWindowsInBothLanguages) {
    struct Told {
        std::string_view name, chinese, english;
    };
    for (const Told& told :
         {Told{"DigitalIO", "数字IO设置", "Digital IO Functions"},
          Told{"Download", "固件下载", "Load Firmware"},
          Told{"Errors", "故障显示", "Error Display"},
          Told{"Form1", "通信设置", "Communication Settings"},
          Told{"InitSave", "初始化 保存 重启", "Init Save Reboot"},
          Told{"ObjectDictionay", "对象字典", "Object Dictionary"},
          Told{"Scope", "示波器", "Scope"},
          Told{"imexport", "读写驱动器配置", "R/W Driver Configuration"},
          Told{"PosFlow", "位置表模式", "Position Table Mode"},
          Told{"Homing2", "原点定义", "Homing Definition"}, Told{"About", "关于", "About"},
          Told{"TPDOSet", "TPDO", "TPDO"}, Told{"RPDOSet", "RPDO", "RPDO"},
          Told{"RS485", "RS485配置", "485 Configuration"},
          Told{"ADVtunner", "整定器/专家模式", "Advanced Tuner"},
          Told{"EASY1", "快速设置", "EASY Setup Wizard"},
          Told{"Motorcodes", "更多电机", "More Motors"},
          Told{"modbus", "ModBus列表", "ModBusList"}}) {
        EXPECT_EQ(caption(told.name, Language::kChinese), told.chinese);
        EXPECT_EQ(caption(told.name, Language::kEnglish), told.english);
    }
}

TEST(WindowTable, TheReducedProductHasThreeCaptionsOfItsOwn) {
    std::set<std::string_view> differing;
    for (const WindowDefinition& window : window_table()) {
        EXPECT_EQ(caption_of(window, Language::kChinese, Variant::kAllItems),
                  caption_of(window, Language::kChinese, Variant::kReduced));
        if (caption_of(window, Language::kEnglish, Variant::kAllItems) !=
            caption_of(window, Language::kEnglish, Variant::kReduced))
            differing.insert(window.name);
    }
    EXPECT_EQ(differing, (std::set<std::string_view>{"Driver_CFG", "Driver_Property", "imexport"}));
    EXPECT_EQ(caption("Driver_CFG", Language::kEnglish, Variant::kReduced),
              "Controller Configration");
    EXPECT_EQ(caption("Driver_Property", Language::kEnglish, Variant::kReduced),
              "Controller Property");
    EXPECT_EQ(caption("imexport", Language::kEnglish, Variant::kReduced),
              "R/W Controller Configuration");
}

// A slash in a half would be taken for the end of the half.
TEST(WindowTable, NoTagHasMoreThanTwoHalves) {
    for (const WindowDefinition& window : window_table()) {
        if (window.tag.empty()) continue;
        const std::string_view tag = window.tag.substr(0, window.tag.find('\\'));
        EXPECT_LE(std::count(tag.begin(), tag.end(), '/'), 1) << window.name;
        EXPECT_TRUE(window.designed.english.empty()) << window.name;
    }
}

TEST(WindowTable, TheThirdSlotShowsTheFirstText) {
    for (const WindowDefinition& window : window_table())
        EXPECT_EQ(caption_of(window, 2, Variant::kAllItems),
                  caption_of(window, 0, Variant::kAllItems))
            << window.name;
}

TEST(WindowTable, TheCustomWindowsAreThreePolledOnesWithoutAGrid) {
    std::set<std::string_view> custom;
    for (const WindowDefinition& window : window_table())
        if (is_custom(window)) custom.insert(window.name);
    EXPECT_EQ(custom, (std::set<std::string_view>{"Homing2", "PosFlow", "RS485"}));
}

TEST(WindowTable, EightWindowsKeepTheirDesignedFont) {
    std::set<std::string_view> designed;
    for (const WindowDefinition& window : window_table())
        if (window.designed_font) designed.insert(window.name);
    // The main window, the ninth, is none of the list.
    EXPECT_EQ(designed,
              (std::set<std::string_view>{"About", "ObjectDictionay", "ADVtunner", "Errors",
                                          "DigitalIO", "Homing2", "RS485", "Scope"}));
}

TEST(WindowTable, EveryPageItemOfTheMenuLeadsToAWindowOfTheTable) {
    for (const MenuItem& item : menu_table()) {
        if (item.kind != MenuKind::kOpenPage) continue;
        EXPECT_NE(find_window_definition(item.window), nullptr) << item.item;
    }
}

TEST(WindowTable, NamesAreFoundWithoutRegardToCase) {
    ASSERT_NE(find_window_definition("ECANSet"), nullptr);
    EXPECT_EQ(find_window_definition("ECANSet")->name, "ECANset");
    EXPECT_EQ(find_window_definition("Nothing"), nullptr);
    EXPECT_EQ(find_window_definition(""), nullptr);
}

TEST(FixedTexts, TheTwoButtonsOfTheConfigurationWindowFollowTheVariant) {
    const auto text = [](const char* control, Language language, Variant variant) {
        return fixed_button_text("imexport", control, language, variant).value_or("none");
    };
    const auto all = Variant::kAllItems;
    const auto reduced = Variant::kReduced;
    EXPECT_EQ(text("Command2", Language::kChinese, all), "写驱动器配置");
    EXPECT_EQ(text("Command7", Language::kChinese, all), "读驱动器配置");
    EXPECT_EQ(text("Command2", Language::kChinese, reduced), "写驱动器配置");
    EXPECT_EQ(text("Command7", Language::kChinese, reduced), "读驱动器配置");
    EXPECT_EQ(text("Command2", Language::kEnglish, all), "Write Settings to Driver");
    EXPECT_EQ(text("Command7", Language::kEnglish, all), "Read Settings from Driver");
    EXPECT_EQ(text("Command2", Language::kEnglish, reduced), "Write Settings to Controller");
    EXPECT_EQ(text("Command7", Language::kEnglish, reduced), "Read Settings from Controller");
}

TEST(FixedTexts, OtherButtonsHaveNone) {
    EXPECT_FALSE(fixed_button_text("imexport", "Command1", Language::kEnglish, Variant::kAllItems));
    EXPECT_FALSE(fixed_button_text("InitSave", "Command2", Language::kEnglish, Variant::kAllItems));
}

TEST(FixedTexts, ListsAndHeadingsInBothLanguages) {
    std::vector<std::string> chinese;
    std::vector<std::string> english;
    for (const FixedItem& item : fixed_items()) {
        const std::string place = std::string(item.window) + "." + std::string(item.control) + "[" +
                                  std::to_string(item.position) + "]=";
        chinese.push_back(place + std::string(item.text.chinese));
        english.push_back(place + std::string(item.text.english));
    }
    EXPECT_EQ(chinese,
              (std::vector<std::string>{
                  "PosFlow.Combo2[0]=忽略", "PosFlow.Combo2[1]=等待", "PosFlow.Combo2[2]=中断",
                  "Homing2.Combo1[0]=0:运行到 原点-偏移", "Homing2.Combo1[1]=1:运行到触发位置"}));
    EXPECT_EQ(english, (std::vector<std::string>{
                           "PosFlow.Combo2[0]=Ignore", "PosFlow.Combo2[1]=Wait",
                           "PosFlow.Combo2[2]=Interrupt", "Homing2.Combo1[0]=0:Run to Home -Offset",
                           "Homing2.Combo1[1]=1:Run to Trig position"}));
    EXPECT_EQ(kReservedFunction.chinese, "保留");
    EXPECT_EQ(kReservedFunction.english, "Reserved");
    EXPECT_EQ(kRegisterHeading.chinese, "控制寄存器:");
    EXPECT_EQ(kRegisterHeading.english, "CTL Reg of index:");
}

}  // namespace
}  // namespace servo::app
