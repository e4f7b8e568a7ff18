#include "tools/position_table_motion_picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "base/number.h"

namespace servo::tools {

namespace {

constexpr double kSecondsPerMinute = 60.0;
constexpr int kMostDecimals = 6;
constexpr double kHeadroom = 0.06;  // above and below a curve, of its span
constexpr int kPixelsPerPoint = 2;

struct Range {
    double low = 0;
    double high = 0;

    void take(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    double span() const { return high - low; }
    void widen() {
        if (!(span() > 0)) high = low + 1;
        const double room = span() * kHeadroom;
        low -= room;
        high += room;
    }
};

double y_of(const PictureRect& plot, const Range& range, double value) {
    return plot.bottom() - (value - range.low) / range.span() * plot.height;
}

// The labels of a height axis, from below.
std::vector<PictureTick> height_ticks(const PictureRect& plot, const Range& range, double row) {
    std::vector<PictureTick> ticks;
    const double step =
        tick_distance(range.span(), std::max(1, static_cast<int>(plot.height / row)));
    for (double n = std::ceil(range.low / step); n * step <= range.high; ++n)
        ticks.push_back({y_of(plot, range, n * step), base::format_up_to(n * step, kMostDecimals)});
    return ticks;
}

class Drawing {
  public:
    Drawing(const Motion& motion, double resolution, MotionPicture& picture)
        : motion_(motion), rpm_(kSecondsPerMinute / resolution), picture_(picture) {}

    void run(const MotionSizes& sizes) {
        find_ranges();
        add_curves();
        add_bands(sizes);
        picture_.positions = height_ticks(picture_.position_plot, positions_, sizes.row);
        picture_.speeds = height_ticks(picture_.speed_plot, speeds_, sizes.row);
        const int most = std::max(1, static_cast<int>(picture_.position_plot.width / sizes.tick));
        const double step = tick_distance(motion_.duration, most);
        for (int n = 0; n * step <= motion_.duration; ++n)
            picture_.times.push_back(
                {picture_.x_of(n * step), base::format_up_to(n * step, kMostDecimals)});
    }

  private:
    // Both ends of every part: positions are monotonous in between.
    void find_ranges() {
        for (const MotionPart& part : motion_.parts) {
            const double t = part.duration;
            positions_.take(part.position);
            positions_.take(part.position + part.speed * t + part.acceleration * t * t / 2);
            speeds_.take(part.speed * rpm_);
            speeds_.take((part.speed + part.acceleration * t) * rpm_);
        }
        positions_.widen();
        speeds_.widen();
    }

    void add_curves() {
        for (const MotionPart& part : motion_.parts) {
            const double pixels = part.duration / picture_.seconds_per_pixel;
            const int points =
                part.acceleration == 0 ? 1 : 1 + static_cast<int>(pixels / kPixelsPerPoint);
            for (int k = 0; k <= points; ++k) {
                const double since = part.duration * k / points;
                const double x = picture_.x_of(part.begin + since);
                const double position =
                    part.position + part.speed * since + part.acceleration * since * since / 2;
                picture_.position.push_back(
                    {x, y_of(picture_.position_plot, positions_, position)});
                if (k != 0 && k != points) continue;
                const double speed = (part.speed + part.acceleration * since) * rpm_;
                picture_.speed.push_back({x, y_of(picture_.speed_plot, speeds_, speed)});
            }
        }
    }

    void add_bands(const MotionSizes& sizes) {
        double labelled_to = -std::numeric_limits<double>::infinity();
        for (const MotionVisit& visit : motion_.visits) {
            const double from = picture_.x_of(visit.begin);
            MotionBand band;
            band.step = visit.step;
            band.rect = {from, picture_.position_plot.y, picture_.x_of(visit.end) - from,
                         picture_.speed_plot.bottom() - picture_.position_plot.y};
            band.delay_from = picture_.x_of(visit.motion_end);
            band.labelled = from >= labelled_to;
            if (band.labelled) labelled_to = from + sizes.label;
            picture_.bands.push_back(band);
        }
    }

    const Motion& motion_;
    double rpm_;  // of inc/s
    MotionPicture& picture_;
    Range positions_;
    Range speeds_;
};

}  // namespace

double tick_distance(double span, int most) {
    if (!(span > 0) || most < 1) return 1;
    const double least = span / most;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least) return factor * power;
    return 10 * power;
}

double MotionPicture::time_at(double x) const {
    return (x - position_plot.x) * seconds_per_pixel;
}

double MotionPicture::x_of(double time) const {
    return position_plot.x + time / seconds_per_pixel;
}

MotionPicture motion_picture(const Motion& motion, double resolution, double width, double height,
                             const MotionSizes& sizes) {
    MotionPicture picture;
    const double plot_width = width - sizes.left - sizes.right;
    const double plots = height - sizes.top - sizes.gap - sizes.bottom;
    if (!(motion.duration > 0) || !(plot_width > 1) || !(plots > 2) || !(resolution != 0))
        return picture;
    picture.position_plot = {sizes.left, sizes.top, plot_width, plots / 2};
    picture.speed_plot = {sizes.left, sizes.top + plots / 2 + sizes.gap, plot_width, plots / 2};
    picture.seconds_per_pixel = motion.duration / plot_width;
    Drawing(motion, resolution, picture).run(sizes);
    return picture;
}

std::string motion_reading(const Motion& motion, double time, double resolution,
                           base::Language language) {
    const int step = motion.step_at(time);
    if (step < 0) return {};
    const base::Text text{"t = {} s：第 {} 段，位置 {} inc，速度 {} rpm",
                          "t = {} s: step {}, position {} inc, speed {} rpm"};
    return fmt::format(
        fmt::runtime(text.in(language)), base::format_fixed(time, 3), step,
        base::format_whole(motion.position_at(time)),
        base::format_fixed(motion.speed_at(time) * kSecondsPerMinute / resolution, 1));
}

}  // namespace servo::tools
