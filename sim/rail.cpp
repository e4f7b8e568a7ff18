#include "sim/rail.h"

#include "sim/digital_io.h"
#include "sim/text.h"

namespace servo::sim {

namespace {

// No edge stands near an index pulse, which is at whole turns.
constexpr RailSetup kDefault{-20.3, 20.3, 3.4, 5.6, -22.4, 22.4};

struct Pair {
    double first = 0.0;
    double second = 0.0;
    bool two = false;
};

std::optional<Pair> parse_pair(std::string_view text) {
    const std::size_t colon = text.find(':');
    const auto first = parse_decimal(text.substr(0, colon));
    if (!first) return std::nullopt;
    if (colon == std::string_view::npos) return Pair{*first, *first, false};
    const auto second = parse_decimal(text.substr(colon + 1));
    if (!second || *second <= *first) return std::nullopt;
    return Pair{*first, *second, true};
}

bool take(RailSetup& setup, std::string_view name, const Pair& value) {
    if (name == "neg" && !value.two) {
        setup.negative_limit = value.first;
    } else if (name == "pos" && !value.two) {
        setup.positive_limit = value.first;
    } else if (name == "home" && value.two) {
        setup.home_from = value.first;
        setup.home_to = value.second;
    } else if (name == "stop" && (value.two || value.first > 0.0)) {
        setup.lowest = value.two ? value.first : -value.first;
        setup.highest = value.second;
    } else {
        return false;
    }
    return true;
}

bool in_order(const RailSetup& s) {
    const auto below = [](std::optional<double> low, std::optional<double> high) {
        return !low || !high || *low < *high;
    };
    return below(s.negative_limit, s.positive_limit) && below(s.lowest, s.negative_limit) &&
           below(s.positive_limit, s.highest) && below(s.lowest, s.home_to) &&
           below(s.home_from, s.highest);
}

}  // namespace

std::optional<RailSetup> parse_rail(std::string_view text) {
    if (text == "default") return kDefault;
    RailSetup setup;
    for (const std::string_view part : split(text, ',')) {
        const std::size_t equals = part.find('=');
        if (equals == std::string_view::npos) return std::nullopt;
        const auto value = parse_pair(part.substr(equals + 1));
        if (!value || !take(setup, part.substr(0, equals), *value)) return std::nullopt;
    }
    if (!in_order(setup)) return std::nullopt;
    return setup;
}

void Rail::work(double place, DigitalInputs& inputs, bool again) {
    const auto tell = [&](InputFunction function, bool& before, bool now) {
        if (now == before && !again) return;
        before = now;
        inputs.drive_function(function, now);
    };
    const RailSetup& s = setup_;
    if (s.negative_limit) {
        tell(InputFunction::kNegativeLimit, negative_, place <= *s.negative_limit);
    }
    if (s.positive_limit) {
        tell(InputFunction::kPositiveLimit, positive_, place >= *s.positive_limit);
    }
    if (s.home_from && s.home_to) {
        tell(InputFunction::kHomeSignal, home_, place >= *s.home_from && place < *s.home_to);
    }
}

}  // namespace servo::sim
