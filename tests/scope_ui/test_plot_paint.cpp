// The plot's picture against the full drawing with one line for each segment, and on paper.
#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <QSvgRenderer>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "scope/plot_figures_view.h"
#include "scope_ui/plot_samples.h"

namespace servo::scope {
namespace {

PlotScene scene_of(const ScopeData& data, const References& references = {}) {
    return plot_scene(data, sample_operands(), references, base::Language::kEnglish);
}

// --- Curves column by column

// How much of the colour a pixel has on white, 0 to 1.
double coverage(QRgb pixel, QRgb colour) {
    return static_cast<double>(255 - qRed(pixel)) / (255 - qRed(colour));
}

struct Edges {
    int top = -1;
    int bottom = -1;
};

Edges edges(const QImage& image, int x, QRgb colour, double least) {
    Edges found;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (coverage(row[x], colour) < least) continue;
        if (found.top < 0) found.top = y;
        found.bottom = y;
    }
    return found;
}

struct Case {
    Kind kind;
    ZoomWindow window;
    double ratio;
    double pen;  // at 100 percent
};

class CurvePicture : public testing::TestWithParam<Case> {
  protected:
    // One curve, so that every coloured pixel is its own.
    PlotScene scene() const {
        ScopeData data = recorded(GetParam().kind, 8192, 1);
        data.zoomDepth = 1;
        data.zoomWindow[1] = GetParam().window;
        PlotScene made = scene_of(data);
        made.curves.at(0).channel = 0;
        return made;
    }
    QImage blank() const {
        QImage image((QSizeF(800, 450) * GetParam().ratio).toSize(), QImage::Format_RGB32);
        image.fill(Qt::white);
        return image;
    }
    double pen() const { return GetParam().pen * GetParam().ratio; }

    // The raster alone: grid and shapes are not what is compared.
    QImage ours(const SceneCurve& curve) const {
        QImage image = blank();
        std::vector<float> heights;
        const PlotArea area{0, 0, image.width() - 1.0, image.height() - 1.0};
        curve_heights(curve.values, curve.transform, area, heights);
        const double first = curve.transform.x(curve.times.first_at, area);
        CurveRaster raster;
        raster.draw({heights, first, curve.transform.x(curve.times.first_at + 1, area) - first},
                    pen(), palette::kCurves[0],
                    {reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(),
                     image.bytesPerLine() / 4});
        return image;
    }
};

// A pixel counts as coloured from a quarter of its area on, which is one of the four stripes that a
// column is looked at by. The edges of the full drawing are taken at a tenth and at a half: what is
// a quarter to us may be anything between, since it paints the faint rims of lines that cross a
// pixel over each other.
TEST_P(CurvePicture, NoColumnDiffersFromTheFullDrawingByMoreThanAPixel) {
    const PlotScene shown = scene();
    const QImage picture = ours(shown.curves.at(0));
    QImage full = blank();
    // Just above one pixel: the toolkit's own lines of one pixel have stray dots at their ends.
    draw_each_segment(full, shown, std::max(pen(), 1.001));
    const QRgb colour = palette::kCurves[0];
    int wrong = 0;
    for (int x = 0; x < full.width(); ++x) {
        const Edges seen = edges(picture, x, colour, 0.245);
        const Edges faint = edges(full, x, colour, 0.1);
        const Edges strong = edges(full, x, colour, 0.5);
        if (strong.top >= 0 && seen.top < 0) ++wrong;
        if (seen.top < 0) continue;
        if (faint.top < 0 || seen.top < faint.top - 1 || seen.bottom > faint.bottom + 1) ++wrong;
        if (strong.top >= 0 && (seen.top > strong.top + 1 || seen.bottom < strong.bottom - 1))
            ++wrong;
    }
    EXPECT_EQ(wrong, 0) << "columns of " << full.width();
    if (wrong > 0 && qEnvironmentVariableIsSet("SERVO_KEEP_PICTURES")) {
        const QString folder = qEnvironmentVariable("SERVO_KEEP_PICTURES");
        picture.save(folder + QStringLiteral("/ours.png"));
        full.save(folder + QStringLiteral("/full.png"));
    }
}

std::vector<Case> cases() {
    std::vector<Case> made;
    for (const Kind kind : {Kind::kSmooth, Kind::kNoisy, Kind::kRandom})
        for (const ZoomWindow& window :
             {ZoomWindow{0, 8191}, {1000, 4000}, {2000, 2700}, {3000, 3150}, {4000, 4010}})
            for (const double ratio : {1.0, 2.0})
                for (const double pen : {1.0, 2.0})
                    made.push_back({kind, window, ratio, pen});
    return made;
}

INSTANTIATE_TEST_SUITE_P(All, CurvePicture, testing::ValuesIn(cases()),
                         [](const testing::TestParamInfo<Case>& tried) {
                             const Case& shown = tried.param;
                             return std::string(name_of(shown.kind)) + "_" +
                                    std::to_string(shown.window.last - shown.window.first + 1) +
                                    "_ratio" + std::to_string(static_cast<int>(shown.ratio)) +
                                    "_pen" + std::to_string(static_cast<int>(shown.pen));
                         });

// --- The cached picture

class PictureTest : public testing::Test {
  protected:
    QImage fresh(const PlotScene& scene, QSize size = {600, 340}, qreal ratio = 1) {
        PlotPicture picture;
        picture.set_font(QApplication::font());
        picture.set_scene(scene);
        return picture.image(size, ratio).copy();
    }
    static int pixels_of(const QImage& image, QRgb colour) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) == colour) ++count;
        return count;
    }
};

