// Additions to the form `Homing2`: the method in the drive beside the chosen one, and what the axis
// will do.
#include "base/number.h"
#include "tools/homing.h"
#include "tools/homing_travel_texts.h"

namespace servo::tools {

namespace {

using enum HomingAgreement;

// '#' stands for the chosen number, '@' for the drive's.
base::Text words_of(HomingAgreement agreement) {
    switch (agreement) {
        case kNothing:
            return {"请选择触发信号", "Choose what triggers the home position"};
        case kUnread:
            return {"已选择模式 #；尚未读取驱动器中的模式",
                    "Method # is chosen; the drive has not been read yet"};
        case kUnchosen:
            return {"驱动器中为模式 @", "The drive holds method @"};
        case kSame:
            return {"驱动器中为模式 @，与选择一致", "The drive holds method @, as chosen"};
        case kDiffers:
            return {"驱动器中为模式 @；所选模式 # 尚未写入",
                    "The drive holds method @; method # is chosen but not written"};
        case kInvalid:
            return {"没有编号为 # 的原点模式", "There is no homing method #"};
    }
    return {};
}

void replace(std::string& text, char mark, const std::string& by) {
    if (const auto place = text.find(mark); place != std::string::npos) text.replace(place, 1, by);
}

}  // namespace

std::optional<double> Homing2::chosen_number() const {
    if (data_.Text1.empty()) return std::nullopt;
    return base::leading_number(data_.Text1);
}

HomingComparison Homing2::comparison() const {
    const auto chosen = chosen_number();
    const bool read = !data_.Label3.empty();
    HomingAgreement agreement = kDiffers;
    if (chosen && !is_typed_method(*chosen))
        agreement = kInvalid;
    else if (!chosen)
        agreement = read ? kUnchosen : kNothing;
    else if (!read)
        agreement = kUnread;
    else if (*chosen == base::leading_number(data_.Label3))
        agreement = kSame;
    std::string text(words_of(agreement).in(language()));
    if (chosen) replace(text, '#', base::number_text(*chosen));
    replace(text, '@', data_.Label3);
    return {agreement, std::move(text)};
}

int Homing2::drive_method() const {
    return static_cast<int>(base::round_half_even(base::leading_number(data_.Label3)));
}

bool Homing2::can_take_drive_method() const {
    return HomingChoices().take(drive_method());
}

void Homing2::take_drive_method() {
    if (data_.choices.take(drive_method())) method_chosen();
}

std::vector<std::string> Homing2::travel() const {
    const auto chosen = chosen_number();
    if (!chosen || !is_typed_method(*chosen)) return {};
    const HomingTravel* travel = find_homing_travel(static_cast<int>(*chosen));
    if (travel == nullptr) return {};
    return start_texts(*travel, language());
}

}  // namespace servo::tools
