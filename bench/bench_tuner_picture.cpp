// A redraw of all twelve curves of the tuner's picture at 1600 x 900, from values to pixels, marks
// included, against drawing the same values with one line for each segment.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "bench/ratio.h"
#include "tests/tuner_ui/measured_scan.h"
#include "tuner/analysis.h"
#include "tuner/curve_line_view.h"
#include "tuner/curve_values.h"
#include "tuner/picture_image_view.h"
#include "tuner/picture_paint_view.h"
#include "tuner/simulation.h"

namespace {

using namespace servo::tuner;

constexpr QSize kSize{1600, 900};
constexpr double kMilliseconds = 5.0;
constexpr double kAgainstSegments = 0.25;
constexpr double kPen = 1.6;

// 498 analysed points and six filters, every curve ticked.
std::unique_ptr<TunerData> busy_data() {
    auto data = std::make_unique<TunerData>();
    const test::MeasuredScan scan = test::measured_scan(4, 2, 1000);
    data->settings = scan.settings;
    data->buffers = *scan.buffers;
    FirstAnalyse(data->settings, data->buffers, data->analysis);
    data->analysed = true;
    const std::array<FilterRecord, kSlots> records{{{1, 400.0F, 0.0F, 0.0F, 0.0F},
                                                    {2, 500.0F, 0.0F, 0.7F, 0.0F},
                                                    {3, 190.0F, 0.0F, 0.02F, 0.3F},
                                                    {4, 80.0F, 240.0F, 0.0F, 0.0F},
                                                    {5, 60.0F, 180.0F, 1.4F, 1.4F},
                                                    {6, 16.0F, 0.0F, 62.5e-6F, 0.0F}}};
    data->simulation = simulate(*data, records, {100.0F, 1.0F, 5.0F});
    data->choices.curves.fill(true);
    return data;
}

struct Redraw {
    explicit Redraw(const TunerData& data) : picture(data) {
        picture.set_font(QApplication::font());
        picture.set_marks(marks_of(data));
        (*this)();
    }

    void operator()() {
        picture.invalidate();
        benchmark::DoNotOptimize(picture.image(kSize, 1.0).constBits());
    }

    PictureImage picture;
};

// The grid is ready here too.
struct Segments {
    explicit Segments(const TunerData& held) : data(held) {
        const PictureScene scene = picture_scene(data, surface(), {});
        background = QImage(kSize, QImage::Format_RGB32);
        QPainter painter(&background);
        paint_grid(painter, scene, {}, QApplication::font());
        painter.end();
        image = background.copy();
    }

    Surface surface() const { return surface_of(kSize.width(), kSize.height(), data.choices); }

    void operator()() {
        std::memcpy(image.bits(), background.constBits(),
                    static_cast<std::size_t>(image.sizeInBytes()));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        for (int i = 0; i < kCurves; ++i) {
            const auto curve = static_cast<Curve>(i);
            QPen pen = curve_pen(curve);
            pen.setCosmetic(false);
            pen.setWidthF(kPen);
            painter.setPen(pen);
            const CurveValues values = curve_values(data, curve);
            for (int k = 1; k < values.size(); ++k) {
                painter.drawLine(point(values, k - 1, false), point(values, k, false));
                if (!values.phases.empty())
                    painter.drawLine(point(values, k - 1, true), point(values, k, true));
            }
        }
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }

    QPointF point(const CurveValues& values, int k, bool phase) const {
        const auto place = static_cast<std::size_t>(k);
        const int y = phase ? phase_y(surface(), values.phases[place])
                            : gain_y(surface(), values.gains[place]);
        return QPointF(frequency_x(surface(), values.frequency(k)), y) / kUnitsPerPixel;
    }

    const TunerData& data;
    QImage background;
    QImage image;
};

}  // namespace

int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QApplication application(argc, argv);
    servo::bench::Report report;
    const auto data = busy_data();
    Redraw ours(*data);
    Segments segments(*data);
    const auto taken = servo::bench::take_turns(
        15, [&] { ours(); }, 4, [&] { segments(); }, 1);
    std::printf("redraw of all curves %.2f ms, one line per segment %.2f ms\n", taken.ours * 1e3,
                taken.reference * 1e3);
    report.at_most("tuner-picture-ms", taken.ours * 1e3, kMilliseconds);
    report.at_most("tuner-picture-against-segments", taken.ours / taken.reference,
                   kAgainstSegments);
    return report.exit_status();
}
