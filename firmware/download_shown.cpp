#include "firmware/download_shown.h"

#include <fmt/format.h>

namespace servo::firmware {

namespace {

constexpr std::uint8_t kFlushes = 2;  // steps 0 to 2 come before the first word

constexpr base::Text kFacts{"{} 块，{} 字节", "{} blocks, {} bytes"};
constexpr base::Text kLost{"最后 {} 个字符不足半块，不会发送。",
                           "The last {} characters are less than half a block and are not sent."};
constexpr base::Text kNoBlock{
    "该固件没有可发送的块：下载会擦除驱动器，然后以编程超时结束。",
    "This image has no block to send: a download would erase the drive and end in a time-out."};
constexpr base::Text kNotLoaded{"未加载固件", "No image is loaded"};
constexpr base::Text kReady{"就绪", "Ready"};
constexpr base::Text kWaits{"等待打开通讯", "Waiting: open the link now"};
constexpr base::Text kAnswers{"下载完成，驱动器已应答", "Finished; the drive answers again"};
constexpr base::Text kAwaited{"下载完成，等待驱动器应答", "Finished; waiting for the drive"};
constexpr base::Text kFailedIn{"失败：{}", "Failed: {}"};
constexpr base::Text kCutIn{"通讯已关闭，下载中断：{}", "Cut off when the link was closed: {}"};
constexpr base::Text kSpeed{"{:.0f} 字节/秒", "{:.0f} bytes/s"};
constexpr base::Text kLeft{"剩余 {}", "{} left"};

template <typename... Values>
std::string filled(base::Text text, base::Language language, const Values&... values) {
    return fmt::format(fmt::runtime(text.in(language)), values...);
}

std::string ended_text(const TransferResult& result, const Download& form) {
    const base::Language language = form.language();
    switch (result.end) {
        case TransferEnd::kDone:
            return std::string((form.drive_answered() ? kAnswers : kAwaited).in(language));
        case TransferEnd::kFailed:
            return filled(kFailedIn, language, step_name(result.step, language));
        case TransferEnd::kLinkClosed:
            return filled(kCutIn, language, step_name(result.step, language));
        case TransferEnd::kReadBack:
            return result.message;
    }
    return {};
}

}  // namespace

std::string image_facts(const Download& form) {
    const Blocks& blocks = *form.data().fw_blocks;
    if (!form.data().Command4_enabled && highest_index(blocks) == 0) return {};
    return filled(kFacts, form.language(), highest_index(blocks), bytes_of(blocks));
}

std::string image_warning(const Download& form) {
    const DownloadData& data = form.data();
    const bool loaded = data.Command4_enabled || form.transfer_running();
    if (!loaded) return {};
    if (highest_index(*data.fw_blocks) == 0) return std::string(kNoBlock.in(form.language()));
    if (data.lost_characters == 0) return {};
    return filled(kLost, form.language(), data.lost_characters);
}

TransferLine transfer_line(const Download& form, bool link_open) {
    const base::Language language = form.language();
    TransferLine line;
    if (!form.transfer_running()) {
        if (form.result())
            line.step = ended_text(*form.result(), form);
        else
            line.step = (form.data().Command4_enabled ? kReady : kNotLoaded).in(language);
        return line;
    }
    if (!link_open && form.step() <= kFlushes) {
        line.step = kWaits.in(language);
        return line;
    }
    line.step = form.status_text();
    if (const auto speed = form.transfer().progress().speed())
        line.speed = filled(kSpeed, language, *speed);
    if (const std::string left = form.remaining_text(); !left.empty())
        line.remaining = filled(kLeft, language, left);
    return line;
}

bool can_load_again(const Download& form) {
    const auto& result = form.result();
    if (!result || form.transfer_running() || form.data().Command4_enabled) return false;
    return !form.data().file_path.empty() && !form.advice_text().empty();
}

}  // namespace servo::firmware
