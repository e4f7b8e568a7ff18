#include "scope/plot_geometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace servo::scope {

namespace {

// How far points may stand outside of the area: behind the width of every pen.
constexpr double kMargin = 64.0;

// Takes the points of a curve from left to right and keeps what the columns can show.
class PointSieve {
  public:
    PointSieve(const PlotArea& area, std::size_t samples, double columns_per_pixel)
        : top_(area.top - kMargin),
          bottom_(area.top + area.height + kMargin),
          columns_per_pixel_(columns_per_pixel) {
        const double columns = area.width * columns_per_pixel;
        sieve_ = static_cast<double>(samples) > kPointsPerColumn * std::max(columns, 1.0);
        points_.reserve(sieve_ ? static_cast<std::size_t>(columns + 2) * kPointsPerColumn
                               : samples + 2);
    }

    void add(PlotPoint point) {
        if (!sieve_) {
            put(point);
            return;
        }
        const double column = std::floor(point.x * columns_per_pixel_);
        if (count_ == 0 || column != column_) {
            finish_column();
            column_ = column;
            first_ = lowest_ = highest_ = {point, 0};
        }
        last_ = {point, count_};
        if (point.y < highest_.point.y) highest_ = last_;
        if (point.y > lowest_.point.y) lowest_ = last_;
        ++count_;
    }

    std::vector<PlotPoint> take() {
        finish_column();
        return std::move(points_);
    }

  private:
    static constexpr std::size_t kPointsPerColumn = 4;

    struct Seen {
        PlotPoint point;
        std::size_t place = 0;  // in the column
    };

    void finish_column() {
        if (count_ == 0) return;
        const bool falls = highest_.place < lowest_.place;
        const Seen& early = falls ? highest_ : lowest_;
        const Seen& late = falls ? lowest_ : highest_;
        put(first_.point);
        if (early.place > 0) put(early.point);
        if (late.place > early.place) put(late.point);
        if (last_.place > late.place) put(last_.point);
        count_ = 0;
    }

    // A part of the line outside of the margins is laid onto them; where it crosses one, a point
    // keeps the slope of what is seen.
    void put(const PlotPoint& point) {
        if (!points_.empty()) {
            const double from = before_.y;
            const double to = point.y;
            const double first = from < to ? top_ : bottom_;
            const double second = from < to ? bottom_ : top_;
            for (const double edge : {first, second})
                if ((from < edge) != (to < edge) && from != edge && to != edge)
                    points_.push_back(
                        {before_.x + (point.x - before_.x) * (edge - from) / (to - from), edge});
        }
        points_.push_back({point.x, std::clamp(point.y, top_, bottom_)});
        before_ = point;
    }

    double top_;
    double bottom_;
    double columns_per_pixel_;
    bool sieve_ = false;
    std::vector<PlotPoint> points_;
    PlotPoint before_;

    // The column that is being filled.
    double column_ = 0.0;
    std::size_t count_ = 0;
    Seen first_;
    Seen lowest_;
    Seen highest_;
    Seen last_;
};

}  // namespace

double CurveTransform::y(double value, const PlotArea& area) const {
    const double middle = area.top + area.height / 2;
    const double up = (value - offset) * area.height / kDivisions / scale;
    if (std::isnan(up)) return middle;
    return middle - std::clamp(up, -kFarAway, kFarAway);
}

double CurveTransform::x(int index, const PlotArea& area) const {
    return x(static_cast<double>(index), area);
}

double CurveTransform::x(double index, const PlotArea& area) const {
    const double length = window.last - window.first;
    if (length == 0) return area.left;
    return area.left + (index - window.first) * area.width / length;
}

double marker_height(const CurveTransform& transform, const PlotArea& area) {
    return transform.y(0.0, area);
}

std::vector<PlotPoint> curve_points(std::span<const double> values, const CurveTransform& transform,
                                    const PlotArea& area) {
    return curve_points(values, {.first_at = static_cast<double>(transform.window.first)},
                        transform, area, 1);
}

std::vector<PlotPoint> curve_points(std::span<const double> values, SampleTimes times,
                                    const CurveTransform& transform, const PlotArea& area,
                                    int columns_per_pixel) {
    PointSieve sieve(area, values.size(), columns_per_pixel);
    const double left = transform.x(times.first_at, area);
    const double step = transform.x(times.first_at + times.step, area) - left;
    double place = 0.0;
    for (const double value : values) {
        sieve.add({left + place * step, transform.y(value, area)});
        place += 1.0;
    }
    return sieve.take();
}

// CurveTransform::y with its divisions done once.
void curve_heights(std::span<const double> values, const CurveTransform& transform,
                   const PlotArea& area, std::vector<float>& out) {
    out.resize(values.size());
    const double middle = area.top + area.height / 2;
    const double pixels_per_unit = area.height / kDivisions / transform.scale;
    const double offset = transform.offset;
    for (std::size_t i = 0; i < values.size(); ++i) {
        double up = (values[i] - offset) * pixels_per_unit;
        up = up == up ? up : 0.0;
        up = std::max(std::min(up, kFarAway), -kFarAway);
        out[i] = static_cast<float>(middle - up);
    }
}

int nearest_sample(const ZoomWindow& window, double x) {
    if (window.last < window.first) return -1;
    const double length = window.last - window.first;
    const double index = std::round(length * x / kPictureWidth);
    return window.first + static_cast<int>(std::clamp(index, 0.0, length));
}

double sample_abscissa(const ZoomWindow& window, int index) {
    const double length = window.last - window.first;
    if (length == 0) return 0.0;
    return (index - window.first) * kPictureWidth / length;
}

}  // namespace servo::scope
