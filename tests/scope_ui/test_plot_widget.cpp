// The widget `Picture1`: what it tells of the mouse, and what it shows under it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <vector>

#include "scope/plot_widget.h"
#include "scope_ui/plot_samples.h"

namespace servo::scope {
namespace {

struct Told {
    MouseButton button;
    double x;
    double y;
};

class PlotWidgetTest : public testing::Test {
  protected:
    PlotWidgetTest() {
        widget.resize(501, 301);
        widget.show();
        QObject::connect(&widget, &PlotWidget::pressed, [this](MouseButton b, double x, double y) {
            presses.push_back({b, x, y});
        });
        QObject::connect(&widget, &PlotWidget::moved, [this](MouseButton b, double x, double y) {
            moves.push_back({b, x, y});
        });
        QObject::connect(&widget, &PlotWidget::released, [this](MouseButton b, double x, double y) {
            releases.push_back({b, x, y});
        });
    }

    void show(const ScopeData& shown, Pointer pointer = Pointer::kArrow) {
        widget.set_scene(
            plot_scene(shown, sample_operands(), References{}, base::Language::kEnglish));
        widget.set_overlay(shown.cursors, std::nullopt, pointer);
    }
    void move(QPoint at) { QTest::mouseMove(&widget, at); }

    PlotWidget widget;
    std::vector<Told> presses;
    std::vector<Told> moves;
    std::vector<Told> releases;
    ScopeData data = recorded(Kind::kSmooth, 500);
};

TEST_F(PlotWidgetTest, HasItsNameAndKeepsTheRightButton) {
    EXPECT_EQ(widget.objectName(), QStringLiteral("Picture1"));
    EXPECT_EQ(widget.contextMenuPolicy(), Qt::PreventContextMenu);
}

TEST_F(PlotWidgetTest, TellsButtonsInPictureUnits) {
    QTest::mousePress(&widget, Qt::RightButton, {}, {0, 3});
    QTest::mouseRelease(&widget, Qt::RightButton, {}, {500, 300});
    QTest::mousePress(&widget, Qt::LeftButton, {}, {250, 150});
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, {250, 150});
    ASSERT_EQ(presses.size(), 2U);
    EXPECT_EQ(presses[0].button, MouseButton::kRight);
    EXPECT_NEAR(presses[0].x, 0, 0.01);
    EXPECT_NEAR(presses[0].y, 100, 0.01);
    EXPECT_EQ(presses[1].button, MouseButton::kLeft);
    EXPECT_NEAR(presses[1].x, 5000, 0.01);
    EXPECT_NEAR(presses[1].y, 5000, 0.01);
    ASSERT_EQ(releases.size(), 2U);
    EXPECT_NEAR(releases[0].x, 10000, 0.01);
    EXPECT_NEAR(releases[0].y, 10000, 0.01);
}

TEST_F(PlotWidgetTest, TellsMovesWithTheButtonHeld) {
    QTest::mousePress(&widget, Qt::RightButton, {}, {100, 100});
    QMouseEvent drag(QEvent::MouseMove, QPointF(600, 90), QPointF(600, 90), Qt::NoButton,
                     Qt::RightButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &drag);
    ASSERT_FALSE(moves.empty());
    EXPECT_EQ(moves.back().button, MouseButton::kRight);
    EXPECT_NEAR(moves.back().x, 12000, 0.01);  // the mouse is kept outside of the widget too
    QTest::mouseRelease(&widget, Qt::RightButton, {}, {100, 100});
}

TEST_F(PlotWidgetTest, UnitsAndPlacesAreInverse) {
    for (const QPointF at : {QPointF(0, 0), QPointF(17, 211), QPointF(500, 300)}) {
        const QPointF back = widget.from_units(widget.to_units(at));
        EXPECT_NEAR(back.x(), at.x(), 1e-6);
        EXPECT_NEAR(back.y(), at.y(), 1e-6);
    }
}

TEST_F(PlotWidgetTest, GrabIsAFewPixelsAtAnySize) {
    QSignalSpy changed(&widget, &PlotWidget::grab_changed);
    widget.resize(1000, 300);
    EXPECT_GE(changed.count(), 1);
    EXPECT_NEAR(widget.grab_width() / kPictureWidth * 1000, 5, 0.01);
    EXPECT_NEAR(widget.grab_height() / kPictureHeight * 300, 5, 0.01);
}

TEST_F(PlotWidgetTest, ReadsTheSampleUnderTheMouse) {
    show(data);
    move({100, 100});
    ASSERT_TRUE(widget.hover());
    EXPECT_EQ(widget.hover()->sample, 100);  // 499 samples on 500 pixels: 99.8
    EXPECT_EQ(widget.hover()->values.size(), 4U);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&widget, &leave);
    EXPECT_FALSE(widget.hover());
}

TEST_F(PlotWidgetTest, ReadsNothingWhileAButtonIsHeldOrWithoutARecording) {
    move({100, 100});
    EXPECT_FALSE(widget.hover());
    show(data);
    move({101, 100});
    EXPECT_TRUE(widget.hover());
    QTest::mousePress(&widget, Qt::LeftButton, {}, {101, 100});
    EXPECT_FALSE(widget.hover());
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, {101, 100});
    EXPECT_TRUE(widget.hover());
}

