#include "scope/plot_raster.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace servo::scope {

namespace {

constexpr int kStripes = CurveRaster::kStripes;
constexpr int kBlock = 4;      // columns that are filled together; more see more rows in part
constexpr int kManyRows = 96;  // more than a block of a calm curve has
constexpr double kMaxPen = 64.0;
constexpr float kNowhere = std::numeric_limits<float>::infinity();

// Of the surface; beyond it whole rows are cleared faster than blocks.
constexpr double kMuch = 0.2;

// The four bytes of a pixel with room for a product each, and back.
std::uint64_t spread(std::uint32_t pixel) {
    return (pixel & 0xff00ffU) | std::uint64_t{pixel >> 8 & 0xff00ffU} << 32;
}
std::uint32_t gathered(std::uint64_t products) {
    return static_cast<std::uint32_t>((products >> 8 & 0xff00ffU) | (products >> 32 & 0xff00ff00U));
}
std::uint32_t mixed(std::uint32_t under, std::uint64_t over, int part_of_256) {
    const auto part = static_cast<std::uint64_t>(part_of_256);
    return gathered(spread(under) * (256 - part) + over * part);
}

int up_to_whole(int value, int unit) {
    return (value + unit - 1) / unit * unit;
}

// Four columns of one curve: how far it reaches in each stripe, from upper edges of pixels, and the
// rows that this concerns.
struct Block {
    float top[kStripes][kBlock];
    float bottom[kStripes][kBlock];
    int first = 0;  // rows that are covered at all
    int behind = 0;
    int full_first = 0;  // rows that are covered in every stripe
    int full_behind = 0;
};

Block block_at(const float* tops, const float* bottoms, std::size_t columns, float height) {
    Block block;
    float highest = height;
    float lowest = 0.0F;
    float full_from = 0.0F;
    float full_to = height;
    for (std::size_t k = 0; k < kStripes; ++k) {
        for (std::size_t i = 0; i < kBlock; ++i) {
            const float top = std::min(std::max(tops[k * columns + i] + 0.5F, 0.0F), height);
            const float bottom = std::min(std::max(bottoms[k * columns + i] + 0.5F, 0.0F), height);
            block.top[k][i] = top;
            block.bottom[k][i] = bottom;
            highest = std::min(highest, top);
            lowest = std::max(lowest, bottom);
            full_from = std::max(full_from, top);
            full_to = std::min(full_to, bottom);
        }
    }
    block.first = static_cast<int>(highest);
    block.behind = static_cast<int>(std::ceil(lowest));
    block.full_first = std::min(static_cast<int>(std::ceil(full_from)), block.behind);
    block.full_behind = std::max(static_cast<int>(full_to), block.full_first);
    return block;
}

// How many 256ths of each pixel of a row are covered.
struct Parts {
    int of[kBlock];