TEST_F(PictureTest, ChangesLeaveNothingOfThePictureBefore) {
    References references;
    references.keep("R1", recording_of(recorded(Kind::kNoisy, 300), {0, 299}, sample_operands()));
    ScopeData zoomed = recorded(Kind::kSmooth, 2000);
    zoomed.zoomDepth = 1;
    zoomed.zoomWindow[1] = {100, 130};
    ScopeData outside = recorded(Kind::kNoisy, 500, 2);
    outside.channels[0].offsetText = "90";
    const std::vector<PlotScene> scenes{scene_of(recorded(Kind::kSmooth, 2000)),
                                        scene_of(zoomed),
                                        scene_of(recorded(Kind::kRandom, 8192)),
                                        PlotScene{},
                                        scene_of(recorded(Kind::kSmooth, 300), references),
                                        scene_of(outside)};
    for (const qreal ratio : {1.0, 1.5, 2.0}) {
        PlotPicture picture;
        picture.set_font(QApplication::font());
        for (const PlotScene& before : scenes) {
            for (const PlotScene& scene : scenes) {
                picture.set_scene(before);
                picture.image({600, 340}, ratio);
                picture.set_scene(scene);
                ASSERT_EQ(picture.image({600, 340}, ratio), fresh(scene, {600, 340}, ratio));
            }
        }
    }
}

TEST_F(PictureTest, AllHiddenShowsTheGridAlone) {
    ScopeData data = recorded(Kind::kSmooth, 500);
    const QImage curves = fresh(scene_of(data));
    for (ScopeChannel& channel : data.channels)
        channel.hide = true;
    const QImage grid = fresh(scene_of(data));
    for (const std::uint32_t colour : palette::kCurves) {
        EXPECT_GT(pixels_of(curves, colour), 100);
        EXPECT_EQ(pixels_of(grid, colour), 0);
    }
    EXPECT_GT(pixels_of(grid, palette::kMiddle), 900);
}

TEST_F(PictureTest, HugeScaleIsALineThroughTheMiddle) {
    ScopeData data = recorded(Kind::kRandom, 8192, 1);
    data.channels[0].scale = 1e300;
    data.channels[0].offsetText = "0";
    const QImage image = fresh(scene_of(data), {601, 341});
    for (int x = 40; x < 600; ++x)
        ASSERT_NE(image.pixel(x, 170), palette::kPlot) << x;
    EXPECT_EQ(image.pixel(333, 165), palette::kPlot);
}

TEST_F(PictureTest, WindowOfOneSampleAndScaleOfZeroArePainted) {
    ScopeData data = recorded(Kind::kSmooth, 500);
    data.zoomDepth = 1;
    data.zoomWindow[1] = {77, 77};
    data.channels[1].scale = 0;
    References references;
    references.keep("R1", recording_of(recorded(Kind::kNoisy, 300), {0, 299}, sample_operands()));
    EXPECT_FALSE(fresh(scene_of(data, references)).isNull());
    data.zoomWindow[1] = {-30, 5};
    EXPECT_FALSE(fresh(scene_of(data, references)).isNull());
}

