#include "link/abort_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace servo::link {

namespace {

struct AbortEntry {
    std::uint32_t code;
    base::Text text;
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
    AbortEntry{0x06040043, {"参数不兼容", "the parameter does not fit the others"}},
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
    AbortEntry{0x08000020, {"数据无法保存", "the value cannot be stored"}},
    AbortEntry{0x08000021, {"本地控制中", "local control forbids it"}},
    AbortEntry{0x08000022, {"当前状态不允许", "the present state of the drive forbids it"}},
};

}  // namespace

std::string abort_text(std::uint32_t code, base::Language language) {
    const auto entry = std::ranges::find(kAborts, code, &AbortEntry::code);
    if (entry == kAborts.end()) return fmt::format("0x{:08X}", code);
    const bool chinese = language == base::Language::kChinese;
    return fmt::format("0x{:08X}{}{}", code, chinese ? "，" : ", ", entry->text.in(language));
}

}  // namespace servo::link
