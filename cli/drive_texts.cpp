#include "cli/drive_texts.h"

#include <fmt/format.h>

#include <array>

namespace servo::cli {
namespace {

using base::Text;

struct AbortEntry {
    std::uint32_t code;
    Text text;
};

// The codes of CiA 301 that an expedited or segmented access can meet.
constexpr std::array kAborts{
    AbortEntry{0x05030000, {"翻转位未交替", "the toggle bit did not alternate"}},
    AbortEntry{0x05040000, {"协议超时", "the protocol timed out"}},
    AbortEntry{0x05040001, {"命令字无效", "an unknown command"}},
    AbortEntry{0x05040005, {"内存不足", "out of memory"}},
    AbortEntry{0x06010000, {"不支持的访问", "an access that the object does not support"}},
    AbortEntry{0x06010001, {"只写对象", "a write-only object"}},
    AbortEntry{0x06010002, {"只读对象", "a read-only object"}},
    AbortEntry{0x06020000, {"对象不存在", "the drive has no such object"}},
    AbortEntry{0x06040041, {"对象不能映射到PDO", "the object cannot be mapped to a PDO"}},
    AbortEntry{0x06040042, {"PDO长度超限", "the PDO would be too long"}},
    AbortEntry{0x06040043, {"参数不兼容", "the parameter does not fit here"}},
    AbortEntry{0x06040047, {"设备内部不兼容", "an internal incompatibility"}},
    AbortEntry{0x06060000, {"硬件错误", "a hardware error"}},
    AbortEntry{0x06070010, {"长度不符", "the length does not fit the object"}},
    AbortEntry{0x06070012, {"长度过长", "the data are too long"}},
    AbortEntry{0x06070013, {"长度过短", "the data are too short"}},
    AbortEntry{0x06090011, {"子索引不存在", "the object has no such sub-index"}},
    AbortEntry{0x06090030, {"数值超出范围", "the value is out of range"}},
    AbortEntry{0x06090031, {"数值过大", "the value is too high"}},
    AbortEntry{0x06090032, {"数值过小", "the value is too low"}},
    AbortEntry{0x06090036, {"最大值小于最小值", "the maximum is below the minimum"}},
    AbortEntry{0x08000000, {"一般错误", "a general error"}},
    AbortEntry{0x08000020, {"数据无法保存", "the data cannot be stored"}},
    AbortEntry{0x08000021, {"本地控制中", "local control forbids it"}},
    AbortEntry{0x08000022, {"当前状态不允许", "the present state of the drive forbids it"}},
};

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

std::string abort_text(std::uint32_t code, base::Language language) {
    for (const AbortEntry& entry : kAborts) {
        if (entry.code == code) return fmt::format("0x{:08X}, {}", code, entry.text.in(language));
    }
    return fmt::format("0x{:08X}", code);
}

std::string_view fault_text(int word, int bit, base::Language language) {
    if (bit < 0 || bit > 15) return {};
    const auto& texts = word == 1 ? kWord1 : kWord2;
    return texts[static_cast<std::size_t>(bit)].in(language);
}

}  // namespace servo::cli
