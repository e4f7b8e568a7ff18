// Where things of the main window stand, as functions of its size.
#pragma once

#include <cstdint>
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

// Where the picture and the text below it stand: together in the middle of the area. The text is
// left out where it does not fit below the picture; the picture is in the middle alone then.
struct BackgroundPlaces {
    Place picture;
    Place text;
    bool text_fits = false;
    bool operator==(const BackgroundPlaces&) const = default;
};
BackgroundPlaces background_places(Size area, Size picture, Size text);

// The places of minimised windows: from the bottom left corner to the right, further rows above.
std::vector<Place> icon_places(Size area, const std::vector<Size>& icons);

// The size of a window that opens for the first time: what it wants, but so that windows behind it
// stay reachable.
Size first_size(Size area, Size wanted);

// Of a window that is mostly a picture: all that it wants, as far as the area has it.
Size whole_size(Size area, Size wanted);

// Top left corner of the n-th page: each a step further down and right, so that every title bar can
// be seen. Where the next step would leave the area it begins anew at the top, further right.
Place cascade_place(Size area, Size window, int count);

// The first place of the cascade where no other window's title bar stands.
Place free_place(Size area, Size window, const std::vector<Place>& taken);

// Top left corner of the n-th dialog: in the middle, a little above, each a step further.
Place dialog_place(Size area, Size window, int count);

enum class PlaceState : std::uint8_t { kNormal, kMinimized, kMaximized };

// Where a window stands. Place and size are those of the normal state, also while the window is
// something else.
struct WindowPlace {
    Place corner;
    Size size;
    PlaceState state = PlaceState::kNormal;
    bool operator==(const WindowPlace&) const = default;
};

// Brings a place from another day back into an area that may be smaller now: wholly into view, with
// a size no larger than the area.
WindowPlace into_view(Size area, WindowPlace place);

// Windows side by side in rows of equal height, as near to squares of windows as their number and
// their smallest sizes allow; a row with fewer windows has wider ones. Together they fill the area.
// Where it is too small for that they overlap, each with its smallest size.
std::vector<WindowPlace> tile_places(Size area, const std::vector<Size>& smallest);

}  // namespace servo::app
