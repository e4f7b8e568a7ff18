// The text that tells an axis: its switches, its stops, their order. What is read can be written
// down again, and describes an axis that a motor can stand on.
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "sim/rail.h"

namespace {

void require(bool held, const char* what) {
    if (held) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

// The shortest text that is the same number again. The greatest has 309 digits before its point,
// the smallest 324 behind it and 17 more.
std::string number(double value) {
    std::array<char, 800> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    require(end.ec == std::errc{}, "room for any number");
    return {text.data(), end.ptr};
}

std::string text_of(const servo::sim::RailSetup& setup) {
    std::string text;
    const auto add = [&text](std::string_view name, const std::string& value) {
        if (!text.empty()) text += ',';
        text.append(name).append("=").append(value);
    };
    if (setup.negative_limit) add("neg", number(*setup.negative_limit));
    if (setup.positive_limit) add("pos", number(*setup.positive_limit));
    if (setup.home_from) add("home", number(*setup.home_from) + ":" + number(*setup.home_to));
    if (setup.lowest) add("stop", number(*setup.lowest) + ":" + number(*setup.highest));
    return text;
}

void finite(std::optional<double> place) {
    require(!place || std::isfinite(*place), "a place is a number");
}

void below(std::optional<double> low, std::optional<double> high) {
    require(!low || !high || *low < *high, "places in their order");
}

void check(const servo::sim::RailSetup& setup) {
    for (const auto& place : {setup.negative_limit, setup.positive_limit, setup.home_from,
                              setup.home_to, setup.lowest, setup.highest})
        finite(place);
    require(setup.home_from.has_value() == setup.home_to.has_value(), "both edges of the home");
    require(setup.lowest.has_value() == setup.highest.has_value(), "both ends");
    require(setup != servo::sim::RailSetup{}, "something is told");
    below(setup.negative_limit, setup.positive_limit);
    below(setup.home_from, setup.home_to);
    below(setup.lowest, setup.highest);
    below(setup.lowest, setup.negative_limit);
    below(setup.positive_limit, setup.highest);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto setup = servo::sim::parse_rail({reinterpret_cast<const char*>(data), size});
    if (!setup) return 0;
    check(*setup);
    require(servo::sim::parse_rail(text_of(*setup)) == setup, "what was read is read again");
    return 0;
}
