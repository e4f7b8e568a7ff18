#include "cli/drive_texts.h"

#include <array>

namespace servo::cli {
namespace {

using base::Text;

constexpr std::array<Text, 16> kWord1{{
    {"扩展错误", "Extended error"},
    {"编码器ABZ故障或通信故障", "Encoder ABZ or encoder communication"},
    {"编码器UVW故障或内部故障", "Encoder UVW or encoder internal"},
    {"编码器计数错误或CRC错误", "Encoder counting or encoder CRC"},
    {"驱动器温度过高", "Driver over temperature"},
    {"驱动器总线电压过高", "Bus voltage too high"},
    {"驱动器总线电压过低", "Bus voltage too low"},
    {"驱动器输出短路", "Output short circuit"},
    {"驱动器制动电阻异常", "Brake resistor"},
    {"实际跟踪误差超过允许", "Following error"},
    {"逻辑电压", "Logic voltage"},
    {"I^2*T故障", "I^2*T"},
    {"输入脉冲频率过高", "Input pulse frequency too high"},
    {"电机温度过高", "Motor over temperature"},
    {"电机励磁或编码器信息错误", "Motor commutation or encoder information"},
    {"EEPROM内部错误", "EEPROM internal"},
}};

constexpr std::array<Text, 16> kWord2{{
    {"主编码器计数错误", "Main encoder counting"},
    {"主编码器ABZ故障", "Main encoder ABZ"},
    {"全闭环故障", "Full closed loop"},
    {"CAN总线故障", "CAN bus"},
    {"SPI故障", "SPI"},
    {"负限位报错", "Negative limit switch"},
    {"正限位报错", "Positive limit switch"},
    {"预使能报警", "Pre-enable alarm"},
    {"STO2 故障", "STO2 error"},
    {"STO1 故障", "STO1 error"},
    {"逻辑输出故障", "Logic output"},
    {"电机配置错误", "Motor configuration"},
    {"MCU故障", "MCU"},
    {"异常中断", "Unexpected interrupt"},
    {"看门狗报错", "Watchdog"},
    {"电流传感器故障", "Current sensor"},
}};

}  // namespace

std::string_view fault_text(int word, int bit, base::Language language) {
    if (bit < 0 || bit > 15) return {};
    const auto& texts = word == 1 ? kWord1 : kWord2;
    return texts[static_cast<std::size_t>(bit)].in(language);
}

}  // namespace servo::cli
