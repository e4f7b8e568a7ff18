#include "tools/init_save_texts.h"

#include <fmt/format.h>

#include <array>

namespace servo::tools {

namespace {

// The fifth button has no caption of old.
constexpr std::array<InitSaveButton, kInitSaveCommands> kButtons{{
    {"Command1",
     "存储控制参数/Store Control Parameters",
     {"把控制参数写入驱动器的存储器，重启后仍然有效。电机参数不在其中。",
      "Writes the control parameters into the drive's memory, so that they survive a restart. "
      "Motor parameters are not among them."}},
    {"Command2",
     "存储电机参数/Store Motor Parameters",
     {"把电机参数写入驱动器的存储器。电机参数在重启后生效。",
      "Writes the motor parameters into the drive's memory. They take effect after a restart."}},
    {"Command3",
     "初始化控制参数/Reset Control Parameters",
     {"把控制参数恢复为出厂值。要在重启后仍保持出厂值，还须存储控制参数。",
      "Brings the control parameters back to the factory state. To keep them so over a restart, "
      "store the control parameters as well."}},
    {"Command4",
     "重启/Restart",
     {"重启驱动器。未存储的更改会丢失；驱动器恢复后重新读取所有数值。",
      "Restarts the drive. Changes that are not stored are lost; every value is read anew when the "
      "drive is back."}},
    {"Command5",
     "仅重启/Restart Only",
     {"只发送重启命令：不重新读取已读过的数值，驱动器的沉默计为通信故障。",
      "Sends the restart alone: values that are read once are not read anew, and the drive's "
      "silence counts as a failure of the link."}},
}};

constexpr base::Text kIdle{"每个命令之后，本窗口锁定 3.2 秒，因为驱动器可能正在写存储器。",
                           "Behind each command the window is locked for 3.2 s, since the drive "
                           "may be writing its memory."};

constexpr base::Text kNotSent{"未连接驱动器：{} 没有发出。",
                              "Not connected: {} has not left this computer."};
constexpr base::Text kKeptBack{"正在下载固件：{} 没有发出。",
                               "A firmware download is under way: {} has not left this computer."};
constexpr base::Text kSent{"已发送：{}。驱动器的应答不在此显示。",
                           "Sent: {}. The drive's answer is not shown here."};
constexpr base::Text kStillHere{"重启命令已发送，驱动器尚在应答。",
                                "The restart is sent; the drive still answers."};
constexpr base::Text kSilent{"驱动器正在重启，暂无应答。",
                             "The drive is restarting and does not answer."};
constexpr base::Text kBack{"驱动器已恢复应答，历时 {:.1f} 秒。",
                           "The drive is back: it answers again after {:.1f} s."};
constexpr base::Text kNoPause{"驱动器一直在应答：看来没有重启。",
                              "The drive has answered all the time: it does not seem to have "
                              "restarted."};
constexpr base::Text kLost{"驱动器恢复之前连接已关闭：请重新连接。",
                           "The link was closed before the drive came back: connect again."};

constexpr double kSecond = 1000;  // milliseconds

std::string caption_of(InitSaveCommand command, base::Language language) {
    const std::string_view pair = kButtons[static_cast<std::size_t>(command)].caption;
    const std::size_t slash = pair.find('/');
    return std::string(language == base::Language::kChinese ? pair.substr(0, slash)
                                                            : pair.substr(slash + 1));
}

}  // namespace

std::span<const InitSaveButton, kInitSaveCommands> init_save_buttons() {
    return kButtons;
}

std::string lock_text(const InitSave& form) {
    if (!form.locked()) return std::string(kIdle.in(form.language()));
    constexpr base::Text kLocked{"锁定中，还有 {:.1f} 秒：请勿断电。",
                                 "Locked for {:.1f} s: keep the drive's power on."};
    return fmt::format(fmt::runtime(kLocked.in(form.language())),
                       static_cast<double>(form.lock_left().count()) / kSecond);
}

InitSaveNote init_save_note(const InitSave& form) {
    if (!form.last()) return {};
    const base::Language language = form.language();
    const std::string name = caption_of(*form.last(), language);
    if (!form.last_left()) {
        const base::Text why = form.last_kept_back() ? kKeptBack : kNotSent;
        return {fmt::format(fmt::runtime(why.in(language)), name), true};
    }
    switch (form.restart().phase()) {
        case RestartPhase::kNone:
            return {fmt::format(fmt::runtime(kSent.in(language)), name)};
        case RestartPhase::kSent:
            return {std::string(kStillHere.in(language))};
        case RestartPhase::kSilent:
            return {std::string(kSilent.in(language))};
        case RestartPhase::kBack: {
            const auto milliseconds = static_cast<double>(form.restart().duration().count());
            return {fmt::format(fmt::runtime(kBack.in(language)), milliseconds / kSecond)};
        }
        case RestartPhase::kNoPause:
            return {std::string(kNoPause.in(language)), true};
        case RestartPhase::kLost:
            return {std::string(kLost.in(language)), true};
    }
    return {};
}

}  // namespace servo::tools