TEST_F(PlotWidgetTest, NewRecordingUnderTheMouseIsReadAtOnce) {
    show(data);
    move({100, 100});
    const std::string before = widget.hover()->values[0].text;
    data.channels[0].samples[100] += 5000;
    show(data);
    EXPECT_NE(widget.hover()->values[0].text, before);
}

TEST_F(PlotWidgetTest, PointerTellsWhatTheMouseWouldDo) {
    data.cursors[0] = {true, 3000};
    data.cursors[2] = {true, 3000};
    show(data);
    move({300, 200});
    EXPECT_EQ(widget.cursor().shape(), Qt::ArrowCursor);
    move({152, 200});
    EXPECT_EQ(widget.cursor().shape(), Qt::SizeHorCursor);
    move({300, 92});
    EXPECT_EQ(widget.cursor().shape(), Qt::SizeVerCursor);
    data.cursors = {};
    show(data, Pointer::kHand);
    EXPECT_EQ(widget.cursor().shape(), Qt::OpenHandCursor);
    show(data, Pointer::kGrabbing);
    EXPECT_EQ(widget.cursor().shape(), Qt::ClosedHandCursor);
    widget.set_overlay(data.cursors, ZoomRectangle{}, Pointer::kArrow);
    EXPECT_EQ(widget.cursor().shape(), Qt::CrossCursor);
}

TEST_F(PlotWidgetTest, CursorsAndRectangleArePaintedOverTheCurves) {
    show(data);
    const QImage before = widget.grab().toImage();
    data.cursors[0] = {true, 3000};
    widget.set_overlay(data.cursors, ZoomRectangle{4000, 4000, 6000, 6000}, Pointer::kArrow);
    const QImage after = widget.grab().toImage();
    EXPECT_EQ(after.pixel(150, 250), palette::kCursor);
    EXPECT_NE(after.pixel(250, 130), before.pixel(250, 130));
    data.cursors[0].on = false;
    widget.set_overlay(data.cursors, std::nullopt, Pointer::kArrow);
    EXPECT_EQ(widget.grab().toImage(), before);
}

TEST_F(PlotWidgetTest, HidingItWithAButtonHeldTellsSo) {
    QSignalSpy abandoned(&widget, &PlotWidget::abandoned);
    widget.hide();
    EXPECT_EQ(abandoned.count(), 0);
    widget.show();
    QTest::mousePress(&widget, Qt::RightButton, {}, {100, 100});
    widget.hide();
    EXPECT_EQ(abandoned.count(), 1);
}

TEST_F(PlotWidgetTest, SecondPressInHasteIsAPressToo) {
    QTest::mousePress(&widget, Qt::LeftButton, {}, {100, 100});
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, {100, 100});
    QMouseEvent again(QEvent::MouseButtonDblClick, QPointF(100, 100), QPointF(100, 100),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &again);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, {100, 100});
    EXPECT_EQ(presses.size(), 2U);
    EXPECT_EQ(releases.size(), 2U);
}

TEST_F(PlotWidgetTest, ANewSceneIsShownWhenItIsReadyWithoutWaitingForIt) {
    show(data);
    const QImage before = widget.grab().toImage();
    const ScopeData other = recorded(Kind::kRandom, 500);
    show(other);
    const QImage after = widget.grab().toImage();  // whoever looks sees the newest
    EXPECT_NE(before, after);
    PlotWidget fresh;
    fresh.resize(widget.size());
    fresh.show();
    fresh.set_scene(plot_scene(other, sample_operands(), References{}, base::Language::kEnglish));
    EXPECT_EQ(fresh.grab().toImage(), after);
}

TEST_F(PlotWidgetTest, ScenesThatComeFasterThanTheyArePaintedEndWithTheLast) {
    show(data);
    widget.grab();
    ScopeData last = recorded(Kind::kNoisy, 8192);
    for (int i = 0; i < 20; ++i) {
        last.zoomWindow[0].last = static_cast<std::int16_t>(8000 + i);
        show(last);
        QCoreApplication::processEvents();
    }
    PlotWidget fresh;
    fresh.resize(widget.size());
    fresh.show();
    fresh.set_scene(plot_scene(last, sample_operands(), References{}, base::Language::kEnglish));
    EXPECT_EQ(fresh.grab().toImage(), widget.grab().toImage());
}

TEST_F(PlotWidgetTest, APictureUnderWayEndsWithItsWidget) {
    auto gone = std::make_unique<PlotWidget>();
    gone->resize(501, 301);
    gone->show();
    const ScopeData noise = recorded(Kind::kRandom, 8192);
    gone->set_scene(plot_scene(data, sample_operands(), References{}, base::Language::kEnglish));
    gone->grab();
    gone->set_scene(plot_scene(noise, sample_operands(), References{}, base::Language::kEnglish));
    gone.reset();
    QCoreApplication::processEvents();
}

}  // namespace
}  // namespace servo::scope
