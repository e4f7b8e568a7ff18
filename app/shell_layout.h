// Where things of the main window stand, as functions of its size.
#pragma once

#include <vector>

namespace servo::app {

struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
};

struct Place {
    int x = 0;
    int y = 0;
    bool operator==(const Place&) const = default;
};

// Size class of the background picture, 0 to 3, by the width of the frame.
int background_class(int frame_width);

// Width and height of the picture of a size class; the drawing is 8 by 5.
Size background_size(int size_class);

// The places of minimised windows: from the bottom left corner to the right, further rows above.
std::vector<Place> icon_places(Size area, const std::vector<Size>& icons);

// Top left corner of the n-th window that opens without a place of its own, each a step further
// down and right, beginning anew before a window of that size would leave the area.
Place cascade_place(Size area, Size window, int count);

}  // namespace servo::app
