// A full repaint of four traces of 8,192 samples at 1600 x 900, from raw samples to pixels, against
// drawing the same picture, already converted, with one line for each segment; and what a pen of
// two pixels costs.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench/ratio.h"
#include "scope/plot_figures_view.h"
#include "tests/scope_ui/plot_samples.h"

namespace {

using namespace servo::scope;
using servo::bench::Report;

constexpr QSize kSize{1600, 900};
constexpr int kSamples = 8192;
constexpr double kAgainstSegments = 0.25;
constexpr double kRandomMilliseconds = 15;
constexpr double kWidePen = 2.5;

struct Repaint {
    Repaint(Kind kind, double pen) : data(recorded(kind, kSamples)), pen_width(pen) {
        picture.set_font(QApplication::font());
        picture.set_pen_width(pen);
        (*this)();
    }

    // As behind every change of the view.
    void operator()() {
        picture.set_scene(plot_scene(data, operands, references, servo::base::Language::kEnglish));
        benchmark::DoNotOptimize(picture.image(kSize, 1).constBits());
    }

    ScopeData data;
    double pen_width;
    servo::link::FormulaOperands operands = sample_operands();
    References references;
    PlotPicture picture;
};

// The same picture with its background ready and its curves converted; only the way to draw curves
// differs.
struct Segments {
    Segments(Kind kind, double pen) : pen_width(pen) {
        const ScopeData data = recorded(kind, kSamples);
        const PlotScene whole =
            plot_scene(data, sample_operands(), {}, servo::base::Language::kEnglish);
        scene = whole;
        PlotScene without = whole;
        without.curves.clear();
        PlotPicture empty;
        empty.set_font(QApplication::font());
        empty.set_scene(std::move(without));
        background = empty.image(kSize, 1).copy();
        sprites.prepare(QApplication::font(), 1);
        image = background.copy();
    }

    void operator()() {
        std::memcpy(image.bits(), background.constBits(),
                    static_cast<std::size_t>(image.sizeInBytes()));
        draw_each_segment(image, scene, pen_width);
        const PictureFrame frame{QRectF({0, 0}, QSizeF(kSize)), 1};
        QPainter painter(&image);
        for (const PlacedShape& shape : placed_shapes(scene, frame))
            sprites.shape(painter, shape.at, shape.channel);
        for (const PlacedFlag& flag : placed_flags(scene, frame, QApplication::font()))
            sprites.flag(painter, flag.tip, flag.channel, flag.end);
        benchmark::DoNotOptimize(image.constBits());
    }

    double pen_width;
    PlotScene scene;
    QImage background;
    QImage image;
    PlotSprites sprites;
};

void measure_against_segments(Kind kind, Report& report) {
    Repaint ours(kind, 1.0);
    Segments segments(kind, 1.0);
    const auto taken = servo::bench::take_turns(15, ours, 4, segments, 1);
    std::printf("%s: repaint %.2f ms, one line per segment %.2f ms\n", name_of(kind),
                taken.ours * 1e3, taken.reference * 1e3);
    report.at_most(fmt::format("plot-{}-against-segments", name_of(kind)),
                   taken.ours / taken.reference, kAgainstSegments);
    if (kind != Kind::kRandom) return;
    report.at_most("plot-random-ms", taken.ours * 1e3, kRandomMilliseconds);
}

void measure_wide_pen(Kind kind, Report& report) {
    Repaint wide(kind, 2.0);
    Repaint thin(kind, 1.0);
    const auto taken = servo::bench::take_turns(15, wide, 4, thin, 4);
    std::printf("%s: pen of 2 pixels %.2f ms, of 1 pixel %.2f ms\n", name_of(kind),
                taken.ours * 1e3, taken.reference * 1e3);
    report.at_most(fmt::format("plot-{}-wide-pen-against-thin", name_of(kind)),
                   taken.ours / taken.reference, kWidePen);
}

}  // namespace

int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QApplication application(argc, argv);
    Report report;
    for (const Kind kind : {Kind::kSmooth, Kind::kNoisy, Kind::kRandom})
        measure_against_segments(kind, report);
    for (const Kind kind : {Kind::kSmooth, Kind::kNoisy, Kind::kRandom})
        measure_wide_pen(kind, report);
    return report.exit_status();
}
