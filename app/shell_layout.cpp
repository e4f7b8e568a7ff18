#include "app/shell_layout.h"

#include <algorithm>
#include <array>

namespace servo::app {

namespace {

constexpr std::array kClassLimits{700, 1000, 1500};
constexpr std::array<Size, 4> kPictureSizes{Size{320, 200}, Size{480, 300}, Size{640, 400},
                                            Size{880, 550}};
constexpr int kCascadeStep = 28;
constexpr int kCascadeSteps = 4;  // that fit at least
constexpr int kDialogMargin = 24;

}  // namespace

int background_class(int frame_width) {
    return static_cast<int>(std::ranges::count_if(
        kClassLimits, [frame_width](int limit) { return frame_width >= limit; }));
}

Size background_size(int size_class) {
    return kPictureSizes.at(static_cast<std::size_t>(std::clamp(size_class, 0, 3)));
}

std::vector<Place> icon_places(Size area, const std::vector<Size>& icons) {
    std::vector<Place> places;
    int x = 0;
    int bottom = area.height;
    int row_height = 0;
    for (const Size& icon : icons) {
        if (x > 0 && x + icon.width > area.width) {
            x = 0;
            bottom -= row_height;
            row_height = 0;
        }
        places.push_back({x, bottom - icon.height});
        x += icon.width;
        row_height = std::max(row_height, icon.height);
    }
    return places;
}

Size first_size(Size area, Size wanted) {
    const int rest = kCascadeSteps * kCascadeStep;
    return {std::min(wanted.width, std::max(area.width - rest, wanted.width / 2)),
            std::min(wanted.height, std::max(area.height - rest, wanted.height / 2))};
}

Place cascade_place(Size area, Size window, int count) {
    const int room = std::min(area.width - window.width, area.height - window.height);
    const int steps = std::max(1, room / kCascadeStep + 1);
    const int offset = (count % steps) * kCascadeStep;
    return {offset, offset};
}

Place dialog_place(Size area, Size window, int count) {
    const int step = kDialogMargin + (count % kCascadeSteps) * kCascadeStep;
    return {std::max(0, area.width - window.width - step),
            std::clamp(step, 0, std::max(0, area.height - window.height))};
}

}  // namespace servo::app
