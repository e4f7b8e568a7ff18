#include "tools/easy.h"

namespace servo::tools::easy {

namespace {

constexpr std::array<Method, kMethods> kMethodTable{{
    {"Pulse", {"Frame2", "脉冲控制,工作模式配置为:-4/Pulse control,Operation mode:-4"}},
    {"Analog Speed",
     {"Frame4", "模拟速度控制,工作模式配置为:-3/Analog speed control,Operation mode:-3"}},
    {"Communication",
     {"Frame3", "通信控制,工作模式配置为:0/Communication control,Operation mode:0"}},
    {"Position Table",
     {"Frame9", "位置表控制,工作模式配置为:1/Position table control,Operation mode:1"}},
}};

constexpr std::array<std::string_view, 3> kPulseTypes{"CW/CCW", "PD", "A/B"};
constexpr std::array<std::string_view, 2> kAnalogChannels{"AIN1", "AIN2"};

constexpr std::array<Box, kPulseBoxes> kPulseBoxTable{{
    {"Text2", "1000", "LabelB", "电子齿轮分子/Gear Numerator ", {}},
    {"Text3", "1000", "LabelC", "电子齿轮分母/Gear Denominator", {}},
    {"Text4",
     "10000",
     "LabelF",
     "脉冲个数对应电机旋转一圈/Pulse numbers correspond to 1 revolution of motor",
     {}},
    {"Text5", "200", "LabelG", "脉冲频率/Pulse Frequency", "KHz"},
    {"Text6", "3000", "LabelI", "对应电机转速/Correspond to Motor speed", "rpm"},
}};

constexpr int kInputs = 7;

}  // namespace

std::span<const Method, kMethods> methods() {
    return kMethodTable;
}

std::span<const std::string_view> pulse_types() {
    return kPulseTypes;
}

std::span<const std::string_view> analog_channels() {
    return kAnalogChannels;
}

std::span<const Box, kPulseBoxes> pulse_boxes() {
    return kPulseBoxTable;
}

std::string pin_text(int row) {
    return row < kInputs ? "Din" + std::to_string(row + 1)
                         : "Dout" + std::to_string(row - kInputs + 1);
}

std::string_view note() {
    return "本页只作说明：不读取驱动器，也不写入驱动器。实际设置请用“电机配置”、“控制模式”和“数字IO"
           "设置”。"
           "/This page is a guide only: it reads nothing from the drive and writes nothing to it. "
           "The real settings are under Motor Settings, Control Modes and Digital IO Functions.";
}

base::Text button_tip() {
    return {"此按钮没有动作：本页只作说明", "This button has no action: the page is a guide only"};
}

}  // namespace servo::tools::easy
