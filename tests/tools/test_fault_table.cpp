// The texts of the 32 faults.
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "tools/fault_table.h"

namespace servo::tools {
namespace {

using base::Language;
using dictionary::Variant;

constexpr std::array<std::string_view, kFaultBits> kToldChinese{"扩展错误",
                                                                "编码器ABZ故障或通信故障",
                                                                "编码器UVW故障或内部故障",
                                                                "编码器计数错误或CRC错误",
                                                                "Driver Over Temperature",
                                                                "驱动器总线电压过高",
                                                                "驱动器总线电压过低",
                                                                "驱动器输出短路",
                                                                "驱动器制动电阻异常",
                                                                "实际跟踪误差超过允许",
                                                                "逻辑电压",
                                                                "I^2*T故障",
                                                                "输入脉冲频率过高",
                                                                "电机温度过高",
                                                                "电机励磁或编码器信息错误",
                                                                "EEPROM内部错误",
                                                                "主编码器计数错误",
                                                                "主编码器ABZ故障",
                                                                "全闭环故障",
                                                                "CAN总线故障",
                                                                "SPI故障",
                                                                "负限位报错",
                                                                "正限位报错",
                                                                "预使能报警",
                                                                "STO2 Error",
                                                                "STO1 Error",
                                                                "逻辑输出故障",
                                                                "电机配置错误",
                                                                "MCU故障",
                                                                "异常中断",
                                                                "看门狗报错",
                                                                "电流传感器故障"};

TEST(FaultTable, CaptionsAreTheTold) {
    for (int fault = 0; fault < kFaultBits; ++fault)
        EXPECT_EQ(fault_caption(fault, Variant::kAllItems).chinese,
                  kToldChinese[static_cast<std::size_t>(fault)]);
}

TEST(FaultTable, ThreeEnglishCaptionsHaveTwoLines) {
    EXPECT_EQ(fault_caption(2, Variant::kAllItems).english, "Encoder UVW or Encoder\ninternal");
    EXPECT_EQ(fault_caption(3, Variant::kAllItems).english, "Encoder counting or Encoder\n CRC");
    EXPECT_EQ(fault_caption(14, Variant::kAllItems).english,
              "Motor Commutation or Encoder\n information");
    EXPECT_EQ(fault_caption_line(2, Variant::kAllItems, Language::kEnglish),
              "Encoder UVW or Encoder internal");
    EXPECT_EQ(fault_caption_line(3, Variant::kAllItems, Language::kEnglish),
              "Encoder counting or Encoder CRC");
}

TEST(FaultTable, TheReducedProductHasSixCaptionsOfItsOwn) {
    const std::map<int, std::pair<std::string, std::string>> told{
        {1, {"编码器未连接", "Encoder not connected"}},
        {2, {"编码器内部故障", "Encoder internal"}},
        {3, {"编码器CRC故障", "Encoder CRC"}},
        {4, {"驱动器温度过高", "Controller Temperature"}},
        {11, {"电机或控制器IIt故障", "Motor or Controller IIt"}},
        {14, {"编码器信息错误", "Encoder information"}}};
    for (int fault = 0; fault < kFaultBits; ++fault) {
        const base::Text caption = fault_caption(fault, Variant::kReduced);
        if (const auto found = told.find(fault); found != told.end()) {
            EXPECT_EQ(caption.chinese, found->second.first);
            EXPECT_EQ(caption.english, found->second.second);
        } else {
            EXPECT_EQ(caption.chinese, fault_caption(fault, Variant::kAllItems).chinese);
        }
    }
}

TEST(FaultTable, EveryFaultHasCauseAndRemedyInBothLanguages) {
    for (const Fault& fault : fault_table())
        for (const base::Text& text : {fault.caption, fault.cause, fault.remedy}) {
            EXPECT_FALSE(text.chinese.empty());
            EXPECT_FALSE(text.english.empty());
            EXPECT_EQ(text.english.find('/'), std::string_view::npos)
                << "a slash would end it: " << text.english;
            EXPECT_EQ(text.chinese.find('/'), std::string_view::npos) << text.chinese;
        }
}

TEST(FaultTable, BothLanguagesNameTheSameObjects) {
    const std::regex object("[0-9A-F]{4}(:[0-9A-F]{2})?");
    const auto objects_in = [&object](std::string_view view) {
        const std::string text(view);
        std::vector<std::string> found;
        for (std::sregex_iterator at(text.begin(), text.end(), object), end; at != end; ++at)
            found.push_back(at->str());
        return found;
    };
    for (const Fault& fault : fault_table()) {
        EXPECT_EQ(objects_in(fault.cause.chinese), objects_in(fault.cause.english));
        EXPECT_EQ(objects_in(fault.remedy.chinese), objects_in(fault.remedy.english));
    }
}

TEST(FaultTable, ABitsPlaceAndMaskFollowFromItsNumber) {
    EXPECT_EQ(word_of(15), 1);
    EXPECT_EQ(word_of(16), 2);
    EXPECT_EQ(bit_of(16), 0);
    EXPECT_EQ(fault_mask(31), 0x8000);
    EXPECT_EQ(fault_mask_text(26), "0400");
}

}  // namespace
}  // namespace servo::tools
