#include "app/window_table.h"

#include <algorithm>
#include <array>

#include "app/tag_text.h"
#include "base/ascii.h"
#include "params/page_table.h"

namespace servo::app {

namespace {

constexpr WindowDefinition page(std::string_view name) {
    return {.name = name, .page = true};
}

constexpr bool kDesignedFont = true;

constexpr WindowDefinition own(std::string_view name, std::string_view tag,
                               bool designed_font = false) {
    return {.name = name, .tag = tag, .designed_font = designed_font};
}

constexpr std::array kWindows{
    page("AN_SPEED"),
    page("AN_Torque"),
    page("Auto_Reverse"),
    page("AutoTuning"),
    page("Basic"),
    page("CLoop"),
    own("DigitalIO", "数字IO设置/Digital IO Functions", kDesignedFont),
    own("Download", "固件下载/Load Firmware"),
    own("Errors", "故障显示/Error Display", kDesignedFont),
    page("Driver_CFG"),
    page("Driver_Property"),
    page("F000"),
    page("F002"),
    page("F003"),
    page("F004"),
    page("F005"),
    own("Form1", "通信设置/Communication Settings"),
    page("Homing"),
    own("InitSave", "初始化 保存 重启/Init Save Reboot"),
    page("Motor"),
    own("ObjectDictionay", "对象字典/Object Dictionary", kDesignedFont),
    page("PD_MODE"),
    page("PLoop"),
    page("Pos_Table"),
    page("Speed_Table"),
    page("VLoop"),
    own("Scope", "示波器/Scope", kDesignedFont),
    WindowDefinition{.name = "imexport",
                     .designed = {"读写驱动器配置", "R/W Driver Configuration"},
                     .reduced = {"读写驱动器配置", "R/W Controller Configuration"}},
    own("PosFlow", "位置表模式/Position Table Mode\\"),
    own("Homing2", "原点定义/Homing Definition\\", kDesignedFont),
    own("About", "关于/About", kDesignedFont),
    page("ErrorHistory"),
    own("TPDOSet", "TPDO"),
    own("RPDOSet", "RPDO"),
    page("ECANset"),
    own("RS485", "RS485配置/485 Configuration\\", kDesignedFont),
    WindowDefinition{.name = "ADVtunner",
                     .designed = {"整定器/专家模式", "Advanced Tuner"},
                     .designed_font = kDesignedFont},
    own("EASY1", "快速设置/EASY Setup Wizard"),
    own("Motorcodes", "更多电机/More Motors"),
    own("modbus", "ModBus列表/ModBusList"),
};

std::string_view text_in(base::Text text, unsigned slot) {
    return slot == slot_of(base::Language::kEnglish) ? text.english : text.chinese;
}

}  // namespace

std::span<const WindowDefinition> window_table() {
    return kWindows;
}

const WindowDefinition* find_window_definition(std::string_view name) {
    const auto* found = std::ranges::find_if(kWindows, [&](const WindowDefinition& window) {
        return base::same_name(window.name, name);
    });
    return found == kWindows.end() ? nullptr : found;
}

std::string_view caption_of(const WindowDefinition& window, unsigned slot,
                            dictionary::Variant variant) {
    if (window.page) {
        const params::PageDefinition* found = params::find_page_definition(window.name);
        return found == nullptr ? window.name : text_in(found->caption_of(variant), slot);
    }
    if (!window.tag.empty()) return window_caption(window.tag, slot);
    const bool reduced =
        variant == dictionary::Variant::kReduced && !window.reduced.english.empty();
    return text_in(reduced ? window.reduced : window.designed, slot);
}

std::string_view caption_of(const WindowDefinition& window, base::Language language,
                            dictionary::Variant variant) {
    return caption_of(window, slot_of(language), variant);
}

bool is_custom(const WindowDefinition& window) {
    return tag_is_custom(window.tag);
}

}  // namespace servo::app
