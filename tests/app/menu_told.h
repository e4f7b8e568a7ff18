// The menu bar, the pop-up menu and the toolbar as they are promised to the user, written out by
// hand. Nothing here comes from the program's own tables; the tests hold these against both those
// tables and the menus on screen.
#pragma once

#include <array>
#include <string_view>

namespace servo::app::test {

struct ToldItem {
    std::string_view item;
    std::string_view menu;  // that holds it; empty for the menu bar
    std::string_view chinese;
    std::string_view english;
    // "menu"; "window" with the window; or the name of another command.
    std::string_view action;
    std::string_view window = {};
    std::string_view reduced = {};  // English of the reduced product, where it differs
    bool gone_when_reduced = false;
};

inline constexpr std::array<ToldItem, 62> kToldMenu{{
    {"file", "", "文件&F", "&File", "menu"},
    {"new1", "file", "新建", "New", "new"},
    {"open1", "file", "打开", "Open", "open"},
    {"save1", "file", "保存", "Save", "save"},
    {"quit1", "file", "退出", "Quit", "quit"},
    {"Communication", "", "通信&C", "&Communication", "menu"},
    {"Communication_Channel", "Communication", "通信通道", "Communication Channel", "nothing"},
    {"Communication_Settings", "Communication", "通信设置", "Communication Settings", "dialog",
     "Form1"},
    {"DirverSettings", "", "驱动器&D", "&Driver", "menu", "", "Co&ntroller"},
    {"Basic_Operation", "DirverSettings", "基本操作", "Basic Operation", "window", "Basic"},
    {"Control_Loops", "DirverSettings", "控制环", "Control Loops", "menu"},
    {"PosLoop", "Control_Loops", "位置环", "Position Loop", "window", "PLoop"},
    {"SPDLoop", "Control_Loops", "速度环", "Velocity Loop", "window", "VLoop"},
    {"CurLoop", "Control_Loops", "电流环", "Current Loop", "window", "CLoop"},
    {"IO_Port_settings", "DirverSettings", "数字IO设置", "Digital IO Functions", "window",
     "DigitalIO"},
    {"Operation_Modes", "DirverSettings", "控制模式", "Control Modes", "menu"},
    {"PDMode", "Operation_Modes", "脉冲模式", "Pulse Mode", "window", "PD_MODE"},
    {"ANSPD", "Operation_Modes", "模拟速度模式", "Analog Speed Mode", "window", "AN_SPEED"},
    {"ANTorque", "Operation_Modes", "模拟力矩模式", "Analog Torque Mode", "window", "AN_Torque"},
    {"Ptable", "Operation_Modes", "DIN位置模式", "DIN Position Mode", "window", "Pos_Table", "",
     true},
    {"Vtable", "Operation_Modes", "DIN速度模式", "DIN Speed Mode", "window", "Speed_Table"},
    {"Homingx", "Operation_Modes", "原点模式", "Homing Mode", "window", "Homing"},
    {"autotune", "Operation_Modes", "自整定", "Auto Tuning", "window", "AutoTuning"},
    {"reverse", "Operation_Modes", "自动翻转模式", "Auto Reverse", "window", "Auto_Reverse", "",
     true},
    {"Homing2x", "Operation_Modes", "原点定义", "Homing Definition", "window", "Homing2"},
    {"PosFlowx", "Operation_Modes", "位置表模式", "Position Table Mode", "window", "PosFlow"},
    {"ODs", "DirverSettings", "对象字典", "Object Dictionary", "window", "ObjectDictionay"},
    {"Driver_Configrations", "DirverSettings", "驱动器配置", "Driver Configuration", "window",
     "Driver_CFG", "Controller Configuration"},
    {"Ecan", "DirverSettings", "ECAN配置", "ECAN Configuration", "menu", "", "", true},
    {"TPDOx", "Ecan", "TPDO", "TPDO", "window", "TPDOSet"},
    {"RPDOx", "Ecan", "RPDO", "RPDO", "window", "RPDOSet"},
    {"Ecan_Other", "Ecan", "其它", "Others", "window", "ECANset"},
    {"RS485X", "DirverSettings", "485 配置", "485 Configuration", "window", "RS485", "", true},
    {"Scopex", "DirverSettings", "示波器", "Scope", "window", "Scope"},
    {"tunner", "DirverSettings", "整定器/专家模式", "Advanced Tuner", "window", "ADVtunner", "",
     true},
    {"Real_time_error", "DirverSettings", "故障显示", "Error Display", "window", "Errors"},
    {"ErrHistory1", "DirverSettings", "历史故障", "Error History", "window", "ErrorHistory"},
    {"ctlboard", "DirverSettings", "控制面板", "Panel Menu", "menu"},
    {"F000x", "ctlboard", "E", "E", "window", "F000"},
    {"F002x", "ctlboard", "A", "A", "window", "F002"},
    {"F003x", "ctlboard", "C", "C", "window", "F003"},
    {"F004x", "ctlboard", "H", "H", "window", "F004"},
    {"F005x", "ctlboard", "S", "S", "window", "F005"},
    {"Initandsave", "DirverSettings", "初始化/保存/重启", "Init Save Reboot", "window", "InitSave"},
    {"driver_propertyx", "DirverSettings", "驱动器属性", "Driver Properties", "window",
     "Driver_Property", "Controller Properties"},
    {"Download_Tool", "DirverSettings", "固件下载", "Load Firmware", "window", "Download"},
    {"MotorSettings", "", "电机&M", "&Motor", "menu"},
    {"Motor_Config", "MotorSettings", "电机配置", "Motor Settings", "window", "Motor"},
    {"Tools", "", "工具&T", "&Tools", "menu"},
    {"import_export", "Tools", "读写驱动器配置", "R/W Driver Configuration", "window", "imexport",
     "R/W Controller Configuration"},
    {"Change_Language", "Tools", "语言切换", "Language", "menu"},
    // The star marks the language that is on; the other one goes without.
    {"chinese", "Change_Language", "*中文", "中文", "chinese"},
    {"English", "Change_Language", "English", "*English", "english"},
    {"View", "", "查看&V", "&View", "menu"},
    {"showminx", "View", "重排最小化窗体", "Rearrange Min Form", "arrange"},
    {"help", "", "帮助&H", "&Help", "menu"},
    {"aboutx", "help", "关于", "About", "window", "About"},
    {"ODs2", "help", "对象字典", "Object Dictionary", "window", "ObjectDictionay"},
    {"fastset", "help", "快速设置", "Fast Setup", "window", "EASY1"},
    {"errorcode", "help", "错误码", "ErrorCode", "errors"},
    {"ModBusList", "help", "ModBus列表", "ModBusList", "window", "modbus"},
    {"moremotors", "help", "更多电机", "More Motors", "window", "Motorcodes"},
}};

struct ToldText {
    std::string_view name, chinese, english;
};

inline constexpr std::array<ToldText, 5> kToldPopup{{
    {"adding", "添加", "Add"},
    {"deling", "删除", "Delete"},
    {"helping", "帮助", "Help"},
    {"copyline", "复制行", "Copy Row"},
    {"pasteline", "粘贴行", "Paste Row"},
}};

struct ToldTool {
    std::string_view key, chinese, english, reduced;
    std::string_view window = {};  // that a press opens
};

// The last button has no text of its own told; it says what its menu item says.
inline constexpr std::array<ToldTool, 10> kToldTools{{
    {"newx", "新建", "New", "New"},
    {"openx", "打开", "Open", "Open"},
    {"savex", "保存", "Save", "Save"},
    {"commx", "通信设置", "Communication Settings", "Communication Settings"},
    {"Errorx", "故障显示", "Error Display", "Error Display", "Errors"},
    {"IOx", "数字IO设置", "Digital IO Functions", "Digital IO Functions", "DigitalIO"},
    {"scopex", "示波器", "Scope", "Scope", "Scope"},
    {"exportx", "写驱动器配置", "Write Settings to Driver", "Write Settings to Controller",
     "imexport"},
    {"importx", "读驱动器配置", "Read Settings from Driver", "Read Settings from Controller",
     "imexport"},
    {"icoarrange", "重排最小化窗体", "Rearrange Min Form", "Rearrange Min Form"},
}};

}  // namespace servo::app::test
