// The picture under the pointer: read-outs, cross, marks.
#include <QMouseEvent>
#include <cmath>

#include "tuner_window_bench.h"

namespace servo::tuner::test {
namespace {

struct PictureTest : testing::Test, WindowBench {
    void move_to(int x, int y) {
        QTest::mouseMove(&picture(), QPoint(x, y));
        QMouseEvent event(QEvent::MouseMove, QPointF(x, y), picture().mapToGlobal(QPointF(x, y)),
                          Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&picture(), &event);
    }
    Surface surface() { return scene().surface; }
};

TEST_F(PictureTest, TheReadOutsFollowTheMouse) {
    load();
    const int x = picture().width() / 3;
    const int y = picture().height() / 5;
    move_to(x, y);
    const PointerTexts expected = pointer_texts(surface(), x * kUnitsPerPixel, y * kUnitsPerPixel);
    EXPECT_EQ(text("Label15"), expected.Label15);
    EXPECT_EQ(text("Label14"), expected.Label14);
    EXPECT_EQ(text("Label37"), expected.Label37);
    EXPECT_EQ(expected.Label15.substr(expected.Label15.size() - 3), " Hz");
}

TEST_F(PictureTest, ZeroDecibelsAreAQuarterOfTheWayDown) {
    move_to(10, picture().height() / 4);
    EXPECT_NEAR(std::stod(text("Label14")), 0.0, 0.5);
    move_to(10, picture().height() - 1);
    EXPECT_LT(std::stod(text("Label14")), -118.0);
    choose("Combo2", 1);
    move_to(10, picture().height() - 1);
    EXPECT_LT(std::stod(text("Label14")), -236.0);
}

TEST_F(PictureTest, AThousandHertzAreAtTheRightEdge) {
    move_to(picture().width() - 1, 10);
    EXPECT_NEAR(std::stod(text("Label15")), 1000.0, 15.0);
    move_to(1, 10);
    EXPECT_NEAR(std::stod(text("Label15")), 1.0, 0.02);
}

TEST_F(PictureTest, TheCrossReadsEveryCurveThatIsShown) {
    load();
    simulate();
    move_to(picture().width() / 2, 40);
    const auto& readings = picture().overlay().readings;
    ASSERT_EQ(readings.size(), 3U) << "motor and load, open and closed velocity loop";
    EXPECT_EQ(readings[0].curve, Curve::kPlant);
    EXPECT_TRUE(readings[0].gain.has_value());
    EXPECT_TRUE(readings[0].phase.has_value());
    click("Check3");
    window.refresh_now();
    EXPECT_EQ(picture().overlay().readings.size(), 2U);
}

TEST_F(PictureTest, TheCrossLeavesWithTheMouse) {
    move_to(20, 20);
    EXPECT_TRUE(picture().overlay().shown);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&picture(), &leave);
    EXPECT_FALSE(picture().overlay().shown);
}

TEST_F(PictureTest, ArrowKeysMoveTheCross) {
    load();
    key("PictureA", Qt::Key_Right);
    const ScenePoint at = picture().overlay().at;
    EXPECT_TRUE(picture().overlay().shown);
    key("PictureA", Qt::Key_Right);
    key("PictureA", Qt::Key_Down);
    EXPECT_EQ(picture().overlay().at, (ScenePoint{at.x + kUnitsPerPixel, at.y + kUnitsPerPixel}));
    key("PictureA", Qt::Key_Left, Qt::ControlModifier);
    key("PictureA", Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(picture().overlay().at,
              (ScenePoint{at.x - 9 * kUnitsPerPixel, at.y - 9 * kUnitsPerPixel}));
    const std::string here = text("Label15");
    EXPECT_EQ(here, pointer_texts(surface(), picture().overlay().at.x, 0).Label15);
    key("PictureA", Qt::Key_Home);
    EXPECT_EQ(text("Label15"), "1.0 Hz");
    key("PictureA", Qt::Key_End);
    EXPECT_EQ(text("Label15"), "1000.0 Hz");
    key("PictureA", Qt::Key_Right);
    EXPECT_EQ(picture().overlay().at.x, surface().width) << "the edge holds it";
}

TEST_F(PictureTest, EscPutsTheCrossAway) {
    key("PictureA", Qt::Key_Right);
    key("PictureA", Qt::Key_Escape);
    EXPECT_FALSE(picture().overlay().shown);
}

TEST_F(PictureTest, PageKeysGoFromMarkToMark) {
    load();
    const auto marks = scene().marks;
    ASSERT_GE(marks.size(), 2U);
    key("PictureA", Qt::Key_Home);
    key("PictureA", Qt::Key_PageDown);
    const int first = picture().overlay().at.x;
    key("PictureA", Qt::Key_PageDown);
    EXPECT_GT(picture().overlay().at.x, first);
    key("PictureA", Qt::Key_PageUp);
    EXPECT_EQ(picture().overlay().at.x, first);
    for (std::size_t i = 0; i < marks.size(); ++i)
        key("PictureA", Qt::Key_PageDown);
    EXPECT_EQ(picture().overlay().at.x, first) << "around";
}

// What lies below its area is marked inside of it.
TEST_F(PictureTest, AMarkBelowTheAreaIsDrawnAtItsEdge) {
    load();
    choose("Combo2", 1);
    window.refresh_now();
    const QImage with = picture().grab().toImage();
    const SceneArea area = scene().gain;
    // The picture has the pixels of the device.
    const int below =
        static_cast<int>(std::lround(with.devicePixelRatio() * area.bottom / kUnitsPerPixel));
    int red = 0;
    for (int y = below; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x) {
            const QColor colour = with.pixelColor(x, y);
            if (colour.red() > 140 && colour.green() < 80 && colour.blue() < 60) ++red;
        }
    EXPECT_EQ(red, 0);
}

TEST_F(PictureTest, DrawingTakesTheRedrawFlagsBack) {
    load();
    window.refresh_now();
    picture().repaint();
    EXPECT_FALSE(tuner.data().redraw_gain);
    EXPECT_FALSE(tuner.data().redraw_phase);
    EXPECT_FALSE(tuner.data().redraw_filters);
}

TEST_F(PictureTest, CurvesAreSeenInTheirColours) {
    load();
    simulate();
    const QImage shown = picture().grab().toImage();
    int dark = 0;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            if (qGray(shown.pixel(x, y)) < 110) ++dark;
    EXPECT_GT(dark, 500);
}

}  // namespace
}  // namespace servo::tuner::test
