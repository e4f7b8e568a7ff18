#include "sim/homing_methods.h"

#include <array>

namespace servo::sim {

namespace {

constexpr Direction kUp = Direction::kPositive;
constexpr Direction kDown = Direction::kNegative;

struct Row {
    std::int64_t number;  // of the method without the index; the one with it is 16 less
    HomingMethod method;
};

// signal, here, index, search, approach, enters, turns
constexpr std::array<Row, 14> kSwitches{{
    {17, {HomingSignal::kNegativeLimit, false, false, kDown, kUp, false, false}},
    {18, {HomingSignal::kPositiveLimit, false, false, kUp, kDown, false, false}},
    // The home switch holds from its edge to the end of the axis: above, below.
    {19, {HomingSignal::kHome, false, false, kUp, kDown, false, false}},
    {20, {HomingSignal::kHome, false, false, kUp, kUp, true, false}},
    {21, {HomingSignal::kHome, false, false, kDown, kUp, false, false}},
    {22, {HomingSignal::kHome, false, false, kDown, kDown, true, false}},
    // It holds over a part of the axis, and a limit switch turns the search round.
    {23, {HomingSignal::kHome, false, false, kUp, kDown, false, true}},
    {24, {HomingSignal::kHome, false, false, kUp, kUp, true, true}},
    {25, {HomingSignal::kHome, false, false, kUp, kDown, true, true}},
    {26, {HomingSignal::kHome, false, false, kUp, kUp, false, true}},
    {27, {HomingSignal::kHome, false, false, kDown, kUp, false, true}},
    {28, {HomingSignal::kHome, false, false, kDown, kDown, true, true}},
    {29, {HomingSignal::kHome, false, false, kDown, kUp, true, true}},
    {30, {HomingSignal::kHome, false, false, kDown, kDown, false, true}},
}};

constexpr std::int64_t kWithIndex = 16;

constexpr std::array<Row, 7> kOthers{{
    {33, {HomingSignal::kNone, false, true, kDown, kDown, false, false}},
    {34, {HomingSignal::kNone, false, true, kUp, kUp, false, false}},
    {35, {HomingSignal::kNone, true, false, kUp, kUp, false, false}},
    {-17, {HomingSignal::kNegativeStop, false, false, kDown, kUp, false, false}},
    {-18, {HomingSignal::kPositiveStop, false, false, kUp, kDown, false, false}},
    {-20, {HomingSignal::kNegativeStop, false, true, kDown, kUp, false, false}},
    {-21, {HomingSignal::kPositiveStop, false, true, kUp, kDown, false, false}},
}};

}  // namespace

std::optional<HomingMethod> homing_method(std::int64_t number) {
    for (const Row& row : kOthers) {
        if (row.number == number) return row.method;
    }
    for (const Row& row : kSwitches) {
        if (row.number == number) return row.method;
        if (row.number - kWithIndex != number) continue;
        HomingMethod method = row.method;
        method.index = true;
        return method;
    }
    return std::nullopt;
}

}  // namespace servo::sim
