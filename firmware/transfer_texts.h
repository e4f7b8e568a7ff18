// What a transfer tells the user.
#pragma once

#include "base/language.h"

namespace servo::firmware {

inline constexpr base::Text kTitle{"提示", "Notice"};
inline constexpr base::Text kFailTitle{"下载提示", "Download Notice"};

inline constexpr base::Text kFinished{"下载成功!", "Download Finished!"};
inline constexpr base::Text kNoResponse{"握手无回应!", "Shake hands with no response!"};
inline constexpr base::Text kNotMatching{"固件与bootloader不匹配!",
                                         "Firmware and bootloader not match!"};
inline constexpr base::Text kEraseFailed{"擦除失败!", "Erase failed!"};
inline constexpr base::Text kNoBlockMode{"切换到块接收模式失败!",
                                         "Can't switch to block receive mode!"};
inline constexpr base::Text kOvertime{"编程超时!", "Programing overtime!"};
inline constexpr base::Text kStillBootloader{"错误，重启不能退出bootloader模式!",
                                             "Error,can't quit bootloader mode after reboot!"};

// Of the read-back; in Chinese only, and without a title.
inline constexpr std::string_view kSerialRight = "序列号正确，下载完成";
inline constexpr std::string_view kSerialWrong = "下载失败";

}  // namespace servo::firmware
