// The mouse on the plot, and the same by wheel and keyboard.
#include <gtest/gtest.h>

#include <vector>

#include "scope/plot_mouse.h"

namespace servo::scope {
namespace {

constexpr double kMiddle = 5000;

class PlotMouseTest : public testing::Test {
  protected:
    PlotMouseTest() {
        data.dataValid = true;
        data.zoomWindow[0] = {0, 999};
    }

    void zoom_to(std::int16_t first, std::int16_t last) {
        data.zoomDepth = 1;
        data.zoomWindow[1] = {first, last};
    }
    void draw_rectangle(double from, double to) {
        mouse.Picture1_MouseDown(MouseButton::kRight, from, 1000);
        mouse.Picture1_MouseMove(MouseButton::kRight, to, 2000);
        mouse.Picture1_MouseUp(MouseButton::kRight, to, 2000);
    }
    void pan(double from, double to) {
        mouse.Picture1_MouseDown(MouseButton::kLeft, from, kMiddle);
        mouse.Picture1_MouseMove(MouseButton::kLeft, to, kMiddle);
        mouse.Picture1_MouseUp(MouseButton::kLeft, to, kMiddle);
    }
    CursorPlace& cursor(Cursor which) { return data.cursors.at(static_cast<std::size_t>(which)); }

