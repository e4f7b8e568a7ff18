// Addition: the motion of a table as two curves over one time axis, position above, speed below.
#pragma once

#include <string>
#include <vector>

#include "tools/position_table_flow_picture.h"
#include "tools/position_table_motion.h"

namespace servo::tools {

struct PictureTick {
    double at = 0;  // x or y of the surface
    std::string text;
};

struct MotionBand {
    int step = 0;
    PictureRect rect;       // both plots high
    double delay_from = 0;  // x from which on the axis rests
    bool labelled = false;  // there is room for the step's number
};

struct MotionSizes {
    double left = 96;  // room for the labels of the heights
    double right = 16;
    double top = 22;  // step numbers
    double gap = 18;  // between the plots
    double bottom = 26;
    double tick = 70;   // least distance of two labels of the time axis
    double row = 26;    // the same of a height axis
    double label = 18;  // least width of a band with a number
};

struct MotionPicture {
    PictureRect position_plot;
    PictureRect speed_plot;
    std::vector<PicturePoint> position;
    std::vector<PicturePoint> speed;
    std::vector<PictureTick> times;
    std::vector<PictureTick> positions;
    std::vector<PictureTick> speeds;
    std::vector<MotionBand> bands;

    double seconds_per_pixel = 0;
    double time_at(double x) const;  // s
    double x_of(double time) const;
};

// Empty when nothing moves or there is no room.
MotionPicture motion_picture(const Motion& motion, double resolution, double width, double height,
                             const MotionSizes& sizes);

// "t = 1.250 s: step 3, position 12000 inc, speed 300 rpm".
std::string motion_reading(const Motion& motion, double time, double resolution,
                           base::Language language);

// Distance of ticks: 1, 2 or 5 times a power of ten, `most` or fewer in the span.
double tick_distance(double span, int most);

}  // namespace servo::tools
