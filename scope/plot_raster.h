// Draws curves into the pixels themselves. A curve is a function of the abscissa, so that what it
// covers of a pixel follows from how far it reaches up and down in a few stripes of the pixel's
// column. The cost is that of the samples and of the area covered; it hardly depends on how the
// curve runs to and fro, nor on the width of the pen, where a stroked outline takes seconds for
// noise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace servo::scope {

// Rows of 0xffRRGGBB; may be a part of a larger picture.
struct PixelSurface {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;  // from row to row, in pixels
};

// Samples at even distances. Coordinates are those of pixel centres: (0, 0) is the middle of the
// first pixel.
struct CurveLine {
    std::span<const float> heights;
    double first_x = 0.0;
    double step = 1.0;  // above 0 for more than one sample
};

// Keeps its memory between curves, and knows where it has drawn, so that a picture of a few thin
// curves is cleared by what they covered. One raster for one surface.
class CurveRaster {
  public:
    static constexpr int kStripes = 4;  // of a column

    // Along the line with a round pen of that diameter in pixels (1 to 64). The colour is opaque.
    void draw(const CurveLine& line, double pen_width, std::uint32_t colour,
              const PixelSurface& surface);

    // Puts the background, of the same size, back to where curves were drawn.
    void erase(const PixelSurface& background, const PixelSurface& surface);
    // The surface was cleared by other means, or is another.
    void forget() { drawn_.clear(); }

  private:
    // Highest and lowest place in each column; stripe by stripe, so that those of neighbouring
    // columns stand side by side.
    struct Extents {
        std::vector<float> top;
        std::vector<float> bottom;
    };
    struct Drawn {
        int column = 0;  // of the first of a block
        int first = 0;   // rows
        int behind = 0;
    };

    void reset(int width, double radius);
    void follow_line(const CurveLine& line);
    void follow_samples(const CurveLine& line);
    void widen(double radius);
    void raise(int k, int distance, const std::vector<float>& tops,
               const std::vector<float>& bottoms, float height);
    void fill_block(int column, std::uint32_t colour, const PixelSurface& surface);
    std::size_t place_of(int stripe) const;

    int pad_ = 0;                 // columns before the first: the pen reaches in from there
    int columns_ = 0;             // with those on both sides
    std::vector<float> between_;  // heights of the line before each stripe; no number beside it
    Extents samples_;             // those inside of each stripe
    Extents pen_;                 // what the pen covers
    std::vector<Drawn> drawn_;
};

}  // namespace servo::scope
