#include "scope/plot_raster.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace servo::scope {

namespace {

constexpr int kStripes = CurveRaster::kStripes;
constexpr int kBlock = 4;  // columns that are filled together; more see more rows in part
constexpr double kMaxPen = 64.0;
constexpr float kNowhere = std::numeric_limits<float>::infinity();

std::uint32_t mixed(std::uint32_t under, std::uint32_t over, std::uint32_t part_of_256) {
    const std::uint32_t rest = 256 - part_of_256;
    const std::uint32_t outer =
        ((under & 0xff00ff) * rest + (over & 0xff00ff) * part_of_256) >> 8 & 0xff00ff;
    const std::uint32_t green =
        ((under & 0x00ff00) * rest + (over & 0x00ff00) * part_of_256) >> 8 & 0x00ff00;
    return 0xff000000 | outer | green;
}

}  // namespace

void CurveRaster::draw(const CurveLine& line, double pen_width, std::uint32_t colour,
                       const PixelSurface& surface) {
    if (line.heights.empty() || surface.width <= 0 || surface.height <= 0) return;
    const double radius = std::clamp(pen_width, 1.0, kMaxPen) / 2;
    reset(surface.width, radius);
    follow_line(line);
    widen(radius);
    for (int column = 0; column < surface.width; column += kBlock)
        fill_block(column, colour, surface);
}

void CurveRaster::reset(int width, double radius) {
    pad_ = static_cast<int>(std::ceil(radius)) + 1;
    columns_ = (width + kBlock - 1) / kBlock * kBlock + 2 * pad_;
    const auto columns = static_cast<std::size_t>(columns_);
    for (Extent& extent : line_) {
        extent.top.assign(columns, kNowhere);
        extent.bottom.assign(columns, -kNowhere);
    }
    for (Extent& extent : pen_) {
        extent.top.resize(columns);
        extent.bottom.resize(columns);
    }
}

void CurveRaster::take(int stripe, float top, float bottom) {
    Extent& extent = line_[static_cast<std::size_t>(stripe % kStripes)];
    const auto column = static_cast<std::size_t>(stripe / kStripes);
    extent.top[column] = std::min(extent.top[column], top);
    extent.bottom[column] = std::max(extent.bottom[column], bottom);
}

// What the line reaches in a stripe: its height in the stripe's middle, and every sample inside.
// Counted in stripes from the padding's first.
void CurveRaster::follow_line(const CurveLine& line) {
    const auto stripes = static_cast<double>(columns_) * kStripes;
    const double first = (line.first_x + 0.5 + pad_) * kStripes;
    const double step = line.step * kStripes;
    const auto count = line.heights.size();
    double place = first;
    for (std::size_t i = 0; i < count; ++i) {
        place = first + static_cast<double>(i) * step;
        if (place < 0 || place >= stripes) continue;
        take(static_cast<int>(place), line.heights[i], line.heights[i]);
    }
    if (count < 2 || !(step > 0)) return;
    const double last = std::min(place, stripes - 0.5);
    const auto begin = static_cast<int>(std::ceil(std::max(first, 0.5) - 0.5));
    const auto end = static_cast<int>(std::floor(last - 0.5));
    const double samples_per_stripe = 1.0 / step;
    for (int stripe = begin; stripe <= end; ++stripe) {
        const double at = (stripe + 0.5 - first) * samples_per_stripe;
        const auto sample = std::min(static_cast<std::size_t>(at), count - 2);
        const float from = line.heights[sample];
        const float to = line.heights[sample + 1];
        const float height =
            from + (to - from) * static_cast<float>(at - static_cast<double>(sample));
        take(stripe, height, height);
    }
}

// A disc with its middle anywhere on the line: each stripe takes what its neighbours reach, raised
// by the height that the disc has at their distance.
void CurveRaster::widen(double radius) {
    const int reach = static_cast<int>(std::floor(radius * kStripes));
    const int columns = columns_ - 2 * pad_;
    for (int k = 0; k < kStripes; ++k) {
        Extent& pen = pen_[static_cast<std::size_t>(k)];
        std::fill(pen.top.begin(), pen.top.end(), kNowhere);
        std::fill(pen.bottom.begin(), pen.bottom.end(), -kNowhere);
        for (int d = -reach; d <= reach; ++d) {
            const double away = static_cast<double>(d) / kStripes;
            const auto height =
                static_cast<float>(std::sqrt(std::max(radius * radius - away * away, 0.0)));
            const int stripe = k + d + pad_ * kStripes;
            const Extent& line = line_[static_cast<std::size_t>(stripe % kStripes)];
            const float* line_top = line.top.data() + stripe / kStripes;
            const float* line_bottom = line.bottom.data() + stripe / kStripes;
            float* top = pen.top.data();
            float* bottom = pen.bottom.data();
            for (int i = 0; i < columns; ++i) {
                top[i] = std::min(top[i], line_top[i] - height);
                bottom[i] = std::max(bottom[i], line_bottom[i] + height);
            }
        }
    }
}

void CurveRaster::fill_block(int column, std::uint32_t colour, const PixelSurface& surface) const {
    // From the middles of pixels to their upper edges, and into the surface.
    const auto limit = static_cast<float>(surface.height);
    float top[kStripes][kBlock];
    float bottom[kStripes][kBlock];
    float highest = limit;
    float lowest = 0.0F;
    float full_from = 0.0F;  // the rows that the pen covers in every stripe
    float full_to = limit;
    for (std::size_t k = 0; k < kStripes; ++k) {
        const float* tops = pen_[k].top.data() + column;
        const float* bottoms = pen_[k].bottom.data() + column;
        for (std::size_t i = 0; i < kBlock; ++i) {
            top[k][i] = std::min(std::max(tops[i] + 0.5F, 0.0F), limit);
            bottom[k][i] = std::min(std::max(bottoms[i] + 0.5F, 0.0F), limit);
            highest = std::min(highest, top[k][i]);
            lowest = std::max(lowest, bottom[k][i]);
            full_from = std::max(full_from, top[k][i]);
            full_to = std::min(full_to, bottom[k][i]);
        }
    }
    const int columns = std::min(kBlock, surface.width - column);
    const int behind = static_cast<int>(std::ceil(lowest));
    for (int row = static_cast<int>(highest); row < behind; ++row) {
        std::uint32_t* pixels = surface.pixels + row * surface.stride + column;
        const auto upper = static_cast<float>(row);
        const float lower = upper + 1.0F;
        if (upper >= full_from && lower <= full_to) {
            std::fill_n(pixels, columns, colour);
            continue;
        }
        float seen[kBlock] = {};
        for (std::size_t k = 0; k < kStripes; ++k)
            for (std::size_t i = 0; i < kBlock; ++i)
                seen[i] +=
                    std::max(std::min(bottom[k][i], lower) - std::max(top[k][i], upper), 0.0F);
        int parts[kBlock];
        for (std::size_t i = 0; i < kBlock; ++i)
            parts[i] = static_cast<int>(seen[i] * (256.0F / kStripes) + 0.5F);
        for (int i = 0; i < columns; ++i)
            if (parts[i] == 256)
                pixels[i] = colour;
            else if (parts[i] > 0)
                pixels[i] = mixed(pixels[i], colour, static_cast<std::uint32_t>(parts[i]));
    }
}

}  // namespace servo::scope
