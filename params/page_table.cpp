#include "params/page_table.h"

#include <algorithm>

#include "base/ascii.h"

namespace servo::params {

namespace {

constexpr base::Text same(std::string_view text) {
    return {text, text};
}

constexpr PageDefinition page(std::string_view name, base::Text caption, std::string_view file,
                              int load_order) {
    return {name, caption, caption, file, load_order};
}

}  // namespace

// Misspellings are what the windows are called.
constexpr std::array<PageDefinition, kPages> kPageTable{{
    page("Basic", {"基本操作", "Basic Operation"}, R"(\sys\BasicOperate.ini)", 0),
    page("PLoop", {"位置环", "Position Loop"}, R"(\sys\PositionLoop.ini)", 1),
    page("VLoop", {"速度环", "Velocity Loop"}, R"(\sys\VelocityLoop.ini)", 2),
    page("CLoop", {"电流环", "Current Loop"}, R"(\sys\CurrentLoop.ini)", 7),
    page("PD_MODE", {"脉冲模式", "Pulse Mode"}, R"(\sys\PulseMode.ini)", 19),
    page("AN_SPEED", {"模拟速度模式", "Analog Speed Mode"}, R"(\sys\AnalogVelocityMode.ini)", 4),
    page("AN_Torque", {"模拟力矩模式", "Analog Torque Mode"}, R"(\sys\AnalogTorqueMode.ini)", 3),
    page("Pos_Table", {"DIN位置模式", "DIN Position Mode"}, R"(\sys\MultiPositionMode.ini)", 17),
    page("Speed_Table", {"DIN速度模式", "DIN Speed Mode"}, R"(\sys\MultiVelocityMode.ini)", 18),
    page("Homing", {"原点模式设置", "Homing Mode"}, R"(\sys\HomingMode.ini)", 15),
    page("AutoTuning", {"自整定", "Auto Tuning"}, R"(\sys\AutoTuning.ini)", 6),
    page("Auto_Reverse", {"自动翻转", "Auto Reverse"}, R"(\sys\AutoReverse.ini)", 5),
    {"Driver_CFG",
     {"驱动器配置", "Driver Configuration"},
     {"驱动器配置", "Controller Configration"},
     R"(\sys\DriverConfig.ini)",
     8},
    {"Driver_Property",
     {"驱动器属性", "Driver Properties"},
     {"驱动器属性", "Controller Property"},
     R"(\sys\DriverProperty.ini)",
     9},
    page("F000", same("Control Command Setting(F000)"), R"(\sys\F000.ini)", 10),
    page("F002", same("Control Loop Setting(F002)"), R"(\sys\F002.ini)", 11),
    page("F003", same("DI/DO & Operation Mode Setting(F003)"), R"(\sys\F003.ini)", 12),
    page("F004", same("Motor Setting(F004)"), R"(\sys\F004.ini)", 13),
    page("F005", same("Controller Setting(F005)"), R"(\sys\F005.ini)", 14),
    page("Motor", {"电机配置", "Motor Settings"}, R"(\sys\MotorConfig.ini)", 16),
    page("ErrorHistory", {"历史故障", "Error History"}, R"(\sys\ErrorHistory.ini)", 20),
    page("ECANset", same("ECAN Settings"), R"(\sys\PdoOther.ini)", 21),
}};

std::array<std::size_t, kPages> pages_in_load_order() {
    std::array<std::size_t, kPages> order{};
    for (std::size_t i = 0; i < kPages; ++i) {
        order.at(static_cast<std::size_t>(kPageTable.at(i).load_order)) = i;
    }
    return order;
}

const PageDefinition* find_page_definition(std::string_view name) {
    const auto* found = std::ranges::find_if(
        kPageTable, [&](const PageDefinition& page) { return base::same_name(page.name, name); });
    return found == kPageTable.end() ? nullptr : found;
}

}  // namespace servo::params
