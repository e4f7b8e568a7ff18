#include "app/menu_hints.h"

#include <algorithm>
#include <array>

namespace servo::app {

namespace {

struct Hint {
    std::string_view item = {};
    std::string_view chinese = {};
    std::string_view english = {};
    std::string_view controller = {};  // English in the reduced variant, empty when it is the same
};

constexpr std::array kHints{
    Hint{"new1", "清空数值，开始新的项目", "Begin a new project"},
    Hint{"open1", "打开项目文件", "Open a project file"},
    Hint{"save1", "把打开的窗口和数值保存为项目文件",
         "Save the open windows and their values as a project file"},
    Hint{"quit1", "退出程序", "End the program"},
    Hint{"Communication_Settings", "选择串口、波特率和站号，打开或关闭通信",
         "Choose port, baud rate and ID; open or close the link"},
    Hint{"Basic_Operation", "状态、控制字、工作模式和目标值",
         "State, control word, mode and targets"},
    Hint{"PosLoop", "位置环的增益、前馈和滤波",
         "Gains, feed-forward and filters of the position loop"},
    Hint{"SPDLoop", "速度环的增益和滤波", "Gains and filters of the velocity loop"},
    Hint{"CurLoop", "电流环的增益和限制", "Gains and limits of the current loop"},
    Hint{"IO_Port_settings", "数字输入输出的功能和状态",
         "Functions and state of the digital inputs and outputs"},
    Hint{"PDMode", "脉冲输入的模式和电子齿轮", "Pulse input and electronic gear"},
    Hint{"ANSPD", "用模拟量给定速度", "Velocity from an analog input"},
    Hint{"ANTorque", "用模拟量给定力矩", "Torque from an analog input"},
    Hint{"Ptable", "用数字输入选择位置", "Positions chosen by digital inputs"},
    Hint{"Vtable", "用数字输入选择速度", "Speeds chosen by digital inputs"},
    Hint{"Homingx", "找原点的方法、速度和偏移", "Method, speeds and offset of homing"},
    Hint{"autotune", "自动识别负载并整定", "Let the drive find the load and its gains",
         "Let the controller find the load and its gains"},
    Hint{"reverse", "电机自动往返运行", "The motor runs to and fro by itself"},
    Hint{"Homing2x", "用图示选择找原点的方法", "Choose the homing method by its picture"},
    Hint{"PosFlowx", "位置表的编辑、读取和写入", "Edit, read and write the position table"},
    Hint{"ODs", "查找和查看全部对象", "Search and show every object"},
    Hint{"Driver_Configrations", "驱动器的基本配置", "Basic configuration of the drive",
         "Basic configuration of the controller"},
    Hint{"TPDOx", "发送 PDO 的映射", "Mapping of the transmitted PDOs"},
    Hint{"RPDOx", "接收 PDO 的映射", "Mapping of the received PDOs"},
    Hint{"Ecan_Other", "总线的其它设置", "Other settings of the bus"},
    Hint{"RS485X", "485 口的设置", "Settings of the RS485 port"},
    Hint{"Scopex", "记录并显示最多四条曲线", "Record and show up to four traces"},
    Hint{"tunner", "频率扫描、波特图和滤波器", "Frequency scan, Bode plot and filters"},
    Hint{"Real_time_error", "当前的故障和屏蔽位", "Present faults and their masks"},
    Hint{"ErrHistory1", "驱动器记录的故障", "Faults that the drive has recorded",
         "Faults that the controller has recorded"},
    Hint{"F000x", "面板菜单 F000", "Panel menu F000"},
    Hint{"F002x", "面板菜单 F002", "Panel menu F002"},
    Hint{"F003x", "面板菜单 F003", "Panel menu F003"},
    Hint{"F004x", "面板菜单 F004", "Panel menu F004"},
    Hint{"F005x", "面板菜单 F005", "Panel menu F005"},
    Hint{"Initandsave", "保存参数、恢复出厂值、重启驱动器",
         "Store parameters, restore the factory's, restart the drive",
         "Store parameters, restore the factory's, restart the controller"},
    Hint{"driver_propertyx", "型号、版本和序列号", "Type, versions and serial number"},
    Hint{"Download_Tool", "把固件下载到驱动器", "Load firmware into the drive",
         "Load firmware into the controller"},
    Hint{"Motor_Config", "电机的型号和参数", "Type and data of the motor"},
    Hint{"import_export", "把配置读到文件，或从文件写入",
         "Read a configuration into a file, or write one from a file"},
    Hint{"chinese", "界面使用中文", "All texts in Chinese"},
    Hint{"English", "界面使用英文", "All texts in English"},
    Hint{"showminx", "把最小化的窗体排列在底部", "Line up the minimised windows at the bottom"},
    Hint{"aboutx", "程序的版本", "Version of the program"},
    Hint{"ODs2", "查找和查看全部对象", "Search and show every object"},
    Hint{"fastset", "一步一步完成最初的设置", "The first settings, step by step"},
    Hint{"errorcode", "用系统的程序打开错误码表", "Open the table of error codes"},
    Hint{"ModBusList", "对象的 Modbus 地址", "Modbus addresses of the objects"},
    Hint{"moremotors", "电机代码和数据", "Motor codes and data"},
    Hint{"journalx", "本次运行写入的全部数值，可以写回原值",
         "Every value that this run has written, and the values before"},
    Hint{"keysx", "列出全部快捷键", "List all keys"},
    Hint{"nextx", "激活下一个窗口", "Activate the next window"},
    Hint{"previousx", "激活上一个窗口", "Activate the previous window"},
    Hint{"closex", "关闭当前窗口，其中的数值保留", "Close the active window; it keeps its values"},
    Hint{"cascadex", "层叠页面，露出所有标题",
         "Lay the pages over each other, every title in view"},
    Hint{"tilex", "平铺页面，互不遮挡", "Lay the pages side by side"},
    Hint{"commx", "打开或关闭通信", "Connect or disconnect"},
    Hint{"exportx", "从文件向驱动器写入配置", "Write a configuration from a file to the drive",
         "Write a configuration from a file to the controller"},
    Hint{"importx", "把驱动器的配置读到文件", "Read the drive's configuration into a file",
         "Read the controller's configuration into a file"},
};

}  // namespace

std::string_view menu_hint(std::string_view item, base::Language language,
                           dictionary::Variant variant) {
    const auto* hint = std::ranges::find(kHints, item, &Hint::item);
    if (hint == kHints.end()) return {};
    if (language == base::Language::kChinese) return hint->chinese;
    const bool other = variant == dictionary::Variant::kReduced && !hint->controller.empty();
    return other ? hint->controller : hint->english;
}

}  // namespace servo::app
