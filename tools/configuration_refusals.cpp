#include "tools/configuration_refusals.h"

#include <fmt/format.h>

#include <array>

namespace servo::tools {

namespace {

struct Refusal {
    std::uint32_t code;
    base::Text text;
};

// Codes of CiA 301 that the access of one parameter can meet.
constexpr std::array kRefusals{
    Refusal{0x05040001, {"命令字无效", "an unknown command"}},
    Refusal{0x06010000, {"不支持的访问", "an access that the object does not support"}},
    Refusal{0x06010001, {"只写对象", "a write-only object"}},
    Refusal{0x06010002, {"只读对象", "a read-only object"}},
    Refusal{0x06020000, {"对象不存在", "the drive has no such object"}},
    Refusal{0x06040041, {"对象不能映射到PDO", "the object cannot be mapped to a PDO"}},
    Refusal{0x06040042, {"PDO长度超限", "the PDO would be too long"}},
    Refusal{0x06040043, {"参数不兼容", "the parameter does not fit the others"}},
    Refusal{0x06060000, {"硬件错误", "a hardware error"}},
    Refusal{0x06070010, {"长度不符", "the length does not fit the object"}},
    Refusal{0x06090011, {"子索引不存在", "the object has no such sub-index"}},
    Refusal{0x06090030, {"数值超出范围", "the value is out of range"}},
    Refusal{0x06090031, {"数值过大", "the value is too high"}},
    Refusal{0x06090032, {"数值过小", "the value is too low"}},
    Refusal{0x08000000, {"一般错误", "a general error"}},
    Refusal{0x08000020, {"数据无法保存", "the value cannot be stored"}},
    Refusal{0x08000021, {"本地控制中", "local control forbids it"}},
    Refusal{0x08000022, {"当前状态不允许", "the present state of the drive forbids it"}},
};

}  // namespace

std::string refusal_text(std::uint32_t code, base::Language language) {
    std::string text = fmt::format("0x{:08X}", code);
    for (const Refusal& refusal : kRefusals) {
        if (refusal.code != code) continue;
        text += language == base::Language::kChinese ? "，" : ", ";
        text += refusal.text.in(language);
        break;
    }
    return text;
}

}  // namespace servo::tools
