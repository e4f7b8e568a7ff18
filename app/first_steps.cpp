#include "app/first_steps.h"

namespace servo::app {

namespace {

using base::Text;

constexpr Text kClosedTitle{"开始使用", "First steps"};
constexpr Text kCable{"1  用串口线连接驱动器，并给驱动器上电。",
                      "1  Connect the drive to a serial port and switch it on."};
constexpr Text kCableController{"1  用串口线连接驱动器，并给驱动器上电。",
                                "1  Connect the controller to a serial port and switch it on."};
constexpr Text kOpen{"2  按 Ctrl+F5，选择串口和波特率，然后按“打开”。",
                     "2  Press Ctrl+F5, choose port and baud rate, then press OPEN."};
constexpr Text kPages{"3  按 Ctrl+B 打开“基本操作”；其它窗口见菜单。",
                      "3  Press Ctrl+B for Basic Operation; the menus have all the rest."};

constexpr Text kOpenTitle{"通信已打开", "The link is open"};
constexpr Text kLooking{"Ctrl+B  基本操作      F8  故障显示      F7  示波器",
                        "Ctrl+B  Basic Operation      F8  Error Display      F7  Scope"};
constexpr Text kKeys{"F1  全部快捷键", "F1  all keys"};

}  // namespace

FirstSteps first_steps(base::Language language, dictionary::Variant variant, bool link_open) {
    const auto in = [language](const Text& text) { return text.in(language); };
    if (link_open) return {in(kOpenTitle), {in(kLooking), in(kKeys)}};
    const bool reduced = variant == dictionary::Variant::kReduced;
    return {in(kClosedTitle), {in(reduced ? kCableController : kCable), in(kOpen), in(kPages)}};
}

}  // namespace servo::app
