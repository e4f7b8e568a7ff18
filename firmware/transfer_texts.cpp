// Additions beside the told messages: step names, and what to do after a failure.
#include "firmware/transfer_texts.h"

#include <array>

#include "firmware/transfer.h"

namespace servo::firmware {

namespace {

constexpr std::array<base::Text, 11> kStepNames{{
    {"清空线路", "Flush the line"},
    {"清空线路", "Flush the line"},
    {"清空线路", "Flush the line"},
    {"握手", "Shake hands"},
    {"进入bootloader", "Enter the bootloader"},
    {"检查固件类型", "Check the firmware type"},
    {"擦除", "Erase"},
    {"切换到块接收", "Switch to block reception"},
    {"编程", "Programme"},
    {"启动新固件", "Start the new firmware"},
    {"读回序列号", "Read back the serial number"},
}};

constexpr base::Text kUntouched{
    "驱动器未进入bootloader，原固件未被改动。请检查电源、接线、波特率和通信ID。",
    "The drive did not enter its bootloader; its firmware is untouched. Check power, cable, baud "
    "rate and communication ID."};
constexpr base::Text kInBootloader{
    "驱动器停留在bootloader中，原固件未被改动。请对驱动器重新上电，或选择匹配的固件。",
    "The drive waits in its bootloader; its firmware is untouched. Power it up again, or choose "
    "the "
    "image that fits it."};
constexpr base::Text kErased{
    "驱动器中已没有完整的固件，它停留在bootloader中。请对驱动器重新上电，重新加载文件，"
    "点击[下载]按钮，再打开通讯。",
    "The drive holds no complete firmware and waits in its bootloader. Power it up again, load the "
    "file anew, press [Download], and then connect."};
constexpr base::Text kRefusedImage{
    "所有块已发送，但驱动器没有启动新固件，仍停留在bootloader中。请检查固件文件，重新上电后再下载"
    "。",
    "All blocks were sent, but the drive did not start the new firmware and waits in its "
    "bootloader. Check the image, power the drive up again and download once more."};
constexpr base::Text kStartUnwatched{
    "所有块已发送，但通讯在新固件启动时中断。请重新打开通讯，检查软件版本和固件校验码。",
    "All blocks were sent, but the link was closed while the new firmware started. Connect again "
    "and check software version and firmware CRC."};

constexpr std::uint8_t kAskedForType = 5;
constexpr std::uint8_t kStarting = 9;

}  // namespace

std::string_view step_name(std::uint8_t step, base::Language language) {
    return step < kStepNames.size() ? kStepNames.at(step).in(language) : std::string_view();
}

std::string_view advice(const TransferResult& result, base::Language language) {
    const bool failed = result.end == TransferEnd::kFailed;
    if (!failed && result.end != TransferEnd::kLinkClosed) return {};
    if (result.step == kStarting) return (failed ? kRefusedImage : kStartUnwatched).in(language);
    if (result.erased) return kErased.in(language);
    return (result.step >= kAskedForType ? kInBootloader : kUntouched).in(language);
}

}  // namespace servo::firmware