TEST_F(PictureTest, SamplesFarApartHaveDots) {
    ScopeData data = recorded(Kind::kSmooth, 500, 1);
    const PictureFrame frame{QRectF(0, 0, 600, 340), 1};
    const auto dots = [&] {
        const auto shapes = placed_shapes(scene_of(data), frame);
        return std::count_if(shapes.begin(), shapes.end(), [](const auto& s) { return s.dot; });
    };
    EXPECT_EQ(dots(), 0);
    data.zoomDepth = 1;
    data.zoomWindow[1] = {100, 120};
    EXPECT_EQ(dots(), 21);
}

TEST_F(PictureTest, ShapesOfTheFourCurvesTakeTurns) {
    const PictureFrame frame{QRectF(0, 0, 800, 340), 1};
    std::vector<PlacedShape> shapes = placed_shapes(scene_of(recorded(Kind::kSmooth, 8192)), frame);
    ASSERT_EQ(shapes.size(), 16U);
    std::sort(shapes.begin(), shapes.end(),
              [](const auto& a, const auto& b) { return a.at.x() < b.at.x(); });
    for (std::size_t i = 0; i < shapes.size(); ++i)
        EXPECT_EQ(shapes[i].channel, static_cast<int>(i % 4));
}

// --- Flags: Label1 to Label4

class FlagTest : public testing::Test {
  protected:
    std::vector<PlacedFlag> flags() {
        return placed_flags(scene_of(data), frame, QApplication::font());
    }
    PictureFrame frame{QRectF(0, 0, 801, 401), 1};
    ScopeData data = recorded(Kind::kSmooth, 500);
};

TEST_F(FlagTest, StandAtTheHeightOfTheZeroLines) {
    data.channels[0].offsetText = "2";  // up by two of ten divisions
    data.channels[0].scale = 1;
    const auto placed = flags();
    ASSERT_EQ(placed.size(), 4U);
    EXPECT_EQ(placed[0].channel, 0);
    EXPECT_NEAR(placed[0].tip.y(), 0.5 + 400 * 0.3, 0.01);
    EXPECT_EQ(placed[0].end, FlagEnd::kHere);
}

TEST_F(FlagTest, StayInsideWithAnArrowToTheirLine) {
    data.channels[0].offsetText = "40";
    data.channels[1].offsetText = "-40";
    const auto placed = flags();
    EXPECT_EQ(placed[0].end, FlagEnd::kAbove);
    EXPECT_GT(placed[0].tip.y(), 5);
    EXPECT_EQ(placed[1].end, FlagEnd::kBelow);
    EXPECT_LT(placed[1].tip.y(), 396);
}

TEST_F(FlagTest, StandSideBySideInOnePlace) {
    for (ScopeChannel& channel : data.channels)
        channel.offsetText = "0";
    const auto placed = flags();
    for (std::size_t i = 1; i < placed.size(); ++i) {
        EXPECT_EQ(placed[i].tip.y(), placed[0].tip.y());
        EXPECT_GT(placed[i].tip.x(), placed[i - 1].tip.x() + 10);
    }
}

TEST_F(FlagTest, HiddenChannelsHaveNone) {
    data.channels[2].hide = true;
    const auto placed = flags();
    EXPECT_EQ(placed.size(), 3U);
}

// --- Paper

TEST(PlotPaper, SvgHasTheCurvesAsLines) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QSvgGenerator generator;
        generator.setOutputDevice(&buffer);
        generator.setSize({800, 450});
        generator.setViewBox(QRect(0, 0, 800, 450));
        QPainter painter(&generator);
        paint_plot(painter, {0, 0, 800, 450}, scene_of(recorded(Kind::kRandom, 8192)),
                   QApplication::font());
    }
    EXPECT_EQ(buffer.data().count("<polyline"), 4);
    EXPECT_FALSE(buffer.data().contains("<image"));
    EXPECT_TRUE(QSvgRenderer(buffer.data()).isValid());
}

TEST(PlotPaper, PdfIsWritten) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(96);
        QPainter painter(&writer);
        paint_plot(painter, {0, 0, 700, 450}, scene_of(recorded(Kind::kSmooth, 500)),
                   QApplication::font());
    }
    EXPECT_TRUE(buffer.data().startsWith("%PDF"));
    EXPECT_GT(buffer.data().size(), 4000);
}

TEST(PlotPaper, SheetNeedsNoRecordingAndNoRoom) {
    QImage image(40, 30, QImage::Format_RGB32);
    QPainter painter(&image);
    paint_plot(painter, {0, 0, 40, 30}, scene_of(recorded(Kind::kSmooth, 500)),
               QApplication::font());
    paint_plot(painter, {0, 0, 40, 30}, PlotScene{}, QApplication::font());
}

}  // namespace
}  // namespace servo::scope
