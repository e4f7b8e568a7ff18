#include "tools/homing_travel_texts.h"

namespace servo::tools {

namespace {

using base::Language;
using base::Text;

Text direction_text(int direction) {
    return direction > 0 ? Text{"正方向", "positive"} : Text{"负方向", "negative"};
}

Text event_text(HomingEvent event) {
    switch (event) {
        case HomingEvent::kHomeOn:
            return {"原点开关接通", "the home switch turns on"};
        case HomingEvent::kHomeOff:
            return {"原点开关断开", "the home switch turns off"};
        case HomingEvent::kNegativeLimitOn:
            return {"负限位接通", "the negative limit switch turns on"};
        case HomingEvent::kNegativeLimitOff:
            return {"负限位断开", "the negative limit switch turns off"};
        case HomingEvent::kPositiveLimitOn:
            return {"正限位接通", "the positive limit switch turns on"};
        case HomingEvent::kPositiveLimitOff:
            return {"正限位断开", "the positive limit switch turns off"};
        case HomingEvent::kIndex:
            return {"下一个索引信号", "the next index pulse"};
        case HomingEvent::kStop:
            return {
                "碰到机械限位，电流达到找原点电流",
                "the axis meets the mechanical stop and the current reaches the homing current"};
    }
    return {};
}

Text zone_text(StartZone zone) {
    switch (zone) {
        case StartZone::kAnywhere:
            return {"任意位置", "From anywhere"};
        case StartZone::kOffLimit:
            return {"不在限位上", "Off the limit switch"};
        case StartZone::kOnNegativeLimit:
            return {"在负限位上", "On the negative limit switch"};
        case StartZone::kOnPositiveLimit:
            return {"在正限位上", "On the positive limit switch"};
        case StartZone::kOffSwitch:
            return {"原点开关断开", "Home switch off"};
        case StartZone::kOnSwitch:
            return {"原点开关接通", "Home switch on"};
        case StartZone::kBelowSwitch:
            return {"在原点开关负侧", "Negative side of the switch"};
        case StartZone::kAboveSwitch:
            return {"在原点开关正侧", "Positive side of the switch"};
    }
    return {};
}

void add_chinese(std::string& text, const HomingLeg& leg, const HomingLeg* before) {
    if (before != nullptr) text += "；";
    if (before != nullptr && before->direction == leg.direction)
        text += "继续";
    else
        text += std::string(before == nullptr ? "向" : "反向，向") +
                std::string(direction_text(leg.direction).chinese) + "运行";
    text += leg.until == HomingEvent::kIndex ? "到" : "直到";
    text += event_text(leg.until).chinese;
}

void add_english(std::string& text, const HomingLeg& leg, const HomingLeg* before) {
    if (before == nullptr)
        text += direction_text(leg.direction).english;
    else if (before->direction == leg.direction)
        text += "; on";
    else
        text += "; back " + std::string(direction_text(leg.direction).english);
    text += leg.until == HomingEvent::kIndex ? " to " : " until ";
    text += event_text(leg.until).english;
}

std::string legs_text(std::string_view legs, Language language) {
    std::string text;
    const HomingLeg* before = nullptr;
    const auto all = homing_legs(legs);
    for (const HomingLeg& leg : all) {
        if (language == Language::kChinese)
            add_chinese(text, leg, before);
        else
            add_english(text, leg, before);
        before = &leg;
    }
    if (all.empty()) return std::string(Text{"不运行", "the axis stays where it is"}.in(language));
    return text;
}

// The point that the last switch gives, and the direction in which it is passed.
std::string point_text(const HomingLeg& leg, Language language) {
    if (leg.until == HomingEvent::kStop)
        return std::string(
            leg.direction > 0
                ? Text{"正方向的机械限位", "the mechanical stop in the positive direction"}.in(
                      language)
                : Text{"负方向的机械限位", "the mechanical stop in the negative direction"}.in(
                      language));
    const std::string direction(direction_text(leg.direction).in(language));
    const std::string event(event_text(leg.until).in(language));
    return language == Language::kChinese
               ? direction + "运行时" + event + "的位置"
               : "the point where " + event + " in " + direction + " travel";
}

}  // namespace

std::string method_text(int method, Language language) {
    return std::string(Text{"模式 ", "Method "}.in(language)) + std::to_string(method);
}

// All starts of a method end alike, so the first one tells.
std::string home_text(const HomingTravel& travel, Language language) {
    const auto legs = homing_legs(travel.zones().front().legs);
    if (legs.empty()) return std::string(Text{"当前位置", "the present position"}.in(language));
    if (legs.back().until != HomingEvent::kIndex) return point_text(legs.back(), language);
    const std::string direction(direction_text(legs.back().direction).in(language));
    std::string text = language == Language::kChinese
                           ? direction + "的第一个索引信号"
                           : "the first index pulse in the " + direction + " direction";
    if (legs.size() < 2) return text;
    const std::string point = point_text(legs[legs.size() - 2], language);
    if (language == Language::kChinese) return point + "之后，" + text;
    return text + ", behind " + point;
}

std::vector<std::string> start_texts(const HomingTravel& travel, Language language) {
    std::vector<std::string> lines;
    for (const HomingStart& start : travel.zones()) {
        std::string line(zone_text(start.zone).in(language));
        line += Text{"：", ": "}.in(language);
        line += legs_text(start.legs, language);
        line += Text{"。", "."}.in(language);
        lines.push_back(std::move(line));
    }
    return lines;
}

}  // namespace servo::tools
