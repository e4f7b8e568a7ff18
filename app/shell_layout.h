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

// The size of a window that opens for the first time: what it wants, but so that windows behind it
// stay reachable.
Size first_size(Size area, Size wanted);

// Top left corner of the n-th page that opens, each a step further down and right, beginning anew
// before a window of that size would leave the area.
Place cascade_place(Size area, Size window, int count);

// Top left corner of the n-th dialog: at the right, where it leaves pages free, each a step further
// down and left.
Place dialog_place(Size area, Size window, int count);

}  // namespace servo::app