    ScopeData data;
    std::vector<bool> views;  // each with its `times`
    int cursor_moves = 0;
    int tool_changes = 0;
    PlotMouse mouse{data,
                    {.view_changed = [this](bool times) { views.push_back(times); },
                     .cursor_moved = [this] { ++cursor_moves; },
                     .tool_changed = [this] { ++tool_changes; }}};
};

// --- Rectangle

TEST_F(PlotMouseTest, RectangleZoomsInByIntegerArithmetic) {
    draw_rectangle(2000, 3333);
    EXPECT_EQ(data.zoomDepth, 1);
    // 999 * 2000 / 10000 and 999 * 3333 / 10000, cut.
    EXPECT_EQ(data.window(), (ZoomWindow{199, 332}));
    EXPECT_EQ(views, std::vector<bool>{true});
    EXPECT_FALSE(mouse.rectangle());
}

TEST_F(PlotMouseTest, RectangleInsideOfAZoomCountsFromItsFirst) {
    zoom_to(100, 200);
    draw_rectangle(2555, 7599);
    EXPECT_EQ(data.zoomDepth, 2);
    EXPECT_EQ(data.window(), (ZoomWindow{125, 175}));
}

TEST_F(PlotMouseTest, RectangleFollowsThePointer) {
    mouse.Picture1_MouseDown(MouseButton::kRight, 100, 200);
    ASSERT_TRUE(mouse.rectangle());
    mouse.Picture1_MouseMove(MouseButton::kRight, 300, 50);
    EXPECT_EQ(mouse.rectangle()->rectangle_x1, 100);
    EXPECT_EQ(mouse.rectangle()->rectangle_y1, 200);
    EXPECT_EQ(mouse.rectangle()->rectangle_x2, 300);
    EXPECT_EQ(mouse.rectangle()->rectangle_y2, 50);
    EXPECT_EQ(tool_changes, 2);
}

TEST_F(PlotMouseTest, RectangleFromRightToLeftZoomsOutAndIsNoMirroredZoom) {
    zoom_to(100, 200);
    draw_rectangle(8000, 2000);
    EXPECT_EQ(data.zoomDepth, 0);
    EXPECT_EQ(data.window(), (ZoomWindow{0, 999}));
    EXPECT_EQ(views, std::vector<bool>{true});
}

TEST_F(PlotMouseTest, ZoomOutAtLevelZeroChangesNothing) {
    draw_rectangle(8000, 2000);
    EXPECT_EQ(data.zoomDepth, 0);
    EXPECT_EQ(data.window(), (ZoomWindow{0, 999}));
}

TEST_F(PlotMouseTest, ClickWithoutTravelZoomsOut) {
    zoom_to(100, 200);
    draw_rectangle(4000, 4000);
    EXPECT_EQ(data.zoomDepth, 0);
}

TEST_F(PlotMouseTest, ZoomAtLevelTenIsIgnoredAndTheLevelStays) {
    for (int level = 0; level < 10; ++level)
        draw_rectangle(0, 10000);
    ASSERT_EQ(data.zoomDepth, 10);
    const ZoomWindow before = data.window();
    draw_rectangle(1000, 2000);
    EXPECT_EQ(data.zoomDepth, 10);
    EXPECT_EQ(data.window(), before);
    EXPECT_FALSE(mouse.zoom_in(0.5));
}

TEST_F(PlotMouseTest, StoredWindowIsUsedAgainOnTheWayOut) {
    draw_rectangle(1000, 9000);
    const ZoomWindow outer = data.window();
    draw_rectangle(1000, 2000);
    draw_rectangle(2000, 1000);
    EXPECT_EQ(data.window(), outer);
}

TEST_F(PlotMouseTest, RectangleOutsideOfThePictureEndsAtItsEdge) {
    draw_rectangle(5000, 25000);
    EXPECT_EQ(data.window(), (ZoomWindow{499, 999}));
}

TEST_F(PlotMouseTest, NarrowRectangleGivesOneSample) {
    draw_rectangle(5000, 5001);
    EXPECT_EQ(data.window(), (ZoomWindow{499, 499}));
    draw_rectangle(1000, 9000);  // and from there on too
    EXPECT_EQ(data.window(), (ZoomWindow{499, 499}));
    EXPECT_FALSE(mouse.zoom_in(0.5));
}

TEST_F(PlotMouseTest, NoRectangleWhileACursorIsOn) {
    cursor(Cursor::kX1).on = true;
    draw_rectangle(1000, 9000);
    EXPECT_EQ(data.zoomDepth, 0);
    EXPECT_TRUE(views.empty());
}

TEST_F(PlotMouseTest, NothingHappensWithoutARecording) {
    data.dataValid = false;
    draw_rectangle(1000, 9000);
    pan(1000, 2000);
    EXPECT_EQ(data.zoomDepth, 0);
    EXPECT_TRUE(views.empty());
    EXPECT_FALSE(mouse.rectangle());
    EXPECT_FALSE(mouse.zoom_in(0.5));
    EXPECT_FALSE(mouse.zoom_out());
    EXPECT_FALSE(mouse.shift(1));
}

// --- Hand

TEST_F(PlotMouseTest, HandToolIsSwitchedByItsPictureAndOffByTheRightButton) {
    mouse.Image8_Click();
    EXPECT_TRUE(data.handTool);
    EXPECT_EQ(mouse.pointer(), Pointer::kHand);
    mouse.Picture1_MouseDown(MouseButton::kRight, kMiddle, kMiddle);
    EXPECT_FALSE(data.handTool);
    EXPECT_EQ(mouse.pointer(), Pointer::kArrow);
    EXPECT_FALSE(mouse.rectangle());
}

TEST_F(PlotMouseTest, HandGrabsWhileTheLeftButtonIsHeld) {
    mouse.Image8_Click();
    mouse.Picture1_MouseDown(MouseButton::kLeft, kMiddle, kMiddle);
    EXPECT_EQ(mouse.pointer(), Pointer::kGrabbing);
    mouse.Picture1_MouseUp(MouseButton::kLeft, kMiddle, kMiddle);
    EXPECT_EQ(mouse.pointer(), Pointer::kHand);
}

TEST_F(PlotMouseTest, HundredUnitsPanByOneSample) {
    zoom_to(100, 200);
    mouse.Image8_Click();
    pan(5000, 4000);
    EXPECT_EQ(data.window(), (ZoomWindow{110, 210}));
    EXPECT_EQ(views, std::vector<bool>{false});
    pan(4000, 4249);  // 2.49 samples
    EXPECT_EQ(data.window(), (ZoomWindow{108, 208}));
}

TEST_F(PlotMouseTest, PanCountsFromWhereItBegan) {
    zoom_to(100, 200);
    mouse.Image8_Click();
    mouse.Picture1_MouseDown(MouseButton::kLeft, 5000, kMiddle);
    mouse.Picture1_MouseMove(MouseButton::kLeft, 4960, kMiddle);
    mouse.Picture1_MouseMove(MouseButton::kLeft, 4920, kMiddle);
    EXPECT_EQ(data.window(), (ZoomWindow{101, 201}));  // 0.8 in all, and not twice 0.4
    mouse.Picture1_MouseMove(MouseButton::kLeft, 5000, kMiddle);
    EXPECT_EQ(data.window(), (ZoomWindow{100, 200}));
}

TEST_F(PlotMouseTest, NoPanAtLevelZero) {
    mouse.Image8_Click();
    pan(5000, 3000);
    EXPECT_EQ(data.window(), (ZoomWindow{0, 999}));
    EXPECT_TRUE(views.empty());
}

TEST_F(PlotMouseTest, NoPanWithoutTheLeftButton) {
    zoom_to(100, 200);
    mouse.Image8_Click();
    mouse.Picture1_MouseDown(MouseButton::kLeft, 5000, kMiddle);
    mouse.Picture1_MouseMove(MouseButton::kNone, 4000, kMiddle);
    EXPECT_EQ(data.window(), (ZoomWindow{100, 200}));
}

TEST_F(PlotMouseTest, NoPanWhileACursorIsOn) {
    zoom_to(100, 200);
    mouse.Image8_Click();
    cursor(Cursor::kY2).on = true;
    pan(5000, 4000);
    EXPECT_EQ(data.window(), (ZoomWindow{100, 200}));
}

TEST_F(PlotMouseTest, PanStopsAtTheEndOfTheRecording) {
    zoom_to(100, 200);
    mouse.Image8_Click();
    mouse.Picture1_MouseDown(MouseButton::kLeft, 9000, kMiddle);
    mouse.Picture1_MouseMove(MouseButton::kLeft, -200000, kMiddle);
    EXPECT_EQ(data.window(), (ZoomWindow{899, 999}));
}

TEST_F(PlotMouseTest, PanHasNoLowerLimit) {
    zoom_to(10, 110);
    mouse.Image8_Click();
    pan(0, 3000);
    EXPECT_EQ(data.window(), (ZoomWindow{-20, 80}));
    pan(0, 1e9);  // and never leaves the numbers that a window has
    EXPECT_EQ(data.window().first, INT16_MIN);
}

// --- Cursors

TEST_F(PlotMouseTest, CursorThatIsOnIsGrabbedAndFollows) {
    cursor(Cursor::kX1) = {true, 3000};
    mouse.Picture1_MouseDown(MouseButton::kLeft, 3040, 100);
    mouse.Picture1_MouseMove(MouseButton::kLeft, 4200, 200);
    EXPECT_EQ(cursor(Cursor::kX1).at, 4200);
    mouse.Picture1_MouseMove(MouseButton::kLeft, 4300, 200);
    EXPECT_EQ(cursor_moves, 2);
    mouse.Picture1_MouseUp(MouseButton::kLeft, 4300, 200);
    mouse.Picture1_MouseMove(MouseButton::kNone, 100, 100);
    EXPECT_EQ(cursor(Cursor::kX1).at, 4300);
    EXPECT_TRUE(views.empty());
}

TEST_F(PlotMouseTest, HorizontalCursorFollowsTheHeight) {
    cursor(Cursor::kY2) = {true, 7000};
    mouse.Picture1_MouseDown(MouseButton::kLeft, 100, 6990);
    mouse.Picture1_MouseMove(MouseButton::kLeft, 4200, 12000);
    EXPECT_EQ(cursor(Cursor::kY2).at, 10000);  // kept in the picture
}

TEST_F(PlotMouseTest, CursorThatIsOffIsNotGrabbed) {
    mouse.Picture1_MouseDown(MouseButton::kLeft, 3000, 100);
    mouse.Picture1_MouseMove(MouseButton::kLeft, 4200, 200);
    EXPECT_EQ(cursor(Cursor::kX1).at, 3000);
}

TEST_F(PlotMouseTest, NearerOfTwoCursorsIsGrabbed) {
    cursor(Cursor::kX1) = {true, 3000};
    cursor(Cursor::kX2) = {true, 3050};
    EXPECT_EQ(mouse.cursor_at(3010, 5000), Cursor::kX1);
    EXPECT_EQ(mouse.cursor_at(3040, 5000), Cursor::kX2);
    EXPECT_EQ(mouse.cursor_at(3200, 5000), std::nullopt);
    cursor(Cursor::kY1) = {true, 5000};
    EXPECT_EQ(mouse.cursor_at(3040, 5001), Cursor::kY1);
}

TEST_F(PlotMouseTest, LettingGoZoomsNothing) {
    mouse.Picture1_MouseDown(MouseButton::kRight, 1000, 1000);
    mouse.leave();
    EXPECT_FALSE(mouse.rectangle());
    mouse.Picture1_MouseUp(MouseButton::kRight, 5000, 1000);
    EXPECT_EQ(data.zoomDepth, 0);
}

// --- Wheel and keyboard

TEST_F(PlotMouseTest, ZoomInKeepsThePlaceUnderThePointer) {
    EXPECT_TRUE(mouse.zoom_in(0.0));
    EXPECT_EQ(data.window(), (ZoomWindow{0, 499}));
    EXPECT_TRUE(mouse.zoom_out());
    EXPECT_TRUE(mouse.zoom_in(1.0));
    EXPECT_EQ(data.window(), (ZoomWindow{500, 999}));
    EXPECT_TRUE(mouse.zoom_in(0.5));
    EXPECT_EQ(data.window(), (ZoomWindow{625, 874}));
    EXPECT_EQ(views, (std::vector<bool>{true, true, true, true}));
}

TEST_F(PlotMouseTest, ZoomInEndsWithTwoSamples) {
    data.zoomWindow[0] = {0, 3};
    EXPECT_TRUE(mouse.zoom_in(0.5));
    EXPECT_EQ(data.window().last - data.window().first, 1);
    EXPECT_FALSE(mouse.zoom_in(0.5));
    EXPECT_EQ(data.zoomDepth, 1);
}

TEST_F(PlotMouseTest, ZoomOutEndsAtTheWholeRecording) {
    EXPECT_FALSE(mouse.zoom_out());
    EXPECT_TRUE(views.empty());
}

TEST_F(PlotMouseTest, NoWheelZoomWhileTheHandOrTheRectangleIsAtWork) {
    zoom_to(100, 200);
    mouse.Picture1_MouseDown(MouseButton::kRight, 1000, 1000);
    EXPECT_FALSE(mouse.zoom_in(0.5));
    EXPECT_FALSE(mouse.zoom_out());
}

TEST_F(PlotMouseTest, ShiftStaysInsideOfTheRecording) {
    EXPECT_FALSE(mouse.shift(5));  // all is shown
    zoom_to(100, 200);
    EXPECT_TRUE(mouse.shift(5));
    EXPECT_EQ(data.window(), (ZoomWindow{105, 205}));
    EXPECT_TRUE(mouse.shift(5000));
    EXPECT_EQ(data.window(), (ZoomWindow{899, 999}));
    EXPECT_FALSE(mouse.shift(1));
    EXPECT_TRUE(mouse.shift(-5000));
    EXPECT_EQ(data.window(), (ZoomWindow{0, 100}));
    EXPECT_FALSE(mouse.shift(-1));
}

}  // namespace
}  // namespace servo::scope
