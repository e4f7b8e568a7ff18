// Texts of the communication dialog.
#pragma once

#include <string_view>

#include "base/language.h"

namespace servo::link {

inline constexpr base::Text kCaption{"通信设置", "Communication Settings"};
inline constexpr base::Text kPortLabel{"串口", "COM"};
inline constexpr base::Text kBaudLabel{"波特率", "Baud rate"};
inline constexpr base::Text kIdLabel{"通信ID", "Comm. ID"};
inline constexpr base::Text kTargetLabel{"目标ID", "Target ID"};
inline constexpr base::Text kOpen{"打开", "OPEN"};
inline constexpr base::Text kClose{"关闭", "CLOSE"};
inline constexpr base::Text kRefresh{"刷新", "Refresh"};
inline constexpr base::Text kCheckSettings{"请检查串口设置!",
                                           "Please check the Settings of the COM Port!"};

// The tab of the CAN adapter is hidden and speaks one language only.
inline constexpr std::string_view kCanActive = "Active";
inline constexpr std::string_view kCanClose = "CLOSE";
inline constexpr std::string_view kCanOk = "CAN连接正常";
inline constexpr std::string_view kCanClosed = "CAN Port is closed";
inline constexpr std::string_view kCanNoDriver = "设备驱动未加载";
inline constexpr std::string_view kCanBadHardware = "硬件操作无效";
inline constexpr std::string_view kCanNotFound = "CAN控制卡没找到";
inline constexpr std::string_view kCanBusy = "连接忙";

}  // namespace servo::link