    Parts(const Block& block, int row);
    void fill_row(int row, std::uint32_t colour, const PixelSurface& surface) const;
    void fill(int first, int behind, std::uint32_t colour, const PixelSurface& surface) const;
};

Parts::Parts(const Block& block, int row) {
    const auto upper = static_cast<float>(row);
    const float lower = upper + 1.0F;
    float seen[kBlock] = {};
    for (int k = 0; k < kStripes; ++k)
        for (int i = 0; i < kBlock; ++i)
            seen[i] += std::max(
                std::min(block.bottom[k][i], lower) - std::max(block.top[k][i], upper), 0.0F);
    for (int i = 0; i < kBlock; ++i) {
        const float rounded = seen[i] * (256.0F / kStripes) + 0.5F;  // never negative
        of[i] = static_cast<int>(rounded);
    }
}

void Parts::fill_row(int row, std::uint32_t colour, const PixelSurface& surface) const {
    std::uint32_t* pixels = surface.pixels + row * surface.stride;
    for (int i = 0; i < surface.width; ++i) {
        if (of[i] == 256)
            pixels[i] = colour;
        else if (of[i] > 0)
            pixels[i] = mixed(pixels[i], spread(colour), of[i]);
    }
}

void Parts::fill(int first, int behind, std::uint32_t colour, const PixelSurface& surface) const {
    const std::uint64_t over = spread(colour);
    for (int i = 0; i < surface.width; ++i) {
        if (of[i] == 0) continue;
        std::uint32_t* pixel = surface.pixels + first * surface.stride + i;
        if (of[i] == 256)
            for (int row = first; row < behind; ++row, pixel += surface.stride)
                *pixel = colour;
        else
            for (int row = first; row < behind; ++row, pixel += surface.stride)
                *pixel = mixed(*pixel, over, of[i]);
    }
}

// The first row below `row` with an edge in it.
int next_edge(const Block& block, int row, int behind) {
    const auto above = static_cast<float>(row);
    auto nearest = static_cast<float>(behind);
    for (int k = 0; k < kStripes; ++k) {
        for (int i = 0; i < kBlock; ++i) {
            const float top = block.top[k][i];
            const float bottom = block.bottom[k][i];
            nearest = std::min(nearest, top > above ? top : nearest);
            nearest = std::min(nearest, bottom > above ? bottom : nearest);
        }
    }
    return static_cast<int>(nearest);
}

// Rows that are covered in part. `surface` begins at the block. In noise edges are far apart, and
// all rows between two are alike.
void fill_edges(const Block& block, int first, int behind, std::uint32_t colour,
                const PixelSurface& surface) {
    if (behind - first < kManyRows) {
        for (int row = first; row < behind; ++row)
            Parts(block, row).fill_row(row, colour, surface);
        return;
    }
    for (int row = first; row < behind;) {
        const int end = std::max(next_edge(block, row, behind), row + 1);
        Parts(block, row).fill(row, end, colour, surface);
        row = end;
    }
}

void fill_full(int first, int behind, std::uint32_t colour, const PixelSurface& surface) {
    std::uint32_t* pixels = surface.pixels + first * surface.stride;
    if (surface.width == kBlock) {  // a known number of pixels is a single store
        for (int row = first; row < behind; ++row, pixels += surface.stride)
            std::fill_n(pixels, kBlock, colour);
    } else {
        for (int row = first; row < behind; ++row, pixels += surface.stride)
            std::fill_n(pixels, surface.width, colour);
    }
}

void copy_pixels(const PixelSurface& from, const PixelSurface& to, int first, int behind,
                 int columns) {
    const auto bytes = static_cast<std::size_t>(columns) * sizeof(std::uint32_t);
    const std::uint32_t* source = from.pixels + first * from.stride;
    std::uint32_t* target = to.pixels + first * to.stride;
    for (int row = first; row < behind; ++row, source += from.stride, target += to.stride) {
        if (columns == kBlock)
            std::memcpy(target, source, kBlock * sizeof(std::uint32_t));  // a single store
        else
            std::memcpy(target, source, bytes);
    }
}

// Where a line begins, in stripes from the padding's first. The stripes of the line lie between the
// middles of those of the pen: what a pen reaches on either side is a whole number of them then,
// and no sample counts where the pen does not come.
double first_place(const CurveLine& line, int pad) {
    return (line.first_x + 0.5 + pad) * kStripes - 0.5;
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
    columns_ = up_to_whole(width, kBlock) + 2 * pad_;
    const auto places = static_cast<std::size_t>(columns_) * kStripes;
    samples_.top.assign(places, kNowhere);
    samples_.bottom.assign(places, -kNowhere);
    between_.assign(places, std::numeric_limits<float>::quiet_NaN());
    pen_.top.assign(places, kNowhere);
    pen_.bottom.assign(places, -kNowhere);
}

// Stripes are counted from the padding's first.
std::size_t CurveRaster::place_of(int stripe) const {
    const int place = stripe % kStripes * columns_ + stripe / kStripes;
    return static_cast<std::size_t>(place);
}

// The line's height between every two stripes, and the samples inside of each.
void CurveRaster::follow_line(const CurveLine& line) {
    const auto count = static_cast<double>(line.heights.size());
    const double first = first_place(line, pad_);
    const double step = line.step * kStripes;
    if (count > 1 && step > 0) {
        const double stripes = static_cast<double>(columns_) * kStripes;
        const double last = std::min(first + (count - 1) * step, stripes - 1);
        const auto begin = static_cast<int>(std::ceil(std::max(first, 0.0)));
        const auto end = static_cast<int>(std::floor(last));
        const double samples_per_stripe = 1.0 / step;
        const float* heights = line.heights.data();
        const int last_sample = static_cast<int>(line.heights.size()) - 2;
        for (int stripe = begin; stripe <= end; ++stripe) {
            const double at = (stripe - first) * samples_per_stripe;
            const int sample = std::min(static_cast<int>(at), last_sample);
            const float from = heights[sample];
            between_[place_of(stripe)] =
                from + (heights[sample + 1] - from) * static_cast<float>(at - sample);
        }
    }
    follow_samples(line);
}

void CurveRaster::follow_samples(const CurveLine& line) {
    const double first = first_place(line, pad_);
    const double step = line.step * kStripes;
    const double stripes = static_cast<double>(columns_) * kStripes;
    float* tops = samples_.top.data();
    float* bottoms = samples_.bottom.data();
    for (std::size_t i = 0; i < line.heights.size(); ++i) {
        const double at = first + static_cast<double>(i) * step;
        if (at < 0 || at >= stripes) continue;
        const std::size_t place = place_of(static_cast<int>(at));
        const float height = line.heights[i];
        tops[place] = std::min(tops[place], height);
        bottoms[place] = std::max(bottoms[place], height);
    }
}

// A disc with its middle anywhere on the line: each stripe of the pen takes what the line reaches
// around it, raised by the height that the disc has at that distance.
void CurveRaster::widen(double radius) {
    const int reach = static_cast<int>(std::lround(radius * kStripes));
    const auto disc = [&](double stripes) {
        const double away = stripes / kStripes;
        return static_cast<float>(std::sqrt(std::max(radius * radius - away * away, 0.0)));
    };
    for (int k = 0; k < kStripes; ++k) {
        for (int d = -reach; d <= reach; ++d)
            raise(k, d, between_, between_, disc(d));
        for (int d = -reach; d < reach; ++d)
            raise(k, d, samples_.top, samples_.bottom, disc(d + 0.5));
    }
}

// One stripe of the pen in all columns. Where there is no line, nothing is changed: a comparison
// with no number is never true.
void CurveRaster::raise(int k, int distance, const std::vector<float>& tops,
                        const std::vector<float>& bottoms, float height) {
    const std::size_t place = place_of(k + distance + pad_ * kStripes);
    const float* line_top = tops.data() + place;
    const float* line_bottom = bottoms.data() + place;
    float* top = pen_.top.data() + k * columns_;
    float* bottom = pen_.bottom.data() + k * columns_;
    const int columns = columns_ - 2 * pad_;
    for (int i = 0; i < columns; ++i) {
        top[i] = std::min(top[i], line_top[i] - height);
        bottom[i] = std::max(bottom[i], line_bottom[i] + height);
    }
}

void CurveRaster::fill_block(int column, std::uint32_t colour, const PixelSurface& surface) {
    const Block block =
        block_at(pen_.top.data() + column, pen_.bottom.data() + column,
                 static_cast<std::size_t>(columns_), static_cast<float>(surface.height));
    if (block.first >= block.behind) return;
    const PixelSurface part{surface.pixels + column, std::min(kBlock, surface.width - column),
                            surface.height, surface.stride};
    fill_edges(block, block.first, block.full_first, colour, part);
    fill_full(block.full_first, block.full_behind, colour, part);
    fill_edges(block, block.full_behind, block.behind, colour, part);

    drawn_.push_back({column, block.first, block.behind});
}

void CurveRaster::erase(const PixelSurface& background, const PixelSurface& surface) {
    double covered = 0;
    for (const Drawn& drawn : drawn_)
        covered += static_cast<double>(drawn.behind - drawn.first) * kBlock;
    if (covered > kMuch * surface.width * surface.height) {
        copy_pixels(background, surface, 0, surface.height, surface.width);
    } else {
        for (const Drawn& drawn : drawn_)
            copy_pixels(
                {background.pixels + drawn.column, background.width, background.height,
                 background.stride},
                {surface.pixels + drawn.column, surface.width, surface.height, surface.stride},
                drawn.first, drawn.behind, std::min(kBlock, surface.width - drawn.column));
    }
    drawn_.clear();
}

}  // namespace servo::scope
