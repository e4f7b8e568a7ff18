// Looking at a recording: wheel, keys, cursors, analysis panels, pictures and tables.
#include <QFile>
#include <QImage>
#include <QMenu>
#include <QTemporaryDir>

#include "base/file.h"
#include "scope_window_bench.h"

namespace servo::scope::test {
namespace {

void turn_wheel(QWidget& widget, QPointF at, QPoint angle, Qt::KeyboardModifiers held = {}) {
    QWheelEvent event(at, widget.mapToGlobal(at), {}, angle, Qt::NoButton, held, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&widget, &event);
}

struct ShownRecording : WindowBench {
    ShownRecording() { record_sine(); }
    const ZoomWindow& shown() const { return scope.data().window(); }
    int index(Cursor cursor) {
        const auto& at = scope.data().cursors.at(static_cast<std::size_t>(cursor));
        return cursor_index(shown(), at.at).value_or(-1);
    }
};

TEST(ScopeWindowPlot, TheWheelZoomsAroundThePointer) {
    ShownRecording bench;
    QWidget& plot = bench.any("Picture1");
    const ZoomWindow before = bench.shown();
    turn_wheel(plot, QPointF(0, 50), {0, 120});
    EXPECT_EQ(bench.scope.data().zoomDepth, 1);
    EXPECT_EQ(bench.shown().first, before.first);
    EXPECT_LT(bench.shown().last, before.last);
    turn_wheel(plot, QPointF(0, 50), {0, -120});
    EXPECT_EQ(bench.scope.data().zoomDepth, 0);
    turn_wheel(plot, QPointF(plot.width() - 1, 50), {0, 120});
    EXPECT_NEAR(bench.shown().last, before.last, 1);
}

TEST(ScopeWindowPlot, HalfANotchWaitsForTheOtherHalf) {
    ShownRecording bench;
    QWidget& plot = bench.any("Picture1");
    turn_wheel(plot, QPointF(50, 50), {0, 60});
    EXPECT_EQ(bench.scope.data().zoomDepth, 0);
    turn_wheel(plot, QPointF(50, 50), {0, 60});
    EXPECT_EQ(bench.scope.data().zoomDepth, 1);
}

TEST(ScopeWindowPlot, TheWheelWithShiftPans) {
    ShownRecording bench;
    QWidget& plot = bench.any("Picture1");
    turn_wheel(plot, QPointF(plot.width() / 2.0, 50), {0, 120});
    const ZoomWindow before = bench.shown();
    turn_wheel(plot, QPointF(50, 50), {0, -120}, Qt::ShiftModifier);
    EXPECT_GT(bench.shown().first, before.first);
    EXPECT_EQ(bench.shown().last - bench.shown().first, before.last - before.first);
}

TEST(ScopeWindowPlot, ArrowsMoveThePickedCursorBySamples) {
    ShownRecording bench;
    bench.click("Image1");
    EXPECT_EQ(bench.text("Image1"), "on");
    const int before = bench.index(Cursor::kX1);
    bench.key("Picture1", Qt::Key_Right);
    EXPECT_EQ(bench.index(Cursor::kX1), before + 1);
    bench.key("Picture1", Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(bench.index(Cursor::kX1), before - 9);
    EXPECT_EQ(bench.text("Label25"), bench.scope.data().cursor_texts.Label25);
    EXPECT_FALSE(bench.text("Label7").empty());
}

TEST(ScopeWindowPlot, TabPicksTheNextCursorAndThenLeaves) {
    ShownRecording bench;
    bench.click("Image1");
    bench.click("Image2");  // picked, being the last that was switched on
    const int x1 = bench.index(Cursor::kX1);
    const int x2 = bench.index(Cursor::kX2);
    bench.key("Picture1", Qt::Key_Right);
    EXPECT_EQ(bench.index(Cursor::kX2), x2 + 1);
    QWidget& plot = bench.any("Picture1");
    QTest::keyClick(&plot, Qt::Key_Backtab);
    EXPECT_EQ(bench.window.focusWidget(), &plot);
    QTest::keyClick(&plot, Qt::Key_Right);
    EXPECT_EQ(bench.index(Cursor::kX1), x1 + 1);
    QTest::keyClick(&plot, Qt::Key_Tab);
    EXPECT_EQ(bench.window.focusWidget(), &plot);
    QTest::keyClick(&plot, Qt::Key_Tab);
    EXPECT_NE(bench.window.focusWidget(), &plot);
}

TEST(ScopeWindowPlot, UpMovesTheYCursorUp) {
    ShownRecording bench;
    bench.click("Image3");
    const double before = bench.scope.data().cursors[2].at;
    bench.key("Picture1", Qt::Key_Up);
    EXPECT_LT(bench.scope.data().cursors[2].at, before);
}

TEST(ScopeWindowPlot, KeysZoomAndPan) {
    ShownRecording bench;
    const ZoomWindow whole = bench.shown();
    bench.key("Picture1", Qt::Key_Plus);
    bench.key("Picture1", Qt::Key_Plus);
    EXPECT_EQ(bench.scope.data().zoomDepth, 2);
    bench.key("Picture1", Qt::Key_Home);
    EXPECT_EQ(bench.shown().first, whole.first);
    bench.key("Picture1", Qt::Key_End);
    EXPECT_EQ(bench.shown().last, whole.last);
    bench.key("Picture1", Qt::Key_PageUp);
    EXPECT_LT(bench.shown().last, whole.last);
    bench.key("Picture1", Qt::Key_Minus);
    EXPECT_EQ(bench.scope.data().zoomDepth, 1);
    bench.key("Picture1", Qt::Key_0);
    EXPECT_EQ(bench.shown(), whole);
}

// Alt with a figure belongs to the windows of the shell, Alt with a letter to its menus.
TEST(ScopeWindowPlot, FiguresAndLettersWorkTheToolRow) {
    ShownRecording bench;
    const std::vector<std::pair<int, const char*>> keys{
        {Qt::Key_1, "Image1"},   {Qt::Key_2, "Image2"},   {Qt::Key_3, "Image3"},
        {Qt::Key_4, "Image4"},   {Qt::Key_S, "CommandE"}, {Qt::Key_P, "CommandF"},
        {Qt::Key_G, "CommandG"}, {Qt::Key_H, "Image8"}};
    for (const auto& [key, name] : keys) {
        auto& tool = bench.control<QAbstractButton>(name);
        bench.key("Picture1", key);
        EXPECT_TRUE(tool.isChecked()) << name;
        bench.key("Picture1", key);
        EXPECT_FALSE(tool.isChecked()) << name;
        EXPECT_TRUE(tool.shortcut().toString().isEmpty()) << name;
    }
}

TEST(ScopeWindowPlot, AClickOnItsNameSwitchesACursor) {
    ShownRecording bench;
    bench.click("LabelX2");
    EXPECT_TRUE(bench.scope.data().cursors[1].on);
    bench.click("LabelX2");
    EXPECT_FALSE(bench.scope.data().cursors[1].on);
}

TEST(ScopeWindowPlot, ALongNumberShowsItsBegin) {
    ShownRecording bench;
    for (const char* box : {"Text5", "Text9", "Text10"})
        EXPECT_EQ(bench.control<QLineEdit>(box).cursorPosition(), 0) << box;
    bench.type("Text9", "-123.45678901234567");
    EXPECT_GT(bench.control<QLineEdit>("Text9").cursorPosition(), 0);
    bench.any("Picture1").setFocus();
    EXPECT_EQ(bench.control<QLineEdit>("Text9").cursorPosition(), 0);
}

TEST(ScopeWindowPlot, SpaceStartsAndStops) {
    ShownRecording bench;
    bench.key("Picture1", Qt::Key_Space);
    EXPECT_EQ(bench.text("Command6"), "Sampling");
    bench.key("Picture1", Qt::Key_Space);
    EXPECT_EQ(bench.text("Command6"), "Start");
}

TEST(ScopeWindowPlot, TheHandShowsItsPictureAndPans) {
    ShownRecording bench;
    bench.key("Picture1", Qt::Key_Plus);
    bench.click("Image8");
    EXPECT_EQ(bench.text("Image8"), "Image9");
    QWidget& plot = bench.any("Picture1");
    const ZoomWindow before = bench.shown();
    QTest::mousePress(&plot, Qt::LeftButton, {}, QPoint(plot.width() / 2, 40));
    QMouseEvent move(QEvent::MouseMove, QPointF(plot.width() / 4.0, 40),
                     plot.mapToGlobal(QPointF(plot.width() / 4.0, 40)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&plot, &move);
    EXPECT_GT(bench.shown().first, before.first);
    QTest::mouseRelease(&plot, Qt::LeftButton, {}, QPoint(plot.width() / 4, 40));
    QTest::mouseClick(&plot, Qt::RightButton, {}, QPoint(60, 60));
    EXPECT_EQ(bench.text("Image8"), "Image8");
}

TEST(ScopeWindowPlot, ARectangleWithTheRightButtonZooms) {
    ShownRecording bench;
    QWidget& plot = bench.any("Picture1");
    const QPoint from(plot.width() / 4, 20);
    const QPoint to(plot.width() / 2, 120);
    QTest::mousePress(&plot, Qt::RightButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, plot.mapToGlobal(to), Qt::NoButton, Qt::RightButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&plot, &move);
    QTest::mouseRelease(&plot, Qt::RightButton, {}, to);
    EXPECT_EQ(bench.scope.data().zoomDepth, 1);
    EXPECT_NEAR(bench.shown().first, 100, 2);
    EXPECT_NEAR(bench.shown().last, 200, 2);
    EXPECT_EQ(bench.text("Label44").substr(0, 12), "Zoom Depth:1");
}

TEST(ScopeWindowPlot, StepsChangeThePickedCurve) {
    ShownRecording bench;
    bench.choose("Combo12", 1);
    EXPECT_EQ(bench.text("Label40"), "2 (A)");
    const std::string scale = bench.text("Text6");
    bench.click("Command9");
    EXPECT_NE(bench.text("Text6"), scale);
    EXPECT_EQ(bench.text("Check7"), "off");
    const std::string offset = bench.text("Text10");
    bench.click("Command12");
    EXPECT_NE(bench.text("Text10"), offset);
    bench.check("Check10");
    EXPECT_EQ(bench.text("Check10"), "on");
    bench.key("Picture1", Qt::Key_F);
    EXPECT_EQ(bench.text("Check7"), "on");
}

TEST(ScopeWindowPlot, EnteringAnOffsetTakesAutoAway) {
    ShownRecording bench;
    bench.type("Text9", "12.5");
    EXPECT_EQ(bench.text("Check6"), "on");
    bench.key("Text9", Qt::Key_Return);
    EXPECT_EQ(bench.text("Check6"), "off");
    EXPECT_EQ(bench.text("Text9"), "12.5");
}

TEST(ScopeWindowPlot, StatisticsAreThoseOfTheVisibleWindow) {
    ShownRecording bench;
    bench.click("CommandE");
    ASSERT_TRUE(bench.any("LabelS(0)").isVisible());
    EXPECT_EQ(bench.text("LabelS(5)"), "-0.5");
    EXPECT_EQ(bench.text("LabelS(6)"), "7");
    EXPECT_EQ(bench.text("LabelS(9)"), "7.5");
    EXPECT_EQ(bench.text("LabelS(10)"), "");  // channel 3 is not recorded
    turn_wheel(bench.any("Picture1"), QPointF(0, 50), {0, 120});
    turn_wheel(bench.any("Picture1"), QPointF(0, 50), {0, 120});
    EXPECT_EQ(bench.text("LabelS(6)"), "-0.5");
    bench.check("Check2");  // hidden
    EXPECT_EQ(bench.text("LabelS(6)"), "");
}

TEST(ScopeWindowPlot, TheSpectrumTellsItsPeak) {
    WindowBench bench;
    std::vector<std::pair<int, int>> rows;
    for (int i = 0; i < 320; ++i)  // 500 Hz at 16 kHz
        rows.emplace_back(static_cast<int>(std::lround(1000 * std::sin(i * 2 * M_PI / 32))), 0);
    bench.scope.click_single();
    bench.record_two_channels(rows);
    bench.window.refresh_now();
    bench.click("CommandF");
    EXPECT_TRUE(bench.any("PictureA").isVisible());
    EXPECT_EQ(bench.text("LabelX").substr(0, 12), "Peak 500 Hz,");
    bench.choose("ComboA", 2);  // not recorded
    EXPECT_EQ(bench.text("LabelX"), "");
}

TEST(ScopeWindowPlot, ReferencesAreKeptShownAndRemoved) {
    ShownRecording bench;
    bench.click("CommandG");
    EXPECT_TRUE(bench.any("LabelW").isVisible());
    for (int i = 0; i < 5; ++i)
        bench.click("CommandH");
    EXPECT_FALSE(bench.any("LabelW").isVisible());
    ASSERT_EQ(bench.scope.references().kept.size(), 4U);
    EXPECT_EQ(bench.control<QAbstractButton>("CheckR(0)").text(), QStringLiteral("R2  11:02:33"));
    bench.check("CheckR(0)");
    EXPECT_FALSE(bench.scope.references().kept[0].shown);
    bench.click("CommandR(0)");
    EXPECT_EQ(bench.scope.references().kept.size(), 3U);
    EXPECT_FALSE(bench.any("CheckR(3)").isVisible());
}

TEST(ScopeWindowPlot, SavesTheTable) {
    ShownRecording bench;
    const QTemporaryDir folder;
    bench.path = folder.filePath("a.csv").toStdString();
    bench.click("CommandJ");
    EXPECT_EQ(bench.asked.back().suffix, "csv");
    const std::string text = base::read_file(*bench.path).value_or("");
    EXPECT_EQ(std::ranges::count(text, '\n'), 401);
    bench.path = folder.filePath("none/a.csv").toStdString();
    bench.click("CommandJ");
    EXPECT_EQ(bench.told.size(), 1U);
}

TEST(ScopeWindowPlot, TheNoteGoesWithItsLanguage) {
    ShownRecording bench;
    const QTemporaryDir folder;
    bench.path = folder.filePath("a.csv").toStdString();
    bench.click("CommandJ");
    EXPECT_EQ(bench.text("LabelT"), "Saved a.csv");
    bench.walk(base::Language::kChinese);
    EXPECT_EQ(bench.text("LabelT"), "");
}

TEST(ScopeWindowPlot, AFileOfARecordingThatFailsSaysNothing) {
    ShownRecording bench;
    const QTemporaryDir folder;
    bench.path = folder.filePath("a.csv").toStdString();
    bench.click("CommandJ");
    ASSERT_EQ(bench.text("LabelT"), "Saved a.csv");
    bench.path = folder.filePath("a.xls").toStdString();
    bench.click("Command8");
    EXPECT_EQ(bench.text("LabelT"), "");
    bench.path = folder.filePath("none.scope").toStdString();
    bench.click("Command13");
    EXPECT_EQ(bench.text("LabelT"), "");
    EXPECT_TRUE(bench.told.empty());
}

TEST(ScopeWindowPlot, SavesPictures) {
    ShownRecording bench;
    const QTemporaryDir folder;
    auto& button = bench.control<QToolButton>("CommandI");
    for (QAction* kind : button.menu()->actions()) {
        const QString file = folder.filePath("a." + kind->text().toLower());
        bench.path = file.toStdString();
        kind->trigger();
        ASSERT_TRUE(QFile::exists(file)) << *bench.path;
    }
    const QImage image(folder.filePath("a.png"));
    EXPECT_EQ(image.width(), 2 * bench.any("Picture1").parentWidget()->width());
    const std::string svg = base::read_file(folder.filePath("a.svg").toStdString()).value_or("");
    EXPECT_NE(svg.find("<path"), std::string::npos);
    EXPECT_EQ(svg.find("<image"), std::string::npos);
    const std::string pdf = base::read_file(folder.filePath("a.pdf").toStdString()).value_or("");
    EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
}

}  // namespace
}  // namespace servo::scope::test
