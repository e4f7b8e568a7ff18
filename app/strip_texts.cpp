#include "app/strip_texts.h"

#include <algorithm>

#include "base/number.h"

namespace servo::app {

namespace {

using base::Language;
using base::Text;

constexpr Text kClosedText{"未连接", "Not connected"};
constexpr Text kWaitingText{"等待应答", "Waiting for the drive"};
constexpr Text kAnsweringText{"已连接", "Connected"};
constexpr Text kSilentText{"驱动器无应答", "The drive is silent"};
constexpr Text kLostText{"通信中断", "Link lost"};

constexpr Text kObjects{" 对象/秒", " objects/s"};
constexpr Text kMisses{"丢失 ", "Misses "};
constexpr Text kPerSecond{"/秒", "/s"};
constexpr Text kLoad{"负载 ", "Load "};
constexpr Text kNoPort{"未选择串口", "No port"};
constexpr std::string_view kNoFigure = "–";

// What does not fit into the cells is far beyond what the line can do.
constexpr double kMostRate = 9999;
constexpr double kMostMisses = 999999;
constexpr double kMostLoad = 999;

Text state_text(LinkCondition condition) {
    switch (condition) {
        case LinkCondition::kClosed:
            return kClosedText;
        case LinkCondition::kWaiting:
            return kWaitingText;
        case LinkCondition::kAnswering:
            return kAnsweringText;
        case LinkCondition::kSilent:
            return kSilentText;
        case LinkCondition::kLost:
            return kLostText;
    }
    return kClosedText;
}

std::string_view state_picture_name(LinkCondition condition) {
    switch (condition) {
        case LinkCondition::kClosed:
            return "link_closed";
        case LinkCondition::kWaiting:
            return "link_waiting";
        case LinkCondition::kAnswering:
            return "link_answering";
        case LinkCondition::kSilent:
            return "link_silent";
        case LinkCondition::kLost:
            return "link_lost";
    }
    return "link_closed";
}

std::string joined(std::string_view a, std::string_view b, std::string_view c = {}) {
    std::string text(a);
    text += b;
    text += c;
    return text;
}

}  // namespace

StripTexts strip_texts(const LinkFigures& figures, Language language) {
    const bool open =
        figures.condition != LinkCondition::kClosed && figures.condition != LinkCondition::kLost;
    const auto number = [open](double value, double most) {
        return open ? base::format_whole(std::min(value, most)) : std::string(kNoFigure);
    };
    StripTexts texts;
    texts.state = state_text(figures.condition).in(language);
    texts.picture = state_picture_name(figures.condition);
    texts.port =
        figures.place.port.empty() ? std::string(kNoPort.in(language)) : figures.place.port;
    if (!figures.place.port.empty() && figures.place.baud > 0)
        texts.port += "  " + std::to_string(figures.place.baud);
    texts.objects = joined(number(figures.objects_per_second, kMostRate), kObjects.in(language));
    texts.misses =
        joined(kMisses.in(language), number(static_cast<double>(figures.misses), kMostMisses));
    if (open)
        texts.misses += joined("  (", number(figures.misses_per_second, kMostRate),
                               joined(kPerSecond.in(language), ")"));
    texts.load = joined(kLoad.in(language), number(figures.load, kMostLoad), " %");
    return texts;
}

std::vector<StripTexts> widest_strip_texts(Language language) {
    std::vector<StripTexts> all;
    for (const auto condition :
         {LinkCondition::kClosed, LinkCondition::kLost, LinkCondition::kWaiting,
          LinkCondition::kAnswering, LinkCondition::kSilent}) {
        LinkFigures figures;
        figures.condition = condition;
        figures.place = {true, "COM888", 888888};
        figures.objects_per_second = 8888;
        figures.misses = 888888;
        figures.misses_per_second = 888;
        figures.load = 888;
        all.push_back(strip_texts(figures, language));
    }
    return all;
}

StripNames strip_names(Language language) {
    const auto in = [language](const Text& text) { return text.in(language); };
    return {in({"通信状态", "State of the link"}), in({"串口与波特率", "Port and baud rate"}),
            in({"每秒读回的对象数", "Objects read per second"}),
            in({"打开以来未收到应答的次数", "Answers missed since the link was opened"}),
            in({"线路负载（占波特率的百分比）", "Line load, in percent of the baud rate"})};
}

}  // namespace servo::app
