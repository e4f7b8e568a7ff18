#include "app/menu_table.h"

#include <algorithm>
#include <array>

namespace servo::app {

namespace {

using base::Language;
using dictionary::Variant;
using enum MenuKind;

// What the word "Driver" becomes for the reduced product is told item by item, since its access key
// differs too.
constexpr std::array kMenus{
    MenuItem{"file", "", "文件&F", "&File", "", kMenu},
    MenuItem{"new1", "file", "新建", "New", "", kNewProject},
    MenuItem{"open1", "file", "打开", "Open", "", kOpenProject},
    MenuItem{"save1", "file", "保存", "Save", "", kSaveProject},
    MenuItem{"quit1", "file", "退出", "Quit", "", kQuit},

    MenuItem{"Communication", "", "通信&C", "&Communication", "", kMenu},
    MenuItem{"Communication_Channel", "Communication", "通信通道", "Communication Channel", "",
             kNothing},
    MenuItem{"Communication_Settings", "Communication", "通信设置", "Communication Settings", "",
             kShowForm1},

    MenuItem{"DirverSettings", "", "驱动器&D", "&Driver", "Co&ntroller", kMenu},
    MenuItem{"Basic_Operation", "DirverSettings", "基本操作", "Basic Operation", "", kOpenPage,
             "Basic"},
    MenuItem{"Control_Loops", "DirverSettings", "控制环", "Control Loops", "", kMenu},
    MenuItem{"PosLoop", "Control_Loops", "位置环", "Position Loop", "", kOpenPage, "PLoop"},
    MenuItem{"SPDLoop", "Control_Loops", "速度环", "Velocity Loop", "", kOpenPage, "VLoop"},
    MenuItem{"CurLoop", "Control_Loops", "电流环", "Current Loop", "", kOpenPage, "CLoop"},
    MenuItem{"IO_Port_settings", "DirverSettings", "数字IO设置", "Digital IO Functions", "",
             kOpenPage, "DigitalIO"},
    MenuItem{"Operation_Modes", "DirverSettings", "控制模式", "Control Modes", "", kMenu},
    MenuItem{"PDMode", "Operation_Modes", "脉冲模式", "Pulse Mode", "", kOpenPage, "PD_MODE"},
    MenuItem{"ANSPD", "Operation_Modes", "模拟速度模式", "Analog Speed Mode", "", kOpenPage,
             "AN_SPEED"},
    MenuItem{"ANTorque", "Operation_Modes", "模拟力矩模式", "Analog Torque Mode", "", kOpenPage,
             "AN_Torque"},
    MenuItem{"Ptable", "Operation_Modes", "DIN位置模式", "DIN Position Mode", "", kOpenPage,
             "Pos_Table", true},
    MenuItem{"Vtable", "Operation_Modes", "DIN速度模式", "DIN Speed Mode", "", kOpenPage,
             "Speed_Table"},
    MenuItem{"Homingx", "Operation_Modes", "原点模式", "Homing Mode", "", kOpenPage, "Homing"},
    MenuItem{"autotune", "Operation_Modes", "自整定", "Auto Tuning", "", kOpenPage, "AutoTuning"},
    MenuItem{"reverse", "Operation_Modes", "自动翻转模式", "Auto Reverse", "", kOpenPage,
             "Auto_Reverse", true},
    MenuItem{"Homing2x", "Operation_Modes", "原点定义", "Homing Definition", "", kOpenPage,
             "Homing2"},
    MenuItem{"PosFlowx", "Operation_Modes", "位置表模式", "Position Table Mode", "", kOpenPage,
             "PosFlow"},
    MenuItem{"ODs", "DirverSettings", "对象字典", "Object Dictionary", "", kOpenPage,
             "ObjectDictionay"},
    MenuItem{"Driver_Configrations", "DirverSettings", "驱动器配置", "Driver Configuration",
             "Controller Configuration", kOpenPage, "Driver_CFG"},
    MenuItem{"Ecan", "DirverSettings", "ECAN配置", "ECAN Configuration", "", kMenu, "", true},
    MenuItem{"TPDOx", "Ecan", "TPDO", "TPDO", "", kOpenPage, "TPDOSet"},
    MenuItem{"RPDOx", "Ecan", "RPDO", "RPDO", "", kOpenPage, "RPDOSet"},
    MenuItem{"Ecan_Other", "Ecan", "其它", "Others", "", kOpenPage, "ECANset"},
    MenuItem{"RS485X", "DirverSettings", "485 配置", "485 Configuration", "", kOpenPage, "RS485",
             true},
    MenuItem{"Scopex", "DirverSettings", "示波器", "Scope", "", kOpenPage, "Scope"},
    MenuItem{"tunner", "DirverSettings", "整定器/专家模式", "Advanced Tuner", "", kOpenPage,
             "ADVtunner", true},
    MenuItem{"Real_time_error", "DirverSettings", "故障显示", "Error Display", "", kOpenPage,
             "Errors"},
    MenuItem{"ErrHistory1", "DirverSettings", "历史故障", "Error History", "", kOpenPage,
             "ErrorHistory"},
    MenuItem{"ctlboard", "DirverSettings", "控制面板", "Panel Menu", "", kMenu},
    MenuItem{"F000x", "ctlboard", "E", "E", "", kOpenPage, "F000"},
    MenuItem{"F002x", "ctlboard", "A", "A", "", kOpenPage, "F002"},
    MenuItem{"F003x", "ctlboard", "C", "C", "", kOpenPage, "F003"},
    MenuItem{"F004x", "ctlboard", "H", "H", "", kOpenPage, "F004"},
    MenuItem{"F005x", "ctlboard", "S", "S", "", kOpenPage, "F005"},
    MenuItem{"Initandsave", "DirverSettings", "初始化/保存/重启", "Init Save Reboot", "", kOpenPage,
             "InitSave"},
    MenuItem{"driver_propertyx", "DirverSettings", "驱动器属性", "Driver Properties",
             "Controller Properties", kOpenPage, "Driver_Property"},
    MenuItem{"Download_Tool", "DirverSettings", "固件下载", "Load Firmware", "", kOpenPage,
             "Download"},

    MenuItem{"MotorSettings", "", "电机&M", "&Motor", "", kMenu},
    MenuItem{"Motor_Config", "MotorSettings", "电机配置", "Motor Settings", "", kOpenPage, "Motor"},

    MenuItem{"Tools", "", "工具&T", "&Tools", "", kMenu},
    MenuItem{"import_export", "Tools", "读写驱动器配置", "R/W Driver Configuration",
             "R/W Controller Configuration", kOpenPage, "imexport"},
    MenuItem{"Change_Language", "Tools", "语言切换", "Language", "", kMenu},
    MenuItem{"chinese", "Change_Language", "中文", "中文", "", kChinese},
    MenuItem{"English", "Change_Language", "English", "English", "", kEnglish},

    MenuItem{"View", "", "查看&V", "&View", "", kMenu},
    MenuItem{"showminx", "View", "重排最小化窗体", "Rearrange Min Form", "", kArrange},

    MenuItem{"help", "", "帮助&H", "&Help", "", kMenu},
    MenuItem{"aboutx", "help", "关于", "About", "", kOpenPage, "About"},
    MenuItem{"ODs2", "help", "对象字典", "Object Dictionary", "", kOpenPage, "ObjectDictionay"},
    MenuItem{"fastset", "help", "快速设置", "Fast Setup", "", kOpenPage, "EASY1"},
    MenuItem{"errorcode", "help", "错误码", "ErrorCode", "", kErrorTable},
    MenuItem{"ModBusList", "help", "ModBus列表", "ModBusList", "", kOpenPage, "modbus"},
    MenuItem{"moremotors", "help", "更多电机", "More Motors", "", kOpenPage, "Motorcodes"},
};

constexpr std::array kPopup{
    MenuItem{"adding", "xpop", "添加", "Add"},
    MenuItem{"deling", "xpop", "删除", "Delete"},
    MenuItem{"helping", "xpop", "帮助", "Help"},
    MenuItem{"copyline", "xpop", "复制行", "Copy Row"},
    MenuItem{"pasteline", "xpop", "粘贴行", "Paste Row"},
};

constexpr std::array kTools{
    ToolItem{"newx", ToolKind::kMenuItem, "new1", "newpic", "新建", "New"},
    ToolItem{"openx", ToolKind::kMenuItem, "open1", "openpic", "打开", "Open"},
    ToolItem{"savex", ToolKind::kMenuItem, "save1", "savepic", "保存", "Save"},
    ToolItem{kLinkTool, ToolKind::kCommunication, "", "Commpic", "通信设置",
             "Communication Settings", "", true},
    ToolItem{kFaultTool, ToolKind::kMenuItem, "Real_time_error", "errorgray", "故障显示",
             "Error Display"},
    ToolItem{"IOx", ToolKind::kMenuItem, "IO_Port_settings", "IOpic", "数字IO设置",
             "Digital IO Functions", "", true},
    ToolItem{"scopex", ToolKind::kMenuItem, "Scopex", "scopepic", "示波器", "Scope"},
    ToolItem{"exportx", ToolKind::kExport, "imexport", "exportpic", "写驱动器配置",
             "Write Settings to Driver", "Write Settings to Controller", true},
    ToolItem{"importx", ToolKind::kImport, "imexport", "importpic", "读驱动器配置",
             "Read Settings from Driver", "Read Settings from Controller"},
    ToolItem{"icoarrange", ToolKind::kMenuItem, "showminx", "arrangepic", "重排最小化窗体",
             "Rearrange Min Form", "", true},
};

}  // namespace

std::span<const MenuItem> menu_table() {
    return kMenus;
}

std::span<const MenuItem> popup_table() {
    return kPopup;
}

const MenuItem* find_menu_item(std::string_view item) {
    for (auto table : {menu_table(), popup_table()}) {
        const auto found = std::ranges::find(table, item, &MenuItem::item);
        if (found != table.end()) return &*found;
    }
    return nullptr;
}

std::string menu_caption(const MenuItem& item, Language language, Variant variant) {
    const bool marked = (item.kind == kChinese && language == Language::kChinese) ||
                        (item.kind == kEnglish && language == Language::kEnglish);
    std::string_view text = item.english;
    if (language == Language::kChinese)
        text = item.chinese;
    else if (variant == Variant::kReduced && !item.controller.empty())
        text = item.controller;
    return (marked ? "*" : "") + std::string(text);
}

bool menu_visible(const MenuItem& item, Variant variant) {
    return !(item.hidden_when_reduced && variant == Variant::kReduced);
}

std::span<const ToolItem> tool_table() {
    return kTools;
}

std::string_view tool_tip(const ToolItem& item, Language language, Variant variant) {
    if (language == Language::kChinese) return item.chinese;
    return variant == Variant::kReduced && !item.controller.empty() ? item.controller
                                                                    : item.english;
}

std::string_view main_title(Variant variant) {
    return variant == Variant::kReduced ? "ZARN Configurator" : "QRL Servo";
}

}  // namespace servo::app
