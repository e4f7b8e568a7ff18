#include "app/fixed_texts.h"

#include <array>

namespace servo::app {

namespace {

constexpr std::array kItems{
    // How a step of the position table treats its start condition.
    FixedItem{"PosFlow", "Combo2", 0, {"忽略", "Ignore"}},
    FixedItem{"PosFlow", "Combo2", 1, {"等待", "Wait"}},
    FixedItem{"PosFlow", "Combo2", 2, {"中断", "Interrupt"}},
    // Where the axis stands when homing has ended.
    FixedItem{"Homing2", "Combo1", 0, {"0:运行到 原点-偏移", "0:Run to Home -Offset"}},
    FixedItem{"Homing2", "Combo1", 1, {"1:运行到触发位置", "1:Run to Trig position"}},
};

struct FixedButton {
    std::string_view control;
    base::Text driver;
    std::string_view controller;  // English in the reduced product
};

constexpr std::string_view kConfigurationWindow = "imexport";
constexpr std::array kButtons{
    FixedButton{
        "Command2", {"写驱动器配置", "Write Settings to Driver"}, "Write Settings to Controller"},
    FixedButton{
        "Command7", {"读驱动器配置", "Read Settings from Driver"}, "Read Settings from Controller"},
};

}  // namespace

std::span<const FixedItem> fixed_items() {
    return kItems;
}

std::optional<std::string_view> fixed_button_text(std::string_view window, std::string_view control,
                                                  base::Language language,
                                                  dictionary::Variant variant) {
    if (window != kConfigurationWindow) return {};
    for (const FixedButton& button : kButtons) {
        if (button.control != control) continue;
        const bool controller =
            language == base::Language::kEnglish && variant == dictionary::Variant::kReduced;
        return controller ? button.controller : button.driver.in(language);
    }
    return {};
}

}  // namespace servo::app
