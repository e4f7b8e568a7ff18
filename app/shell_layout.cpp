#include "app/shell_layout.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>
#include <optional>

namespace servo::app {

namespace {

constexpr std::array kClassLimits{700, 1000, 1500};
constexpr std::array<Size, 4> kPictureSizes{Size{320, 200}, Size{480, 300}, Size{640, 400},
                                            Size{880, 550}};
constexpr int kPictureGap = 16;
constexpr int kCascadeStep = 28;
constexpr int kCascadeSteps = 4;  // that fit at least
constexpr int kColumnSteps = 4;   // to the right, where the cascade begins anew at the top

}  // namespace

int background_class(int frame_width) {
    return static_cast<int>(std::ranges::count_if(
        kClassLimits, [frame_width](int limit) { return frame_width >= limit; }));
}

Size background_size(int size_class) {
    return kPictureSizes.at(static_cast<std::size_t>(std::clamp(size_class, 0, 3)));
}

BackgroundPlaces background_places(Size area, Size picture, Size text) {
    BackgroundPlaces places;
    const int height = picture.height + kPictureGap + text.height;
    places.text_fits =
        height + kPictureGap <= area.height && text.width + 2 * kPictureGap <= area.width;
    const int top = (area.height - (places.text_fits ? height : picture.height)) / 2;
    places.picture = {(area.width - picture.width) / 2, top};
    places.text = {(area.width - text.width) / 2, top + picture.height + kPictureGap};
    return places;
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

Size whole_size(Size area, Size wanted) {
    const Size narrow = first_size(area, wanted);
    return {std::max(narrow.width, std::min(wanted.width, area.width)),
            std::max(narrow.height, std::min(wanted.height, area.height))};
}

namespace {

// Places of the cascade: that many down, that many to the right.
struct Steps {
    int down = 1;
    int right = 1;
};

Steps cascade_steps(Size area, Size window) {
    return {std::max(0, area.height - window.height) / kCascadeStep + 1,
            std::max(0, area.width - window.width) / kCascadeStep + 1};
}

bool same_corner(Place a, Place b) {
    return std::abs(a.x - b.x) < kCascadeStep / 2 && std::abs(a.y - b.y) < kCascadeStep / 2;
}

}  // namespace

Place cascade_place(Size area, Size window, int count) {
    const Steps steps = cascade_steps(area, window);
    const int down = count % steps.down;
    const int right = (down + count / steps.down * kColumnSteps) % steps.right;
    return {right * kCascadeStep, down * kCascadeStep};
}

Place free_place(Size area, Size window, const std::vector<Place>& taken) {
    const Steps steps = cascade_steps(area, window);
    for (int count = 0; count < steps.down * steps.right; ++count) {
        const Place place = cascade_place(area, window, count);
        if (std::ranges::none_of(taken, [&](Place other) { return same_corner(place, other); }))
            return place;
    }
    return cascade_place(area, window, static_cast<int>(taken.size()));
}

Place dialog_place(Size area, Size window, int count) {
    const int step = count % kCascadeSteps * kCascadeStep;
    const int spare_width = std::max(0, area.width - window.width);
    const int spare_height = std::max(0, area.height - window.height);
    return {std::min(spare_width / 2 + step, spare_width),
            std::min(spare_height / 3 + step, spare_height)};
}

WindowPlace into_view(Size area, WindowPlace place) {
    place.size.width = std::clamp(place.size.width, 1, std::max(area.width, 1));
    place.size.height = std::clamp(place.size.height, 1, std::max(area.height, 1));
    place.corner.x = std::clamp(place.corner.x, 0, std::max(0, area.width - place.size.width));
    place.corner.y = std::clamp(place.corner.y, 0, std::max(0, area.height - place.size.height));
    return place;
}

namespace {

// How many windows stand in each row. No row has more than the square has columns, nor more than
// find room beside each other.
std::vector<std::size_t> tile_rows(int width, const std::vector<Size>& smallest) {
    std::size_t columns = 1;
    while (columns * columns < smallest.size())
        ++columns;
    std::vector<std::size_t> rows;
    int left = 0;
    for (const Size& window : smallest) {
        if (rows.empty() || rows.back() == columns || window.width > left) {
            rows.push_back(0);
            left = width;
        }
        ++rows.back();
        left -= window.width;
    }
    return rows;
}

// Equal parts, but for those that need more than their share.
std::vector<int> shares(int whole, const std::vector<int>& smallest) {
    std::vector<std::optional<int>> fixed(smallest.size());
    int left = whole;
    auto open = static_cast<int>(smallest.size());
    for (bool found = true; found && open > 0;) {
        found = false;
        for (std::size_t i = 0; i < fixed.size() && open > 0; ++i) {
            if (fixed[i] || smallest[i] <= left / open) continue;
            fixed[i] = smallest[i];
            left -= smallest[i];
            --open;
            found = true;
        }
    }
    std::vector<int> parts;
    for (const std::optional<int>& part : fixed) {
        if (part || open == 0) {
            parts.push_back(part.value_or(0));
            continue;
        }
        // What is left is cut anew each time, so that the pixels come out even.
        parts.push_back(left / open);
        left -= parts.back();
        --open;
    }
    return parts;
}

// Rows that need more than there is overlap in even steps, as wide as keep all of them in view.
std::vector<int> row_tops(int whole, const std::vector<int>& heights) {
    const auto last = static_cast<int>(heights.size()) - 1;
    const bool fits = std::accumulate(heights.begin(), heights.end(), 0) <= whole;
    int room = whole;
    for (int row = 1; row <= last; ++row) {
        const int spare = std::max(0, whole - heights[static_cast<std::size_t>(row)]);
        room = std::min(room, spare * last / row);
    }
    std::vector<int> tops;
    int top = 0;
    for (int row = 0; row <= last; ++row) {
        tops.push_back(fits ? top : room * row / std::max(last, 1));
        top += heights[static_cast<std::size_t>(row)];
    }
    return tops;
}

}  // namespace

std::vector<WindowPlace> tile_places(Size area, const std::vector<Size>& smallest) {
    std::vector<WindowPlace> places;
    if (smallest.empty()) return places;
    const std::vector<std::size_t> rows = tile_rows(area.width, smallest);
    std::vector<int> heights;
    std::size_t next = 0;
    for (const std::size_t count : rows) {
        int height = 0;
        for (const std::size_t end = next + count; next < end; ++next)
            height = std::max(height, smallest[next].height);
        heights.push_back(height);
    }
    heights = shares(area.height, heights);
    const std::vector<int> tops = row_tops(area.height, heights);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        std::vector<int> widths;
        for (std::size_t i = 0; i < rows[row]; ++i)
            widths.push_back(smallest[places.size() + i].width);
        int left = 0;
        for (const int width : shares(area.width, widths)) {
            places.push_back({{left, tops[row]}, {width, heights[row]}, PlaceState::kNormal});
            left += width;
        }
    }
    return places;
}

}  // namespace servo::app
